// SPDX-License-Identifier: MIT
// Signal primitives: IPP's scaling (exact 64-bit result, halves to even, saturation), shifts
// that keep the sign, and the polar conversion against the C library.
#include "framework/primitives/dispatch/FXPrimitiveLayer.h"
#include "framework/primitives/dispatch/Fxsdispatcher.h"
#include "framework/primitives/dispatch/Qnbasicdispatcher.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <vector>

namespace framix::test {
namespace {

using TInts = std::vector<Ipp32s>;

class Signal : public testing::Test {
protected:
    void SetUp() override { FXStartPrimitiveLayer(); }
};

// 24 elements: whole vectors and a tail at every level; the checked ones come first.
TInts Padded(TInts v)
{
    v.resize(24, 0);
    return v;
}

// Results observed from IPP 2022 for each scale factor.
TEST_F(Signal, ScaledSumRoundsHalvesToEvenAndSaturates)
{
    const TInts src = Padded({1, 3, 5, -1, INT_MAX, INT_MIN});
    const TInts dst = Padded({0, 0, 0, -2, INT_MAX, INT_MIN});
    const struct {
        int Sf;
        TInts Expected;
    } cases[] = {{0, {1, 3, 5, -3, INT_MAX, INT_MIN}},
                 {1, {0, 2, 2, -2, INT_MAX, INT_MIN}},
                 {2, {0, 1, 1, -1, 1073741824, -1073741824}},
                 {-1, {2, 6, 10, -6, INT_MAX, INT_MIN}},
                 {32, {0, 0, 0, 0, 1, -1}},
                 {33, {0, 0, 0, 0, 0, 0}}};
    for (const auto& c : cases) {
        TInts v = dst;
        ASSERT_EQ(ipp::ippsAdd_32s_ISfs(src.data(), v.data(), 24, c.Sf), ippStsNoErr);
        EXPECT_EQ(TInts(v.begin(), v.begin() + 6), c.Expected) << "scale factor " << c.Sf;
    }
}

TEST_F(Signal, ScaledProductIsExactBeforeRounding)
{
    TInts v = Padded({3, 5, -3, -5, -7});
    ASSERT_EQ(ipp::ippsMulC_32s_ISfs(3, v.data(), 24, 1), ippStsNoErr);
    EXPECT_EQ(TInts(v.begin(), v.begin() + 5), (TInts{4, 8, -4, -8, -10}));
    // constants beyond 2^21: products past 2^53 still round exactly
    v = Padded({INT_MAX, INT_MIN, 65536, -65536});
    ASSERT_EQ(ipp::ippsMulC_32s_ISfs(INT_MIN, v.data(), 24, 31), ippStsNoErr);
    EXPECT_EQ(TInts(v.begin(), v.begin() + 4), (TInts{-INT_MAX, INT_MAX, -65536, 65536}));
    v = Padded({1 << 20, 3});
    ASSERT_EQ(ipp::ippsMulC_32s_ISfs(1 << 22, v.data(), 24, -4), ippStsNoErr);
    EXPECT_EQ(TInts(v.begin(), v.begin() + 2), (TInts{INT_MAX, 3 << 26}));
}

TEST_F(Signal, RightShiftKeepsTheSignAndStopsAtIt)
{
    for (const auto [shift, expected] :
         {std::pair{1, TInts{-4, 3, INT_MIN / 2, INT_MAX / 2}}, std::pair{31, TInts{-1, 0, -1, 0}},
          std::pair{100, TInts{-1, 0, -1, 0}}}) {
        TInts v = Padded({-7, 7, INT_MIN, INT_MAX});
        ASSERT_EQ(ipp::ippsRShiftC_32s_I(shift, v.data(), 24), ippStsNoErr);
        EXPECT_EQ(TInts(v.begin(), v.begin() + 4), expected) << "shift " << shift;
    }
}

// Within a few units in the last place of the C library's sine and cosine, at phases small,
// large and beyond the reduction's range (where the C library takes over).
TEST_F(Signal, PolarToCartMatchesTheCLibraryToAFewUlps)
{
    std::vector<double> magn, phase;
    for (int i = 0; i < 400; ++i) {
        magn.push_back(1.0 + i * 0.25);
        phase.push_back(i % 3 == 0 ? -i * 0.37 : i % 3 == 1 ? i * 811.3 : i * 1e5);
    }
    const int n = int(magn.size());
    std::vector<double> re(n), im(n);
    ASSERT_EQ(ipp::ippsPolarToCart_64f(magn.data(), phase.data(), re.data(), im.data(), n),
              ippStsNoErr);
    for (int i = 0; i < n; ++i) {
        const double c = magn[i] * std::cos(phase[i]), s = magn[i] * std::sin(phase[i]);
        EXPECT_NEAR(re[i], c, 4 * magn[i] * 2.3e-16) << "phase " << phase[i];
        EXPECT_NEAR(im[i], s, 4 * magn[i] * 2.3e-16) << "phase " << phase[i];
    }
    const double exact[] = {0.0, 2.0}, zero[] = {0.0, 0.0};
    double r[2], m[2];
    ASSERT_EQ(ipp::ippsPolarToCart_64f(exact, zero, r, m, 2), ippStsNoErr);
    EXPECT_EQ(r[1], 2.0);
    EXPECT_EQ(m[1], 0.0);
}

} // namespace
} // namespace framix::test
