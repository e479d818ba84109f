// SPDX-License-Identifier: MIT
// Arithmetic, reference: the definitions the vector kernels are proved against.
#include "framework/primitives/families/Arithmetic.h"

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/FXRound.h"
#include "framework/primitives/families/FXPointForms.h"
#include "framework/primitives/families/FXPointSamples.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace framix::prim::ref {
namespace {

// Quotients: any quotient of 16-bit samples scaled up by 2^34 saturates, and any value below
// 2^33 scaled down by 2^40 rounds to zero, so scale factors beyond +-40 change nothing.
constexpr int kScaleLimit = 40;

// v * 2^-scaleFactor rounded to the nearest integer, halves to even, then saturated: IPP's
// rule for every Sfs result. v is exact; negative values (differences) saturate to 0.
template <class T> T ScaleSaturate(std::int64_t v, int scaleFactor)
{
    return FXSaturate<T>(FXScaleHalfEven(v, scaleFactor));
}

// dividend * 2^-scaleFactor / divisor, exactly, rounded halves to even and saturated. A zero
// divisor gives 0 for a zero dividend and the largest value otherwise.
template <class T> T DivideScaled(std::int64_t dividend, std::int64_t divisor, int scaleFactor)
{
    if (divisor == 0)
        return dividend == 0 ? T(0) : T(kFXSampleMax<T>);
    const int sf = std::clamp(scaleFactor, -kScaleLimit, kScaleLimit);
    if (sf < 0)
        dividend <<= -sf;
    else
        divisor <<= sf;
    return FXSaturate<T>(FXDivRoundHalfEven(dividend, divisor));
}

// IPP computes the second operand minus (or divided by) the first one.
struct TSum {
    std::int64_t operator()(std::int64_t a, std::int64_t b) const { return a + b; }
};
struct TDifference {
    std::int64_t operator()(std::int64_t a, std::int64_t b) const { return b - a; }
};
struct TProduct {
    std::int64_t operator()(std::int64_t a, std::int64_t b) const { return a * b; }
};

template <class T, TFXLayout L, class Exact>
IppStatus Scaled(const T* pSrc1, int src1Step, const T* pSrc2, int src2Step, T* pDst, int dstStep,
                 IppiSize roiSize, int scaleFactor, Exact exact)
{
    FXForEachPair<T, L>(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roiSize,
                        [&](T a, T b) { return ScaleSaturate<T>(exact(a, b), scaleFactor); });
    return ippStsNoErr;
}

template <class T, TFXLayout L>
IppStatus Quotient(const T* pSrc1, int src1Step, const T* pSrc2, int src2Step, T* pDst, int dstStep,
                   IppiSize roiSize, int scaleFactor)
{
    bool divisorZero = false;
    FXForEachPair<T, L>(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roiSize, [&](T a, T b) {
        divisorZero |= a == 0;
        return DivideScaled<T>(b, a, scaleFactor);
    });
    // A warning: every sample is still written.
    return divisorZero ? ippStsDivByZero : ippStsNoErr;
}

// s * value / max, truncated: the constant is a fraction of the largest sample value.
template <class T> T ScaleByFraction(T s, T value)
{
    return T(std::uint64_t(s) * value / kFXSampleMax<T>);
}

} // namespace

template <class T, TFXLayout L>
IppStatus Add(const T* pSrc1, int src1Step, const T* pSrc2, int src2Step, T* pDst, int dstStep,
              IppiSize roiSize, int scaleFactor)
{
    return Scaled<T, L>(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roiSize, scaleFactor,
                        TSum{});
}

template <class T, TFXLayout L>
IppStatus Sub(const T* pSrc1, int src1Step, const T* pSrc2, int src2Step, T* pDst, int dstStep,
              IppiSize roiSize, int scaleFactor)
{
    return Scaled<T, L>(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roiSize, scaleFactor,
                        TDifference{});
}

template <class T, TFXLayout L>
IppStatus Mul(const T* pSrc1, int src1Step, const T* pSrc2, int src2Step, T* pDst, int dstStep,
              IppiSize roiSize, int scaleFactor)
{
    return Scaled<T, L>(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roiSize, scaleFactor,
                        TProduct{});
}

template <class T, TFXLayout L>
IppStatus Div(const T* pSrc1, int src1Step, const T* pSrc2, int src2Step, T* pDst, int dstStep,
              IppiSize roiSize, int scaleFactor)
{
    return Quotient<T, L>(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roiSize, scaleFactor);
}

// In place: pSrcDst is the second operand (pSrcDst - pSrc, pSrcDst / pSrc).
template <class T, TFXLayout L>
IppStatus MulCScaleV(const T* pSrc, int srcStep, const T* value, T* pDst, int dstStep,
                     IppiSize roiSize)
{
    FXMapSamples<T, L>(pSrc, srcStep, pDst, dstStep, roiSize,
                       [&](T s, int c) { return ScaleByFraction(s, value[c]); });
    return ippStsNoErr;
}

FX_POINT_IN_PLACE_SFS(AddI, Add)
FX_POINT_IN_PLACE_SFS(SubI, Sub)
FX_POINT_IN_PLACE_SFS(MulI, Mul)
FX_POINT_IN_PLACE_SFS(DivI, Div)
FX_POINT_CONSTANT_FORMS(MulCScale)

template <class T, TFXLayout L>
IppStatus AbsDiff(const T* pSrc1, int src1Step, const T* pSrc2, int src2Step, T* pDst, int dstStep,
                  IppiSize roiSize)
{
    FXForEachPair<T, L>(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roiSize,
                        [](T a, T b) { return T(a > b ? a - b : b - a); });
    return ippStsNoErr;
}

template <class T, TFXLayout L>
IppStatus Max(const T* pSrc, int srcStep, IppiSize roiSize, T* pResult)
{
    T best = 0;
    for (int y = 0; y < roiSize.height; ++y) {
        const T* row = FXRowAt(pSrc, srcStep, y);
        best = std::max(best, *std::max_element(row, row + roiSize.width * FXChannels(L)));
    }
    *pResult = best;
    return ippStsNoErr;
}

FX_KERNEL_TABLE(Arithmetic, FX_ARITHMETIC_PRIMITIVES)

} // namespace framix::prim::ref
