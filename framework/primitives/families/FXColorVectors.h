// SPDX-License-Identifier: MIT
// Moves pixels between interleaved rows and one 32-bit vector per colour channel, for the colour
// families' vector kernels. Compiled once per level: include only from a level's kernel file.
#pragma once

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/FXPrimitiveShapes.h"
#include "framework/primitives/families/ColorHls.h"
#include "framework/primitives/families/FXColorMatrix.h"
#include "framework/primitives/families/FXFixedPlan.h"
#include "framework/primitives/simd/FXVec.h"
#include "framework/primitives/simd/FXVecPixels.h"
#include "framework/primitives/simd/FXVecWordDot.h"

#include <array>
#include <bit>
#include <cstddef>
#include <utility>

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

// Fixed-point matrices (FXColorMatrix.h), computed as their plans (FXFixedPlan.h) say: the
// channel words of each pair come from the loaded pixels by one byte shuffle; an output's sum
// is its bias, the plan's multiples of pairs and the 16-bit multiply-adds. Its floor over 65536
// is the sum's high word, so two outputs' high words are blended into one vector and a single
// signed pack saturates all three outputs to bytes.

// The shuffle that takes pixels as LoadBlocks3 (or a plain load of four-channel pixels) leaves
// them to lanes holding the words (channel kLo, channel kHi).
template <int kCh, int kLo, int kHi> constexpr std::array<Ipp32s, kLanes32> PairPattern()
{
    std::array<Ipp32s, kLanes32> pattern{};
    for (int i = 0; i < kLanes32; ++i) {
        const int at = (kCh == 3 ? Block3Start(i / 4) : 0) + i % 4 * kCh;
        pattern[std::size_t(i)] =
            Ipp32s(unsigned(at + kLo) | 0x80u << 8 | unsigned(at + kHi) << 16 | 0x80u << 24);
    }
    return pattern;
}
template <int kCh, int kLo, int kHi>
inline constexpr std::array<Ipp32s, kLanes32> kPairPattern = PairPattern<kCh, kLo, kHi>();

// Bytes of v chosen by pattern (within each 128-bit block; 0x80: zero).
inline VI32 ShuffleBytesBy(VI32 v, const std::array<Ipp32s, kLanes32>& pattern)
{
    return AsI32(Shuffle(AsU8(v), AsU8(LoadI32(pattern.data()))));
}

// The shuffle from the packed outputs (per 128-bit block: outputs 0 and 1 of four pixels
// alternating, then output 2 and a zero alternating) to the stored order: twelve bytes per block
// for three channels, pixel lanes for four (alpha bytes zero, not stored).
template <int kCh> constexpr std::array<Ipp32s, kLanes32> FixedStorePattern()
{
    std::array<Ipp32s, kLanes32> pattern{};
    for (int i = 0; i < 4 * kLanes32; ++i) {
        const int at = i % 16, pixel = at / kCh, c = at % kCh;
        const unsigned from = pixel >= 4 || c == 3 ? 0x80u : c < 2 ? 2 * pixel + c : 8 + 2 * pixel;
        pattern[std::size_t(i / 4)] |= Ipp32s(from << 8 * (i % 4));
    }
    return pattern;
}
template <int kCh>
inline constexpr std::array<Ipp32s, kLanes32> kFixedStorePattern = FixedStorePattern<kCh>();

// sum + k v.
template <int kK> inline VI32 AddMultiple(VI32 sum, VI32 v)
{
    if constexpr (kK > 0)
        return AddMultiple<kK - 1>(Add(sum, v), v);
    else if constexpr (kK < 0)
        return AddMultiple<kK + 1>(Sub(sum, v), v);
    else
        return sum;
}

// Output kRow's sum; J... enumerates the pairs.
template <TFXFixedMatrix M, TFXFixedPlan P, bool kFused, int kRow, int... J>
inline VI32 FixedSum(const VI32 (&pairs)[3], std::integer_sequence<int, J...>)
{
    constexpr TFXFixedWeights kWeights = FXFixedWeights(M, P);
    static_assert(kWeights.Exact, "the plan leaves a weight that does not fit 16 bits");
    VI32 sum = SplatI32(M.Bias[kRow]);
    ((sum = AddMultiple<P.Add[kRow][J]>(sum, pairs[J])), ...);
    const auto dot = [&](VI32 v, bool used, int lo, int hi) {
        if (used)
            sum = MulAddTo<kFused>(sum, v, AsI32(SplatPair16(lo, hi)));
    };
    (dot(pairs[J], P.Dot[kRow][J], kWeights.W[kRow][J][0], kWeights.W[kRow][J][1]), ...);
    return sum;
}

template <int kCh, TFXFixedMatrix M, TFXFixedPlan P, bool kFused>
inline void FixedConvertPixels(const Ipp8u* in, Ipp8u* out)
{
    const VI32 blocks = kCh == 3 ? LoadBlocks3(in) : LoadI32(reinterpret_cast<const Ipp32s*>(in));
    VI32 pairs[3] = {};
    pairs[0] = ShuffleBytesBy(blocks, kPairPattern<kCh, P.Pair[0][0], P.Pair[0][1]>);
    if constexpr (P.Pairs > 1)
        pairs[1] = ShuffleBytesBy(blocks, kPairPattern<kCh, P.Pair[1][0], P.Pair[1][1]>);
    if constexpr (P.Pairs > 2)
        pairs[2] = ShuffleBytesBy(blocks, kPairPattern<kCh, P.Pair[2][0], P.Pair[2][1]>);
    constexpr auto kPairs = std::make_integer_sequence<int, P.Pairs>();
    const VI32 sum0 = FixedSum<M, P, kFused, 0>(pairs, kPairs),
               sum1 = FixedSum<M, P, kFused, 1>(pairs, kPairs),
               sum2 = FixedSum<M, P, kFused, 2>(pairs, kPairs);
    // Per 128-bit block: outputs 0 and 1 of its four pixels alternating, then output 2 and 0.
    const VI32 bytes = AsI32(PackU8(VI16{HighWordsOf(sum0, sum1).V}, VI16{ShiftRight<16>(sum2).V}));
    if constexpr (kCh == 3)
        StoreBlocks3(out, ShuffleBytesBy(bytes, kFixedStorePattern<3>));
    else
        StorePixels4(out, ShuffleBytesBy(bytes, kFixedStorePattern<4>));
}

// The kernel of a fixed-point conversion of layout L; each Op names one, as `template <class T,
// TFXLayout L> constexpr auto& Op = FixedConvert<L, Matrix, Plan>;`.
template <TFXLayout L, TFXFixedMatrix M, TFXFixedPlan P>
IppStatus FixedConvert(const Ipp8u* pSrc, int srcStep, Ipp8u* pDst, int dstStep, IppiSize roi)
{
    return WithWordDotProducts([&]<bool kFused>() {
        return ForEachPixelVector<FXChannels(L)>(
            pSrc, srcStep, pDst, dstStep, roi, [](const Ipp8u* in, Ipp8u* out) {
                FixedConvertPixels<FXChannels(L), M, P, kFused>(in, out);
            });
    });
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
