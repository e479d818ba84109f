// SPDX-License-Identifier: MIT
// Colour conversion back to RGB, reference: the definitions the vector kernels are proved
// against. As for the forward conversions, each arithmetic is the one measured to reproduce
// IPP's 8-bit results (docs/primitives.md).
#include "framework/primitives/families/ColorConvertBack.h"

#include "framework/primitives/families/FXColorPixels.h"

#include <cmath>

namespace framix::prim::ref {
namespace {

// Value stays on the 8-bit scale; the sextant and its fraction come from the hue in degrees.
TFXColor RgbFromHsv(int h8, int s8, int v8)
{
    if (s8 == 0)
        return {Ipp8u(v8), Ipp8u(v8), Ipp8u(v8)};
    const float v = float(v8);
    const float s = float(s8) * (1.0f / 255.0f);
    float h = (float(h8) * float(360.0 / 255.0)) * (1.0f / 60.0f);
    if (h >= 6.0f)
        h -= 6.0f;
    const int sextant = int(h);
    const float f = h - float(sextant);
    const float vs = v * s;
    const Ipp8u m = FXColorSample(v - vs), n = FXColorSample(v - vs * f), k = FXColorSample(v - vs * (1.0f - f));
    const Ipp8u top = Ipp8u(v8);
    switch (sextant) {
    case 0:
        return {top, k, m};
    case 1:
        return {n, top, m};
    case 2:
        return {m, top, k};
    case 3:
        return {m, n, top};
    case 4:
        return {k, m, top};
    default:
        return {top, m, n};
    }
}

TFXColor RgbFromYuv(int y, int u, int v)
{
    return FXFixedConvert(kFXYuvToRgb, y, u, v);
}

TFXColor RgbFromYCbCr(int y, int cb, int cr)
{
    return FXFixedConvert(kFXYCbCrToRgb, y, cb, cr);
}

TFXColor RgbFromXyz(int x, int y, int z)
{
    return FXFixedConvert(kFXXyzToRgb, x, y, z);
}

TFXColor RgbFromYcc(int y8, int c18, int c28)
{
    const float y = 1.3584f * float(y8);
    const float c1 = 2.2179f * (float(c18) - 156.0f);
    const float c2 = 1.8215f * (float(c28) - 137.0f);
    return {FXColorSample(y + c2), FXColorSample(y - 0.194f * c1 - 0.509f * c2), FXColorSample(y + c1)};
}

// Linear Rec.709 RGB (0 ... 1 scale) of an XYZ colour, to samples.
TFXColor SamplesFromXyz(double x, double y, double z)
{
    return {FXColorSample(float((3.240479 * x - 1.53715 * y - 0.498535 * z) * 255.0)),
            FXColorSample(float((-0.969256 * x + 1.875991 * y + 0.041556 * z) * 255.0)),
            FXColorSample(float((0.055648 * x - 0.204043 * y + 1.057311 * z) * 255.0))};
}

TFXColor RgbFromLuv(int l8, int u8, int v8)
{
    constexpr double kXn = 0.312713, kYn = 0.329016;
    constexpr double kUn = 4 * kXn / (-2 * kXn + 12 * kYn + 3);
    constexpr double kVn = 9 * kYn / (-2 * kXn + 12 * kYn + 3);
    const double l = l8 * 100.0 / 255.0;
    if (l8 == 0)
        return {0, 0, 0};
    const double u = u8 * 354.0 / 255.0 - 134.0, v = v8 * 262.0 / 255.0 - 140.0;
    const double up = u / (13.0 * l) + kUn, vp = v / (13.0 * l) + kVn;
    const double t = (l + 16.0) / 116.0;
    const double y = t * t * t;
    const double x = 9.0 * y * up / (4.0 * vp);
    const double z = (9.0 * y - 15.0 * vp * y - vp * x) / (3.0 * vp);
    return SamplesFromXyz(x, y, z);
}

// Written in B, G, R order.
TFXColor BgrFromLab(int l8, int a8, int b8)
{
    constexpr double kXn = 0.950455, kZn = 1.088753;
    const double l = l8 * 100.0 / 255.0;
    const double p = (l + 16.0) / 116.0;
    const double fx = p + (a8 - 128) / 500.0, fz = p - (b8 - 128) / 200.0;
    const TFXColor rgb = SamplesFromXyz(kXn * fx * fx * fx, p * p * p, kZn * fz * fz * fz);
    return {rgb[2], rgb[1], rgb[0]};
}

} // namespace

template <class T, TFXLayout L>
IppStatus HSVToRGB(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize)
{
    return FXConvertPixels<L>(pSrc, srcStep, pDst, dstStep, roiSize, RgbFromHsv);
}

template <class T, TFXLayout L>
IppStatus YUVToRGB(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize)
{
    return FXConvertPixels<L>(pSrc, srcStep, pDst, dstStep, roiSize, RgbFromYuv);
}

template <class T, TFXLayout L>
IppStatus XYZToRGB(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize)
{
    return FXConvertPixels<L>(pSrc, srcStep, pDst, dstStep, roiSize, RgbFromXyz);
}

template <class T, TFXLayout L>
IppStatus YCCToRGB(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize)
{
    return FXConvertPixels<L>(pSrc, srcStep, pDst, dstStep, roiSize, RgbFromYcc);
}

template <class T, TFXLayout L>
IppStatus YCbCrToRGB(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize)
{
    return FXConvertPixels<L>(pSrc, srcStep, pDst, dstStep, roiSize, RgbFromYCbCr);
}

template <class T, TFXLayout L>
IppStatus LUVToRGB(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize)
{
    return FXConvertPixels<L>(pSrc, srcStep, pDst, dstStep, roiSize, RgbFromLuv);
}

template <class T, TFXLayout L>
IppStatus LabToBGR(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize)
{
    return FXConvertPixels<L>(pSrc, srcStep, pDst, dstStep, roiSize, BgrFromLab);
}

FX_KERNEL_TABLE(ColorConvertBack, FX_COLOR_CONVERT_BACK_PRIMITIVES)

} // namespace framix::prim::ref
