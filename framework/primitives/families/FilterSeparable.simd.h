// SPDX-License-Identifier: MIT
// Separable row and column filters, vector kernels: compiled once per level (see CMakeLists.txt).
#include "framework/primitives/families/FilterSeparable.h"

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/FXRound.h"
#include "framework/primitives/simd/FXVec.h"

#include <cstddef>

namespace framix::prim::FX_SIMD_NS {
namespace {

// Clamp first, then convert with halves to even: the order FXSaturateRound uses.
template <class T> void StoreRounded(T* p, VF32 sum)
{
    const VF32 clamped = Min(Max(sum, SplatF32(0.0f)), SplatF32(float(kFXSampleMax<T>)));
    StoreNarrow(p, RoundToI32(clamped));
}

} // namespace

// Vectorised over the samples of a row, C3 and C4 alike: the taps of sample i sit at
// i + (xAnchor - j) * channels. The products are summed in the reference's order.
template <class T, TFXLayout L>
IppStatus FilterRow32f(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize dstRoiSize,
                       const Ipp32f* pKernel, int kernelSize, int xAnchor)
{
    constexpr int kCh = FXChannels(L);
    const int n = dstRoiSize.width * kCh;
    if (L == TFXLayout::AC4 || n < kLanes32)
        return kFXDeclined;
    for (int y = 0; y < dstRoiSize.height; ++y) {
        const T* in = FXRowAt(pSrc, srcStep, y) + std::ptrdiff_t(xAnchor) * kCh;
        T* out = FXRowAt(pDst, dstStep, y);
        for (int i = 0; i < n; i += kLanes32) {
            const int at = FXVectorStart(i, n, kLanes32);
            VF32 sum = SplatF32(0.0f);
            for (int j = 0; j < kernelSize; ++j)
                sum = Add(sum, Mul(SplatF32(pKernel[j]),
                                   ToF32(LoadWiden(in + at - std::ptrdiff_t(j) * kCh))));
            StoreRounded(out + at, sum);
        }
    }
    return ippStsNoErr;
}

template <class T, TFXLayout L>
IppStatus FilterColumn32f(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize dstRoiSize,
                          const Ipp32f* pKernel, int kernelSize, int yAnchor)
{
    const int n = dstRoiSize.width * FXChannels(L);
    if (L == TFXLayout::AC4 || n < kLanes32)
        return kFXDeclined;
    for (int y = 0; y < dstRoiSize.height; ++y) {
        const T* lowest = FXRowAt(pSrc, srcStep, y + yAnchor); // weighted by pKernel[0]
        T* out = FXRowAt(pDst, dstStep, y);
        for (int i = 0; i < n; i += kLanes32) {
            const int at = FXVectorStart(i, n, kLanes32);
            VF32 sum = SplatF32(0.0f);
            for (int k = 0; k < kernelSize; ++k)
                sum = Add(sum, Mul(SplatF32(pKernel[k]),
                                   ToF32(LoadWiden(FXRowAt(lowest, srcStep, -k) + at))));
            StoreRounded(out + at, sum);
        }
    }
    return ippStsNoErr;
}

FX_KERNEL_TABLE(FilterSeparable, FX_FILTER_SEPARABLE_PRIMITIVES)

} // namespace framix::prim::FX_SIMD_NS
