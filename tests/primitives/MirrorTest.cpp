// SPDX-License-Identifier: MIT
// Mirroring: which axis each IppiAxis value names, whole pixels moving with their channel order,
// AC4's untouched alpha, and the in-place form agreeing with the copying one.
#include "framework/primitives/dispatch/FXPrimitiveLayer.h"
#include "framework/primitives/dispatch/Fxbasicdispatcher.h"

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

namespace framix::test {
namespace {

using TBytes = std::vector<Ipp8u>;

class Mirror : public testing::Test {
protected:
    void SetUp() override { FXStartPrimitiveLayer(); }
};

// A 3x2 image  1 2 3 / 4 5 6.
TEST_F(Mirror, HorizontalAxisReversesRowsAndVerticalAxisReversesColumns)
{
    const TBytes src = {1, 2, 3, 4, 5, 6};
    TBytes dst(6);
    ASSERT_EQ(ipp::ippiMirror_8u_C1R(src.data(), 3, dst.data(), 3, {3, 2}, ippAxsHorizontal),
              ippStsNoErr);
    EXPECT_EQ(dst, (TBytes{4, 5, 6, 1, 2, 3}));
    ASSERT_EQ(ipp::ippiMirror_8u_C1R(src.data(), 3, dst.data(), 3, {3, 2}, ippAxsVertical),
              ippStsNoErr);
    EXPECT_EQ(dst, (TBytes{3, 2, 1, 6, 5, 4}));
    ASSERT_EQ(ipp::ippiMirror_8u_C1R(src.data(), 3, dst.data(), 3, {3, 2}, ippAxsBoth),
              ippStsNoErr);
    EXPECT_EQ(dst, (TBytes{6, 5, 4, 3, 2, 1}));
}

TEST_F(Mirror, PixelsMoveWholeAndAc4KeepsTheDestinationAlpha)
{
    const TBytes rgb = {1, 2, 3, 4, 5, 6};
    TBytes out3(6);
    ASSERT_EQ(ipp::ippiMirror_8u_C3R(rgb.data(), 6, out3.data(), 6, {2, 1}, ippAxsVertical),
              ippStsNoErr);
    EXPECT_EQ(out3, (TBytes{4, 5, 6, 1, 2, 3}));
    const TBytes rgba = {1, 2, 3, 4, 5, 6, 7, 8};
    TBytes out4(8, 0xEE);
    ASSERT_EQ(ipp::ippiMirror_8u_AC4R(rgba.data(), 8, out4.data(), 8, {2, 1}, ippAxsVertical),
              ippStsNoErr);
    EXPECT_EQ(out4, (TBytes{5, 6, 7, 0xEE, 1, 2, 3, 0xEE}));
    const Ipp16u words[] = {1000, 2000, 65535};
    Ipp16u outWords[3];
    ASSERT_EQ(ipp::ippiMirror_16u_C1R(words, 6, outWords, 6, {3, 1}, ippAxsVertical), ippStsNoErr);
    EXPECT_EQ(std::vector<Ipp16u>(outWords, outWords + 3),
              (std::vector<Ipp16u>{65535, 2000, 1000}));
}

// Odd and even sizes (a middle row or column that stays), widths past a vector and below one.
TEST_F(Mirror, InPlaceMirrorEqualsTheCopyingOneOnEveryAxis)
{
    for (const IppiSize size : {IppiSize{5, 3}, IppiSize{4, 4}, IppiSize{23, 7}, IppiSize{1, 2}})
        for (const IppiAxis axis : {ippAxsHorizontal, ippAxsVertical, ippAxsBoth}) {
            const int step = 4 * size.width + 3; // padded
            TBytes src(std::size_t(step) * size.height);
            std::iota(src.begin(), src.end(), Ipp8u(0));
            TBytes copied = src, inPlace = src;
            ASSERT_EQ(ipp::ippiMirror_8u_C4R(src.data(), step, copied.data(), step, size, axis),
                      ippStsNoErr);
            ASSERT_EQ(ipp::ippiMirror_8u_C4IR(inPlace.data(), step, size, axis), ippStsNoErr);
            EXPECT_EQ(inPlace, copied) << size.width << "x" << size.height << " axis " << axis;
            ASSERT_EQ(ipp::ippiMirror_8u_C4IR(inPlace.data(), step, size, axis), ippStsNoErr);
            EXPECT_EQ(inPlace, src) << "twice is the identity";
        }
}

} // namespace
} // namespace framix::test
