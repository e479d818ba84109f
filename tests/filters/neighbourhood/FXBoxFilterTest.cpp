// SPDX-License-Identifier: MIT
// The box and rank filter: the four modes, formats, anchors and masks the median refuses.
#include "filters/neighbourhood/FXBoxFilter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "tests/filters/neighbourhood/NeighbourhoodTestSupport.h"

namespace framix {
namespace {

using namespace test;

// The mode's result over the neighbourhood of (x, y), the anchor counted from the mask's
// top-left cell. Samples are multiples of 9 in the tests, so a 3 x 3 average is exact.
int Expected(TFXBoxFilterMode mode, const IFXImageBuffer& f, int x, int y, int c, TFXImageSize m,
             TFXPoint a)
{
    std::vector<int> v;
    for (int j = 0; j < m.height; ++j)
        for (int i = 0; i < m.width; ++i)
            v.push_back(Sample(f, x - a.x + i, y - a.y + j, c));
    std::sort(v.begin(), v.end());
    switch (mode) {
    case bfmMin:
        return v.front();
    case bfmMax:
        return v.back();
    case bfmMedian:
        return v[v.size() / 2];
    default: {
        int sum = 0;
        for (int s : v)
            sum += s;
        return sum / int(v.size());
    }
    }
}

class FXBoxFilterFormats : public testing::TestWithParam<TFXVideoFormat> {};

TEST_P(FXBoxFilterFormats, EachModeOverTheMaskOnEveryChannel)
{
    const TFXVideoFormat format = GetParam();
    const FXImageBufferPtr frame = FlatFrame(8, 6, format, 0, PaddedStride(8, format, 5));
    const int unit = format == vfGray16 ? 9 * 250 : 9; // 16-bit samples beyond 255
    for (int y = 0; y < 6; ++y)
        for (int x = 0; x < 8; ++x)
            for (int c = 0; c < Channels(format); ++c)
                SetSample(*frame, x, y, c, unit * ((x * 7 + y * 5 + c * 3) % 29 % 28));
    for (TFXBoxFilterMode mode : {bfmAverage, bfmMin, bfmMax, bfmMedian}) {
        TFXTestHarness h;
        auto& box = h.Wire<TFXBoxFilter>();
        box.SetFilterMode(mode);
        box.GetMaskSize().SetWidth(3);
        box.GetAnchor().SetX(2); // reads two columns to the left, none to the right
        const IFXImageBuffer& out = Filter(h, frame);
        for (int y = 0; y < 6; ++y)
            for (int x = 0; x < 8; ++x)
                for (int c = 0; c < Channels(format); ++c) {
                    const bool inside = x >= 2 && y >= 1 && y < 5;
                    ASSERT_EQ(Sample(out, x, y, c),
                              inside ? Expected(mode, *frame, x, y, c, {3, 3}, {2, 1})
                                     : Sample(*frame, x, y, c))
                        << "mode " << int(mode) << " at " << x << "," << y << " ch " << c;
                }
    }
}

INSTANTIATE_TEST_SUITE_P(AllFormats, FXBoxFilterFormats, testing::ValuesIn(kNeighbourhoodFormats),
                         FormatTestName);

TEST(FXBoxFilter, AnEvenMedianMaskLeavesTheFrameAndOtherModesTakeIt)
{
    TFXTestHarness h;
    auto& box = h.Wire<TFXBoxFilter>();
    box.GetMaskSize().SetWidth(4);
    box.SetFilterMode(bfmMedian);
    const FXImageBufferPtr frame = FXRandomFrame(9, 5, vfRGB24, 8);
    EXPECT_TRUE(FXSamePixels(Filter(h, frame), *frame));
    box.SetFilterMode(bfmMax);
    const IFXImageBuffer& out = Filter(h, frame);
    EXPECT_EQ(Sample(out, 4, 2, 1), Expected(bfmMax, *frame, 4, 2, 1, {4, 3}, {2, 1}));
}

} // namespace
} // namespace framix
