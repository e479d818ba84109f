// SPDX-License-Identifier: MIT
// Average, minimum, maximum or median over a rectangular mask.
#pragma once

#include "framework/FXCommonROIMatrixFilter.h"

namespace framix {

FX_ENUM(TFXBoxFilterMode, bfmAverage, bfmMin, bfmMax, bfmMedian)

// Replaces each pixel of the region of interest by the average, minimum, maximum or median of
// its `MaskSize` neighbourhood, the `Anchor` cell landing on the pixel (default: the mask's
// centre). Channels are filtered independently; vfRGB32 filters alpha like the colours.
// Admits vfRGB24, vfRGB32, vfGray8 and vfGray16; other formats arrive as vfRGB24. The median
// needs odd mask sides (the primitive refuses even ones and the frame passes unchanged). Pixels
// the mask cannot reach keep the input. Setters take the component lock; frames are filtered
// under it.
//
//   object Box1: TFXBoxFilter
//     MaskSize.Width = 5
//     MaskSize.Height = 5
//     FilterMode = bfmMedian
//   end
class TFXBoxFilter : public TFXCommonROIMatrixFilterIntermidiate {
public:
    static constexpr TFXEnumProp<TFXBoxFilterMode> kFilterMode{
        .Name = "FilterMode", .Help = "operation over the mask", .Default = bfmAverage};

    explicit TFXBoxFilter(TKTComponent* owner);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    TFXBoxFilterMode GetFilterMode() const;
    void SetFilterMode(TFXBoxFilterMode value);

protected:
    void SetVideoFormat(IFXImageBuffer& buffer) override;
    bool PerformFilter(const std::uint8_t* source, int sourceStride, std::uint8_t* destination,
                       int destinationStride, TFXImageSize roiSize, TFXImageSize maskSize,
                       TFXPoint anchor, TFXVideoFormat format) override;

private:
    TFXBoxFilterMode FFilterMode = kFilterMode.Default;
};

} // namespace framix
