// SPDX-License-Identifier: MIT
// Arithmetic: argument checks and the family's entry points.
#include "framework/primitives/families/Arithmetic.h"

#include "framework/primitives/FXArgChecks.h"

namespace framix::prim {
namespace {

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

template <class T, TFXLayout L> inline constexpr auto CheckAdd = &FXCheckBinary<T, L, int>;
template <class T, TFXLayout L> inline constexpr auto CheckSub = &FXCheckBinary<T, L, int>;
template <class T, TFXLayout L> inline constexpr auto CheckMul = &FXCheckBinary<T, L, int>;
template <class T, TFXLayout L> inline constexpr auto CheckDiv = &FXCheckBinary<T, L, int>;
template <class T, TFXLayout L> inline constexpr auto CheckAddI = &FXCheckBinaryInPlace<T, L, int>;
template <class T, TFXLayout L> inline constexpr auto CheckSubI = &FXCheckBinaryInPlace<T, L, int>;
template <class T, TFXLayout L> inline constexpr auto CheckMulI = &FXCheckBinaryInPlace<T, L, int>;
template <class T, TFXLayout L> inline constexpr auto CheckDivI = &FXCheckBinaryInPlace<T, L, int>;
template <class T, TFXLayout L> inline constexpr auto CheckMulCScale = &CheckConstScalar<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckMulCScaleV = &CheckConstVector<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckMulCScaleI = &CheckConstScalarInPlace<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckMulCScaleVI = &CheckConstVectorInPlace<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckAbsDiff = &FXCheckBinary<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckMax = &CheckReduce<T, L>;

FX_DEFINE_FAMILY(Arithmetic, FX_ARITHMETIC_PRIMITIVES)

} // namespace framix::prim
