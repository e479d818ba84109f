// SPDX-License-Identifier: MIT
// Weighted accumulation, reference: the definition the vector kernels are proved against.
#include "framework/primitives/families/Accumulate.h"

#include "framework/primitives/FXImageRows.h"

#include <cmath>

namespace framix::prim::ref {

// SD + alpha * (S - SD) with one rounding of the product and sum (a fused multiply-add), as
// IPP's AVX2 and AVX-512 code computes it; no clamping.
template <class T, TFXLayout L>
IppStatus AddWeighted(const T* pSrc, int srcStep, Ipp32f* pSrcDst, int srcDstStep, IppiSize roiSize,
                      Ipp32f alpha)
{
    for (int y = 0; y < roiSize.height; ++y) {
        const T* s = FXRowAt(pSrc, srcStep, y);
        Ipp32f* sd = FXRowAt(pSrcDst, srcDstStep, y);
        for (int x = 0; x < roiSize.width; ++x)
            sd[x] = std::fma(Ipp32f(s[x]) - sd[x], alpha, sd[x]);
    }
    return ippStsNoErr;
}

FX_KERNEL_TABLE(Accumulate, FX_ACCUMULATE_PRIMITIVES)

} // namespace framix::prim::ref
