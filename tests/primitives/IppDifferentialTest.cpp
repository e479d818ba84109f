// SPDX-License-Identifier: MIT
// Our primitives against the real Intel IPP (loaded at run time, when installed by
// scripts/install-ipp.sh): byte for byte on random images of odd sizes with padded steps.
#include "framework/primitives/dispatch/FXRealIpp.h"
#include "tests/primitives/support/FXIppOracle.h"
#include "tests/primitives/support/FXPrimitiveCases.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

namespace framix::test {
namespace {

using prim::TFXPrimitiveInfo;
using prim::TFXShape;

class IppDifferential : public testing::TestWithParam<const TFXPrimitiveInfo*> {};

TEST_P(IppDifferential, EqualsRealIppByteForByte)
{
    if (!FXRealIppLoaded())
        GTEST_SKIP() << "real Intel IPP not found (run scripts/install-ipp.sh, or set "
                        "FRAMIX_IPP_DIR): comparison skipped";
    const TFXPrimitiveInfo& p = *GetParam();
    int compared = 0;
    long differing = 0, samples = 0;
    int worst = 0;
    std::string first;
    bool approximate = false;
    for (const TFXCase& c : FXCasesFor(p)) {
        if (p.Shape == TFXShape::MaskFilter && p.Name.find("Median") != std::string_view::npos &&
            (c.Mask.width % 2 == 0 || c.Mask.height % 2 == 0))
            continue; // an error for both
        const TFXCaseImages images(p, c);
        const TFXRunResult ours = images.Run(p.Entry);
        ASSERT_EQ(ours.Status, ippStsNoErr) << c.Describe();
        std::vector<Ipp8u> theirs = images.Fresh();
        TFXIppOracle ipp(p, images.Args(theirs.data()));
        if (ipp.CaseSkipped())
            continue;
        if (!ipp.Ready())
            GTEST_SKIP() << "the installed IPP has no replacement for " << p.Name;
        ASSERT_EQ(ipp.Run(), 0) << "IPP failed on " << c.Describe();
        approximate = approximate || ipp.Approximate();
        ++compared;
        const int sampleBytes = prim::FXSampleBytes(p.Sample);
        for (int y = 0; y < c.Roi.height; ++y)
            for (int x = 0; x < c.Roi.width; ++x)
                for (int ch = 0; ch < prim::FXChannels(p.Layout); ++ch) {
                    const std::size_t at = images.DstOffset(x, y, ch);
                    int a = ours.Dst[at], b = theirs[at];
                    if (sampleBytes == 2) {
                        a |= ours.Dst[at + 1] << 8;
                        b |= theirs[at + 1] << 8;
                    }
                    ++samples;
                    if (a == b)
                        continue;
                    worst = std::max(worst, std::abs(a - b));
                    if (differing++ == 0)
                        first = "pixel (" + std::to_string(x) + "," + std::to_string(y) +
                                ") channel " + std::to_string(ch) + ": ours " + std::to_string(a) +
                                ", IPP " + std::to_string(b) + "; " + c.Describe();
                }
    }
    EXPECT_GT(compared, 0);
    if (p.Shape != TFXShape::RowFilter && p.Shape != TFXShape::ColumnFilter && !approximate) {
        EXPECT_EQ(differing, 0) << differing << " of " << samples << " samples differ; first at "
                                << first;
        return;
    }
    // The float filters: IPP's replacement sums in an order of its own, so a sum within a few
    // float steps of a half can round the other way. Dyadic kernels agree exactly.
    // IPP's 16-bit ippiFilterBorder divides through an approximate reciprocal even in its
    // accurate mode: quotients within about 0.003 of a half (exact halves too) round either way
    // (37487.497 -> 37488, 1039.5 -> 1039 but 446.5 -> 447), while its 8-bit paths are exact.
    EXPECT_LE(worst, 1) << first;
    EXPECT_LE(differing * 100, samples)
        << differing << " of " << samples << " samples differ; first at " << first;
    RecordProperty("differing_samples", std::to_string(differing) + "/" + std::to_string(samples));
}

INSTANTIATE_TEST_SUITE_P(AllPrimitives, IppDifferential,
                         testing::ValuesIn(FXAllPrimitivePointers()), FXPrimitiveTestName);

} // namespace
} // namespace framix::test
