// SPDX-License-Identifier: MIT
// The process-wide generator: SplitMix64 over one atomic counter.
#include "framework/FXRandom.h"

#include <atomic>

namespace framix {

namespace {

constexpr std::uint64_t kGoldenGamma = 0x9E3779B97F4A7C15ull;

// SplitMix64 advances its state by a constant, so one atomic fetch_add per value makes it
// lock-free without losing any of its statistical quality.
std::atomic<std::uint64_t> GState{0};

std::uint64_t Mix(std::uint64_t z)
{
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
}

} // namespace

std::uint32_t FXRandom(std::uint32_t n)
{
    const std::uint64_t state =
        GState.fetch_add(kGoldenGamma, std::memory_order_relaxed) + kGoldenGamma;
    // Lemire's multiply-shift maps 32 random bits onto [0, n) without a division; the bias is
    // below n / 2^32, far under what any component can observe.
    return std::uint32_t((Mix(state) >> 32) * std::uint64_t(n) >> 32);
}

void FXRandomSeed(std::uint64_t seed)
{
    GState.store(seed, std::memory_order_relaxed);
}

} // namespace framix
