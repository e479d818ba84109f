// SPDX-License-Identifier: MIT
// Histograms: argument checks and the family's entry points.
#include "framework/primitives/families/Histogram.h"

#include "framework/primitives/FXArgChecks.h"

namespace framix::prim {
namespace {

// Null pointers (image and outputs), then sizes, the step, and fewer than two levels.
template <class T, TFXLayout L>
IppStatus CheckHistograms(const T* pSrc, int srcStep, IppiSize roiSize, Ipp32s* const* pHist,
                          Ipp32s* const* pLevels, const int* nLevels, const Ipp32s* lowerLevel,
                          const Ipp32s* upperLevel)
{
    if (pSrc == nullptr || pHist == nullptr || pLevels == nullptr || nLevels == nullptr ||
        lowerLevel == nullptr || upperLevel == nullptr)
        return ippStsNullPtrErr;
    for (int c = 0; c < FXProcessedChannels(L); ++c)
        if (pHist[c] == nullptr || pLevels[c] == nullptr)
            return ippStsNullPtrErr;
    if (FXNonPositive(roiSize))
        return ippStsSizeErr;
    const long long row = FXRowBytes(roiSize.width, FXChannels(L), sizeof(T));
    if (srcStep <= 0 || srcStep < row)
        return ippStsStepErr;
    if (srcStep % int(sizeof(T)) != 0)
        return ippStsNotEvenStepErr;
    for (int c = 0; c < FXProcessedChannels(L); ++c)
        if (nLevels[c] < 2)
            return ippStsHistoNofLevelsErr;
    return ippStsNoErr;
}

template <class T, TFXLayout L>
IppStatus CheckOneHistogram(const T* pSrc, int srcStep, IppiSize roiSize, Ipp32s* pHist,
                            Ipp32s* pLevels, int nLevels, Ipp32s lowerLevel, Ipp32s upperLevel)
{
    return CheckHistograms<T, L>(pSrc, srcStep, roiSize, &pHist, &pLevels, &nLevels, &lowerLevel,
                                 &upperLevel);
}

template <class T, TFXLayout L>
IppStatus CheckChannelHistograms(const T* pSrc, int srcStep, IppiSize roiSize, Ipp32s* pHist[],
                                 Ipp32s* pLevels[], int nLevels[], Ipp32s lowerLevel[],
                                 Ipp32s upperLevel[])
{
    return CheckHistograms<T, L>(pSrc, srcStep, roiSize, pHist, pLevels, nLevels, lowerLevel,
                                 upperLevel);
}

} // namespace

template <class T, TFXLayout L> inline constexpr auto CheckHistogramEven = &CheckOneHistogram<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckHistogramEvenChannels = &CheckChannelHistograms<T, L>;

FX_DEFINE_FAMILY(Histogram, FX_HISTOGRAM_PRIMITIVES)

} // namespace framix::prim
