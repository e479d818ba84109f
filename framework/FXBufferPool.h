// SPDX-License-Identifier: MIT
// Recycles pixel blocks by size, so a steady stream allocates no memory per frame.
#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <unordered_map>
#include <vector>

namespace framix {

// A process-wide cache of 64-byte aligned blocks keyed by their size. Blocks come back when the
// last frame using them goes away; the cache keeps at most FLimitBytes of idle blocks and drops
// the oldest size class first when it is full.
class TFXBufferPool {
public:
    static TFXBufferPool& Global();

    void* Acquire(std::size_t bytes);
    void Recycle(void* block, std::size_t bytes);

    // Idle memory the pool may keep (default 512 MiB).
    void SetLimit(std::size_t bytes);
    // Frees every idle block.
    void Trim();

    // Blocks obtained from the system since start-up (a pool miss counts one).
    std::uint64_t GetSystemAllocations() const;
    std::size_t GetIdleBytes() const;

    ~TFXBufferPool();

private:
    TFXBufferPool() = default;
    void TrimTo(std::size_t limit);

    mutable std::mutex FMutex;
    std::unordered_map<std::size_t, std::vector<void*>> FIdle;
    std::vector<std::size_t> FSizeOrder;  // size classes, least recently recycled first
    std::size_t FIdleBytes = 0;
    std::size_t FLimitBytes = std::size_t(512) << 20;
    std::uint64_t FSystemAllocations = 0;
};

} // namespace framix
