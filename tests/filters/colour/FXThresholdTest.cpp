// SPDX-License-Identifier: MIT
// Threshold: the two rules, strict limits, the red/blue crossing, alpha over many rows.
#include <gtest/gtest.h>

#include "filters/colour/FXThreshold.h"
#include "tests/filters/colour/ColourTestSupport.h"

namespace framix {
namespace {

using test::FXBytesOf;
using test::FXFrameOf;
using test::TBytes;
using test::TColourRig;

TEST(FXThreshold, DefaultsZeroEveryByteAboveMidGrey)
{
    TColourRig<TFXThreshold> rig;
    EXPECT_EQ(rig.Filter.GetThresholdTop().GetThreshold(), 0x808080u);
    EXPECT_TRUE(rig.Filter.GetThresholdBottom().GetEnabled()); // on, but black changes nothing
    EXPECT_EQ(rig.Run(2, 1, vfRGB24, {128, 129, 0, 255, 127, 1}), (TBytes{128, 0, 0, 0, 127, 1}));
}

TEST(FXThreshold, RulesApplyOnlyWhileEnabled)
{
    TColourRig<TFXThreshold> rig;
    TFXThresholdValueBottom& bottom = rig.Filter.GetThresholdBottom();
    bottom.SetThreshold(0x404040);
    bottom.SetValue(0x0A0A0A);
    const TBytes pixels{10, 64, 200, 63, 128, 129};
    EXPECT_EQ(rig.Run(2, 1, vfRGB24, pixels), (TBytes{10, 64, 0, 10, 128, 0}));
    rig.Filter.GetThresholdTop().SetEnabled(false);
    EXPECT_EQ(rig.Run(2, 1, vfRGB24, pixels), (TBytes{10, 64, 200, 10, 128, 129}));
    bottom.SetEnabled(false);
    EXPECT_EQ(rig.Run(2, 1, vfRGB24, pixels), pixels);
    rig.Filter.GetThresholdTop().SetEnabled(true);
    EXPECT_EQ(rig.Run(2, 1, vfRGB24, pixels), (TBytes{10, 64, 0, 63, 128, 0}));
}

// Intentional: a colour's red byte is the limit of the pixel's blue byte, and its blue of red.
TEST(FXThreshold, ColourRedLimitsThePixelsBlueByte_Intentional)
{
    TColourRig<TFXThreshold> rig;
    rig.Filter.GetThresholdTop().SetThreshold(0x0000FF); // "pure red": red 255, green 0, blue 0
    // Every pixel keeps only its blue byte.
    EXPECT_EQ(rig.Run(2, 1, vfRGB32, {200, 7, 9, 50, 255, 255, 255, 60}),
              (TBytes{200, 0, 0, 50, 255, 0, 0, 60}));
    // A value crosses the same way: red 1, blue 3 -> pixel blue 1, red 3.
    rig.Filter.GetThresholdTop().SetThreshold(0);
    rig.Filter.GetThresholdTop().SetValue(0x030201);
    EXPECT_EQ(rig.Run(1, 1, vfRGB24, {9, 9, 9}), (TBytes{1, 2, 3}));
}

TEST(FXThreshold, CrossedLimitsLeaveTheFrameAndPaddedRowsWork)
{
    TColourRig<TFXThreshold> rig;
    rig.Filter.GetThresholdBottom().SetThreshold(0xF0F0F0); // above the top limit
    EXPECT_EQ(rig.Run(1, 1, vfRGB24, {1, 130, 250}), (TBytes{1, 130, 250}));

    rig.Filter.GetThresholdBottom().SetThreshold(0x101010);
    const FXImageBufferPtr padded =
        FXFrameOf(2, 2, vfRGB32, {5, 20, 200, 1, 16, 128, 129, 2, 0, 0, 0, 3, 255, 255, 255, 4}, 3);
    EXPECT_EQ(FXBytesOf(*rig.Run(padded)),
              (TBytes{0, 20, 0, 1, 16, 128, 0, 2, 0, 0, 0, 3, 0, 0, 0, 4}));
    EXPECT_EQ(rig.Run(1, 1, vfGray8, {200}), (TBytes{0, 0, 0})); // grey arrives as vfRGB24
}

// Four-channel frames are worked in strips of rows: a frame of several strips and a short last
// one must keep every row's alpha and threshold every row's colours.
TEST(FXThreshold, TallFramesKeepAlphaInEveryRow)
{
    TColourRig<TFXThreshold> rig;
    constexpr int kWidth = 5, kHeight = 71;
    TBytes pixels(std::size_t(kWidth) * kHeight * 4), expected(pixels.size());
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        pixels[i] = std::uint8_t(i * 37 + i / 20);
        expected[i] = i % 4 == 3 || pixels[i] <= 128 ? pixels[i] : 0; // default: above 128 -> 0
    }
    EXPECT_EQ(rig.Run(kWidth, kHeight, vfRGB32, pixels), expected);
}

} // namespace
} // namespace framix
