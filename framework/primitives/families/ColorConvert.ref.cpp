// SPDX-License-Identifier: MIT
// Colour conversion to other spaces, reference: the definitions the vector kernels are proved
// against. The arithmetic of each conversion (float steps and their order, reciprocal
// estimates, fixed-point weights, rounding) is the one measured to reproduce IPP's 8-bit
// results; docs/primitives.md records how closely.
#include "framework/primitives/families/ColorConvert.h"

#include "framework/primitives/families/ColorHls.h"

#include "framework/primitives/families/FXColorCie.h"
#include "framework/primitives/families/FXColorPixels.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace framix::prim::ref {
namespace {

// Value is the maximum; saturation the spread over it. Ties between maxima are broken
// cyclically here (red over green, green over blue, blue over red), unlike HLS.
TFXColor HsvFromRgb(int r, int g, int b)
{
    const int hi = std::max({r, g, b}), lo = std::min({r, g, b});
    const int spread = hi - lo;
    if (spread == 0)
        return {0, 0, Ipp8u(hi)};
    const Ipp8u s = FXColorSample(float(spread * 255) * FXReciprocalEstimate(hi));
    const Ipp8u h = r >= g && r > b   ? FXColorHue(0, g - b, spread)
                    : g >= b && g > r ? FXColorHue(2, b - r, spread)
                                      : FXColorHue(4, r - g, spread);
    return {h, s, Ipp8u(hi)};
}

TFXColor YuvFromRgb(int r, int g, int b)
{
    return FXFixedConvert(kFXRgbToYuv, r, g, b);
}

TFXColor YCbCrFromRgb(int r, int g, int b)
{
    return FXFixedConvert(kFXRgbToYCbCr, r, g, b);
}

TFXColor XyzFromRgb(int r, int g, int b)
{
    return FXFixedConvert(kFXRgbToXyz, r, g, b);
}

// A float colour value truncated to a sample (toward minus infinity), saturated.
Ipp8u TruncatedSample(float v)
{
    return FXSaturate<Ipp8u>(std::int64_t(std::floor(v)));
}

// Kodak PhotoYCC (truncating): luma over 1.402, chroma differences scaled into 8 bits around
// 156 and 137.
TFXColor YccFromRgb(int r, int g, int b)
{
    const float y = 0.299f * float(r) + 0.587f * float(g) + 0.114f * float(b);
    return {TruncatedSample(y * (1.0f / 1.402f)),
            TruncatedSample(111.4f / 255.0f * (float(b) - y) + 156.0f),
            TruncatedSample(135.64f / 255.0f * (float(r) - y) + 137.0f)};
}

// XYZ (0 ... 1 scale, X and Z over the white's for Lab) of a pixel, in float.
std::array<float, 3> CieXyz(const TFXCieMatrix& m, int r, int g, int b)
{
    std::array<float, 3> xyz;
    for (int i = 0; i < 3; ++i)
        xyz[i] = (m.W[i][0] * float(r) + m.W[i][1] * float(g)) + m.W[i][2] * float(b);
    return xyz;
}

// f(t) of CIE: the cube root above the knee, a line below.
float CieF(float t)
{
    return t > kFXCieKnee ? FXCieCubeRoot(t) : kFXCieSlopeF * t + kFXCieOffsetF;
}

// L in 0 ... 100 of luminance y with f(y) = fy.
float CieL(float y, float fy)
{
    return y > kFXCieKnee ? 116.0f * fy - 16.0f : kFXCieSlopeL * y;
}

// CIE L*u*v* against the D65 white; L in 0 ... 100 to 0 ... 255, u in -134 ... 220 and v in
// -140 ... 122 to 0 ... 255 (IPP's header writes 256 for v's span; the results show 262). Black
// (the only colour with X + 15 Y + 3 Z = 0) has u = v = 0.
TFXColor LuvFromRgb(int r, int g, int b)
{
    const auto [x, y, z] = CieXyz(kFXRgbToXyzCie, r, g, b);
    const float l = CieL(y, CieF(y));
    const float den = (x + 15.0f * y) + 3.0f * z;
    const float inv = den > 0.0f ? 1.0f / den : 0.0f;
    const float l13 = 13.0f * l;
    const float u = l13 * ((4.0f * x) * inv - kFXCieUn);
    const float v = l13 * ((9.0f * y) * inv - kFXCieVn);
    return {FXColorSample(l * 2.55f), FXColorSample((u + 134.0f) * float(255.0 / 354.0)),
            FXColorSample((v + 140.0f) * float(255.0 / 262.0))};
}

// CIE L*a*b* of BGR pixels against the D65 white, no gamma removed; a and b offset by 128.
TFXColor LabFromBgr(int b, int g, int r)
{
    const auto [x, y, z] = CieXyz(kFXRgbToXyzLab, r, g, b);
    const float fy = CieF(y);
    return {FXColorSample(CieL(y, fy) * 2.55f), FXColorSample(500.0f * (CieF(x) - fy) + 128.0f),
            FXColorSample(200.0f * (fy - CieF(z)) + 128.0f)};
}

} // namespace

template <class T, TFXLayout L>
IppStatus RGBToHSV(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize)
{
    return FXConvertPixels<L>(pSrc, srcStep, pDst, dstStep, roiSize, HsvFromRgb);
}

template <class T, TFXLayout L>
IppStatus RGBToLUV(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize)
{
    return FXConvertPixels<L>(pSrc, srcStep, pDst, dstStep, roiSize, LuvFromRgb);
}

template <class T, TFXLayout L>
IppStatus RGBToXYZ(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize)
{
    return FXConvertPixels<L>(pSrc, srcStep, pDst, dstStep, roiSize, XyzFromRgb);
}

template <class T, TFXLayout L>
IppStatus RGBToYCC(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize)
{
    return FXConvertPixels<L>(pSrc, srcStep, pDst, dstStep, roiSize, YccFromRgb);
}

template <class T, TFXLayout L>
IppStatus RGBToYCbCr(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize)
{
    return FXConvertPixels<L>(pSrc, srcStep, pDst, dstStep, roiSize, YCbCrFromRgb);
}

template <class T, TFXLayout L>
IppStatus RGBToYUV(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize)
{
    return FXConvertPixels<L>(pSrc, srcStep, pDst, dstStep, roiSize, YuvFromRgb);
}

template <class T, TFXLayout L>
IppStatus BGRToLab(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize)
{
    return FXConvertPixels<L>(pSrc, srcStep, pDst, dstStep, roiSize, LabFromBgr);
}

FX_KERNEL_TABLE(ColorConvert, FX_COLOR_CONVERT_PRIMITIVES)

} // namespace framix::prim::ref
