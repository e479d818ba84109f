// SPDX-License-Identifier: MIT
// Separable row and column filters on tiny images with hand-computed bytes, called through the
// bound IPP-named variables.
#include "framework/primitives/dispatch/FXPrimitiveLayer.h"
#include "framework/primitives/dispatch/Fxbasicdispatcher.h"

#include <gtest/gtest.h>

#include <vector>

namespace framix::test {
namespace {

class FilterSeparable : public testing::Test {
protected:
    void SetUp() override { FXStartPrimitiveLayer(); }
};

// The kernel runs in inverse order: pKernel[0] weights the rightmost pixel x + xAnchor.
TEST_F(FilterSeparable, RowKernelRunsInInverseOrder)
{
    const Ipp8u src[] = {10, 20, 30, 40, 50};
    const Ipp32f pick0[] = {1.0f, 0.0f, 0.0f};
    Ipp8u dst[3] = {};
    // ROI starts at src[2]; anchor 1: taps x+1 (k0), x (k1), x-1 (k2)
    ASSERT_EQ(ipp::ippiFilterRow32f_8u_C1R(src + 1, 5, dst, 3, {3, 1}, pick0, 3, 1), ippStsNoErr);
    EXPECT_EQ(std::vector<Ipp8u>(dst, dst + 3), (std::vector<Ipp8u>{30, 40, 50}));
    const Ipp32f pick2[] = {0.0f, 0.0f, 1.0f};
    ASSERT_EQ(ipp::ippiFilterRow32f_8u_C1R(src + 1, 5, dst, 3, {3, 1}, pick2, 3, 1), ippStsNoErr);
    EXPECT_EQ(std::vector<Ipp8u>(dst, dst + 3), (std::vector<Ipp8u>{10, 20, 30}));
}

// pKernel[0] weights the lowest row y + yAnchor.
TEST_F(FilterSeparable, ColumnKernelRunsInInverseOrder)
{
    const Ipp8u src[] = {1, 2, 3, 4, 5};
    const Ipp32f kernel[] = {100.0f, 10.0f, 1.0f};
    Ipp8u dst[1] = {};
    // rows y+2 (x100), y+1 (x10), y (x1) of a one-column image: 300 + 20 + 1 saturates
    ASSERT_EQ(ipp::ippiFilterColumn32f_8u_C1R(src, 1, dst, 1, {1, 1}, kernel, 3, 2), ippStsNoErr);
    EXPECT_EQ(dst[0], 255);
    const Ipp32f small[] = {10.0f, 1.0f, 0.5f};
    // rows y+1 (x10), y (x1), y-1 (x0.5) around src[2]: 40 + 3 + 1 = 44
    ASSERT_EQ(ipp::ippiFilterColumn32f_8u_C1R(src + 2, 1, dst, 1, {1, 1}, small, 3, 1),
              ippStsNoErr);
    EXPECT_EQ(dst[0], 44);
}

// Float sums convert to the nearest integer, halves to even, clamped to the sample range.
TEST_F(FilterSeparable, SumsRoundHalvesToEvenAndSaturate)
{
    const Ipp8u src[] = {1, 2, 3, 4, 5};
    const Ipp32f half[] = {0.5f, 0.5f};
    Ipp8u dst[4] = {};
    ASSERT_EQ(ipp::ippiFilterRow32f_8u_C1R(src + 1, 5, dst, 4, {4, 1}, half, 2, 0), ippStsNoErr);
    // (2+1)/2 = 1.5 -> 2, 2.5 -> 2, 3.5 -> 4, 4.5 -> 4
    EXPECT_EQ(std::vector<Ipp8u>(dst, dst + 4), (std::vector<Ipp8u>{2, 2, 4, 4}));
    const Ipp32f negative[] = {-1.0f};
    ASSERT_EQ(ipp::ippiFilterRow32f_8u_C1R(src, 5, dst, 4, {4, 1}, negative, 1, 0), ippStsNoErr);
    EXPECT_EQ(std::vector<Ipp8u>(dst, dst + 4), (std::vector<Ipp8u>{0, 0, 0, 0}));
    const Ipp16u wide[] = {40000, 50000};
    const Ipp32f two[] = {2.0f};
    Ipp16u out[2] = {};
    ASSERT_EQ(ipp::ippiFilterColumn32f_16u_C1R(wide, 4, out, 4, {2, 1}, two, 1, 0), ippStsNoErr);
    EXPECT_EQ(out[0], 65535) << "16-bit results saturate at 65535, not 255";
    const Ipp32f third[] = {1.0f / 3.0f};
    ASSERT_EQ(ipp::ippiFilterRow32f_16u_C1R(wide, 4, out, 4, {2, 1}, third, 1, 0), ippStsNoErr);
    EXPECT_EQ(std::vector<Ipp16u>(out, out + 2), (std::vector<Ipp16u>{13333, 16667}));
}

TEST_F(FilterSeparable, ColourChannelsAreFilteredIndependently)
{
    const Ipp8u rgb[] = {10, 20, 30, 50, 60, 70};
    const Ipp32f avg[] = {0.5f, 0.5f};
    Ipp8u dst[3] = {};
    ASSERT_EQ(ipp::ippiFilterRow32f_8u_C3R(rgb + 3, 6, dst, 3, {1, 1}, avg, 2, 0), ippStsNoErr);
    EXPECT_EQ(std::vector<Ipp8u>(dst, dst + 3), (std::vector<Ipp8u>{30, 40, 50}));
    const Ipp8u rgba[] = {10, 20, 30, 40, 50, 60, 70, 81};
    Ipp8u out[4] = {};
    ASSERT_EQ(ipp::ippiFilterColumn32f_8u_C4R(rgba + 4, 4, out, 4, {1, 1}, avg, 2, 0), ippStsNoErr);
    EXPECT_EQ(std::vector<Ipp8u>(out, out + 4), (std::vector<Ipp8u>{30, 40, 50, 60}))
        << "C4 filters the fourth channel too (60.5 -> 60)";
}

} // namespace
} // namespace framix::test
