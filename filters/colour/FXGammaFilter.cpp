// SPDX-License-Identifier: MIT
// The gamma filter.
#include "filters/colour/FXGammaFilter.h"

#include "filters/colour/detail/FXColourFrames.h"
#include "framework/primitives/dispatch/Fxdispatcher.h"
#include "framework/properties/FXPalette.h"

namespace framix {

TFXGammaFilter::TFXGammaFilter(TKTComponent* owner) : TFXCommonFilter(owner) {}

const TFXClassInfo& TFXGammaFilter::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXProp<&TFXGammaFilter::GetGammaType, &TFXGammaFilter::SetGammaType>(kGammaType),
    };
    static const TFXClassInfo info{"TFXGammaFilter", &TFXCommonFilter::ClassInfo(), kProps};
    return info;
}

TFXGammaType TFXGammaFilter::GetGammaType() const
{
    auto guard = Lock().Read();
    return FGammaType;
}

void TFXGammaFilter::SetGammaType(TFXGammaType value)
{
    Lock().Store(FGammaType, value == gtInverse ? gtInverse : gtForward);
}

void TFXGammaFilter::SetVideoFormat(IFXImageBuffer& buffer)
{
    AdmitFormats(buffer, {vfRGB32});
}

void TFXGammaFilter::FilterInternalOperation(IFXImageBuffer& input, IFXImageBuffer& output)
{
    output.CopyFrom(input);
    const std::uint8_t* source = input.GetReadPointer();
    std::uint8_t* destination = output.GetWritePointer();
    const int sourceStride = input.GetRowStride(), destinationStride = output.GetRowStride();
    const IppiSize roi = detail::FXRoiOf(input);
    const bool rgb32 = detail::FXIsRGB32(input), inverse = FGammaType == gtInverse;
    const auto gamma = rgb32 ? (inverse ? ipp::ippiGammaInv_8u_AC4R : ipp::ippiGammaFwd_8u_AC4R)
                             : (inverse ? ipp::ippiGammaInv_8u_C3R : ipp::ippiGammaFwd_8u_C3R);
    detail::FXRunKeepingAlpha(rgb32, source, sourceStride, destination, destinationStride, roi,
                              gamma);
}

void RegisterFXGammaFilter(TFXPalette& palette)
{
    palette.Register<TFXGammaFilter>(kFXPalettePage);
}

} // namespace framix
