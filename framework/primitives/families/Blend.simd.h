// SPDX-License-Identifier: MIT
// Alpha compositing, vector kernels: compiled once per level (see CMakeLists.txt).
#include "framework/primitives/families/Blend.h"

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/FXRound.h"
#include "framework/primitives/simd/FXVec.h"

#include "framework/primitives/families/FXPointRows.h"

#include <cstddef>
#include <cstdint>
#include <utility>

// Compositing computes (P * A + Q * B) / M^2 rounded to nearest (FXCompositeWeights) in one of
// three exact ways: weights that are multiples of M in 16-bit lanes (8-bit samples), 8-bit
// products in single precision (sums below 2^24 are exact and the quotient is within the
// distance that separates the exact value from a half), and 16-bit samples times weights
// divided by M^2 in double precision.

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

// (P A + Q B) / 65025 from float weights. Every product is below 2^24 and so is the sum
// wherever the result is at most 256 (beyond, it saturates anyway). The exact quotient lies at
// least 1 / 130050 from a half; rounding to nearest is exact when the computed quotient is
// within that of it. A correctly rounded division is within 2^-17 below 256. With fused
// multiply-adds the division becomes n * (1 / 65025) with the reciprocal split into two floats,
// hi + lo: fma(n, hi, n lo) is within 2^-17 (its one rounding) plus about 2^-40 (lo's product,
// the reciprocal's remainder), still inside the bound.
inline VI32 CompositeFloat(VF32 a, VF32 b, VF32 p, VF32 q)
{
#if defined(FX_SIMD_LEVEL_SSE41)
    return RoundToI32(Div(Add(Mul(a, p), Mul(b, q)), SplatF32(65025.0f)));
#else
    constexpr double kInverse = 1.0 / 65025.0;
    constexpr float kHigh = float(kInverse), kLow = float(kInverse - double(kHigh));
    const VF32 n = MulAdd(a, p, Mul(b, q));
    return RoundToI32(MulAdd(n, SplatF32(kHigh), Mul(n, SplatF32(kLow))));
#endif
}

// The four 32-bit quarters of a vector of bytes, as floats, in the order Narrow4 puts back.
struct TQuarters {
    VF32 Q[4];
    explicit TQuarters(VU8 v)
    {
        const VU16 lo = WidenLo(v), hi = WidenHi(v);
        Q[0] = ToF32(WidenLo(lo)), Q[1] = ToF32(WidenHi(lo));
        Q[2] = ToF32(WidenLo(hi)), Q[3] = ToF32(WidenHi(hi));
    }
};

inline VU8 Narrow4(const VI32 (&r)[4])
{
    return NarrowSat(NarrowSat(r[0], r[1]), NarrowSat(r[2], r[3]));
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
    const VF32 p = SplatF32(float(w.P)), q = SplatF32(float(w.Q));
    ForEachRow(a, aStep, b, bStep, d, dStep, roi, channels,
               [&](const Ipp8u* x, const Ipp8u* y, Ipp8u* z, int) {
                   const TQuarters u(Load(x)), v(Load(y));
                   VI32 r[4];
                   for (int k = 0; k < 4; ++k)
                       r[k] = CompositeFloat(u.Q[k], v.Q[k], p, q);
                   Store(z, Narrow4(r));
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
    const __m512i low = _mm512_setr_epi32(0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30);
    // Per 128-bit block: four of samples 0 ... 15, then four of samples 16 ... 31.
    const __m512i packed = _mm512_packus_epi32(_mm512_permutex2var_epi32(r[0], low, r[1]),
                                               _mm512_permutex2var_epi32(r[2], low, r[3]));
    _mm512_storeu_si512(d, _mm512_permutexvar_epi64(_mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7),
                                                    packed));
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
#else
                   Store(z, NarrowSat2(CompositeDouble(x, y, p, q),
                                       CompositeDouble(x + kLanes32, y + kLanes32, p, q)));
#endif
               });
    return ippStsNoErr;
}

// ---------------------------------------------------------------- per-pixel alpha

