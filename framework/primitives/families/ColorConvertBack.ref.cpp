// SPDX-License-Identifier: MIT
// Colour conversion back to RGB, reference: the definitions the vector kernels are proved
// against. As for the forward conversions, each arithmetic is the one measured to reproduce
// IPP's 8-bit results (docs/primitives.md).
#include "framework/primitives/families/ColorConvertBack.h"

#include "framework/primitives/families/FXColorCie.h"
#include "framework/primitives/families/FXColorPixels.h"

#include <cstddef>

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
    const Ipp8u m = FXColorSample(v - vs), n = FXColorSample(v - vs * f),
                k = FXColorSample(v - vs * (1.0f - f));
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
    return {FXColorSample(y + c2), FXColorSample(y - 0.194f * c1 - 0.509f * c2),
            FXColorSample(y + c1)};
}

// Linear RGB samples of an XYZ colour (X and Z over the white's for Lab), in float.
TFXColor CieSamples(const TFXCieMatrix& m, float x, float y, float z)
{
    TFXColor out;
    for (int i = 0; i < 3; ++i)
        out[std::size_t(i)] = FXColorSample((m.W[i][0] * x + m.W[i][1] * y) + m.W[i][2] * z);
    return out;
}

// The divisions by 13 L and by v' are multiplications by one reciprocal each.
TFXColor RgbFromLuv(int l8, int u8, int v8)
{
    if (l8 == 0)
        return {0, 0, 0};
    const float l = float(l8) * float(100.0 / 255.0);
    const float u = float(u8) * float(354.0 / 255.0) - 134.0f;
    const float v = float(v8) * float(262.0 / 255.0) - 140.0f;
    const float inv13l = 1.0f / (13.0f * l);
    const float up = u * inv13l + kFXCieUn, vp = v * inv13l + kFXCieVn;
    const float t = (l + 16.0f) * float(1.0 / 116.0);
    const float y = (t * t) * t;
    const float invVp = 1.0f / vp;
    const float x = ((2.25f * y) * up) * invVp;
    const float z = ((3.0f * y) * invVp - 5.0f * y) - x * kFXCieThird;
    return CieSamples(kFXXyzToRgbCie, x, y, z);
}

// Written in B, G, R order.
TFXColor BgrFromLab(int l8, int a8, int b8)
{
    const float p = (float(l8) * float(100.0 / 255.0) + 16.0f) * float(1.0 / 116.0);
    const float fx = p + float(a8 - 128) * 0.002f, fz = p - float(b8 - 128) * 0.005f;
    const TFXColor rgb = CieSamples(kFXXyzToRgbLab, (fx * fx) * fx, (p * p) * p, (fz * fz) * fz);
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
