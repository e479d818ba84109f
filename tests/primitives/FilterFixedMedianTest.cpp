// SPDX-License-Identifier: MIT
// Cross and colour medians on hand-built neighbourhoods, called through the bound IPP-named
// variables; rows are repeated so the vector paths see the same cases as the reference.
#include "framework/primitives/dispatch/FXPrimitiveLayer.h"
#include "framework/primitives/dispatch/Fxdispatcher.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <vector>

namespace framix::test {
namespace {

class FilterFixedMedian : public testing::Test {
protected:
    void SetUp() override { FXStartPrimitiveLayer(); }
};

// A width x height ROI with a two-pixel frame, every sample set by value(x, y, c).
template <class T, int Ch> struct TFXTile {
    int Width, Height;
    std::vector<T> Samples;

    template <class F> TFXTile(int width, int height, F value) : Width(width), Height(height)
    {
        for (int y = -2; y < height + 2; ++y)
            for (int x = -2; x < width + 2; ++x)
                for (int c = 0; c < Ch; ++c)
                    Samples.push_back(T(value(x, y, c)));
    }
    int Step() const { return (Width + 4) * Ch * int(sizeof(T)); }
    T* Roi() { return Samples.data() + 2 * (Width + 4) * Ch + 2 * Ch; }
    const T* Roi() const { return Samples.data() + 2 * (Width + 4) * Ch + 2 * Ch; }
    T At(int x, int y, int c) const { return Roi()[y * (Width + 4) * Ch + x * Ch + c]; }
};

// The cross holds the centre and its row and column neighbours only: a square median would
// see the bright corners, the cross does not. Columns repeat every 6 pixels.
TEST_F(FilterFixedMedian, CrossMedianIgnoresTheCorners)
{
    // 3x3 around (x, 0): corners 200, cross 10, 20, 30, 40, 50 -> median 30 (square: 50)
    const auto cell = [](int x, int y, int) {
        const int dx = (x + 60) % 6 - 2, dy = y; // centre where dx == 0, dy == 0
        if (dx == 0 && dy == 0)
            return 30;
        if (dy == 0 && (dx == -1 || dx == 1))
            return dx < 0 ? 10 : 50;
        if (dx == 0 && (dy == -1 || dy == 1))
            return dy < 0 ? 20 : 40;
        return 200;
    };
    const TFXTile<Ipp8u, 1> src(96, 1, cell);
    TFXTile<Ipp8u, 1> dst(96, 1, [](int, int, int) { return 0; });
    ASSERT_EQ(ipp::ippiFilterMedianCross_8u_C1R(src.Roi(), src.Step(), dst.Roi(), dst.Step(),
                                                {96, 1}, ippMskSize3x3),
              ippStsNoErr);
    for (int x = 2; x < 96; x += 6)
        EXPECT_EQ(dst.At(x, 0, 0), 30) << x;
    // 5x5 adds the cross's second ring: 9 values, the bright corners still outside
    const TFXTile<Ipp16u, 1> wide(40, 1, [](int x, int y, int) {
        if (x % 5 == 0 || y != 0)
            return x == 20 && y != 0 && y >= -2 && y <= 2 ? 1000 * (y + 3) : 60000;
        return 100 * x;
    });
    TFXTile<Ipp16u, 1> out(40, 1, [](int, int, int) { return 0; });
    ASSERT_EQ(ipp::ippiFilterMedianCross_16u_C1R(wide.Roi(), wide.Step(), out.Roi(), out.Step(),
                                                 {40, 1}, ippMskSize5x5),
              ippStsNoErr);
    // at x = 20 (a 60000 column): row 1800, 1900, 2100, 2200, column 1000, 2000, 4000, 5000
    // and the centre 60000 -> sorted middle 2100
    EXPECT_EQ(out.At(20, 0, 0), 2100);
}

// AC4: every destination alpha byte stays, colour channels are filtered independently.
TEST_F(FilterFixedMedian, CrossMedianAc4KeepsAlpha)
{
    for (int width : {3, 40}) {
        const TFXTile<Ipp8u, 4> src(
            width, 2, [](int x, int y, int c) { return (x * 31 + y * 17 + c * 71) % 256; });
        TFXTile<Ipp8u, 4> dst(width, 2, [](int x, int, int c) { return c == 3 ? 255 - x : 0; });
        ASSERT_EQ(ipp::ippiFilterMedianCross_8u_AC4R(src.Roi(), src.Step(), dst.Roi(), dst.Step(),
                                                     {width, 2}, ippMskSize3x3),
                  ippStsNoErr);
        for (int y = 0; y < 2; ++y)
            for (int x = 0; x < width; ++x) {
                ASSERT_EQ(dst.At(x, y, 3), 255 - x) << "alpha at " << x << "," << y;
                for (int c = 0; c < 3; ++c) {
                    std::array<int, 5> v = {src.At(x, y, c), src.At(x - 1, y, c),
                                            src.At(x + 1, y, c), src.At(x, y - 1, c),
                                            src.At(x, y + 1, c)};
                    std::sort(v.begin(), v.end());
                    ASSERT_EQ(dst.At(x, y, c), v[2]) << x << "," << y << " channel " << c;
                }
            }
    }
}

// The colour median is the vector median: the pixel with the least total L1 distance to the
// whole mask, copied with all three channels. Here the centre (100,100,100) has three close
// neighbours (95,...) but five black ones: black totals 3 * 285 + 300, less than the others.
TEST_F(FilterFixedMedian, ColourMedianTakesTheWholeVectorMedian)
{
    // 3x3 masks tiled every 3 columns (centres at x = 1 mod 3); in row order, positions 0, 2,
    // 6, 7, 8 black, 1, 3, 5 grey (95, 95, 95), 4 the centre.
    const auto tile = [](int x, int y, int) {
        const int k = (y + 1) * 3 + (x + 30) % 3;
        if (k == 4)
            return 100;
        return k % 2 == 0 || k == 7 ? 0 : 95;
    };
    const TFXTile<Ipp8u, 3> src(60, 1, tile);
    TFXTile<Ipp8u, 3> dst(60, 1, [](int, int, int) { return 77; });
    ASSERT_EQ(ipp::ippiFilterMedianColor_8u_C3R(src.Roi(), src.Step(), dst.Roi(), dst.Step(),
                                                {60, 1}, ippMskSize3x3),
              ippStsNoErr);
    for (int x = 1; x < 60; x += 3)
        for (int c = 0; c < 3; ++c)
            EXPECT_EQ(dst.At(x, 0, c), 0) << "black wins at " << x << " (the centre's nearest "
                                          << "neighbour would be grey)";
}

// Equal totals: the first pixel in row order wins. Three colours, each three times, all at
// distance 20 from each other: every pixel totals 120.
TEST_F(FilterFixedMedian, ColourMedianTiesGoToTheFirstInRowOrder)
{
    const std::array<std::array<int, 3>, 3> colours = {{{10, 0, 0}, {0, 10, 0}, {0, 0, 10}}};
    for (int first = 0; first < 3; ++first) {
        // the mask around (1 mod 3, 0): rows -1, 0, 1 each hold the colours first, first+1, ...
        // (y + 4, not y + 1: the same colour, and no negative index on the frame's row -2)
        const auto tile = [&](int x, int y, int c) {
            const int k = ((x + 30) % 3 + y + 4 + first) % 3;
            return colours[k][c];
        };
        const TFXTile<Ipp8u, 4> src(
            48, 1, [&](int x, int y, int c) { return c == 3 ? 9 : tile(x, y, c); });
        TFXTile<Ipp8u, 4> dst(48, 1, [](int, int, int c) { return c == 3 ? 123 : 0; });
        ASSERT_EQ(ipp::ippiFilterMedianColor_8u_AC4R(src.Roi(), src.Step(), dst.Roi(), dst.Step(),
                                                     {48, 1}, ippMskSize3x3),
                  ippStsNoErr);
        for (int x = 1; x < 48; x += 3) {
            // the mask's top-left pixel is (x - 1, -1)
            for (int c = 0; c < 3; ++c)
                EXPECT_EQ(dst.At(x, 0, c), tile(x - 1, -1, c)) << "first " << first << " x " << x;
            EXPECT_EQ(dst.At(x, 0, 3), 123) << "alpha stays";
        }
    }
}

// 5x5: the 25-pixel vector median; the alpha byte takes no part in the distances. On a
// checkerboard of (0,0,0) and (10,0,0) the colour of the centre's square holds 13 of the 25
// pixels and wins. Black pixels carry alphas of 0 and 255, red ones 128: counted, alpha would
// hand the black squares' masks to red.
TEST_F(FilterFixedMedian, ColourMedian5x5IgnoresAlpha)
{
    const auto black = [](int x, int y) { return (x + y + 40) % 2 == 0; };
    const TFXTile<Ipp8u, 4> src(40, 3, [&](int x, int y, int c) {
        if (c == 3)
            return black(x, y) ? ((x + 40) % 4 < 2 ? 0 : 255) : 128;
        return c == 0 && !black(x, y) ? 10 : 0;
    });
    TFXTile<Ipp8u, 4> dst(40, 3, [](int, int, int) { return 1; });
    ASSERT_EQ(ipp::ippiFilterMedianColor_8u_AC4R(src.Roi(), src.Step(), dst.Roi(), dst.Step(),
                                                 {40, 3}, ippMskSize5x5),
              ippStsNoErr);
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 40; ++x) {
            ASSERT_EQ(dst.At(x, y, 0), black(x, y) ? 0 : 10) << x << "," << y;
            ASSERT_EQ(dst.At(x, y, 1) + dst.At(x, y, 2), 0) << x << "," << y;
            ASSERT_EQ(dst.At(x, y, 3), 1) << "alpha at " << x << "," << y;
        }
}

} // namespace
} // namespace framix::test
