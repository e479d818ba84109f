// SPDX-License-Identifier: MIT
// The format changer.
#include "flow/FXChangeFormat.h"

#include "framework/properties/FXPalette.h"

namespace framix {

TFXChangeFormat::TFXChangeFormat(TKTComponent* owner) : TFXCommonFilter(owner) {}

const TFXClassInfo& TFXChangeFormat::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXProp<&TFXChangeFormat::GetFormat, &TFXChangeFormat::SetFormat>(kFormat),
    };
    static const TFXClassInfo info{"TFXChangeFormat", &TFXCommonFilter::ClassInfo(), kProps};
    return info;
}

TFXVideoFormat TFXChangeFormat::GetFormat() const
{
    auto guard = Lock().Read();
    return FFormat;
}

void TFXChangeFormat::SetFormat(TFXVideoFormat value)
{
    if (Lock().Store(FFormat, FXCheckedVideoFormat(value)))
        RequestReannounce();  // the stream's format changes from the next frame on
}

void TFXChangeFormat::SetSizeRate(int& width, int& height, TFXVideoFormat& format,
                                  std::int64_t frameDelay, std::uint32_t reserved,
                                  std::uint32_t& aspectWidth, std::uint32_t& aspectHeight)
{
    if (IsEnabled())
        format = FFormat;
    TFXCommonFilter::SetSizeRate(width, height, format, frameDelay, reserved, aspectWidth,
                                 aspectHeight);
}

void TFXChangeFormat::FilterInternalOperation(IFXImageBuffer& input, IFXImageBuffer& output)
{
    output.ConvertFormat(FFormat);
}

void RegisterFXChangeFormat(TFXPalette& palette)
{
    palette.Register<TFXChangeFormat>(kFXPalettePage);
}

} // namespace framix
