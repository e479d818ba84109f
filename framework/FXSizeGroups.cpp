// SPDX-License-Identifier: MIT
// Sizes, masks, regions, offsets and format settings.
#include "framework/FXSizeGroups.h"

#include <algorithm>

namespace framix {

// ---------------------------------------------------------------- TFXSize

TFXSize::TFXSize(TKTPersistent* owner, IKTLock& lock, TChangeNotify onChange, std::uint16_t width,
                 std::uint16_t height)
    : TKTPersistentNotify(owner, lock, std::move(onChange)), FWidth(width), FHeight(height)
{
}

const TFXClassInfo& TFXSize::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXProp<&TFXSize::GetWidth, &TFXSize::SetWidth>(kWidth),
        FXProp<&TFXSize::GetHeight, &TFXSize::SetHeight>(kHeight),
    };
    static const TFXClassInfo info{"TFXSize", &TKTPersistentNotify::ClassInfo(), kProps};
    return info;
}

std::uint16_t TFXSize::GetWidth() const
{
    auto guard = Lock().Read();
    return FWidth;
}

std::uint16_t TFXSize::GetHeight() const
{
    auto guard = Lock().Read();
    return FHeight;
}

void TFXSize::SetWidth(std::uint16_t value) { StoreAndNotify(FWidth, value); }
void TFXSize::SetHeight(std::uint16_t value) { StoreAndNotify(FHeight, value); }

void TFXSize::StoreSize(std::uint16_t width, std::uint16_t height)
{
    auto guard = Lock().Write();
    if (FWidth == width && FHeight == height)
        return;
    FWidth = width;
    FHeight = height;
    Changed();
}

// ---------------------------------------------------------------- TFXMaskSize

TFXMaskSize::TFXMaskSize(TKTPersistent* owner, IKTLock& lock, TChangeNotify onChange,
                         bool positiveOnly)
    : TFXMaskSize(owner, lock, std::move(onChange), positiveOnly, std::uint16_t(kWidth.Default),
                  std::uint16_t(kHeight.Default))
{
}

TFXMaskSize::TFXMaskSize(TKTPersistent* owner, IKTLock& lock, TChangeNotify onChange,
                         bool positiveOnly, std::uint16_t width, std::uint16_t height)
    : TFXSize(owner, lock, std::move(onChange), width, height), FPositiveOnly(positiveOnly)
{
}

const TFXClassInfo& TFXMaskSize::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXProp<&TFXSize::GetWidth, &TFXMaskSize::SetWidth>(kWidth),
        FXProp<&TFXSize::GetHeight, &TFXMaskSize::SetHeight>(kHeight),
    };
    static const TFXClassInfo info{"TFXMaskSize", &TFXSize::ClassInfo(), kProps};
    return info;
}

void TFXMaskSize::SetWidth(std::uint16_t value)
{
    TFXSize::SetWidth(FPositiveOnly ? std::max<std::uint16_t>(value, 1) : value);
}

void TFXMaskSize::SetHeight(std::uint16_t value)
{
    TFXSize::SetHeight(FPositiveOnly ? std::max<std::uint16_t>(value, 1) : value);
}

// ---------------------------------------------------------------- TFXFilterOutputSize

TFXFilterOutputSize::TFXFilterOutputSize(TKTPersistent* owner, IKTLock& lock,
                                         TChangeNotify onChange)
    : TFXSize(owner, lock, std::move(onChange), std::uint16_t(kWidth.Default),
              std::uint16_t(kHeight.Default))
{
}

const TFXClassInfo& TFXFilterOutputSize::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXProp<&TFXSize::GetWidth, &TFXFilterOutputSize::SetWidth>(kWidth),
        FXProp<&TFXSize::GetHeight, &TFXFilterOutputSize::SetHeight>(kHeight),
    };
    static const TFXClassInfo info{"TFXFilterOutputSize", &TFXSize::ClassInfo(), kProps};
    return info;
}

