// SPDX-License-Identifier: MIT
// Alpha compositing: argument checks and the family's entry points.
#include "framework/primitives/families/Blend.h"

#include "framework/primitives/FXArgChecks.h"

namespace framix::prim {
namespace {

IppStatus CheckAlphaType(IppiAlphaType alphaType)
{
    return alphaType >= ippAlphaOver && alphaType <= ippAlphaPlusPremul ? ippStsNoErr
                                                                        : ippStsAlphaTypeErr;
}

template <class T, TFXLayout L>
IppStatus CheckAlphaConst(const T* pSrc1, int src1Step, T, const T* pSrc2, int src2Step, T, T* pDst,
                          int dstStep, IppiSize roiSize, IppiAlphaType alphaType)
{
    const IppStatus s =
        FXCheckBinary<T, L>(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roiSize);
    return s != ippStsNoErr ? s : CheckAlphaType(alphaType);
}

template <class T, TFXLayout L>
IppStatus CheckAlphaPixel(const T* pSrc1, int src1Step, const T* pSrc2, int src2Step, T* pDst,
                          int dstStep, IppiSize roiSize, IppiAlphaType alphaType)
{
    const IppStatus s =
        FXCheckBinary<T, L>(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roiSize);
    return s != ippStsNoErr ? s : CheckAlphaType(alphaType);
}

} // namespace

template <class T, TFXLayout L> inline constexpr auto CheckAlphaCompC = &CheckAlphaConst<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckAlphaComp = &CheckAlphaPixel<T, L>;

FX_DEFINE_FAMILY(Blend, FX_BLEND_PRIMITIVES)

} // namespace framix::prim
