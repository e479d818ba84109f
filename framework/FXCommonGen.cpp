// SPDX-License-Identifier: MIT
// Generators: pumping, announcing and the generated frame.
#include "framework/FXCommonGen.h"

namespace framix {

TFXCommonGen::TFXCommonGen(TKTComponent* owner)
    : TQNBasicCommonFilter(owner), FOutputPin(*this, "OutputPin", Lock(), SourceDispatcher()),
      FImageSize(this, Lock(), nullptr), FGenerator(*this, Lock(), FOutputPin)
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

void TFXCommonGen::StartSource() { FGenerator.Start(); }

bool TFXCommonGen::PumpFrame() { return IntPump(); }

bool TFXCommonGen::IntPump() { return FGenerator.Pump(); }

void TFXCommonGen::StopSource() { FGenerator.Stop(); }

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
    return FGenerator.HandleQuery(operation) ||
           TQNBasicCommonFilter::SourceDispatch(pin, type, operation, state);
}

} // namespace framix
