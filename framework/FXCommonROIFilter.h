// SPDX-License-Identifier: MIT
// Filters that work inside a region of interest and read a neighbourhood around each pixel.
#pragma once

#include "framework/FXCommonFilter.h"
#include "framework/KTPersistent.h"

namespace framix {

// The published `ROI` group: when Enabled, only the rectangle (Left, Top, Width, Height) is
// processed, clipped to the frame; everything outside it leaves the filter as it came in.
class TFXRegionOfInterest : public TKTOptionalEnabledPersistent {
public:
    static constexpr TFXIntProp kLeft{.Name = "Left", .Help = "left edge", .Min = 0};
    static constexpr TFXIntProp kTop{.Name = "Top", .Help = "top edge", .Min = 0};
    static constexpr TFXIntProp kWidth{.Name = "Width", .Help = "width in pixels", .Min = 0};
    static constexpr TFXIntProp kHeight{.Name = "Height", .Help = "height in pixels", .Min = 0};

    TFXRegionOfInterest(TKTPersistent* owner, IKTLock& lock, TChangeNotify onChange);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    std::int32_t GetLeft() const;
    std::int32_t GetTop() const;
    std::int32_t GetWidth() const;
    std::int32_t GetHeight() const;
    void SetLeft(std::int32_t value);
    void SetTop(std::int32_t value);
    void SetWidth(std::int32_t value);
    void SetHeight(std::int32_t value);

private:
    std::int32_t FLeft = 0;
    std::int32_t FTop = 0;
    std::int32_t FWidth = 0;
    std::int32_t FHeight = 0;
};

// How far a filter reads beyond the pixel it writes, on each side.
struct TFXMaskReach {
    int Left = 0;
    int Top = 0;
    int Right = 0;
    int Bottom = 0;
};

// Adds the region of interest and the mask anchor. ReclaculateRoiAndOffset clips the region to
// the frame and then shrinks it by the mask's reach, so that a primitive that reads around each
// pixel never reads outside the frame; pixels it cannot reach keep the input's values.
class TFXCommonROIFilter : public TFXCommonFilter {
public:
    explicit TFXCommonROIFilter(TKTComponent* owner);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    TFXRegionOfInterest& GetROI() { return FROI; }
    void SetROI(const TFXRegionOfInterest& value) { FROI.Assign(value); }

protected:
    void ReclaculateRoiAndOffset(TFXImageSize& roiSize, const std::uint8_t*& source,
                                 int sourceStride, IFXImageBuffer& output,
                                 std::uint8_t*& destination, TFXVideoFormat format) override;
    virtual bool OutputSameAsInputSize() { return true; }
    // The mask and its anchor; the default is a single pixel.
    virtual void GetMaskAnchor(TFXImageSize& maskSize, TFXPoint& anchor);
    // The pixels read around each written pixel. The default follows the neighbourhood
    // primitives (box, rank, fixed filters): the anchor counts from the mask's top-left cell.
    // Kernel primitives (general kernel, row and column filters) count it from the bottom-right
    // and override this.
    virtual TFXMaskReach GetMaskReach(const TFXImageSize& maskSize, const TFXPoint& anchor);

    struct TFXRect {
        int Left, Top, Right, Bottom;  // Right and Bottom exclusive
        bool IsEmpty() const { return Right <= Left || Bottom <= Top; }
    };
    // The region clipped to a width x height frame, before the mask shrinks it.
    TFXRect GetRegion(int width, int height);
    // The pixels that will be written: the region shrunk by the mask's reach.
    TFXRect GetProcessedRect(int width, int height);
    // The destination for writing `processed` into `output`, which holds the input image: every
    // pixel outside `processed` keeps the input's value. When the output shares the input's
    // pixels it gets fresh memory and only the pixels outside `processed` are copied, so a
    // neighbourhood filter does not pay for a whole-frame copy it then overwrites.
    std::uint8_t* PrepareOutput(const IFXImageBuffer& input, IFXImageBuffer& output,
                                const TFXRect& processed);

private:
    TFXRegionOfInterest FROI;
};

// The reach of a kernel primitive (general kernel, row and column filters): the kernel runs in
// inverse order and its anchor counts from the bottom-right cell, so a pixel reads `anchor`
// cells to the right and below, and the rest of the kernel to the left and above.
inline TFXMaskReach FXKernelMaskReach(const TFXImageSize& kernelSize, const TFXPoint& anchor)
{
    auto nonNegative = [](int v) { return v < 0 ? 0 : v; };
    return {nonNegative(kernelSize.width - 1 - anchor.x), nonNegative(kernelSize.height - 1 - anchor.y),
            nonNegative(anchor.x), nonNegative(anchor.y)};
};

} // namespace framix
