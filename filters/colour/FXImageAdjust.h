// SPDX-License-Identifier: MIT
// Image adjust: brightness, contrast, and HLS saturation, hue and lightness factors per pixel.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "framework/FXCommonFilter.h"

namespace framix {

// Per pixel: when Saturation, Hue or Lightness differ from 1, 0, 1, the pixel goes to HLS bytes,
// each byte is multiplied by its factor, the result goes back to BGR and is written into the
// input frame itself; then every colour byte becomes Round(x Contrast + Round(Brightness 255))
// in the output. Rounding is to nearest, halves to even; results above 255 become 255 and
// results below 0 keep their low eight bits. With Saturation 1, Hue 0, Lightness 1 and Contrast
// 1 the output is the input, whatever Brightness holds. Admits vfRGB24 and vfRGB32 (alpha
// kept); every other format arrives as vfRGB24.
//
// Each setting has a float state pin (BrightnessPin ...): a value arriving there sets the
// property, and setting the property shows the value on the pin. Setters run on any thread under
// the component lock, which the base holds around each frame.
//
//   object Adjust1: TFXImageAdjust
//     Brightness = 0.100000001490116119
//     Contrast = 1.200000047683715820
//   end
class TFXImageAdjust : public TFXCommonFilter {
public:
    static constexpr TFXFloatProp kBrightness{
        .Name = "Brightness", .Help = "added to every colour byte, times 255", .Default = 0.0};
    static constexpr TFXFloatProp kContrast{
        .Name = "Contrast", .Help = "factor on every colour byte", .Default = 1.0};
    static constexpr TFXFloatProp kSaturation{
        .Name = "Saturation", .Help = "factor on the HLS saturation byte", .Default = 1.0};
    static constexpr TFXFloatProp kHue{
        .Name = "Hue", .Help = "factor on the HLS hue byte", .Default = 0.0};
    static constexpr TFXFloatProp kLightness{
        .Name = "Lightness", .Help = "factor on the HLS lightness byte", .Default = 1.0};

    explicit TFXImageAdjust(TKTComponent* owner);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    float GetBrightness() const;
    void SetBrightness(float value);
    float GetContrast() const;
    void SetContrast(float value);
    float GetSaturation() const;
    void SetSaturation(float value);
    float GetHue() const;
    void SetHue(float value);
    float GetLightness() const;
    void SetLightness(float value);

    TPXFloatStatePin& GetBrightnessPin() { return FBrightnessPin; }
    TPXFloatStatePin& GetContrastPin() { return FContrastPin; }
    TPXFloatStatePin& GetSaturationPin() { return FSaturationPin; }
    TPXFloatStatePin& GetHuePin() { return FHuePin; }
    TPXFloatStatePin& GetLightnessPin() { return FLightnessPin; }

protected:
    void SetVideoFormat(IFXImageBuffer& buffer) override;
    void FilterInternalOperation(IFXImageBuffer& input, IFXImageBuffer& output) override;

private:
    using TTable = std::array<std::uint8_t, 256>;

    void BrightnessChangeEvent(TPXFloatStatePin& pin, float value) { SetBrightness(value); }
    void ContrastChangeEvent(TPXFloatStatePin& pin, float value) { SetContrast(value); }
    void SaturationChangeEvent(TPXFloatStatePin& pin, float value) { SetSaturation(value); }
    void HueChangeEvent(TPXFloatStatePin& pin, float value) { SetHue(value); }
    void LightnessChangeEvent(TPXFloatStatePin& pin, float value) { SetLightness(value); }
    void SetAndShow(float& field, TPXFloatStatePin& pin, float value);
    void ConvertRowThroughHls(std::uint8_t* pixels, int width, int step, const TTable* hls);

    float FBrightness = float(kBrightness.Default);
    float FContrast = float(kContrast.Default);
    float FSaturation = float(kSaturation.Default);
    float FHue = float(kHue.Default);
    float FLightness = float(kLightness.Default);
    TPXFloatStatePin FBrightnessPin;
    TPXFloatStatePin FContrastPin;
    TPXFloatStatePin FSaturationPin;
    TPXFloatStatePin FHuePin;
    TPXFloatStatePin FLightnessPin;
    // Scratch rows of the colour-space stage: the three HLS planes and a packed BGR row. They
    // belong to the instance, which never processes two frames at once; sized up only.
    std::vector<std::uint8_t> FPlanes;
    std::vector<std::uint8_t> FPacked;
};

} // namespace framix
