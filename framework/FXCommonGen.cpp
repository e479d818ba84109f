// SPDX-License-Identifier: MIT
// Generators: pumping, announcing and the generated frame.
#include "framework/FXCommonGen.h"

namespace framix {

TFXCommonGen::TFXCommonGen(TKTComponent* owner)
    : TQNBasicCommonFilter(owner), FOutputPin(*this, "OutputPin", Lock(), SourceDispatcher()),
      FImageSize(this, Lock(), nullptr), FGenerator(FOutputPin)
{
}

TFXCommonGen::~TFXCommonGen() = default;

const TFXClassInfo& TFXCommonGen::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXGroup<static_cast<TFXFilterOutputSize& (TFXCommonGen::*)()>(&TFXCommonGen::GetImageSize)>(
            {.Name = "ImageSize", .Help = "size of the generated frames"}),
        FXProp<&TFXCommonGen::GetFrameRate, &TFXCommonGen::SetFrameRate>(kFrameRate),
        FXPin<&TFXCommonGen::GetImageOutputPin>({.Name = "OutputPin", .Help = "frames out"}),
    };
    static const TFXClassInfo info{"TFXCommonGen", &TQNBasicCommonFilter::ClassInfo(), kProps};
    return info;
}

double TFXCommonGen::GetFrameRate() const
{
    auto guard = Lock().Read();
    return FFrameRate;
}

void TFXCommonGen::SetFrameRate(double value) { Lock().StoreClamped(FFrameRate, value, kFrameRate); }

void TFXCommonGen::GetImageSize(int& width, int& height)
{
    width = FImageSize.GetWidth();
    height = FImageSize.GetHeight();
}

void TFXCommonGen::StartSource()
{
    TKTLockGuard guard(Lock());
    IntStart();
    int width = 0;
    int height = 0;
    GetImageSize(width, height);
    FGenerator.Start(width, height, GetVideoFormat(), FFrameRate);
}

bool TFXCommonGen::PumpFrame() { return IntPump(); }

bool TFXCommonGen::IntPump()
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
    // Sent outside the lock: setters need not wait while the frame travels downstream.
    FGenerator.Send(std::move(frame));
    return true;
}

void TFXCommonGen::StopSource()
{
    {
        TKTLockGuard guard(Lock());
        IntStop();
    }
    FGenerator.Stop();
}

void TFXCommonGen::RequestPump(int count)
{
    for (int i = 0; i < count && IntPump(); ++i) {
    }
}

bool TFXCommonGen::SourceDispatch(TPXBasicPin& pin, TPXDataType type,
                                  const IPXNotifyOperation& operation, TPXNotifyState state)
{
    if (const auto* request = operation.As<TPXPumpRequestOperation>()) {
        RequestPump(request->Count);
        return true;
    }
    if (operation.As<TPXQueryStreamOperation>()) {
        TKTLockGuard guard(Lock());
        FGenerator.Reannounce();
        return true;
    }
    return TQNBasicCommonFilter::SourceDispatch(pin, type, operation, state);
}

} // namespace framix
