// SPDX-License-Identifier: MIT
// The worker-thread switch of filters.
#include "framework/QNBasicThreadedFilter.h"

namespace framix {

TQNBasicThreadedFilter::TQNBasicThreadedFilter(TKTComponent* owner)
    : TQNBasicCommonFilter(owner), FThreading(this, Lock(), nullptr)
{
}

TQNBasicThreadedFilter::~TQNBasicThreadedFilter()
{
    std::lock_guard lock(FWorkerMutex);
    FWorker.reset();  // drops anything still queued: this object is already half destroyed
}

const TFXClassInfo& TQNBasicThreadedFilter::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXGroup<&TQNBasicThreadedFilter::GetThreading>(
            {.Name = "Threading", .Help = "worker thread of the filter"}),
    };
    static const TFXClassInfo info{"TQNBasicThreadedFilter", &TQNBasicCommonFilter::ClassInfo(),
                                   kProps};
    return info;
}

bool TQNBasicThreadedFilter::CanInline() { return !FThreading.GetEnabled(); }

bool TQNBasicThreadedFilter::HasWorker() const
{
    std::lock_guard lock(FWorkerMutex);
    return FWorker != nullptr;
}

bool TQNBasicThreadedFilter::SinkDispatch(TPXBasicPin& pin, TPXDataType type,
                                          const IPXNotifyOperation& operation,
                                          TPXNotifyState state)
{
    TQNFilterThread* worker = nullptr;
    {
        std::lock_guard lock(FWorkerMutex);
        const bool inline_ = CanInline();
        if (inline_ && FWorker) {
            // Switching back to the sender's thread: everything queued runs first.
            FWorker->Finish();
            FWorker.reset();
        } else if (!inline_ && !FWorker) {
            FWorker = std::make_unique<TQNFilterThread>(
                [this](const IPXNotifyOperation& op) {
                    if (FXFrameStatsEnabled() && op.As<TPXSuppliedBufferOperation>()) {
                        TFXFrameTimer timer(&GetFrameStats());
                        IntSingleOperation(op);
                    } else {
                        IntSingleOperation(op);
                    }
                },
                FThreading.GetQueueSize(), FThreading.GetPriority());
        }
        worker = FWorker.get();
        if (worker) {
            // Pushed under the mutex so a concurrent switch cannot overtake this operation.
            // The worker's time is measured on the worker; waiting for room is nobody's work.
            if (FXFrameStatsEnabled()) {
                TFXExcludedTime handOff;
                worker->Push(operation);
            } else {
                worker->Push(operation);
            }
            return true;
        }
    }
    IntSingleOperation(operation);
    return true;
}

bool TQNBasicThreadedFilter::IsIdle() const
{
    std::lock_guard lock(FWorkerMutex);
    return !FWorker || FWorker->IsIdle();
}

void TQNBasicThreadedFilter::WaitIdle()
{
    std::exception_ptr error;
    {
        std::lock_guard lock(FWorkerMutex);
        if (!FWorker)
            return;
        FWorker->WaitIdle();
        error = FWorker->TakeError();
    }
    if (error)
        std::rethrow_exception(error);
}

void TQNBasicThreadedFilter::BeforeDestruction()
{
    std::lock_guard lock(FWorkerMutex);
    if (FWorker) {
        FWorker->Finish();
        FWorker.reset();
    }
    TQNBasicCommonFilter::BeforeDestruction();
}

} // namespace framix
