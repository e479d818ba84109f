// SPDX-License-Identifier: MIT
// Alpha compositing, vector kernels: compiled once per level (see CMakeLists.txt).
#include "framework/primitives/families/Blend.h"

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/FXRound.h"
#include "framework/primitives/simd/FXVec.h"
#include "framework/primitives/simd/FXVecDivide.h"
#include "framework/primitives/simd/FXVecWordDot.h"

#include "framework/primitives/families/FXPointRows.h"

#include <cstddef>
#include <cstdint>
#include <utility>

// Compositing computes (P * A + Q * B) / M^2 rounded to nearest (FXCompositeWeights) in one of
// three exact ways: weights that are multiples of M in 16-bit lanes (8-bit samples), 8-bit
// sample pairs times 16-bit weight pairs summed in 32-bit lanes and divided through a float
// reciprocal, and 16-bit samples times weights divided by M^2 in double precision.

namespace framix::prim::FX_SIMD_NS {
namespace {

// ---------------------------------------------------------------- 8-bit compositing

// round(t / 255) for t <= 65407 is ((t + 128) + ((t + 128) >> 8)) >> 8; larger t (saturated
// sums included) only occur for results above 256 and give 255 through the saturating adds.
inline VU16 RoundDiv255(VU16 t)
{
    const VU16 u = AddSat(t, SplatU16(128));
    return ShiftRight(AddSat(u, ShiftRight(u, 8)), 8);
}

// (p A + q B) / 255 with 8-bit weights p = P / 255, q = Q / 255.
inline VU16 CompositeByteWeights(VU16 a, VU16 b, VU16 p, VU16 q)
{
    return RoundDiv255(AddSat(MulLo(a, p), MulLo(b, q)));
}

// round(n / 65025) for 0 <= n < 255.5 * 65025; larger n give 256 or more. 65025 is odd, so
// DivRoundOddSmall's steps apply; its general bound does not reach this far, but the steps were
// checked equal to the exact quotient for every such n (with and without the fused
// multiply-add).
inline VI32 RoundDiv65025(VI32 n)
{
    return DivRoundOddSmall(n, SplatF32(float(1.0 / 65025.0)));
}

// Two byte vectors as sample pairs: lane k of each 128-bit block of Lane[q] holds (A, B), the
// two sources' samples at byte 4 q + k of that block, as 16-bit words.
struct TSamplePairs {
    VI32 Lane[4];
    TSamplePairs(VU8 a, VU8 b)
    {
        const VU8 lo = ZipLo8(a, b), hi = ZipHi8(a, b);
        Lane[0] = VI32{WidenLo(lo).V}, Lane[1] = VI32{WidenHi(lo).V};
        Lane[2] = VI32{WidenLo(hi).V}, Lane[3] = VI32{WidenHi(hi).V};
    }
};

// The composites of four quarters back to bytes in memory order (the packs undo the zips).
inline VU8 PackComposites(const VI32 (&r)[4])
{
    return PackU8(PackU16(r[0], r[1]), PackU16(r[2], r[3]));
}

// Weight pairs (P, Q) of unsigned 16-bit words as two pairs of signed words: First = P / 2
// (rounded down) and Second = P - First are both below 2^15 (P is at most 65025), the same for
// Q, so two multiply-adds give P A + Q B exactly.
struct TWeightHalves {
    VI32 First, Second;
    explicit TWeightHalves(VI32 pq)
    {
        const VU16 w{pq.V}, first = ShiftRight(w, 1);
        First = VI32{first.V}, Second = VI32{Sub(w, first).V};
    }
};

// P A + Q B for the sample pairs of one quarter, then rounded: the composite.
template <bool kFused> inline VI32 CompositePairs(VI32 pairs, VI32 first, VI32 second)
{
    return RoundDiv65025(
        MulAddTo<kFused>(VI32{MulAddPairs(VI16{pairs.V}, VI16{first.V}).V}, pairs, second));
}

template <TFXLayout L>
IppStatus CompositeConst8(const Ipp8u* a, int aStep, const Ipp8u* b, int bStep, Ipp8u* d, int dStep,
                          IppiSize roi, TFXCompositeWeights w)
{
    const int channels = FXChannels(L);
    if (w.P % 255 == 0 && w.Q % 255 == 0) {
        const VU16 p = SplatU16(int(w.P / 255)), q = SplatU16(int(w.Q / 255));
        ForEachRow(a, aStep, b, bStep, d, dStep, roi, channels,
                   [&](const Ipp8u* x, const Ipp8u* y, Ipp8u* z, int) {
                       const VU8 u = Load(x), v = Load(y);
                       Store(z, NarrowSat(CompositeByteWeights(WidenLo(u), WidenLo(v), p, q),
                                          CompositeByteWeights(WidenHi(u), WidenHi(v), p, q)));
                   });
        return ippStsNoErr;
    }
    const TWeightHalves halves(SplatI32(int(w.P | w.Q << 16)));
    WithWordDotProducts([&]<bool kFused>() {
        ForEachRow(a, aStep, b, bStep, d, dStep, roi, channels,
                   [&](const Ipp8u* x, const Ipp8u* y, Ipp8u* z, int) {
                       const TSamplePairs s(Load(x), Load(y));
                       VI32 r[4];
                       for (int k = 0; k < 4; ++k)
                           r[k] = CompositePairs<kFused>(s.Lane[k], halves.First, halves.Second);
                       Store(z, PackComposites(r));
                   });
    });
    return ippStsNoErr;
}

// ---------------------------------------------------------------- 16-bit compositing

// (P A + Q B) / 65535^2 for kLanes32 samples as A p + B q, with p = P / 65535^2 and
// q = Q / 65535^2 rounded to double. The exact value lies at least 1 / (2 65535^2), about 2^-33,
// from a half (never on it: 65535 is odd). The sum stays below 2^17: the weights' roundings move
// it by at most 2^-38 each, the roundings of B q, of the sum and (without fused multiply-adds)
// of A p by at most 2^-37 each, under 2^-34 in all, so the rounded sum is the exact result's
// rounding.
inline VI32 CompositeDouble(const Ipp16u* a, const Ipp16u* b, VF64 p, VF64 q)
{
    const auto half = [&](int at) {
        const VF64 bq = Mul(LoadWidenF64(b + at), q);
#if defined(FX_SIMD_LEVEL_SSE41)
        return Add(Mul(LoadWidenF64(a + at), p), bq);
#else
        return MulAdd(LoadWidenF64(a + at), p, bq);
#endif
    };
    return RoundToI32(half(0), half(kLanes64));
}

#if defined(FX_SIMD_LEVEL_AVX512)
// The same for 32 samples, with fewer instructions: samples widened straight to 64-bit lanes
// and converted by one instruction; the sum rounded to an integer by adding 1.5 * 2^52 (its
// low 32 bits then hold the integer: the same rounding to nearest, halves to even); the integers
// of two vectors gathered by one permute, then packed with saturation.
inline __m512d WidenToF64(const Ipp16u* p)
{
    return _mm512_cvtepu64_pd(
        _mm512_cvtepu16_epi64(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p))));
}
inline void CompositeDouble32(const Ipp16u* a, const Ipp16u* b, Ipp16u* d, VF64 p, VF64 q)
{
    __m512i r[4];
    for (int k = 0; k < 4; ++k)
        r[k] = _mm512_castpd_si512(_mm512_add_pd(
            _mm512_fmadd_pd(WidenToF64(a + 8 * k), p.V, _mm512_mul_pd(WidenToF64(b + 8 * k), q.V)),
            _mm512_set1_pd(0x1.8p52)));
    const __m512i low =
        _mm512_setr_epi32(0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30);
    // Per 128-bit block: four of samples 0 ... 15, then four of samples 16 ... 31.
    const __m512i packed = _mm512_packus_epi32(_mm512_permutex2var_epi32(r[0], low, r[1]),
                                               _mm512_permutex2var_epi32(r[2], low, r[3]));
    _mm512_storeu_si512(
        d, _mm512_permutexvar_epi64(_mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7), packed));
}
#elif defined(FX_SIMD_LEVEL_AVX2)
// The same for 16 samples without conversion instructions: a sample A as the low half of a 64-bit
// lane whose high half holds the bits of 2^52 is the double 2^52 + A, and the fused
// multiply-add of it with p and -2^52 p (exact: a power of two times p) is A p with one
// rounding, as before. The sum rounds to an integer by adding 1.5 * 2^52, whose low 32 bits then
// hold it.
struct TBiasedSamples {
    __m256d Even, Odd; // samples 0, 1, 4, 5 and 2, 3, 6, 7 of eight
    explicit TBiasedSamples(const Ipp16u* p)
    {
        const __m256i lanes =
            _mm256_cvtepu16_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
        const __m256i high = _mm256_set1_epi32(0x43300000);
        Even = _mm256_castsi256_pd(_mm256_unpacklo_epi32(lanes, high));
        Odd = _mm256_castsi256_pd(_mm256_unpackhi_epi32(lanes, high));
    }
};
inline __m256 RoundedSums(__m256d a, __m256d b, VF64 p, VF64 q, __m256d offsetP, __m256d offsetQ)
{
    return _mm256_castpd_ps(_mm256_add_pd(
        _mm256_add_pd(_mm256_fmadd_pd(a, p.V, offsetP), _mm256_fmadd_pd(b, q.V, offsetQ)),
        _mm256_set1_pd(0x1.8p52)));
}
inline void CompositeDouble16(const Ipp16u* a, const Ipp16u* b, Ipp16u* d, VF64 p, VF64 q)
{
    const __m256d offsetP = _mm256_mul_pd(p.V, _mm256_set1_pd(-0x1p52));
    const __m256d offsetQ = _mm256_mul_pd(q.V, _mm256_set1_pd(-0x1p52));
    __m256i eight[2]; // the integers of samples 0 ... 3 | 4 ... 7, then of 8 ... 11 | 12 ... 15
    for (int k = 0; k < 2; ++k) {
        const TBiasedSamples x(a + 8 * k), y(b + 8 * k);
        eight[k] = _mm256_castps_si256(
            _mm256_shuffle_ps(RoundedSums(x.Even, y.Even, p, q, offsetP, offsetQ),
                              RoundedSums(x.Odd, y.Odd, p, q, offsetP, offsetQ), 0x88));
    }
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(d),
                        _mm256_permute4x64_epi64(_mm256_packus_epi32(eight[0], eight[1]), 0xD8));
}
#endif

