// SPDX-License-Identifier: MIT
// Noise: the shared seed word, bounds, formats, regions, generator mode; the Jaehne generator.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "filters/colour/FXGaussNoise.h"
#include "filters/colour/FXJaehneGen.h"
#include "filters/colour/FXUniformNoise.h"
#include "framework/FXGenericSink.h"
#include "framework/primitives/dispatch/Fxdispatcher.h"
#include "framework/primitives/dispatch/Fxjaehnedispatcher.h"
#include "tests/filters/colour/ColourTestSupport.h"

namespace framix {
namespace {

using test::FXAlphaOf;
using test::FXBytesOf;
using test::FXFrameOf;
using test::FXRandomFrame;
using test::TBytes;
using test::TColourRig;

TEST(FXUniformNoise, BoundsNeverCrossAndTheValueJustSetWins)
{
    TFXGraph graph;
    auto* noise = new TFXUniformNoise(&graph);
    EXPECT_EQ(noise->GetLow(), 0);
    EXPECT_EQ(noise->GetHigh(), 255);
    noise->SetLow(20);
    noise->SetHigh(10);
    EXPECT_EQ(noise->GetLow(), 10);
    EXPECT_EQ(noise->GetHigh(), 10);
    noise->SetLow(30);
    EXPECT_EQ(noise->GetHigh(), 30);
}

// With both bounds equal the noise is a constant: exact bytes in every format, saturated, alpha
// of vfRGB32 untouched, and vfGray16 on the 16-bit scale (1 is 256 sample units).
TEST(FXUniformNoise, EqualBoundsAddThatValueInEveryFormat)
{
    TColourRig<TFXUniformNoise> rig;
    rig.Filter.SetHigh(0);
    const TBytes rgb{0, 100, 250, 7, 8, 9};
    EXPECT_EQ(rig.Run(2, 1, vfRGB24, rgb), rgb);
    rig.Filter.SetHigh(10);
    rig.Filter.SetLow(10);
    EXPECT_EQ(rig.Run(2, 1, vfRGB24, rgb), (TBytes{10, 110, 255, 17, 18, 19}));
    EXPECT_EQ(rig.Run(2, 1, vfRGB32, {0, 100, 250, 7, 8, 9, 10, 200}),
              (TBytes{10, 110, 255, 7, 18, 19, 20, 200}));
    EXPECT_EQ(rig.Run(3, 1, vfGray8, {0, 245, 246}), (TBytes{10, 255, 255}));
    // 16-bit samples, little-endian: 0x0100 + 0x0A00, 0xF000 + 0x0A00 saturates at 0xFFFF.
    EXPECT_EQ(rig.Run(2, 1, vfGray16, {0x00, 0x01, 0x00, 0xF6}), (TBytes{0x00, 0x0B, 0xFF, 0xFF}));
}

// Filter mode is exactly one primitive call whose seed word joins the running seed (low half)
// and `Seed` (high half); afterwards `Seed` shows the word's new high half.
TEST(FXUniformNoise, OneCallWithTheSharedSeedWord_Intentional)
{
    TColourRig<TFXUniformNoise> rig;
    rig.Filter.SetSeed(1234);
    const FXImageBufferPtr input = FXRandomFrame(17, 5, vfRGB24, 7, 64);
    FXImageBufferPtr expected = new TFXImageBuffer(*input);
    unsigned int word = 1234u << 16 | 1234u;
    ipp::ippiAddRandUniform_Direct_8u_C3IR(expected->GetModifyPointer(), expected->GetRowStride(),
                                           {17, 5}, 0, 255, &word);
    EXPECT_EQ(FXBytesOf(*rig.Run(input)), FXBytesOf(*expected));
    EXPECT_EQ(rig.Filter.GetSeed(), word >> 16);
}

TEST(FXUniformNoise, ARestartedStreamRepeatsOnlyWhileSeedIsUnchanged)
{
    TColourRig<TFXUniformNoise> rig;
    const FXImageBufferPtr input = FXRandomFrame(16, 4, vfGray8, 3);
    const TBytes first = FXBytesOf(*rig.Run(input));
    const TBytes second = FXBytesOf(*rig.Run(input));  // same stream: the sequence goes on
    EXPECT_NE(first, second);
    EXPECT_NE(rig.Filter.GetSeed(), TFXBasicNoise::kSeed.Default);
    // The next stream starts from the value the generator left in Seed...
    EXPECT_NE(FXBytesOf(*rig.Run(input)), first);
    // ...so setting it back repeats the first stream.
    rig.Filter.SetSeed(std::uint16_t(TFXBasicNoise::kSeed.Default));
    EXPECT_EQ(FXBytesOf(*rig.Run(input)), first);
}

TEST(FXUniformNoise, NoiseStaysInsideTheRegionOfInterest)
{
    TColourRig<TFXUniformNoise> rig;
    TFXRegionOfInterest& roi = rig.Filter.GetROI();
    roi.SetLeft(2);
    roi.SetTop(1);
    roi.SetWidth(3);
    roi.SetHeight(2);
    roi.SetEnabled(true);
    rig.Filter.SetLow(1);  // every channel inside changes
    const FXImageBufferPtr input = FXFrameOf(6, 4, vfRGB24, TBytes(6 * 4 * 3, 100), 5);
    const FXImageBufferPtr output = rig.Run(input);
    const TBytes bytes = FXBytesOf(*output);
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 6 * 3; ++x) {
            const bool inside = y >= 1 && y < 3 && x >= 2 * 3 && x < 5 * 3;
            EXPECT_EQ(bytes[std::size_t(y * 18 + x)] != 100, inside) << x << "," << y;
        }
    EXPECT_TRUE(test::FXPaddingIntact(*output));
}

TEST(FXGaussNoise, SixteenBitDeviationIsOnTheSixteenBitScale)
{
    TColourRig<TFXGaussNoise> rig;
    ASSERT_EQ(rig.Filter.GetStDev(), 100);
    const int w = 128, h = 64;
    TBytes grey(std::size_t(w * h * 2));
    for (std::size_t i = 0; i < grey.size(); i += 2)
        grey[i + 1] = 0x80;  // 32768
    const TBytes out = FXBytesOf(*rig.Run(FXFrameOf(w, h, vfGray16, grey)));
    // Mid-grey is 1.28 deviations of 25600 from either end: about 10% of the samples saturate
    // at each end (none would with a deviation of 100 sample units).
    int low = 0, high = 0;
    for (std::size_t i = 0; i < out.size(); i += 2) {
        const int v = out[i] | out[i + 1] << 8;
        low += v == 0;
        high += v == 65535;
    }
    EXPECT_NEAR(double(low) / (w * h), 0.10, 0.02);
    EXPECT_NEAR(double(high) / (w * h), 0.10, 0.02);
}

TEST(FXBasicNoise, GeneratesBackgroundFramesWithNoisyAlpha)
{
    TFXGraph graph;
    auto* noise = new TFXGaussNoise(&graph);
    noise->GetImageSize().SetWidth(5);
    noise->GetImageSize().SetHeight(3);
    noise->SetBackgroundColor(0x336699);  // red 0x99, green 0x66, blue 0x33
    noise->SetStDev(0);
    auto frames = test::FXPumpFrames(*noise, 1);
    ASSERT_EQ(frames.size(), 1u);
    ASSERT_EQ(frames[0]->GetFormat(), vfRGB32);
    EXPECT_EQ(FXBytesOf(*frames[0]), [] {
        TBytes b;
        for (int i = 0; i < 15; ++i)
            b.insert(b.end(), {0x33, 0x66, 0x99, 0});
        return b;
    }());

    noise->SetStDev(20);
    noise->SetMean(100);
    frames = test::FXPumpFrames(*noise, 1);
    const TBytes alpha = FXAlphaOf(FXBytesOf(*frames[0]));
    EXPECT_TRUE(std::any_of(alpha.begin(), alpha.end(), [&](auto a) { return a != alpha.front(); }));
    EXPECT_TRUE(std::all_of(alpha.begin(), alpha.end(), [](auto a) { return a > 20; }));
}

TEST(FXJaehneGen, FramesAreTheTestImage)
{
    TFXGraph graph;
    auto* gen = new TFXJaehneGen(&graph);
    gen->GetImageSize().SetWidth(33);
    gen->GetImageSize().SetHeight(20);
    const auto frames = test::FXPumpFrames(*gen, 1);
    ASSERT_EQ(frames.size(), 1u);
    ASSERT_EQ(frames[0]->GetFormat(), vfRGB24);
    const FXImageBufferPtr expected = new TFXImageBuffer(33, 20, vfRGB24);
    ipp::ippiImageJaehne_8u_C3R(expected->GetWritePointer(), expected->GetRowStride(), {33, 20});
    EXPECT_EQ(FXBytesOf(*frames[0]), FXBytesOf(*expected));
    const TBytes bytes = FXBytesOf(*frames[0]);
    EXPECT_NE(bytes[0], bytes[3 * (10 * 33 + 16)]);  // not a flat frame
}

} // namespace
} // namespace framix
