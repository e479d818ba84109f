// SPDX-License-Identifier: MIT
// A generator of moving colour bars over a grey ramp: a known picture for demos and tests.
#pragma once

#include <cstdint>

#include "framework/FXCommonGen.h"

namespace framix {

// Each frame shows eight colour bars (white, yellow, cyan, green, magenta, red, blue, black)
// over the top two thirds, moving `Speed` pixels to the right per frame and wrapping round,
// and below them a grey ramp from black on the left to white on the right with a marker that
// crosses it once every 64 frames. The picture depends only on the frame number, size and
// settings; `Noise` adds noise of that amplitude to every sample from the process-wide random
// generator (reproducible with `framix run --seed`). Frames are drawn in vfRGB24 and
// converted to `Format`.
//
//   object Pattern1: TFXTestPatternGen
//     ImageSize.Width = 640
//     ImageSize.Height = 360
//   end
class TFXTestPatternGen : public TFXCommonGen {
public:
    static constexpr TFXEnumProp<TFXVideoFormat> kFormat{
        .Name = "Format", .Help = "pixel format of the generated frames", .Default = vfRGB24};
    static constexpr TFXIntProp kSpeed{.Name = "Speed",
                                       .Help = "pixels the bars move to the right per frame",
                                       .Default = 4,
                                       .Min = -256,
                                       .Max = 256};
    static constexpr TFXIntProp kNoise{.Name = "Noise",
                                       .Help = "amplitude of random noise added to each sample",
                                       .Default = 0,
                                       .Min = 0,
                                       .Max = 255};

    explicit TFXTestPatternGen(TKTComponent* owner);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    TFXVideoFormat GetFormat() const;
    void SetFormat(TFXVideoFormat value);
    std::int32_t GetSpeed() const;
    void SetSpeed(std::int32_t value);
    std::int32_t GetNoise() const;
    void SetNoise(std::int32_t value);

    // Draws frame `frame` of the pattern into a vfRGB24 image (B, G, R).
    static void Draw(std::uint8_t* pixels, int stride, int width, int height, std::int64_t frame,
                     int speed);

protected:
    void IntStart() override { FFrame = 0; }
    void GenerateFrame(IFXImageBuffer& buffer) override;
    TFXVideoFormat GetVideoFormat() override { return FFormat; }

private:
    TFXVideoFormat FFormat = kFormat.Default;
    std::int32_t FSpeed = std::int32_t(kSpeed.Default);
    std::int32_t FNoise = std::int32_t(kNoise.Default);
    std::int64_t FFrame = 0;
};

} // namespace framix
