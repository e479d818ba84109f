// SPDX-License-Identifier: MIT
// Colour twist and gamma, reference: the definitions the vector kernels are proved against.
#include "framework/primitives/families/ColorTwist.h"

#include "framework/primitives/families/FXColorPixels.h"

#include <array>

namespace framix::prim::ref {
namespace {

template <TFXLayout L>
IppStatus ApplyTable(const Ipp8u* pSrc, int srcStep, Ipp8u* pDst, int dstStep, IppiSize roi,
                     const std::array<Ipp8u, 256>& table)
{
    return FXConvertPixels<L>(pSrc, srcStep, pDst, dstStep, roi, [&](int a, int b, int c) {
        return TFXColor{table[a], table[b], table[c]};
    });
}

} // namespace

// Each output channel is FXTwistSample of its twist row (ColorTwist.h).
template <class T, TFXLayout L>
IppStatus ColorTwist32f(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                        const Ipp32f twist[3][4])
{
    return FXConvertPixels<L>(pSrc, srcStep, pDst, dstStep, roiSize, [&](int a, int b, int c) {
        TFXColor out;
        for (int k = 0; k < 3; ++k)
            out[k] = FXTwistSample(twist[k], a, b, c);
        return out;
    });
}

template <class T, TFXLayout L>
IppStatus GammaFwd(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize)
{
    return ApplyTable<L>(pSrc, srcStep, pDst, dstStep, roiSize, FXGammaTable(true));
}

template <class T, TFXLayout L>
IppStatus GammaInv(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize)
{
    return ApplyTable<L>(pSrc, srcStep, pDst, dstStep, roiSize, FXGammaTable(false));
}

FX_KERNEL_TABLE(ColorTwist, FX_COLOR_TWIST_PRIMITIVES)

} // namespace framix::prim::ref
