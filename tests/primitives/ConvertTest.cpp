// SPDX-License-Identifier: MIT
// Sample type conversion: integers become floats exactly; floats become integers clamped first,
// then rounded as the round mode says.
#include "framework/primitives/dispatch/FXPrimitiveLayer.h"
#include "framework/primitives/dispatch/FXRealIpp.h"
#include "framework/primitives/dispatch/Fxdispatcher.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace framix::test {
namespace {

class Convert : public testing::Test {
protected:
    void SetUp() override { FXStartPrimitiveLayer(); }
};

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInf = std::numeric_limits<float>::infinity();

// The inputs where the modes differ, repeated past a vector at every level.
const std::vector<float> kInputs = [] {
    const float base[] = {-3.7f,  -0.5f, 0.5f,  1.5f, 2.5f,     0.7f,     254.5f, 255.5f,
                          300.2f, kNaN,  -kInf, kInf, 65534.5f, 65535.5f, 1e20f,  127.49999f};
    std::vector<float> v;
    for (int rep = 0; rep < 5; ++rep)
        v.insert(v.end(), std::begin(base), std::end(base));
    return v;
}();

template <class T, class Fn> std::vector<int> Converted(Fn fn, IppRoundMode mode)
{
    const int n = int(kInputs.size());
    std::vector<T> out(n);
    EXPECT_EQ(fn(kInputs.data(), 4 * n, out.data(), int(sizeof(T)) * n, {n, 1}, mode), ippStsNoErr);
    std::vector<int> first(out.begin(), out.begin() + 16);
    if (FXRealIppActive()) // the real IPP's NaN result depends on its processor path
        first[9] = 0;
    return first;
}

// Zero truncates, nearest takes halves to even, financial takes halves away from zero; NaN and
// everything below 0 give 0, everything above the range its maximum.
TEST_F(Convert, FloatToIntegerClampsThenRoundsByMode)
{
    using V = std::vector<int>;
    EXPECT_EQ(Converted<Ipp8u>(ipp::ippiConvert_32f8u_C1R, ippRndZero),
              (V{0, 0, 0, 1, 2, 0, 254, 255, 255, 0, 0, 255, 255, 255, 255, 127}));
    EXPECT_EQ(Converted<Ipp8u>(ipp::ippiConvert_32f8u_C1R, ippRndNear),
              (V{0, 0, 0, 2, 2, 1, 254, 255, 255, 0, 0, 255, 255, 255, 255, 127}));
    EXPECT_EQ(Converted<Ipp8u>(ipp::ippiConvert_32f8u_C1R, ippRndFinancial),
              (V{0, 0, 1, 2, 3, 1, 255, 255, 255, 0, 0, 255, 255, 255, 255, 127}));
    EXPECT_EQ(Converted<Ipp16u>(ipp::ippiConvert_32f16u_C1R, ippRndNear),
              (V{0, 0, 0, 2, 2, 1, 254, 256, 300, 0, 0, 65535, 65534, 65535, 65535, 127}));
    EXPECT_EQ(Converted<Ipp16u>(ipp::ippiConvert_32f16u_C1R, ippRndFinancial),
              (V{0, 0, 1, 2, 3, 1, 255, 256, 300, 0, 0, 65535, 65535, 65535, 65535, 127}));
}

TEST_F(Convert, IntegersBecomeTheirFloatValues)
{
    const Ipp8u bytes[] = {0, 1, 128, 255};
    const Ipp16u words[] = {0, 1, 40000, 65535};
    Ipp32f out[4];
    ASSERT_EQ(ipp::ippiConvert_8u32f_C1R(bytes, 4, out, 16, {4, 1}), ippStsNoErr);
    EXPECT_EQ(std::vector<float>(out, out + 4), (std::vector<float>{0, 1, 128, 255}));
    ASSERT_EQ(ipp::ippiConvert_16u32f_C1R(words, 8, out, 16, {4, 1}), ippStsNoErr);
    EXPECT_EQ(std::vector<float>(out, out + 4), (std::vector<float>{0, 1, 40000, 65535}));
}

} // namespace
} // namespace framix::test
