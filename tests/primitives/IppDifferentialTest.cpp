// SPDX-License-Identifier: MIT
// Our primitives against the real Intel IPP (loaded at run time, when installed by
// scripts/install-ipp.sh): byte for byte on random images of odd sizes with padded steps.
#include "framework/primitives/dispatch/FXRealIpp.h"
#include "tests/primitives/support/FXIppOracle.h"
#include "tests/primitives/support/FXPrimitiveCases.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
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

// The parameter types of a shape on samples T as IPP's headers spell them, without names or
// spaces (arrays as pointers); only the shapes whose names are on the verified list.
std::string ExpectedParameters(TFXShape shape, TFXSample sample)
{
    const std::string t[] = {"Ipp8u", "Ipp16u", "Ipp16s", "Ipp32f", "Ipp32s", "Ipp64f"};
    const std::string& T = t[int(sample)];
    switch (shape) {
    case TFXShape::Copy:
        return "const" + T + "*,int," + T + "*,int,IppiSize";
    case TFXShape::CopyToPlanes:
        return "const" + T + "*,int," + T + "*const*,int,IppiSize";
    case TFXShape::SetScalar:
        return T + "," + T + "*,int,IppiSize";
    case TFXShape::SetChannels:
        return "const" + T + "*," + T + "*,int,IppiSize";
    case TFXShape::SwapChannels:
        return "const" + T + "*,int," + T + "*,int,IppiSize,constint*";
    case TFXShape::SwapChannelsInPlace:
        return T + "*,int,IppiSize,constint*";
    case TFXShape::Mirror:
        return "const" + T + "*,int," + T + "*,int,IppiSize,IppiAxis";
    case TFXShape::MirrorInPlace:
        return T + "*,int,IppiSize,IppiAxis";
    case TFXShape::ConvertToFloat:
        return "const" + T + "*,int,Ipp32f*,int,IppiSize";
    case TFXShape::ConvertFromFloat:
        return "constIpp32f*,int," + T + "*,int,IppiSize,IppRoundMode";
    case TFXShape::TestImage:
        return T + "*,int,IppiSize";
    case TFXShape::SignalSet:
        return T + "," + T + "*,int";
    case TFXShape::SignalCopy:
        return "const" + T + "*," + T + "*,int";
    case TFXShape::SignalAddScaled:
        return "const" + T + "*," + T + "*,int,int";
    case TFXShape::SignalMulCScaled:
        return T + "," + T + "*,int,int";
    case TFXShape::SignalShiftC:
        return "int," + T + "*,int";
    case TFXShape::SignalPolarToCart:
        return "const" + T + "*,const" + T + "*," + T + "*," + T + "*,int";
    default:
        return "?";
    }
}

// One declared parameter without its name: "Ipp8u* const pDst[3]" -> "Ipp8u*const*".
std::string TypeOf(std::string p)
{
    bool array = false;
    if (const auto open = p.find('['); open != std::string::npos) {
        p.erase(open);
        array = true;
    }
    while (!p.empty() && std::isspace(static_cast<unsigned char>(p.back())))
        p.pop_back();
    std::size_t name = p.size();
    while (name > 0 &&
           (std::isalnum(static_cast<unsigned char>(p[name - 1])) || p[name - 1] == '_'))
        --name;
    p.erase(name);
    std::string out;
    for (char c : p)
        if (!std::isspace(static_cast<unsigned char>(c)))
            out += c;
    return array ? out + "*" : out;
}

// The parameter types of `name` in IPP's headers (IPPAPI(IppStatus, name, (...))), or "".
std::string DeclaredParameters(const std::string& headers, const std::string& name)
{
    for (std::size_t at = headers.find(name); at != std::string::npos;
         at = headers.find(name, at + 1)) {
        std::size_t i = at + name.size();
        while (i < headers.size() && std::isspace(static_cast<unsigned char>(headers[i])))
            ++i;
        const bool whole = at > 0 && !std::isalnum(static_cast<unsigned char>(headers[at - 1])) &&
                           headers[at - 1] != '_';
        if (!whole || i >= headers.size() || headers[i] != ',')
            continue;
        const std::size_t open = headers.find('(', i), close = headers.find(')', open);
        std::string list = headers.substr(open + 1, close - open - 1), out;
        std::size_t from = 0;
        for (std::size_t comma; (comma = list.find(',', from)) != std::string::npos;
             from = comma + 1)
            out += TypeOf(list.substr(from, comma - from)) + ",";
        return out + TypeOf(list.substr(from));
    }
    return "";
}

// Only names whose legacy argument list the installed IPP declares unchanged may bind to it.
TEST(IppVerifiedNames, MatchTheInstalledHeadersAndOurPrimitives)
{
    const auto names = FXRealIppVerifiedNames();
    EXPECT_TRUE(std::is_sorted(names.begin(), names.end())) << "the list is searched";
    std::string headers;
#ifdef FRAMIX_SOURCE_DIR
    const std::filesystem::path dir = FRAMIX_SOURCE_DIR "/.deps/ipp/include/ipp";
    if (std::filesystem::is_directory(dir))
        for (const auto& file : std::filesystem::directory_iterator(dir))
            if (file.path().extension() == ".h") {
                std::ifstream in(file.path());
                headers.append(std::istreambuf_iterator<char>(in), {});
            }
#endif
    for (const std::string_view name : names) {
        const TFXPrimitiveInfo* p = prim::FXFindPrimitive(name);
        ASSERT_NE(p, nullptr) << name << " is not one of ours";
        if (headers.empty())
            continue;
        EXPECT_EQ(DeclaredParameters(headers, std::string(name)),
                  ExpectedParameters(p->Shape, p->Sample))
            << name;
    }
    if (headers.empty())
        GTEST_SKIP() << "IPP headers not installed (scripts/install-ipp.sh): names checked "
                        "against the registry only";
}

INSTANTIATE_TEST_SUITE_P(AllPrimitives, IppDifferential,
                         testing::ValuesIn(FXAllPrimitivePointers()), FXPrimitiveTestName);

} // namespace
} // namespace framix::test
