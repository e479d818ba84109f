// SPDX-License-Identifier: MIT
// Signal primitives, vector kernels: compiled once per level (see CMakeLists.txt). The scaled
// 32-bit arithmetic runs in double lanes, where sums (and products of constants up to 2^21) are
// exact and 2^-scaleFactor only moves the exponent.
#include "framework/primitives/families/Signal.h"

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/FXRound.h"
#include "framework/primitives/simd/FXVec.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace framix::prim::FX_SIMD_NS {

template <class T, TFXLayout L> IppStatus SignalSet(T val, T* pDst, int len)
{
    if constexpr (sizeof(T) == 1) {
        std::memset(pDst, val, std::size_t(len));
    } else {
        if (len < kLanes32)
            return kFXDeclined;
        const VI32 v = SplatI32(val);
        for (int i = 0; i < len; i += kLanes32)
            StoreI32(pDst + FXVectorStart(i, len, kLanes32), v);
    }
    return ippStsNoErr;
}

template <class T, TFXLayout L> IppStatus SignalCopy(const T* pSrc, T* pDst, int len)
{
    std::memcpy(pDst, pSrc, std::size_t(len) * sizeof(T));
    return ippStsNoErr;
}

namespace {

// round(v * 2^-scaleFactor) with halves to even, saturated to 32 bits, for exact integers v in
// double lanes; returns how many elements (whole vectors) it did. Scale factors beyond
// [-40, 100] give what those bounds give (|v| < 2^53).
template <class Values>
int ScaledVectors(const Ipp32s* pSrc, Ipp32s* pSrcDst, int len, int scaleFactor, Values values)
{
    const VF64 scale = SplatF64(std::ldexp(1.0, -std::clamp(scaleFactor, -40, 100)));
    const VF64 lowest = SplatF64(-2147483648.0), highest = SplatF64(2147483647.0);
    auto scaled = [&](VF64 v) { return Min(Max(RoundF64(Mul(v, scale)), lowest), highest); };
    int i = 0;
    for (; i + kLanes32 <= len; i += kLanes32) {
        const VI32 x = LoadI32(pSrcDst + i);
        const VI32 a = pSrc != nullptr ? LoadI32(pSrc + i) : x;
        StoreI32(pSrcDst + i, RoundToI32(scaled(values(ToF64Low(a), ToF64Low(x))),
                                    scaled(values(ToF64High(a), ToF64High(x)))));
    }
    return i;
}

} // namespace

template <class T, TFXLayout L>
IppStatus SignalAdd(const T* pSrc, T* pSrcDst, int len, int scaleFactor)
{
    if (len < kLanes32)
        return kFXDeclined;
    const int done =
        ScaledVectors(pSrc, pSrcDst, len, scaleFactor, [](VF64 a, VF64 b) { return Add(a, b); });
    for (int i = done; i < len; ++i)
        pSrcDst[i] = FXSaturateInt32(
            FXScaleHalfEven(std::int64_t(pSrc[i]) + std::int64_t(pSrcDst[i]), scaleFactor));
    return ippStsNoErr;
}

// Products of constants beyond 2^21 may not be exact in double: those run the reference.
template <class T, TFXLayout L> IppStatus SignalMulC(T val, T* pSrcDst, int len, int scaleFactor)
{
    if (len < kLanes32 || val > (1 << 21) || val < -(1 << 21))
        return kFXDeclined;
    const VF64 c = SplatF64(double(val));
    const int done = ScaledVectors(static_cast<const Ipp32s*>(nullptr), pSrcDst, len, scaleFactor,
                                   [&](VF64, VF64 x) { return Mul(c, x); });
    for (int i = done; i < len; ++i)
        pSrcDst[i] = FXSaturateInt32(
            FXScaleHalfEven(std::int64_t(val) * std::int64_t(pSrcDst[i]), scaleFactor));
    return ippStsNoErr;
}

