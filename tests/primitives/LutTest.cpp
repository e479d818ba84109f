// SPDX-License-Identifier: MIT
// Look-up tables on small images with hand-computed samples, called through the bound
// IPP-named variables.
#include "framework/primitives/dispatch/FXPrimitiveLayer.h"
#include "framework/primitives/dispatch/Fxdispatcher.h"

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

namespace framix::test {
namespace {

class Lut : public testing::Test {
protected:
    void SetUp() override { FXStartPrimitiveLayer(); }

    // Maps the samples `in` (one row) through one table with the 8-bit C1 primitive `fn`.
    static std::vector<Ipp8u> Map(ipp::TPtr_ippiLUT_8u_C1R fn, const std::vector<Ipp8u>& in,
                                  const std::vector<Ipp32s>& levels,
                                  const std::vector<Ipp32s>& values)
    {
        std::vector<Ipp8u> out(in.size(), 0xEE);
        const int n = int(in.size());
        EXPECT_EQ(fn(in.data(), n, out.data(), n, {n, 1}, values.data(), levels.data(),
                     int(levels.size())),
                  ippStsNoErr);
        return out;
    }

    static std::vector<Ipp8u> Ramp(int from, int to)
    {
        std::vector<Ipp8u> v(std::size_t(to - from));
        std::iota(v.begin(), v.end(), Ipp8u(from));
        return v;
    }
};

// [L[k], L[k+1]) maps to P[k]; below the first and from the last level samples keep their
// value; values saturate.
TEST_F(Lut, StepMapsIntervalsAndKeepsSamplesOutsideTheLevels)
{
    const auto out = Map(ipp::ippiLUT_8u_C1R, {0, 9, 10, 19, 20, 29, 30, 39, 40, 41},
                         {10, 20, 30, 40}, {100, -7, 300, 50});
    EXPECT_EQ(out, (std::vector<Ipp8u>{0, 9, 100, 100, 0, 0, 255, 255, 40, 41}));
}

// A two-point table (0, 256) -> (0, 256), what a colour lookup gives channels without points:
// linear reproduces every sample, step maps every sample to the first value.
TEST_F(Lut, TwoPointIdentityTableIsIdentityOnlyWhenInterpolated)
{
    const auto all = Ramp(0, 256);
    EXPECT_EQ(Map(ipp::ippiLUT_Linear_8u_C1R, all, {0, 256}, {0, 256}), all);
    EXPECT_EQ(Map(ipp::ippiLUT_8u_C1R, all, {0, 256}, {0, 256}), std::vector<Ipp8u>(256, 0));
}

// P[k] + (v - L[k]) dP / dL to nearest, halves up: steps of 5/8 give 0, .625, 1.25, 1.875, 2.5,
// 3.125, 3.75, 4.375.
TEST_F(Lut, LinearRoundsToNearestWithHalvesUp)
{
    EXPECT_EQ(Map(ipp::ippiLUT_Linear_8u_C1R, Ramp(0, 8), {0, 8, 256}, {0, 5, 256}),
              (std::vector<Ipp8u>{0, 1, 1, 2, 3, 3, 4, 4}));
    // falling: 1 - 1/2 = 0.5 -> 1
    EXPECT_EQ(Map(ipp::ippiLUT_Linear_8u_C1R, Ramp(0, 2), {0, 2, 256}, {1, 0, 256}),
              (std::vector<Ipp8u>{1, 1}));
    // -300, -100, 100, 300 saturate at both ends
    EXPECT_EQ(Map(ipp::ippiLUT_Linear_8u_C1R, Ramp(0, 4), {0, 4, 256}, {-300, 500, 256}),
              (std::vector<Ipp8u>{0, 0, 100, 255}));
}

// The cubic through four points: x^3 / 100 through (0, 0), (10, 10), (20, 80), (30, 270). The
// window of interval k is points k-1 ... k+2, moved inside the table at its ends: the last two
// intervals use points 1 ... 4, whose fifth value (40, 0) bends the curve.
TEST_F(Lut, CubicUsesFourPointWindowsMovedInsideAtTheEnds)
{
    EXPECT_EQ(Map(ipp::ippiLUT_Cubic_8u_C1R, {0, 5, 15, 25, 35, 40}, {0, 10, 20, 30, 40},
                  {0, 10, 80, 270, 0}),
              (std::vector<Ipp8u>{0, 1, 34, 196, 229, 40})); // 1.25, 33.75, 196.25, 228.75
    // Fewer than four levels: linear.
    EXPECT_EQ(Map(ipp::ippiLUT_Cubic_8u_C1R, {50, 150}, {0, 100, 200}, {0, 100, 0}),
              (std::vector<Ipp8u>{50, 50}));
}

// Intentional: no cubic passes through a repeated level; IPP's replacement writes 0 there, and
// so do we, on every sample of an interval whose window repeats one.
TEST_F(Lut, CubicWindowWithARepeatedLevelMapsToZero_Intentional)
{
    EXPECT_EQ(Map(ipp::ippiLUT_Cubic_8u_C1R, {0, 50, 150, 250}, {0, 100, 100, 200, 256},
                  {10, 20, 30, 40, 50}),
              (std::vector<Ipp8u>{0, 0, 0, 0}));
}

// Levels out of order (a colour lookup hands unsorted levels to the cubic single-channel call):
// the last interval that holds a sample decides; from the last level on, samples keep their
// value even inside an earlier interval.
TEST_F(Lut, UnorderedLevelsTakeTheLastIntervalThatHoldsTheSample)
{
    EXPECT_EQ(Map(ipp::ippiLUT_8u_C1R, {0, 49, 50, 199, 200}, {0, 100, 50, 200}, {10, 20, 30, 40}),
              (std::vector<Ipp8u>{10, 10, 30, 30, 200}));
    EXPECT_EQ(Map(ipp::ippiLUT_8u_C1R, {0, 99, 100, 199}, {0, 200, 100}, {10, 20, 30}),
              (std::vector<Ipp8u>{10, 10, 100, 199}));
}

// Each channel maps through its own table; C4 maps the fourth channel too, AC4 never writes it.
TEST_F(Lut, ChannelsUseTheirOwnTablesAndAc4LeavesAlpha)
{
    const std::vector<Ipp32s> levels = {0, 256};
    const std::vector<Ipp32s> up = {10, 266}, down = {255, -1}, same = {0, 256}, zero = {0, 0};
    const Ipp32s* pLevels[4] = {levels.data(), levels.data(), levels.data(), levels.data()};
    const Ipp32s* pValues[4] = {up.data(), down.data(), same.data(), zero.data()};
    int nLevels[4] = {2, 2, 2, 2};
    const Ipp8u rgba[] = {0, 0, 7, 200, 250, 100, 7, 100};
    Ipp8u out[8];
    ASSERT_EQ(ipp::ippiLUT_Linear_8u_C4R(rgba, 8, out, 8, {2, 1}, pValues, pLevels, nLevels),
              ippStsNoErr);
    EXPECT_EQ(std::vector<Ipp8u>(out, out + 8),
              (std::vector<Ipp8u>{10, 255, 7, 0, 255, 155, 7, 0}));
    std::fill(out, out + 8, Ipp8u(0xEE));
    ASSERT_EQ(ipp::ippiLUT_Linear_8u_AC4R(rgba, 8, out, 8, {2, 1}, pValues, pLevels, nLevels),
              ippStsNoErr);
    EXPECT_EQ(std::vector<Ipp8u>(out, out + 8),
              (std::vector<Ipp8u>{10, 255, 7, 0xEE, 255, 155, 7, 0xEE}));
    const Ipp8u rgb[] = {5, 5, 5};
    ASSERT_EQ(ipp::ippiLUT_8u_C3R(rgb, 3, out, 3, {1, 1}, pValues, pLevels, nLevels), ippStsNoErr);
    EXPECT_EQ(std::vector<Ipp8u>(out, out + 3), (std::vector<Ipp8u>{10, 255, 0}));
}

// The 16-bit tables work on the whole range: no saturation at 255, saturation at 65535.
TEST_F(Lut, SixteenBitTablesSaturateAt65535Only)
{
    const Ipp16u in[] = {0, 300, 1000, 65535};
    Ipp16u out[4] = {};
    const Ipp32s levels[] = {0, 1000, 65536}, values[] = {0, 70000, 65536};
    ASSERT_EQ(ipp::ippiLUT_Linear_16u_C1R(in, 8, out, 8, {4, 1}, values, levels, 3), ippStsNoErr);
    EXPECT_EQ(std::vector<Ipp16u>(out, out + 4), (std::vector<Ipp16u>{0, 21000, 65535, 65535}));
    ASSERT_EQ(ipp::ippiLUT_16u_C1R(in, 8, out, 8, {4, 1}, values, levels, 3), ippStsNoErr);
    EXPECT_EQ(std::vector<Ipp16u>(out, out + 4), (std::vector<Ipp16u>{0, 0, 65535, 65535}));
    // x^3 / 10^8 through levels 1000 apart: 2500 -> 156.25
    const Ipp16u mid[] = {2500};
    const Ipp32s cubicLevels[] = {0, 1000, 2000, 3000}, cubicValues[] = {0, 10, 80, 270};
    ASSERT_EQ(ipp::ippiLUT_Cubic_16u_C1R(mid, 2, out, 2, {1, 1}, cubicValues, cubicLevels, 4),
              ippStsNoErr);
    EXPECT_EQ(out[0], 156);
}

// A stream maps every frame through the same table; a changed table must not be served from
// what the previous call built.
TEST_F(Lut, ChangedTablesTakeEffectOnTheNextCall)
{
    const Ipp16u in[] = {100};
    Ipp16u out[1] = {};
    Ipp32s levels[] = {0, 65536}, values[] = {0, 65536};
    ASSERT_EQ(ipp::ippiLUT_Linear_16u_C1R(in, 2, out, 2, {1, 1}, values, levels, 2), ippStsNoErr);
    EXPECT_EQ(out[0], 100);
    values[1] = 2 * 65536;
    ASSERT_EQ(ipp::ippiLUT_Linear_16u_C1R(in, 2, out, 2, {1, 1}, values, levels, 2), ippStsNoErr);
    EXPECT_EQ(out[0], 200);
    levels[1] = 200;
    ASSERT_EQ(ipp::ippiLUT_Linear_16u_C1R(in, 2, out, 2, {1, 1}, values, levels, 2), ippStsNoErr);
    EXPECT_EQ(out[0], 65535);
    ASSERT_EQ(ipp::ippiLUT_16u_C1R(in, 2, out, 2, {1, 1}, values, levels, 2), ippStsNoErr);
    EXPECT_EQ(out[0], 0) << "same table, other kind";
}

// The nBitSize low bits index the palette; the output is one 32-bit value per pixel.
TEST_F(Lut, PaletteIndexesWithTheLowBits)
{
    std::vector<Ipp32u> palette(256);
    std::iota(palette.begin(), palette.end(), 0xFF000000u);
    const Ipp8u in[] = {0xAB, 0x12, 0xFF, 0x0F};
    Ipp32u out[4] = {};
    ASSERT_EQ(ipp::ippiLUTPalette_8u32u_C1R(in, 4, out, 16, {4, 1}, palette.data(), 4),
              ippStsNoErr);
    EXPECT_EQ(std::vector<Ipp32u>(out, out + 4),
              (std::vector<Ipp32u>{0xFF00000B, 0xFF000002, 0xFF00000F, 0xFF00000F}));
    ASSERT_EQ(ipp::ippiLUTPalette_8u32u_C1R(in, 4, out, 16, {4, 1}, palette.data(), 8),
              ippStsNoErr);
    EXPECT_EQ(std::vector<Ipp32u>(out, out + 4),
              (std::vector<Ipp32u>{0xFF0000AB, 0xFF000012, 0xFF0000FF, 0xFF00000F}));
}

// An empty table (a colour lookup hands over count 0) or missing per-channel arrays are errors
// that write nothing.
TEST_F(Lut, TooFewLevelsOrMissingArraysWriteNothing)
{
    const Ipp8u in[] = {1, 2};
    Ipp8u out[2] = {0xEE, 0xEE};
    const Ipp32s levels[] = {0, 256}, values[] = {0, 256};
    EXPECT_EQ(ipp::ippiLUT_Cubic_8u_C1R(in, 2, out, 2, {2, 1}, values, levels, 0),
              ippStsLUTNofLevelsErr);
    EXPECT_EQ(ipp::ippiLUT_8u_C3R(in, 2, out, 2, {0, 1}, nullptr, nullptr, nullptr),
              ippStsNullPtrErr);
    EXPECT_EQ(std::vector<Ipp8u>(out, out + 2), (std::vector<Ipp8u>{0xEE, 0xEE}));
}

} // namespace
} // namespace framix::test
