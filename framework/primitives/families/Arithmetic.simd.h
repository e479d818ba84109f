// SPDX-License-Identifier: MIT
// Arithmetic, vector kernels: compiled once per level (see CMakeLists.txt).
#include "framework/primitives/families/Arithmetic.h"

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/FXRound.h"
#include "framework/primitives/simd/FXVec.h"

#include "framework/primitives/families/FXPointForms.h"
#include "framework/primitives/families/FXPointRows.h"

#include <cstddef>

// Every kernel treats a row as one sequence of samples (C1, C3 and C4 alike; AC4 computes the
// alpha lanes too and puts the destination's alpha back). 8-bit sums, differences and
// products are exact in 16-bit lanes; quotients are computed in single precision, which is
// exact here (see Quotient).

namespace framix::prim::FX_SIMD_NS {
namespace {

// ---------------------------------------------------------------- scaled results

// v * 2^-sf rounded to nearest, halves to even, for 1 <= sf <= 16: q = v >> sf goes up by one
// when the remainder plus q's lowest bit exceeds half of 2^sf (then a remainder of exactly
// half rounds up only for odd q).
inline VU16 RoundShift(VU16 v, int sf)
{
    const VU16 q = ShiftRight(v, sf);
    const VU16 rest = Sub(v, ShiftLeft(q, sf));
    const VU16 t = Add(rest, And(q, SplatU16(1)));
    const VU16 halfPlusOne = SplatU16((1 << (sf - 1)) + 1);
    return Sub(q, CmpEq(Max(t, halfPlusOne), t)); // masks are -1
}

// The exact 16-bit value of an 8-bit operation, scaled; sf <= 16 (beyond, everything rounds
// to zero). NarrowSat then saturates.
inline VU16 Scale(VU16 v, int sf)
{
    if (sf > 0)
        return RoundShift(v, sf);
    if (sf < 0) // anything above 255 saturates anyway, and 255 << 8 still fits 16 bits
        return ShiftLeft(Min(v, SplatU16(255)), -sf < 8 ? -sf : 8);
    return v;
}

// The exact results of the 8-bit operations in 16-bit lanes (IPP's order: b - a).
struct TSum8 {
    VU8 Fast(VU8 a, VU8 b) const { return AddSat(a, b); }
    VU16 Exact(VU16 a, VU16 b) const { return Add(a, b); }
};
struct TDifference8 {
    VU8 Fast(VU8 a, VU8 b) const { return SubSat(b, a); }
    VU16 Exact(VU16 a, VU16 b) const { return SubSat(b, a); } // negative saturates to 0
};
struct TProduct8 {
    VU8 Fast(VU8 a, VU8 b) const
    {
        return NarrowSat(MulLo(WidenLo(a), WidenLo(b)), MulLo(WidenHi(a), WidenHi(b)));
    }
    VU16 Exact(VU16 a, VU16 b) const { return MulLo(a, b); } // at most 255 * 255
};

template <TFXLayout L, class Op>
IppStatus Scaled8(const Ipp8u* a, int aStep, const Ipp8u* b, int bStep, Ipp8u* d, int dStep,
                  IppiSize roi, int sf, Op op)
{
    const VU8 alpha = AlphaLanes();
    const auto run = [&](auto vec) {
        ForEachRow(a, aStep, b, bStep, d, dStep, roi, FXChannels(L), vec);
    };
    if (sf == 0)
        run([&](const Ipp8u* x, const Ipp8u* y, Ipp8u* z, int) {
            Put<L>(z, op.Fast(Load(x), Load(y)), alpha);
        });
    else if (sf > 16) // every exact value is below 2^16: all round to zero
        run([&](const Ipp8u*, const Ipp8u*, Ipp8u* z, int) { Put<L>(z, SplatU8(0), alpha); });
    else
        run([&](const Ipp8u* x, const Ipp8u* y, Ipp8u* z, int) {
            const VU8 u = Load(x), v = Load(y);
            const VU16 lo = op.Exact(WidenLo(u), WidenLo(v)), hi = op.Exact(WidenHi(u), WidenHi(v));
            Put<L>(z, NarrowSat(Scale(lo, sf), Scale(hi, sf)), alpha);
        });
    return ippStsNoErr;
}

// 16-bit samples: the unscaled results are exact in 16-bit lanes; other scale factors run the
// reference.
struct TSum16 {
    VU16 operator()(VU16 a, VU16 b) const { return AddSat(a, b); }
};
struct TDifference16 {
    VU16 operator()(VU16 a, VU16 b) const { return SubSat(b, a); }
};
struct TProduct16 {
    VU16 operator()(VU16 a, VU16 b) const
    {
        const VU16 overflow = Xor(CmpEq(MulHi(a, b), SplatU16(0)), SplatU16(0xFFFF));
        return Or(MulLo(a, b), overflow);
    }
};

template <TFXLayout L, class Op>
IppStatus Scaled16(const Ipp16u* a, int aStep, const Ipp16u* b, int bStep, Ipp16u* d, int dStep,
                   IppiSize roi, int sf, Op op)
{
    if (sf != 0)
        return kFXDeclined;
    const VU8 alpha = AlphaLanes();
    ForEachRow(a, aStep, b, bStep, d, dStep, roi, FXChannels(L),
               [&](const Ipp16u* x, const Ipp16u* y, Ipp16u* z, int) {
                   Put<L>(z, op(Load(x), Load(y)), alpha);
               });
    return ippStsNoErr;
}

template <class T, TFXLayout L, class Op8, class Op16>
IppStatus Scaled(const T* a, int aStep, const T* b, int bStep, T* d, int dStep, IppiSize roi,
                 int sf, Op8 op8, Op16 op16)
{
    if constexpr (sizeof(T) == 1)
        return Scaled8<L>(a, aStep, b, bStep, d, dStep, roi, sf, op8);
    else
        return Scaled16<L>(a, aStep, b, bStep, d, dStep, roi, sf, op16);
}

// ---------------------------------------------------------------- quotients

// b * 2^-sf / a, rounded halves to even and saturated, for a kLanes32 chunk: fl(b / a) * 2^-sf
// rounded to nearest-even is exact. An exact half is representable and stays exact. Any
// other value v lies at least 1 / (2a 2^sf) from a half (sf >= 0), or 1 / (2a) (sf < 0), while
// the float's relative error 2^-24 moves it by at most v 2^-24: less, for sf >= 0, as b < 2^23,
// and for sf < 0 wherever v does not saturate, if the samples are 8-bit (v < 256 <= 2^23 / a).
// a = 0 gives infinity (clamped, then saturated) or NaN for 0 / 0 (converts to a negative: 0).
template <class T> VI32 Quotient(const T* a, const T* b, VF32 scale)
{
    const VF32 q = Mul(Div(ToF32(LoadWiden(b)), ToF32(LoadWiden(a))), scale);
    // Min keeps a NaN, its second operand.
    return RoundToI32(Min(SplatF32(float(kFXSampleMax<T>) + 1.0f), q));
}

// 2^-sf for the quotient kernels; beyond +-30 every result is 0 or saturates (except
// divisions by zero, which the float's infinity and NaN keep).
inline VF32 QuotientScale(int scaleFactor)
{
    const int sf = scaleFactor < -30 ? -30 : scaleFactor > 30 ? 30 : scaleFactor;
    return SplatF32(sf >= 0 ? 1.0f / float(1u << sf) : float(1u << -sf));
}

template <TFXLayout L>
IppStatus Divide(const Ipp8u* a, int aStep, const Ipp8u* b, int bStep, Ipp8u* d, int dStep,
                 IppiSize roi, int scaleFactor)
{
    const VF32 scale = QuotientScale(scaleFactor);
    const VU8 alpha = AlphaLanes();
    // A zero alpha divisor is no division by zero: AC4 leaves the alpha alone.
    const VU8 colour = L == TFXLayout::AC4 ? Xor(alpha, SplatU8(0xFF)) : SplatU8(0xFF);
    VU8 zeros = SplatU8(0);
    ForEachRow(a, aStep, b, bStep, d, dStep, roi, FXChannels(L),
               [&](const Ipp8u* x, const Ipp8u* y, Ipp8u* z, int) {
                   zeros = Or(zeros, And(CmpEq(Load(x), SplatU8(0)), colour));
                   constexpr int k = kLanes32;
                   Put<L>(z,
                          NarrowSat4(Quotient(x, y, scale), Quotient(x + k, y + k, scale),
                                     Quotient(x + 2 * k, y + 2 * k, scale),
                                     Quotient(x + 3 * k, y + 3 * k, scale)),
                          alpha);
               });
    return Any(zeros) ? ippStsDivByZero : ippStsNoErr;
}

// 16-bit samples scaled up (sf < 0) run the reference: the float is not exact enough there.
template <TFXLayout L>
IppStatus Divide(const Ipp16u* a, int aStep, const Ipp16u* b, int bStep, Ipp16u* d, int dStep,
                 IppiSize roi, int scaleFactor)
{
    if (scaleFactor < 0)
        return kFXDeclined;
    const VF32 scale = QuotientScale(scaleFactor);
    VU16 zeros = SplatU16(0);
    ForEachRow(
        a, aStep, b, bStep, d, dStep, roi, FXChannels(L),
        [&](const Ipp16u* x, const Ipp16u* y, Ipp16u* z, int) {
            zeros = Or(zeros, CmpEq(Load(x), SplatU16(0)));
            Put<L>(z,
                   NarrowSat2(Quotient(x, y, scale), Quotient(x + kLanes32, y + kLanes32, scale)),
                   VU8{});
        });
    return Any(zeros) ? ippStsDivByZero : ippStsNoErr;
}

// ---------------------------------------------------------------- constant fractions

// floor(s * v / 255): the 16-bit product t <= 65025, and floor(t / 255) = (t * 0x8081) >> 23
// for every 16-bit t.
inline VU16 Fraction8(VU16 s, VU16 v)
{
    return ShiftRight(MulHi(MulLo(s, v), SplatU16(0x8081)), 7);
}

// floor(s * v / 65535): with the product t = hi * 2^16 + lo = hi * 65535 + (hi + lo), the
// quotient is hi, plus one when hi + lo reaches 65535 (never twice: t < 2^32 - 2^17).
inline VU16 Fraction16(VU16 s, VU16 v)
{
    const VU16 hi = MulHi(s, v);
    return Sub(hi, CmpEq(AddSat(MulLo(s, v), hi), SplatU16(0xFFFF)));
}

template <class T, TFXLayout L>
IppStatus ScaleByFractions(const T* src, int srcStep, const T* value, T* dst, int dstStep,
                           IppiSize roi)
{
    const TChannelConstants<T, L> values(value);
    ForEachRow(src, srcStep, static_cast<const T*>(nullptr), 0, dst, dstStep, roi, FXChannels(L),
               [&](const T* x, const T*, T* z, int at) {
                   const auto s = Load(x);
                   const auto v = values.At(at);
                   if constexpr (sizeof(T) == 1)
                       Store(z, NarrowSat(Fraction8(WidenLo(s), WidenLo(v)),
                                          Fraction8(WidenHi(s), WidenHi(v))));
                   else
                       Store(z, Fraction16(s, v));
               });
    return ippStsNoErr;
}

} // namespace

template <class T, TFXLayout L>
IppStatus Add(const T* pSrc1, int src1Step, const T* pSrc2, int src2Step, T* pDst, int dstStep,
              IppiSize roiSize, int scaleFactor)
{
    return Scaled<T, L>(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roiSize, scaleFactor,
                        TSum8{}, TSum16{});
}

template <class T, TFXLayout L>
IppStatus Sub(const T* pSrc1, int src1Step, const T* pSrc2, int src2Step, T* pDst, int dstStep,
              IppiSize roiSize, int scaleFactor)
{
    return Scaled<T, L>(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roiSize, scaleFactor,
                        TDifference8{}, TDifference16{});
}

template <class T, TFXLayout L>
IppStatus Mul(const T* pSrc1, int src1Step, const T* pSrc2, int src2Step, T* pDst, int dstStep,
              IppiSize roiSize, int scaleFactor)
{
    return Scaled<T, L>(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roiSize, scaleFactor,
                        TProduct8{}, TProduct16{});
}

template <class T, TFXLayout L>
IppStatus Div(const T* pSrc1, int src1Step, const T* pSrc2, int src2Step, T* pDst, int dstStep,
              IppiSize roiSize, int scaleFactor)
{
    return Divide<L>(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roiSize, scaleFactor);
}

template <class T, TFXLayout L>
IppStatus MulCScaleV(const T* pSrc, int srcStep, const T* value, T* pDst, int dstStep,
                     IppiSize roiSize)
{
    return ScaleByFractions<T, L>(pSrc, srcStep, value, pDst, dstStep, roiSize);
}

FX_POINT_IN_PLACE_SFS(AddI, Add)
FX_POINT_IN_PLACE_SFS(SubI, Sub)
FX_POINT_IN_PLACE_SFS(MulI, Mul)
FX_POINT_IN_PLACE_SFS(DivI, Div)
FX_POINT_CONSTANT_FORMS(MulCScale)

template <class T, TFXLayout L>
IppStatus AbsDiff(const T* pSrc1, int src1Step, const T* pSrc2, int src2Step, T* pDst, int dstStep,
                  IppiSize roiSize)
{
    ForEachRow(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roiSize, FXChannels(L),
               [](const T* x, const T* y, T* z, int) {
                   const auto a = Load(x), b = Load(y);
                   Store(z, Or(SubSat(a, b), SubSat(b, a)));
               });
    return ippStsNoErr;
}

// Stops at the first row that holds the largest possible value.
template <class T, TFXLayout L>
IppStatus Max(const T* pSrc, int srcStep, IppiSize roiSize, T* pResult)
{
    const int n = roiSize.width * FXChannels(L);
    VU8 best = SplatU8(0);
    int tail = 0;
    for (int y = 0; y < roiSize.height; ++y) {
        const T* row = FXRowAt(pSrc, srcStep, y);
        int i = 0;
        for (; i + kLanes<T> <= n; i += kLanes<T>)
            best = Max(best, Load(row + i));
        for (; i < n; ++i)
            tail = row[i] > tail ? row[i] : tail;
        if (MaxLane(best) == kFXSampleMax<T> || tail == kFXSampleMax<T>)
            break;
    }
    const int vectors = MaxLane(best);
    *pResult = T(vectors > tail ? vectors : tail);
    return ippStsNoErr;
}

FX_KERNEL_TABLE(Arithmetic, FX_ARITHMETIC_PRIMITIVES)

} // namespace framix::prim::FX_SIMD_NS