// The weights of rule Type for alphas a, b (floats, one per lane): products of at most two
// 8-bit values, all exact.
template <int Type> void PixelWeights(VF32 a, VF32 b, VF32& p, VF32& q)
{
    const VF32 m = SplatF32(255.0f);
    const VF32 na = Sub(m, a), nb = Sub(m, b);
    constexpr int kRule = Type % 6;
    if constexpr (Type < 6) {
        p = kRule == ippAlphaOver || kRule == ippAlphaPlus ? Mul(a, m)
            : kRule == ippAlphaIn || kRule == ippAlphaATop ? Mul(a, b)
                                                           : Mul(a, nb); // out, xor
        q = kRule == ippAlphaIn || kRule == ippAlphaOut ? SplatF32(0.0f)
            : kRule == ippAlphaPlus                     ? Mul(b, m)
                                                        : Mul(na, b); // over, atop, xor
    } else {
        p = kRule == ippAlphaOver || kRule == ippAlphaPlus ? SplatF32(65025.0f)
            : kRule == ippAlphaIn || kRule == ippAlphaATop ? Mul(b, m)
                                                           : Mul(nb, m); // out, xor
        q = kRule == ippAlphaIn || kRule == ippAlphaOut ? SplatF32(0.0f)
            : kRule == ippAlphaPlus                     ? SplatF32(65025.0f)
                                                        : Mul(na, m); // over, atop, xor
    }
}

// Colour lanes: the rule on the pixel's samples. Alpha lanes: the non-premultiplied rule on
// samples of 255, which is the composite alpha.
template <int Type>
IppStatus CompositePixels(const Ipp8u* a, int aStep, const Ipp8u* b, int bStep, Ipp8u* d, int dStep,
                          IppiSize roi)
{
    const VU8 alphaBytes = AlphaLanes();
    Ipp32s lanePattern[kLanes32];
    for (int k = 0; k < kLanes32; ++k)
        lanePattern[k] = k % 4 == 3 ? -1 : 0;
    const VI32 alphaLanes = LoadI32(lanePattern);
    ForEachRow(a, aStep, b, bStep, d, dStep, roi, 4,
               [&](const Ipp8u* x, const Ipp8u* y, Ipp8u* z, int) {
                   const VU8 u = Load(x), v = Load(y);
                   // Samples (255 in the alpha lanes) and each pixel's alphas, lane by lane.
                   const TQuarters sa(Select(alphaBytes, SplatU8(255), u));
                   const TQuarters sb(Select(alphaBytes, SplatU8(255), v));
                   const TQuarters alphaA(BroadcastAlpha(u)), alphaB(BroadcastAlpha(v));
                   VI32 r[4];
                   for (int k = 0; k < 4; ++k) {
                       VF32 p, q;
                       PixelWeights<Type>(alphaA.Q[k], alphaB.Q[k], p, q);
                       if constexpr (Type >= 6) {
                           VF32 plainP, plainQ;
                           PixelWeights<Type % 6>(alphaA.Q[k], alphaB.Q[k], plainP, plainQ);
                           p = Select(alphaLanes, plainP, p);
                           q = Select(alphaLanes, plainQ, q);
                       }
                       r[k] = CompositeFloat(sa.Q[k], sb.Q[k], p, q);
                   }
                   Store(z, Narrow4(r));
               });
    return ippStsNoErr;
}

template <int... Types>
IppStatus CompositePixelsOf(int alphaType, std::integer_sequence<int, Types...>, const Ipp8u* a,
                            int aStep, const Ipp8u* b, int bStep, Ipp8u* d, int dStep, IppiSize roi)
{
    IppStatus s = ippStsNoErr;
    ((alphaType == Types ? (s = CompositePixels<Types>(a, aStep, b, bStep, d, dStep, roi), 0) : 0),
     ...);
    return s;
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
    return CompositePixelsOf(alphaType, std::make_integer_sequence<int, 12>{}, pSrc1, src1Step,
                             pSrc2, src2Step, pDst, dstStep, roiSize);
}

FX_KERNEL_TABLE(Blend, FX_BLEND_PRIMITIVES)

} // namespace framix::prim::FX_SIMD_NS
