// SPDX-License-Identifier: MIT
// Stream and frame handling of sink components.
#include "framework/FXSinkFilter.h"

namespace framix {

TFXSinkFilter::TFXSinkFilter(TKTComponent* owner)
    : TQNBasicThreadedEnableFilter(owner), FInputPin(*this, "InputPin", Lock(), SinkDispatcher())
{
}

const TFXClassInfo& TFXSinkFilter::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXPin<&TFXSinkFilter::GetImageInputPin>({.Name = "InputPin", .Help = "frames in"}),
    };
    static const TFXClassInfo info{"TFXSinkFilter", &TQNBasicThreadedEnableFilter::ClassInfo(),
                                   kProps};
    return info;
}

void TFXSinkFilter::IntSingleOperation(const IPXNotifyOperation& operation)
{
    if (const auto* start = operation.As<TPXStartFrameOperation>()) {
        TKTLockGuard guard(Lock());
        VideoStreamStart(start->Width, start->Height, int(start->Format));
        StreamStart();
        return;
    }
    TQNBasicThreadedEnableFilter::IntSingleOperation(operation);
}

void TFXSinkFilter::IntSingleBufferOperation(const FXImageBufferPtr& buffer)
{
    if (buffer)
        BaseProcessImage(*buffer);
}

void TFXSinkFilter::BaseProcessImage(IFXImageBuffer& buffer)
{
    if (!IsEnabled())
        return;
    TKTLockGuard guard(Lock());
    ProcessImage(buffer);
}

} // namespace framix
