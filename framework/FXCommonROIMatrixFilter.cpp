// SPDX-License-Identifier: MIT
// Mask size, anchor and the frame handling of matrix filters.
#include "framework/FXCommonROIMatrixFilter.h"

#include <algorithm>
#include <cstring>

namespace framix {

// ---------------------------------------------------------------- TFXMaskAnchor

TFXMaskAnchor::TFXMaskAnchor(TKTPersistent* owner, IKTLock& lock, TChangeNotify onChange)
    : TKTPersistentNotify(owner, lock, std::move(onChange))
{
}

const TFXClassInfo& TFXMaskAnchor::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXProp<&TFXMaskAnchor::GetX, &TFXMaskAnchor::SetX>(kX),
        FXProp<&TFXMaskAnchor::GetY, &TFXMaskAnchor::SetY>(kY),
    };
    static const TFXClassInfo info{"TFXMaskAnchor", &TKTPersistentNotify::ClassInfo(), kProps};
    return info;
}

std::int32_t TFXMaskAnchor::GetX() const
{
    auto guard = Lock().Read();
    return FX;
}

std::int32_t TFXMaskAnchor::GetY() const
{
    auto guard = Lock().Read();
    return FY;
}

void TFXMaskAnchor::SetX(std::int32_t value) { StoreAndNotify(FX, std::max(value, -1)); }
void TFXMaskAnchor::SetY(std::int32_t value) { StoreAndNotify(FY, std::max(value, -1)); }

TFXPoint TFXMaskAnchor::Resolve(const TFXImageSize& maskSize) const
{
    auto guard = Lock().Read();
    return {FX < 0 ? maskSize.width / 2 : FX, FY < 0 ? maskSize.height / 2 : FY};
}

// ---------------------------------------------------------------- TFXCommonROIMatrixSizeFilter

TFXCommonROIMatrixSizeFilter::TFXCommonROIMatrixSizeFilter(TKTComponent* owner)
    : TFXCommonROIFilter(owner), FMaskSize(this, Lock(), ChangeNotifier(), true)
{
}

TKTPersistentNotify::TChangeNotify TFXCommonROIMatrixSizeFilter::ChangeNotifier()
{
    return [this](TKTPersistent& sender) { Changed(sender); };
}

const TFXClassInfo& TFXCommonROIMatrixSizeFilter::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXGroup<&TFXCommonROIMatrixSizeFilter::GetMaskSize>(
            {.Name = "MaskSize", .Help = "size of the neighbourhood"}),
    };
    static const TFXClassInfo info{"TFXCommonROIMatrixSizeFilter",
                                   &TFXCommonROIFilter::ClassInfo(), kProps};
    return info;
}

void TFXCommonROIMatrixSizeFilter::GetMaskAnchor(TFXImageSize& maskSize, TFXPoint& anchor)
{
    maskSize = {FMaskSize.GetWidth(), FMaskSize.GetHeight()};
    anchor = {maskSize.width / 2, maskSize.height / 2};
}

// ---------------------------------------------------------------- TFXCommonROIMatrixSizeAnchorFilter

TFXCommonROIMatrixSizeAnchorFilter::TFXCommonROIMatrixSizeAnchorFilter(TKTComponent* owner)
    : TFXCommonROIMatrixSizeFilter(owner), FAnchor(this, Lock(), ChangeNotifier())
{
}

const TFXClassInfo& TFXCommonROIMatrixSizeAnchorFilter::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXGroup<&TFXCommonROIMatrixSizeAnchorFilter::GetAnchor>(
            {.Name = "Anchor", .Help = "the mask cell that lands on the written pixel"}),
    };
    static const TFXClassInfo info{"TFXCommonROIMatrixSizeAnchorFilter",
                                   &TFXCommonROIMatrixSizeFilter::ClassInfo(), kProps};
    return info;
}

void TFXCommonROIMatrixSizeAnchorFilter::GetMaskAnchor(TFXImageSize& maskSize, TFXPoint& anchor)
{
    TFXCommonROIMatrixSizeFilter::GetMaskAnchor(maskSize, anchor);
    anchor = FAnchor.Resolve(maskSize);
}

// ---------------------------------------------------------------- TFXCommonROIMatrixFilterIntermidiate

TFXCommonROIMatrixFilterIntermidiate::TFXCommonROIMatrixFilterIntermidiate(TKTComponent* owner)
    : TFXCommonROIMatrixSizeAnchorFilter(owner)
{
}

const TFXClassInfo& TFXCommonROIMatrixFilterIntermidiate::ClassInfo()
{
    static const TFXClassInfo info{"TFXCommonROIMatrixFilterIntermidiate",
                                   &TFXCommonROIMatrixSizeAnchorFilter::ClassInfo(), {}};
    return info;
}

void TFXCommonROIMatrixFilterIntermidiate::ReclaculateRoiAndOffsetInt(
    TFXImageSize& roiSize, const std::uint8_t*& source, int sourceStride, IFXImageBuffer& output,
    std::uint8_t*& destination, TFXVideoFormat format)
{
    ReclaculateRoiAndOffset(roiSize, source, sourceStride, output, destination, format);
}

void TFXCommonROIMatrixFilterIntermidiate::FilterInternalOperation(IFXImageBuffer& input,
                                                                  IFXImageBuffer& output)
{
    TFXImageSize mask{1, 1};
    TFXPoint anchor{0, 0};
    GetMaskAnchor(mask, anchor);
    const TFXVideoFormat format = input.GetFormat();
    TFXImageSize roi = input.GetSize();
    const TFXRect processed = GetProcessedRect(roi.width, roi.height);
    if (processed.IsEmpty())
        return;  // the output keeps the input image
    const std::uint8_t* source = input.GetReadPointer();
    std::uint8_t* destination = GetPreserveBufferData() ? output.GetModifyPointer()
                                                        : PrepareOutput(input, output, processed);
    ReclaculateRoiAndOffsetInt(roi, source, input.GetRowStride(), output, destination, format);
    PerformFilter(source, input.GetRowStride(), destination, output.GetRowStride(), roi, mask,
                  anchor, format);
}

void TFXCommonROIMatrixFilterIntermidiate::KeepSourceRegion(const std::uint8_t* source,
                                                            int sourceStride,
                                                            std::uint8_t* destination,
                                                            int destinationStride,
                                                            TFXImageSize roiSize,
                                                            TFXVideoFormat format)
{
    if (roiSize.width <= 0 || roiSize.height <= 0)
        return;
    const std::size_t rowBytes =
        std::size_t(roiSize.width) * std::size_t(FXFormatInfo(format).BytesPerPixel);
    for (int y = 0; y < roiSize.height; ++y)
        std::memcpy(destination + std::ptrdiff_t(y) * destinationStride,
                    source + std::ptrdiff_t(y) * sourceStride, rowBytes);
}

} // namespace framix
