// SPDX-License-Identifier: MIT
// Alpha compositing and weighted accumulation with hand-computed values, called through the
// bound IPP-named variables.
#include "framework/primitives/FXPrimitiveRegistry.h"
#include "framework/primitives/dispatch/Fxbasicdispatcher.h"
#include "tests/primitives/support/FXBoundPrimitivesTest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <numeric>
#include <random>
#include <vector>

namespace framix::test {
namespace {

using V8 = std::vector<Ipp8u>;

class Blend : public TFXBoundPrimitivesTest {};

// A = 200 with alpha 153 (0.6), B = 100 with alpha 102 (0.4): every rule's value is exact.
// The colour is not divided by the result's alpha (over gives 136, not 136 / 0.76).
TEST_F(Blend, EveryRuleFollowsTheCompositingTable)
{
    const Ipp8u a = 200, b = 100;
    // over, in, out, atop, xor, plus, then premultiplied (plus saturates)
    const int expected[12] = {136, 48, 72, 64, 88, 160, 240, 80, 120, 120, 160, 255};
    for (int type = 0; type < 12; ++type) {
        Ipp8u d = 0;
        ASSERT_EQ(
            ipp::ippiAlphaCompC_8u_C1R(&a, 1, 153, &b, 1, 102, &d, 1, {1, 1}, IppiAlphaType(type)),
            ippStsNoErr);
        EXPECT_EQ(d, expected[type]) << "alpha type " << type;
    }
}

// One rounding to nearest of the exact value: 1 * 128 / 255 = 0.502 -> 1 (flooring gives 0);
// in with alphas 0.6 and 0.4: 7 * 0.24 = 1.68 -> 2 (flooring gives 1), 6 * 0.24 = 1.44 -> 1
// (rounding 0.6 * 6 = 3.6 to 4 first would give 1.6 -> 2). C4 treats the fourth channel as
// colour.
TEST_F(Blend, ConstantAlphasRoundTheExactValueOnce)
{
    const Ipp8u a[4] = {1, 7, 6, 255}, b[4] = {0, 0, 0, 0};
    Ipp8u d[4] = {};
    ASSERT_EQ(ipp::ippiAlphaCompC_8u_C4R(a, 4, 128, b, 4, 255, d, 4, {1, 1}, ippAlphaOver),
              ippStsNoErr);
    EXPECT_EQ(V8(d, d + 4), (V8{1, 4, 3, 128}));
    ASSERT_EQ(ipp::ippiAlphaCompC_8u_C3R(a, 3, 153, b, 3, 102, d, 3, {1, 1}, ippAlphaIn),
              ippStsNoErr);
    EXPECT_EQ(V8(d, d + 3), (V8{0, 2, 1}));
}

// Per-pixel alphas; the destination alpha receives the composite alpha (0.6 + 0.4 * 0.4 =
// 0.76 for over; the second alpha for atop), premultiplied rules included.
TEST_F(Blend, PixelAlphasProduceTheCompositeAlpha)
{
    const Ipp8u first[] = {200, 10, 0, 153};
    const Ipp8u second[] = {100, 50, 255, 102};
    Ipp8u d[4] = {};
    ASSERT_EQ(ipp::ippiAlphaComp_8u_AC4R(first, 4, second, 4, d, 4, {1, 1}, ippAlphaOver),
              ippStsNoErr);
    // 120 + 16, 6 + 8, 0 + 40.8, 193.8
    EXPECT_EQ(V8(d, d + 4), (V8{136, 14, 41, 194}));
    ASSERT_EQ(ipp::ippiAlphaComp_8u_AC4R(first, 4, second, 4, d, 4, {1, 1}, ippAlphaATop),
              ippStsNoErr);
    EXPECT_EQ(V8(d, d + 4), (V8{64, 10, 41, 102}));
    ASSERT_EQ(ipp::ippiAlphaComp_8u_AC4R(first, 4, second, 4, d, 4, {1, 1}, ippAlphaOverPremul),
              ippStsNoErr);
    EXPECT_EQ(V8(d, d + 4), (V8{240, 30, 102, 194})) << "A + 0.4 B; alpha as for over";
}

// 16-bit samples take alphas in 0...65535: the 8-bit alphas a cross-fade passes are tiny
// fractions, which the family keeps (the caller relies on it).
TEST_F(Blend, SixteenBitAlphasAreFractionsOf65535)
{
    const Ipp16u a[] = {65535, 65535, 30000}, b[] = {65535, 0, 65535};
    Ipp16u d[3] = {};
    ASSERT_EQ(ipp::ippiAlphaCompC_16u_C1R(a, 6, 200, b, 6, 55, d, 6, {3, 1}, ippAlphaPlus),
              ippStsNoErr);
    // 200 + 55; 200; 30000 * 200 / 65535 + 55 = 91.55 + 55 = 146.55
    EXPECT_EQ(std::vector<Ipp16u>(d, d + 3), (std::vector<Ipp16u>{255, 200, 147}));
    ASSERT_EQ(ipp::ippiAlphaCompC_16u_C1R(a, 6, 65535, b, 6, 65535, d, 6, {3, 1}, ippAlphaPlus),
              ippStsNoErr);
    EXPECT_EQ(std::vector<Ipp16u>(d, d + 3), (std::vector<Ipp16u>{65535, 65535, 65535}));
}

// Runs one constant-alpha compositing primitive with every level this machine has on the same
// sources and expects the reference's samples (the vector kernels divide by max^2 through
// reciprocals whose error bounds must keep every rounding exact).
template <class T>
void ExpectEveryLevelMatches(const char* name, const std::vector<T>& a, const std::vector<T>& b,
                             int width, const std::vector<std::array<int, 2>>& alphas,
                             const std::vector<int>& types = {ippAlphaOver, ippAlphaIn, ippAlphaOut,
                                                              ippAlphaATop, ippAlphaXor})
{
    const prim::TFXPrimitiveInfo* p = prim::FXFindPrimitive(name);
    ASSERT_NE(p, nullptr) << name;
    std::vector<T> expected(a.size()), actual(a.size());
    prim::TFXShapeArgs args;
    args.Src = a.data();
    args.Src2 = b.data();
    const int channels = prim::FXChannels(p->Layout);
    args.SrcStep = args.Src2Step = args.DstStep = width * channels * int(sizeof(T));
    args.Roi = {width, int(a.size()) / (width * channels)};
    for (int type : types)
        for (const auto& [alpha1, alpha2] : alphas) {
            args.AlphaType = type;
            args.Values[0] = alpha1, args.Values[1] = alpha2;
            args.Dst = expected.data();
            ASSERT_EQ(prim::FXCallShape(p->Shape, p->Sample, p->At(TFXSimdLevel::Ref), args),
                      ippStsNoErr);
            for (TFXSimdLevel level : kFXAllSimdLevels) {
                if (level == TFXSimdLevel::Ref || !p->Has(level) || !FXCpuSupports(level))
                    continue;
                args.Dst = actual.data();
                ASSERT_EQ(prim::FXCallShape(p->Shape, p->Sample, p->At(level), args), ippStsNoErr);
                const auto at = std::mismatch(actual.begin(), actual.end(), expected.begin());
                ASSERT_TRUE(at.first == actual.end())
                    << name << " at " << FXLevelName(level) << ", type " << type << ", alphas "
                    << alpha1 << "/" << alpha2 << ": samples " << a[at.first - actual.begin()]
                    << ", " << b[at.first - actual.begin()];
            }
        }
}

// 8-bit: every pair of samples, under rules whose weights are not multiples of 255.
TEST(BlendLevels, ConstantAlphasRoundLikeTheReferenceForEverySamplePair)
{
    std::vector<Ipp8u> a(65536), b(65536);
    for (int i = 0; i < 65536; ++i)
        a[i] = Ipp8u(i), b[i] = Ipp8u(i >> 8);
    ExpectEveryLevelMatches<Ipp8u>(
        "ippiAlphaCompC_8u_C1R", a, b, 256,
        {{1, 254}, {37, 200}, {100, 77}, {128, 128}, {201, 3}, {254, 255}, {255, 1}, {13, 131}});
}

// Per-pixel alphas: every pair of alphas, with each pixel's colour samples spread over the
// range, under every rule (premultiplied ones take other weights in the alpha lanes).
TEST(BlendLevels, PixelAlphasRoundLikeTheReferenceForEveryAlphaPair)
{
    std::vector<Ipp8u> a(65536 * 4), b(65536 * 4);
    for (int i = 0; i < 65536; ++i) {
        for (int c = 0; c < 3; ++c)
            a[4 * i + c] = Ipp8u(i * 7 + c * 85), b[4 * i + c] = Ipp8u(i * 13 + c * 29 + 5);
        a[4 * i + 3] = Ipp8u(i), b[4 * i + 3] = Ipp8u(i >> 8);
    }
    std::vector<int> everyRule(12);
    std::iota(everyRule.begin(), everyRule.end(), 0);
    ExpectEveryLevelMatches<Ipp8u>("ippiAlphaComp_8u_AC4R", a, b, 256, {{0, 0}}, everyRule);
}

// 16-bit: random samples and alphas (the double-precision path).
TEST(BlendLevels, SixteenBitConstantAlphasMatchTheReference)
{
    std::mt19937 rng(7);
    std::vector<Ipp16u> a(1 << 18), b(1 << 18);
    for (std::size_t i = 0; i < a.size(); ++i)
        a[i] = Ipp16u(rng()), b[i] = Ipp16u(rng());
    std::vector<std::array<int, 2>> alphas = {{65535, 1}, {1, 65535}, {32768, 32767}};
    for (int k = 0; k < 8; ++k)
        alphas.push_back({int(rng() % 65536), int(rng() % 65536)});
    // Plus with large alphas saturates through the double-precision path.
    ExpectEveryLevelMatches<Ipp16u>("ippiAlphaCompC_16u_C1R", a, b, 512, alphas,
                                    {ippAlphaOver, ippAlphaIn, ippAlphaOut, ippAlphaATop,
                                     ippAlphaXor, ippAlphaPlus, ippAlphaXorPremul});
}

// SD + alpha (S - SD) with one rounding: 22.375 + 0.3 * 37.625 is 33.6625004..., which a
// separate product and sum would round to the float below.
TEST_F(Blend, AccumulationIsOneFusedMultiplyAdd)
{
    const Ipp8u src[] = {60, 20, 255};
    Ipp32f acc[] = {22.375f, 10.0f, -1.0f};
    ASSERT_EQ(ipp::ippiAddWeighted_8u32f_C1IR(src, 3, acc, 12, {3, 1}, 0.3f), ippStsNoErr);
    EXPECT_EQ(acc[0], 0x1.0d4ccep+5f);
    EXPECT_FLOAT_EQ(acc[1], 13.0f);
    EXPECT_FLOAT_EQ(acc[2], -1.0f + 0.3f * 256.0f) << "no clamping";
    const Ipp16u wide[] = {65535};
    Ipp32f big[] = {0.0f};
    ASSERT_EQ(ipp::ippiAddWeighted_16u32f_C1IR(wide, 2, big, 4, {1, 1}, 1.0f), ippStsNoErr);
    EXPECT_EQ(big[0], 65535.0f);
}

} // namespace
} // namespace framix::test
