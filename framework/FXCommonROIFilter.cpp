// SPDX-License-Identifier: MIT
// The region of interest and the shrinking of it by the mask.
#include "framework/FXCommonROIFilter.h"

#include <algorithm>
#include <cstring>

namespace framix {

// ---------------------------------------------------------------- TFXRegionOfInterest

TFXRegionOfInterest::TFXRegionOfInterest(TKTPersistent* owner, IKTLock& lock,
                                         TChangeNotify onChange)
    : TKTOptionalEnabledPersistent(owner, lock, std::move(onChange))
{
}

const TFXClassInfo& TFXRegionOfInterest::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXProp<&TFXRegionOfInterest::GetLeft, &TFXRegionOfInterest::SetLeft>(kLeft),
        FXProp<&TFXRegionOfInterest::GetTop, &TFXRegionOfInterest::SetTop>(kTop),
        FXProp<&TFXRegionOfInterest::GetWidth, &TFXRegionOfInterest::SetWidth>(kWidth),
        FXProp<&TFXRegionOfInterest::GetHeight, &TFXRegionOfInterest::SetHeight>(kHeight),
    };
    static const TFXClassInfo info{"TFXRegionOfInterest",
                                   &TKTOptionalEnabledPersistent::ClassInfo(), kProps};
    return info;
}

std::int32_t TFXRegionOfInterest::GetLeft() const
{
    auto guard = Lock().Read();
    return FLeft;
}

std::int32_t TFXRegionOfInterest::GetTop() const
{
    auto guard = Lock().Read();
    return FTop;
}

std::int32_t TFXRegionOfInterest::GetWidth() const
{
    auto guard = Lock().Read();
    return FWidth;
}

std::int32_t TFXRegionOfInterest::GetHeight() const
{
    auto guard = Lock().Read();
    return FHeight;
}

void TFXRegionOfInterest::SetLeft(std::int32_t value) { StoreAndNotify(FLeft, std::max(value, 0)); }
void TFXRegionOfInterest::SetTop(std::int32_t value) { StoreAndNotify(FTop, std::max(value, 0)); }
void TFXRegionOfInterest::SetWidth(std::int32_t value)
{
    StoreAndNotify(FWidth, std::max(value, 0));
}
void TFXRegionOfInterest::SetHeight(std::int32_t value)
{
    StoreAndNotify(FHeight, std::max(value, 0));
}

// ---------------------------------------------------------------- TFXCommonROIFilter

TFXCommonROIFilter::TFXCommonROIFilter(TKTComponent* owner)
    : TFXCommonFilter(owner), FROI(this, Lock(), nullptr)
{
}

const TFXClassInfo& TFXCommonROIFilter::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXGroup<&TFXCommonROIFilter::GetROI>({.Name = "ROI", .Help = "region of interest"}),
    };
    static const TFXClassInfo info{"TFXCommonROIFilter", &TFXCommonFilter::ClassInfo(), kProps};
    return info;
}

void TFXCommonROIFilter::GetMaskAnchor(TFXImageSize& maskSize, TFXPoint& anchor)
{
    maskSize = {1, 1};
    anchor = {0, 0};
}

TFXMaskReach TFXCommonROIFilter::GetMaskReach(const TFXImageSize& maskSize, const TFXPoint& anchor)
{
    return {std::max(anchor.x, 0), std::max(anchor.y, 0),
            std::max(maskSize.width - 1 - anchor.x, 0), std::max(maskSize.height - 1 - anchor.y, 0)};
}

TFXCommonROIFilter::TFXRect TFXCommonROIFilter::GetRegion(int width, int height)
{
    TFXRect r{0, 0, width, height};
    if (FROI.GetEnabled()) {
        const std::int64_t left = FROI.GetLeft();
        const std::int64_t top = FROI.GetTop();
        r.Left = int(std::min<std::int64_t>(left, width));
        r.Top = int(std::min<std::int64_t>(top, height));
        r.Right = int(std::min<std::int64_t>(left + FROI.GetWidth(), width));
        r.Bottom = int(std::min<std::int64_t>(top + FROI.GetHeight(), height));
    }
    return r;
}

TFXCommonROIFilter::TFXRect TFXCommonROIFilter::GetProcessedRect(int width, int height)
{
    TFXImageSize mask{1, 1};
    TFXPoint anchor{0, 0};
    GetMaskAnchor(mask, anchor);
    const TFXMaskReach reach = GetMaskReach(mask, anchor);
    TFXRect r = GetRegion(width, height);
    // Legacy neighbourhood primitives read around each pixel and handle no border: keep every
    // read inside the frame.
    r.Left = std::max(r.Left, reach.Left);
    r.Top = std::max(r.Top, reach.Top);
    r.Right = std::min(r.Right, width - reach.Right);
    r.Bottom = std::min(r.Bottom, height - reach.Bottom);
    return r;
}

std::uint8_t* TFXCommonROIFilter::PrepareOutput(const IFXImageBuffer& input,
                                                IFXImageBuffer& output, const TFXRect& processed)
{
    if (!output.IsShared())
        return output.GetModifyPointer();  // already its own copy of the input: nothing to copy
    std::uint8_t* destination = output.GetWritePointer();
    const std::uint8_t* source = input.GetReadPointer();
    const int width = input.GetWidth();
    const int height = input.GetHeight();
    const std::size_t bytesPerPixel = std::size_t(input.GetBytesPerPixel());
    const std::ptrdiff_t sourceStride = input.GetRowStride();
    const std::ptrdiff_t destinationStride = output.GetRowStride();
    auto copy = [&](int y, int left, int right) {
        if (right > left)
            std::memcpy(destination + y * destinationStride + std::ptrdiff_t(left) * bytesPerPixel,
                        source + y * sourceStride + std::ptrdiff_t(left) * bytesPerPixel,
                        std::size_t(right - left) * bytesPerPixel);
    };
    for (int y = 0; y < height; ++y) {
        if (processed.IsEmpty() || y < processed.Top || y >= processed.Bottom) {
            copy(y, 0, width);
        } else {
            copy(y, 0, processed.Left);
            copy(y, processed.Right, width);
        }
    }
    return destination;
}

void TFXCommonROIFilter::ReclaculateRoiAndOffset(TFXImageSize& roiSize,
                                                 const std::uint8_t*& source, int sourceStride,
                                                 IFXImageBuffer& output,
                                                 std::uint8_t*& destination, TFXVideoFormat format)
{
    const TFXRect r = GetProcessedRect(roiSize.width, roiSize.height);
    if (r.IsEmpty()) {
        // Nothing can be processed: a zero size makes the primitive refuse, pointers stay put.
        roiSize = {0, 0};
        return;
    }
    const int bytesPerPixel = FXFormatInfo(format).BytesPerPixel;
    source += std::ptrdiff_t(r.Top) * sourceStride + std::ptrdiff_t(r.Left) * bytesPerPixel;
    destination += std::ptrdiff_t(r.Top) * output.GetRowStride() +
                   std::ptrdiff_t(r.Left) * bytesPerPixel;
    roiSize = {r.Right - r.Left, r.Bottom - r.Top};
}

} // namespace framix
