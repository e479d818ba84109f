// SPDX-License-Identifier: MIT
// Image adjust.
#include "filters/colour/FXImageAdjust.h"

#include <algorithm>
#include <cmath>

#include "filters/colour/detail/FXColourFrames.h"
#include "framework/primitives/dispatch/Fxdispatcher.h"
#include "framework/properties/FXPalette.h"

namespace framix {
namespace {

// x * factor + offset for every byte x, rounded to nearest (halves to even), capped at 255 and
// wrapped below 0. The product of a byte and a float is exact in double precision, so the table
// is the rounding of the exact value.
std::array<std::uint8_t, 256> ScaleTable(float factor, std::int32_t offset)
{
    std::array<std::uint8_t, 256> table{};
    for (int x = 0; x < 256; ++x)
        table[std::size_t(x)] = detail::FXRoundCapWrap(double(x) * double(factor) + offset);
    return table;
}

// Round(Brightness * 255) as a 32-bit integer.
std::int32_t BrightnessOffset(float brightness)
{
    const double v = std::nearbyint(double(brightness) * 255.0);
    return std::int32_t(std::clamp(v, -2147483648.0, 2147483647.0));
}

} // namespace

TFXImageAdjust::TFXImageAdjust(TKTComponent* owner)
    : TFXCommonFilter(owner),
      FBrightnessPin(*this, "BrightnessPin", Lock(),
                     [this](TPXFloatStatePin& p, float v) { BrightnessChangeEvent(p, v); }),
      FContrastPin(*this, "ContrastPin", Lock(),
                   [this](TPXFloatStatePin& p, float v) { ContrastChangeEvent(p, v); }),
      FSaturationPin(*this, "SaturationPin", Lock(),
                     [this](TPXFloatStatePin& p, float v) { SaturationChangeEvent(p, v); }),
      FHuePin(*this, "HuePin", Lock(),
              [this](TPXFloatStatePin& p, float v) { HueChangeEvent(p, v); }),
      FLightnessPin(*this, "LightnessPin", Lock(),
                    [this](TPXFloatStatePin& p, float v) { LightnessChangeEvent(p, v); })
{
    FBrightnessPin.SetValue(FBrightness);
    FContrastPin.SetValue(FContrast);
    FSaturationPin.SetValue(FSaturation);
    FHuePin.SetValue(FHue);
    FLightnessPin.SetValue(FLightness);
}

const TFXClassInfo& TFXImageAdjust::ClassInfo()
{
    using T = TFXImageAdjust;
    static constexpr TFXPropInfo kProps[] = {
        FXProp<&T::GetBrightness, &T::SetBrightness>(kBrightness),
        FXProp<&T::GetContrast, &T::SetContrast>(kContrast),
        FXProp<&T::GetSaturation, &T::SetSaturation>(kSaturation),
        FXProp<&T::GetHue, &T::SetHue>(kHue),
        FXProp<&T::GetLightness, &T::SetLightness>(kLightness),
        FXPin<&T::GetBrightnessPin>({.Name = "BrightnessPin", .Help = "drives Brightness"}),
        FXPin<&T::GetContrastPin>({.Name = "ContrastPin", .Help = "drives Contrast"}),
        FXPin<&T::GetSaturationPin>({.Name = "SaturationPin", .Help = "drives Saturation"}),
        FXPin<&T::GetHuePin>({.Name = "HuePin", .Help = "drives Hue"}),
        FXPin<&T::GetLightnessPin>({.Name = "LightnessPin", .Help = "drives Lightness"}),
    };
    static const TFXClassInfo info{"TFXImageAdjust", &TFXCommonFilter::ClassInfo(), kProps};
    return info;
}

// ---------------------------------------------------------------- properties

float TFXImageAdjust::GetBrightness() const
{
    auto guard = Lock().Read();
    return FBrightness;
}
float TFXImageAdjust::GetContrast() const
{
    auto guard = Lock().Read();
    return FContrast;
}
float TFXImageAdjust::GetSaturation() const
{
    auto guard = Lock().Read();
    return FSaturation;
}
float TFXImageAdjust::GetHue() const
{
    auto guard = Lock().Read();
    return FHue;
}
float TFXImageAdjust::GetLightness() const
{
    auto guard = Lock().Read();
    return FLightness;
}

void TFXImageAdjust::SetBrightness(float value)
{
    SetAndShow(FBrightness, FBrightnessPin, value);
}
void TFXImageAdjust::SetContrast(float value)
{
    SetAndShow(FContrast, FContrastPin, value);
}
void TFXImageAdjust::SetSaturation(float value)
{
    SetAndShow(FSaturation, FSaturationPin, value);
}
void TFXImageAdjust::SetHue(float value)
{
    SetAndShow(FHue, FHuePin, value);
}
void TFXImageAdjust::SetLightness(float value)
{
    SetAndShow(FLightness, FLightnessPin, value);
}

// Stores under the lock and shows the value on the pin, so a value that arrived through the pin
// is written back as the same number.
void TFXImageAdjust::SetAndShow(float& field, TPXFloatStatePin& pin, float value)
{
    auto guard = Lock().Write();
    field = value;
    pin.SetValue(value);
}

// ---------------------------------------------------------------- per frame

void TFXImageAdjust::SetVideoFormat(IFXImageBuffer& buffer)
{
    AdmitFormats(buffer, {vfRGB32});
}

void TFXImageAdjust::FilterInternalOperation(IFXImageBuffer& input, IFXImageBuffer& output)
{
    output.CopyFrom(input);
    const bool colourStage = !(FSaturation == 1.0f && FHue == 0.0f && FLightness == 1.0f);
    // Intentional: neutral colour settings with a contrast of exactly 1 pass the frame as it
    // is and drop Brightness; graphs built on this component rely on the shortcut.
    if (!colourStage && FContrast == 1.0f)
        return;

    const TTable tone = ScaleTable(FContrast, BrightnessOffset(FBrightness));
    TTable hls[3];
    if (colourStage) {
        hls[0] = ScaleTable(FHue, 0); // Intentional: the hue is multiplied, not rotated
        hls[1] = ScaleTable(FLightness, 0);
        hls[2] = ScaleTable(FSaturation, 0);
    }

    const int step = detail::FXIsRGB32(input) ? 4 : 3;
    const int width = output.GetWidth(), height = output.GetHeight();
    const int inStride = input.GetRowStride(), outStride = output.GetRowStride();
    // The output is detached from the input before the input is changed below.
    std::uint8_t* out = output.GetWritePointer();
    const std::uint8_t* in = input.GetReadPointer();
    for (int y = 0; y < height; ++y) {
        const std::uint8_t* source = in + std::ptrdiff_t(y) * inStride;
        std::uint8_t* destination = out + std::ptrdiff_t(y) * outStride;
        if (colourStage) {
            // Intentional: the colour-space result is written into the input frame itself, so
            // everything else holding that frame sees it.
            ConvertRowThroughHls(const_cast<std::uint8_t*>(source), width, step, hls);
        }
        if (step == 3) {
            for (int i = 0; i < width * 3; ++i)
                destination[i] = tone[source[i]];
        } else {
            for (int x = 0; x < width * 4; x += 4) {
                destination[x] = tone[source[x]];
                destination[x + 1] = tone[source[x + 1]];
                destination[x + 2] = tone[source[x + 2]];
                destination[x + 3] = source[x + 3];
            }
        }
    }
}

// One row of pixels (`step` bytes apart) to HLS planes, each plane through its table, and back
// into the same pixels. The conversions give every pixel the bytes a one-pixel call gives, so a
// row is converted at once.
void TFXImageAdjust::ConvertRowThroughHls(std::uint8_t* pixels, int width, int step,
                                          const TTable* hls)
{
    const std::size_t n = std::size_t(width);
    if (FPlanes.size() < 3 * n)
        FPlanes.resize(3 * n);
    if (step == 4 && FPacked.size() < 3 * n)
        FPacked.resize(3 * n);
    Ipp8u* planes[3] = {FPlanes.data(), FPlanes.data() + n, FPlanes.data() + 2 * n};
    std::uint8_t* bgr = pixels;
    if (step == 4) {
        bgr = FPacked.data();
        for (std::size_t x = 0; x < n; ++x)
            for (int c = 0; c < 3; ++c)
                bgr[3 * x + std::size_t(c)] = pixels[4 * x + std::size_t(c)];
    }
    const IppiSize row{width, 1};
    ipp::ippiBGRToHLS_8u_C3P3R(bgr, 3 * width, planes, width, row);
    for (int p = 0; p < 3; ++p)
        for (std::size_t x = 0; x < n; ++x)
            planes[p][x] = hls[p][planes[p][x]];
    const Ipp8u* back[3] = {planes[0], planes[1], planes[2]};
    ipp::ippiHLSToBGR_8u_P3C3R(back, width, bgr, 3 * width, row);
    if (step == 4)
        for (std::size_t x = 0; x < n; ++x)
            for (int c = 0; c < 3; ++c)
                pixels[4 * x + std::size_t(c)] = bgr[3 * x + std::size_t(c)];
}

void RegisterFXImageAdjust(TFXPalette& palette)
{
    palette.Register<TFXImageAdjust>(kFXPalettePage);
}

} // namespace framix
