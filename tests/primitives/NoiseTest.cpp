// SPDX-License-Identifier: MIT
// Noise primitives reproduce IPP's generator: the values and seed words below were read from
// IPP 2022 (ippiAddRandUniform_8u_C1IR and friends), so the generator is pinned without the real
// IPP at hand.
#include "framework/primitives/FXCpu.h"
#include "framework/primitives/dispatch/FXPrimitiveLayer.h"
#include "framework/primitives/dispatch/Fxdispatcher.h"
#include "tests/primitives/support/FXPrimitiveCases.h"

#include <gtest/gtest.h>

#include <vector>

namespace framix::test {
namespace {

using TBytes = std::vector<Ipp8u>;

class Noise : public testing::Test {
protected:
    void SetUp() override { FXStartPrimitiveLayer(); }
};

// Six samples on a zero image from seed 0; the returned seed is the generator's last
// subtract-with-borrow word, so the seed after one or two samples is known too.
TEST_F(Noise, UniformSamplesAndSeedWordsAreIpps)
{
    TBytes img(6, 0);
    unsigned seed = 0;
    ASSERT_EQ(ipp::ippiAddRandUniform_Direct_8u_C1IR(img.data(), 6, {6, 1}, 0, 255, &seed),
              ippStsNoErr);
    EXPECT_EQ(img, (TBytes{0, 33, 54, 103, 90, 189}));
    EXPECT_EQ(seed, 3101859976u);
    seed = 0;
    ASSERT_EQ(ipp::ippiAddRandUniform_Direct_8u_C1IR(img.data(), 1, {1, 1}, 0, 255, &seed),
              ippStsNoErr);
    EXPECT_EQ(seed, 89601512u);
    // rows continue the sequence: 3x2 gives what 6x1 gives
    TBytes rows(8, 0);
    seed = 0;
    ASSERT_EQ(ipp::ippiAddRandUniform_Direct_8u_C1IR(rows.data(), 4, {3, 2}, 0, 255, &seed),
              ippStsNoErr);
    EXPECT_EQ(rows, (TBytes{0, 33, 54, 0, 103, 90, 189, 0}));
}

TEST_F(Noise, GaussianSamplesComeInPairsAsIppDrawsThem)
{
    TBytes img(8, 0);
    unsigned seed = 0;
    ASSERT_EQ(ipp::ippiAddRandGauss_Direct_8u_C1IR(img.data(), 8, {8, 1}, 128, 20, &seed),
              ippStsNoErr);
    EXPECT_EQ(img, (TBytes{101, 119, 112, 154, 141, 117, 159, 132}));
    EXPECT_EQ(seed, 0xF3902432u);
}

// AC4 draws no sample for alpha and leaves it; C4 adds noise to alpha like to the colour; sums
// saturate.
TEST_F(Noise, ChannelsTakeSamplesInOrderAndSaturate)
{
    TBytes bgra = {100, 100, 100, 7, 100, 100, 100, 9};
    unsigned seed = 31192;
    ASSERT_EQ(ipp::ippiAddRandGauss_Direct_8u_AC4IR(bgra.data(), 8, {2, 1}, 0, 100, &seed),
              ippStsNoErr);
    EXPECT_EQ(bgra, (TBytes{228, 160, 197, 7, 246, 78, 173, 9}));
    EXPECT_EQ(seed, 612755464u);
    TBytes four = {250, 0, 128, 255, 1, 2, 3, 4};
    seed = 31192;
    ASSERT_EQ(ipp::ippiAddRandUniform_Direct_8u_C4IR(four.data(), 8, {2, 1}, 0, 20, &seed),
              ippStsNoErr);
    EXPECT_EQ(four, (TBytes{255, 13, 148, 255, 14, 16, 10, 22}));
    EXPECT_EQ(seed, 612755464u) << "the same six samples drawn";
}

// The 16-bit variants take 16-bit bounds (the noise filter passes its 8-bit ones times 256).
TEST_F(Noise, SixteenBitNoiseUsesTheFullRange)
{
    Ipp16u img[4] = {0, 65535, 1000, 30000};
    unsigned seed = 7;
    ASSERT_EQ(ipp::ippiAddRandUniform_Direct_16u_C1IR(img, 8, {4, 1}, 256 * 10, 256 * 40, &seed),
              ippStsNoErr);
    EXPECT_EQ(std::vector<Ipp16u>(img, img + 4), (std::vector<Ipp16u>{4296, 65535, 6914, 33927}));
    EXPECT_EQ(seed, 2224443505u);
}

// A range of zero adds nothing, but the seed still moves on.
TEST_F(Noise, EmptyRangeLeavesTheImageAndAdvancesTheSeed)
{
    TBytes img = {5, 6, 7, 8, 9};
    unsigned seed = 31192;
    ASSERT_EQ(ipp::ippiAddRandUniform_Direct_8u_C1IR(img.data(), 5, {5, 1}, 0, 0, &seed),
              ippStsNoErr);
    EXPECT_EQ(img, (TBytes{5, 6, 7, 8, 9}));
    EXPECT_EQ(seed, 2283484622u);
}

// A sample that lands on a half rounds to even: these seeds make the third output of the
// generator 0 (noise 0.5 for [0, 1]) and 2^30 (noise 1.5 for [0, 2]).
TEST_F(Noise, SamplesOnAHalfRoundToEven)
{
    TBytes img = {0, 0, 1};
    unsigned seed = 902496723u;
    ASSERT_EQ(ipp::ippiAddRandUniform_Direct_8u_C1IR(img.data(), 3, {3, 1}, 0, 1, &seed),
              ippStsNoErr);
    EXPECT_EQ(img[2], 1) << "0.5 -> 0, whatever the pixel";
    img = {0, 0, 1};
    seed = 4157642382u;
    ASSERT_EQ(ipp::ippiAddRandUniform_Direct_8u_C1IR(img.data(), 3, {3, 1}, 0, 2, &seed),
              ippStsNoErr);
    EXPECT_EQ(img[2], 3) << "1.5 -> 2";
}

// The vector levels draw the generator's words a chunk of pixels at a time and the Gaussian's
// candidate pairs a batch at a time: sizes on both sides of those boundaries, rows that split a
// batch, single pixels (a Gaussian pair's second value dropped), padded rows and extreme seed
// words, each against the reference sample for sample, seed word after the call included.
TEST(NoiseLevels, ChunksAndBatchesAgreeWithTheReference)
{
    struct TGeometry {
        IppiSize Roi;
        int Pad;
    };
    const TGeometry geometries[] = {{{1, 1}, 0},    {{2, 3}, 3},   {{5, 7}, 1},
                                    {{682, 2}, 0},  {{683, 2}, 7}, {{513, 3}, 2},
                                    {{2049, 1}, 0}, {{700, 4}, 5}, {{257, 9}, 0}};
    const std::uint32_t seeds[] = {0u, 0xFFFFFFFFu, 0x80000000u, 2024u};
    const char* names[] = {
        "ippiAddRandUniform_Direct_8u_C1IR",  "ippiAddRandUniform_Direct_8u_C3IR",
        "ippiAddRandUniform_Direct_8u_C4IR",  "ippiAddRandUniform_Direct_8u_AC4IR",
        "ippiAddRandUniform_Direct_16u_C1IR", "ippiAddRandGauss_Direct_8u_C1IR",
        "ippiAddRandGauss_Direct_8u_C3IR",    "ippiAddRandGauss_Direct_8u_C4IR",
        "ippiAddRandGauss_Direct_8u_AC4IR",   "ippiAddRandGauss_Direct_16u_C1IR"};
    int ran = 0;
    for (const char* name : names) {
        const prim::TFXPrimitiveInfo* p = prim::FXFindPrimitive(name);
        ASSERT_NE(p, nullptr) << name;
        const bool wide = p->Sample == prim::TFXSample::U16;
        for (std::size_t g = 0; g < std::size(geometries); ++g) {
            TFXCase c;
            c.Roi = geometries[g].Roi;
            c.DstPad = geometries[g].Pad * (wide ? 2 : 1);
            c.NoiseSeed = seeds[g % std::size(seeds)];
            // uniform: full, reversed and narrow ranges; Gaussian: (mean, deviation)
            const int bounds[3][2] = {{0, 255}, {200, 10}, {100, 103}};
            c.Values[0] = bounds[g % 3][0] * (wide ? 257 : 1);
            c.Values[1] = bounds[g % 3][1] * (wide ? 257 : 1);
            const TFXCaseImages images(*p, c);
            const TFXRunResult expected = images.Run(p->At(TFXSimdLevel::Ref));
            for (TFXSimdLevel level :
                 {TFXSimdLevel::Sse41, TFXSimdLevel::Avx2, TFXSimdLevel::Avx512}) {
                if (!FXCpuSupports(level) || !p->Has(level))
                    continue;
                const TFXRunResult actual = images.Run(p->At(level));
                ASSERT_EQ(images.FirstDamagedGuard(actual.Dst), -1) << c.Describe();
                ASSERT_TRUE(actual.Dst == expected.Dst)
                    << name << " at " << FXLevelName(level) << ", " << c.Describe();
                ASSERT_EQ(actual.NoiseSeed, expected.NoiseSeed)
                    << name << " at " << FXLevelName(level) << ", " << c.Describe();
                ++ran;
            }
        }
    }
    EXPECT_GT(ran, 0) << "no vector level on this machine";
}

} // namespace
} // namespace framix::test
