// SPDX-License-Identifier: MIT
// Threshold, reference: the definitions the vector kernels are proved against.
#include "framework/primitives/families/Threshold.h"

#include "framework/primitives/FXImageRows.h"

namespace framix::prim::ref {
namespace {

// Replaces every colour sample by rule(sample, channel); alpha (AC4) is not written.
template <class T, TFXLayout L, class Rule>
IppStatus ForEachSample(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roi, Rule rule)
{
    constexpr int kCh = FXChannels(L);
    for (int y = 0; y < roi.height; ++y) {
        const T* in = FXRowAt(pSrc, srcStep, y);
        T* out = FXRowAt(pDst, dstStep, y);
        for (int x = 0; x < roi.width; ++x)
            for (int c = 0; c < FXProcessedChannels(L); ++c)
                out[x * kCh + c] = rule(in[x * kCh + c], c);
    }
    return ippStsNoErr;
}

} // namespace

// Comparisons are strict: a sample equal to its limit is kept.
template <class T, TFXLayout L>
IppStatus ThresholdGTVal(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                         const T threshold[3], const T value[3])
{
    return ForEachSample<T, L>(pSrc, srcStep, pDst, dstStep, roiSize,
                               [&](T s, int c) { return s > threshold[c] ? value[c] : s; });
}

template <class T, TFXLayout L>
IppStatus ThresholdLTVal(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                         const T threshold[3], const T value[3])
{
    return ForEachSample<T, L>(pSrc, srcStep, pDst, dstStep, roiSize,
                               [&](T s, int c) { return s < threshold[c] ? value[c] : s; });
}

template <class T, TFXLayout L>
IppStatus ThresholdLTValGTVal(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                              const T thresholdLT[3], const T valueLT[3], const T thresholdGT[3],
                              const T valueGT[3])
{
    return ForEachSample<T, L>(pSrc, srcStep, pDst, dstStep, roiSize, [&](T s, int c) {
        return s < thresholdLT[c] ? valueLT[c] : s > thresholdGT[c] ? valueGT[c] : s;
    });
}

FX_KERNEL_TABLE(Threshold, FX_THRESHOLD_PRIMITIVES)

} // namespace framix::prim::ref
