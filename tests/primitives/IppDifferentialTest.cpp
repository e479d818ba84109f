// SPDX-License-Identifier: MIT
// Our primitives against the real Intel IPP (loaded at run time, when installed by
// scripts/install-ipp.sh): byte for byte on random images of odd sizes with padded steps.
#include "framework/primitives/dispatch/FXRealIpp.h"
#include "tests/primitives/support/FXIppOracle.h"
#include "tests/primitives/support/FXPrimitiveCases.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace framix::test {
namespace {

using prim::TFXPrimitiveInfo;
using prim::TFXSample;
using prim::TFXShape;

bool IsFilter(const TFXPrimitiveInfo& p)
{
    return p.Shape == TFXShape::MaskFilter || p.Shape == TFXShape::RowFilter ||
           p.Shape == TFXShape::ColumnFilter;
}

// Differences found over all cases of a primitive.
struct TFXDifferences {
    long Samples = 0;
    long Differing = 0;
    double Worst = 0; // in sample units; in units in the last place for doubles
    std::string First;

    void Add(double ours, double theirs, double distance, const std::string& where)
    {
        ++Samples;
        if (ours == theirs || (std::isnan(ours) && std::isnan(theirs)))
            return;
        Worst = std::max(Worst, distance);
        if (Differing++ == 0)
            First = where + ": ours " + std::to_string(ours) + ", IPP " + std::to_string(theirs);
    }
};

double SampleAt(const std::vector<Ipp8u>& dst, std::size_t at, TFXSample sample)
{
    switch (sample) {
    case TFXSample::U8:
        return dst[at];
    case TFXSample::U16:
        return dst[at] | dst[at + 1] << 8;
    case TFXSample::S16:
        return Ipp16s(dst[at] | dst[at + 1] << 8);
    case TFXSample::S32: {
        Ipp32s v;
        std::memcpy(&v, &dst[at], 4);
        return v;
    }
    case TFXSample::F32: {
        Ipp32f v;
        std::memcpy(&v, &dst[at], 4);
        return v;
    }
    case TFXSample::F64: {
        Ipp64f v;
        std::memcpy(&v, &dst[at], 8);
        return v;
    }
    }
    return 0;
}

// Units in the last place between two doubles of the same sign.
double Ulps(double a, double b)
{
    std::int64_t x, y;
    std::memcpy(&x, &a, 8);
    std::memcpy(&y, &b, 8);
    return std::fabs(double(x - y));
}

// Every sample of the destination rows (untouched channels included) and every byte outside
// them. A converted NaN is skipped: IPP itself gives 0 or the maximum depending on the
// processor path it picks.
void ComparePoint(const TFXCaseImages& images, const std::vector<Ipp8u>& ours,
                  const std::vector<Ipp8u>& theirs, TFXDifferences& d)
{
    const prim::TFXShapeGeometry& g = images.Geometry();
    const TFXCase& c = images.Case();
    const int sampleBytes = prim::FXSampleBytes(g.DstSample);
    const int rows = c.Roi.height * g.DstPlanes;
    const int perRow = c.Roi.width * g.DstPixelBytes / sampleBytes;
    EXPECT_EQ(images.FirstDamagedGuard(theirs), -1) << "IPP wrote outside the rows";
    for (int y = 0; y < rows; ++y)
        for (int i = 0; i < perRow; ++i) {
            const std::size_t at =
                kFXGuardBytes + std::size_t(y) * images.DstStep() + std::size_t(i) * sampleBytes;
            if (g.SrcSample == TFXSample::F32 && g.DstSample != TFXSample::F32) {
                Ipp32f v;
                std::memcpy(&v, images.SrcRoi() + std::size_t(y) * images.SrcStep() + i * 4, 4);
                if (std::isnan(v))
                    continue;
            }
            const double a = SampleAt(ours, at, g.DstSample), b = SampleAt(theirs, at, g.DstSample);
            d.Add(a, b, g.DstSample == TFXSample::F64 ? Ulps(a, b) : std::fabs(a - b),
                  "row " + std::to_string(y) + " sample " + std::to_string(i) + ", " +
                      c.Describe());
        }
}

// The filters' channels of the ROI.
void CompareFilter(const TFXPrimitiveInfo& p, const TFXCaseImages& images,
                   const std::vector<Ipp8u>& ours, const std::vector<Ipp8u>& theirs,
                   TFXDifferences& d)
{
    const TFXCase& c = images.Case();
    for (int y = 0; y < c.Roi.height; ++y)
        for (int x = 0; x < c.Roi.width; ++x)
            for (int ch = 0; ch < prim::FXChannels(p.Layout); ++ch) {
                const std::size_t at = images.DstOffset(x, y, ch);
                const double a = SampleAt(ours, at, p.Sample), b = SampleAt(theirs, at, p.Sample);
                d.Add(a, b, std::fabs(a - b),
                      "pixel (" + std::to_string(x) + "," + std::to_string(y) + ") channel " +
                          std::to_string(ch) + ", " + c.Describe());
            }
}

class IppDifferential : public testing::TestWithParam<const TFXPrimitiveInfo*> {};

TEST_P(IppDifferential, EqualsRealIppByteForByte)
{
    if (!FXRealIppLoaded())
        GTEST_SKIP() << "real Intel IPP not found (run scripts/install-ipp.sh, or set "
                        "FRAMIX_IPP_DIR): comparison skipped";
    const TFXPrimitiveInfo& p = *GetParam();
    int compared = 0;
    TFXDifferences d;
    for (const TFXCase& c : FXCasesFor(p)) {
        if (p.Shape == TFXShape::MaskFilter && p.Name.find("Median") != std::string_view::npos &&
            (c.Mask.width % 2 == 0 || c.Mask.height % 2 == 0))
            continue; // an error for both
        const TFXCaseImages images(p, c);
        const TFXRunResult ours = images.Run(p.Entry);
        ASSERT_EQ(ours.Status, ippStsNoErr) << c.Describe();
        std::vector<Ipp8u> theirs = images.Fresh();
        std::uint32_t theirSeed = c.NoiseSeed;
        TFXIppOracle ipp(p, images.Args(theirs.data(), &theirSeed));
        if (!ipp.Ready())
            GTEST_SKIP() << "the installed IPP has no counterpart of " << p.Name;
        ASSERT_EQ(ipp.Run(), 0) << "IPP failed on " << c.Describe();
        ++compared;
        EXPECT_EQ(ours.NoiseSeed, theirSeed) << "seed word after the call, " << c.Describe();
        if (IsFilter(p))
            CompareFilter(p, images, ours.Dst, theirs, d);
        else
            ComparePoint(images, ours.Dst, theirs, d);
    }
    EXPECT_GT(compared, 0);
    RecordProperty("differing_samples",
                   std::to_string(d.Differing) + "/" + std::to_string(d.Samples));
    RecordProperty("worst_difference", std::to_string(d.Worst));
    const std::string report = std::to_string(d.Differing) + " of " + std::to_string(d.Samples) +
                               " samples differ; first at " + d.First;
    if (p.Shape == TFXShape::RowFilter || p.Shape == TFXShape::ColumnFilter) {
        // The float filters: IPP's replacement sums in an order of its own, so a sum within a
        // few float steps of a half can round the other way. Dyadic kernels agree exactly.
        EXPECT_LE(d.Worst, 1) << report;
        EXPECT_LE(d.Differing * 100, d.Samples) << report;
    } else if (p.Shape == TFXShape::SignalPolarToCart) {
        // IPP's vector sine and cosine differ from the C library's, and between IPP's own
        // processor paths, by a few units in the last place.
        EXPECT_LE(d.Worst, 8) << report;
    } else if (p.Shape == TFXShape::TestImage) {
        // IPP's single-precision sine is not correctly rounded; where 128 + 128 sin lies within
        // about 1e-3 of a half, its byte can differ from ours by one (about 1 in 10^5 samples).
        EXPECT_LE(d.Worst, 1) << report;
        EXPECT_LE(d.Differing * 10000, d.Samples) << report;
    } else {
        EXPECT_EQ(d.Differing, 0) << report;
    }
}

INSTANTIATE_TEST_SUITE_P(AllPrimitives, IppDifferential,
                         testing::ValuesIn(FXAllPrimitivePointers()), FXPrimitiveTestName);

} // namespace
} // namespace framix::test
