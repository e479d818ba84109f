// SPDX-License-Identifier: MIT
// Threshold, reference: the definitions the vector kernels are proved against.
#include "framework/primitives/families/Threshold.h"

#include "framework/primitives/FXImageRows.h"

namespace framix::prim::ref {

// Comparisons are strict: a sample equal to its limit is kept.
template <class T, TFXLayout L>
IppStatus ThresholdGTVal(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                         const T threshold[3], const T value[3])
{
    FXMapSamples<T, L>(pSrc, srcStep, pDst, dstStep, roiSize,
                       [&](T s, int c) { return s > threshold[c] ? value[c] : s; });
    return ippStsNoErr;
}

template <class T, TFXLayout L>
IppStatus ThresholdLTVal(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                         const T threshold[3], const T value[3])
{
    FXMapSamples<T, L>(pSrc, srcStep, pDst, dstStep, roiSize,
                       [&](T s, int c) { return s < threshold[c] ? value[c] : s; });
    return ippStsNoErr;
}

template <class T, TFXLayout L>
IppStatus ThresholdLTValGTVal(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                              const T thresholdLT[3], const T valueLT[3], const T thresholdGT[3],
                              const T valueGT[3])
{
    FXMapSamples<T, L>(pSrc, srcStep, pDst, dstStep, roiSize, [&](T s, int c) {
        return s < thresholdLT[c] ? valueLT[c] : s > thresholdGT[c] ? valueGT[c] : s;
    });
    return ippStsNoErr;
}

FX_KERNEL_TABLE(Threshold, FX_THRESHOLD_PRIMITIVES)

} // namespace framix::prim::ref
