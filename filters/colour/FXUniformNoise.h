// SPDX-License-Identifier: MIT
// Uniformly distributed noise, added to frames or generated.
#pragma once

#include "filters/colour/FXBasicNoise.h"

namespace framix {

// Adds noise drawn uniformly from [Low, High] to every channel sample (saturated). Setting one
// bound past the other moves the other to it, so Low <= High always holds.
//
//   object Noise1: TFXUniformNoise
//     Low = 0
//     High = 40
//   end
class TFXUniformNoise : public TFXBasicNoise {
public:
    static constexpr TFXIntProp kLow{
        .Name = "Low", .Help = "lower bound of the added noise", .Default = 0, .Min = 0, .Max = 255};
    static constexpr TFXIntProp kHigh{.Name = "High",
                                      .Help = "upper bound of the added noise",
                                      .Default = 255,
                                      .Min = 0,
                                      .Max = 255};

    explicit TFXUniformNoise(TKTComponent* owner);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    std::uint8_t GetLow() const;
    void SetLow(std::uint8_t value);
    std::uint8_t GetHigh() const;
    void SetHigh(std::uint8_t value);

protected:
    TFXNoiseParams GetNoiseParams() const override { return {FLow, FHigh}; }
    TFXNoisePrimitives GetNoisePrimitives() const override;

private:
    std::uint8_t FLow = std::uint8_t(kLow.Default);
    std::uint8_t FHigh = std::uint8_t(kHigh.Default);
};

} // namespace framix
