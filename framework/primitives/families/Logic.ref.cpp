// SPDX-License-Identifier: MIT
// Bitwise logic, reference: the definitions the vector kernels are proved against.
#include "framework/primitives/families/Logic.h"

#include "framework/primitives/families/FXPointForms.h"
#include "framework/primitives/families/FXPointSamples.h"

namespace framix::prim::ref {
namespace {

template <class T, TFXLayout L, class Op>
IppStatus Bitwise(const T* pSrc1, int src1Step, const T* pSrc2, int src2Step, T* pDst, int dstStep,
                  IppiSize roiSize, Op op)
{
    FXForEachPair<T, L>(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roiSize,
                        [op](T a, T b) { return T(op(a, b)); });
    return ippStsNoErr;
}

} // namespace

template <class T, TFXLayout L>
IppStatus And(const T* pSrc1, int src1Step, const T* pSrc2, int src2Step, T* pDst, int dstStep,
              IppiSize roiSize)
{
    return Bitwise<T, L>(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roiSize,
                         [](T a, T b) { return a & b; });
}

template <class T, TFXLayout L>
IppStatus Or(const T* pSrc1, int src1Step, const T* pSrc2, int src2Step, T* pDst, int dstStep,
             IppiSize roiSize)
{
    return Bitwise<T, L>(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roiSize,
                         [](T a, T b) { return a | b; });
}

template <class T, TFXLayout L>
IppStatus Xor(const T* pSrc1, int src1Step, const T* pSrc2, int src2Step, T* pDst, int dstStep,
              IppiSize roiSize)
{
    return Bitwise<T, L>(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roiSize,
                         [](T a, T b) { return a ^ b; });
}

FX_POINT_IN_PLACE(AndI, And)
FX_POINT_IN_PLACE(OrI, Or)
FX_POINT_IN_PLACE(XorI, Xor)

template <class T, TFXLayout L> IppStatus NotI(T* pSrcDst, int srcDstStep, IppiSize roiSize)
{
    FXMapSamples<T, L>(pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize,
                       [](T s, int) { return T(~s); });
    return ippStsNoErr;
}

FX_KERNEL_TABLE(Logic, FX_LOGIC_PRIMITIVES)

} // namespace framix::prim::ref
