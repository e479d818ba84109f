// SPDX-License-Identifier: MIT
// Weighted accumulation, vector kernels: compiled for the levels with a fused multiply-add
// (AVX2, AVX-512; see CMakeLists.txt), which one rounding of SD + alpha (S - SD) needs.
#include "framework/primitives/families/Accumulate.h"

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/simd/FXVec.h"

#include <cstddef>
#include <cstring>

namespace framix::prim::FX_SIMD_NS {

template <class T, TFXLayout L>
IppStatus AddWeighted(const T* pSrc, int srcStep, Ipp32f* pSrcDst, int srcDstStep, IppiSize roiSize,
                      Ipp32f alpha)
{
    const VF32 weight = SplatF32(alpha);
    const auto accumulate = [weight](const T* s, Ipp32f* sd) {
        const VF32 acc = LoadF32(sd);
        StoreF32(sd, MulAdd(Sub(ToF32(LoadWiden(s)), acc), weight, acc));
    };
    const int n = roiSize.width;
    for (int y = 0; y < roiSize.height; ++y) {
        const T* s = FXRowAt(pSrc, srcStep, y);
        Ipp32f* sd = FXRowAt(pSrcDst, srcDstStep, y);
        int x = 0;
        for (; x + kLanes32 <= n; x += kLanes32)
            accumulate(s + x, sd + x);
        if (x == n)
            continue;
        // The rest through copies, so nothing beyond the row is touched (memcpy: no standard
        // template on floats is instantiated with this level's flags).
        T tailSrc[kLanes32] = {};
        Ipp32f tailAcc[kLanes32] = {};
        std::memcpy(tailSrc, s + x, std::size_t(n - x) * sizeof(T));
        std::memcpy(tailAcc, sd + x, std::size_t(n - x) * sizeof(Ipp32f));
        accumulate(tailSrc, tailAcc);
        std::memcpy(sd + x, tailAcc, std::size_t(n - x) * sizeof(Ipp32f));
    }
    return ippStsNoErr;
}

FX_KERNEL_TABLE(Accumulate, FX_ACCUMULATE_PRIMITIVES)

} // namespace framix::prim::FX_SIMD_NS
