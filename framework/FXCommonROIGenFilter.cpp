// SPDX-License-Identifier: MIT
// Generator mode of region-of-interest filters.
#include "framework/FXCommonROIGenFilter.h"

namespace framix {

TFXCommonROIGenFilter::TFXCommonROIGenFilter(TKTComponent* owner)
    : TFXCommonROIFilter(owner), FImageSize(this, Lock(), nullptr),
      FGenerator(*this, Lock(), GetImageOutputPin())
{
}

const TFXClassInfo& TFXCommonROIGenFilter::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXGroup<static_cast<TFXFilterOutputSize& (TFXCommonROIGenFilter::*)()>(
            &TFXCommonROIGenFilter::GetImageSize)>(
            {.Name = "ImageSize", .Help = "size of generated frames"}),
        FXProp<&TFXCommonROIGenFilter::GetFrameRate, &TFXCommonROIGenFilter::SetFrameRate>(
            kFrameRate),
    };
    static const TFXClassInfo info{"TFXCommonROIGenFilter", &TFXCommonROIFilter::ClassInfo(),
                                   kProps};
    return info;
}

double TFXCommonROIGenFilter::GetFrameRate() const
{
    auto guard = Lock().Read();
    return FFrameRate;
}

void TFXCommonROIGenFilter::SetFrameRate(double value)
{
    Lock().StoreClamped(FFrameRate, value, kFrameRate);
}

void TFXCommonROIGenFilter::GetImageSize(int& width, int& height)
{
    width = FImageSize.GetWidth();
    height = FImageSize.GetHeight();
}

void TFXCommonROIGenFilter::StartSource() { FGenerator.Start(); }

bool TFXCommonROIGenFilter::PumpFrame() { return FGenerator.Pump(); }

void TFXCommonROIGenFilter::StopSource() { FGenerator.Stop(); }

void TFXCommonROIGenFilter::RequestPump(int count)
{
    for (int i = 0; i < count && PumpFrame(); ++i) {
    }
}

bool TFXCommonROIGenFilter::SourceDispatch(TPXBasicPin& pin, TPXDataType type,
                                           const IPXNotifyOperation& operation,
                                           TPXNotifyState state)
{
    if (IsActiveSource()) {
        if (const auto* request = operation.As<TPXPumpRequestOperation>()) {
            RequestPump(request->Count);
            return true;
        }
        if (FGenerator.HandleQuery(operation))
            return true;
    }
    return TFXCommonROIFilter::SourceDispatch(pin, type, operation, state);
}

} // namespace framix