// Weights p = P / 65535, q = Q / 65535 with p + q <= 256 (premultiplied rules and plus with
// alphas below 256, as a cross-fade uses): p A + q B stays below 2^24, exact in single
// precision, and its correctly rounded quotient by 65535 rounds to the exact result (the half
// step of a float below 256 is 2^-17, less than 1 / 131070; checked for every sum).
inline VI32 CompositeSmallWeights(const Ipp16u* a, const Ipp16u* b, VF32 p, VF32 q)
{
    const VF32 n = Add(Mul(ToF32(LoadWiden(a)), p), Mul(ToF32(LoadWiden(b)), q));
    return RoundToI32(Div(n, SplatF32(65535.0f)));
}

IppStatus CompositeConst16(const Ipp16u* a, int aStep, const Ipp16u* b, int bStep, Ipp16u* d,
                           int dStep, IppiSize roi, TFXCompositeWeights w)
{
    constexpr std::uint64_t kM = 65535;
    if (w.P % kM == 0 && w.Q % kM == 0 && w.P / kM + w.Q / kM <= 256) {
        const VF32 p = SplatF32(float(w.P / kM)), q = SplatF32(float(w.Q / kM));
        ForEachRow(a, aStep, b, bStep, d, dStep, roi, 1,
                   [&](const Ipp16u* x, const Ipp16u* y, Ipp16u* z, int) {
                       Store(z,
                             NarrowSat2(CompositeSmallWeights(x, y, p, q),
                                        CompositeSmallWeights(x + kLanes32, y + kLanes32, p, q)));
                   });
        return ippStsNoErr;
    }
    const double scale = double(kM * kM);
    const VF64 p = SplatF64(double(w.P) / scale), q = SplatF64(double(w.Q) / scale);
    ForEachRow(a, aStep, b, bStep, d, dStep, roi, 1,
               [&](const Ipp16u* x, const Ipp16u* y, Ipp16u* z, int) {
#if defined(FX_SIMD_LEVEL_AVX512)
                   CompositeDouble32(x, y, z, p, q);
#elif defined(FX_SIMD_LEVEL_AVX2)
                   CompositeDouble16(x, y, z, p, q);
#else
                   Store(z, NarrowSat2(CompositeDouble(x, y, p, q),
                                       CompositeDouble(x + kLanes32, y + kLanes32, p, q)));
#endif
               });
    return ippStsNoErr;
}

