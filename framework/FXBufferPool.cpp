// SPDX-License-Identifier: MIT
// The pixel block cache.
#include "framework/FXBufferPool.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace framix {

namespace {
constexpr std::size_t kAlignment = 64;

std::size_t RoundUp(std::size_t bytes) { return (bytes + kAlignment - 1) / kAlignment * kAlignment; }
} // namespace

TFXBufferPool& TFXBufferPool::Global()
{
    // Never destroyed: frames held by static objects may come back during exit.
    static TFXBufferPool* pool = new TFXBufferPool;
    return *pool;
}

TFXBufferPool::~TFXBufferPool() { TrimTo(0); }

void* TFXBufferPool::Acquire(std::size_t bytes)
{
    bytes = RoundUp(std::max<std::size_t>(bytes, 1));
    {
        std::lock_guard lock(FMutex);
        auto it = FIdle.find(bytes);
        if (it != FIdle.end() && !it->second.empty()) {
            void* block = it->second.back();
            it->second.pop_back();
            FIdleBytes -= bytes;
            return block;
        }
        ++FSystemAllocations;
    }
    void* block = std::aligned_alloc(kAlignment, bytes);
    if (!block)
        throw std::bad_alloc();
    return block;
}

void TFXBufferPool::Recycle(void* block, std::size_t bytes)
{
    if (!block)
        return;
    bytes = RoundUp(std::max<std::size_t>(bytes, 1));
    std::lock_guard lock(FMutex);
    if (bytes > FLimitBytes) {
        std::free(block);
        return;
    }
    FIdle[bytes].push_back(block);
    FIdleBytes += bytes;
    FSizeOrder.erase(std::remove(FSizeOrder.begin(), FSizeOrder.end(), bytes), FSizeOrder.end());
    FSizeOrder.push_back(bytes);
    TrimTo(FLimitBytes);
}

void TFXBufferPool::TrimTo(std::size_t limit)
{
    // Called with the mutex held (or from the destructor).
    for (std::size_t i = 0; FIdleBytes > limit && i < FSizeOrder.size();) {
        auto& blocks = FIdle[FSizeOrder[i]];
        while (FIdleBytes > limit && !blocks.empty()) {
            std::free(blocks.back());
            blocks.pop_back();
            FIdleBytes -= FSizeOrder[i];
        }
        if (blocks.empty()) {
            FIdle.erase(FSizeOrder[i]);
            FSizeOrder.erase(FSizeOrder.begin() + std::ptrdiff_t(i));
        } else {
            ++i;
        }
    }
}

void TFXBufferPool::SetLimit(std::size_t bytes)
{
    std::lock_guard lock(FMutex);
    FLimitBytes = bytes;
    TrimTo(FLimitBytes);
}

void TFXBufferPool::Trim()
{
    std::lock_guard lock(FMutex);
    TrimTo(0);
}

std::uint64_t TFXBufferPool::GetSystemAllocations() const
{
    std::lock_guard lock(FMutex);
    return FSystemAllocations;
}

std::size_t TFXBufferPool::GetIdleBytes() const
{
    std::lock_guard lock(FMutex);
    return FIdleBytes;
}

} // namespace framix
