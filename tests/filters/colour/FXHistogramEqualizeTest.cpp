// SPDX-License-Identifier: MIT
// Histogram equalisation: the uncounted top value, rounding, colour through HLS, alpha.
#include <gtest/gtest.h>

#include "filters/colour/FXHistogramEqualize.h"
#include "tests/filters/colour/ColourTestSupport.h"

namespace framix {
namespace {

using test::FXAlphaOf;
using test::FXBytesOf;
using test::FXFrameOf;
using test::TBytes;
using test::TColourRig;

TEST(FXHistogramEqualize, GreyFramesSpreadOverTheFullRange)
{
    TColourRig<TFXHistogramEqualize> rig;
    // Half 0, half 200: 0 -> Round(127.5) = 128, 200 -> 255.
    EXPECT_EQ(rig.Run(2, 2, vfGray8, {0, 200, 200, 0}), (TBytes{128, 255, 255, 128}));
    EXPECT_EQ(rig.Run(3, 1, vfGray8, {7, 7, 7}), (TBytes{255, 255, 255}));
    // Quarters: 10 -> 63.75 -> 64, 20 -> 127.5 -> 128, 30 -> 191.25 -> 191, 40 -> 255.
    const FXImageBufferPtr padded = FXFrameOf(2, 2, vfGray8, {10, 20, 30, 40}, 9);
    EXPECT_EQ(FXBytesOf(*rig.Run(padded)), (TBytes{64, 128, 191, 255}));
}

// Intentional: the top value lies outside the last bin and is not counted.
TEST(FXHistogramEqualize, TopValueIsNotCounted_Intentional)
{
    TColourRig<TFXHistogramEqualize> rig;
    EXPECT_EQ(rig.Run(2, 1, vfGray8, {255, 255}), (TBytes{0, 0}));
    // One 0 among three 255s: 0 -> Round(255 / 4) = 64; the 255s see the same sum.
    EXPECT_EQ(rig.Run(4, 1, vfGray8, {0, 255, 255, 255}), (TBytes{64, 64, 64, 64}));
    // 16-bit: 65535 is the uncounted top.
    EXPECT_EQ(rig.Run(2, 1, vfGray16, {0xFF, 0xFF, 0x10, 0x00}), (TBytes{0x00, 0x80, 0x00, 0x80}));
}

TEST(FXHistogramEqualize, ColourFramesEqualiseLightnessAndKeepAlpha)
{
    TColourRig<TFXHistogramEqualize> rig;
    // Two greys: lightness 40 and 80 -> 128 and 255; greys stay grey.
    EXPECT_EQ(rig.Run(2, 1, vfRGB32, {40, 40, 40, 1, 80, 80, 80, 2}),
              (TBytes{128, 128, 128, 1, 255, 255, 255, 2}));
    EXPECT_EQ(rig.Run(2, 1, vfRGB24, {40, 40, 40, 80, 80, 80}),
              (TBytes{128, 128, 128, 255, 255, 255}));
    // Lightness 30 (a dark red and a dark green), 200 and 0: 30 -> Round(191.25) = 191 keeps
    // the two hues at full saturation, grey 200 -> 255, black -> Round(63.75) = 64.
    const TBytes out =
        rig.Run(4, 1, vfRGB32, {0, 0, 60, 9, 0, 60, 0, 8, 200, 200, 200, 7, 0, 0, 0, 6});
    EXPECT_EQ(out[2], 255);
    EXPECT_NEAR(out[0], 127, 1);
    EXPECT_EQ(out[0], out[1]);
    EXPECT_EQ(out[5], 255);
    EXPECT_EQ(out[4], out[6]);
    EXPECT_EQ(TBytes(out.begin() + 8, out.begin() + 11), TBytes(3, 255));
    EXPECT_EQ(TBytes(out.begin() + 12, out.begin() + 15), TBytes(3, 64));
    EXPECT_EQ(FXAlphaOf(out), (TBytes{9, 8, 7, 6}));
}

TEST(FXHistogramEqualize, FrameSizeChangesReuseTheWorkingMemory)
{
    TColourRig<TFXHistogramEqualize> rig;
    EXPECT_EQ(rig.Run(1, 2, vfRGB24, {10, 10, 10, 20, 20, 20}),
              (TBytes{128, 128, 128, 255, 255, 255}));
    const FXImageBufferPtr big = test::FXRandomFrame(33, 7, vfRGB24, 3, 112);
    EXPECT_EQ(rig.Run(big)->GetWidth(), 33);
    EXPECT_EQ(rig.Run(1, 1, vfGray16, {0, 1}), (TBytes{0xFF, 0xFF}));
    EXPECT_EQ(rig.Run(1, 2, vfRGB24, {10, 10, 10, 20, 20, 20}),
              (TBytes{128, 128, 128, 255, 255, 255}));
}

} // namespace
} // namespace framix
