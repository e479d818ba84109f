// SPDX-License-Identifier: MIT
// Colour conversion to other spaces, reference: the definitions the vector kernels are proved
// against. The arithmetic of each conversion (float steps and their order, reciprocal
// estimates, fixed-point weights, rounding) is the one measured to reproduce IPP's 8-bit
// results; docs/primitives.md records how closely.
#include "framework/primitives/families/ColorConvert.h"

#include "framework/primitives/families/ColorHls.h"

#include "framework/primitives/families/FXColorPixels.h"

#include <algorithm>
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

// XYZ of a pixel on the 0 ... 1 scale.
struct TXyz {
    double X, Y, Z;
};

TXyz Xyz(int r, int g, int b)
{
    const double rf = r / 255.0, gf = g / 255.0, bf = b / 255.0;
    return {0.412453 * rf + 0.357580 * gf + 0.180423 * bf,
            0.212671 * rf + 0.715160 * gf + 0.072169 * bf,
            0.019334 * rf + 0.119193 * gf + 0.950227 * bf};
}

// CIE L*u*v* against the D65 white; L in 0 ... 100 to 0 ... 255, u in -134 ... 220 and v in
// -140 ... 122 to 0 ... 255 (IPP's header writes 256 for v's span; the results show 262).
TFXColor LuvFromRgb(int r, int g, int b)
{
    constexpr double kXn = 0.312713, kYn = 0.329016;
    constexpr double kUn = 4 * kXn / (-2 * kXn + 12 * kYn + 3);
    constexpr double kVn = 9 * kYn / (-2 * kXn + 12 * kYn + 3);
    const TXyz c = Xyz(r, g, b);
    const double l = c.Y > 0.008856 ? 116.0 * std::cbrt(c.Y) - 16.0 : 903.3 * c.Y;
    const double den = c.X + 15.0 * c.Y + 3.0 * c.Z;
    double u = 0, v = 0;
    if (den > 0) {
        u = 13.0 * l * (4.0 * c.X / den - kUn);
        v = 13.0 * l * (9.0 * c.Y / den - kVn);
    }
    return {FXColorSample(float(l * 255.0 / 100.0)), FXColorSample(float((u + 134.0) * 255.0 / 354.0)),
            FXColorSample(float((v + 140.0) * 255.0 / 262.0))};
}

// CIE L*a*b* of BGR pixels against the D65 white, no gamma removed; a and b offset by 128.
TFXColor LabFromBgr(int b, int g, int r)
{
    constexpr double kXn = 0.950455, kZn = 1.088753, kKnee = 0.008856;
    const TXyz c = Xyz(r, g, b);
    auto f = [](double t) { return t > kKnee ? std::cbrt(t) : 7.787 * t + 16.0 / 116.0; };
    const double l = c.Y > kKnee ? 116.0 * std::cbrt(c.Y) - 16.0 : 903.3 * c.Y;
    const double fy = f(c.Y);
    return {FXColorSample(float(l * 255.0 / 100.0)), FXColorSample(float(500.0 * (f(c.X / kXn) - fy) + 128.0)),
            FXColorSample(float(200.0 * (fy - f(c.Z / kZn)) + 128.0))};
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
