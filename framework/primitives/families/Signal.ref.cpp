// SPDX-License-Identifier: MIT
// Signal primitives, reference: the definitions the vector kernels are proved against.
#include "framework/primitives/families/Signal.h"

#include "framework/primitives/FXRound.h"

#include <cmath>
#include <cstdint>

namespace framix::prim::ref {

template <class T, TFXLayout L> IppStatus SignalSet(T val, T* pDst, int len)
{
    for (int i = 0; i < len; ++i)
        pDst[i] = val;
    return ippStsNoErr;
}

// Source and destination must not overlap (IPP does not support it either).
template <class T, TFXLayout L> IppStatus SignalCopy(const T* pSrc, T* pDst, int len)
{
    for (int i = 0; i < len; ++i)
        pDst[i] = pSrc[i];
    return ippStsNoErr;
}

// The exact sum in 64 bits, scaled by 2^-scaleFactor with halves to even, saturated.
template <class T, TFXLayout L>
IppStatus SignalAdd(const T* pSrc, T* pSrcDst, int len, int scaleFactor)
{
    for (int i = 0; i < len; ++i)
        pSrcDst[i] = FXSaturateInt32(
            FXScaleHalfEven(std::int64_t(pSrc[i]) + std::int64_t(pSrcDst[i]), scaleFactor));
    return ippStsNoErr;
}

// The exact 64-bit product, scaled and saturated as above.
template <class T, TFXLayout L> IppStatus SignalMulC(T val, T* pSrcDst, int len, int scaleFactor)
{
    for (int i = 0; i < len; ++i)
        pSrcDst[i] = FXSaturateInt32(
            FXScaleHalfEven(std::int64_t(val) * std::int64_t(pSrcDst[i]), scaleFactor));
    return ippStsNoErr;
}

// Arithmetic shift; 31 and more leave the sign (0 or -1), as IPP gives.
template <class T, TFXLayout L> IppStatus SignalRShiftC(int val, T* pSrcDst, int len)
{
    const int shift = val < 31 ? val : 31;
    for (int i = 0; i < len; ++i)
        pSrcDst[i] = T(pSrcDst[i] >> shift);
    return ippStsNoErr;
}

// re = magn * cos(phase), im = magn * sin(phase) in double precision, with the sine and cosine
// of Signal.h (IPP's own differ from the C library's, and between its processor paths, in the
// last bits; ours are within a few units of both).
template <class T, TFXLayout L>
IppStatus PolarToCart(const T* pSrcMagn, const T* pSrcPhase, T* pDstRe, T* pDstIm, int len)
{
    for (int i = 0; i < len; ++i)
        FXPolarToCartOne(pSrcMagn[i], pSrcPhase[i], pDstRe[i], pDstIm[i]);
    return ippStsNoErr;
}

FX_KERNEL_TABLE(Signal, FX_SIGNAL_PRIMITIVES)

} // namespace framix::prim::ref
