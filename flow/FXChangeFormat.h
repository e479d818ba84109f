// SPDX-License-Identifier: MIT
// Converts every frame of a stream to one pixel format.
#pragma once

#include "framework/FXCommonFilter.h"

namespace framix {

// Admits every format; when enabled it announces `Format` and converts each frame to it (a
// frame already in `Format` passes untouched, without a copy). Conversion rules are those of
// the image buffer (docs/formats.md).
//
//   object ToGray: TFXChangeFormat
//     Format = vfGray8
//   end
class TFXChangeFormat : public TFXCommonFilter {
public:
    static constexpr TFXEnumProp<TFXVideoFormat> kFormat{
        .Name = "Format", .Help = "pixel format of every output frame", .Default = vfRGB24};

    explicit TFXChangeFormat(TKTComponent* owner);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    TFXVideoFormat GetFormat() const;
    void SetFormat(TFXVideoFormat value);

protected:
    void SetVideoFormat(IFXImageBuffer& buffer) override {}
    void FilterInternalOperation(IFXImageBuffer& input, IFXImageBuffer& output) override;
    void SetSizeRate(int& width, int& height, TFXVideoFormat& format, std::int64_t frameDelay,
                     std::uint32_t reserved, std::uint32_t& aspectWidth,
                     std::uint32_t& aspectHeight) override;

private:
    TFXVideoFormat FFormat = kFormat.Default;
};

} // namespace framix
