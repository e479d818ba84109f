// SPDX-License-Identifier: MIT
// Arithmetic: argument checks and the family's entry points.
#include "framework/primitives/families/Arithmetic.h"

#include "framework/primitives/FXArgChecks.h"

namespace framix::prim {
namespace {

template <class T, TFXLayout L>
IppStatus CheckTwoSources(const T* pSrc1, int src1Step, const T* pSrc2, int src2Step, T* pDst,
                          int dstStep, IppiSize roiSize)
{
    const int w = roiSize.width;
    return FXCheckPointArgs(roiSize,
                            {FXImageArg(pSrc1, src1Step, w, L), FXImageArg(pSrc2, src2Step, w, L),
                             FXImageArg(pDst, dstStep, w, L)});
}

template <class T, TFXLayout L>
IppStatus CheckScaled(const T* pSrc1, int src1Step, const T* pSrc2, int src2Step, T* pDst,
                      int dstStep, IppiSize roiSize, int)
{
    return CheckTwoSources<T, L>(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roiSize);
}

template <class T, TFXLayout L>
IppStatus CheckScaledInPlace(const T* pSrc, int srcStep, T* pSrcDst, int srcDstStep,
                             IppiSize roiSize, int)
{
    const int w = roiSize.width;
    return FXCheckPointArgs(
        roiSize, {FXImageArg(pSrc, srcStep, w, L), FXImageArg(pSrcDst, srcDstStep, w, L)});
}

template <class T, TFXLayout L>
IppStatus CheckConstVector(const T* pSrc, int srcStep, const T* value, T* pDst, int dstStep,
                           IppiSize roiSize)
{
    const int w = roiSize.width;
    return FXCheckPointArgs(
        roiSize, {FXImageArg(pSrc, srcStep, w, L), FXImageArg(pDst, dstStep, w, L)}, {value});
}

template <class T, TFXLayout L>
IppStatus CheckConstScalar(const T* pSrc, int srcStep, T value, T* pDst, int dstStep,
                           IppiSize roiSize)
{
    return CheckConstVector<T, L>(pSrc, srcStep, &value, pDst, dstStep, roiSize);
}

template <class T, TFXLayout L>
IppStatus CheckConstVectorInPlace(const T* value, T* pSrcDst, int srcDstStep, IppiSize roiSize)
{
    return FXCheckPointArgs(roiSize, {FXImageArg(pSrcDst, srcDstStep, roiSize.width, L)}, {value});
}

template <class T, TFXLayout L>
IppStatus CheckConstScalarInPlace(T value, T* pSrcDst, int srcDstStep, IppiSize roiSize)
{
    return CheckConstVectorInPlace<T, L>(&value, pSrcDst, srcDstStep, roiSize);
}

template <class T, TFXLayout L>
IppStatus CheckReduce(const T* pSrc, int srcStep, IppiSize roiSize, T* pResult)
{
    return FXCheckPointArgs(roiSize, {FXImageArg(pSrc, srcStep, roiSize.width, L)}, {pResult});
}

} // namespace

template <class T, TFXLayout L> inline constexpr auto CheckAdd = &CheckScaled<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckSub = &CheckScaled<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckMul = &CheckScaled<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckDiv = &CheckScaled<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckAddI = &CheckScaledInPlace<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckSubI = &CheckScaledInPlace<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckMulI = &CheckScaledInPlace<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckDivI = &CheckScaledInPlace<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckMulCScale = &CheckConstScalar<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckMulCScaleV = &CheckConstVector<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckMulCScaleI = &CheckConstScalarInPlace<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckMulCScaleVI = &CheckConstVectorInPlace<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckAbsDiff = &CheckTwoSources<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckMax = &CheckReduce<T, L>;

FX_DEFINE_FAMILY(Arithmetic, FX_ARITHMETIC_PRIMITIVES)

} // namespace framix::prim
