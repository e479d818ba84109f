// SPDX-License-Identifier: MIT
// Even histograms on small images with hand-counted bins, called through the bound IPP-named
// variables.
#include "framework/primitives/dispatch/FXPrimitiveLayer.h"
#include "framework/primitives/dispatch/Fxdispatcher.h"

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

namespace framix::test {
namespace {

class Histogram : public testing::Test {
protected:
    void SetUp() override { FXStartPrimitiveLayer(); }

    struct TResult {
        std::vector<Ipp32s> Counts, Levels;
    };

    // One 8-bit row; the outputs start as garbage, which the primitive must overwrite.
    static TResult Count(const std::vector<Ipp8u>& row, int nLevels, Ipp32s lower, Ipp32s upper)
    {
        TResult r{std::vector<Ipp32s>(std::size_t(nLevels) - 1, 99),
                  std::vector<Ipp32s>(std::size_t(nLevels), -99)};
        const int n = int(row.size());
        EXPECT_EQ(ipp::ippiHistogramEven_8u_C1R(row.data(), n, {n, 1}, r.Counts.data(),
                                                r.Levels.data(), nLevels, lower, upper),
                  ippStsNoErr);
        return r;
    }
};

// (255 - 0) / 12 = 21 remainder 3: the first three bins are one wider.
TEST_F(Histogram, RemainderOfTheRangeWidensTheFirstBins)
{
    EXPECT_EQ(Count({0}, 13, 0, 255).Levels,
              (std::vector<Ipp32s>{0, 22, 44, 66, 87, 108, 129, 150, 171, 192, 213, 234, 255}));
    // 21 | 22 | 43 | 44 fall into bins 0, 1, 1, 2
    EXPECT_EQ(Count({21, 22, 43, 44}, 4, 0, 66).Counts, (std::vector<Ipp32s>{1, 2, 1}));
}

// Bin k holds L[k] <= v < L[k+1]: the upper level is outside the last bin. With 256 levels over
// 0 ... 255 (what histogram equalisation asks for) the value 255 is never counted.
TEST_F(Histogram, UpperLevelIsNotCounted)
{
    const TResult r = Count({0, 254, 255, 255, 7}, 256, 0, 255);
    EXPECT_EQ(r.Counts.size(), 255u);
    EXPECT_EQ(r.Counts[0], 1);
    EXPECT_EQ(r.Counts[7], 1);
    EXPECT_EQ(r.Counts[254], 1);
    EXPECT_EQ(std::accumulate(r.Counts.begin(), r.Counts.end(), 0), 3);
    // 257 levels over 0 ... 256 count everything
    const TResult all = Count({0, 254, 255, 255, 7}, 257, 0, 256);
    EXPECT_EQ(all.Counts[255], 2);
    EXPECT_EQ(std::accumulate(all.Counts.begin(), all.Counts.end(), 0), 5);
}

TEST_F(Histogram, SamplesOutsideTheRangeAreNotCounted)
{
    EXPECT_EQ(Count({9, 10, 29, 30, 200}, 3, 10, 30).Counts, (std::vector<Ipp32s>{1, 1}));
    // a range beyond the samples: -6 ... 258 in 3 bins of 88
    const TResult wide = Count({0, 81, 82, 255}, 4, -6, 258);
    EXPECT_EQ(wide.Levels, (std::vector<Ipp32s>{-6, 82, 170, 258}));
    EXPECT_EQ(wide.Counts, (std::vector<Ipp32s>{2, 1, 1}));
}

// Upper at or below lower: the levels follow the same rule (descending), no bin holds anything.
TEST_F(Histogram, EmptyOrReversedRangeCountsNothing)
{
    const TResult reversed = Count({0, 100, 200}, 4, 200, 50);
    EXPECT_EQ(reversed.Levels, (std::vector<Ipp32s>{200, 150, 100, 50}));
    EXPECT_EQ(reversed.Counts, (std::vector<Ipp32s>{0, 0, 0}));
    EXPECT_EQ(Count({100}, 3, 100, 100).Counts, (std::vector<Ipp32s>{0, 0}));
}

// Each channel into its own bins; AC4 does not count alpha, C4 does.
TEST_F(Histogram, ChannelsCountIntoTheirOwnBins)
{
    const Ipp8u rgba[] = {0, 100, 200, 255, 50, 150, 250, 0};
    Ipp32s counts[4][2], levels[4][3];
    Ipp32s* pHist[4] = {counts[0], counts[1], counts[2], counts[3]};
    Ipp32s* pLevels[4] = {levels[0], levels[1], levels[2], levels[3]};
    int nLevels[4] = {3, 3, 3, 3};
    Ipp32s lower[4] = {0, 100, 0, 0}, upper[4] = {256, 200, 256, 256};
    counts[3][0] = counts[3][1] = -1;
    ASSERT_EQ(
        ipp::ippiHistogramEven_8u_AC4R(rgba, 8, {2, 1}, pHist, pLevels, nLevels, lower, upper),
        ippStsNoErr);
    EXPECT_EQ(std::vector<Ipp32s>(counts[0], counts[0] + 2), (std::vector<Ipp32s>{2, 0}));
    EXPECT_EQ(std::vector<Ipp32s>(counts[1], counts[1] + 2), (std::vector<Ipp32s>{1, 1}));
    EXPECT_EQ(std::vector<Ipp32s>(counts[2], counts[2] + 2), (std::vector<Ipp32s>{0, 2}));
    EXPECT_EQ(counts[3][0], -1) << "alpha is not counted";
    ASSERT_EQ(ipp::ippiHistogramEven_8u_C4R(rgba, 8, {2, 1}, pHist, pLevels, nLevels, lower, upper),
              ippStsNoErr);
    EXPECT_EQ(std::vector<Ipp32s>(counts[3], counts[3] + 2), (std::vector<Ipp32s>{1, 1}));
    EXPECT_EQ(std::vector<Ipp32s>(levels[1], levels[1] + 3), (std::vector<Ipp32s>{100, 150, 200}));
}

// The 16-bit histogram over 0 ... 65535 in 65535 bins of one: the top value is not counted.
TEST_F(Histogram, SixteenBitSamplesUseTheWholeRange)
{
    const Ipp16u row[] = {0, 256, 65534, 65535, 256};
    std::vector<Ipp32s> counts(65535), levels(65536);
    ASSERT_EQ(ipp::ippiHistogramEven_16u_C1R(row, sizeof(row), {5, 1}, counts.data(), levels.data(),
                                             65536, 0, 65535),
              ippStsNoErr);
    EXPECT_EQ(counts[0], 1);
    EXPECT_EQ(counts[256], 2);
    EXPECT_EQ(counts[65534], 1);
    EXPECT_EQ(std::accumulate(counts.begin(), counts.end(), 0), 4);
    EXPECT_EQ(levels[65535], 65535);
}

TEST_F(Histogram, FewerThanTwoLevelsIsAnErrorThatWritesNothing)
{
    const Ipp8u row[] = {1};
    Ipp32s count = 7, level = 7;
    EXPECT_EQ(ipp::ippiHistogramEven_8u_C1R(row, 1, {1, 1}, &count, &level, 1, 0, 256),
              ippStsHistoNofLevelsErr);
    EXPECT_EQ(count, 7);
    EXPECT_EQ(level, 7);
}

} // namespace
} // namespace framix::test
