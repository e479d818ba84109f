// SPDX-License-Identifier: MIT
// Moves pixels between interleaved rows and one 32-bit vector per colour channel, for the colour
// families' vector kernels. Compiled once per level: include only from a level's kernel file.
#pragma once

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/FXPrimitiveShapes.h"
#include "framework/primitives/families/ColorHls.h"
#include "framework/primitives/families/FXColorMatrix.h"
#include "framework/primitives/simd/FXVec.h"
#include "framework/primitives/simd/FXVecPixels.h"

#include <bit>

namespace framix::prim::FX_SIMD_NS {

// Three colour channels of up to kLanes32 pixels.
struct TColorLanes {
    VI32 C0, C1, C2;
};

// Loads n <= kLanes32 pixels of kCh channels (lanes past n are zero). Through a small buffer,
// so a row's last pixels need no separate code and no byte outside the row is touched.
template <int kCh> inline TColorLanes LoadColorLanes(const Ipp8u* p, int n)
{
    alignas(64) Ipp32s t[3][kLanes32] = {};
    for (int i = 0; i < n; ++i, p += kCh) {
        t[0][i] = p[0];
        t[1][i] = p[1];
        t[2][i] = p[2];
    }
    return {LoadI32(t[0]), LoadI32(t[1]), LoadI32(t[2])};
}

// Stores channels 0 ... 2 of n pixels (alpha of four-channel pixels untouched); lanes hold
// samples already inside 0 ... 255.
template <int kCh> inline void StoreColorLanes(Ipp8u* p, int n, const TColorLanes& c)
{
    alignas(64) Ipp32s t[3][kLanes32];
    StoreI32(t[0], c.C0);
    StoreI32(t[1], c.C1);
    StoreI32(t[2], c.C2);
    for (int i = 0; i < n; ++i, p += kCh) {
        p[0] = Ipp8u(t[0][i]);
        p[1] = Ipp8u(t[1][i]);
        p[2] = Ipp8u(t[2][i]);
    }
}

// The same for three planes: pixels x ... x + n - 1 of each plane's row.
inline TColorLanes LoadColorPlanes(const Ipp8u* const* rows, int x, int n)
{
    alignas(64) Ipp32s t[3][kLanes32] = {};
    for (int i = 0; i < n; ++i) {
        t[0][i] = rows[0][x + i];
        t[1][i] = rows[1][x + i];
        t[2][i] = rows[2][x + i];
    }
    return {LoadI32(t[0]), LoadI32(t[1]), LoadI32(t[2])};
}

inline void StoreColorPlanes(Ipp8u* const* rows, int x, int n, const TColorLanes& c)
{
    alignas(64) Ipp32s t[3][kLanes32];
    StoreI32(t[0], c.C0);
    StoreI32(t[1], c.C1);
    StoreI32(t[2], c.C2);
    for (int i = 0; i < n; ++i) {
        rows[0][x + i] = Ipp8u(t[0][i]);
        rows[1][x + i] = Ipp8u(t[1][i]);
        rows[2][x + i] = Ipp8u(t[2][i]);
    }
}

// Runs convert (TColorLanes -> TColorLanes, results inside 0 ... 255) over every pixel of an
// image of layout L.
template <TFXLayout L, class Convert>
inline IppStatus ConvertColorLanes(const Ipp8u* pSrc, int srcStep, Ipp8u* pDst, int dstStep,
                                   IppiSize roi, Convert convert)
{
    return ConvertPixelLanes<FXChannels(L)>(pSrc, srcStep, pDst, dstStep, roi, [&](VI32 pixels) {
        const TColorLanes c =
            convert(TColorLanes{ChannelOf(pixels, 0), ChannelOf(pixels, 1), ChannelOf(pixels, 2)});
        return PixelsOf(c.C0, c.C1, c.C2);
    });
}

// Lane-wise helpers on 32-bit integers.
inline VI32 MaxI32(VI32 a, VI32 b)
{
    return Select(CmpGt(a, b), a, b);
}
inline VI32 MinI32(VI32 a, VI32 b)
{
    return Select(CmpGt(a, b), b, a);
}
// All ones where a == b, given a >= b.
inline VI32 EqualsAtMost(VI32 a, VI32 b)
{
    return Sub(SplatI32(-1), CmpGt(a, b));
}

// A float colour value to a sample, as FXColorSample: clamped to 0 ... 255 (NaN to 0), then
// rounded to nearest, halves to even.
inline VI32 ColorSample(VF32 v)
{
    return RoundToI32(Min(Max(v, SplatF32(0.0f)), SplatF32(255.0f)));
}

// The reciprocal estimates of ColorHls.h as floats, for Lookup.
inline const Ipp32f* ReciprocalEstimates()
{
    struct TTable {
        Ipp32f Values[256];
        TTable()
        {
            for (int i = 0; i < 256; ++i)
                Values[i] = std::bit_cast<Ipp32f>(kFXReciprocalEstimateBits[std::size_t(i)]);
        }
    };
    static const TTable kTable;
    return kTable.Values;
}

// A fixed-point matrix (FXColorMatrix.h) on pixel lanes, exactly as the reference computes it.
// Each weight (and the bias) is split into k * 65536 + w with w in [-32768, 32767]: k c * 65536
// is a whole multiple of 65536, so the floor of the sum is the sum of the k c plus the floor of
// the sum of the w c. The second needs two 16-bit multiply-adds per output channel (a pixel per
// 32-bit lane as word pairs (c0, c1) and (c2, 1)); the k are small (0, 1 or -1 mostly).
constexpr int FixedHigh(int w)
{
    return (w + 32768) >> 16;
}
constexpr int FixedLow(int w)
{
    return w - FixedHigh(w) * 65536;
}

// sum + k c.
template <int kK> inline VI32 AddMultiple(VI32 sum, VI32 c)
{
    if constexpr (kK == 0)
        return sum;
    else if constexpr (kK == 1)
        return Add(sum, c);
    else if constexpr (kK == -1)
        return Sub(sum, c);
    else
        return Add(sum, MulLo(c, SplatI32(kK)));
}

template <TFXFixedMatrix M, int kRow>
inline VI32 FixedRow(const TWordPairs& pairs, const VI32 (&c)[3])
{
    constexpr const int* w = M.W[kRow];
    constexpr int bias = M.Bias[kRow];
    const VI32 low = Add(MulAddWords(pairs.P01, AsI32(SplatPair16(FixedLow(w[0]), FixedLow(w[1])))),
                         MulAddWords(pairs.P2, AsI32(SplatPair16(FixedLow(w[2]), FixedLow(bias)))));
    VI32 sum = Add(ShiftRightI32(low, 16), SplatI32(FixedHigh(bias)));
    sum = AddMultiple<FixedHigh(w[0])>(sum, c[0]);
    sum = AddMultiple<FixedHigh(w[1])>(sum, c[1]);
    return AddMultiple<FixedHigh(w[2])>(sum, c[2]);
}

template <TFXFixedMatrix M> inline TChannelBytes FixedConvert(VI32 pixels)
{
    const TWordPairs pairs = WordPairsOf(pixels);
    const VI32 c[3] = {ChannelOf(pixels, 0), ChannelOf(pixels, 1), ChannelOf(pixels, 2)};
    return PixelsOf(FixedRow<M, 0>(pairs, c), FixedRow<M, 1>(pairs, c), FixedRow<M, 2>(pairs, c));
}

// A colour family's kernel for layout L that converts every pixel with kConvert (pixel lanes
// -> PixelsOf channel bytes); each Op names one, as `template <class T, TFXLayout L> constexpr
// auto& Op = ConvertWith<L, Convert>;`.
template <TFXLayout L, auto kConvert>
IppStatus ConvertWith(const Ipp8u* pSrc, int srcStep, Ipp8u* pDst, int dstStep, IppiSize roi)
{
    return ConvertPixelLanes<FXChannels(L)>(pSrc, srcStep, pDst, dstStep, roi, kConvert);
}

} // namespace framix::prim::FX_SIMD_NS
