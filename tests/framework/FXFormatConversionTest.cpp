// SPDX-License-Identifier: MIT
// Pixel conversion: exact pairs, error bounds, hand-computed values, vector paths, bad arguments.
#include "framework/FXFormatConversion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "framework/FXError.h"
#include "framework/detail/FXConvertKernels.h"
#include "tests/support/FXTestImage.h"

namespace framix {
namespace {

using test::TTestImage;

TTestImage Convert(TTestImage& src, TFXVideoFormat to, int pad = 0)
{
    TTestImage dst(to, src.Width(), src.Height(), pad);
    FXConvertPixels(src.Format(), src.ConstPlanes(), to, dst.Planes(), src.Width(), src.Height());
    EXPECT_TRUE(dst.PaddingIntact())
        << FXVideoFormatName(src.Format()) << " -> " << FXVideoFormatName(to);
    return dst;
}

std::string PairName(TFXVideoFormat a, TFXVideoFormat b)
{
    return std::string(FXVideoFormatName(a)) + "->" + std::string(FXVideoFormatName(b));
}

struct TSize {
    int W, H;
};
const TSize kSizes[] = {{1, 1}, {2, 1}, {1, 2}, {3, 3}, {5, 4}, {17, 3}, {34, 5}};

// Largest per-byte difference between two images of one packed 8-bit format.
int MaxDifference(const TTestImage& a, const TTestImage& b)
{
    const auto x = a.Bytes(), y = b.Bytes();
    int worst = 0;
    for (size_t i = 0; i < x.size(); ++i)
        worst = std::max(worst, std::abs(int(x[i]) - int(y[i])));
    return worst;
}

TEST(FXFormatConversion, EveryPairConvertsEverySizeAndLeavesPaddingAlone)
{
    for (int s = 0; s < kFXVideoFormatCount; ++s)
        for (int d = 0; d < kFXVideoFormatCount; ++d)
            for (const TSize& size : kSizes) {
                TTestImage src(TFXVideoFormat(s), size.W, size.H, 7);
                src.Randomize(unsigned(s * 16 + d));
                const TTestImage before = src;
                Convert(src, TFXVideoFormat(d), 9);
                ASSERT_EQ(src.Bytes(), before.Bytes()) << "source changed";
                ASSERT_TRUE(src.PaddingIntact());
            }
}

TEST(FXFormatConversion, LosslessPairsRoundTripExactly)
{
    const std::vector<std::pair<TFXVideoFormat, std::vector<TFXVideoFormat>>> lossless = {
        {vfRGB24, {vfRGB32, vfRGB48, vfRGBA64}},
        {vfRGB32, {vfRGBA64}},
        {vfRGB555, {vfRGB24, vfRGB32, vfRGB565, vfRGB48, vfRGBA64}},
        {vfRGB565, {vfRGB24, vfRGB32, vfRGB48, vfRGBA64}},
        {vfGray8, {vfRGB24, vfRGB32, vfGray16, vfRGB48, vfRGBA64}},
        {vfGray16, {vfRGB48, vfRGBA64}},
        {vfRGB48, {vfRGBA64}},
        {vfI420, {vfYV12, vfNV12, vfI422, vfI444, vfYUVA444, vfYUY2, vfUYVY}},
        {vfYV12, {vfI420, vfNV12, vfI444}},
        {vfNV12, {vfI420, vfYV12, vfYUY2, vfYUVA444}},
        {vfYUY2, {vfUYVY, vfI422, vfI444, vfYUVA444}},
        {vfUYVY, {vfYUY2, vfI422, vfI444}},
        {vfI422, {vfYUY2, vfUYVY, vfI444, vfYUVA444}},
        {vfI444, {vfYUVA444}},
    };
    for (const auto& [a, targets] : lossless)
        for (TFXVideoFormat b : targets)
            for (const TSize& size : kSizes) {
                TTestImage src(a, size.W, size.H, 3);
                src.Randomize(unsigned(a * 31 + b + size.W));
                TTestImage mid = Convert(src, b, 5);
                TTestImage back = Convert(mid, a, 1);
                ASSERT_EQ(back.Bytes(), src.Bytes())
                    << PairName(a, b) << " at " << size.W << "x" << size.H;
            }
}

// Fused conversions give exactly what the documented intermediate formats give.
TEST(FXFormatConversion, PairsEqualTheirDocumentedRoute)
{
    const std::vector<std::vector<TFXVideoFormat>> routes = {
        {vfGray8, vfRGB24, vfI420},     {vfGray8, vfRGB24, vfYUY2},
        {vfI420, vfRGB24, vfGray8},     {vfNV12, vfRGB24, vfGray8},
        {vfYUVA444, vfRGB32, vfRGBA64}, {vfRGBA64, vfRGB32, vfYUVA444},
        {vfRGB48, vfRGB24, vfI444},     {vfGray16, vfGray8, vfI420},
        {vfI420, vfRGB24, vfRGB48},     {vfI422, vfRGB24, vfRGB565},
        {vfRGB555, vfRGB24, vfI420},    {vfRGB555, vfRGB24, vfGray8},
        {vfRGB555, vfRGB24, vfRGB565},  {vfRGB565, vfRGB24, vfRGB555},
        {vfRGB48, vfGray16, vfGray8},   {vfRGBA64, vfGray16, vfGray8},
        {vfRGB24, vfRGB48, vfGray16},   {vfRGB32, vfRGBA64, vfGray16},
        {vfGray16, vfGray8, vfRGB24},   {vfRGB48, vfRGB24, vfRGB555},
        {vfRGBA64, vfRGB32, vfRGB24},   {vfRGBA64, vfRGB32, vfRGB565},
        {vfI444, vfRGB24, vfGray16},    {vfYUY2, vfRGB24, vfRGB48},
    };
    for (const auto& route : routes)
        for (const TSize& size : kSizes) {
            TTestImage src(route.front(), size.W, size.H);
            src.Randomize(unsigned(route[0] + route[1] * 16 + size.H));
            TTestImage direct = Convert(src, route.back());
            TTestImage stepwise = src;
            for (size_t i = 1; i < route.size(); ++i)
                stepwise = Convert(stepwise, route[i]);
            ASSERT_EQ(direct.Bytes(), stepwise.Bytes())
                << PairName(route.front(), route.back()) << " via " << FXVideoFormatName(route[1]);
        }
}

TEST(FXFormatConversion, LossyPairsStayWithinTheirDocumentedBounds)
{
    struct TBound {
        TFXVideoFormat From, Via;
        int MaxError;
    };
    // 4:4:4 YUV, the 5/6-bit packings and the 16-bit narrowing, on random colours.
    const TBound bounds[] = {{vfRGB24, vfI444, 2},   {vfRGB32, vfYUVA444, 2},
                             {vfRGB24, vfRGB555, 4}, {vfRGB24, vfRGB565, 4},
                             {vfGray8, vfI420, 1},   {vfGray8, vfYUY2, 1}};
    for (const TBound& b : bounds) {
        TTestImage src(b.From, 61, 17);
        src.Randomize(7);
        TTestImage mid = Convert(src, b.Via);
        EXPECT_LE(MaxDifference(Convert(mid, b.From), src), b.MaxError) << PairName(b.From, b.Via);
    }
    // Subsampled chroma loses nothing more when the colour is constant over each chroma block
    // (including the half blocks at odd edges).
    for (TFXVideoFormat via : {vfI420, vfYV12, vfNV12, vfYUY2, vfUYVY, vfI422}) {
        TTestImage src(vfRGB24, 9, 7);
        std::mt19937 rng(via);
        for (int y = 0; y < 7; y += 2)
            for (int x = 0; x < 9; x += 2) {
                const std::uint8_t c[3] = {std::uint8_t(rng()), std::uint8_t(rng()),
                                           std::uint8_t(rng())};
                for (int yy = y; yy < std::min(7, y + 2); ++yy)
                    for (int xx = x; xx < std::min(9, x + 2); ++xx)
                        std::copy(c, c + 3, src.Pixel(0, 3 * xx, yy));
            }
        TTestImage mid = Convert(src, via);
        EXPECT_LE(MaxDifference(Convert(mid, vfRGB24), src), 2) << FXVideoFormatName(via);
    }
    // 16 -> 8 bits rounds to nearest: never more than half a step of 257 away.
    TTestImage deep(vfRGBA64, 33, 9);
    deep.Randomize(3);
    const auto original = deep.Bytes();
    TTestImage narrowed = Convert(deep, vfRGB32);
    const auto back = Convert(narrowed, vfRGBA64).Bytes();
    for (size_t i = 0; i < original.size(); i += 2) {
        const int a = original[i] | original[i + 1] << 8, r = back[i] | back[i + 1] << 8;
        ASSERT_LE(std::abs(a - r), 128);
    }
}

// Expected bytes worked out by hand from the formulas in docs/formats.md.
TEST(FXFormatConversion, KnownColoursGiveHandComputedValues)
{
    auto one = [](TFXVideoFormat from, std::initializer_list<std::uint8_t> pixel,
                  TFXVideoFormat to) {
        TTestImage src(from, 1, 1);
        src.Fill(pixel);
        TTestImage dst(to, 1, 1);
        FXConvertPixels(from, src.ConstPlanes(), to, dst.Planes(), 1, 1);
        return dst.Bytes();
    };
    using B = std::vector<std::uint8_t>;
    // BT.601 luma: red 76, green 150, blue 29; grey stays grey.
    EXPECT_EQ(one(vfRGB24, {0, 0, 255}, vfGray8), B{76});
    EXPECT_EQ(one(vfRGB32, {0, 255, 0, 9}, vfGray8), B{150});
    EXPECT_EQ(one(vfRGB24, {255, 0, 0}, vfGray8), B{29});
    EXPECT_EQ(one(vfRGB24, {77, 77, 77}, vfGray8), B{77});
    // Limited-range YUV: red (81, 90, 240), white (235, 128, 128), black (16, 128, 128).
    EXPECT_EQ(one(vfRGB24, {0, 0, 255}, vfI444), (B{81, 90, 240}));
    EXPECT_EQ(one(vfRGB24, {255, 255, 255}, vfI420), (B{235, 128, 128}));
    EXPECT_EQ(one(vfRGB24, {0, 0, 0}, vfYV12), (B{16, 128, 128}));
    EXPECT_EQ(one(vfI444, {81, 90, 240}, vfRGB24), (B{0, 0, 254}));
    EXPECT_EQ(one(vfI444, {235, 128, 128}, vfRGB32), (B{255, 255, 255, 255}));
    EXPECT_EQ(one(vfI444, {16, 128, 128}, vfGray8), B{0});
    // Out-of-range codes clamp.
    EXPECT_EQ(one(vfI444, {255, 255, 255}, vfRGB24), (B{255, 125, 255}));
    // Depth: 8 -> 16 by * 257, 16 -> 8 rounded; 0x1234 = 4660 -> 18.
    EXPECT_EQ(one(vfGray8, {200}, vfGray16), (B{0xC8, 0xC8}));
    EXPECT_EQ(one(vfGray16, {0x34, 0x12}, vfGray8), B{18});
    EXPECT_EQ(one(vfRGB24, {1, 2, 3}, vfRGBA64), (B{1, 1, 2, 2, 3, 3, 255, 255}));
    // 5/6-bit fields: replicated up, rounded down; RGB555's top bit is written 0.
    EXPECT_EQ(one(vfRGB555, {0x00, 0x7C}, vfRGB24), (B{0, 0, 255}));
    EXPECT_EQ(one(vfRGB555, {0x10, 0x80}, vfRGB24), (B{132, 0, 0}));
    EXPECT_EQ(one(vfRGB24, {128, 0, 0}, vfRGB555), (B{0x10, 0x00}));
    EXPECT_EQ(one(vfRGB24, {0, 128, 255}, vfRGB565), (B{0x00, 0xFC}));
    // Alpha: added opaque, kept where both sides have it.
    EXPECT_EQ(one(vfRGB24, {1, 2, 3}, vfRGB32), (B{1, 2, 3, 255}));
    EXPECT_EQ(one(vfRGB32, {255, 255, 255, 77}, vfYUVA444), (B{235, 128, 128, 77}));
    EXPECT_EQ(one(vfYUVA444, {235, 128, 128, 9}, vfRGBA64),
              (B{255, 255, 255, 255, 255, 255, 9, 9}));
}

TEST(FXFormatConversion, ChromaIsTheMeanOfTheCoveredPixels)
{
    // 3 x 2 RGB24: columns 0-1 red and blue stacked, column 2 red. Chroma sample 0 averages two
    // red and two blue pixels; sample 1 covers only column 2 (the odd edge).
    TTestImage src(vfRGB24, 3, 2);
    const std::uint8_t red[3] = {0, 0, 255}, blue[3] = {255, 0, 0};
    std::copy(red, red + 3, src.Pixel(0, 0, 0));
    std::copy(blue, blue + 3, src.Pixel(0, 3, 0));
    std::copy(blue, blue + 3, src.Pixel(0, 0, 1));
    std::copy(red, red + 3, src.Pixel(0, 3, 1));
    std::copy(red, red + 3, src.Pixel(0, 6, 0));
    std::copy(red, red + 3, src.Pixel(0, 6, 1));
    TTestImage yuv = Convert(src, vfI420);
    EXPECT_EQ(*yuv.Pixel(1, 0, 0), 165);
    EXPECT_EQ(*yuv.Pixel(2, 0, 0), 175);
    EXPECT_EQ(*yuv.Pixel(1, 1, 0), 90);
    EXPECT_EQ(*yuv.Pixel(2, 1, 0), 240);
    // YUV -> YUV averages the same way: 4:4:4 chroma 10, 20 / 30, 41 -> 4:2:0 (101 / 4) -> 25.
    TTestImage fine(vfI444, 2, 2);
    fine.Fill({0});
    *fine.Pixel(1, 0, 0) = 10, *fine.Pixel(1, 1, 0) = 20, *fine.Pixel(1, 0, 1) = 30,
                      *fine.Pixel(1, 1, 1) = 41;
    EXPECT_EQ(*Convert(fine, vfI420).Pixel(1, 0, 0), 25);
    // Upsampling replicates: the 4:2:0 sample lands on all four pixels.
    TTestImage coarse(vfI420, 2, 2);
    coarse.Fill({0});
    *coarse.Pixel(2, 0, 0) = 200;
    TTestImage up = Convert(coarse, vfI444);
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 2; ++x)
            EXPECT_EQ(*up.Pixel(2, x, y), 200);
}

TEST(FXFormatConversion, OddWidthPacked422RepeatsTheLastLuma)
{
    TTestImage src(vfGray8, 3, 1);
    src.Fill({0});
    *src.Pixel(0, 2, 0) = 255;
    EXPECT_EQ(Convert(src, vfYUY2).Bytes(),
              (std::vector<std::uint8_t>{16, 128, 16, 128, 235, 128, 235, 128}));
    EXPECT_EQ(Convert(src, vfUYVY).Bytes(),
              (std::vector<std::uint8_t>{128, 16, 128, 16, 128, 235, 128, 235}));
}

// Every vector level of every fast pair equals the reference byte for byte, over widths around
// each vector size, odd heights and padded strides.
TEST(FXFormatConversion, VectorPathsEqualTheReference)
{
    using namespace conv;
    int checked = 0;
    for (int level = 1; level < kConvertLevelCount; ++level) {
        if (!FXConvertLevelSupported(TFXConvertLevel(level))) {
            std::printf("[  SKIPPED ] %s is not supported on this CPU\n",
                        FXConvertLevelName(TFXConvertLevel(level)));
            continue;
        }
        for (const TFXFastPairInfo& pair : kFastPairs) {
            const TFXConvertKernel kernel =
                FXFastKernel(pair.Src, pair.Dst, TFXConvertLevel(level));
            ASSERT_NE(kernel, nullptr);
            for (int width : {1, 2, 3, 15, 16, 17, 31, 33, 47, 63, 64, 65, 66, 97, 130, 193, 259})
                for (int height : {1, 2, 3, 5})
                    for (int pad : {0, 11}) {
                        TTestImage src(pair.Src, width, height, pad);
                        src.Randomize(unsigned(width * 7 + height + pad));
                        TTestImage expected(pair.Dst, width, height, pad + 3), actual = expected;
                        ConvertReference(pair.Src, src.ConstPlanes(), pair.Dst, expected.Planes(),
                                         width, height);
                        kernel(src.ConstPlanes(), actual.Planes(), width, height);
                        ASSERT_EQ(actual.Bytes(), expected.Bytes())
                            << PairName(pair.Src, pair.Dst) << " "
                            << FXConvertLevelName(TFXConvertLevel(level)) << " at " << width << "x"
                            << height << " pad " << pad;
                        ASSERT_TRUE(actual.PaddingIntact());
                        ++checked;
                    }
        }
    }
    if (checked == 0)
        GTEST_SKIP() << "no vector level runs on this CPU";
}

TEST(FXFormatConversion, BadArgumentsRaiseClearErrors)
{
    TTestImage rgb(vfRGB24, 4, 4), yuv(vfI420, 4, 4);
    auto convert = [&](TFXVideoFormat sf, TFXConstPlanes s, TFXVideoFormat df, TFXPlanes d, int w,
                       int h) { FXConvertPixels(sf, s, df, d, w, h); };
    EXPECT_THROW(convert(vfRGB24, rgb.ConstPlanes(), vfI420, yuv.Planes(), 0, 4), EFXError);
    EXPECT_THROW(convert(vfRGB24, rgb.ConstPlanes(), vfI420, yuv.Planes(), 4, -1), EFXError);
    EXPECT_THROW(convert(TFXVideoFormat(16), rgb.ConstPlanes(), vfI420, yuv.Planes(), 4, 4),
                 EFXError);
    EXPECT_THROW(convert(vfRGB24, rgb.ConstPlanes(), TFXVideoFormat(200), yuv.Planes(), 4, 4),
                 EFXError);
    TFXPlanes noChroma = yuv.Planes();
    noChroma.Data[2] = nullptr;
    EXPECT_THROW(convert(vfRGB24, rgb.ConstPlanes(), vfI420, noChroma, 4, 4), EFXError);
    TFXConstPlanes shortRows = rgb.ConstPlanes();
    shortRows.Stride[0] = 11;
    try {
        convert(vfRGB24, shortRows, vfI420, yuv.Planes(), 4, 4);
        ADD_FAILURE() << "a stride below the row was accepted";
    } catch (const EFXError& e) {
        EXPECT_NE(std::string(e.what()).find("stride 11"), std::string::npos) << e.what();
    }
    // A bad destination is reported before anything is written.
    TFXPlanes tight = yuv.Planes();
    tight.Stride[1] = 1;
    EXPECT_THROW(convert(vfRGB24, rgb.ConstPlanes(), vfI420, tight, 4, 4), EFXError);
}

} // namespace
} // namespace framix
