// SPDX-License-Identifier: MIT
// Uniform noise.
#include "filters/colour/FXUniformNoise.h"

#include <algorithm>

#include "framework/properties/FXPalette.h"

namespace framix {

TFXUniformNoise::TFXUniformNoise(TKTComponent* owner) : TFXBasicNoise(owner) {}

const TFXClassInfo& TFXUniformNoise::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXProp<&TFXUniformNoise::GetLow, &TFXUniformNoise::SetLow>(kLow),
        FXProp<&TFXUniformNoise::GetHigh, &TFXUniformNoise::SetHigh>(kHigh),
        FXProp<&TFXBasicNoise::GetSeed, &TFXBasicNoise::SetSeed>(kSeed),
    };
    static const TFXClassInfo info{"TFXUniformNoise", &TFXBasicNoise::ClassInfo(), kProps};
    return info;
}

std::uint8_t TFXUniformNoise::GetLow() const
{
    auto guard = Lock().Read();
    return FLow;
}

// The bound just set wins: the other one moves to it when they would cross.
void TFXUniformNoise::SetLow(std::uint8_t value)
{
    auto guard = Lock().Write();
    FLow = value;
    FHigh = std::max(FHigh, FLow);
}

std::uint8_t TFXUniformNoise::GetHigh() const
{
    auto guard = Lock().Read();
    return FHigh;
}

void TFXUniformNoise::SetHigh(std::uint8_t value)
{
    auto guard = Lock().Write();
    FHigh = value;
    FLow = std::min(FLow, FHigh);
}

TFXBasicNoise::TFXNoisePrimitives TFXUniformNoise::GetNoisePrimitives() const
{
    using namespace ipp;
    return {ippiAddRandUniform_Direct_8u_C1IR, ippiAddRandUniform_Direct_8u_C3IR,
            ippiAddRandUniform_Direct_8u_C4IR, ippiAddRandUniform_Direct_8u_AC4IR,
            ippiAddRandUniform_Direct_16u_C1IR};
}

void RegisterFXUniformNoise(TFXPalette& palette)
{
    palette.Register<TFXUniformNoise>(kFXPalettePage);
}

} // namespace framix
