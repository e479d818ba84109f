// SPDX-License-Identifier: MIT
// Box and rank filters on tiny images with hand-computed bytes, called through the bound
// IPP-named variables.
#include "framework/primitives/FXPrimitiveRegistry.h"
#include "framework/primitives/FXRound.h"
#include "framework/primitives/FXWordDivisor.h"
#include "framework/primitives/dispatch/FXPrimitiveLayer.h"
#include "framework/primitives/dispatch/Fxdispatcher.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <vector>

namespace framix::test {
namespace {

class FilterBox : public testing::Test {
protected:
    void SetUp() override { FXStartPrimitiveLayer(); }
};

// A 5x5 image 0..24 row by row; the 3x3 ROI is its centre, so every mask read stays inside.
const std::vector<Ipp8u> kRamp = [] {
    std::vector<Ipp8u> v(25);
    for (int i = 0; i < 25; ++i)
        v[i] = Ipp8u(i);
    return v;
}();

TEST_F(FilterBox, AverageOfCentredThreeByThreeIsTheCentre)
{
    std::vector<Ipp8u> dst(9, 0);
    ASSERT_EQ(ipp::ippiFilterBox_8u_C1R(kRamp.data() + 6, 5, dst.data(), 3, {3, 3}, {3, 3}, {1, 1}),
              ippStsNoErr);
    EXPECT_EQ(dst, (std::vector<Ipp8u>{6, 7, 8, 11, 12, 13, 16, 17, 18}));
}

// The anchor counts from the mask's top-left: anchor (0,0) puts the output on the window's
// top-left cell, so the window lies right of and below it.
TEST_F(FilterBox, AnchorAtTopLeftReadsRightAndDown)
{
    std::vector<Ipp8u> dst(1, 0);
    // window rows 0..1, columns 0..1 of the ramp: (0 + 1 + 5 + 6) / 4 = 3
    ASSERT_EQ(ipp::ippiFilterBox_8u_C1R(kRamp.data(), 5, dst.data(), 1, {1, 1}, {2, 2}, {0, 0}),
              ippStsNoErr);
    EXPECT_EQ(dst[0], 3);
    // anchor (1,1) on the same output: window rows -1..0 of pixel 6 -> 0, 1, 5, 6 again
    ASSERT_EQ(ipp::ippiFilterBox_8u_C1R(kRamp.data() + 6, 5, dst.data(), 1, {1, 1}, {2, 2}, {1, 1}),
              ippStsNoErr);
    EXPECT_EQ(dst[0], 3);
}

// IPP rounds the average to nearest with halves to even: 1.5 -> 2, 2.5 -> 2, 3.5 -> 4.
TEST_F(FilterBox, AverageRoundsHalvesToEven)
{
    const Ipp8u src[] = {1, 2, 3, 4, 0, 1};
    Ipp8u dst[5] = {};
    ASSERT_EQ(ipp::ippiFilterBox_8u_C1R(src, 6, dst, 5, {5, 1}, {2, 1}, {0, 0}), ippStsNoErr);
    EXPECT_EQ(std::vector<Ipp8u>(dst, dst + 5), (std::vector<Ipp8u>{2, 2, 4, 2, 0}));
    // thirds round to the nearest: 1/3 -> 0, 2/3 -> 1
    const Ipp8u thirds[] = {0, 0, 1, 1, 0};
    ASSERT_EQ(ipp::ippiFilterBox_8u_C1R(thirds, 5, dst, 3, {3, 1}, {3, 1}, {0, 0}), ippStsNoErr);
    EXPECT_EQ(std::vector<Ipp8u>(dst, dst + 3), (std::vector<Ipp8u>{0, 1, 1}));
}

TEST_F(FilterBox, SixteenBitAverageUsesTheFullRange)
{
    const Ipp16u src[] = {65535, 65534, 65535, 1000, 3000};
    Ipp16u dst[4] = {};
    ASSERT_EQ(
        ipp::ippiFilterBox_16u_C1R(src, sizeof(src), dst, sizeof(dst), {4, 1}, {2, 1}, {0, 0}),
        ippStsNoErr);
    // 65534.5 -> 65534 (even), 65534.5 -> 65534, 33267.5 -> 33268, 2000
    EXPECT_EQ(std::vector<Ipp16u>(dst, dst + 4), (std::vector<Ipp16u>{65534, 65534, 33268, 2000}));
}

// Channels are filtered independently, and C4 filters the fourth channel like the others.
// 16-bit averages near the top of the range, where the vector kernels' float division is
// closest to its limit (sums up to 30 * 65535): every level gives the reference's bytes, ties
// of the even 6x5 mask included.
TEST_F(FilterBox, SixteenBitAveragesOfLargeSumsAreExactAtEveryLevel)
{
    const prim::TFXPrimitiveInfo* p = prim::FXFindPrimitive("ippiFilterBox_16u_C1R");
    ASSERT_NE(p, nullptr);
    constexpr int kW = 301, kH = 12;
    std::vector<Ipp16u> src(std::size_t(kW) * kH);
    std::mt19937 rng(7);
    for (Ipp16u& v : src)
        v = Ipp16u(65535 - rng() % 64); // many windows with equal sums: ties for even counts
    for (const IppiSize mask : {IppiSize{5, 5}, IppiSize{6, 5}, IppiSize{5, 6}}) {
        prim::TFXShapeArgs a;
        a.Src = src.data();
        a.SrcStep = kW * 2;
        a.Roi = {kW - mask.width + 1, kH - mask.height + 1};
        a.DstStep = a.Roi.width * 2;
        a.Mask = mask;
        std::vector<Ipp16u> expected(std::size_t(a.Roi.width) * a.Roi.height), actual(expected);
        a.Dst = expected.data();
        ASSERT_EQ(prim::FXCallShape(p->Shape, p->Sample, p->At(TFXSimdLevel::Ref), a), ippStsNoErr);
        for (TFXSimdLevel level : kFXAllSimdLevels) {
            if (!p->Has(level) || !FXCpuSupports(level))
                continue;
            a.Dst = actual.data();
            ASSERT_EQ(prim::FXCallShape(p->Shape, p->Sample, p->At(level), a), ippStsNoErr);
            EXPECT_EQ(actual, expected)
                << FXLevelName(level) << ", mask " << mask.width << "x" << mask.height;
        }
    }
}

// 8-bit averages divide 16-bit sums by a multiply-high and a shift. Every sum of every count
// the divisor accepts gives the reference's rounding; counts up to 185 (masks to 13x13) must be
// accepted, or the filter silently falls back to the slower 32-bit lanes.
TEST_F(FilterBox, WordDivisorRoundsEverySumOfEveryCountAsTheReference)
{
    for (int count = 2; count <= 256; ++count) {
        const prim::TFXWordDivisor d = prim::FXWordDivisorFor(count);
        if (count <= 185)
            EXPECT_TRUE(d.Valid()) << "count " << count;
        if (!d.Valid())
            continue;
        int wrong = 0, firstWrong = -1;
        for (int sum = 0; sum <= 255 * count; ++sum)
            if (d.Divide(sum) != prim::FXDivRoundHalfEven(sum, count) && wrong++ == 0)
                firstWrong = sum;
        EXPECT_EQ(wrong, 0) << "count " << count << ", first wrong sum " << firstWrong;
    }
    EXPECT_FALSE(prim::FXWordDivisorFor(1).Valid());
    EXPECT_FALSE(prim::FXWordDivisorFor(257).Valid()) << "257 * 255 does not fit 16 bits";
}

// The same sums through the vector kernels: every window of the image sums to one chosen value,
// so each call checks one sum in every lane (the ROI is wider than a 512-bit vector and ends off
// a vector boundary). The sums lie at and around each rounding point (ties of even counts,
// remainders count / 2 +- 1 of odd ones) for the given quotients.
template <class T>
void ExpectAveragesAtRoundingPointsAtEveryLevel(const char* name, const std::vector<int>& quotients)
{
    const prim::TFXPrimitiveInfo* p = prim::FXFindPrimitive(name);
    ASSERT_NE(p, nullptr);
    constexpr int kRoiWidth = 71;
    constexpr int kMax = prim::kFXSampleMax<T>;
    const IppiSize masks[] = {{1, 1}, {2, 1}, {1, 2}, {2, 2}, {3, 2}, {2, 3}, {3, 3},
                              {4, 4}, {5, 1}, {1, 5}, {3, 5}, {5, 5}, {6, 4}};
    for (const IppiSize mask : masks) {
        const int count = mask.width * mask.height;
        const int srcWidth = kRoiWidth + mask.width - 1;
        std::vector<T> src(std::size_t(srcWidth) * mask.height);
        std::vector<T> dst(kRoiWidth);
        for (int q : quotients)
            for (int rest : {0, count / 2 - 1, count / 2, count / 2 + 1, count - 1}) {
                const std::int64_t sum = std::int64_t(q) * count + rest;
                if (rest < 0 || rest >= count || sum > std::int64_t(kMax) * count)
                    continue;
                // Mask cell k holds sum / count, plus one for the first sum % count cells; the
                // pattern repeats every mask.width columns, so each window holds every cell once.
                for (int y = 0; y < mask.height; ++y)
                    for (int x = 0; x < srcWidth; ++x) {
                        const int k = y * mask.width + x % mask.width;
                        src[std::size_t(y) * srcWidth + x] = T(q + (k < rest ? 1 : 0));
                    }
                const T expected = T(prim::FXDivRoundHalfEven(sum, count));
                prim::TFXShapeArgs a;
                a.Src = src.data();
                a.SrcStep = srcWidth * int(sizeof(T));
                a.Dst = dst.data();
                a.DstStep = kRoiWidth * int(sizeof(T));
                a.Roi = {kRoiWidth, 1};
                a.Mask = mask;
                for (TFXSimdLevel level : kFXAllSimdLevels) {
                    if (!p->Has(level) || !FXCpuSupports(level))
                        continue;
                    std::fill(dst.begin(), dst.end(), T(expected ^ kMax));
                    ASSERT_EQ(prim::FXCallShape(p->Shape, p->Sample, p->At(level), a), ippStsNoErr);
                    ASSERT_EQ(std::count(dst.begin(), dst.end(), expected), kRoiWidth)
                        << name << " at " << FXLevelName(level) << ", mask " << mask.width << "x"
                        << mask.height << ", sum " << sum;
                }
            }
    }
}

// 8-bit: every quotient (16-bit lanes and a multiply-high); 16-bit: quotients over the whole
// range, the largest included (32-bit lanes, a float reciprocal for odd counts).
TEST_F(FilterBox, AveragesAtEveryRoundingPointAreExactAtEveryLevel)
{
    std::vector<int> every(256);
    std::iota(every.begin(), every.end(), 0);
    ExpectAveragesAtRoundingPointsAtEveryLevel<Ipp8u>("ippiFilterBox_8u_C1R", every);
    std::vector<int> spread;
    for (int q = 0; q < 65536; q += 997)
        spread.push_back(q);
    for (int q : {1, 2, 32767, 32768, 65533, 65534, 65535})
        spread.push_back(q);
    ExpectAveragesAtRoundingPointsAtEveryLevel<Ipp16u>("ippiFilterBox_16u_C1R", spread);
}

TEST_F(FilterBox, ChannelsAreIndependentAndC4FiltersAlpha)
{
    const Ipp8u rgba[] = {10, 100, 200, 0, 20, 110, 100, 255, 60, 0, 0, 1};
    Ipp8u dst[8] = {};
    ASSERT_EQ(ipp::ippiFilterMax_8u_C4R(rgba, 12, dst, 8, {2, 1}, {2, 1}, {0, 0}), ippStsNoErr);
    EXPECT_EQ(std::vector<Ipp8u>(dst, dst + 8),
              (std::vector<Ipp8u>{20, 110, 200, 255, 60, 110, 100, 255}));
    const Ipp8u rgb[] = {10, 100, 200, 20, 110, 100, 60, 0, 0};
    ASSERT_EQ(ipp::ippiFilterMin_8u_C3R(rgb, 9, dst, 6, {2, 1}, {2, 1}, {0, 0}), ippStsNoErr);
    EXPECT_EQ(std::vector<Ipp8u>(dst, dst + 6), (std::vector<Ipp8u>{10, 100, 100, 20, 0, 0}));
}

// The ROI is the middle row of a 3-row image; a 1x3 mask reads the rows above and below it,
// outside the ROI (legacy IPP does no border handling).
TEST_F(FilterBox, MasksReadSourcePixelsOutsideTheRoi)
{
    const Ipp8u image[] = {9, 1, 4, // row above the ROI
                           5, 5, 5, // the ROI
                           1, 9, 6};
    Ipp8u dst[3] = {};
    ASSERT_EQ(ipp::ippiFilterMin_8u_C1R(image + 3, 3, dst, 3, {3, 1}, {1, 3}, {0, 1}), ippStsNoErr);
    EXPECT_EQ(std::vector<Ipp8u>(dst, dst + 3), (std::vector<Ipp8u>{1, 1, 4}));
    ASSERT_EQ(ipp::ippiFilterMax_8u_C1R(image + 3, 3, dst, 3, {3, 1}, {1, 3}, {0, 1}), ippStsNoErr);
    EXPECT_EQ(std::vector<Ipp8u>(dst, dst + 3), (std::vector<Ipp8u>{9, 9, 6}));
}

TEST_F(FilterBox, MedianTakesTheMiddleOfTheSortedNeighbourhood)
{
    // 3x3 windows of a 5x3 image; the middle row is the ROI.
    const Ipp8u image[] = {200, 3,  7,   250, 0,   //
                           1,   90, 2,   8,   255, //
                           6,   4,  100, 5,   9};
    Ipp8u dst[3] = {};
    ASSERT_EQ(ipp::ippiFilterMedian_8u_C1R(image + 6, 5, dst, 3, {3, 1}, {3, 3}, {1, 1}),
              ippStsNoErr);
    // {200,3,7,1,90,2,6,4,100} -> 6; {3,7,250,90,2,8,4,100,5} -> 7; {7,250,0,2,8,255,100,5,9} -> 8
    EXPECT_EQ(std::vector<Ipp8u>(dst, dst + 3), (std::vector<Ipp8u>{6, 7, 8}));
    const Ipp16u wide[] = {60000, 2, 40000, 7, 65535};
    Ipp16u out[3] = {};
    ASSERT_EQ(
        ipp::ippiFilterMedian_16u_C1R(wide, sizeof(wide), out, sizeof(out), {3, 1}, {3, 1}, {0, 0}),
        ippStsNoErr);
    EXPECT_EQ(std::vector<Ipp16u>(out, out + 3), (std::vector<Ipp16u>{40000, 7, 40000}));
}

TEST_F(FilterBox, EvenMedianMaskIsAnError)
{
    Ipp8u dst[4] = {0xEE, 0xEE, 0xEE, 0xEE};
    EXPECT_EQ(ipp::ippiFilterMedian_8u_C1R(kRamp.data() + 6, 5, dst, 4, {2, 1}, {2, 3}, {0, 1}),
              ippStsMaskSizeErr);
    EXPECT_EQ(dst[0], 0xEE) << "nothing is written on an error";
}

} // namespace
} // namespace framix::test
