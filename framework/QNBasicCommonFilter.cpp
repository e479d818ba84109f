// SPDX-License-Identifier: MIT
// Operation routing of the filter root.
#include "framework/QNBasicCommonFilter.h"

namespace framix {

TQNBasicCommonFilter::TQNBasicCommonFilter(TKTComponent* owner) : TKTComponent(owner) {}

const TFXClassInfo& TQNBasicCommonFilter::ClassInfo()
{
    static const TFXClassInfo info{"TQNBasicCommonFilter", &TKTComponent::ClassInfo(), {}};
    return info;
}

TPXDispatch TQNBasicCommonFilter::SinkDispatcher()
{
    return [this](TPXBasicPin& pin, TPXDataType type, const IPXNotifyOperation& op,
                  TPXNotifyState state) { return SinkDispatch(pin, type, op, state); };
}

TPXDispatch TQNBasicCommonFilter::SourceDispatcher()
{
    return [this](TPXBasicPin& pin, TPXDataType type, const IPXNotifyOperation& op,
                  TPXNotifyState state) { return SourceDispatch(pin, type, op, state); };
}

bool TQNBasicCommonFilter::SinkDispatch(TPXBasicPin& pin, TPXDataType type,
                                        const IPXNotifyOperation& operation, TPXNotifyState state)
{
    IntSingleOperation(operation);
    return true;
}

void TQNBasicCommonFilter::IntSingleOperation(const IPXNotifyOperation& operation)
{
    if (operation.As<TPXSuppliedBufferOperation>()) {
        BufferOperation(operation, nsDownstream);
    } else if (operation.As<TPXStopOperation>()) {
        {
            TKTLockGuard guard(Lock());
            StreamStop();
        }
        OutputPinsNotify(operation);
    } else if (!FilterPump(operation)) {
        OutputPinsNotify(operation);
    }
}

void TQNBasicCommonFilter::BufferOperation(const IPXNotifyOperation& operation,
                                           TPXNotifyState state)
{
    if (const auto* frame = operation.As<TPXSuppliedBufferOperation>())
        IntSingleBufferOperation(frame->Buffer);
}

bool TQNBasicCommonFilter::FilterPump(const IPXNotifyOperation& operation)
{
    if (operation.As<TPXStartPumpOperation>()) {
        StartPump(operation);
        return true;
    }
    return false;
}

void TQNBasicCommonFilter::StartPump(const IPXNotifyOperation& operation)
{
    OutputPinsNotify(operation);
}

void TQNBasicCommonFilter::OutputPinsNotify(const IPXNotifyOperation& operation)
{
    if (TPXSourcePin* output = GetOutputPin())
        output->Notify(operation);
}

bool TQNBasicCommonFilter::SourceDispatch(TPXBasicPin& pin, TPXDataType type,
                                          const IPXNotifyOperation& operation,
                                          TPXNotifyState state)
{
    if (operation.As<TPXPumpRequestOperation>()) {
        PumpRequest(operation);
        return true;
    }
    // Stream queries and master-pump choices travel on towards the source.
    TPXSinkPin* input = GetInputPin();
    return input && input->NotifyUpstream(operation);
}

void TQNBasicCommonFilter::PumpRequest(const IPXNotifyOperation& operation)
{
    if (TPXSinkPin* input = GetInputPin())
        input->NotifyUpstream(operation);
}

} // namespace framix
