// SPDX-License-Identifier: MIT
// Our primitives against the real Intel IPP (loaded at run time, when installed by
// scripts/install-ipp.sh): byte for byte on random images of odd sizes with padded steps.
#include "framework/primitives/dispatch/FXRealIpp.h"
#include "tests/primitives/support/FXIppOracle.h"
#include "tests/primitives/support/FXPrimitiveCases.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

namespace framix::test {
namespace {

using prim::TFXPrimitiveInfo;
using prim::TFXShape;

class IppDifferential : public testing::TestWithParam<const TFXPrimitiveInfo*> {};

bool IsPointShape(TFXShape shape)
{
    return shape != TFXShape::MaskFilter && shape != TFXShape::RowFilter &&
           shape != TFXShape::ColumnFilter;
}

// Where IPP itself is not exact, a case may differ from it by one in a few samples:
// - the float filters: IPP's replacement sums in an order of its own, so a sum within a few
//   float steps of a half can round the other way (dyadic kernels agree exactly);
// - compositing: the 8-bit types whose colour multiplies two alphas (in, out, atop, xor) and
//   every 16-bit type. IPP rounds a value that lies within about 0.002 of a half either way
//   (a deviation of its own, the same in its AVX-512, AVX2 and SSE4.2 code for 8 bits, and
//   different between them for 16 bits); we round the exact value. The 8-bit over and plus
//   types and every premultiplied one agree exactly.
bool ExactlyComparable(const TFXPrimitiveInfo& p, const TFXCase& c)
{
    if (p.Shape == TFXShape::RowFilter || p.Shape == TFXShape::ColumnFilter)
        return false;
    if (p.Shape != TFXShape::AlphaConst && p.Shape != TFXShape::AlphaPixel)
        return true;
    const bool twoAlphas = c.AlphaType >= ippAlphaIn && c.AlphaType <= ippAlphaXor;
    return p.Sample == prim::TFXSample::U8 && !twoAlphas;
}

// Reads destination sample (x, y, ch) of an allocation as an integer (a float's bit pattern).
long long SampleAt(const std::vector<Ipp8u>& dst, std::size_t at, int bytes)
{
    long long v = 0;
    for (int b = bytes - 1; b >= 0; --b)
        v = (v << 8) | dst[at + b];
    return v;
}

TEST_P(IppDifferential, EqualsRealIppByteForByte)
{
    if (!FXRealIppLoaded())
        GTEST_SKIP() << "real Intel IPP not found (run scripts/install-ipp.sh, or set "
                        "FRAMIX_IPP_DIR): comparison skipped";
    const TFXPrimitiveInfo& p = *GetParam();
    const prim::TFXShapeTraits traits = prim::FXShapeTraits(p.Shape, p.Sample);
    const bool division = p.Name.starts_with("ippiDiv_");
    int compared = 0;
    long differing = 0, samples = 0, exactDiffering = 0;
    long long worst = 0;
    std::string first, firstExact;
    for (const TFXCase& c : FXCasesFor(p)) {
        if (p.Shape == TFXShape::MaskFilter && p.Name.find("Median") != std::string_view::npos &&
            (c.Mask.width % 2 == 0 || c.Mask.height % 2 == 0))
            continue; // an error for both
        const TFXCaseImages images(p, c);
        const TFXRunResult ours = images.Run(p.Entry);
        ASSERT_GE(ours.Status, ippStsNoErr) << c.Describe();
        std::vector<Ipp8u> theirs = images.Fresh();
        TFXIppOracle ipp(p, images.Args(theirs.data()));
        if (!ipp.Ready())
            GTEST_SKIP() << "the installed IPP has no replacement for " << p.Name;
        std::optional<TFXIppAvx2Scope> avx2Path; // see TFXIppAvx2Scope
        if (division)
            avx2Path.emplace();
        const int theirStatus = ipp.Run();
        avx2Path.reset();
        if (IsPointShape(p.Shape)) // warnings only where both warn
            ASSERT_EQ(theirStatus == TFXIppOracle::kDivByZero, ours.Status == ippStsDivByZero)
                << "IPP status " << theirStatus << ", ours " << ours.Status << "; " << c.Describe();
        else
            ASSERT_EQ(theirStatus, 0) << "IPP failed on " << c.Describe();
        ++compared;
        const bool exact = ExactlyComparable(p, c);
        const IppiSize dstRoi = images.DstRoi();
        for (int y = 0; y < dstRoi.height; ++y)
            for (int x = 0; x < dstRoi.width; ++x)
                for (int ch = 0; ch < prim::FXChannels(p.Layout); ++ch) {
                    const std::size_t at = images.DstOffset(x, y, ch);
                    const long long a = SampleAt(ours.Dst, at, traits.DstSampleBytes);
                    const long long b = SampleAt(theirs, at, traits.DstSampleBytes);
                    ++samples;
                    if (a == b)
                        continue;
                    const std::string where = "pixel (" + std::to_string(x) + "," +
                                              std::to_string(y) + ") channel " +
                                              std::to_string(ch) + ": ours " + std::to_string(a) +
                                              ", IPP " + std::to_string(b) + "; " + c.Describe();
                    if (exact && exactDiffering++ == 0)
                        firstExact = where;
                    worst = std::max(worst, std::abs(a - b));
                    if (differing++ == 0)
                        first = where;
                }
    }
    EXPECT_GT(compared, 0);
    EXPECT_EQ(exactDiffering, 0) << exactDiffering << " of " << samples
                                 << " samples differ; first at " << firstExact;
    EXPECT_LE(worst, 1) << first;
    EXPECT_LE(differing * 100, samples)
        << differing << " of " << samples << " samples differ; first at " << first;
    RecordProperty("differing_samples", std::to_string(differing) + "/" + std::to_string(samples));
}

// The names a real IPP may bind when FRAMIX_USE_IPP=1: sorted (they are binary-searched), all
// ours, and exported by the installed IPP.
TEST(IppVerifiedNames, AreSortedOursAndExported)
{
    const auto names = FXRealIppVerifiedNames();
    EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
    for (std::string_view name : names)
        EXPECT_NE(prim::FXFindPrimitive(name), nullptr) << name;
    if (!FXRealIppLoaded())
        GTEST_SKIP() << "real Intel IPP not found: exports not checked";
    for (std::string_view name : names)
        EXPECT_NE(FXRealIppSymbol(name), nullptr) << name;
}

INSTANTIATE_TEST_SUITE_P(AllPrimitives, IppDifferential,
                         testing::ValuesIn(FXAllPrimitivePointers()), FXPrimitiveTestName);

} // namespace
} // namespace framix::test
