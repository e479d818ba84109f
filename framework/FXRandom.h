// SPDX-License-Identifier: MIT
// The process-wide pseudo-random generator that components draw their random numbers from.
#pragma once

#include <cstdint>

namespace framix {

// One generator for the whole process. Components call FXRandom and never seed it; a host seeds
// it once (`framix run --seed N`), so a run of a graph without worker threads can be repeated
// exactly. Without a seed the sequence starts from seed 0, the same in every process.
//
// The generator is lock-free and safe to call from any thread. Calls from several threads at
// once each get distinct values, but which thread gets which depends on timing, so only a graph
// without threading is reproducible.

// A uniform integer in [0, n); 0 when n is 0.
std::uint32_t FXRandom(std::uint32_t n);

// Restarts the sequence: the same seed gives the same values again.
void FXRandomSeed(std::uint64_t seed);

} // namespace framix
