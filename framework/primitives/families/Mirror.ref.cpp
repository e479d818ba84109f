// SPDX-License-Identifier: MIT
// Mirroring, reference: the definitions the vector kernels are proved against.
#include "framework/primitives/families/Mirror.h"

#include "framework/primitives/FXImageRows.h"

#include <cstddef>
#include <utility>

namespace framix::prim::ref {

// ippAxsHorizontal mirrors about the horizontal axis (rows reversed), ippAxsVertical about the
// vertical axis (columns reversed), ippAxsBoth does both. Whole pixels move; AC4 writes the
// colour channels only.
template <class T, TFXLayout L>
IppStatus Mirror(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize, IppiAxis flip)
{
    const bool rows = flip != ippAxsVertical, columns = flip != ippAxsHorizontal;
    const int w = roiSize.width, h = roiSize.height;
    for (int y = 0; y < h; ++y) {
        const T* in = FXRowAt(pSrc, srcStep, rows ? h - 1 - y : y);
        T* out = FXRowAt(pDst, dstStep, y);
        for (int x = 0; x < w; ++x) {
            const T* px = in + std::ptrdiff_t(columns ? w - 1 - x : x) * FXChannels(L);
            for (int c = 0; c < FXProcessedChannels(L); ++c)
                out[std::ptrdiff_t(x) * FXChannels(L) + c] = px[c];
        }
    }
    return ippStsNoErr;
}

// In place: pixel (x, y) trades with its mirror image; the middle row or column stays (or is
// only reversed along the other axis).
template <class T, TFXLayout L>
IppStatus MirrorInPlace(T* pSrcDst, int srcDstStep, IppiSize roiSize, IppiAxis flip)
{
    const bool rows = flip != ippAxsVertical, columns = flip != ippAxsHorizontal;
    const int w = roiSize.width, h = roiSize.height;
    auto at = [&](int x, int y) {
        return FXRowAt(pSrcDst, srcDstStep, y) + std::ptrdiff_t(x) * FXChannels(L);
    };
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            const int mx = columns ? w - 1 - x : x, my = rows ? h - 1 - y : y;
            // each pair once: the one whose index in row-major order is the smaller swaps
            if (std::ptrdiff_t(my) * w + mx <= std::ptrdiff_t(y) * w + x)
                continue;
            for (int c = 0; c < FXProcessedChannels(L); ++c)
                std::swap(at(x, y)[c], at(mx, my)[c]);
        }
    return ippStsNoErr;
}

FX_KERNEL_TABLE(Mirror, FX_MIRROR_PRIMITIVES)

} // namespace framix::prim::ref
