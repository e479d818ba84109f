// SPDX-License-Identifier: MIT
// Box and rank filters, reference: the definitions the vector kernels are proved against.
#include "framework/primitives/families/FilterBox.h"

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/FXRound.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace framix::prim::ref {
namespace {

// Sample c of pixel (x, y) relative to the ROI origin; x and y may lie outside the ROI.
template <class T, TFXLayout L> const T& At(const T* pSrc, int srcStep, int x, int y, int c)
{
    return FXRowAt(pSrc, srcStep, y)[std::ptrdiff_t(x) * FXChannels(L) + c];
}

// Runs `reduce` over the neighbourhood of every ROI sample: columns x - anchor.x ...
// x - anchor.x + mask.width - 1 and rows y - anchor.y ... (the anchor counts from the mask's
// top-left cell; no border handling: the caller guarantees the memory).
template <class T, TFXLayout L, class Reduce>
IppStatus ForEachNeighbourhood(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roi,
                               IppiSize mask, IppiPoint anchor, Reduce reduce)
{
    std::vector<T> values(std::size_t(mask.width) * mask.height);
    for (int y = 0; y < roi.height; ++y) {
        T* out = FXRowAt(pDst, dstStep, y);
        for (int x = 0; x < roi.width; ++x)
            for (int c = 0; c < FXProcessedChannels(L); ++c) {
                std::size_t n = 0;
                for (int my = 0; my < mask.height; ++my)
                    for (int mx = 0; mx < mask.width; ++mx)
                        values[n++] =
                            At<T, L>(pSrc, srcStep, x - anchor.x + mx, y - anchor.y + my, c);
                out[x * FXChannels(L) + c] = reduce(values);
            }
    }
    return ippStsNoErr;
}

} // namespace

// Average, rounded to nearest with halves to even.
template <class T, TFXLayout L>
IppStatus FilterBox(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize dstRoiSize,
                    IppiSize maskSize, IppiPoint anchor)
{
    return ForEachNeighbourhood<T, L>(
        pSrc, srcStep, pDst, dstStep, dstRoiSize, maskSize, anchor, [](const std::vector<T>& v) {
            std::int64_t sum = 0;
            for (T s : v)
                sum += s;
            return FXSaturate<T>(FXDivRoundHalfEven(sum, std::int64_t(v.size())));
        });
}

template <class T, TFXLayout L>
IppStatus FilterMin(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize dstRoiSize,
                    IppiSize maskSize, IppiPoint anchor)
{
    return ForEachNeighbourhood<T, L>(
        pSrc, srcStep, pDst, dstStep, dstRoiSize, maskSize, anchor,
        [](const std::vector<T>& v) { return *std::min_element(v.begin(), v.end()); });
}

template <class T, TFXLayout L>
IppStatus FilterMax(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize dstRoiSize,
                    IppiSize maskSize, IppiPoint anchor)
{
    return ForEachNeighbourhood<T, L>(
        pSrc, srcStep, pDst, dstStep, dstRoiSize, maskSize, anchor,
        [](const std::vector<T>& v) { return *std::max_element(v.begin(), v.end()); });
}

// Element (n / 2) of the ascending order: the true median, as the mask is odd.
template <class T, TFXLayout L>
IppStatus FilterMedian(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize dstRoiSize,
                       IppiSize maskSize, IppiPoint anchor)
{
    return ForEachNeighbourhood<T, L>(pSrc, srcStep, pDst, dstStep, dstRoiSize, maskSize, anchor,
                                      [](std::vector<T>& v) {
                                          auto mid = v.begin() + v.size() / 2;
                                          std::nth_element(v.begin(), mid, v.end());
                                          return *mid;
                                      });
}

FX_KERNEL_TABLE(FilterBox, FX_FILTER_BOX_PRIMITIVES)

} // namespace framix::prim::ref
