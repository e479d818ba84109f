// SPDX-License-Identifier: MIT
// Mirror: the three axes, every format, padded rows, alpha left in place.
#include <gtest/gtest.h>

#include "filters/colour/FXMirror.h"
#include "tests/filters/colour/ColourTestSupport.h"

namespace framix {
namespace {

using test::FXAlphaOf;
using test::FXBytesOf;
using test::FXFrameOf;
using test::FXRandomFrame;
using test::TBytes;
using test::TColourRig;

TEST(FXMirror, AxesOnAGreyFrame)
{
    TColourRig<TFXMirror> rig;
    const TBytes frame{1, 2, 3,  //
                       4, 5, 6};
    EXPECT_EQ(rig.Run(3, 2, vfGray8, frame), (TBytes{4, 5, 6, 1, 2, 3}));  // rows reversed
    rig.Filter.SetMirrorType(mtVertical);
    EXPECT_EQ(rig.Run(3, 2, vfGray8, frame), (TBytes{3, 2, 1, 6, 5, 4}));  // columns reversed
    rig.Filter.SetMirrorType(mtBoth);
    EXPECT_EQ(rig.Run(3, 2, vfGray8, frame), (TBytes{6, 5, 4, 3, 2, 1}));
}

TEST(FXMirror, WholePixelsMoveInTheColourAndSixteenBitFormats)
{
    TColourRig<TFXMirror> rig;
    rig.Filter.SetMirrorType(mtVertical);
    EXPECT_EQ(rig.Run(2, 1, vfRGB24, {1, 2, 3, 4, 5, 6}), (TBytes{4, 5, 6, 1, 2, 3}));
    EXPECT_EQ(rig.Run(2, 1, vfGray16, {1, 2, 3, 4}), (TBytes{3, 4, 1, 2}));
    // A one-pixel-wide frame has nothing to swap.
    EXPECT_EQ(rig.Run(1, 3, vfRGB24, {1, 2, 3, 4, 5, 6, 7, 8, 9}),
              (TBytes{1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

// Intentional: only the colour bytes of vfRGB32 move; the alpha gradient stays in place.
TEST(FXMirror, AlphaIsNotMirrored_Intentional)
{
    TColourRig<TFXMirror> rig;
    rig.Filter.SetMirrorType(mtVertical);
    const TBytes out = rig.Run(3, 1, vfRGB32, {1, 1, 1, 10, 2, 2, 2, 20, 3, 3, 3, 30});
    EXPECT_EQ(out, (TBytes{3, 3, 3, 10, 2, 2, 2, 20, 1, 1, 1, 30}));
    EXPECT_EQ(FXAlphaOf(out), (TBytes{10, 20, 30}));
}

// Tall four-channel frames are mirrored in bands of rows: every axis against a plain loop.
TEST(FXMirror, TallFourChannelFramesMatchAPlainMirror)
{
    const int w = 5, h = 71;
    const FXImageBufferPtr input = FXRandomFrame(w, h, vfRGB32, 9, w * 4 + 8);
    const TBytes in = FXBytesOf(*input);
    for (TFXMirrorType type : {mtHorizontal, mtVertical, mtBoth}) {
        TColourRig<TFXMirror> rig;
        rig.Filter.SetMirrorType(type);
        TBytes expected = in;
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x) {
                const int sy = type == mtVertical ? y : h - 1 - y;
                const int sx = type == mtHorizontal ? x : w - 1 - x;
                for (int c = 0; c < 3; ++c)
                    expected[std::size_t((y * w + x) * 4 + c)] = in[std::size_t((sy * w + sx) * 4 + c)];
            }
        EXPECT_EQ(FXBytesOf(*rig.Run(input)), expected) << type;
    }
}

TEST(FXMirror, BothTwiceReturnsTheInputWithPaddedRowsInEveryFormat)
{
    for (TFXVideoFormat format : {vfRGB24, vfRGB32, vfGray8, vfGray16}) {
        TColourRig<TFXMirror> rig;
        rig.Filter.SetMirrorType(mtBoth);
        const FXImageBufferPtr input = FXRandomFrame(13, 7, format, 5, 13 * 8 + 12);
        const FXImageBufferPtr once = rig.Run(input);
        EXPECT_NE(FXBytesOf(*once), FXBytesOf(*input)) << format;
        EXPECT_EQ(FXBytesOf(*rig.Run(once)), FXBytesOf(*input)) << format;
    }
}

TEST(FXMirror, OtherFormatsArriveAsRGB24)
{
    TColourRig<TFXMirror> rig;
    const FXImageBufferPtr out = rig.Run(FXRandomFrame(8, 4, vfI420, 2));
    EXPECT_EQ(out->GetFormat(), vfRGB24);
}

} // namespace
} // namespace framix
