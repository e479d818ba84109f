// SPDX-License-Identifier: MIT
// Normally distributed noise, added to frames or generated.
#pragma once

#include "filters/colour/FXBasicNoise.h"

namespace framix {

// Adds noise drawn from a normal distribution of `Mean` and `StDev` to every channel sample
// (saturated). On vfGray16 both are on the 16-bit scale: StDev 100 is 25600 sample units.
//
//   object Noise1: TFXGaussNoise
//     StDev = 20
//   end
class TFXGaussNoise : public TFXBasicNoise {
public:
    static constexpr TFXIntProp kMean{
        .Name = "Mean", .Help = "mean of the added noise", .Default = 0, .Min = 0, .Max = 255};
    static constexpr TFXIntProp kStDev{.Name = "StDev",
                                       .Help = "standard deviation of the added noise",
                                       .Default = 100,
                                       .Min = 0,
                                       .Max = 255};

    explicit TFXGaussNoise(TKTComponent* owner);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    std::uint8_t GetMean() const;
    void SetMean(std::uint8_t value);
    std::uint8_t GetStDev() const;
    void SetStDev(std::uint8_t value);

protected:
    TFXNoiseParams GetNoiseParams() const override { return {FMean, FStDev}; }
    TFXNoisePrimitives GetNoisePrimitives() const override;

private:
    std::uint8_t FMean = std::uint8_t(kMean.Default);
    std::uint8_t FStDev = std::uint8_t(kStDev.Default);
};

} // namespace framix
