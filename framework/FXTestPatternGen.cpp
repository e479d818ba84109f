// SPDX-License-Identifier: MIT
// The test-pattern generator.
#include "framework/FXTestPatternGen.h"

#include <algorithm>

#include "framework/FXRandom.h"
#include "framework/properties/FXPalette.h"

namespace framix {

namespace {

// B, G, R of the bars, left to right.
constexpr std::uint8_t kBars[8][3] = {{255, 255, 255}, {0, 255, 255}, {255, 255, 0}, {0, 255, 0},
                                      {255, 0, 255},   {0, 0, 255},   {255, 0, 0},   {0, 0, 0}};
constexpr int kMarkerPeriod = 64;

} // namespace

TFXTestPatternGen::TFXTestPatternGen(TKTComponent* owner) : TFXCommonGen(owner) {}

const TFXClassInfo& TFXTestPatternGen::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXProp<&TFXTestPatternGen::GetFormat, &TFXTestPatternGen::SetFormat>(kFormat),
        FXProp<&TFXTestPatternGen::GetSpeed, &TFXTestPatternGen::SetSpeed>(kSpeed),
        FXProp<&TFXTestPatternGen::GetNoise, &TFXTestPatternGen::SetNoise>(kNoise),
    };
    static const TFXClassInfo info{"TFXTestPatternGen", &TFXCommonGen::ClassInfo(), kProps};
    return info;
}

TFXVideoFormat TFXTestPatternGen::GetFormat() const
{
    auto guard = Lock().Read();
    return FFormat;
}

void TFXTestPatternGen::SetFormat(TFXVideoFormat value)
{
    Lock().Store(FFormat, FXCheckedVideoFormat(value));
}

std::int32_t TFXTestPatternGen::GetSpeed() const
{
    auto guard = Lock().Read();
    return FSpeed;
}

void TFXTestPatternGen::SetSpeed(std::int32_t value)
{
    Lock().StoreClamped(FSpeed, value, kSpeed);
}

std::int32_t TFXTestPatternGen::GetNoise() const
{
    auto guard = Lock().Read();
    return FNoise;
}

void TFXTestPatternGen::SetNoise(std::int32_t value)
{
    Lock().StoreClamped(FNoise, value, kNoise);
}

void TFXTestPatternGen::Draw(std::uint8_t* pixels, int stride, int width, int height,
                             std::int64_t frame, int speed)
{
    const int barRows = height * 2 / 3;
    const std::int64_t shift = ((frame * speed) % width + width) % width;
    const int marker = int(frame % kMarkerPeriod * width / kMarkerPeriod);
    for (int y = 0; y < height; ++y) {
        std::uint8_t* row = pixels + std::ptrdiff_t(y) * stride;
        for (int x = 0; x < width; ++x) {
            std::uint8_t* p = row + 3 * x;
            if (y < barRows) {
                const std::int64_t source = (x - shift + width) % width;
                std::copy_n(kBars[source * 8 / width], 3, p);
            } else {
                const auto grey = std::uint8_t(width > 1 ? x * 255 / (width - 1) : 0);
                const bool onMarker = x >= marker && x < marker + std::max(1, width / 80);
                std::fill_n(p, 3, onMarker ? std::uint8_t(255 - grey) : grey);
            }
        }
    }
}

void TFXTestPatternGen::GenerateFrame(IFXImageBuffer& buffer)
{
    const int width = buffer.GetWidth();
    const int height = buffer.GetHeight();
    if (buffer.GetFormat() != vfRGB24)
        buffer.SetSize(width, height, vfRGB24);
    std::uint8_t* pixels = buffer.GetWritePointer();
    Draw(pixels, buffer.GetRowStride(), width, height, FFrame++, FSpeed);
    if (FNoise > 0) {
        const auto span = std::uint32_t(2 * FNoise + 1);
        for (int y = 0; y < height; ++y) {
            std::uint8_t* row = pixels + std::ptrdiff_t(y) * buffer.GetRowStride();
            for (int i = 0; i < 3 * width; ++i)
                row[i] =
                    std::uint8_t(std::clamp(int(row[i]) + int(FXRandom(span)) - FNoise, 0, 255));
        }
    }
    if (FFormat != vfRGB24)
        buffer.ConvertFormat(FFormat);
}

void RegisterFXTestPatternGen(TFXPalette& palette)
{
    palette.Register<TFXTestPatternGen>(kFXPalettePage);
}

} // namespace framix
