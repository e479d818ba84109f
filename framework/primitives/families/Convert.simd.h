// SPDX-License-Identifier: MIT
// Sample type conversion, vector kernels: compiled once per level (see CMakeLists.txt).
#include "framework/primitives/families/Convert.h"

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/FXRound.h"
#include "framework/primitives/simd/FXVec.h"

namespace framix::prim::FX_SIMD_NS {

template <class T, TFXLayout L>
IppStatus ConvertToFloat(const T* pSrc, int srcStep, Ipp32f* pDst, int dstStep, IppiSize roiSize)
{
    const int n = roiSize.width;
    if (n < kLanes32)
        return kFXDeclined;
    for (int y = 0; y < roiSize.height; ++y) {
        const T* in = FXRowAt(pSrc, srcStep, y);
        Ipp32f* out = FXRowAt(pDst, dstStep, y);
        for (int i = 0; i < n; i += kLanes32) {
            const int at = FXVectorStart(i, n, kLanes32);
            StoreF32(out + at, ToF32(LoadWiden(in + at)));
        }
    }
    return ippStsNoErr;
}

// Clamp (max with 0 first, so NaN gives 0), then the round mode, as FXSaturateRoundMode does.
template <class T, TFXLayout L, IppRoundMode Mode>
void ConvertRows(const Ipp32f* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize)
{
    const int n = roiSize.width;
    const VF32 zero = SplatF32(0.0f), top = SplatF32(float(kFXSampleMax<T>));
    const VF32 half = SplatF32(0.5f), one = SplatF32(1.0f);
    for (int y = 0; y < roiSize.height; ++y) {
        const Ipp32f* in = FXRowAt(pSrc, srcStep, y);
        T* out = FXRowAt(pDst, dstStep, y);
        for (int i = 0; i < n; i += kLanes32) {
            const int at = FXVectorStart(i, n, kLanes32);
            const VF32 v = Min(Max(LoadF32(in + at), zero), top);
            VI32 r;
            if constexpr (Mode == ippRndZero) {
                r = TruncToI32(v);
            } else if constexpr (Mode == ippRndNear) {
                r = RoundToI32(v);
            } else {
                const VF32 whole = TruncF32(v);
                r = TruncToI32(IfGe(Sub(v, whole), half, Add(whole, one), whole));
            }
            StoreNarrow(out + at, r);
        }
    }
}

template <class T, TFXLayout L>
IppStatus ConvertFromFloat(const Ipp32f* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                           IppRoundMode roundMode)
{
    if (roiSize.width < kLanes32)
        return kFXDeclined;
    if (roundMode == ippRndZero)
        ConvertRows<T, L, ippRndZero>(pSrc, srcStep, pDst, dstStep, roiSize);
    else if (roundMode == ippRndNear)
        ConvertRows<T, L, ippRndNear>(pSrc, srcStep, pDst, dstStep, roiSize);
    else
        ConvertRows<T, L, ippRndFinancial>(pSrc, srcStep, pDst, dstStep, roiSize);
    return ippStsNoErr;
}

FX_KERNEL_TABLE(Convert, FX_CONVERT_PRIMITIVES)

} // namespace framix::prim::FX_SIMD_NS
