// SPDX-License-Identifier: MIT
// The base of the noise components: noise added to frames, or noise frames of their own.
#pragma once

#include <cstdint>

#include "framework/FXCommonROIGenFilter.h"
#include "framework/primitives/dispatch/Fxdispatcher.h"

namespace framix {

// With its input connected it adds noise in place to the region of interest of each frame
// (vfRGB24, vfRGB32 with alpha left alone, vfGray8, vfGray16 on a 16-bit scale). With the input
// unconnected it generates vfRGB32 frames of `BackgroundColor` with noise on all four channels.
//
// The random primitives keep their state in one 32-bit word. The word is the running seed (low
// 16 bits) joined with the `Seed` property (high 16 bits), and every call writes the whole word
// back: while a stream runs, `Seed` reads back values the generator changed, and the next stream
// start loads the running seed from them.
class TFXBasicNoise : public TFXCommonROIGenFilter {
public:
    static constexpr TFXColourProp kBackgroundColor{
        .Name = "BackgroundColor", .Help = "fill of generated frames before the noise is added"};
    static constexpr TFXIntProp kSeed{.Name = "Seed",
                                      .Help = "seed loaded at the start of each stream",
                                      .Default = 31192,
                                      .Min = 0,
                                      .Max = 65535};

    explicit TFXBasicNoise(TKTComponent* owner);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    std::uint32_t GetBackgroundColor() const;
    void SetBackgroundColor(std::uint32_t value);
    std::uint16_t GetSeed() const;
    void SetSeed(std::uint16_t value);

protected:
    // The two noise parameters on the 8-bit scale (bounds, or mean and deviation).
    struct TFXNoiseParams {
        std::uint8_t A;
        std::uint8_t B;
    };
    // The in-place variants of one kind of noise, by layout.
    struct TFXNoisePrimitives {
        ipp::TPtr_ippiAddRandUniform_Direct_8u_C1IR C1;
        ipp::TPtr_ippiAddRandUniform_Direct_8u_C3IR C3;
        ipp::TPtr_ippiAddRandUniform_Direct_8u_C4IR C4;
        ipp::TPtr_ippiAddRandUniform_Direct_8u_AC4IR AC4;
        ipp::TPtr_ippiAddRandUniform_Direct_16u_C1IR C1_16u;
    };
    // Read under the lock, like the parameters.
    virtual TFXNoiseParams GetNoiseParams() const = 0;
    virtual TFXNoisePrimitives GetNoisePrimitives() const = 0;

    void StreamStart() override;
    void IntStart() override;
    bool CanInline() override { return true; }
    void SetVideoFormat(IFXImageBuffer& buffer) override;
    void FilterInternalOperation(IFXImageBuffer& input, IFXImageBuffer& output) override;
    void GenerateFrame(IFXImageBuffer& buffer) override;

private:
    // One primitive call with the shared seed word; afterwards both halves hold its new value.
    // `format` picks the variant; generated frames pass allChannels for the C4 one.
    void AddNoiseAndAdvance(std::uint8_t* pixels, int stride, TFXImageSize size,
                            TFXVideoFormat format, bool allChannels = false);
    void LoadRunningSeed();

    std::uint32_t FBackgroundColor = kBackgroundColor.Default;
    std::uint16_t FSeed = std::uint16_t(kSeed.Default);
    std::uint16_t FRunningSeed = std::uint16_t(kSeed.Default);
};

} // namespace framix
