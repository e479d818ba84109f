// SPDX-License-Identifier: MIT
// Worker threads of filters: the Threading settings, the bounded operation queue, the thread.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "framework/FXNotifyOperations.h"
#include "framework/KTPersistent.h"

namespace framix {

FX_ENUM(TQNThreadPriority, tpIdle, tpLowest, tpLower, tpNormal, tpHigher, tpHighest,
        tpTimeCritical)

// The published `Threading` group of every filter. Disabled (the default) means frames are
// processed on the sender's thread, so a graph without threading is deterministic.
class TQNThreading : public TKTOptionalEnabledPersistent {
public:
    static constexpr TFXEnumProp<TQNThreadPriority> kPriority{
        .Name = "Priority", .Help = "scheduling priority of the worker (best effort)",
        .Default = tpNormal};
    static constexpr TFXIntProp kQueueSize{.Name = "QueueSize",
                                           .Help = "operations the worker may hold before the "
                                                   "sender waits",
                                           .Default = 4,
                                           .Min = 1,
                                           .Max = 1024};

    TQNThreading(TKTPersistent* owner, IKTLock& lock, TChangeNotify onChange);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    TQNThreadPriority GetPriority() const;
    void SetPriority(TQNThreadPriority value);
    std::int32_t GetQueueSize() const;
    void SetQueueSize(std::int32_t value);

private:
    TQNThreadPriority FPriority = kPriority.Default;
    std::int32_t FQueueSize = std::int32_t(kQueueSize.Default);
};

// A bounded first-in first-out queue of operations. Frames are held as their buffer alone, so
// queueing a frame allocates nothing; other operations are cloned.
class TQNOperationList {
public:
    explicit TQNOperationList(int capacity);

    // Waits while the queue is full. Returns false when the queue was closed.
    bool Push(const IPXNotifyOperation& operation);
    // Waits for an operation and hands it to `process`; false once closed and drained.
    bool PopAndRun(const std::function<void(const IPXNotifyOperation&)>& process);
    // No further pushes; the consumer drains what is left, or drops it with `discard`.
    void Close(bool discard = false);
    // Waits until every pushed operation has been run to completion.
    void WaitIdle();
    bool IsIdle();
    int Capacity() const { return int(FSlots.size()); }

private:
    struct TSlot {
        FXImageBufferPtr Buffer;
        std::unique_ptr<IPXNotifyOperation> Other;
    };
    std::mutex FMutex;
    std::condition_variable FNotEmpty;
    std::condition_variable FNotFull;
    std::condition_variable FIdle;
    std::vector<TSlot> FSlots;
    std::size_t FHead = 0;
    std::size_t FCount = 0;
    bool FBusy = false;
    bool FClosed = false;
};

// The worker: takes operations from its queue in order and runs them.
class TQNFilterThread {
public:
    using TProcess = std::function<void(const IPXNotifyOperation&)>;
    TQNFilterThread(TProcess process, int queueSize, TQNThreadPriority priority);
    // Drops whatever is still queued (nothing may run on an object being destroyed), then joins.
    ~TQNFilterThread();

    void Push(const IPXNotifyOperation& operation);
    // Runs everything queued, then ends the thread.
    void Finish();
    void WaitIdle();
    bool IsIdle() { return FQueue.IsIdle(); }
    // The first exception an operation threw on the worker, taken (null when none).
    std::exception_ptr TakeError();

private:
    void Run(TQNThreadPriority priority);

    TProcess FProcess;
    TQNOperationList FQueue;
    std::mutex FErrorMutex;
    std::exception_ptr FError;
    std::thread FThread;
};

} // namespace framix
