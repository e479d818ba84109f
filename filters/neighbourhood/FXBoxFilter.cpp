// SPDX-License-Identifier: MIT
// The box and rank filter.
#include "filters/neighbourhood/FXBoxFilter.h"

#include "framework/primitives/dispatch/Fxdispatcher.h"
#include "framework/properties/FXPalette.h"

namespace framix {

TFXBoxFilter::TFXBoxFilter(TKTComponent* owner) : TFXCommonROIMatrixFilterIntermidiate(owner) {}

const TFXClassInfo& TFXBoxFilter::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXProp<&TFXBoxFilter::GetFilterMode, &TFXBoxFilter::SetFilterMode>(kFilterMode),
    };
    static const TFXClassInfo info{"TFXBoxFilter",
                                   &TFXCommonROIMatrixFilterIntermidiate::ClassInfo(), kProps};
    return info;
}

TFXBoxFilterMode TFXBoxFilter::GetFilterMode() const
{
    auto guard = Lock().Read();
    return FFilterMode;
}

void TFXBoxFilter::SetFilterMode(TFXBoxFilterMode value)
{
    Lock().Store(FFilterMode, value <= bfmMedian ? value : bfmAverage);
}

void TFXBoxFilter::SetVideoFormat(IFXImageBuffer& buffer)
{
    AdmitFormats(buffer, kFXNativeFormats);
}

namespace {

// The four variants of one operation, by format.
struct TFXBoxVariants {
    ipp::TPtr_ippiFilterBox_8u_C1R C1;
    ipp::TPtr_ippiFilterBox_8u_C3R C3;
    ipp::TPtr_ippiFilterBox_8u_C4R C4;
    ipp::TPtr_ippiFilterBox_16u_C1R C1_16u;
};

TFXBoxVariants Variants(TFXBoxFilterMode mode)
{
    using namespace ipp;
    switch (mode) {
    case bfmMin:
        return {ippiFilterMin_8u_C1R, ippiFilterMin_8u_C3R, ippiFilterMin_8u_C4R,
                ippiFilterMin_16u_C1R};
    case bfmMax:
        return {ippiFilterMax_8u_C1R, ippiFilterMax_8u_C3R, ippiFilterMax_8u_C4R,
                ippiFilterMax_16u_C1R};
    case bfmMedian:
        return {ippiFilterMedian_8u_C1R, ippiFilterMedian_8u_C3R, ippiFilterMedian_8u_C4R,
                ippiFilterMedian_16u_C1R};
    default:
        return {ippiFilterBox_8u_C1R, ippiFilterBox_8u_C3R, ippiFilterBox_8u_C4R,
                ippiFilterBox_16u_C1R};
    }
}

} // namespace

bool TFXBoxFilter::PerformFilter(const std::uint8_t* source, int sourceStride,
                                 std::uint8_t* destination, int destinationStride,
                                 TFXImageSize roiSize, TFXImageSize maskSize, TFXPoint anchor,
                                 TFXVideoFormat format)
{
    const TFXBoxVariants v = Variants(FFilterMode);
    const IppiSize size{roiSize.width, roiSize.height};
    const IppiSize mask{maskSize.width, maskSize.height};
    const IppiPoint at{anchor.x, anchor.y};
    IppStatus status;
    if (format == vfGray8)
        status = v.C1(source, sourceStride, destination, destinationStride, size, mask, at);
    else if (format == vfGray16)
        status =
            v.C1_16u(reinterpret_cast<const Ipp16u*>(source), sourceStride,
                     reinterpret_cast<Ipp16u*>(destination), destinationStride, size, mask, at);
    else if (format == vfRGB32)
        status = v.C4(source, sourceStride, destination, destinationStride, size, mask, at);
    else
        status = v.C3(source, sourceStride, destination, destinationStride, size, mask, at);
    if (status != ippStsNoErr) // an even median mask, say: the region keeps the input
        KeepSourceRegion(source, sourceStride, destination, destinationStride, roiSize, format);
    return true;
}

void RegisterFXBoxFilter(TFXPalette& palette)
{
    palette.Register<TFXBoxFilter>(kFXPalettePage);
}

} // namespace framix
