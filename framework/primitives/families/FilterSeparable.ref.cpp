// SPDX-License-Identifier: MIT
// Separable row and column filters, reference: the definitions the vector kernels are proved
// against.
#include "framework/primitives/families/FilterSeparable.h"

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/FXRound.h"

#include <cstddef>

namespace framix::prim::ref {
// D(x, y) = sum over j of pKernel[j] * S(x + xAnchor - j, y): the kernel runs in inverse order
// (a true convolution), so pKernel[0] weights the rightmost pixel. Products and the running sum
// are single precision, taken in increasing j; the vector kernels keep exactly this order.
template <class T, TFXLayout L>
IppStatus FilterRow32f(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize dstRoiSize,
                       const Ipp32f* pKernel, int kernelSize, int xAnchor)
{
    constexpr int kCh = FXChannels(L);
    for (int y = 0; y < dstRoiSize.height; ++y) {
        const T* in = FXRowAt(pSrc, srcStep, y);
        T* out = FXRowAt(pDst, dstStep, y);
        for (int x = 0; x < dstRoiSize.width; ++x)
            for (int c = 0; c < FXProcessedChannels(L); ++c) {
                float sum = 0.0f;
                for (int j = 0; j < kernelSize; ++j)
                    sum += pKernel[j] * float(in[std::ptrdiff_t(x + xAnchor - j) * kCh + c]);
                out[x * kCh + c] = FXSaturateRound<T>(sum);
            }
    }
    return ippStsNoErr;
}

// D(x, y) = sum over i of pKernel[i] * S(x, y + yAnchor - i): pKernel[0] weights the lowest row.
template <class T, TFXLayout L>
IppStatus FilterColumn32f(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize dstRoiSize,
                          const Ipp32f* pKernel, int kernelSize, int yAnchor)
{
    constexpr int kCh = FXChannels(L);
    for (int y = 0; y < dstRoiSize.height; ++y) {
        T* out = FXRowAt(pDst, dstStep, y);
        for (int x = 0; x < dstRoiSize.width; ++x)
            for (int c = 0; c < FXProcessedChannels(L); ++c) {
                float sum = 0.0f;
                for (int i = 0; i < kernelSize; ++i)
                    sum += pKernel[i] * float(FXRowAt(pSrc, srcStep, y + yAnchor - i)[x * kCh + c]);
                out[x * kCh + c] = FXSaturateRound<T>(sum);
            }
    }
    return ippStsNoErr;
}

FX_KERNEL_TABLE(FilterSeparable, FX_FILTER_SEPARABLE_PRIMITIVES)

} // namespace framix::prim::ref
