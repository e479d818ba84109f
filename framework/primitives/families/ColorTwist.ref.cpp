// SPDX-License-Identifier: MIT
// Colour twist and gamma, reference: the definitions the vector kernels are proved against.
#include "framework/primitives/families/ColorTwist.h"

#include "framework/primitives/families/FXColorPixels.h"

#include <array>
#include <cmath>

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

// A NaN sum (an infinite weight times a zero sample, or infinities of both signs) saturates
// high, as IPP's does.
inline Ipp8u TwistSample(float sum)
{
    return std::isnan(sum) ? Ipp8u(255) : FXColorSample(sum);
}

// Each output channel is the float sum t[k][0] c0 + t[k][1] c1 + t[k][2] c2 + t[k][3], added
// left to right, then rounded to nearest (halves to even) and saturated.
template <class T, TFXLayout L>
IppStatus ColorTwist32f(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                        const Ipp32f twist[3][4])
{
    return FXConvertPixels<L>(pSrc, srcStep, pDst, dstStep, roiSize, [&](int a, int b, int c) {
        TFXColor out;
        for (int k = 0; k < 3; ++k)
            out[k] = TwistSample(twist[k][0] * float(a) + twist[k][1] * float(b) +
                                   twist[k][2] * float(c) + twist[k][3]);
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