// ---------------------------------------------------------------- per-pixel alpha

// Factor F of every pixel's weights, in the low 16 bits of its lane, from the pixels' alphas
// (low bits of a and b).
template <TFXCompositeFactor F> inline VI32 FactorOf(VI32 a, VI32 b)
{
    const VI32 max = SplatI32(255);
    if constexpr (F == TFXCompositeFactor::A)
        return a;
    else if constexpr (F == TFXCompositeFactor::B)
        return b;
    else if constexpr (F == TFXCompositeFactor::NotA)
        return Sub(max, a);
    else if constexpr (F == TFXCompositeFactor::NotB)
        return Sub(max, b);
    else if constexpr (F == TFXCompositeFactor::Max)
        return max;
    else
        return SplatI32(0);
}

// Each pixel's weight pair (P, Q) of rule Type, from the pixels of both sources.
template <int Type> inline VI32 PixelWeightPairs(VU8 u, VU8 v)
{
    constexpr TFXCompositeFactors kF = FXCompositeFactors(Type);
    const VI32 a = ShiftRight<24>(AsI32(u)), b = ShiftRight<24>(AsI32(v));
    const auto pair = [](VI32 first, VI32 second) { return Or(first, ShiftLeft<16>(second)); };
    const VU16 x{pair(FactorOf<kF.P1>(a, b), FactorOf<kF.Q1>(a, b)).V};
    const VU16 y{pair(FactorOf<kF.P2>(a, b), FactorOf<kF.Q2>(a, b)).V};
    return VI32{MulLo(x, y).V}; // products of two factors fit 16 bits
}

