// SPDX-License-Identifier: MIT
// The Gaussian blur: its tables, the row pass that decides the output, formats and regions.
#include "filters/neighbourhood/FXGaussianBlur.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>

#include "framework/FXMakeGaussianKernel.h"
#include "tests/filters/neighbourhood/NeighbourhoodTestSupport.h"

namespace framix {
namespace {

using namespace test;

TEST(FXMakeGaussianKernel, SamplesANormalisedGaussianAtTheTapCentres)
{
    float five[5];
    FXMakeGaussianKernelS(five, 4, 0.0); // sigma fitted: 5 / 6
    EXPECT_NEAR(five[0], 0.0269f, 5e-5);
    EXPECT_NEAR(five[1], 0.2334f, 5e-5);
    EXPECT_NEAR(five[2], 0.4794f, 5e-5);
    EXPECT_EQ(five[0], five[4]);
    EXPECT_EQ(five[1], five[3]);
    EXPECT_NEAR(std::accumulate(five, five + 5, 0.0), 1.0, 1e-6);

    float three[3];
    FXMakeGaussianKernelS(three, 2, -1.0); // a negative sigma counts as its magnitude
    EXPECT_NEAR(three[0] / three[1], std::exp(-0.5), 1e-6);

    float four[4]; // an even count is sampled at half-integers, so it stays symmetric
    FXMakeGaussianKernelS(four, 3, 1.0);
    EXPECT_EQ(four[0], four[3]);
    EXPECT_NEAR(four[0] / four[1], std::exp(-(2.25 - 0.25) / 2), 1e-6);

    float flat[3];
    FXMakeGaussianKernelS(flat, 2, INFINITY);
    EXPECT_FLOAT_EQ(flat[0], 1.0f / 3);
    float untouched = 7;
    FXMakeGaussianKernelS(&untouched, -1, 1.0);
    EXPECT_EQ(untouched, 7);
}

TEST(FXGaussianBlur, TablesFollowTheKernelGroup)
{
    TFXTestHarness h;
    auto& blur = h.Wire<TFXGaussianBlur>();
    EXPECT_TRUE(blur.GetKernelX().empty()); // nothing built before the stream starts
    h.Source().Announce(8, 8, vfGray8);
    EXPECT_EQ(blur.GetKernelX().size(), 5u);
    blur.GetKernel().SetHeight(7);
    blur.GetKernel().SetSigmaY(2.0f);
    std::vector<float> expected(7);
    FXMakeGaussianKernelS(expected.data(), 6, 2.0);
    EXPECT_EQ(blur.GetKernelY(), expected);
    blur.GetKernel().SetWidth(0);
    EXPECT_TRUE(blur.GetKernelX().empty());
}

// One bright sample in a dark frame shows the whole output: only the row pass with the Height
// table reaches it, anchored at 3, i.e. out(x) = 255 * kernelY[x + 3 - 4] on the impulse's row.
class FXGaussianBlurFormats : public testing::TestWithParam<TFXVideoFormat> {};

TEST_P(FXGaussianBlurFormats, OutputIsTheRowPassAloneAnchoredAtThree_Intentional)
{
    const TFXVideoFormat format = GetParam();
    const int peak = format == vfGray16 ? 40000 : 255;
    TFXTestHarness h;
    auto& blur = h.Wire<TFXGaussianBlur>();
    h.Source().Announce(10, 7, format);
    const int pad = 13; // a padded stride
    const FXImageBufferPtr frame = FlatFrame(10, 7, format, 0, PaddedStride(10, format, pad));
    for (int c = 0; c < Channels(format); ++c)
        SetSample(*frame, 4, 3, c, peak);

    auto expectRowPassOnly = [&](const IFXImageBuffer& out) {
        const std::vector<float> k = blur.GetKernelY();
        ASSERT_EQ(out.GetFormat(), format);
        for (int y = 0; y < 7; ++y)
            for (int x = 0; x < 10; ++x)
                for (int c = 0; c < Channels(format); ++c) {
                    const int tap = x + 3 - 4;
                    const int expected = y == 3 && tap >= 0 && tap < 5
                                             ? int(std::nearbyint(peak * k[tap]))
                                         : y == 3 && x == 4 ? peak
                                                            : 0;
                    ASSERT_EQ(Sample(out, x, y, c), expected) << x << "," << y << " ch " << c;
                }
    };
    expectRowPassOnly(Filter(h, frame));
    // Width and SigmaX only shape the column pass, which the row pass overwrites.
    blur.GetKernel().SetSigmaX(3.0f);
    blur.GetKernel().SetWidth(3);
    expectRowPassOnly(Filter(h, frame));
    // SigmaY does reach the output.
    blur.GetKernel().SetSigmaY(0.5f);
    const IFXImageBuffer& sharper = Filter(h, frame);
    EXPECT_GT(Sample(sharper, 4 - 1, 3), Sample(*h.Captured.Frames.at(0), 4 - 1, 3) + 10);
    expectRowPassOnly(sharper);
}

TEST_P(FXGaussianBlurFormats, FramesSmallerThanTheKernelPassUnchanged)
{
    TFXTestHarness h;
    h.Wire<TFXGaussianBlur>();
    h.Source().Announce(4, 4, GetParam());
    for (auto [w, ht] : {std::pair{1, 1}, {4, 4}, {3, 9}, {9, 3}}) {
        const FXImageBufferPtr frame = FXRandomFrame(w, ht, GetParam(), std::uint32_t(w * ht));
        EXPECT_TRUE(FXSamePixels(Filter(h, frame), *frame)) << w << "x" << ht;
    }
}

INSTANTIATE_TEST_SUITE_P(AllFormats, FXGaussianBlurFormats,
                         testing::ValuesIn(kNeighbourhoodFormats), FormatTestName);

// A one-tap Height table puts the row pass's anchor outside it: that pass is refused, and the
// column pass (the Width table, down the columns, anchored at 3) is what shows.
TEST(FXGaussianBlur, ARefusedRowPassLeavesTheColumnPass)
{
    TFXTestHarness h;
    auto& blur = h.Wire<TFXGaussianBlur>();
    blur.GetKernel().SetHeight(1);
    h.Source().Announce(7, 10, vfGray8);
    const FXImageBufferPtr frame = FlatFrame(7, 10, vfGray8, 0, PaddedStride(7, vfGray8, 5));
    SetSample(*frame, 3, 4, 0, 255);
    const IFXImageBuffer& out = Filter(h, frame);
    const std::vector<float> k = blur.GetKernelX();
    for (int y = 0; y < 10; ++y)
        for (int x = 0; x < 7; ++x) {
            const int tap = y + 3 - 4;
            const int expected = x == 3 && tap >= 0 && tap < 5 ? int(std::nearbyint(255 * k[tap]))
                                 : x == 3 && y == 4            ? 255
                                                               : 0;
            ASSERT_EQ(Sample(out, x, y), expected) << x << "," << y;
        }
}

TEST(FXGaussianBlur, RegionOfInterestIsShrunkByWhatTheUnequalPassesRead)
{
    // Width 3 (down) and Height 7 (across): the frame loses 2 columns on the left and 4 on the
    // right (row pass, anchor 4), 0 rows above and 2 below (column pass, anchor 2).
    TFXTestHarness h;
    auto& blur = h.Wire<TFXGaussianBlur>();
    blur.GetKernel().SetWidth(3);
    blur.GetKernel().SetHeight(7);
    blur.GetROI().SetEnabled(true);
    blur.GetROI().SetLeft(1);
    blur.GetROI().SetTop(1);
    blur.GetROI().SetWidth(100);
    blur.GetROI().SetHeight(4);
    h.Source().Announce(16, 8, vfGray8);
    const FXImageBufferPtr frame = FlatFrame(16, 8, vfGray8, 0);
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 16; ++x)
            SetSample(*frame, x, y, 0, (x * 37 + y * 11) % 256);
    const IFXImageBuffer& out = Filter(h, frame);
    const std::vector<float> k = blur.GetKernelY();
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 16; ++x) {
            const bool inside = x >= 2 && x < 12 && y >= 1 && y < 5;
            if (!inside) {
                EXPECT_EQ(Sample(out, x, y), Sample(*frame, x, y)) << x << "," << y;
                continue;
            }
            double sum = 0;
            for (int j = 0; j < 7; ++j)
                sum += k[j] * Sample(*frame, x + 4 - j, y);
            EXPECT_NEAR(Sample(out, x, y), sum, 0.5 + 1e-3) << x << "," << y;
        }
}

TEST(FXGaussianBlur, OtherFormatsArriveAsRGB24AndAnEmptyKernelChangesNothing)
{
    TFXTestHarness h;
    auto& blur = h.Wire<TFXGaussianBlur>();
    h.Source().Announce(12, 12, vfRGB565);
    EXPECT_EQ(h.Captured.Announcements.back().Format, vfRGB24);
    const FXImageBufferPtr frame = FXRandomFrame(12, 12, vfRGB565, 5);
    EXPECT_EQ(Filter(h, frame).GetFormat(), vfRGB24);

    blur.GetKernel().SetWidth(0);
    blur.GetKernel().SetHeight(0);
    const FXImageBufferPtr grey = FXRandomFrame(12, 12, vfGray8, 6);
    h.Source().Announce(12, 12, vfGray8);
    EXPECT_TRUE(FXSamePixels(Filter(h, grey), *grey));
}

} // namespace
} // namespace framix