template <class T, TFXLayout L> IppStatus SignalRShiftC(int val, T* pSrcDst, int len)
{
    if (len < kLanes32)
        return kFXDeclined;
    const int shift = val < 31 ? val : 31;
    for (int i = 0; i < len; i += kLanes32) { // the shifts of a moved-back vector would repeat
        if (i + kLanes32 > len) {
            for (; i < len; ++i)
                pSrcDst[i] >>= shift;
            break;
        }
        StoreI32(pSrcDst + i, ShiftRightArith(LoadI32(pSrcDst + i), shift));
    }
    return ippStsNoErr;
}

namespace {

// FXPolarSinCos lane by lane, in the same operations.
void SinCos(VF64 x, VF64& sine, VF64& cosine)
{
    const VF64 n = RoundF64(Mul(x, SplatF64(kFXPolarTwoOverPi)));
    const VF64 r =
        Sub(Sub(Sub(x, Mul(n, SplatF64(kFXPolarPio2[0]))), Mul(n, SplatF64(kFXPolarPio2[1]))),
            Mul(n, SplatF64(kFXPolarPio2[2])));
    const VF64 r2 = Mul(r, r);
    VF64 ps = SplatF64(kFXPolarSin[0]), pc = SplatF64(kFXPolarCos[0]);
    for (int i = 1; i < kFXPolarTerms; ++i) {
        ps = Add(Mul(ps, r2), SplatF64(kFXPolarSin[i]));
        pc = Add(Mul(pc, r2), SplatF64(kFXPolarCos[i]));
    }
    const VF64 s = Add(r, Mul(r, Mul(r2, ps))), c = Add(SplatF64(1.0), Mul(r2, pc));
    const VF64 zero = SplatF64(0.0), half = SplatF64(0.5), quarter = SplatF64(0.25);
    // n mod 4 as a quarter fraction (0, .25, .5, .75), also for negative n
    const VF64 halfN = Mul(n, half), q = Sub(Mul(n, quarter), FloorF64(Mul(n, quarter)));
    const VF64 q1 = Add(n, SplatF64(1.0));
    const VF64 qc = Sub(Mul(q1, quarter), FloorF64(Mul(q1, quarter)));
    const VF64 odd = Sub(halfN, FloorF64(halfN)); // 0 or 0.5
    const VF64 sv = IfGe(odd, half, c, s), cv = IfGe(odd, half, s, c);
    sine = IfGe(q, half, Sub(zero, sv), sv);    // n mod 4 is 2 or 3
    cosine = IfGe(qc, half, Sub(zero, cv), cv); // n mod 4 is 1 or 2
}

} // namespace

template <class T, TFXLayout L>
IppStatus PolarToCart(const T* pSrcMagn, const T* pSrcPhase, T* pDstRe, T* pDstIm, int len)
{
    // |phase| < kFXPolarLargePhase: the largest double below it, either sign (NaN fails both)
    const double below = std::nextafter(kFXPolarLargePhase, 0.0);
    const VF64 upper = SplatF64(below), lower = SplatF64(-below);
    const VF64 zero = SplatF64(0.0), one = SplatF64(1.0);
    int i = 0;
    for (; i + kLanes64 <= len; i += kLanes64) {
        const VF64 ph = LoadF64(pSrcPhase + i), m = LoadF64(pSrcMagn + i);
        double inside[kLanes64];
        StoreF64(inside, IfGe(ph, lower, IfGe(upper, ph, one, zero), zero));
        if (!std::all_of(inside, inside + kLanes64, [](double v) { return v == 1.0; }))
            break; // a large phase or NaN: the reference's loop finishes from here
        VF64 s, c;
        SinCos(ph, s, c);
        StoreF64(pDstRe + i, Mul(m, c));
        StoreF64(pDstIm + i, Mul(m, s));
    }
    for (; i < len; ++i)
        FXPolarToCartOne(pSrcMagn[i], pSrcPhase[i], pDstRe[i], pDstIm[i]);
    return ippStsNoErr;
}

FX_KERNEL_TABLE(Signal, FX_SIGNAL_PRIMITIVES)

} // namespace framix::prim::FX_SIMD_NS
