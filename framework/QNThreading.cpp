// SPDX-License-Identifier: MIT
// Threading settings, the operation queue and the worker thread.
#include "framework/QNThreading.h"

#include <algorithm>

#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace framix {

// ---------------------------------------------------------------- TQNThreading

TQNThreading::TQNThreading(TKTPersistent* owner, IKTLock& lock, TChangeNotify onChange)
    : TKTOptionalEnabledPersistent(owner, lock, std::move(onChange))
{
}

const TFXClassInfo& TQNThreading::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXProp<&TQNThreading::GetPriority, &TQNThreading::SetPriority>(kPriority),
        FXProp<&TQNThreading::GetQueueSize, &TQNThreading::SetQueueSize>(kQueueSize),
    };
    static const TFXClassInfo info{"TQNThreading", &TKTOptionalEnabledPersistent::ClassInfo(),
                                   kProps};
    return info;
}

TQNThreadPriority TQNThreading::GetPriority() const
{
    auto guard = Lock().Read();
    return FPriority;
}

void TQNThreading::SetPriority(TQNThreadPriority value) { StoreAndNotify(FPriority, value); }

std::int32_t TQNThreading::GetQueueSize() const
{
    auto guard = Lock().Read();
    return FQueueSize;
}

void TQNThreading::SetQueueSize(std::int32_t value)
{
    StoreAndNotify(FQueueSize, std::int32_t(std::clamp<std::int64_t>(value, kQueueSize.Min,
                                                                     kQueueSize.Max)));
}

// ---------------------------------------------------------------- TQNOperationList

TQNOperationList::TQNOperationList(int capacity) : FSlots(std::size_t(std::max(capacity, 1))) {}

bool TQNOperationList::Push(const IPXNotifyOperation& operation)
{
    std::unique_lock lock(FMutex);
    FNotFull.wait(lock, [&] { return FClosed || FCount < FSlots.size(); });
    if (FClosed)
        return false;
    TSlot& slot = FSlots[(FHead + FCount) % FSlots.size()];
    if (const auto* frame = operation.As<TPXSuppliedBufferOperation>())
        slot.Buffer = frame->Buffer;
    else
        slot.Other = operation.Clone();
    ++FCount;
    FNotEmpty.notify_one();
    return true;
}

bool TQNOperationList::PopAndRun(const std::function<void(const IPXNotifyOperation&)>& process)
{
    TSlot slot;
    {
        std::unique_lock lock(FMutex);
        FNotEmpty.wait(lock, [&] { return FClosed || FCount > 0; });
        if (FCount == 0)
            return false;
        slot = std::move(FSlots[FHead]);
        FHead = (FHead + 1) % FSlots.size();
        --FCount;
        FBusy = true;
        FNotFull.notify_one();
    }
    try {
        if (slot.Other)
            process(*slot.Other);
        else
            process(TPXSuppliedBufferOperation(std::move(slot.Buffer)));
    } catch (...) {
        std::lock_guard lock(FMutex);
        FBusy = false;
        FIdle.notify_all();
        throw;
    }
    std::lock_guard lock(FMutex);
    FBusy = false;
    if (FCount == 0)
        FIdle.notify_all();
    return true;
}

void TQNOperationList::Close(bool discard)
{
    std::lock_guard lock(FMutex);
    FClosed = true;
    if (discard) {
        for (; FCount > 0; --FCount, FHead = (FHead + 1) % FSlots.size())
            FSlots[FHead] = TSlot();
        if (!FBusy)
            FIdle.notify_all();
    }
    FNotEmpty.notify_all();
    FNotFull.notify_all();
}

void TQNOperationList::WaitIdle()
{
    std::unique_lock lock(FMutex);
    FIdle.wait(lock, [&] { return FCount == 0 && !FBusy; });
}

bool TQNOperationList::IsIdle()
{
    std::lock_guard lock(FMutex);
    return FCount == 0 && !FBusy;
}

// ---------------------------------------------------------------- TQNFilterThread

TQNFilterThread::TQNFilterThread(TProcess process, int queueSize, TQNThreadPriority priority)
    : FProcess(std::move(process)), FQueue(queueSize),
      FThread([this, priority] { Run(priority); })
{
}

TQNFilterThread::~TQNFilterThread()
{
    FQueue.Close(true);
    if (FThread.joinable())
        FThread.join();
}

void TQNFilterThread::Finish()
{
    FQueue.Close();
    if (FThread.joinable())
        FThread.join();
}

void TQNFilterThread::Push(const IPXNotifyOperation& operation) { FQueue.Push(operation); }

void TQNFilterThread::WaitIdle() { FQueue.WaitIdle(); }

std::exception_ptr TQNFilterThread::TakeError()
{
    std::lock_guard lock(FErrorMutex);
    return std::exchange(FError, nullptr);
}

void TQNFilterThread::Run(TQNThreadPriority priority)
{
    // Linux threads have no priority levels under the normal scheduler; a nice value per thread
    // is the closest. Raising it needs privileges, so failures are ignored.
    static constexpr int kNice[] = {19, 10, 5, 0, -5, -10, -15};
    setpriority(PRIO_PROCESS, pid_t(syscall(SYS_gettid)), kNice[priority]);
    while (true) {
        try {
            if (!FQueue.PopAndRun(FProcess))
                return;
        } catch (...) {
            std::lock_guard lock(FErrorMutex);
            if (!FError)
                FError = std::current_exception();
        }
    }
}

} // namespace framix
