// SPDX-License-Identifier: MIT
// Gaussian noise.
#include "filters/colour/FXGaussNoise.h"

#include "framework/properties/FXPalette.h"

namespace framix {

TFXGaussNoise::TFXGaussNoise(TKTComponent* owner) : TFXBasicNoise(owner) {}

const TFXClassInfo& TFXGaussNoise::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXProp<&TFXGaussNoise::GetMean, &TFXGaussNoise::SetMean>(kMean),
        FXProp<&TFXGaussNoise::GetStDev, &TFXGaussNoise::SetStDev>(kStDev),
        FXProp<&TFXBasicNoise::GetSeed, &TFXBasicNoise::SetSeed>(kSeed),
    };
    static const TFXClassInfo info{"TFXGaussNoise", &TFXBasicNoise::ClassInfo(), kProps};
    return info;
}

std::uint8_t TFXGaussNoise::GetMean() const
{
    auto guard = Lock().Read();
    return FMean;
}

void TFXGaussNoise::SetMean(std::uint8_t value) { Lock().Store(FMean, value); }

std::uint8_t TFXGaussNoise::GetStDev() const
{
    auto guard = Lock().Read();
    return FStDev;
}

void TFXGaussNoise::SetStDev(std::uint8_t value) { Lock().Store(FStDev, value); }

TFXBasicNoise::TFXNoisePrimitives TFXGaussNoise::GetNoisePrimitives() const
{
    using namespace ipp;
    return {ippiAddRandGauss_Direct_8u_C1IR, ippiAddRandGauss_Direct_8u_C3IR,
            ippiAddRandGauss_Direct_8u_C4IR, ippiAddRandGauss_Direct_8u_AC4IR,
            ippiAddRandGauss_Direct_16u_C1IR};
}

void RegisterFXGaussNoise(TFXPalette& palette) { palette.Register<TFXGaussNoise>(kFXPalettePage); }

} // namespace framix
