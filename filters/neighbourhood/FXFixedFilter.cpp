// SPDX-License-Identifier: MIT
// The fixed filters.
#include "filters/neighbourhood/FXFixedFilter.h"

#include "framework/primitives/dispatch/Fxdispatcher.h"
#include "framework/properties/FXPalette.h"

namespace framix {

namespace {

bool TakesMaskSide(TFXFixedFilterType type)
{
    return type >= ftLaplace && type <= ftLowpass;
}

} // namespace

TFXFixedFilter::TFXFixedFilter(TKTComponent* owner) : TFXCommonROIFilter(owner) {}

const TFXClassInfo& TFXFixedFilter::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXProp<&TFXFixedFilter::GetFilterType, &TFXFixedFilter::SetFilterType>(kFilterType),
        FXProp<&TFXFixedFilter::GetMaskSize, &TFXFixedFilter::SetMaskSize>(kMaskSize),
    };
    static const TFXClassInfo info{"TFXFixedFilter", &TFXCommonROIFilter::ClassInfo(), kProps};
    return info;
}

TFXFixedFilterType TFXFixedFilter::GetFilterType() const
{
    auto guard = Lock().Read();
    return FFilterType;
}

void TFXFixedFilter::SetFilterType(TFXFixedFilterType value)
{
    auto guard = Lock().Write();
    const bool wasColourMedian = FFilterType == ftMedianColor;
    Lock().Store(FFilterType, value);
    // The colour median admits other formats: a grey stream changes its announced format.
    if (wasColourMedian != (FFilterType == ftMedianColor))
        RequestReannounce();
}

TFXFixedMaskSize TFXFixedFilter::GetMaskSize() const
{
    auto guard = Lock().Read();
    return FMaskSize;
}

void TFXFixedFilter::SetMaskSize(TFXFixedMaskSize value)
{
    Lock().Store(FMaskSize, value);
}

int TFXFixedFilter::GetLastStatus() const
{
    auto guard = Lock().Read();
    return FLastStatus;
}

void TFXFixedFilter::SetVideoFormat(IFXImageBuffer& buffer)
{
    // The colour median exists for three- and four-channel images only.
    AdmitFormats(buffer, FFilterType == ftMedianColor ? TFXFormatSet{vfRGB32} : kFXNativeFormats);
}

void TFXFixedFilter::GetMaskAnchor(TFXImageSize& maskSize, TFXPoint& anchor)
{
    // Intentional: the medians report 3 x 3 even when they filter with 5 x 5.
    const int side = TakesMaskSide(FFilterType) && FMaskSize == fms5x5 ? 5 : 3;
    maskSize = {side, side};
    anchor = {side / 2 + 1, side / 2 + 1};
}

TFXMaskReach TFXFixedFilter::GetMaskReach(const TFXImageSize& maskSize, const TFXPoint& anchor)
{
    // The anchor is kept as a margin on every side: it exceeds what the primitives read around
    // a pixel (1, or 2 for 5 x 5), the 5 x 5 medians' reach included.
    return {anchor.x, anchor.y, anchor.x, anchor.y};
}

