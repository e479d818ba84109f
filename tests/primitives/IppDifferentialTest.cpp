// SPDX-License-Identifier: MIT
// Our primitives against the real Intel IPP (loaded at run time, when installed by
// scripts/install-ipp.sh): byte for byte on random images of odd sizes with padded steps.
#include "framework/primitives/dispatch/FXRealIpp.h"
#include "framework/primitives/families/FXColorCie.h"
#include "tests/primitives/support/FXIppOracle.h"
#include "tests/primitives/support/FXPrimitiveCases.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

namespace framix::test {
namespace {

using prim::TFXPrimitiveInfo;
using prim::TFXSample;
using prim::TFXShape;

bool IsLut(const TFXPrimitiveInfo& p)
{
    return p.Shape == TFXShape::Lut || p.Shape == TFXShape::LutChannels;
}

bool Interpolates(const TFXPrimitiveInfo& p)
{
    return p.Name.find("LUT_Linear") != std::string_view::npos ||
           p.Name.find("LUT_Cubic") != std::string_view::npos;
}

bool RepeatsALevel(std::vector<Ipp32s> levels)
{
    std::sort(levels.begin(), levels.end());
    return std::adjacent_find(levels.begin(), levels.end()) != levels.end();
}

// Arguments where IPP's replacement is known to part from the legacy rule we keep (see
// docs/primitives.md): it builds linear and cubic tables from intervals clipped to the sample
// range, so an interval starting above the top sample overwrites the top sample's entry; its
// 16-bit step table treats levels out of order differently from its 8-bit one, its 16-bit
// cubic table writes 65535 (the 8-bit one 0) where a window repeats a level, its multi-channel
// cubic tables all turn linear when one channel has fewer than four levels; its uniform
// histogram floors the levels where the bins do not divide the range.
bool Comparable(const TFXPrimitiveInfo& p, const TFXCase& c)
{
    const int maxValue = p.Sample == prim::TFXSample::U8 ? 255 : 65535;
    const int channels = prim::FXProcessedChannels(p.Layout);
    if (p.Shape == TFXShape::LutChannels && p.Name.find("Cubic") != std::string_view::npos) {
        int few = 0;
        for (int ch = 0; ch < channels; ++ch)
            few += c.LutLevels[ch].size() < 4 ? 1 : 0;
        if (few != 0 && few != channels)
            return false;
    }
    for (int ch = 0; ch < channels; ++ch) {
        const std::vector<Ipp32s>& levels = c.LutLevels[ch];
        if (Interpolates(p) &&
            std::any_of(levels.begin(), levels.end() - 1, [&](Ipp32s l) { return l > maxValue; }))
            return false;
        if (IsLut(p) && !Interpolates(p) && p.Sample == prim::TFXSample::U16 &&
            !std::is_sorted(levels.begin(), levels.end()))
            return false;
        if (p.Name.find("Cubic") != std::string_view::npos && p.Sample == prim::TFXSample::U16 &&
            RepeatsALevel(levels))
            return false;
        const long long range = (long long)c.Upper[ch] - c.Lower[ch];
        if (p.Shape == TFXShape::Histogram || p.Shape == TFXShape::HistogramChannels)
            if (range <= 0 || range % (c.HistLevels[ch] - 1) != 0)
                return false;
    }
    return true;
}

// The interpolated value before rounding, in extended precision: the linear interpolation,
// or the cubic through the window of four levels around the interval (the last interval that
// holds v decides). Only used to tell whether a sample is an exact half.
long double Interpolated(const TFXPrimitiveInfo& p, const std::vector<Ipp32s>& levels,
                         const std::vector<Ipp32s>& values, int v)
{
    const int n = int(levels.size());
    for (int k = n - 2; k >= 0; --k) {
        if (!(levels[k] <= v && v < levels[k + 1]))
            continue;
        int first = k, count = 2;
        if (p.Name.find("Cubic") != std::string_view::npos && n >= 4)
            first = std::clamp(k - 1, 0, n - 4), count = 4;
        long double sum = 0;
        for (int i = first; i < first + count; ++i) {
            long double term = values[i];
            for (int j = first; j < first + count; ++j)
                if (j != i)
                    term *= (long double)(v - levels[j]) / (long double)(levels[i] - levels[j]);
            sum += term;
        }
        return sum;
    }
    return v;
}

class IppDifferential : public testing::TestWithParam<const TFXPrimitiveInfo*> {};

bool IsFilter(const TFXPrimitiveInfo& p)
{
    return p.Shape == TFXShape::MaskFilter || p.Shape == TFXShape::RowFilter ||
           p.Shape == TFXShape::ColumnFilter || p.Shape == TFXShape::KernelFilter ||
           p.Shape == TFXShape::FixedFilter || p.Shape == TFXShape::FixedMaskFilter;
}

bool IsCompositing(const TFXPrimitiveInfo& p)
{
    return p.Shape == TFXShape::AlphaConst || p.Shape == TFXShape::AlphaPixel;
}

// Compositing where IPP itself is not exact may differ from it by one in a few samples: the
// 8-bit types whose colour multiplies two alphas (in, out, atop, xor) and every 16-bit type.
// IPP rounds a value that lies within about 0.002 of a half either way (a deviation of its own,
// the same in its AVX-512, AVX2 and SSE4.2 code for 8 bits, and different between them for 16
// bits); we round the exact value. The 8-bit over and plus types and every premultiplied one
// agree exactly.
bool CompositesExactly(const TFXPrimitiveInfo& p, const TFXCase& c)
{
    const bool twoAlphas = c.AlphaType >= ippAlphaIn && c.AlphaType <= ippAlphaXor;
    return p.Sample == prim::TFXSample::U8 && !twoAlphas;
}

// Where IPP's own results vary, samples are compared one by one: the test image (IPP's
// single-precision sine is not correctly rounded), the polar conversion (IPP's vector sine and
// cosine differ from the C library's, and between its own processor paths, by a few units in
// the last place) and conversions from float (a NaN converts to 0 or the maximum depending on
// the path IPP picks; those samples are skipped).
bool ComparedBySample(const TFXPrimitiveInfo& p)
{
    return p.Shape == TFXShape::TestImage || p.Shape == TFXShape::SignalPolarToCart ||
           p.Shape == TFXShape::ConvertFromFloat;
}

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

// IPP's replacement of the linear and cubic tables rounds exact halves up on most samples and
// down on the others, and its CPU paths (AVX-512, AVX2, SSE4.2) disagree on which (measured:
// 87, 75 and 39 halves down of 933 on the same tables). We round every half up, so a sample
// may differ by one where, and only where, the interpolated value is an exact half.
void ExpectSameTableLookups(const TFXCaseImages& images, const std::vector<Ipp8u>& ours,
                            const std::vector<Ipp8u>& theirs, long& halves, long& samples)
{
    const TFXPrimitiveInfo& p = images.Prim();
    const TFXCase& c = images.Case();
    const int sampleBytes = prim::FXSampleBytes(p.Sample);
    for (int y = 0; y < c.Roi.height; ++y)
        for (int x = 0; x < c.Roi.width; ++x)
            for (int ch = 0; ch < prim::FXProcessedChannels(p.Layout); ++ch) {
                const std::size_t at = images.DstOffset(x, y, ch);
                const Ipp8u* src = images.SrcRoi() + std::size_t(y) * images.SrcStep() +
                                   (std::size_t(x) * prim::FXChannels(p.Layout) + ch) * sampleBytes;
                int a = ours[at], b = theirs[at], v = src[0];
                if (sampleBytes == 2) {
                    a |= ours[at + 1] << 8;
                    b |= theirs[at + 1] << 8;
                    v |= src[1] << 8;
                }
                ++samples;
                if (a == b)
                    continue;
                const long double exact = Interpolated(p, c.LutLevels[ch], c.LutValues[ch], v);
                const long double fraction = exact - std::floor(exact);
                ASSERT_TRUE(std::abs(a - b) == 1 && std::abs(fraction - 0.5L) < 1e-9L)
                    << "sample " << v << " of pixel (" << x << "," << y << ") channel " << ch
                    << ": ours " << a << ", IPP " << b << ", exact " << double(exact) << "; "
                    << c.Describe();
                ++halves;
            }
    // Nothing else may differ: guards, padding and alpha.
    for (std::size_t i = 0; i < ours.size(); ++i)
        if (ours[i] != theirs[i] && images.FirstDamagedGuard(ours) == -1) {
            bool inSample = false;
            for (int y = 0; y < c.Roi.height && !inSample; ++y)
                inSample =
                    i >= images.DstOffset(0, y, 0) && i < images.DstOffset(c.Roi.width, y, 0);
            ASSERT_TRUE(inSample) << "byte " << i << " differs outside the samples";
        }
}

// How closely a colour primitive follows the real IPP. IPP converts a row in blocks of `Block`
// pixels with vector code and the last (width % Block) pixels with scalar code that rounds
// differently (found by converting the same pixels at different row positions): our results
// equal the block code's; tail pixels may differ by one. Where IPP's CPU-specific libraries
// disagree with each other everywhere (the fixed-point conversions), every sample may differ
// by `Spread`, in at most `Percent` percent of the samples.
struct TFXColorAgreement {
    std::string_view Prefix;
    int Block;   // 0: no exact part; -1: not compared (Why says why)
    int Spread;  // largest difference allowed outside the exact part
    int Percent; // share of samples allowed to differ
    // The pixels whose result is compared (nullptr: all): the source pixel, its column and the
    // row's width; see LuvCompared.
    bool (*Compared)(const Ipp8u* pixel, int x, int width) = nullptr;
    std::string_view Why = {};
};

// LUV -> RGB divides by v' = V / 13 L + v'n, which is zero along a plane of the LUV cube: near it
// X and Z are quotients of rounding errors, and two float evaluations of the same formula in a
// different order differ by anything up to 255 (IPP and ours: 256 of the 2^24 inputs, where v'
// has opposite signs). IPP's vector code (blocks of 8 pixels; its AVX2 and AVX-512 libraries
// agree on the whole cube) is within 1 of ours wherever |v'| >= 0.03 (measured over the whole
// cube: 95.9% equal, 4.1% differ by one, almost all in blue, where IPP's values stray about 0.3
// from the exact ones); 0.8% of the cube lies closer to the plane. The scalar code IPP runs on
// the last (width % 8) pixels of a row is not its vector code's equal: at small L it differs
// from it (and from us) by up to 30, so those pixels are not compared. IPP's four-channel
// function is another computation again: it gives the bytes of its three-channel one on only a
// third of the cube (two thirds differ, a tenth by 2 to over 100); ours gives both layouts the
// three-channel bytes.
bool LuvCompared(const Ipp8u* luv, int x, int width)
{
    if (x >= width / 8 * 8)
        return false;
    if (luv[0] == 0)
        return true; // black
    const double l = luv[0] * 100.0 / 255.0, v = luv[2] * 262.0 / 255.0 - 140.0;
    return std::fabs(v / (13.0 * l) + double(prim::kFXCieVn)) >= 0.03;
}

constexpr TFXColorAgreement kColorAgreement[] = {
    {"ippiRGBToHLS", 8, 1, 100},  {"ippiBGRToHLS", 0, 1, 60},  {"ippiHLSToRGB", 8, 1, 100},
    {"ippiHLSToBGR", 0, 1, 60},   {"ippiRGBToHSV", 4, 1, 100}, {"ippiHSVToRGB", 1, 1, 100},
    {"ippiRGBToYUV", 0, 1, 25},   {"ippiYUVToRGB", 0, 2, 50},  {"ippiRGBToYCbCr", 0, 1, 10},
    {"ippiYCbCrToRGB", 0, 1, 35}, {"ippiRGBToXYZ", 0, 1, 10},  {"ippiXYZToRGB", 0, 1, 10},
    {"ippiRGBToYCC", 0, 1, 10},   {"ippiYCCToRGB", 0, 1, 35},  {"ippiRGBToLUV", 0, 1, 10},
    {"ippiLUVToRGB_8u_AC4R", -1, 0, 0, nullptr,
     "IPP's four-channel LUV -> RGB disagrees with its own three-channel function on two thirds "
     "of the colour cube (see LuvCompared); the three-channel one is compared"},
    {"ippiLUVToRGB", 0, 1, 8, LuvCompared},
    {"ippiBGRToLab", 0, 1, 10},   {"ippiLabToBGR", 0, 1, 10},
    {"ippiGamma", 1, 0, 0},       {"ippiColorTwist", 1, 0, 0},
};

const TFXColorAgreement* ColorAgreement(std::string_view name)
{
    for (const TFXColorAgreement& a : kColorAgreement)
        if (name.starts_with(a.Prefix))
            return &a;
    return nullptr;
}

TEST_P(IppDifferential, EqualsRealIppByteForByte)
{
    if (!FXRealIppLoaded())
        GTEST_SKIP() << "real Intel IPP not found (run scripts/install-ipp.sh, or set "
                        "FRAMIX_IPP_DIR): comparison skipped";
    const TFXPrimitiveInfo& p = *GetParam();
    const TFXColorAgreement* colour = ColorAgreement(p.Name);
    const prim::TFXShapeGeometry g = prim::FXShapeGeometry(p.Shape, p.Sample, p.Layout);
    const bool division = p.Name.starts_with("ippiDiv_");
    if (colour != nullptr && colour->Block < 0)
        GTEST_SKIP() << p.Name << ": " << colour->Why;
    long outsideBlocks = 0;
    int compared = 0;
    long differing = 0, samples = 0, halves = 0, exactDiffering = 0;
    double worst = 0; // in sample units; in units in the last place for doubles
    std::string first, firstExact;
    bool approximate = false;
    // Counts one compared sample; where() describes it if it is the first to differ.
    const auto count = [&](double a, double b, bool exact, const auto& where) {
        ++samples;
        if (a == b || (std::isnan(a) && std::isnan(b)))
            return;
        worst = std::max(worst, g.DstSample == TFXSample::F64 ? Ulps(a, b) : std::fabs(a - b));
        const std::string text =
            differing == 0 || (exact && exactDiffering == 0)
                ? where() + ": ours " + std::to_string(a) + ", IPP " + std::to_string(b)
                : std::string();
        if (exact && exactDiffering++ == 0)
            firstExact = text;
        if (differing++ == 0)
            first = text;
    };
    for (const TFXCase& c : FXCasesFor(p)) {
        if (p.Shape == TFXShape::MaskFilter && p.Name.find("Median") != std::string_view::npos &&
            (c.Mask.width % 2 == 0 || c.Mask.height % 2 == 0))
            continue; // an error for both
        if (!Comparable(p, c))
            continue;
        const TFXCaseImages images(p, c);
        const TFXRunResult ours = images.Run(p.Entry);
        ASSERT_GE(ours.Status, ippStsNoErr) << c.Describe(); // a division by zero warns
        std::vector<Ipp8u> theirs = images.Fresh();
        std::uint32_t theirSeed = c.NoiseSeed;
        TFXIppOracle ipp(p, images.Args(theirs.data(), &theirSeed));
        if (ipp.CaseSkipped())
            continue;
        if (!ipp.Ready())
            GTEST_SKIP() << "the installed IPP has no replacement for " << p.Name << " or refuses "
                         << c.Describe();
        std::optional<TFXIppAvx2Scope> avx2Path; // see TFXIppAvx2Scope
        if (division)
            avx2Path.emplace();
        const int theirStatus = ipp.Run();
        avx2Path.reset();
        if (FXIsArithmeticShape(p.Shape)) // warnings only where both warn
            ASSERT_EQ(theirStatus == TFXIppOracle::kDivByZero, ours.Status == ippStsDivByZero)
                << "IPP status " << theirStatus << ", ours " << ours.Status << "; " << c.Describe();
        else
            ASSERT_EQ(theirStatus, 0) << "IPP failed on " << c.Describe();
        approximate = approximate || ipp.Approximate();
        ++compared;
        EXPECT_EQ(ours.NoiseSeed, theirSeed) << "seed word after the call, " << c.Describe();
        if (Interpolates(p)) {
            ExpectSameTableLookups(images, ours.Dst, theirs, halves, samples);
            continue;
        }
        if (ComparedBySample(p)) {
            // Every sample of every plane, untouched channels included; nothing outside them.
            EXPECT_EQ(images.FirstDamagedGuard(theirs), -1) << "IPP wrote outside the rows";
            const int sampleBytes = prim::FXSampleBytes(g.DstSample);
            const int perPixel = g.DstPixelBytes / sampleBytes;
            for (int plane = 0; plane < g.DstPlanes; ++plane)
                for (int y = 0; y < c.Roi.height; ++y)
                    for (int i = 0; i < c.Roi.width * perPixel; ++i) {
                        if (g.SrcSample == TFXSample::F32 && g.DstSample != TFXSample::F32) {
                            Ipp32f v;
                            std::memcpy(
                                &v, images.SrcRoi() + std::size_t(y) * images.SrcStep() + i * 4, 4);
                            if (std::isnan(v))
                                continue;
                        }
                        const std::size_t at =
                            images.DstOffset(0, y, plane) + std::size_t(i) * sampleBytes;
                        count(SampleAt(ours.Dst, at, g.DstSample),
                              SampleAt(theirs, at, g.DstSample), false, [&] {
                                  return "plane " + std::to_string(plane) + " row " +
                                         std::to_string(y) + " sample " + std::to_string(i) + ", " +
                                         c.Describe();
                              });
                    }
            continue;
        }
        if (colour == nullptr && !IsFilter(p) && !IsCompositing(p)) {
            // Exact: every byte of the destination (counts and levels for the histograms).
            ASSERT_TRUE(ours.Dst == theirs) << c.Describe();
            continue;
        }
        const bool exact = IsCompositing(p) && CompositesExactly(p, c);
        // Modern IPP writes the alpha of AC4 colour conversions (zero); IPP's legacy functions,
        // and ours, leave it alone: there alpha is not compared.
        const int channels =
            colour != nullptr ? prim::FXProcessedChannels(p.Layout) : prim::FXChannels(p.Layout);
        for (int y = 0; y < c.Roi.height; ++y)
            for (int x = 0; x < c.Roi.width; ++x) {
                if (colour != nullptr && colour->Compared != nullptr &&
                    !colour->Compared(images.SrcRoi() + std::size_t(y) * images.SrcStep() +
                                          std::size_t(x) * g.SrcPixelBytes,
                                      x, c.Roi.width))
                    continue;
                for (int ch = 0; ch < channels; ++ch) {
                    const std::size_t at = images.DstOffset(x, y, ch);
                    const double a = SampleAt(ours.Dst, at, g.DstSample);
                    const double b = SampleAt(theirs, at, g.DstSample);
                    if (colour != nullptr && a != b &&
                        (colour->Block == 0 || x >= c.Roi.width / colour->Block * colour->Block)) {
                        ++samples;
                        ++outsideBlocks;
                        worst = std::max(worst, std::fabs(a - b));
                        continue;
                    }
                    count(a, b, exact, [&] {
                        return "pixel (" + std::to_string(x) + "," + std::to_string(y) +
                               ") channel " + std::to_string(ch) + ", " + c.Describe();
                    });
                }
            }
    }
    EXPECT_GT(compared, 0);
    RecordProperty("compared_cases", compared);
    if (Interpolates(p))
        RecordProperty("exact_halves_differing",
                       std::to_string(halves) + "/" + std::to_string(samples));
    if (colour != nullptr) {
        EXPECT_EQ(differing, 0) << differing << " of " << samples
                                << " samples inside IPP's vector blocks differ; first at " << first;
        EXPECT_LE(worst, colour->Spread);
        EXPECT_LE(outsideBlocks * 100, colour->Percent * samples)
            << outsideBlocks << " of " << samples << " samples differ";
        RecordProperty("differing_samples",
                       std::to_string(outsideBlocks) + "/" + std::to_string(samples));
        return;
    }
    EXPECT_EQ(exactDiffering, 0) << exactDiffering << " of " << samples
                                 << " samples differ; first at " << firstExact;
    RecordProperty("worst_difference", std::to_string(worst));
    if (p.Shape == TFXShape::SignalPolarToCart) { // see ComparedBySample
        EXPECT_LE(worst, 8) << differing << " of " << samples << " samples differ; first at "
                            << first;
        return;
    }
    if (p.Shape == TFXShape::TestImage) { // about 1 in 10^5 samples within 1e-3 of a half
        EXPECT_LE(worst, 1) << first;
        EXPECT_LE(differing * 10000, samples)
            << differing << " of " << samples << " samples differ; first at " << first;
        return;
    }
    if (p.Shape != TFXShape::RowFilter && p.Shape != TFXShape::ColumnFilter && !approximate &&
        !IsCompositing(p)) {
        EXPECT_EQ(differing, 0) << differing << " of " << samples << " samples differ; first at "
                                << first;
        return;
    }
    // The float filters: IPP's replacement sums in an order of its own, so a sum within a few
    // float steps of a half can round the other way. Dyadic kernels agree exactly.
    // IPP's 16-bit ippiFilterBorder divides through an approximate reciprocal even in its
    // accurate mode: quotients within about 0.003 of a half (exact halves too) round either way
    // (37487.497 -> 37488, 1039.5 -> 1039 but 446.5 -> 447), while its 8-bit paths are exact.
    // Compositing: see CompositesExactly.
    EXPECT_LE(worst, 1) << first;
    EXPECT_LE(differing * 100, samples)
        << differing << " of " << samples << " samples differ; first at " << first;
    RecordProperty("differing_samples", std::to_string(differing) + "/" + std::to_string(samples));
}

// The legacy argument types of each shape, as IPP's headers declare them (names dropped): T
// stands for the sample type, N for the number of channels processed.
const std::map<TFXShape, std::vector<std::string>> kLegacyArguments = {
    {TFXShape::Threshold, {"const T*", "int", "T*", "int", "IppiSize", "const T[3]", "const T[3]"}},
    {TFXShape::ThresholdBoth,
     {"const T*", "int", "T*", "int", "IppiSize", "const T[3]", "const T[3]", "const T[3]",
      "const T[3]"}},
    {TFXShape::LutPalette,
     {"const T*", "int", "Ipp32u*", "int", "IppiSize", "const Ipp32u*", "int"}},
    {TFXShape::FixedMaskFilter, {"const T*", "int", "T*", "int", "IppiSize", "IppiMaskSize"}},
    {TFXShape::PixelMap, {"const T*", "int", "T*", "int", "IppiSize"}},
    {TFXShape::ColorConvertC3P3, {"const T*", "int", "T*[3]", "int", "IppiSize"}},
    {TFXShape::ColorConvertP3C3, {"const T*[3]", "int", "T*", "int", "IppiSize"}},
    {TFXShape::ColorTwist, {"const T*", "int", "T*", "int", "IppiSize", "const Ipp32f[3][4]"}},
    {TFXShape::BinarySfs, {"const T*", "int", "const T*", "int", "T*", "int", "IppiSize", "int"}},
    {TFXShape::BinaryInPlaceSfs, {"const T*", "int", "T*", "int", "IppiSize", "int"}},
    {TFXShape::Binary, {"const T*", "int", "const T*", "int", "T*", "int", "IppiSize"}},
    {TFXShape::BinaryInPlace, {"const T*", "int", "T*", "int", "IppiSize"}},
    {TFXShape::UnaryInPlace, {"T*", "int", "IppiSize"}},
    {TFXShape::ConstScalar, {"const T*", "int", "T", "T*", "int", "IppiSize"}},
    {TFXShape::ConstVector, {"const T*", "int", "const T[N]", "T*", "int", "IppiSize"}},
    {TFXShape::ConstScalarInPlace, {"T", "T*", "int", "IppiSize"}},
    {TFXShape::ConstVectorInPlace, {"const T[N]", "T*", "int", "IppiSize"}},
    {TFXShape::Reduce, {"const T*", "int", "IppiSize", "T*"}},
    {TFXShape::AlphaConst,
     {"const T*", "int", "T", "const T*", "int", "T", "T*", "int", "IppiSize", "IppiAlphaType"}},
    {TFXShape::AlphaPixel,
     {"const T*", "int", "const T*", "int", "T*", "int", "IppiSize", "IppiAlphaType"}},
    {TFXShape::AccumulateWeighted, {"const T*", "int", "Ipp32f*", "int", "IppiSize", "Ipp32f"}},
    {TFXShape::CopyToPlanes, {"const T*", "int", "T* const[N]", "int", "IppiSize"}},
    {TFXShape::SetScalar, {"T", "T*", "int", "IppiSize"}},
    {TFXShape::SetChannels, {"const T[N]", "T*", "int", "IppiSize"}},
    {TFXShape::SwapChannels, {"const T*", "int", "T*", "int", "IppiSize", "const int[3]"}},
    {TFXShape::SwapChannelsInPlace, {"T*", "int", "IppiSize", "const int[3]"}},
    {TFXShape::Mirror, {"const T*", "int", "T*", "int", "IppiSize", "IppiAxis"}},
    {TFXShape::MirrorInPlace, {"T*", "int", "IppiSize", "IppiAxis"}},
    {TFXShape::ConvertToFloat, {"const T*", "int", "Ipp32f*", "int", "IppiSize"}},
    {TFXShape::ConvertFromFloat, {"const Ipp32f*", "int", "T*", "int", "IppiSize", "IppRoundMode"}},
    {TFXShape::TestImage, {"T*", "int", "IppiSize"}},
    {TFXShape::SignalSet, {"T", "T*", "int"}},
    {TFXShape::SignalCopy, {"const T*", "T*", "int"}},
    {TFXShape::SignalAddScaled, {"const T*", "T*", "int", "int"}},
    {TFXShape::SignalMulCScaled, {"T", "T*", "int", "int"}},
    {TFXShape::SignalShiftC, {"int", "T*", "int"}},
    {TFXShape::SignalPolarToCart, {"const T*", "const T*", "T*", "T*", "int"}},
};

// The legacy argument types of a primitive: its shape's, in its sample type and channels.
std::vector<std::string> LegacyArgumentsOf(const TFXPrimitiveInfo& p)
{
    const auto found = kLegacyArguments.find(p.Shape);
    if (found == kLegacyArguments.end())
        return {};
    const std::string type = "Ipp" + std::string(prim::FXSampleName(p.Sample));
    const std::string channels = std::to_string(prim::FXProcessedChannels(p.Layout));
    std::vector<std::string> types = found->second;
    for (std::string& t : types) {
        t = std::regex_replace(t, std::regex("\\bT\\b"), type);
        t = std::regex_replace(t, std::regex("\\[N\\]"), "[" + channels + "]");
    }
    return types;
}

// The argument types of `name` in the installed headers, or nothing when it is not declared.
std::vector<std::string> DeclaredArguments(const std::string& name)
{
    const std::string dir = std::string(FRAMIX_SOURCE_DIR) + "/.deps/ipp/include/ipp/";
    for (const char* header : {"ippi.h", "ippcc.h", "ippcv.h", "ipps.h"}) {
        std::ifstream in(dir + header);
        const std::string text((std::istreambuf_iterator<char>(in)),
                               std::istreambuf_iterator<char>());
        const std::regex declaration("IPPAPI\\s*\\(\\s*IppStatus\\s*,\\s*" + name +
                                     "\\s*,\\s*\\(([^)]*)\\)\\s*\\)");
        std::smatch m;
        if (!std::regex_search(text, m, declaration))
            continue;
        std::vector<std::string> types;
        std::stringstream list(m[1].str());
        for (std::string argument; std::getline(list, argument, ',');) {
            // "const Ipp8u threshold[3]" -> "const Ipp8u[3]", "twist[3][4]" -> "[3][4]"
            argument = std::regex_replace(argument,
                                          std::regex("\\s*\\b\\w+\\s*((\\[\\d*\\])*)\\s*$"), "$1");
            argument = std::regex_replace(argument, std::regex("\\s+"), " ");
            argument = std::regex_replace(argument, std::regex("^ | $| (?=\\*)"), "");
            types.push_back(argument);
        }
        return types;
    }
    return {};
}

// Only names whose legacy arguments the installed IPP still declares and exports may bind to
// it; the look-up tables kept their names with other arguments and must never be listed.
TEST(IppVerifiedNames, AreExportedWithTheLegacyArguments)
{
    const auto names = FXRealIppVerifiedNames();
    EXPECT_TRUE(std::is_sorted(names.begin(), names.end())) << "the list is searched by bisection";
    for (std::string_view name : names)
        EXPECT_NE(prim::FXFindPrimitive(name), nullptr) << name << " is not a primitive of ours";
    if (!FXRealIppLoaded())
        GTEST_SKIP() << "real Intel IPP not found: exports and arguments not checked";
    for (std::string_view name : names) {
        const TFXPrimitiveInfo* p = prim::FXFindPrimitive(name);
        ASSERT_NE(p, nullptr);
        EXPECT_NE(FXRealIppSymbol(name), nullptr) << name << " is not exported";
        const std::vector<std::string> expected = LegacyArgumentsOf(*p);
        ASSERT_FALSE(expected.empty())
            << "give the legacy arguments of shape " << prim::FXShapeName(p->Shape);
        EXPECT_EQ(DeclaredArguments(std::string(name)), expected) << name;
        EXPECT_EQ(name.find("ippiLUT_"), std::string_view::npos) << name;
    }
    // The check itself tells a changed signature apart.
    EXPECT_NE(DeclaredArguments("ippiLUT_8u_C1R").size(), 8u);
}

INSTANTIATE_TEST_SUITE_P(AllPrimitives, IppDifferential,
                         testing::ValuesIn(FXAllPrimitivePointers()), FXPrimitiveTestName);

} // namespace
} // namespace framix::test
