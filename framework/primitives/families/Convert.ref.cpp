// SPDX-License-Identifier: MIT
// Sample type conversion, reference: the definitions the vector kernels are proved against.
#include "framework/primitives/families/Convert.h"

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/FXRound.h"

namespace framix::prim::ref {

// Exact: every 8-bit and 16-bit value is a float.
template <class T, TFXLayout L>
IppStatus ConvertToFloat(const T* pSrc, int srcStep, Ipp32f* pDst, int dstStep, IppiSize roiSize)
{
    for (int y = 0; y < roiSize.height; ++y) {
        const T* in = FXRowAt(pSrc, srcStep, y);
        Ipp32f* out = FXRowAt(pDst, dstStep, y);
        for (int x = 0; x < roiSize.width; ++x)
            out[x] = Ipp32f(in[x]);
    }
    return ippStsNoErr;
}

// Clamped to the range first (NaN -> 0), then rounded as roundMode says (FXRound.h).
template <class T, TFXLayout L>
IppStatus ConvertFromFloat(const Ipp32f* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                           IppRoundMode roundMode)
{
    for (int y = 0; y < roiSize.height; ++y) {
        const Ipp32f* in = FXRowAt(pSrc, srcStep, y);
        T* out = FXRowAt(pDst, dstStep, y);
        for (int x = 0; x < roiSize.width; ++x)
            out[x] = FXSaturateRoundMode<T>(in[x], roundMode);
    }
    return ippStsNoErr;
}

FX_KERNEL_TABLE(Convert, FX_CONVERT_PRIMITIVES)

} // namespace framix::prim::ref
