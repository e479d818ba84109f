// SPDX-License-Identifier: MIT
// Histograms, reference: the level rule and plain counting, the definitions the level kernels
// are proved against.
#include "framework/primitives/families/Histogram.h"

#include "framework/primitives/FXImageRows.h"

#include <algorithm>
#include <cstdint>

namespace framix::prim {

// Intel's rule for the legacy function: the remainder of the range goes one unit at a time to
// the first bins ({0, 22, 44, 66, 87 ... 255} for 0 ... 255 in 12 bins). IPP's modern uniform
// histogram places levels by flooring instead; both agree when the bins divide the range.
void FXHistogramLevels(Ipp32s* pLevels, int nLevels, Ipp32s lowerLevel, Ipp32s upperLevel)
{
    const std::int64_t bins = nLevels - 1;
    const std::int64_t range = std::int64_t(upperLevel) - lowerLevel;
    const std::int64_t width = range / bins;
    std::int64_t wider = range % bins;
    std::int64_t level = lowerLevel;
    pLevels[0] = lowerLevel;
    for (int i = 1; i < nLevels; ++i, --wider) {
        level += width + (wider > 0 ? 1 : 0);
        pLevels[i] = Ipp32s(level);
    }
}

namespace ref {
namespace {

// One channel: levels, then every sample of channel c into its bin.
template <class T, TFXLayout L>
void CountChannel(const T* pSrc, int srcStep, IppiSize roi, int c, Ipp32s* pHist, Ipp32s* pLevels,
                  int nLevels, Ipp32s lowerLevel, Ipp32s upperLevel)
{
    FXHistogramLevels(pLevels, nLevels, lowerLevel, upperLevel);
    std::fill(pHist, pHist + nLevels - 1, 0);
    if (upperLevel < lowerLevel)
        return; // descending levels: no bin holds a sample
    for (int y = 0; y < roi.height; ++y) {
        const T* in = FXRowAt(pSrc, srcStep, y);
        for (int x = 0; x < roi.width; ++x) {
            const Ipp32s v = in[x * FXChannels(L) + c];
            // The bin whose lower level is the last one <= v; none past the last level.
            const int k = int(std::upper_bound(pLevels, pLevels + nLevels, v) - pLevels) - 1;
            if (k >= 0 && k < nLevels - 1)
                ++pHist[k];
        }
    }
}

} // namespace

template <class T, TFXLayout L>
IppStatus HistogramEven(const T* pSrc, int srcStep, IppiSize roiSize, Ipp32s* pHist,
                        Ipp32s* pLevels, int nLevels, Ipp32s lowerLevel, Ipp32s upperLevel)
{
    CountChannel<T, L>(pSrc, srcStep, roiSize, 0, pHist, pLevels, nLevels, lowerLevel, upperLevel);
    return ippStsNoErr;
}

template <class T, TFXLayout L>
IppStatus HistogramEvenChannels(const T* pSrc, int srcStep, IppiSize roiSize, Ipp32s* pHist[],
                                Ipp32s* pLevels[], int nLevels[], Ipp32s lowerLevel[],
                                Ipp32s upperLevel[])
{
    for (int c = 0; c < FXProcessedChannels(L); ++c)
        CountChannel<T, L>(pSrc, srcStep, roiSize, c, pHist[c], pLevels[c], nLevels[c],
                           lowerLevel[c], upperLevel[c]);
    return ippStsNoErr;
}

FX_KERNEL_TABLE(Histogram, FX_HISTOGRAM_PRIMITIVES)

} // namespace ref
} // namespace framix::prim
