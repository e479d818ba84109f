// SPDX-License-Identifier: MIT
// Replaces the global allocation functions of the benchmark binary with counting ones.
#include "bench/support/FXAllocationCounter.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {
std::atomic<std::uint64_t> GAllocations{0};
}

namespace framix::bench {
std::uint64_t FXHeapAllocations() { return GAllocations.load(std::memory_order_relaxed); }
} // namespace framix::bench

void* operator new(std::size_t size)
{
    GAllocations.fetch_add(1, std::memory_order_relaxed);
    if (void* p = std::malloc(size ? size : 1))
        return p;
    throw std::bad_alloc();
}

void* operator new[](std::size_t size) { return operator new(size); }
void operator delete(void* p) noexcept { std::free(p); }
void operator delete[](void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
void operator delete[](void* p, std::size_t) noexcept { std::free(p); }
