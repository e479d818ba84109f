// SPDX-License-Identifier: MIT
// Self-time accounting of components: nested scopes on one thread subtract from each other.
#include "framework/FXFrameStats.h"

#include <algorithm>

namespace framix {

namespace detail {
std::atomic<bool> GFXFrameStatsOn{false};
}

namespace {
// Time spent in excluded scopes that ended inside the innermost scope still open on this thread.
thread_local std::int64_t tlExcludedNs = 0;

std::int64_t Since(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::steady_clock::now() -
                                                                start)
        .count();
}
} // namespace

void FXEnableFrameStats(bool on)
{
    detail::GFXFrameStatsOn.store(on, std::memory_order_relaxed);
}

double TFXFrameStats::NsPerFrame() const
{
    const std::uint64_t frames = std::max(FramesIn.load(), FramesOut.load());
    return frames ? double(BusyNs.load()) / double(frames) : 0.0;
}

TFXExcludedTime::TFXExcludedTime() : FStart(std::chrono::steady_clock::now()), FSaved(tlExcludedNs)
{
    tlExcludedNs = 0;
}

TFXExcludedTime::~TFXExcludedTime()
{
    tlExcludedNs = FSaved + ElapsedNs();
}

std::int64_t TFXExcludedTime::Nested()
{
    return tlExcludedNs;
}

std::int64_t TFXExcludedTime::ElapsedNs() const
{
    return Since(FStart);
}

TFXFrameTimer::~TFXFrameTimer()
{
    if (FStats)
        FStats->BusyNs += std::uint64_t(std::max<std::int64_t>(0, ElapsedNs() - Nested()));
}

} // namespace framix
