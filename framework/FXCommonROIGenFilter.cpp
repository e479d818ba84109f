// SPDX-License-Identifier: MIT
// Generator mode of region-of-interest filters.
#include "framework/FXCommonROIGenFilter.h"

namespace framix {

TFXCommonROIGenFilter::TFXCommonROIGenFilter(TKTComponent* owner)
    : TFXCommonROIFilter(owner), FImageSize(this, Lock(), nullptr),
      FGenerator(GetImageOutputPin())
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

void TFXCommonROIGenFilter::StartSource()
{
    TKTLockGuard guard(Lock());
    IntStart();
    int width = 0;
    int height = 0;
    GetImageSize(width, height);
    FGenerator.Start(width, height, GetVideoFormat(), FFrameRate);
}

bool TFXCommonROIGenFilter::PumpFrame()
{
    FXImageBufferPtr frame;
    {
        TKTLockGuard guard(Lock());
        if (!FGenerator.IsStarted())
            IntStart();
        int width = 0;
        int height = 0;
        GetImageSize(width, height);
        frame = FGenerator.Produce(width, height, GetVideoFormat(), FFrameRate,
                                   [this](IFXImageBuffer& buffer) { GenerateFrame(buffer); });
    }
    FGenerator.Send(std::move(frame));
    return true;
}

void TFXCommonROIGenFilter::StopSource()
{
    {
        TKTLockGuard guard(Lock());
        IntStop();
    }
    FGenerator.Stop();
}

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
        if (operation.As<TPXQueryStreamOperation>()) {
            TKTLockGuard guard(Lock());
            FGenerator.Reannounce();
            return true;
        }
    }
    return TFXCommonROIFilter::SourceDispatch(pin, type, operation, state);
}

} // namespace framix
