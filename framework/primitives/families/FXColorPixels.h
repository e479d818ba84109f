// SPDX-License-Identifier: MIT
// Walks the pixels of an interleaved or planar image for the colour families' references: one
// function of the three colour samples per pixel, alpha (AC4) neither read nor written.
#pragma once

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/FXPrimitiveShapes.h"
#include "framework/primitives/FXRound.h"
#include "framework/primitives/families/ColorHls.h"
#include "framework/primitives/families/FXColorMatrix.h"

#include <array>
#include <cstddef>

namespace framix::prim {
inline namespace FX_ISA_NS {

using TFXColor = std::array<Ipp8u, 3>;

// A float colour value to a sample: nearest, halves to even, saturated.
inline Ipp8u FXColorSample(float v)
{
    return FXSaturateRound<Ipp8u>(v);
}

// The three output channels of a fixed-point matrix for one pixel.
inline TFXColor FXFixedConvert(const TFXFixedMatrix& m, int c0, int c1, int c2)
{
    TFXColor out;
    for (int i = 0; i < 3; ++i)
        out[i] =
            FXSaturate<Ipp8u>((m.W[i][0] * c0 + m.W[i][1] * c1 + m.W[i][2] * c2 + m.Bias[i]) >> 16);
    return out;
}

// Hue of a chromatic pixel in 8-bit units (255 = 360 degrees), as HLS and HSV compute it: 42.5
// per sextant, the offset within the sextant through the reciprocal estimate of the spread.
inline Ipp8u FXColorHue(int sextant, int numerator, int spread)
{
    float h = (float(sextant) + float(numerator) * FXReciprocalEstimate(spread)) * 42.5f;
    if (h < 0.0f)
        h += 255.0f;
    return FXColorSample(h);
}

// dst pixel = convert(src pixel's samples 0, 1, 2), both of layout L.
template <TFXLayout L, class Convert>
IppStatus FXConvertPixels(const Ipp8u* pSrc, int srcStep, Ipp8u* pDst, int dstStep, IppiSize roi,
                          Convert convert)
{
    constexpr int kCh = FXChannels(L);
    for (int y = 0; y < roi.height; ++y) {
        const Ipp8u* in = FXRowAt(pSrc, srcStep, y);
        Ipp8u* out = FXRowAt(pDst, dstStep, y);
        for (int x = 0; x < roi.width; ++x, in += kCh, out += kCh) {
            const TFXColor c = convert(in[0], in[1], in[2]);
            out[0] = c[0];
            out[1] = c[1];
            out[2] = c[2];
        }
    }
    return ippStsNoErr;
}

// Interleaved three-channel source, three destination planes.
template <class Convert>
IppStatus FXConvertPixelsToPlanes(const Ipp8u* pSrc, int srcStep, Ipp8u* const* pDst, int dstStep,
                                  IppiSize roi, Convert convert)
{
    for (int y = 0; y < roi.height; ++y) {
        const Ipp8u* in = FXRowAt(pSrc, srcStep, y);
        std::array<Ipp8u*, 3> out;
        for (int p = 0; p < 3; ++p)
            out[p] = FXRowAt(pDst[p], dstStep, y);
        for (int x = 0; x < roi.width; ++x, in += 3) {
            const TFXColor c = convert(in[0], in[1], in[2]);
            for (int p = 0; p < 3; ++p)
                out[p][x] = c[p];
        }
    }
    return ippStsNoErr;
}

// Three source planes, interleaved three-channel destination.
template <class Convert>
IppStatus FXConvertPlanesToPixels(const Ipp8u* const* pSrc, int srcStep, Ipp8u* pDst, int dstStep,
                                  IppiSize roi, Convert convert)
{
    for (int y = 0; y < roi.height; ++y) {
        std::array<const Ipp8u*, 3> in;
        for (int p = 0; p < 3; ++p)
            in[p] = FXRowAt(pSrc[p], srcStep, y);
        Ipp8u* out = FXRowAt(pDst, dstStep, y);
        for (int x = 0; x < roi.width; ++x, out += 3) {
            const TFXColor c = convert(in[0][x], in[1][x], in[2][x]);
            out[0] = c[0];
            out[1] = c[1];
            out[2] = c[2];
        }
    }
    return ippStsNoErr;
}

} // namespace FX_ISA_NS
} // namespace framix::prim
