// SPDX-License-Identifier: MIT
// Bilinear resampling: exact cases for every format, hand-computed taps, plane grids, bad input.
#include "framework/FXResize.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "framework/FXError.h"
#include "framework/FXFormatConversion.h"
#include "tests/support/FXTestImage.h"

namespace framix {
namespace {

using test::TTestImage;
using B = std::vector<std::uint8_t>;

TTestImage Resize(TTestImage& src, int width, int height, int pad = 5)
{
    TTestImage dst(src.Format(), width, height, pad);
    FXResizePixels(src.Format(), src.ConstPlanes(), src.Width(), src.Height(), dst.Planes(), width,
                   height);
    EXPECT_TRUE(dst.PaddingIntact()) << FXVideoFormatName(src.Format());
    return dst;
}

// One colour per format: the bytes of a packed pixel (a pixel pair for 4:2:2), or Y, U, V, A.
B SomeColour(TFXVideoFormat f)
{
    switch (f) {
    case vfRGB555:
        return {0x35, 0x5A};
    case vfYUY2:
        return {90, 60, 90, 200};
    case vfUYVY:
        return {60, 90, 200, 90};
    default: {
        B v{90, 60, 200, 33, 17, 250, 4, 99};
        if (FXFormatInfo(f).PlaneCount == 1)
            v.resize(size_t(FXFormatInfo(f).BytesPerPixel));
        return v;
    }
    }
}

TEST(FXResize, EqualSizesCopyEveryFormat)
{
    for (int f = 0; f < kFXVideoFormatCount; ++f) {
        TTestImage src(TFXVideoFormat(f), 7, 5, 3);
        src.Randomize(unsigned(f));
        EXPECT_EQ(Resize(src, 7, 5).Bytes(), src.Bytes()) << FXVideoFormatName(TFXVideoFormat(f));
    }
}

TEST(FXResize, ConstantImagesStayConstantAtEverySize)
{
    struct TCase {
        int SrcW, SrcH, DstW, DstH;
    };
    const TCase cases[] = {{10, 6, 5, 3}, {8, 8, 4, 4},  {1, 1, 7, 5},
                           {1, 1, 1, 3},  {7, 5, 13, 3}, {9, 9, 4, 7}};
    for (int f = 0; f < kFXVideoFormatCount; ++f)
        for (const TCase& c : cases) {
            const auto format = TFXVideoFormat(f);
            TTestImage src(format, c.SrcW, c.SrcH, 1), expected(format, c.DstW, c.DstH, 5);
            src.Fill(SomeColour(format));
            expected.Fill(SomeColour(format));
            EXPECT_EQ(Resize(src, c.DstW, c.DstH).Bytes(), expected.Bytes())
                << FXVideoFormatName(format) << " " << c.SrcW << "x" << c.SrcH << " -> " << c.DstW
                << "x" << c.DstH;
        }
}

TEST(FXResize, OnePixelSourceFillsTheDestination)
{
    TTestImage src(vfRGBA64, 1, 1);
    src.Fill({1, 2, 3, 4, 5, 6, 7, 8});
    TTestImage expected(vfRGBA64, 6, 4, 5);
    expected.Fill({1, 2, 3, 4, 5, 6, 7, 8});
    EXPECT_EQ(Resize(src, 6, 4).Bytes(), expected.Bytes());
}

TEST(FXResize, CentresAlignAndEdgesClamp)
{
    // 2 -> 4 samples at -0.25 (clamped), 0.25, 0.75 and 1.25 (clamped).
    TTestImage gray(vfGray8, 2, 1);
    *gray.Pixel(0, 1, 0) = 100, *gray.Pixel(0, 0, 0) = 0;
    EXPECT_EQ(Resize(gray, 4, 1).Bytes(), (B{0, 25, 75, 100}));
    // 16-bit samples keep 16-bit precision: 65535 * 0.25 = 16383.75 -> 16384.
    TTestImage deep(vfGray16, 2, 1);
    deep.Fill({0, 0, 0xFF, 0xFF});
    EXPECT_EQ(Resize(deep, 4, 1).Bytes(), (B{0, 0, 0x00, 0x40, 0xFF, 0xBF, 0xFF, 0xFF}));
    // RGB565 fields in their own units: red 0 -> 31 gives 8 and 23 in between.
    TTestImage words(vfRGB565, 2, 1);
    words.Fill({0, 0, 0x00, 0xF8});
    EXPECT_EQ(Resize(words, 4, 1).Bytes(), (B{0, 0, 0x00, 0x40, 0x00, 0xB8, 0x00, 0xF8}));
    // Vertically the same way; a 2x2 block shrinks to its rounded mean (301 / 4 -> 75).
    TTestImage block(vfGray8, 2, 2);
    *block.Pixel(0, 0, 0) = 0, *block.Pixel(0, 1, 0) = 100, *block.Pixel(0, 0, 1) = 100,
                       *block.Pixel(0, 1, 1) = 101;
    EXPECT_EQ(Resize(block, 1, 1).Bytes(), B{75});
}

TEST(FXResize, HalvingTakesTheRoundedMeanOfEachBlock)
{
    for (TFXVideoFormat f : {vfRGB24, vfRGB32, vfGray8, vfGray16, vfRGB48}) {
        TTestImage src(f, 10, 6, 2);
        src.Randomize(unsigned(f));
        const TTestImage half = Resize(src, 5, 3);
        const auto in = src.Bytes(), out = half.Bytes();
        const int sample = FXFormatInfo(f).BytesPerSample, row = 10 * FXFormatInfo(f).BytesPerPixel;
        auto at = [&](const B& b, size_t i) {
            return sample == 1 ? int(b[i]) : int(b[i] | b[i + 1] << 8);
        };
        for (int y = 0; y < 3; ++y)
            for (int i = 0; i < row / 2; i += sample) {
                const int x = i / FXFormatInfo(f).BytesPerPixel,
                          c = i % FXFormatInfo(f).BytesPerPixel;
                const size_t p = size_t(2 * y * row + 2 * x * FXFormatInfo(f).BytesPerPixel + c);
                const int sum = at(in, p) + at(in, p + size_t(FXFormatInfo(f).BytesPerPixel)) +
                                at(in, p + size_t(row)) +
                                at(in, p + size_t(row + FXFormatInfo(f).BytesPerPixel));
                ASSERT_EQ(at(out, size_t(y * row / 2 + i)), (sum + 2) / 4) << FXVideoFormatName(f);
            }
    }
}

// Each YUV layout resizes its planes on their own grids, so resizing commutes with the exact
// repacking between layouts of one subsampling.
TEST(FXResize, YuvLayoutsOfOneSubsamplingResizeAlike)
{
    const std::pair<TFXVideoFormat, TFXVideoFormat> pairs[] = {{vfYUY2, vfI422},
                                                               {vfUYVY, vfI422},
                                                               {vfNV12, vfI420},
                                                               {vfYV12, vfI420},
                                                               {vfYUVA444, vfI444}};
    for (const auto& [packed, planar] : pairs)
        for (int dstW : {3, 8, 11}) {
            TTestImage src(packed, 9, 5, 4);
            src.Randomize(unsigned(packed * dstW));
            TTestImage srcPlanar(planar, 9, 5), resized = Resize(src, dstW, 7),
                                                viaPlanar(planar, dstW, 7), direct(planar, dstW, 7);
            FXConvertPixels(packed, src.ConstPlanes(), planar, srcPlanar.Planes(), 9, 5);
            viaPlanar = Resize(srcPlanar, dstW, 7);
            FXConvertPixels(packed, resized.ConstPlanes(), planar, direct.Planes(), dstW, 7);
            EXPECT_EQ(direct.Bytes(), viaPlanar.Bytes())
                << FXVideoFormatName(packed) << " to width " << dstW;
        }
    // The 4:2:0 chroma of a 5x3 image is 3x2 and scales to the destination's own chroma size.
    TTestImage src(vfI420, 5, 3);
    src.Fill({10, 20, 30});
    *src.Pixel(1, 2, 1) = 220; // the bottom-right chroma sample
    TTestImage out = Resize(src, 9, 7);
    EXPECT_EQ(*out.Pixel(1, 4, 3), 220); // 5x4 chroma: the corner keeps the corner sample
    EXPECT_EQ(*out.Pixel(1, 0, 0), 20);
}

TEST(FXResize, BadArgumentsRaiseClearErrors)
{
    TTestImage src(vfRGB24, 4, 4), dst(vfRGB24, 2, 2);
    EXPECT_THROW(FXResizePixels(vfRGB24, src.ConstPlanes(), 4, 4, dst.Planes(), 0, 2), EFXError);
    EXPECT_THROW(FXResizePixels(vfRGB24, src.ConstPlanes(), -4, 4, dst.Planes(), 2, 2), EFXError);
    EXPECT_THROW(FXResizePixels(TFXVideoFormat(17), src.ConstPlanes(), 4, 4, dst.Planes(), 2, 2),
                 EFXError);
    // The destination's stride must hold the destination's rows, not the source's.
    EXPECT_THROW(FXResizePixels(vfRGB24, src.ConstPlanes(), 4, 4, dst.Planes(), 3, 2), EFXError);
    TFXPlanes none = dst.Planes();
    none.Data[0] = nullptr;
    EXPECT_THROW(FXResizePixels(vfRGB24, src.ConstPlanes(), 4, 4, none, 2, 2), EFXError);
}

} // namespace
} // namespace framix
