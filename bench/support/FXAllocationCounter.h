// SPDX-License-Identifier: MIT
// Counts heap allocations made through operator new, so benchmarks can report them per frame.
#pragma once

#include <cstdint>

namespace framix::bench {

std::uint64_t FXHeapAllocations();

} // namespace framix::bench
