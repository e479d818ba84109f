// SPDX-License-Identifier: MIT
// The root of every filter: operations arrive through pins and are handled in order.
#pragma once

#include "framework/FXPins.h"
#include "framework/KTComponent.h"

namespace framix {

// Routes each operation that reaches one of its pins: frames to BufferOperation, stop to
// StreamStop, pump operations to FilterPump; everything else goes on unchanged. Derived bases
// add the video stream handling.
class TQNBasicCommonFilter : public TKTComponent {
public:
    explicit TQNBasicCommonFilter(TKTComponent* owner);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    // The output that OutputPinsNotify sends through (null for sinks).
    virtual TPXSourcePin* GetOutputPin() { return nullptr; }
    // The input pump requests and stream queries are passed up through (null for sources).
    virtual TPXSinkPin* GetInputPin() { return nullptr; }

protected:
    // Pump-family operations: start-pump goes downstream, requests and queries go upstream.
    virtual bool FilterPump(const IPXNotifyOperation& operation);
    // One operation, in arrival order (on the worker thread when threading is on).
    virtual void IntSingleOperation(const IPXNotifyOperation& operation);
    // One frame.
    virtual void IntSingleBufferOperation(const FXImageBufferPtr& buffer) {}
    virtual void BufferOperation(const IPXNotifyOperation& operation, TPXNotifyState state);
    virtual void EnabledChanged() {}
    virtual void StreamStop() {}
    virtual void StreamStart() {}
    // What reaches an input pin (on the sender's thread).
    virtual bool SinkDispatch(TPXBasicPin& pin, TPXDataType type,
                              const IPXNotifyOperation& operation, TPXNotifyState state);
    virtual void OutputPinsNotify(const IPXNotifyOperation& operation);
    // What reaches an output pin from downstream (pump requests, stream queries).
    virtual bool SourceDispatch(TPXBasicPin& pin, TPXDataType type,
                                const IPXNotifyOperation& operation, TPXNotifyState state);
    virtual void StartPump(const IPXNotifyOperation& operation);
    virtual void PumpRequest(const IPXNotifyOperation& operation);

    // Callbacks for pins this filter creates.
    TPXDispatch SinkDispatcher();
    TPXDispatch SourceDispatcher();
};

} // namespace framix