// Lane k of every 128-bit block copied to the block's four lanes.
inline VI32 SpreadLane(VI32 v, int k)
{
    alignas(16) Ipp8u pattern[16];
    for (int i = 0; i < 16; ++i)
        pattern[i] = Ipp8u(4 * k + i % 4);
    return AsI32(Shuffle(AsU8(v), Broadcast16(pattern)));
}

// Colour lanes: the rule on the pixel's samples. Alpha lanes: the non-premultiplied rule on
// samples of 255, which is the composite alpha. Quarter k of the sample pairs holds pixel k of
// each 128-bit block, whose weights SpreadLane copies to its four channels.
template <int Type, bool kFused>
void CompositePixels(const Ipp8u* a, int aStep, const Ipp8u* b, int bStep, Ipp8u* d, int dStep,
                     IppiSize roi)
{
    const VU8 alphaBytes = AlphaLanes();
    Ipp32s lanePattern[kLanes32]; // lane 3 of every block: the alpha of its pixel
    for (int k = 0; k < kLanes32; ++k)
        lanePattern[k] = k % 4 == 3 ? -1 : 0;
    const VI32 alphaLanes = LoadI32(lanePattern);
    ForEachRow(a, aStep, b, bStep, d, dStep, roi, 4,
               [&](const Ipp8u* x, const Ipp8u* y, Ipp8u* z, int) {
                   const VU8 u = Load(x), v = Load(y);
                   const TWeightHalves colour(PixelWeightPairs<Type>(u, v));
                   // The non-premultiplied rule's weights, for the alpha lanes of the
                   // premultiplied.
                   const TWeightHalves alpha(PixelWeightPairs<Type % 6>(u, v));
                   const TSamplePairs s(Or(u, alphaBytes), Or(v, alphaBytes));
                   VI32 r[4];
                   for (int k = 0; k < 4; ++k) {
                       VI32 first = SpreadLane(colour.First, k);
                       VI32 second = SpreadLane(colour.Second, k);
                       if constexpr (Type >= 6) {
                           first = Select(alphaLanes, SpreadLane(alpha.First, k), first);
                           second = Select(alphaLanes, SpreadLane(alpha.Second, k), second);
                       }
                       r[k] = CompositePairs<kFused>(s.Lane[k], first, second);
                   }
                   Store(z, PackComposites(r));
               });
}

template <int... Types>
void CompositePixelsOf(int alphaType, std::integer_sequence<int, Types...>, const Ipp8u* a,
                       int aStep, const Ipp8u* b, int bStep, Ipp8u* d, int dStep, IppiSize roi)
{
    WithWordDotProducts([&]<bool kFused>() {
        ((alphaType == Types
              ? (CompositePixels<Types, kFused>(a, aStep, b, bStep, d, dStep, roi), 0)
              : 0),
         ...);
    });
}

} // namespace

template <class T, TFXLayout L>
IppStatus AlphaCompC(const T* pSrc1, int src1Step, T alpha1, const T* pSrc2, int src2Step, T alpha2,
                     T* pDst, int dstStep, IppiSize roiSize, IppiAlphaType alphaType)
{
    const TFXCompositeWeights w = FXCompositeWeights(alphaType, alpha1, alpha2, kFXSampleMax<T>);
    if constexpr (sizeof(T) == 1)
        return CompositeConst8<L>(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roiSize, w);
    else
        return CompositeConst16(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roiSize, w);
}

template <class T, TFXLayout L>
IppStatus AlphaComp(const T* pSrc1, int src1Step, const T* pSrc2, int src2Step, T* pDst,
                    int dstStep, IppiSize roiSize, IppiAlphaType alphaType)
{
    CompositePixelsOf(alphaType, std::make_integer_sequence<int, 12>{}, pSrc1, src1Step, pSrc2,
                      src2Step, pDst, dstStep, roiSize);
    return ippStsNoErr;
}

FX_KERNEL_TABLE(Blend, FX_BLEND_PRIMITIVES)

} // namespace framix::prim::FX_SIMD_NS
