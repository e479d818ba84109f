// SPDX-License-Identifier: MIT
// Bitwise logic on tiny images with hand-computed bytes, called through the bound IPP-named
// variables.
#include "framework/primitives/dispatch/Fxbasicdispatcher.h"
#include "tests/primitives/support/FXBoundPrimitivesTest.h"

#include <gtest/gtest.h>

#include <vector>

namespace framix::test {
namespace {

using V8 = std::vector<Ipp8u>;

class Logic : public TFXBoundPrimitivesTest {};

TEST_F(Logic, BitwiseOperationsWorkOnEveryByte)
{
    const Ipp8u a[] = {0xF0, 0x0F, 0xAA}, b[] = {0xCC, 0xFF, 0x55};
    Ipp8u d[3] = {};
    ASSERT_EQ(ipp::ippiAnd_8u_C3R(a, 3, b, 3, d, 3, {1, 1}), ippStsNoErr);
    EXPECT_EQ(V8(d, d + 3), (V8{0xC0, 0x0F, 0x00}));
    ASSERT_EQ(ipp::ippiOr_8u_C1R(a, 3, b, 3, d, 3, {3, 1}), ippStsNoErr);
    EXPECT_EQ(V8(d, d + 3), (V8{0xFC, 0xFF, 0xFF}));
    ASSERT_EQ(ipp::ippiXor_8u_C1R(a, 3, b, 3, d, 3, {3, 1}), ippStsNoErr);
    EXPECT_EQ(V8(d, d + 3), (V8{0x3C, 0xF0, 0xFF}));
    // 16-bit samples: both bytes of each sample.
    const Ipp16u wa[] = {0xF00F, 0x1234}, wb[] = {0x0FF0, 0xFF00};
    Ipp16u wd[2] = {};
    ASSERT_EQ(ipp::ippiXor_16u_C1R(wa, 4, wb, 4, wd, 4, {2, 1}), ippStsNoErr);
    EXPECT_EQ(wd[0], 0xFFFF);
    EXPECT_EQ(wd[1], 0xED34);
}

// AC4 computes the colour bytes only; the destination keeps its alpha, in place or not.
TEST_F(Logic, Ac4LeavesTheAlphaAlone)
{
    const Ipp8u src[] = {0xFF, 0x0F, 0x01, 0x00, 0x80, 0x80, 0x80, 0xFF};
    Ipp8u srcDst[] = {0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88};
    ASSERT_EQ(ipp::ippiOr_8u_AC4IR(src, 8, srcDst, 8, {2, 1}), ippStsNoErr);
    EXPECT_EQ(V8(srcDst, srcDst + 8), (V8{0xFF, 0x2F, 0x33, 0x44, 0xD5, 0xE6, 0xF7, 0x88}));
    ASSERT_EQ(ipp::ippiNot_8u_AC4IR(srcDst, 8, {2, 1}), ippStsNoErr);
    EXPECT_EQ(V8(srcDst, srcDst + 8), (V8{0x00, 0xD0, 0xCC, 0x44, 0x2A, 0x19, 0x08, 0x88}));
    Ipp8u dst[8] = {0, 0, 0, 9, 0, 0, 0, 9};
    ASSERT_EQ(ipp::ippiXor_8u_AC4R(src, 8, srcDst, 8, dst, 8, {2, 1}), ippStsNoErr);
    EXPECT_EQ(V8(dst, dst + 8), (V8{0xFF, 0xDF, 0xCD, 9, 0xAA, 0x99, 0x88, 9}));
}

// In place over a ROI inside a larger image: the bytes beside the ROI stay.
TEST_F(Logic, InPlaceFormsTouchOnlyTheRoi)
{
    const Ipp8u mask[] = {0x0F, 0x0F, 0x0F, 0x0F};
    Ipp8u image[] = {0xAB, 0xCD, 0xEF, //
                     0x12, 0x34, 0x56};
    ASSERT_EQ(ipp::ippiAnd_8u_C1IR(mask, 2, image + 1, 3, {2, 2}), ippStsNoErr);
    EXPECT_EQ(V8(image, image + 6), (V8{0xAB, 0x0D, 0x0F, 0x12, 0x04, 0x06}));
    ASSERT_EQ(ipp::ippiXor_8u_C3IR(mask, 3, image, 3, {1, 1}), ippStsNoErr);
    EXPECT_EQ(V8(image, image + 6), (V8{0xA4, 0x02, 0x00, 0x12, 0x04, 0x06}));
}

} // namespace
} // namespace framix::test
