// SPDX-License-Identifier: MIT
// Integer convolution, reference: the definitions the vector kernels are proved against.
#include "framework/primitives/families/FilterKernel.h"

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/FXRound.h"

#include <cstdint>

namespace framix::prim::ref {
namespace {

// Wide enough for any kernel: a product is below 2^47 in magnitude, and 64 bits would hold
// only 2^16 of them.
using TWideSum = __int128;

// sum / divisor rounded to the nearest integer, halves to even, then saturated. A negative
// quotient saturates to 0 whatever its rounding, so only non-negative ones are rounded.
template <class T> T DivideAndSaturate(TWideSum sum, std::int64_t divisor)
{
    if (divisor < 0) {
        sum = -sum;
        divisor = -divisor;
    }
    if (sum <= 0)
        return T(0);
    if (sum >= TWideSum(kFXSampleMax<T> + 1) * divisor)
        return T(kFXSampleMax<T>);
    return FXSaturate<T>(FXDivRoundHalfEven(std::int64_t(sum), divisor));
}

} // namespace

// IPP's legacy convolution: the kernel runs in inverse order and the anchor counts from its
// bottom-right cell, so pKernel[i * kw + j] weighs the pixel (x + anchor.x - j,
// y + anchor.y - i); pKernel[anchor.y * kw + anchor.x] weighs (x, y) itself.
template <class T, TFXLayout L>
IppStatus FilterKernel32s(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize dstRoiSize,
                          const Ipp32s* pKernel, IppiSize kernelSize, IppiPoint anchor, int divisor)
{
    constexpr int kCh = FXChannels(L);
    for (int y = 0; y < dstRoiSize.height; ++y) {
        T* out = FXRowAt(pDst, dstStep, y);
        for (int x = 0; x < dstRoiSize.width; ++x)
            for (int c = 0; c < FXProcessedChannels(L); ++c) {
                TWideSum sum = 0;
                for (int i = 0; i < kernelSize.height; ++i) {
                    const T* row = FXRowAt(pSrc, srcStep, y + anchor.y - i);
                    for (int j = 0; j < kernelSize.width; ++j)
                        sum += TWideSum(pKernel[i * kernelSize.width + j]) *
                               row[std::ptrdiff_t(x + anchor.x - j) * kCh + c];
                }
                out[x * kCh + c] = DivideAndSaturate<T>(sum, divisor);
            }
    }
    return ippStsNoErr;
}

// A fixed filter is the general kernel with the published matrix, anchored at its centre.
FX_DEFINE_FIXED_KERNEL_OPS

FX_KERNEL_TABLE(FilterKernel, FX_FILTER_KERNEL_PRIMITIVES)

} // namespace framix::prim::ref
