// SPDX-License-Identifier: MIT
// A filter that can process its operations on a worker thread of its own.
#pragma once

#include <memory>
#include <mutex>

#include "framework/QNBasicCommonFilter.h"
#include "framework/QNThreading.h"

namespace framix {

// With `Threading.Enabled` the operations reaching an input pin are queued (in order) and run by
// the filter's worker; the sender only waits when the queue is full. Without it they run on the
// sender's thread. A change of `Threading` takes effect at the next operation, after everything
// queued before it has run, so the order of operations is always kept.
class TQNBasicThreadedFilter : public TQNBasicCommonFilter {
public:
    explicit TQNBasicThreadedFilter(TKTComponent* owner);
    ~TQNBasicThreadedFilter() override;
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    TQNThreading& GetThreading() { return FThreading; }
    void SetThreading(const TQNThreading& value) { FThreading.Assign(value); }

    // Waits until the worker has run everything queued so far; rethrows the first error an
    // operation raised on the worker. Returns at once without a worker.
    void WaitIdle();
    // True while a worker thread exists.
    bool HasWorker() const;
    // True when no operation waits for or runs on the worker.
    bool IsIdle() const;

protected:
    bool SinkDispatch(TPXBasicPin& pin, TPXDataType type, const IPXNotifyOperation& operation,
                      TPXNotifyState state) override;
    // Whether operations may run on the sender's thread.
    virtual bool CanInline();

    // Runs what the worker still holds, then ends it; called before the component is destroyed.
    void BeforeDestruction() override;

private:
    TQNThreading FThreading;
    mutable std::mutex FWorkerMutex;  // guards FWorker and serialises the switch to and fro
    std::unique_ptr<TQNFilterThread> FWorker;
};

} // namespace framix
