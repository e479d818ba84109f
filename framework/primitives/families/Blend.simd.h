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
// products in single precision (sums below 2^24 are exact and the division is correctly
// rounded), and for 16-bit samples a float estimate corrected by the exact remainder.

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

// kLanes32 samples: (P A + Q B) / 65025 from float weights. Every product is below 2^24 and
// so is the sum wherever the result is at most 256 (beyond, it saturates anyway). The
// correctly rounded quotient is within 2^-17 of the exact one below 256, while the exact one
// lies at least 1 / 130050 from a half: rounding it to nearest is exact.
inline VI32 CompositeFloat(VF32 a, VF32 b, VF32 p, VF32 q)
{
    const VF32 n = Add(Mul(a, p), Mul(b, q));
    return RoundToI32(Min(Div(n, SplatF32(65025.0f)), SplatF32(256.0f)));
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
                   VI32 r[4];
                   for (int k = 0; k < 4; ++k)
                       r[k] = CompositeFloat(ToF32(LoadWiden(x + k * kLanes32)),
                                             ToF32(LoadWiden(y + k * kLanes32)), p, q);
                   Store(z, NarrowSat4(r[0], r[1], r[2], r[3]));
               });
    return ippStsNoErr;
}

// ---------------------------------------------------------------- 16-bit compositing

// (p A + q B) / 65535 with weights p = P / 65535, q = Q / 65535 (every rule with
// premultiplied colours, and plus). The float estimate is within 0.04 of the exact quotient,
// so its rounding q0 is off by at most one; d = p A + q B - 65535 q0 is then below 2^31 in
// size and comes out right from wrapping 32-bit arithmetic. No exact half exists (65535 is
// odd): up when 2d > 65535, down when 2d < -65535.
inline VI32 CompositeWordWeights(const Ipp16u* pa, const Ipp16u* pb, VI32 p, VI32 q, VF32 pf,
                                 VF32 qf)
{
    const VI32 a = LoadWiden(pa), b = LoadWiden(pb);
    const VF32 estimate = Mul(Add(Mul(ToF32(a), pf), Mul(ToF32(b), qf)), SplatF32(1.0f / 65535));
    const VI32 q0 = RoundToI32(estimate);
    const VI32 d = Sub(Add(MulLo(a, p), MulLo(b, q)), MulLo(q0, SplatI32(65535)));
    const VI32 twice = Add(d, d);
    return Add(Sub(q0, CmpGt(twice, SplatI32(65535))), CmpGt(SplatI32(-65535), twice));
}

IppStatus CompositeConst16(const Ipp16u* a, int aStep, const Ipp16u* b, int bStep, Ipp16u* d,
                           int dStep, IppiSize roi, TFXCompositeWeights w)
{
    if (w.P % 65535 != 0 || w.Q % 65535 != 0)
        return kFXDeclined; // weights up to 2^32: the reference's 64-bit products run
    const int pw = int(w.P / 65535), qw = int(w.Q / 65535);
    const VI32 p = SplatI32(pw), q = SplatI32(qw);
    const VF32 pf = SplatF32(float(pw)), qf = SplatF32(float(qw));
    ForEachRow(
        a, aStep, b, bStep, d, dStep, roi, 1,
        [&](const Ipp16u* x, const Ipp16u* y, Ipp16u* z, int) {
            Store(z, NarrowSat2(CompositeWordWeights(x, y, p, q, pf, qf),
                                CompositeWordWeights(x + kLanes32, y + kLanes32, p, q, pf, qf)));
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
                   alignas(64) Ipp8u bytes[4 * kVecBytes];
                   Store(bytes, Select(alphaBytes, SplatU8(255), u));
                   Store(bytes + kVecBytes, Select(alphaBytes, SplatU8(255), v));
                   Store(bytes + 2 * kVecBytes, BroadcastAlpha(u));
                   Store(bytes + 3 * kVecBytes, BroadcastAlpha(v));
                   VI32 r[4];
                   for (int k = 0; k < 4; ++k) {
                       const Ipp8u* lane = bytes + k * kLanes32;
                       const VF32 alphaA = ToF32(LoadWiden(lane + 2 * kVecBytes));
                       const VF32 alphaB = ToF32(LoadWiden(lane + 3 * kVecBytes));
                       VF32 p, q;
                       PixelWeights<Type>(alphaA, alphaB, p, q);
                       if constexpr (Type >= 6) {
                           VF32 plainP, plainQ;
                           PixelWeights<Type % 6>(alphaA, alphaB, plainP, plainQ);
                           p = Select(alphaLanes, plainP, p);
                           q = Select(alphaLanes, plainQ, q);
                       }
                       r[k] = CompositeFloat(ToF32(LoadWiden(lane)),
                                             ToF32(LoadWiden(lane + kVecBytes)), p, q);
                   }
                   Store(z, NarrowSat4(r[0], r[1], r[2], r[3]));
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
