// SPDX-License-Identifier: MIT
// Arithmetic on tiny images with hand-computed bytes, called through the bound IPP-named
// variables, and every 8-bit operand pair at every vector level.
#include "framework/primitives/FXPrimitiveRegistry.h"
#include "framework/primitives/dispatch/Fxbasicdispatcher.h"
#include "tests/primitives/support/FXBoundPrimitivesTest.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace framix::test {
namespace {

using V8 = std::vector<Ipp8u>;
using V16 = std::vector<Ipp16u>;

class Arithmetic : public TFXBoundPrimitivesTest {
protected:
    // One row: ipp::name(first, second) into a fresh destination.
    template <class Fn> static V8 Row(Fn fn, const V8& first, const V8& second, int sf = 0)
    {
        V8 dst(first.size(), 0xEE);
        const int n = int(first.size());
        EXPECT_GE(fn(first.data(), n, second.data(), n, dst.data(), n, {n, 1}, sf), 0);
        return dst;
    }
};

// IPP's operand order: the second source minus (divided by) the first, in place the
// destination minus (divided by) the source.
TEST_F(Arithmetic, SubtractionAndDivisionTakeTheSecondOperandFirst)
{
    EXPECT_EQ(Row(ipp::ippiSub_8u_C1RSfs, {10, 50, 0}, {30, 20, 0}), (V8{20, 0, 0}))
        << "30 - 10; 20 - 50 saturates";
    EXPECT_EQ(Row(ipp::ippiDiv_8u_C1RSfs, {4, 100}, {100, 4}), (V8{25, 0}));
    Ipp8u srcDst[8] = {100, 10, 60, 0, 100, 10, 60, 0};
    const Ipp8u src[8] = {30, 20, 3, 0, 30, 20, 3, 0};
    ASSERT_EQ(ipp::ippiSub_8u_AC4IRSfs(src, 8, srcDst, 8, {2, 1}, 0), ippStsNoErr);
    EXPECT_EQ(V8(srcDst, srcDst + 3), (V8{70, 0, 57}));
    Ipp8u dividend[4] = {100, 10, 60, 0};
    ASSERT_EQ(ipp::ippiDiv_8u_AC4IRSfs(src, 8, dividend, 4, {1, 1}, 0), ippStsNoErr);
    EXPECT_EQ(V8(dividend, dividend + 3), (V8{3, 0, 20})) << "100 / 30, 10 / 20 = 0.5, 60 / 3";
}

// Results are scaled by 2^-sf, rounded to nearest with halves to even, then saturated.
TEST_F(Arithmetic, ScaleFactorsRoundHalvesToEvenAndSaturate)
{
    // 1.5 -> 2, 0.5 -> 0, 1.5 -> 2, 2.5 -> 2, 3.5 -> 4
    EXPECT_EQ(Row(ipp::ippiAdd_8u_C1RSfs, {1, 1, 3, 5, 7}, {2, 0, 0, 0, 0}, 1),
              (V8{2, 0, 2, 2, 4}));
    EXPECT_EQ(Row(ipp::ippiAdd_8u_C1RSfs, {3, 100, 0}, {4, 28, 0}, -2), (V8{28, 255, 0}));
    // 255 * 255 / 256 = 254.004; 9 * 7 / 16 = 3.94; 3 * 3 / 2 = 4.5 -> 4
    EXPECT_EQ(Row(ipp::ippiMul_8u_C1RSfs, {255, 9, 3}, {255, 7, 3}, 8), (V8{254, 0, 0}));
    EXPECT_EQ(Row(ipp::ippiMul_8u_C1RSfs, {255, 9, 3}, {255, 7, 3}, 1), (V8{255, 32, 4}));
    // Scale factors far outside any useful range: zero, or saturation of nonzero results.
    EXPECT_EQ(Row(ipp::ippiAdd_8u_C1RSfs, {200, 0}, {100, 0}, 1000), (V8{0, 0}));
    EXPECT_EQ(Row(ipp::ippiAdd_8u_C1RSfs, {200, 0, 1}, {100, 0, 0}, -1000), (V8{255, 0, 255}));

    const Ipp16u a[] = {65535, 40000, 3, 65535}, b[] = {65535, 40000, 5, 1};
    Ipp16u d[4] = {};
    ASSERT_EQ(ipp::ippiMul_16u_C1RSfs(a, 8, b, 8, d, 8, {4, 1}, 16), ippStsNoErr);
    // 65535^2 / 2^16 = 65534.00002; 1.6e9 / 2^16 = 24414.06; 15 / 2^16; 65535 / 2^16 = 0.99998
    EXPECT_EQ(V16(d, d + 4), (V16{65534, 24414, 0, 1}));
    ASSERT_EQ(ipp::ippiAdd_16u_C1RSfs(a, 8, b, 8, d, 8, {4, 1}, 0), ippStsNoErr);
    EXPECT_EQ(V16(d, d + 4), (V16{65535, 65535, 8, 65535})) << "16-bit sums saturate at 65535";
}

// The exact quotient, rounded halves to even; x / 0 gives the largest value, 0 / 0 gives 0,
// and either is a warning after which every sample is still written.
TEST_F(Arithmetic, DivisionRoundsTheExactQuotientAndWarnsOnZeroDivisors)
{
    // 5/2 = 2.5 -> 2, 7/2 = 3.5 -> 4, 1/3 -> 0, 2/3 -> 1, 175/10 = 17.5 -> 18
    EXPECT_EQ(Row(ipp::ippiDiv_8u_C1RSfs, {2, 2, 3, 3, 10}, {5, 7, 1, 2, 175}),
              (V8{2, 4, 0, 1, 18}));
    EXPECT_EQ(Row(ipp::ippiDiv_8u_C1RSfs, {2, 2}, {5, 255}, -1), (V8{5, 255}));
    V8 dst(4, 0xEE);
    const V8 divisor = {0, 0, 7, 1}, dividend = {9, 0, 21, 200};
    EXPECT_EQ(
        ipp::ippiDiv_8u_C1RSfs(divisor.data(), 4, dividend.data(), 4, dst.data(), 4, {4, 1}, 0),
        ippStsDivByZero);
    EXPECT_EQ(dst, (V8{255, 0, 3, 200}));

    const Ipp16u a[] = {0, 2, 2, 3}, b[] = {9, 65535, 65533, 65535};
    Ipp16u d[4] = {};
    EXPECT_EQ(ipp::ippiDiv_16u_C1RSfs(a, 8, b, 8, d, 8, {4, 1}, 0), ippStsDivByZero);
    // 32767.5 -> 32768 (even), 32766.5 -> 32766, 21845
    EXPECT_EQ(V16(d, d + 4), (V16{65535, 32768, 32766, 21845}));
}

// AC4 leaves the destination's alpha alone, and a zero alpha divisor is no division by zero.
TEST_F(Arithmetic, Ac4KeepsTheDestinationAlpha)
{
    const Ipp8u a[] = {1, 2, 3, 0, 4, 5, 6, 0};
    const Ipp8u b[] = {10, 20, 30, 99, 40, 50, 60, 0};
    Ipp8u d[] = {0, 0, 0, 7, 0, 0, 0, 8};
    ASSERT_EQ(ipp::ippiAdd_8u_AC4RSfs(a, 8, b, 8, d, 8, {2, 1}, 0), ippStsNoErr);
    EXPECT_EQ(V8(d, d + 8), (V8{11, 22, 33, 7, 44, 55, 66, 8}));
    Ipp8u srcDst[] = {10, 20, 30, 99, 40, 50, 60, 0};
    EXPECT_EQ(ipp::ippiDiv_8u_AC4IRSfs(a, 8, srcDst, 8, {2, 1}, 0), ippStsNoErr);
    EXPECT_EQ(V8(srcDst, srcDst + 8), (V8{10, 10, 10, 99, 10, 10, 10, 0}));
}

// d = floor(s * v / max): the constant is a fraction of the largest value, truncated.
TEST_F(Arithmetic, MulCScaleTruncatesTheFraction)
{
    const Ipp8u s[] = {1, 255, 3, 127, 200, 200};
    const Ipp8u value[] = {128, 254, 85};
    Ipp8u d[6] = {};
    ASSERT_EQ(ipp::ippiMulCScale_8u_C3R(s, 6, value, d, 6, {2, 1}), ippStsNoErr);
    // 0.502 -> 0, 254, 1, then 127 * 128 / 255 = 63.75, 200 * 254 / 255 = 199.2, 66.7
    EXPECT_EQ(V8(d, d + 6), (V8{0, 254, 1, 63, 199, 66}));
    Ipp8u image[] = {10, 20, 30, 40};
    const Ipp8u quarter[] = {255, 0, 128, 64};
    ASSERT_EQ(ipp::ippiMulCScale_8u_C4IR(quarter, image, 4, {1, 1}), ippStsNoErr);
    EXPECT_EQ(V8(image, image + 4), (V8{10, 0, 15, 10})) << "C4 scales the fourth channel";
    ASSERT_EQ(ipp::ippiMulCScale_8u_C1IR(255, image, 4, {4, 1}), ippStsNoErr);
    EXPECT_EQ(V8(image, image + 4), (V8{10, 0, 15, 10})) << "255 is the identity";

    Ipp16u wide[] = {65535, 65535, 32768, 1000};
    ASSERT_EQ(ipp::ippiMulCScale_16u_C1IR(65280, wide, 8, {1, 1}), ippStsNoErr);
    EXPECT_EQ(wide[0], 65280);
    ASSERT_EQ(ipp::ippiMulCScale_16u_C1IR(1, wide + 1, 8, {3, 1}), ippStsNoErr);
    EXPECT_EQ(V16(wide + 1, wide + 4), (V16{1, 0, 0}));
}

TEST_F(Arithmetic, AbsDiffAndMaxStayInsideTheRoi)
{
    const auto absDiff = [](const Ipp8u* a, int as, const Ipp8u* b, int bs, Ipp8u* d, int ds,
                            IppiSize roi,
                            int) { return ipp::ippiAbsDiff_8u_C1R(a, as, b, bs, d, ds, roi); };
    EXPECT_EQ(Row(absDiff, {0, 200, 7}, {255, 50, 7}), (V8{255, 150, 0}));
    const Ipp16u a[] = {0, 60000}, b[] = {65535, 1};
    Ipp16u d[2] = {};
    ASSERT_EQ(ipp::ippiAbsDiff_16u_C1R(a, 4, b, 4, d, 4, {2, 1}), ippStsNoErr);
    EXPECT_EQ(V16(d, d + 2), (V16{65535, 59999}));
    // Two rows of 3 in rows of 5 bytes: the padding's 255 is not part of the image.
    const Ipp8u image[] = {3, 90, 7, 255, 255, 12, 4, 91, 255, 255};
    Ipp8u max = 0;
    ASSERT_EQ(ipp::ippiMax_8u_C1R(image, 5, {3, 2}, &max), ippStsNoErr);
    EXPECT_EQ(max, 91);
}

// The null value array of the constant forms, which the generic status test cannot reach.
TEST_F(Arithmetic, MissingConstantsAreNullPointerErrors)
{
    Ipp8u image[4] = {};
    EXPECT_EQ(ipp::ippiMulCScale_8u_C3IR(nullptr, image, 4, {1, 1}), ippStsNullPtrErr);
    EXPECT_EQ(ipp::ippiMulCScale_8u_C4R(image, 4, nullptr, image, 4, {1, 1}), ippStsNullPtrErr);
}

// Every operand pair and a range of scale factors, each vector level against the reference:
// the random tests meet exact halves and saturation edges only by chance.
TEST(ArithmeticLevels, EveryEightBitPairAgreesWithTheReference)
{
    V8 first(65536), second(65536);
    for (int i = 0; i < 65536; ++i)
        first[i] = Ipp8u(i), second[i] = Ipp8u(i >> 8);
    using TFn = IppStatus (*)(const Ipp8u*, int, const Ipp8u*, int, Ipp8u*, int, IppiSize, int);
    for (const char* name :
         {"ippiAdd_8u_C1RSfs", "ippiSub_8u_C1RSfs", "ippiMul_8u_C1RSfs", "ippiDiv_8u_C1RSfs"}) {
        const prim::TFXPrimitiveInfo* p = prim::FXFindPrimitive(name);
        ASSERT_NE(p, nullptr);
        const auto ref = reinterpret_cast<TFn>(p->At(TFXSimdLevel::Ref));
        for (int sf : {-17, -9, -8, -3, -1, 0, 1, 2, 3, 7, 8, 9, 15, 16, 17, 31})
            for (TFXSimdLevel level :
                 {TFXSimdLevel::Sse41, TFXSimdLevel::Avx2, TFXSimdLevel::Avx512}) {
                if (!FXCpuSupports(level) || !p->Has(level))
                    continue;
                V8 expected(65536), actual(65536);
                const IppStatus s = ref(first.data(), 256, second.data(), 256, expected.data(), 256,
                                        {256, 256}, sf);
                ASSERT_EQ(reinterpret_cast<TFn>(p->At(level))(first.data(), 256, second.data(), 256,
                                                              actual.data(), 256, {256, 256}, sf),
                          s);
                ASSERT_TRUE(actual == expected)
                    << name << " at " << FXLevelName(level) << ", scale factor " << sf;
            }
    }
}

// 16-bit quotients at, just below and just above exact halves, for divisors across the range:
// where a float quotient is least sure to round right.
TEST(ArithmeticLevels, SixteenBitQuotientsNearHalvesAgreeWithTheReference)
{
    V16 divisor, dividend;
    for (int a = 2; a < 65536; a = a * 3 / 2 + 1)
        for (int m : {0, 1, 2, 7, 100, 1000, 30000})
            for (int d : {-1, 0, 1}) {
                const long long b = (long long)a * m + a / 2 + d;
                if (b >= 0 && b <= 65535)
                    divisor.push_back(Ipp16u(a)), dividend.push_back(Ipp16u(b));
            }
    const int n = int(divisor.size());
    const prim::TFXPrimitiveInfo* p = prim::FXFindPrimitive("ippiDiv_16u_C1RSfs");
    ASSERT_NE(p, nullptr);
    using TFn = IppStatus (*)(const Ipp16u*, int, const Ipp16u*, int, Ipp16u*, int, IppiSize, int);
    for (int sf : {0, 1, 3})
        for (TFXSimdLevel level : {TFXSimdLevel::Sse41, TFXSimdLevel::Avx2, TFXSimdLevel::Avx512}) {
            if (!FXCpuSupports(level) || !p->Has(level))
                continue;
            V16 expected(n), actual(n);
            const int step = n * 2;
            reinterpret_cast<TFn>(p->At(TFXSimdLevel::Ref))(
                divisor.data(), step, dividend.data(), step, expected.data(), step, {n, 1}, sf);
            ASSERT_EQ(reinterpret_cast<TFn>(p->At(level))(divisor.data(), step, dividend.data(),
                                                          step, actual.data(), step, {n, 1}, sf),
                      ippStsNoErr);
            EXPECT_TRUE(actual == expected) << FXLevelName(level) << ", scale factor " << sf;
        }
}

} // namespace
} // namespace framix::test
