// SPDX-License-Identifier: MIT
// Threshold on small images with hand-computed samples, called through the bound IPP-named
// variables.
#include "framework/primitives/dispatch/FXPrimitiveLayer.h"
#include "framework/primitives/dispatch/Fxdispatcher.h"

#include <gtest/gtest.h>

#include <vector>

namespace framix::test {
namespace {

class Threshold : public testing::Test {
protected:
    void SetUp() override { FXStartPrimitiveLayer(); }
};

// Two RGB pixels; limits and values per channel in storage order.
const Ipp8u kRgb[] = {10, 128, 250, 129, 127, 30};

// Comparisons are strict: a sample equal to its limit stays.
TEST_F(Threshold, ReplacesSamplesStrictlyBeyondTheirChannelsLimit)
{
    Ipp8u out[6] = {};
    const Ipp8u limit[3] = {10, 128, 200}, value[3] = {1, 2, 3};
    ASSERT_EQ(ipp::ippiThreshold_GTVal_8u_C3R(kRgb, 6, out, 6, {2, 1}, limit, value), ippStsNoErr);
    EXPECT_EQ(std::vector<Ipp8u>(out, out + 6), (std::vector<Ipp8u>{10, 128, 3, 1, 127, 30}));
    ASSERT_EQ(ipp::ippiThreshold_LTVal_8u_C3R(kRgb, 6, out, 6, {2, 1}, limit, value), ippStsNoErr);
    EXPECT_EQ(std::vector<Ipp8u>(out, out + 6), (std::vector<Ipp8u>{10, 128, 250, 129, 2, 3}));
}

TEST_F(Threshold, BothLimitsReplaceBelowAndAboveAndKeepTheBand)
{
    Ipp8u out[6] = {};
    const Ipp8u low[3] = {11, 128, 30}, lowValue[3] = {0, 0, 0};
    const Ipp8u high[3] = {128, 128, 249}, highValue[3] = {255, 255, 255};
    ASSERT_EQ(ipp::ippiThreshold_LTValGTVal_8u_C3R(kRgb, 6, out, 6, {2, 1}, low, lowValue, high,
                                                   highValue),
              ippStsNoErr);
    EXPECT_EQ(std::vector<Ipp8u>(out, out + 6), (std::vector<Ipp8u>{0, 128, 255, 255, 0, 30}));
}

// AC4: the destination's alpha keeps its bytes; it is neither thresholded nor copied.
TEST_F(Threshold, Ac4LeavesTheDestinationAlphaAlone)
{
    const Ipp8u rgba[] = {200, 5, 100, 250, 1, 2, 3, 0};
    Ipp8u out[8] = {0xEE, 0xEE, 0xEE, 0x11, 0xEE, 0xEE, 0xEE, 0x22};
    const Ipp8u limit[3] = {100, 100, 100}, value[3] = {7, 8, 9};
    ASSERT_EQ(ipp::ippiThreshold_GTVal_8u_AC4R(rgba, 8, out, 8, {2, 1}, limit, value), ippStsNoErr);
    EXPECT_EQ(std::vector<Ipp8u>(out, out + 8),
              (std::vector<Ipp8u>{7, 5, 100, 0x11, 1, 2, 3, 0x22}));
    ASSERT_EQ(
        ipp::ippiThreshold_LTValGTVal_8u_AC4R(rgba, 8, out, 8, {2, 1}, limit, value, limit, value),
        ippStsNoErr);
    EXPECT_EQ(std::vector<Ipp8u>(out, out + 8),
              (std::vector<Ipp8u>{7, 8, 100, 0x11, 7, 8, 9, 0x22}));
}

// A lower limit above its channel's upper one is an error that writes nothing.
TEST_F(Threshold, LowerLimitAboveUpperIsAnError)
{
    Ipp8u out[6] = {0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE};
    const Ipp8u low[3] = {0, 0, 51}, high[3] = {255, 255, 50}, value[3] = {};
    EXPECT_EQ(
        ipp::ippiThreshold_LTValGTVal_8u_C3R(kRgb, 6, out, 6, {2, 1}, low, value, high, value),
        ippStsThresholdErr);
    EXPECT_EQ(std::vector<Ipp8u>(out, out + 6), std::vector<Ipp8u>(6, 0xEE));
}

} // namespace
} // namespace framix::test
