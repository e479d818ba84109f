// SPDX-License-Identifier: MIT
// The general integer kernel and the fixed kernels against hand-computed values and the
// published explicit formulas, called through the bound IPP-named variables. Images are wide
// enough for the vector paths, and every sample of the ROI is checked.
#include "framework/primitives/dispatch/FXPrimitiveLayer.h"
#include "framework/primitives/dispatch/Fxdispatcher.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <vector>

namespace framix::test {
namespace {

class FilterKernel : public testing::Test {
protected:
    void SetUp() override { FXStartPrimitiveLayer(); }
};

// An image of Channels interleaved samples with a Margin-pixel frame around a Width x Height
// ROI; Value(x, y, c) fills every sample, frame included (x, y relative to the ROI).
template <class T> struct TFXImage {
    int Width, Height, Channels, Margin;
    std::vector<T> Samples;

    TFXImage(int width, int height, int channels, int margin,
             const std::function<int(int, int, int)>& value)
        : Width(width), Height(height), Channels(channels), Margin(margin)
    {
        for (int y = -margin; y < height + margin; ++y)
            for (int x = -margin; x < width + margin; ++x)
                for (int c = 0; c < channels; ++c)
                    Samples.push_back(T(value(x, y, c)));
    }
    int Stride() const { return (Width + 2 * Margin) * Channels; } // samples
    int Step() const { return Stride() * int(sizeof(T)); }
    const T* Roi() const { return Samples.data() + Margin * Stride() + Margin * Channels; }
    T* Roi() { return Samples.data() + Margin * Stride() + Margin * Channels; }
    int At(int x, int y, int c) const { return Roi()[y * Stride() + x * Channels + c]; }
};

// Expects every ROI sample of out (channels 0 .. checked - 1) to equal expected(x, y, c).
template <class T>
void ExpectImage(const TFXImage<T>& out, int checked,
                 const std::function<int(int, int, int)>& expected, const char* what)
{
    for (int y = 0; y < out.Height; ++y)
        for (int x = 0; x < out.Width; ++x)
            for (int c = 0; c < checked; ++c)
                ASSERT_EQ(out.At(x, y, c), expected(x, y, c))
                    << what << " at (" << x << "," << y << ") channel " << c;
}

int Saturate8(long v)
{
    return int(std::clamp<long>(v, 0, 255));
}

// Nearest integer to sum / d (d > 0), halves to even, saturated to 8 bits.
int RoundHalfEven8(long sum, long d)
{
    if (sum <= 0)
        return 0;
    long q = sum / d;
    const long twiceRest = 2 * (sum - q * d);
    q += twiceRest > d || (twiceRest == d && q % 2 != 0);
    return Saturate8(q);
}

// A pseudo-random pattern around 128, so differences land on both sides of zero.
int Pattern(int x, int y, int c)
{
    return 128 + ((x * 37 + y * 101 + c * 53) % 61) - 30;
}

// pKernel[i * kw + j] weighs the pixel (x + anchor.x - j, y + anchor.y - i): a single weight
// picks one pixel, to the right and below when the anchor lies past the weight.
TEST_F(FilterKernel, SingleWeightPicksThePixelAnchorMinusIndexAway)
{
    const TFXImage<Ipp8u> src(100, 4, 1, 2,
                              [](int x, int y, int) { return (x * 7 + y * 50) & 255; });
    TFXImage<Ipp8u> dst(100, 4, 1, 0, [](int, int, int) { return 0; });
    Ipp32s kernel[6] = {1, 0, 0, 0, 0, 0}; // 3 wide, 2 high: weight at (i, j) = (0, 0)
    ASSERT_EQ(ipp::ippiFilter_8u_C1R(src.Roi(), src.Step(), dst.Roi(), dst.Step(), {100, 4}, kernel,
                                     {3, 2}, {2, 1}, 1),
              ippStsNoErr);
    ExpectImage(
        dst, 1, [&](int x, int y, int) { return src.At(x + 2, y + 1, 0); }, "(0,0), anchor (2,1)");
    std::swap(kernel[0], kernel[5]); // weight at (1, 2)
    ASSERT_EQ(ipp::ippiFilter_8u_C1R(src.Roi(), src.Step(), dst.Roi(), dst.Step(), {100, 4}, kernel,
                                     {3, 2}, {0, 0}, 1),
              ippStsNoErr);
    ExpectImage(
        dst, 1, [&](int x, int y, int) { return src.At(x - 2, y - 1, 0); }, "(1,2), anchor (0,0)");
}

// sum / divisor is rounded to nearest with halves to even, for every kind of divisor: powers
// of two, small odd and even ones, and large ones; a negative divisor divides the negated sum.
TEST_F(FilterKernel, DivisionRoundsHalvesToEven)
{
    const TFXImage<Ipp8u> ramp(150, 2, 1, 1,
                               [](int x, int y, int) { return std::max(0, x + 3 * y); });
    TFXImage<Ipp8u> dst(150, 2, 1, 0, [](int, int, int) { return 0; });
    const struct {
        Ipp32s K0, K1;
        int Divisor;
    } cases[] = {{1, 1, 2},     {3, 3, 6},    {1, 1, 3},      {5, 5, 10},   {1, 2, 7},
                 {50, 50, 200}, {-1, -1, -2}, {30, 40, 1000}, {1, 1, 40000}};
    for (const auto& k : cases) {
        const Ipp32s kernel[2] = {k.K0, k.K1}; // K0 weighs x + 1, K1 weighs x
        ASSERT_EQ(ipp::ippiFilter_8u_C1R(ramp.Roi(), ramp.Step(), dst.Roi(), dst.Step(), {150, 2},
                                         kernel, {2, 1}, {1, 0}, k.Divisor),
                  ippStsNoErr);
        const int sign = k.Divisor < 0 ? -1 : 1;
        ExpectImage(
            dst, 1,
            [&](int x, int y, int) {
                const long sum = long(k.K0) * ramp.At(x + 1, y, 0) + long(k.K1) * ramp.At(x, y, 0);
                return RoundHalfEven8(sign * sum, sign * k.Divisor);
            },
            "kernel {K0, K1} / divisor");
    }
}

// 8-bit results saturate: negative sums give 0 (no absolute value), large ones 255; 16-bit
// samples are not clipped at 255 and saturate at 65535.
TEST_F(FilterKernel, ResultsSaturateAtTheSampleRange)
{
    const TFXImage<Ipp8u> src(80, 1, 1, 1, [](int x, int, int) { return x % 2 ? 200 : 10; });
    TFXImage<Ipp8u> dst(80, 1, 1, 0, [](int, int, int) { return 7; });
    const Ipp32s difference[2] = {1, -1}; // S(x + 1) - S(x)
    ASSERT_EQ(ipp::ippiFilter_8u_C1R(src.Roi(), src.Step(), dst.Roi(), dst.Step(), {80, 1},
                                     difference, {2, 1}, {1, 0}, 1),
              ippStsNoErr);
    ExpectImage(
        dst, 1, [](int x, int, int) { return x % 2 ? 0 : 190; }, "difference");
    const Ipp32s twice[1] = {2};
    ASSERT_EQ(ipp::ippiFilter_8u_C1R(src.Roi(), src.Step(), dst.Roi(), dst.Step(), {80, 1}, twice,
                                     {1, 1}, {0, 0}, 1),
              ippStsNoErr);
    ExpectImage(
        dst, 1, [](int x, int, int) { return x % 2 ? 255 : 20; }, "twice");

    const TFXImage<Ipp16u> wide(40, 1, 1, 1,
                                [](int x, int, int) { return x % 2 ? 65535 : 1000 + x; });
    TFXImage<Ipp16u> out(40, 1, 1, 0, [](int, int, int) { return 0; });
    const Ipp32s mean[2] = {1, 1};
    ASSERT_EQ(ipp::ippiFilter_16u_C1R(wide.Roi(), wide.Step(), out.Roi(), out.Step(), {40, 1}, mean,
                                      {2, 1}, {1, 0}, 2),
              ippStsNoErr);
    // (1000 + x + 65535) / 2 is an exact half: the even neighbour
    ExpectImage(
        out, 1,
        [](int x, int, int) {
            const int sum = 65535 + 1000 + (x % 2 ? x + 1 : x);
            return sum / 2 + ((sum / 2) % 2 != 0);
        },
        "16-bit mean");
    const Ipp32s triple[1] = {3};
    ASSERT_EQ(ipp::ippiFilter_16u_C1R(wide.Roi(), wide.Step(), out.Roi(), out.Step(), {40, 1},
                                      triple, {1, 1}, {0, 0}, 1),
              ippStsNoErr);
    ExpectImage(
        out, 1, [](int x, int, int) { return x % 2 ? 65535 : 3000 + 3 * x; }, "16-bit triple");
}

// Each fixed filter is its published matrix rotated by 180 degrees, written out here as the
// explicit differences: Sobel and Prewitt horizontal = row below minus row above, vertical =
// left column minus right column, Roberts down = centre minus upper-left, up = centre minus
// upper-right. Negative results saturate to 0.
TEST_F(FilterKernel, FixedKernelsFollowTheirExplicitFormulas)
{
    const TFXImage<Ipp8u> src(70, 5, 1, 2, Pattern);
    const auto s = [&](int x, int y) { return long(src.At(x, y, 0)); };
    const auto around = [&](int x, int y, int r) {
        long sum = 0;
        for (int dy = -r; dy <= r; ++dy)
            for (int dx = -r; dx <= r; ++dx)
                sum += s(x + dx, y + dy);
        return sum;
    };
    using TFixed = IppStatus (*)(const Ipp8u*, int, Ipp8u*, int, IppiSize);
    const struct {
        const char* Name;
        TFixed Fn;
        std::function<long(int, int)> Explicit;
    } filters[] = {
        {"PrewittHoriz", ipp::ippiFilterPrewittHoriz_8u_C1R,
         [&](int x, int y) {
             return around(x, y + 1, 0) + s(x - 1, y + 1) + s(x + 1, y + 1) - s(x - 1, y - 1) -
                    s(x, y - 1) - s(x + 1, y - 1);
         }},
        {"PrewittVert", ipp::ippiFilterPrewittVert_8u_C1R,
         [&](int x, int y) {
             return s(x - 1, y - 1) + s(x - 1, y) + s(x - 1, y + 1) - s(x + 1, y - 1) -
                    s(x + 1, y) - s(x + 1, y + 1);
         }},
        {"SobelHoriz", ipp::ippiFilterSobelHoriz_8u_C1R,
         [&](int x, int y) {
             return s(x - 1, y + 1) + 2 * s(x, y + 1) + s(x + 1, y + 1) - s(x - 1, y - 1) -
                    2 * s(x, y - 1) - s(x + 1, y - 1);
         }},
        {"SobelVert", ipp::ippiFilterSobelVert_8u_C1R,
         [&](int x, int y) {
             return s(x - 1, y - 1) + 2 * s(x - 1, y) + s(x - 1, y + 1) - s(x + 1, y - 1) -
                    2 * s(x + 1, y) - s(x + 1, y + 1);
         }},
        {"RobertsDown", ipp::ippiFilterRobertsDown_8u_C1R,
         [&](int x, int y) { return s(x, y) - s(x - 1, y - 1); }},
        {"RobertsUp", ipp::ippiFilterRobertsUp_8u_C1R,
         [&](int x, int y) { return s(x, y) - s(x + 1, y - 1); }},
        {"Sharpen", ipp::ippiFilterSharpen_8u_C1R,
         [&](int x, int y) { return RoundHalfEven8(17 * s(x, y) - around(x, y, 1), 8); }},
    };
    TFXImage<Ipp8u> dst(70, 5, 1, 0, [](int, int, int) { return 0; });
    for (const auto& f : filters) {
        ASSERT_EQ(f.Fn(src.Roi(), src.Step(), dst.Roi(), dst.Step(), {70, 5}), ippStsNoErr);
        ExpectImage(
            dst, 1, [&](int x, int y, int) { return Saturate8(f.Explicit(x, y)); }, f.Name);
    }
    // The mask-code filters, both sizes: Laplace 3x3 and Hipass 3x3 = 8 c - the 8 neighbours,
    // Hipass 5x5 = 24 c - the other 24, Lowpass = the mean.
    using TMasked = IppStatus (*)(const Ipp8u*, int, Ipp8u*, int, IppiSize, IppiMaskSize);
    const struct {
        const char* Name;
        TMasked Fn;
        IppiMaskSize Mask;
        std::function<int(int, int)> Expected;
    } masked[] = {
        {"Laplace 3x3", ipp::ippiFilterLaplace_8u_C1R, ippMskSize3x3,
         [&](int x, int y) { return Saturate8(9 * s(x, y) - around(x, y, 1)); }},
        {"Hipass 3x3", ipp::ippiFilterHipass_8u_C1R, ippMskSize3x3,
         [&](int x, int y) { return Saturate8(9 * s(x, y) - around(x, y, 1)); }},
        {"Hipass 5x5", ipp::ippiFilterHipass_8u_C1R, ippMskSize5x5,
         [&](int x, int y) { return Saturate8(25 * s(x, y) - around(x, y, 2)); }},
        {"Lowpass 3x3", ipp::ippiFilterLowpass_8u_C1R, ippMskSize3x3,
         [&](int x, int y) { return RoundHalfEven8(around(x, y, 1), 9); }},
        {"Lowpass 5x5", ipp::ippiFilterLowpass_8u_C1R, ippMskSize5x5,
         [&](int x, int y) { return RoundHalfEven8(around(x, y, 2), 25); }},
    };
    for (const auto& f : masked) {
        ASSERT_EQ(f.Fn(src.Roi(), src.Step(), dst.Roi(), dst.Step(), {70, 5}, f.Mask), ippStsNoErr);
        ExpectImage(
            dst, 1, [&](int x, int y, int) { return f.Expected(x, y); }, f.Name);
    }
}

// Single bright pixels through the symmetric kernels: the weights appear one by one, and
// Gauss 3x3's sixteenths round halves to even (0.5 -> 0, 1.5 -> 2, 63.75 -> 64).
TEST_F(FilterKernel, ImpulsesShowTheSymmetricKernels)
{
    const int w = 80;
    const auto impulse = [](int value) {
        return [value](int x, int y, int) { return x % 8 == 3 && y == 2 ? value : 0; };
    };
    TFXImage<Ipp8u> dst(w, 5, 1, 0, [](int, int, int) { return 0; });
    const int gauss3[3] = {4, 2, 1}; // weight by distance |dx| + |dy| (centre, edge, corner)
    for (int value : {2, 6, 255}) {
        const TFXImage<Ipp8u> src(w, 5, 1, 2, impulse(value));
        ASSERT_EQ(ipp::ippiFilterGauss_8u_C1R(src.Roi(), src.Step(), dst.Roi(), dst.Step(), {w, 5},
                                              ippMskSize3x3),
                  ippStsNoErr);
        ExpectImage(
            dst, 1,
            [&](int x, int y, int) {
                const int dx = std::abs((x + 8) % 8 - 3), dy = std::abs(y - 2);
                return dx > 1 || dy > 1 ? 0 : RoundHalfEven8(long(value) * gauss3[dx + dy], 16);
            },
            "Gauss 3x3");
    }
    EXPECT_EQ(dst.At(3, 2, 0), 64) << "255 * 4 / 16 = 63.75";
    // Gauss 5x5 and Laplace 5x5 on an impulse of 1: the kernel itself (Laplace's negative
    // weights saturate to 0).
    const int gauss5[3][3] = {{127, 52, 12}, {52, 31, 7}, {12, 7, 2}};
    const int laplace5[3][3] = {{20, 6, -4}, {6, 0, -3}, {-4, -3, -1}};
    const TFXImage<Ipp8u> one(w, 5, 1, 2, impulse(10));
    ASSERT_EQ(ipp::ippiFilterGauss_8u_C1R(one.Roi(), one.Step(), dst.Roi(), dst.Step(), {w, 5},
                                          ippMskSize5x5),
              ippStsNoErr);
    const auto offsets = [](int x, int y, int& dx, int& dy) {
        dx = std::abs((x + 8) % 8 - 3);
        dy = std::abs(y - 2);
        return dx <= 2 && dy <= 2;
    };
    ExpectImage(
        dst, 1,
        [&](int x, int y, int) {
            int dx, dy;
            return offsets(x, y, dx, dy) ? RoundHalfEven8(10L * gauss5[dy][dx], 571) : 0;
        },
        "Gauss 5x5");
    ASSERT_EQ(ipp::ippiFilterLaplace_8u_C1R(one.Roi(), one.Step(), dst.Roi(), dst.Step(), {w, 5},
                                            ippMskSize5x5),
              ippStsNoErr);
    ExpectImage(
        dst, 1,
        [&](int x, int y, int) {
            int dx, dy;
            return offsets(x, y, dx, dy) ? Saturate8(10L * laplace5[dy][dx]) : 0;
        },
        "Laplace 5x5");
}

// 16-bit fixed filters keep values above 255 and saturate at 65535.
TEST_F(FilterKernel, SixteenBitFixedFiltersUseTheFullRange)
{
    const TFXImage<Ipp16u> src(40, 3, 1, 1,
                               [](int x, int y, int) { return x == 5 && y == 1 ? 5000 : 1000; });
    TFXImage<Ipp16u> dst(40, 3, 1, 0, [](int, int, int) { return 0; });
    ASSERT_EQ(ipp::ippiFilterLaplace_16u_C1R(src.Roi(), src.Step(), dst.Roi(), dst.Step(), {40, 3},
                                             ippMskSize3x3),
              ippStsNoErr);
    EXPECT_EQ(dst.At(5, 1, 0), 32000) << "8 * 5000 - 8 * 1000";
    EXPECT_EQ(dst.At(6, 1, 0), 0) << "8 * 1000 - 7 * 1000 - 5000 saturates to 0";
    EXPECT_EQ(dst.At(20, 1, 0), 0);
    ASSERT_EQ(
        ipp::ippiFilterSobelHoriz_16u_C1R(src.Roi(), src.Step(), dst.Roi(), dst.Step(), {40, 3}),
        ippStsNoErr);
    EXPECT_EQ(dst.At(5, 0, 0), 8000) << "2 * (5000 - 1000), the bright pixel below";
    const TFXImage<Ipp16u> bright(40, 3, 1, 1, [](int, int y, int) { return y >= 1 ? 60000 : 0; });
    ASSERT_EQ(ipp::ippiFilterSobelHoriz_16u_C1R(bright.Roi(), bright.Step(), dst.Roi(), dst.Step(),
                                                {40, 3}),
              ippStsNoErr);
    EXPECT_EQ(dst.At(10, 0, 0), 65535) << "4 * 60000 saturates";
}

// AC4 filters the colour channels and leaves every destination alpha byte as it was, on the
// vector paths (wide rows) and the reference (narrow ones).
TEST_F(FilterKernel, Ac4KeepsTheDestinationAlpha)
{
    for (int width : {3, 70}) {
        const TFXImage<Ipp8u> src(width, 3, 4, 2, Pattern);
        TFXImage<Ipp8u> dst(width, 3, 4, 0, [](int x, int y, int c) { return c == 3 ? x + y : 0; });
        const Ipp32s kernel[3] = {1, 2, 1};
        ASSERT_EQ(ipp::ippiFilter_8u_AC4R(src.Roi(), src.Step(), dst.Roi(), dst.Step(), {width, 3},
                                          kernel, {3, 1}, {1, 0}, 4),
                  ippStsNoErr);
        ExpectImage(
            dst, 4,
            [&](int x, int y, int c) {
                if (c == 3)
                    return x + y;
                return RoundHalfEven8(
                    src.At(x - 1, y, c) + 2 * src.At(x, y, c) + src.At(x + 1, y, c), 4);
            },
            "ippiFilter AC4");
        ASSERT_EQ(ipp::ippiFilterSobelVert_8u_AC4R(src.Roi(), src.Step(), dst.Roi(), dst.Step(),
                                                   {width, 3}),
                  ippStsNoErr);
        for (int y = 0; y < 3; ++y)
            for (int x = 0; x < width; ++x)
                ASSERT_EQ(dst.At(x, y, 3), x + y) << "Sobel AC4 alpha at " << x << "," << y;
    }
}

} // namespace
} // namespace framix::test
