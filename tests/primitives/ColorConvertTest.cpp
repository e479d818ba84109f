// SPDX-License-Identifier: MIT
// Colour conversions, twist and gamma: hand-checked values (taken from IPP's vector code where
// rounding is subtle), tie-breaking, alpha, planar layouts and in-place calls, at every level.
#include "framework/primitives/FXPrimitiveRegistry.h"
#include "framework/primitives/families/FXColorCie.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

namespace framix::test {
namespace {

using prim::TFXPrimitiveInfo;
using TPixel = std::array<int, 3>;

const TFXPrimitiveInfo& Prim(const char* name)
{
    const TFXPrimitiveInfo* p = prim::FXFindPrimitive(name);
    EXPECT_NE(p, nullptr) << name;
    return *p;
}

// Levels of a primitive this machine runs (the reference first).
std::vector<TFXSimdLevel> Levels(const TFXPrimitiveInfo& p)
{
    std::vector<TFXSimdLevel> levels;
    for (TFXSimdLevel level : kFXAllSimdLevels)
        if (p.Has(level) && FXCpuSupports(level))
            levels.push_back(level);
    return levels;
}

// Converts a row of three-channel pixels with one level of an interleaved primitive (C3R, or
// AC4R with alpha 0x77 in the source and 0xA5 in the destination, which must survive).
std::vector<TPixel> Convert(const TFXPrimitiveInfo& p, TFXSimdLevel level,
                            const std::vector<TPixel>& pixels, const float (*twist)[4] = nullptr)
{
    const int ch = prim::FXChannels(p.Layout);
    const int n = int(pixels.size());
    std::vector<Ipp8u> src(std::size_t(n) * ch, 0x77), dst(std::size_t(n) * ch, 0xA5);
    for (int i = 0; i < n; ++i)
        for (int c = 0; c < 3; ++c)
            src[i * ch + c] = Ipp8u(pixels[i][c]);
    prim::TFXShapeArgs a;
    a.Src = src.data();
    a.SrcStep = n * ch;
    a.Dst = dst.data();
    a.DstStep = n * ch;
    a.Roi = {n, 1};
    a.Twist = twist;
    const prim::TFXAnyFn fn = p.At(level);
    IppStatus s = prim::FXCallShape(p.Shape, p.Sample, fn, a);
    if (s == prim::kFXDeclined)
        s = prim::FXCallShape(p.Shape, p.Sample, p.At(TFXSimdLevel::Ref), a);
    EXPECT_EQ(s, ippStsNoErr);
    std::vector<TPixel> out(n);
    for (int i = 0; i < n; ++i) {
        for (int c = 0; c < 3; ++c)
            out[i][c] = dst[i * ch + c];
        if (ch == 4)
            EXPECT_EQ(dst[i * ch + 3], 0xA5) << p.Name << ": alpha of pixel " << i << " written";
    }
    return out;
}

// Every level of name maps each input to its expected output.
void ExpectConversions(const char* name, const std::vector<TPixel>& in,
                       const std::vector<TPixel>& expected)
{
    const TFXPrimitiveInfo& p = Prim(name);
    for (TFXSimdLevel level : Levels(p)) {
        const std::vector<TPixel> out = Convert(p, level, in);
        for (std::size_t i = 0; i < in.size(); ++i)
            EXPECT_EQ(out[i], expected[i]) << name << " at " << FXLevelName(level) << ", input "
                                           << in[i][0] << "," << in[i][1] << "," << in[i][2];
    }
}

TEST(ColorConvert, HlsRoundsHalvesToEvenAndResolvesTiesTowardRed)
{
    // Pure red's lightness is 127.5: IPP's vector code gives 128 (even), not 127. Where red and
    // blue share the maximum, red's formula gives 212.51 -> 213.
    const std::vector<TPixel> rgb = {
        {255, 0, 0}, {1, 0, 1}, {0, 255, 255}, {10, 200, 30}, {100, 100, 100}};
    const std::vector<TPixel> hls = {
        {0, 128, 255}, {213, 0, 255}, {127, 128, 255}, {89, 105, 231}, {0, 100, 0}};
    ExpectConversions("ippiRGBToHLS_8u_C3R", rgb, hls);
    ExpectConversions("ippiRGBToHLS_8u_AC4R", rgb, hls);
}

TEST(ColorConvert, HsvBreaksTiesBetweenMaximaCyclically)
{
    // Red and blue equal: blue's formula (212), unlike HLS.
    ExpectConversions("ippiRGBToHSV_8u_C3R",
                      {{255, 0, 0}, {1, 0, 1}, {0, 255, 255}, {10, 200, 30}, {100, 100, 100}},
                      {{0, 255, 255}, {212, 255, 1}, {127, 255, 255}, {89, 242, 200}, {0, 0, 100}});
}

TEST(ColorConvert, HlsBackToRgb)
{
    const std::vector<TPixel> hls = {{0, 128, 255}, {85, 64, 200}, {170, 200, 100}, {0, 255, 0}};
    const std::vector<TPixel> rgb = {{255, 1, 1}, {14, 114, 14}, {178, 178, 222}, {255, 255, 255}};
    ExpectConversions("ippiHLSToRGB_8u_C3R", hls, rgb);
    ExpectConversions("ippiHLSToRGB_8u_AC4R", hls, rgb);
}

// Rows longer than a vector, with a tail, converted in place and out of place at every level.
TEST(ColorConvert, HlsInPlaceEqualsOutOfPlace)
{
    for (const char* name : {"ippiRGBToHLS_8u_C3R", "ippiHLSToRGB_8u_C3R"}) {
        const TFXPrimitiveInfo& p = Prim(name);
        const int n = 37;
        std::vector<Ipp8u> src(n * 3);
        for (int i = 0; i < n * 3; ++i)
            src[i] = Ipp8u(i * 97 + 13);
        for (TFXSimdLevel level : Levels(p)) {
            std::vector<Ipp8u> out(n * 3), inPlace = src;
            prim::TFXShapeArgs a;
            a.Src = src.data();
            a.Dst = out.data();
            a.SrcStep = a.DstStep = n * 3;
            a.Roi = {n, 1};
            ASSERT_EQ(prim::FXCallShape(p.Shape, p.Sample, p.At(level), a), ippStsNoErr);
            a.Src = a.Dst = inPlace.data();
            ASSERT_EQ(prim::FXCallShape(p.Shape, p.Sample, p.At(level), a), ippStsNoErr);
            EXPECT_EQ(inPlace, out) << name << " at " << FXLevelName(level);
        }
    }
}

// The planar forms are the interleaved ones with blue first and one plane per channel.
TEST(ColorConvert, PlanarHlsMatchesInterleaved)
{
    const int n = 21;
    std::vector<TPixel> rgb(n);
    for (int i = 0; i < n; ++i)
        rgb[i] = {(i * 53) % 256, (i * 101 + 7) % 256, (i * 29 + 200) % 256};
    const std::vector<TPixel> hls = Convert(Prim("ippiRGBToHLS_8u_C3R"), TFXSimdLevel::Ref, rgb);
    const TFXPrimitiveInfo& toPlanes = Prim("ippiBGRToHLS_8u_C3P3R");
    const TFXPrimitiveInfo& fromPlanes = Prim("ippiHLSToBGR_8u_P3C3R");
    const std::vector<TPixel> back = Convert(Prim("ippiHLSToRGB_8u_C3R"), TFXSimdLevel::Ref, hls);
    for (TFXSimdLevel level : Levels(toPlanes)) {
        std::vector<Ipp8u> bgr(n * 3), planes(n * 3), out(n * 3);
        for (int i = 0; i < n; ++i)
            for (int c = 0; c < 3; ++c)
                bgr[i * 3 + c] = Ipp8u(rgb[i][2 - c]);
        prim::TFXShapeArgs a;
        a.Src = bgr.data();
        a.SrcStep = n * 3;
        a.Dst = planes.data();
        a.DstStep = n;
        a.Roi = {n, 1};
        for (int k = 0; k < 3; ++k)
            a.Planes[k] = planes.data() + k * n;
        ASSERT_EQ(prim::FXCallShape(toPlanes.Shape, toPlanes.Sample, toPlanes.At(level), a),
                  ippStsNoErr);
        prim::TFXShapeArgs b = a;
        b.Src = planes.data();
        b.SrcStep = n;
        b.Dst = out.data();
        b.DstStep = n * 3;
        ASSERT_EQ(prim::FXCallShape(fromPlanes.Shape, fromPlanes.Sample, fromPlanes.At(level), b),
                  ippStsNoErr);
        for (int i = 0; i < n; ++i)
            for (int c = 0; c < 3; ++c) {
                EXPECT_EQ(planes[c * n + i], hls[i][c]) << "pixel " << i << " plane " << c;
                EXPECT_EQ(out[i * 3 + c], back[i][2 - c]) << "pixel " << i << " channel " << c;
            }
    }
}

TEST(ColorConvert, LinearSpacesKeepGreyOnTheAxisAndSaturate)
{
    // Grey has no chroma; XYZ's Z of white (277) saturates; studio-range YCbCr maps full range
    // into 16 ... 235.
    ExpectConversions("ippiRGBToYUV_8u_C3R", {{0, 0, 0}, {200, 200, 200}},
                      {{0, 128, 128}, {200, 128, 128}});
    ExpectConversions("ippiRGBToYCbCr_8u_C3R", {{0, 0, 0}, {255, 255, 255}},
                      {{16, 128, 128}, {235, 128, 128}});
    ExpectConversions("ippiRGBToXYZ_8u_C3R", {{255, 255, 255}}, {{242, 255, 255}});
    ExpectConversions("ippiYCbCrToRGB_8u_C3R", {{16, 128, 128}, {235, 128, 128}},
                      {{0, 0, 0}, {255, 255, 255}});
}

TEST(ColorConvert, CieSpacesGiveHandComputedValues)
{
    // Black and white sit on the neutral axis (u and v at their offsets 134 and 140, scaled);
    // grey (2, 2, 2) lies below the knee, where L is linear; primaries go both ways.
    ExpectConversions("ippiRGBToLUV_8u_C3R",
                      {{0, 0, 0}, {255, 255, 255}, {2, 2, 2}, {255, 0, 0}, {0, 0, 255}},
                      {{0, 97, 136}, {255, 97, 136}, {18, 97, 136}, {136, 223, 173}, {82, 90, 9}});
    ExpectConversions("ippiLUVToRGB_8u_C3R", {{0, 50, 200}, {136, 223, 173}, {82, 90, 9}},
                      {{0, 0, 0}, {255, 0, 0}, {0, 0, 255}});
    // Lab's input and output are BGR; back from Lab, black is 1: Y = ((L + 16) / 116)^3 has
    // no linear part.
    ExpectConversions(
        "ippiBGRToLab_8u_C3R", {{0, 0, 0}, {255, 255, 255}, {2, 2, 2}, {0, 0, 255}, {40, 90, 200}},
        {{0, 128, 128}, {255, 128, 128}, {18, 128, 128}, {136, 208, 195}, {183, 148, 164}});
    ExpectConversions("ippiLabToBGR_8u_C3R", {{0, 128, 128}, {255, 128, 128}, {136, 208, 195}},
                      {{1, 1, 1}, {255, 255, 255}, {0, 0, 255}});
}

TEST(ColorConvert, CieCubeRootIsWithinAFewUlpsOverItsRange)
{
    // Every float from below the knee to past Lab's largest X / Xn.
    double worst = 0;
    for (float t = 0.008f; t < 1.01f; t = std::nextafter(t, 2.0f)) {
        const double exact = std::cbrt(double(t));
        worst = std::max(worst, std::abs(double(prim::FXCieCubeRoot(t)) - exact) / exact);
    }
    EXPECT_LT(worst, 1e-6);
}

// Every vector level of every interleaved conversion gives the reference's bytes on an eighth of
// all 2^24 colours, spread over the cube (the float kernels must repeat the reference's
// operations exactly; random images reach only a few thousand colours), in rows of 4093
// pixels, so each row also ends in a tail.
TEST(ColorConvert, EveryLevelEqualsTheReferenceAcrossTheColourCube)
{
    constexpr int kWidth = 4093, kColours = 1 << 21;
    constexpr int kHeight = (kColours + kWidth - 1) / kWidth;
    for (const TFXPrimitiveInfo& info : prim::FXAllPrimitives()) {
        const TFXPrimitiveInfo* p = &info;
        if (p->Shape != prim::TFXShape::PixelMap || p->Layout != prim::TFXLayout::C3 ||
            p->Name.find("Twist") != std::string_view::npos ||
            p->Name.find("Gamma") != std::string_view::npos)
            continue;
        std::vector<Ipp8u> src(std::size_t(kWidth) * kHeight * 3);
        for (int i = 0; i < kWidth * kHeight; ++i)
            for (int c = 0; c < 3; ++c)
                src[std::size_t(i) * 3 + c] =
                    Ipp8u((unsigned(i % kColours) * 2654435761u) >> (8 * c));
        prim::TFXShapeArgs a;
        a.Src = src.data();
        a.SrcStep = a.DstStep = kWidth * 3;
        a.Roi = {kWidth, kHeight};
        std::vector<Ipp8u> expected(src.size()), actual(src.size());
        a.Dst = expected.data();
        ASSERT_EQ(prim::FXCallShape(p->Shape, p->Sample, p->At(TFXSimdLevel::Ref), a), ippStsNoErr);
        for (TFXSimdLevel level : Levels(*p)) {
            if (level == TFXSimdLevel::Ref)
                continue;
            a.Dst = actual.data();
            ASSERT_EQ(prim::FXCallShape(p->Shape, p->Sample, p->At(level), a), ippStsNoErr);
            const auto [differs, _] = std::mismatch(actual.begin(), actual.end(), expected.begin());
            EXPECT_TRUE(differs == actual.end())
                << p->Name << " at " << FXLevelName(level) << ": colour "
                << (differs - actual.begin()) / 3 << ", channel " << (differs - actual.begin()) % 3;
        }
    }
}

// The fixed-point conversions are integer sums built differently by the vector kernels (16-bit
// multiply-adds, parts of large weights carried by whole word pairs): every level gives the
// reference's bytes for every one of the 2^24 colours, three- and four-channel (alpha kept), in
// rows of 4093 pixels that end in tails.
TEST(ColorConvert, FixedPointConversionsAreExactOnEveryColour)
{
    constexpr int kWidth = 4093, kRows = 256, kColours = 1 << 24;
    for (const char* op :
         {"RGBToYUV", "YUVToRGB", "RGBToYCbCr", "YCbCrToRGB", "RGBToXYZ", "XYZToRGB"}) {
        for (const char* layout : {"C3R", "AC4R"}) {
            const TFXPrimitiveInfo& p = Prim(("ippi" + std::string(op) + "_8u_" + layout).c_str());
            const int ch = prim::FXChannels(p.Layout);
            std::vector<Ipp8u> src(std::size_t(kWidth) * kRows * ch);
            std::vector<Ipp8u> expected(src.size()), actual(src.size());
            prim::TFXShapeArgs a;
            a.Src = src.data();
            a.SrcStep = a.DstStep = kWidth * ch;
            for (int first = 0; first < kColours; first += kWidth * kRows) {
                const int rows = std::min(kRows, (kColours - first + kWidth - 1) / kWidth);
                a.Roi = {kWidth, rows};
                for (int i = 0; i < kWidth * rows; ++i)
                    for (int c = 0; c < ch; ++c)
                        src[std::size_t(i) * ch + c] = Ipp8u(c == 3 ? 0x77 : (first + i) >> 8 * c);
                std::fill(expected.begin(), expected.end(), Ipp8u(0xA5));
                a.Dst = expected.data();
                ASSERT_EQ(prim::FXCallShape(p.Shape, p.Sample, p.At(TFXSimdLevel::Ref), a),
                          ippStsNoErr);
                for (TFXSimdLevel level : Levels(p)) {
                    if (level == TFXSimdLevel::Ref)
                        continue;
                    std::fill(actual.begin(), actual.end(), Ipp8u(0xA5));
                    a.Dst = actual.data();
                    ASSERT_EQ(prim::FXCallShape(p.Shape, p.Sample, p.At(level), a), ippStsNoErr);
                    const auto at = std::mismatch(actual.begin(), actual.end(), expected.begin());
                    ASSERT_TRUE(at.first == actual.end())
                        << p.Name << " at " << FXLevelName(level) << ": colour "
                        << first + (at.first - actual.begin()) / ch << ", channel "
                        << (at.first - actual.begin()) % ch;
                }
            }
        }
    }
}

TEST(ColorTwist, RoundsHalvesToEvenAndSaturates)
{
    const float twist[3][4] = {{0.5f, 0, 0, 0}, {2.0f, 0, 0, 0}, {-1.0f, 0, 0, 10.25f}};
    const TFXPrimitiveInfo& p = Prim("ippiColorTwist32f_8u_C3R");
    for (TFXSimdLevel level : Levels(p)) {
        const std::vector<TPixel> out =
            Convert(p, level, {{1, 0, 0}, {3, 0, 0}, {200, 0, 0}}, twist);
        EXPECT_EQ(out[0], (TPixel{0, 2, 9}));     // 0.5 -> 0, 10.25 - 1 -> 9
        EXPECT_EQ(out[1], (TPixel{2, 6, 7}));     // 1.5 -> 2
        EXPECT_EQ(out[2], (TPixel{100, 255, 0})); // 400 and -189.75 saturate
    }
}

TEST(Gamma, EndpointsAreFixedAndTheCurvesAreMonotone)
{
    for (const char* name : {"ippiGammaFwd_8u_C3R", "ippiGammaInv_8u_C3R"}) {
        const TFXPrimitiveInfo& p = Prim(name);
        std::vector<TPixel> ramp(256);
        for (int i = 0; i < 256; ++i)
            ramp[i] = {i, 255 - i, i};
        const std::vector<TPixel> out = Convert(p, TFXSimdLevel::Ref, ramp);
        EXPECT_EQ(out[0][0], 0) << name;
        EXPECT_EQ(out[255][0], 255) << name;
        for (int i = 1; i < 256; ++i) {
            EXPECT_LE(out[i - 1][0], out[i][0]) << name << " at " << i;
            EXPECT_EQ(out[i][1], out[255 - i][0]) << name << ": channels share the curve";
        }
    }
    // The linear toe: 4.5 v below 0.018 (v = 1/255 -> 4.5); its inverse, v / 4.5.
    EXPECT_EQ(Convert(Prim("ippiGammaFwd_8u_C3R"), TFXSimdLevel::Ref, {{1, 2, 4}})[0],
              (TPixel{4, 9, 18}));
    EXPECT_EQ(Convert(Prim("ippiGammaInv_8u_C3R"), TFXSimdLevel::Ref, {{9, 18, 0}})[0],
              (TPixel{2, 4, 0}));
}

} // namespace
} // namespace framix::test
