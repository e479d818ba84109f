// SPDX-License-Identifier: MIT
// The small property groups many components publish: sizes, masks, regions, offsets, formats.
#pragma once

#include <cstdint>

#include "framework/FXVideoFormat.h"
#include "framework/KTPersistent.h"

namespace framix {

// Width and Height, unsigned 16-bit.
class TFXSize : public TKTPersistentNotify {
public:
    static constexpr TFXIntProp kWidth{.Name = "Width", .Help = "width in pixels"};
    static constexpr TFXIntProp kHeight{.Name = "Height", .Help = "height in pixels"};

    TFXSize(TKTPersistent* owner, IKTLock& lock, TChangeNotify onChange, std::uint16_t width = 0,
            std::uint16_t height = 0);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    std::uint16_t GetWidth() const;
    std::uint16_t GetHeight() const;
    void SetWidth(std::uint16_t value);
    void SetHeight(std::uint16_t value);

protected:
    // Stores both sides with a single change notification.
    void StoreSize(std::uint16_t width, std::uint16_t height);

private:
    std::uint16_t FWidth;
    std::uint16_t FHeight;
};

// The size of a neighbourhood filter's mask or kernel (default 3 x 3). The option given at
// construction says whether a side must stay at least 1; the Gaussian kernel passes false and
// accepts an empty kernel.
class TFXMaskSize : public TFXSize {
public:
    static constexpr TFXIntProp kWidth{.Name = "Width", .Help = "mask width", .Default = 3};
    static constexpr TFXIntProp kHeight{.Name = "Height", .Help = "mask height", .Default = 3};

    TFXMaskSize(TKTPersistent* owner, IKTLock& lock, TChangeNotify onChange, bool positiveOnly);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }
    bool GetPositiveOnly() const { return FPositiveOnly; }
    void SetWidth(std::uint16_t value);
    void SetHeight(std::uint16_t value);

protected:
    // For kernels with other default sizes.
    TFXMaskSize(TKTPersistent* owner, IKTLock& lock, TChangeNotify onChange, bool positiveOnly,
                std::uint16_t width, std::uint16_t height);

private:
    bool FPositiveOnly;
};

// The frame size a generator or resizing component produces (default 320 x 240).
class TFXFilterOutputSize : public TFXSize {
public:
    static constexpr TFXIntProp kWidth{
        .Name = "Width", .Help = "width of produced frames", .Default = 320, .Min = 1};
    static constexpr TFXIntProp kHeight{
        .Name = "Height", .Help = "height of produced frames", .Default = 240, .Min = 1};

    TFXFilterOutputSize(TKTPersistent* owner, IKTLock& lock, TChangeNotify onChange);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }
};

FX_ENUM(TFXCropRectMode, crmCenter, crmTopLeft, crmCustom)

// A capture or crop rectangle: Width and Height, a Mode, and Left/Top used by crmCustom.
class TFXCropRectRegion : public TFXSize {
public:
    static constexpr TFXEnumProp<TFXCropRectMode> kMode{
        .Name = "Mode", .Help = "where the rectangle sits", .Default = crmCenter};
    static constexpr TFXIntProp kLeft{.Name = "Left", .Help = "left edge in crmCustom mode"};
    static constexpr TFXIntProp kTop{.Name = "Top", .Help = "top edge in crmCustom mode"};

    static constexpr TFXIntProp kWidth{.Name = "Width", .Help = "region width", .Default = 240};
    static constexpr TFXIntProp kHeight{.Name = "Height", .Help = "region height", .Default = 180};

    TFXCropRectRegion(TKTPersistent* owner, IKTLock& lock, TChangeNotify onChange);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    TFXCropRectMode GetMode() const;
    void SetMode(TFXCropRectMode value);
    std::int32_t GetLeft() const;
    void SetLeft(std::int32_t value);
    std::int32_t GetTop() const;
    void SetTop(std::int32_t value);

private:
    TFXCropRectMode FMode = kMode.Default;
    std::int32_t FLeft = 0;
    std::int32_t FTop = 0;
};

// The output format of a multi-input component.
class TFXVideoFormatSettings : public TKTPersistentNotify {
public:
    static constexpr TFXEnumProp<TFXVideoFormat> kFormat{
        .Name = "Format", .Help = "pixel format produced", .Default = vfRGB24};

    TFXVideoFormatSettings(TKTPersistent* owner, IKTLock& lock, TChangeNotify onChange);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    TFXVideoFormat GetFormat() const;
    void SetFormat(TFXVideoFormat value);

private:
    TFXVideoFormat FFormat = kFormat.Default;
};

// The mask of the fixed filters and of smoothing in effects.
FX_ENUM(TFXFixedMaskSize, fms3x3, fms5x5)

// Two signed 32-bit integers with change notification.
class TQNOffset : public TKTPersistentNotify {
public:
    static constexpr TFXIntProp kX{.Name = "X", .Help = "horizontal offset"};
    static constexpr TFXIntProp kY{.Name = "Y", .Help = "vertical offset"};

    TQNOffset(TKTPersistent* owner, IKTLock& lock, TChangeNotify onChange);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    std::int32_t GetX() const;
    std::int32_t GetY() const;
    void SetX(std::int32_t value);
    void SetY(std::int32_t value);

private:
    std::int32_t FX = 0;
    std::int32_t FY = 0;
};

} // namespace framix
