// SPDX-License-Identifier: MIT
// The colour twist and the gamma filter: matrix orientation, saturation, alpha, curves.
#include <gtest/gtest.h>

#include "filters/colour/FXColorTwist.h"
#include "filters/colour/FXGammaFilter.h"
#include "tests/filters/colour/ColourTestSupport.h"

namespace framix {
namespace {

using test::FXAlphaOf;
using test::FXBytesOf;
using test::FXFrameOf;
using test::TBytes;
using test::TColourRig;

void SetIdentity(TFXColorTwists& twists)
{
    twists.GetRedTwist().SetRed(1.0f);
    twists.GetGreenTwist().SetGreen(1.0f);
    twists.GetBlueTwist().SetBlue(1.0f);
}

// Intentional: no default matrix; the stored form or the user sets it.
TEST(FXColorTwist, NewTwistOutputsBlackAndKeepsAlpha_Intentional)
{
    TColourRig<TFXColorTwist> rig;
    EXPECT_EQ(rig.Run(2, 1, vfRGB24, {10, 20, 30, 200, 100, 50}), TBytes(6, 0));
    EXPECT_EQ(rig.Run(2, 1, vfRGB32, {10, 20, 30, 77, 200, 100, 50, 9}),
              (TBytes{0, 0, 0, 77, 0, 0, 0, 9}));
}

TEST(FXColorTwist, PublishedChannelsAddressPixelByteOrder)
{
    TColourRig<TFXColorTwist> rig;
    TFXColorTwists& twists = rig.Filter.GetColorTwists();
    SetIdentity(twists);
    const TBytes pixels{10, 20, 30, 200, 100, 50}; // B G R, B G R
    EXPECT_EQ(rig.Run(2, 1, vfRGB24, pixels), pixels);
    // The rows sit in the matrix blue first; a published Red reads index 2 of its row.
    EXPECT_EQ(twists.Matrix()[2][2], 1.0f);
    EXPECT_EQ(twists.GetRedTwist().GetItem(2), 1.0f);

    // Red from blue and blue from red: red and blue swap.
    twists.GetRedTwist().SetRed(0.0f);
    twists.GetBlueTwist().SetBlue(0.0f);
    twists.GetRedTwist().SetBlue(1.0f);
    twists.GetBlueTwist().SetRed(1.0f);
    EXPECT_EQ(rig.Run(2, 1, vfRGB24, pixels), (TBytes{30, 20, 10, 50, 100, 200}));
}

TEST(FXColorTwist, OffsetsSaturateAndRoundHalfToEven)
{
    TColourRig<TFXColorTwist> rig;
    TFXColorTwists& twists = rig.Filter.GetColorTwists();
    SetIdentity(twists);
    twists.GetRedTwist().SetOffset(300.0f);
    twists.GetBlueTwist().SetOffset(-300.0f);
    twists.GetGreenTwist().SetGreen(0.5f); // 5 * 0.5 = 2.5 -> 2, 7 * 0.5 = 3.5 -> 4
    EXPECT_EQ(rig.Run(2, 1, vfRGB32, {10, 5, 30, 1, 250, 7, 0, 2}),
              (TBytes{0, 2, 255, 1, 0, 4, 255, 2}));
}

TEST(FXColorTwist, PaddedRowsAndOtherFormatsAsRGB24)
{
    TColourRig<TFXColorTwist> rig;
    SetIdentity(rig.Filter.GetColorTwists());
    const FXImageBufferPtr padded = FXFrameOf(3, 2, vfRGB24, TBytes(18, 40), 5);
    const FXImageBufferPtr out = rig.Run(padded);
    EXPECT_EQ(FXBytesOf(*out), TBytes(18, 40));
    EXPECT_TRUE(test::FXPaddingIntact(*padded));

    const FXImageBufferPtr grey = rig.Run(FXFrameOf(2, 1, vfGray8, {60, 90}));
    EXPECT_EQ(grey->GetFormat(), vfRGB24);
    EXPECT_EQ(FXBytesOf(*grey), (TBytes{60, 60, 60, 90, 90, 90}));
}

TEST(FXColorTwist, AssigningTwistsCopiesValues)
{
    TColourRig<TFXColorTwist> a, b;
    SetIdentity(a.Filter.GetColorTwists());
    a.Filter.GetColorTwists().GetGreenTwist().SetOffset(12.5f);
    b.Filter.SetColorTwists(a.Filter.GetColorTwists());
    a.Filter.GetColorTwists().GetGreenTwist().SetOffset(0.0f);
    EXPECT_EQ(b.Filter.GetColorTwists().GetGreenTwist().GetOffset(), 12.5f);
    EXPECT_EQ(b.Filter.GetColorTwists().GetRedTwist().GetRed(), 1.0f);
}

TEST(FXGammaFilter, ForwardThenInverseReturnsEveryByteWithinRounding)
{
    TBytes all(256 * 4);
    for (std::size_t i = 0; i < 256; ++i) {
        all[4 * i] = all[4 * i + 1] = all[4 * i + 2] = std::uint8_t(i);
        all[4 * i + 3] = std::uint8_t(255 - i);
    }
    TColourRig<TFXGammaFilter> forward, inverse;
    inverse.Filter.SetGammaType(gtInverse);
    const TBytes there = forward.Run(256, 1, vfRGB32, all);
    const TBytes back = inverse.Run(256, 1, vfRGB32, there);
    EXPECT_EQ(FXAlphaOf(there), FXAlphaOf(all));
    EXPECT_EQ(FXAlphaOf(back), FXAlphaOf(all));
    // The forward curve is steep near black (4.5 v): several inputs per output step lose detail
    // there, so compare where the curve is flatter than the byte grid.
    for (int i = 20; i < 256; ++i)
        EXPECT_NEAR(back[std::size_t(4 * i)], i, 1) << i;
    // Known points: 128 -> Round(255 (1.099 (128/255)^0.45 - 0.099)) and black stays black.
    EXPECT_EQ(there[4 * 128], 180);
    EXPECT_EQ(there[0], 0);
    EXPECT_EQ(there[4 * 255], 255);
}

TEST(FXGammaFilter, RGB24UsesTheSameCurveAsRGB32)
{
    TColourRig<TFXGammaFilter> rig;
    rig.Filter.SetGammaType(gtInverse);
    const TBytes rgb24 = rig.Run(2, 1, vfRGB24, {128, 64, 255, 0, 30, 200});
    const TBytes rgb32 = rig.Run(2, 1, vfRGB32, {128, 64, 255, 1, 0, 30, 200, 2});
    EXPECT_EQ(rgb24, (TBytes{rgb32[0], rgb32[1], rgb32[2], rgb32[4], rgb32[5], rgb32[6]}));
    EXPECT_EQ(FXAlphaOf(rgb32), (TBytes{1, 2}));
}

} // namespace
} // namespace framix