void TFXFixedFilter::FilterInternalOperation(IFXImageBuffer& input, IFXImageBuffer& output)
{
    const TFXVideoFormat format = input.GetFormat();
    TFXImageSize roi = input.GetSize();
    const TFXRect processed = GetProcessedRect(roi.width, roi.height);
    if (processed.IsEmpty()) {
        FLastStatus = ippStsSizeErr; // the primitive would refuse an empty region
        return;                      // and the output keeps the input image
    }
    const std::uint8_t* source = input.GetReadPointer();
    // vfRGB32 starts as a whole copy of the input: the four-channel variants leave alpha alone,
    // so alpha leaves exactly as it came in, everywhere, without a second pass over the frame
    // (copying is cheaper than restoring the alpha of fresh memory afterwards).
    std::uint8_t* destination =
        format == vfRGB32 ? output.GetModifyPointer() : PrepareOutput(input, output, processed);
    ReclaculateRoiAndOffset(roi, source, input.GetRowStride(), output, destination, format);

    const int sourceStride = input.GetRowStride();
    const int destinationStride = output.GetRowStride();
    const IppiSize size{roi.width, roi.height};
    const IppiMaskSize mask = FMaskSize == fms5x5 ? ippMskSize5x5 : ippMskSize3x3;
    // The variant for the format: vfRGB32 AC4 (alpha untouched), vfGray8 C1, vfGray16 the
    // 16-bit C1 function, every other format C3.
    auto run = [&](auto c1, auto c3, auto ac4, auto c1_16u, auto... maskCode) -> IppStatus {
        if (format == vfRGB32)
            return ac4(source, sourceStride, destination, destinationStride, size, maskCode...);
        if (format == vfGray8)
            return c1(source, sourceStride, destination, destinationStride, size, maskCode...);
        if (format == vfGray16)
            return c1_16u(reinterpret_cast<const Ipp16u*>(source), sourceStride,
                          reinterpret_cast<Ipp16u*>(destination), destinationStride, size,
                          maskCode...);
        return c3(source, sourceStride, destination, destinationStride, size, maskCode...);
    };
    using namespace ipp;
    IppStatus status = ippStsNoOperation;
    switch (FFilterType) {
    case ftPrewittHoriz:
        status = run(ippiFilterPrewittHoriz_8u_C1R, ippiFilterPrewittHoriz_8u_C3R,
                     ippiFilterPrewittHoriz_8u_AC4R, ippiFilterPrewittHoriz_16u_C1R);
        break;
    case ftPrewittVert:
        status = run(ippiFilterPrewittVert_8u_C1R, ippiFilterPrewittVert_8u_C3R,
                     ippiFilterPrewittVert_8u_AC4R, ippiFilterPrewittVert_16u_C1R);
        break;
    case ftSobelHoriz:
        status = run(ippiFilterSobelHoriz_8u_C1R, ippiFilterSobelHoriz_8u_C3R,
                     ippiFilterSobelHoriz_8u_AC4R, ippiFilterSobelHoriz_16u_C1R);
        break;
    case ftSobelVert:
        status = run(ippiFilterSobelVert_8u_C1R, ippiFilterSobelVert_8u_C3R,
                     ippiFilterSobelVert_8u_AC4R, ippiFilterSobelVert_16u_C1R);
        break;
    case ftRobertsDown:
        status = run(ippiFilterRobertsDown_8u_C1R, ippiFilterRobertsDown_8u_C3R,
                     ippiFilterRobertsDown_8u_AC4R, ippiFilterRobertsDown_16u_C1R);
        break;
    case ftRobertsUp:
        status = run(ippiFilterRobertsUp_8u_C1R, ippiFilterRobertsUp_8u_C3R,
                     ippiFilterRobertsUp_8u_AC4R, ippiFilterRobertsUp_16u_C1R);
        break;
    case ftLaplace:
        status = run(ippiFilterLaplace_8u_C1R, ippiFilterLaplace_8u_C3R, ippiFilterLaplace_8u_AC4R,
                     ippiFilterLaplace_16u_C1R, mask);
        break;
    case ftGauss:
        status = run(ippiFilterGauss_8u_C1R, ippiFilterGauss_8u_C3R, ippiFilterGauss_8u_AC4R,
                     ippiFilterGauss_16u_C1R, mask);
        break;
    case ftHipass:
        status = run(ippiFilterHipass_8u_C1R, ippiFilterHipass_8u_C3R, ippiFilterHipass_8u_AC4R,
                     ippiFilterHipass_16u_C1R, mask);
        break;
    case ftLowpass:
        status = run(ippiFilterLowpass_8u_C1R, ippiFilterLowpass_8u_C3R, ippiFilterLowpass_8u_AC4R,
                     ippiFilterLowpass_16u_C1R, mask);
        break;
    case ftSharpen:
        status = run(ippiFilterSharpen_8u_C1R, ippiFilterSharpen_8u_C3R, ippiFilterSharpen_8u_AC4R,
                     ippiFilterSharpen_16u_C1R);
        break;
    case ftMedianCross:
        status = run(ippiFilterMedianCross_8u_C1R, ippiFilterMedianCross_8u_C3R,
                     ippiFilterMedianCross_8u_AC4R, ippiFilterMedianCross_16u_C1R, mask);
        break;
    case ftMedianColor: // no single-channel variants: grey frames arrive as vfRGB24
        status = format == vfRGB32
                     ? ippiFilterMedianColor_8u_AC4R(source, sourceStride, destination,
                                                     destinationStride, size, mask)
                     : ippiFilterMedianColor_8u_C3R(source, sourceStride, destination,
                                                    destinationStride, size, mask);
        break;
    default:
        break; // not a filter type: no primitive, the input passes
    }
    FLastStatus = status;
    // Intentional: any error or warning of the primitive passes the input frame on unchanged.
    if (status != ippStsNoErr)
        output.CopyFrom(input);
}

void RegisterFXFixedFilter(TFXPalette& palette)
{
    palette.Register<TFXFixedFilter>(kFXPalettePage);
}

} // namespace framix
