// SPDX-License-Identifier: MIT
// Per-component frame counters and processing time, measured only while switched on.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>

namespace framix {

// What one component did since the counters were switched on or reset. Frames in are the frames
// that reached its input pins, frames out the frames it sent; BusyNs is the time it spent on
// them itself: the time of the frames it received (or, for a source, made), without the time
// the components downstream spent on what it sent them.
struct TFXFrameStats {
    std::atomic<std::uint64_t> FramesIn{0};
    std::atomic<std::uint64_t> FramesOut{0};
    std::atomic<std::uint64_t> BusyNs{0};

    void Reset()
    {
        FramesIn = 0;
        FramesOut = 0;
        BusyNs = 0;
    }
    // Mean busy time per frame handled (received, or sent by a source), in nanoseconds.
    double NsPerFrame() const;
};

namespace detail {
extern std::atomic<bool> GFXFrameStatsOn;
}

// Off by default. While off, the pins and bases pay one relaxed atomic load per operation.
inline bool FXFrameStatsEnabled()
{
    return detail::GFXFrameStatsOn.load(std::memory_order_relaxed);
}
void FXEnableFrameStats(bool on);

// A scope whose time belongs to someone else: the enclosing TFXFrameTimer does not count it.
// The pins put every frame sent downstream in one, the threaded base every hand-off to a worker.
class TFXExcludedTime {
public:
    TFXExcludedTime();
    ~TFXExcludedTime();
    TFXExcludedTime(const TFXExcludedTime&) = delete;
    TFXExcludedTime& operator=(const TFXExcludedTime&) = delete;

protected:
    // Time excluded by the scopes nested in this one so far.
    static std::int64_t Nested();
    std::int64_t ElapsedNs() const;

private:
    std::chrono::steady_clock::time_point FStart;
    std::int64_t FSaved;
};

// Charges the time of its scope, less every excluded scope nested in it, to `stats`. A timer
// nested in another counts as excluded time for the outer one, so each component is charged
// only its own work. Construct it only when FXFrameStatsEnabled() (or pass null).
class TFXFrameTimer : public TFXExcludedTime {
public:
    explicit TFXFrameTimer(TFXFrameStats* stats) : FStats(stats) {}
    ~TFXFrameTimer();

private:
    TFXFrameStats* FStats;
};

} // namespace framix