// ---------------------------------------------------------------- TFXCropRectRegion

TFXCropRectRegion::TFXCropRectRegion(TKTPersistent* owner, IKTLock& lock, TChangeNotify onChange)
    : TFXSize(owner, lock, std::move(onChange), std::uint16_t(kWidth.Default),
              std::uint16_t(kHeight.Default))
{
}

const TFXClassInfo& TFXCropRectRegion::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXProp<&TFXSize::GetWidth, &TFXCropRectRegion::SetWidth>(kWidth),
        FXProp<&TFXSize::GetHeight, &TFXCropRectRegion::SetHeight>(kHeight),
        FXProp<&TFXCropRectRegion::GetMode, &TFXCropRectRegion::SetMode>(kMode),
        FXProp<&TFXCropRectRegion::GetLeft, &TFXCropRectRegion::SetLeft>(kLeft),
        FXProp<&TFXCropRectRegion::GetTop, &TFXCropRectRegion::SetTop>(kTop),
    };
    static const TFXClassInfo info{"TFXCropRectRegion", &TFXSize::ClassInfo(), kProps};
    return info;
}

TFXCropRectMode TFXCropRectRegion::GetMode() const
{
    auto guard = Lock().Read();
    return FMode;
}

void TFXCropRectRegion::SetMode(TFXCropRectMode value) { StoreAndNotify(FMode, value); }

std::int32_t TFXCropRectRegion::GetLeft() const
{
    auto guard = Lock().Read();
    return FLeft;
}

void TFXCropRectRegion::SetLeft(std::int32_t value) { StoreAndNotify(FLeft, value); }

std::int32_t TFXCropRectRegion::GetTop() const
{
    auto guard = Lock().Read();
    return FTop;
}

void TFXCropRectRegion::SetTop(std::int32_t value) { StoreAndNotify(FTop, value); }

// ---------------------------------------------------------------- TFXVideoFormatSettings

TFXVideoFormatSettings::TFXVideoFormatSettings(TKTPersistent* owner, IKTLock& lock,
                                               TChangeNotify onChange)
    : TKTPersistentNotify(owner, lock, std::move(onChange))
{
}

const TFXClassInfo& TFXVideoFormatSettings::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXProp<&TFXVideoFormatSettings::GetFormat, &TFXVideoFormatSettings::SetFormat>(kFormat),
    };
    static const TFXClassInfo info{"TFXVideoFormatSettings", &TKTPersistentNotify::ClassInfo(),
                                   kProps};
    return info;
}

TFXVideoFormat TFXVideoFormatSettings::GetFormat() const
{
    auto guard = Lock().Read();
    return FFormat;
}

void TFXVideoFormatSettings::SetFormat(TFXVideoFormat value)
{
    StoreAndNotify(FFormat, FXCheckedVideoFormat(value));
}

// ---------------------------------------------------------------- TQNOffset

TQNOffset::TQNOffset(TKTPersistent* owner, IKTLock& lock, TChangeNotify onChange)
    : TKTPersistentNotify(owner, lock, std::move(onChange))
{
}

const TFXClassInfo& TQNOffset::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXProp<&TQNOffset::GetX, &TQNOffset::SetX>(kX),
        FXProp<&TQNOffset::GetY, &TQNOffset::SetY>(kY),
    };
    static const TFXClassInfo info{"TQNOffset", &TKTPersistentNotify::ClassInfo(), kProps};
    return info;
}

std::int32_t TQNOffset::GetX() const
{
    auto guard = Lock().Read();
    return FX;
}

std::int32_t TQNOffset::GetY() const
{
    auto guard = Lock().Read();
    return FY;
}

void TQNOffset::SetX(std::int32_t value) { StoreAndNotify(FX, value); }
void TQNOffset::SetY(std::int32_t value) { StoreAndNotify(FY, value); }

} // namespace framix
