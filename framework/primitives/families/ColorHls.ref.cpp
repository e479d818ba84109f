// SPDX-License-Identifier: MIT
// RGB <-> HLS, reference: the definitions the vector kernels are proved against. The float steps
// and their order are the ones measured to reproduce IPP's vector code byte for byte
// (docs/primitives.md).
#include "framework/primitives/families/ColorHls.h"

#include "framework/primitives/families/FXColorPixels.h"

#include <algorithm>

namespace framix::prim::ref {
namespace {

// Lightness is the exact mean, halves to even; saturation the spread over the sum (or over its
// complement to 510 above mid-grey), both through the reciprocal estimate. When two channels
// share the maximum, red's formula wins over green's and green's over blue's.
TFXColor HlsFromRgb(int r, int g, int b)
{
    const int hi = std::max({r, g, b}), lo = std::min({r, g, b});
    const int spread = hi - lo, sum = hi + lo;
    const Ipp8u l = FXColorSample(float(sum) * 0.5f);
    if (spread == 0)
        return {0, l, 0};
    const int den = sum <= 255 ? sum : 510 - sum;
    const Ipp8u s = FXColorSample(float(spread * 255) * FXReciprocalEstimate(den));
    const Ipp8u h = r == hi   ? FXColorHue(0, g - b, spread)
                    : g == hi ? FXColorHue(2, b - r, spread)
                              : FXColorHue(4, r - g, spread);
    return {h, l, s};
}

// One channel of HLS -> RGB: hue h in degrees, shifted by the channel's 120 degrees.
float HlsChannel(float h, float m1, float m2)
{
    if (h >= 360.0f)
        h -= 360.0f;
    else if (h < 0.0f)
        h += 360.0f;
    if (h < 60.0f)
        return m1 + (m2 - m1) * (h / 60.0f);
    if (h < 180.0f)
        return m2;
    if (h < 240.0f)
        return m1 + (m2 - m1) * ((240.0f - h) / 60.0f);
    return m1;
}

// Single precision throughout, in this order (lightness scaled by the reciprocal of 255,
// saturation divided by 255), each channel rounded to nearest, halves to even.
TFXColor RgbFromHls(int h8, int l8, int s8)
{
    const float l = float(l8) * (1.0f / 255.0f);
    if (s8 == 0) {
        const Ipp8u grey = FXColorSample(l * 255.0f);
        return {grey, grey, grey};
    }
    const float s = float(s8) / 255.0f;
    const float h = float(h8) * float(360.0 / 255.0);
    const float m2 = l <= 0.5f ? l + l * s : l + s - l * s;
    const float m1 = 2.0f * l - m2;
    return {FXColorSample(HlsChannel(h + 120.0f, m1, m2) * 255.0f),
            FXColorSample(HlsChannel(h, m1, m2) * 255.0f),
            FXColorSample(HlsChannel(h - 120.0f, m1, m2) * 255.0f)};
}

} // namespace

template <class T, TFXLayout L>
IppStatus RGBToHLS(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize)
{
    return FXConvertPixels<L>(pSrc, srcStep, pDst, dstStep, roiSize, HlsFromRgb);
}

// Planes H, L, S from BGR pixels.
template <class T, TFXLayout L>
IppStatus BGRToHLS(const T* pSrc, int srcStep, T* pDst[3], int dstStep, IppiSize roiSize)
{
    return FXConvertPixelsToPlanes(pSrc, srcStep, pDst, dstStep, roiSize,
                                   [](int b, int g, int r) { return HlsFromRgb(r, g, b); });
}

template <class T, TFXLayout L>
IppStatus HLSToRGB(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize)
{
    return FXConvertPixels<L>(pSrc, srcStep, pDst, dstStep, roiSize, RgbFromHls);
}

// Planes H, L, S to BGR pixels.
template <class T, TFXLayout L>
IppStatus HLSToBGR(const T* pSrc[3], int srcStep, T* pDst, int dstStep, IppiSize roiSize)
{
    return FXConvertPlanesToPixels(pSrc, srcStep, pDst, dstStep, roiSize, [](int h, int l, int s) {
        const TFXColor rgb = RgbFromHls(h, l, s);
        return TFXColor{rgb[2], rgb[1], rgb[0]};
    });
}

FX_KERNEL_TABLE(ColorHls, FX_COLOR_HLS_PRIMITIVES)

} // namespace framix::prim::ref
