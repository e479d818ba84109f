// SPDX-License-Identifier: MIT
// Threshold: argument checks and the family's entry points.
#include "framework/primitives/families/Threshold.h"

#include "framework/primitives/FXArgChecks.h"

namespace framix::prim {
namespace {

template <class T, TFXLayout L>
IppStatus CheckOneLimit(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                        const T threshold[3], const T value[3])
{
    if (threshold == nullptr || value == nullptr)
        return ippStsNullPtrErr;
    const long long row = FXRowBytes(roiSize.width, FXChannels(L), sizeof(T));
    return FXCheckImages(pSrc, srcStep, row, pDst, dstStep, row, roiSize, sizeof(T), sizeof(T));
}

// As above, and no lower limit above its channel's upper limit.
template <class T, TFXLayout L>
IppStatus CheckBothLimits(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                          const T thresholdLT[3], const T valueLT[3], const T thresholdGT[3],
                          const T valueGT[3])
{
    if (thresholdGT == nullptr || valueGT == nullptr)
        return ippStsNullPtrErr;
    if (IppStatus s =
            CheckOneLimit<T, L>(pSrc, srcStep, pDst, dstStep, roiSize, thresholdLT, valueLT);
        s != ippStsNoErr)
        return s;
    for (int c = 0; c < 3; ++c)
        if (thresholdLT[c] > thresholdGT[c])
            return ippStsThresholdErr;
    return ippStsNoErr;
}

} // namespace

template <class T, TFXLayout L> inline constexpr auto CheckThresholdGTVal = &CheckOneLimit<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckThresholdLTVal = &CheckOneLimit<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckThresholdLTValGTVal = &CheckBothLimits<T, L>;

FX_DEFINE_FAMILY(Threshold, FX_THRESHOLD_PRIMITIVES)

} // namespace framix::prim
