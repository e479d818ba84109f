// SPDX-License-Identifier: MIT
// Thirteen predefined neighbourhood filters: edges, smoothing, sharpening and medians.
#pragma once

#include "framework/FXCommonROIFilter.h"
#include "framework/FXSizeGroups.h"

namespace framix {

FX_ENUM(TFXFixedFilterType, ftPrewittHoriz, ftPrewittVert, ftSobelHoriz, ftSobelVert, ftRobertsDown,
        ftRobertsUp, ftLaplace, ftGauss, ftHipass, ftLowpass, ftSharpen, ftMedianCross,
        ftMedianColor)

// Applies the primitive of `FilterType` (ippiFilterSobelHoriz for ftSobelHoriz, and so on)
// inside the region of interest. `MaskSize` (3 x 3 or 5 x 5) reaches Laplace, Gauss, Hipass,
// Lowpass and both medians; the other filters are 3 x 3. Admits vfRGB24, vfRGB32, vfGray8 and
// vfGray16, except ftMedianColor, which admits vfRGB24 and vfRGB32 only (a grey frame is
// converted to vfRGB24 first). vfRGB32 is filtered on its colours and leaves with its alpha
// exactly as it came in. Gradients are not rectified: a negative result is 0.
//
// Kept on purpose, as the filter has always behaved:
// - the mask is reported as m x m with anchor (m div 2 + 1, m div 2 + 1), m = 5 only for
//   Laplace, Gauss, Hipass and Lowpass with a 5 x 5 MaskSize; the medians report 3 even when
//   they filter with 5 x 5. The region is shrunk by the anchor on every side (2, or 3 for
//   m = 5), which covers what every primitive reads, the 5 x 5 medians included;
// - when the primitive reports anything but success (a region too small for it, say) the input
//   frame leaves the filter unchanged.
// Setters take the component lock; frames are filtered under it.
//
//   object Edges1: TFXFixedFilter
//     FilterType = ftSobelVert
//   end
class TFXFixedFilter : public TFXCommonROIFilter {
public:
    static constexpr TFXEnumProp<TFXFixedFilterType> kFilterType{
        .Name = "FilterType", .Help = "which filter is applied", .Default = ftPrewittHoriz};
    static constexpr TFXEnumProp<TFXFixedMaskSize> kMaskSize{
        .Name = "MaskSize",
        .Help = "mask of Laplace, Gauss, Hipass, Lowpass and the medians",
        .Default = fms3x3};

    explicit TFXFixedFilter(TKTComponent* owner);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    TFXFixedFilterType GetFilterType() const;
    void SetFilterType(TFXFixedFilterType value);
    TFXFixedMaskSize GetMaskSize() const;
    void SetMaskSize(TFXFixedMaskSize value);
    // The status of the last frame's primitive (0: filtered).
    int GetLastStatus() const;

protected:
    void SetVideoFormat(IFXImageBuffer& buffer) override;
    void FilterInternalOperation(IFXImageBuffer& input, IFXImageBuffer& output) override;
    void GetMaskAnchor(TFXImageSize& maskSize, TFXPoint& anchor) override;
    TFXMaskReach GetMaskReach(const TFXImageSize& maskSize, const TFXPoint& anchor) override;

private:
    TFXFixedFilterType FFilterType = kFilterType.Default;
    TFXFixedMaskSize FMaskSize = kMaskSize.Default;
    int FLastStatus = 0;
};

} // namespace framix
