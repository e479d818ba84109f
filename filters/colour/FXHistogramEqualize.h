// SPDX-License-Identifier: MIT
// Histogram equalisation: each frame's intensities spread through its own cumulative histogram.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "framework/FXCommonFilter.h"

namespace framix {

// Maps every intensity v of a frame to Round(C(v) * top / N), where C is the frame's cumulative
// histogram summed in single precision, N the pixel count and top 255 (65535 for vfGray16). The
// top value itself (255, 65535) is not counted. Grey frames are equalised directly; colour
// frames on the HLS lightness only (hue and saturation kept up to the round trip's rounding,
// alpha kept). Admits vfRGB24, vfRGB32, vfGray8 and vfGray16; every other format arrives as
// vfRGB24. Its working memory is kept from frame to frame: a steady stream allocates nothing.
//
//   object Equalize1: TFXHistogramEqualize
//   end
class TFXHistogramEqualize : public TFXCommonFilter {
public:
    explicit TFXHistogramEqualize(TKTComponent* owner);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

protected:
    void SetVideoFormat(IFXImageBuffer& buffer) override;
    void FilterInternalOperation(IFXImageBuffer& input, IFXImageBuffer& output) override;

private:
    void GrayScaleOperation(IFXImageBuffer& input, IFXImageBuffer& output);
    void GrayScale16Operation(IFXImageBuffer& input, IFXImageBuffer& output);
    void RGBOperation(IFXImageBuffer& input, IFXImageBuffer& output);
    // The equalising table of `bins` entries from the counts, scaled to `top`.
    template <class T>
    void BuildTable(const std::vector<std::int32_t>& counts, std::int64_t pixels, double top,
                    T* table);

    FXImageBufferPtr FWork;               // the HLS form of colour frames
    std::vector<std::int32_t> FCounts[3]; // per channel; only lightness is used for colour
    std::vector<std::int32_t> FLevels[3];
    std::vector<std::uint16_t> FTable16;
    std::array<std::uint8_t, 256> FTable{};
};

} // namespace framix
