// SPDX-License-Identifier: MIT
// The colour twist.
#include "filters/colour/FXColorTwist.h"

#include "filters/colour/detail/FXColourFrames.h"
#include "framework/primitives/dispatch/Fxdispatcher.h"
#include "framework/properties/FXPalette.h"

namespace framix {

// ---------------------------------------------------------------- one row

const TFXClassInfo& TFXColorChannelTwist::ClassInfo()
{
    using T = TFXColorChannelTwist;
    static constexpr TFXPropInfo kProps[] = {
        FXProp<&T::GetRed, &T::SetRed>(kRed),
        FXProp<&T::GetGreen, &T::SetGreen>(kGreen),
        FXProp<&T::GetBlue, &T::SetBlue>(kBlue),
        FXProp<&T::GetOffset, &T::SetOffset>(kOffset),
    };
    static const TFXClassInfo info{"TFXColorChannelTwist", &TKTPersistent::ClassInfo(), kProps};
    return info;
}

float TFXColorChannelTwist::GetItem(int index) const
{
    auto guard = Lock().Read();
    return FRow[index];
}

void TFXColorChannelTwist::SetItem(int index, float value)
{
    auto guard = Lock().Write();
    FRow[index] = value;
}

// ---------------------------------------------------------------- the matrix

// Intentional: each published row is bound to the matrix row of its output byte in pixel order
// (red to row 2, blue to row 0), created red, green, blue and destroyed in reverse.
TFXColorTwists::TFXColorTwists(IKTLock& lock)
    : TKTPersistent(&lock), FRed(FMatrix[2], lock), FGreen(FMatrix[1], lock),
      FBlue(FMatrix[0], lock)
{
}

const TFXClassInfo& TFXColorTwists::ClassInfo()
{
    using T = TFXColorTwists;
    static constexpr TFXPropInfo kProps[] = {
        FXGroup<&T::GetRedTwist>({.Name = "RedTwist", .Help = "row producing the output's red"}),
        FXGroup<&T::GetGreenTwist>(
            {.Name = "GreenTwist", .Help = "row producing the output's green"}),
        FXGroup<&T::GetBlueTwist>({.Name = "BlueTwist", .Help = "row producing the output's blue"}),
    };
    static const TFXClassInfo info{"TFXColorTwists", &TKTPersistent::ClassInfo(), kProps};
    return info;
}

// ---------------------------------------------------------------- the component

TFXColorTwist::TFXColorTwist(TKTComponent* owner) : TFXCommonFilter(owner), FColorTwists(Lock()) {}

const TFXClassInfo& TFXColorTwist::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXGroup<&TFXColorTwist::GetColorTwists>(
            {.Name = "ColorTwists", .Help = "the 3x4 colour matrix"}),
    };
    static const TFXClassInfo info{"TFXColorTwist", &TFXCommonFilter::ClassInfo(), kProps};
    return info;
}

void TFXColorTwist::SetVideoFormat(IFXImageBuffer& buffer)
{
    AdmitFormats(buffer, {vfRGB32});
}

void TFXColorTwist::FilterInternalOperation(IFXImageBuffer& input, IFXImageBuffer& output)
{
    output.CopyFrom(input);
    const std::uint8_t* source = input.GetReadPointer();
    std::uint8_t* destination = output.GetWritePointer();
    const auto& matrix = FColorTwists.Matrix();
    const bool rgb32 = detail::FXIsRGB32(input);
    detail::FXRunKeepingAlpha(
        rgb32, source, input.GetRowStride(), destination, output.GetRowStride(),
        detail::FXRoiOf(input), [&](const Ipp8u* s, int ss, Ipp8u* d, int ds, IppiSize roi) {
            return (rgb32 ? ipp::ippiColorTwist32f_8u_AC4R
                          : ipp::ippiColorTwist32f_8u_C3R)(s, ss, d, ds, roi, matrix);
        });
}

void RegisterFXColorTwist(TFXPalette& palette)
{
    palette.Register<TFXColorTwist>(kFXPalettePage);
}

} // namespace framix
