// SPDX-License-Identifier: MIT
// RGB <-> HLS, vector kernels: compiled once per level (see CMakeLists.txt). Every lane performs
// the reference's float operations in the reference's order, so all levels give its bytes.
#include "framework/primitives/families/ColorHls.h"

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/families/FXColorVectors.h"
#include "framework/primitives/simd/FXVec.h"

namespace framix::prim::FX_SIMD_NS {
namespace {

TColorLanes HlsFromRgb(VI32 r, VI32 g, VI32 b, const Ipp32f* reciprocal)
{
    const VI32 zero = SplatI32(0);
    const VI32 hi = MaxI32(MaxI32(r, g), b), lo = MinI32(MinI32(r, g), b);
    const VI32 spread = Sub(hi, lo), sum = Add(hi, lo);
    const VI32 chroma = CmpGt(spread, zero);
    const VI32 l = RoundToI32(Mul(ToF32(sum), SplatF32(0.5f)));
    const VI32 den = Select(CmpGt(sum, SplatI32(255)), Sub(SplatI32(510), sum), sum);
    const VI32 s =
        And(RoundToI32(Mul(ToF32(MulLo(spread, SplatI32(255))), Lookup(reciprocal, den))), chroma);
    // Red's formula where red is the maximum, else green's, else blue's.
    const VI32 isR = EqualsAtMost(hi, r), isG = EqualsAtMost(hi, g);
    const VI32 num = Select(isR, Sub(g, b), Select(isG, Sub(b, r), Sub(r, g)));
    const VI32 sextant = Select(isR, zero, Select(isG, SplatI32(2), SplatI32(4)));
    VF32 h = Mul(Add(ToF32(sextant), Mul(ToF32(num), Lookup(reciprocal, spread))), SplatF32(42.5f));
    // Negative only in red's sextant with green below blue: one turn (255) up. Adding 0 leaves
    // the other lanes exact.
    h = Add(h, ToF32(And(And(isR, CmpGt(zero, num)), SplatI32(255))));
    return {And(RoundToI32(h), chroma), l, s};
}

// One channel: hue h in degrees, already shifted by the channel's 120 degrees.
VI32 HlsChannel(VF32 h, VF32 m1, VF32 m2)
{
    const VF32 turn = SplatF32(360.0f), zero = SplatF32(0.0f);
    const VI32 atLeastTurn = Sub(SplatI32(-1), CmpGt(turn, h));
    h = Select(atLeastTurn, Sub(h, turn), Select(CmpGt(zero, h), Add(h, turn), h));
    const VF32 sixty = SplatF32(60.0f), span = Sub(m2, m1);
    const VF32 rise = Add(m1, Mul(span, Div(h, sixty)));
    const VF32 fall = Add(m1, Mul(span, Div(Sub(SplatF32(240.0f), h), sixty)));
    const VF32 v = Select(
        CmpGt(sixty, h), rise,
        Select(CmpGt(SplatF32(180.0f), h), m2, Select(CmpGt(SplatF32(240.0f), h), fall, m1)));
    return RoundToI32(Min(Max(Mul(v, SplatF32(255.0f)), zero), SplatF32(255.0f)));
}

TColorLanes RgbFromHls(VI32 h8, VI32 l8, VI32 s8)
{
    const VF32 l = Mul(ToF32(l8), SplatF32(1.0f / 255.0f));
    const VF32 s = Div(ToF32(s8), SplatF32(255.0f));
    const VF32 h = Mul(ToF32(h8), SplatF32(float(360.0 / 255.0)));
    const VF32 ls = Mul(l, s);
    const VF32 m2 = Select(CmpGt(l, SplatF32(0.5f)), Sub(Add(l, s), ls), Add(l, ls));
    const VF32 m1 = Sub(Mul(SplatF32(2.0f), l), m2);
    const VF32 third = SplatF32(120.0f);
    const VI32 grey = RoundToI32(Mul(l, SplatF32(255.0f)));
    const VI32 isGrey = Sub(SplatI32(-1), CmpGt(s8, SplatI32(0)));
    return {Select(isGrey, grey, HlsChannel(Add(h, third), m1, m2)),
            Select(isGrey, grey, HlsChannel(h, m1, m2)),
            Select(isGrey, grey, HlsChannel(Sub(h, third), m1, m2))};
}

} // namespace

template <class T, TFXLayout L>
IppStatus RGBToHLS(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize)
{
    const Ipp32f* reciprocal = ReciprocalEstimates();
    return ConvertColorLanes<L>(pSrc, srcStep, pDst, dstStep, roiSize, [&](const TColorLanes& c) {
        return HlsFromRgb(c.C0, c.C1, c.C2, reciprocal);
    });
}

template <class T, TFXLayout L>
IppStatus BGRToHLS(const T* pSrc, int srcStep, T* pDst[3], int dstStep, IppiSize roiSize)
{
    const Ipp32f* reciprocal = ReciprocalEstimates();
    for (int y = 0; y < roiSize.height; ++y) {
        const Ipp8u* in = FXRowAt(pSrc, srcStep, y);
        Ipp8u* out[3] = {FXRowAt(pDst[0], dstStep, y), FXRowAt(pDst[1], dstStep, y),
                         FXRowAt(pDst[2], dstStep, y)};
        int x = 0;
        for (; x + kLanes32 <= roiSize.width; x += kLanes32) {
            const VI32 pixels = LoadPixels<3>(in + x * 3);
            const TColorLanes hls = HlsFromRgb(ChannelOf(pixels, 2), ChannelOf(pixels, 1),
                                               ChannelOf(pixels, 0), reciprocal);
            StoreNarrow(out[0] + x, hls.C0);
            StoreNarrow(out[1] + x, hls.C1);
            StoreNarrow(out[2] + x, hls.C2);
        }
        if (const int n = roiSize.width - x; n > 0) {
            const TColorLanes bgr = LoadColorLanes<3>(in + x * 3, n);
            StoreColorPlanes(out, x, n, HlsFromRgb(bgr.C2, bgr.C1, bgr.C0, reciprocal));
        }
    }
    return ippStsNoErr;
}

template <class T, TFXLayout L>
IppStatus HLSToRGB(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize)
{
    return ConvertColorLanes<L>(pSrc, srcStep, pDst, dstStep, roiSize,
                                [](const TColorLanes& c) { return RgbFromHls(c.C0, c.C1, c.C2); });
}

template <class T, TFXLayout L>
IppStatus HLSToBGR(const T* pSrc[3], int srcStep, T* pDst, int dstStep, IppiSize roiSize)
{
    for (int y = 0; y < roiSize.height; ++y) {
        const Ipp8u* in[3] = {FXRowAt(pSrc[0], srcStep, y), FXRowAt(pSrc[1], srcStep, y),
                              FXRowAt(pSrc[2], srcStep, y)};
        Ipp8u* out = FXRowAt(pDst, dstStep, y);
        int x = 0;
        for (; x + kLanes32 <= roiSize.width; x += kLanes32) {
            const TColorLanes rgb =
                RgbFromHls(LoadWiden(in[0] + x), LoadWiden(in[1] + x), LoadWiden(in[2] + x));
            StorePixels<3>(out + x * 3, PixelsOf(rgb.C2, rgb.C1, rgb.C0));
        }
        if (const int n = roiSize.width - x; n > 0) {
            const TColorLanes hls = LoadColorPlanes(in, x, n);
            const TColorLanes rgb = RgbFromHls(hls.C0, hls.C1, hls.C2);
            StoreColorLanes<3>(out + x * 3, n, {rgb.C2, rgb.C1, rgb.C0});
        }
    }
    return ippStsNoErr;
}

FX_KERNEL_TABLE(ColorHls, FX_COLOR_HLS_PRIMITIVES)

} // namespace framix::prim::FX_SIMD_NS
