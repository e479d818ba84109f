// SPDX-License-Identifier: MIT
// Look-up tables: argument checks and the family's entry points.
#include "framework/primitives/families/Lut.h"

#include "framework/primitives/FXArgChecks.h"

namespace framix::prim {
namespace {

// Null pointers (images and tables) first, then sizes, steps, and tables of fewer than two
// levels.
template <class T, TFXLayout L>
IppStatus CheckTables(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                      const Ipp32s* const* pValues, const Ipp32s* const* pLevels,
                      const int* nLevels)
{
    if (pValues == nullptr || pLevels == nullptr || nLevels == nullptr)
        return ippStsNullPtrErr;
    for (int c = 0; c < FXProcessedChannels(L); ++c)
        if (pValues[c] == nullptr || pLevels[c] == nullptr)
            return ippStsNullPtrErr;
    const long long row = FXRowBytes(roiSize.width, FXChannels(L), sizeof(T));
    if (IppStatus s =
            FXCheckImages(pSrc, srcStep, row, pDst, dstStep, row, roiSize, sizeof(T), sizeof(T));
        s != ippStsNoErr)
        return s;
    for (int c = 0; c < FXProcessedChannels(L); ++c)
        if (nLevels[c] < 2)
            return ippStsLUTNofLevelsErr;
    return ippStsNoErr;
}

template <class T, TFXLayout L>
IppStatus CheckOneTable(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                        const Ipp32s* pValues, const Ipp32s* pLevels, int nLevels)
{
    return CheckTables<T, L>(pSrc, srcStep, pDst, dstStep, roiSize, &pValues, &pLevels, &nLevels);
}

template <class T, TFXLayout L>
IppStatus CheckChannelTables(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                             const Ipp32s* pValues[], const Ipp32s* pLevels[], int nLevels[])
{
    return CheckTables<T, L>(pSrc, srcStep, pDst, dstStep, roiSize, pValues, pLevels, nLevels);
}

// The bit count is checked before the steps, as IPP does.
template <class T, TFXLayout L>
IppStatus CheckPalette(const T* pSrc, int srcStep, Ipp32u* pDst, int dstStep, IppiSize roiSize,
                       const Ipp32u* pTable, int nBitSize)
{
    if (pSrc == nullptr || pDst == nullptr || pTable == nullptr)
        return ippStsNullPtrErr;
    if (FXNonPositive(roiSize))
        return ippStsSizeErr;
    if (nBitSize < 1 || nBitSize > 8 * int(sizeof(T)))
        return ippStsOutOfRangeErr;
    return FXCheckImages(pSrc, srcStep, FXRowBytes(roiSize.width, 1, sizeof(T)), pDst, dstStep,
                         FXRowBytes(roiSize.width, 1, sizeof(Ipp32u)), roiSize, sizeof(T),
                         sizeof(Ipp32u));
}

} // namespace

template <class T, TFXLayout L> inline constexpr auto CheckLut = &CheckOneTable<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckLutLinear = &CheckOneTable<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckLutCubic = &CheckOneTable<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckLutChannels = &CheckChannelTables<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckLutLinearChannels = &CheckChannelTables<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckLutCubicChannels = &CheckChannelTables<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckLutPalette = &CheckPalette<T, L>;

FX_DEFINE_FAMILY(Lut, FX_LUT_PRIMITIVES)

} // namespace framix::prim
