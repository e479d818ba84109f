// SPDX-License-Identifier: MIT
// Fixed-mask medians, reference: the definitions the vector kernels are proved against.
#include "framework/primitives/families/FilterFixedMedian.h"

#include "framework/primitives/FXImageRows.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace framix::prim::ref {

// Per channel, the median of the centre and its horizontal and vertical neighbours up to the
// mask's reach: 5 samples for 3x3, 9 for 5x5.
template <class T, TFXLayout L>
IppStatus FilterMedianCross(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                            IppiMaskSize mask)
{
    constexpr int kCh = FXChannels(L);
    const int reach = mask == ippMskSize5x5 ? 2 : 1;
    std::array<T, 9> values{};
    for (int y = 0; y < roiSize.height; ++y) {
        T* out = FXRowAt(pDst, dstStep, y);
        for (int x = 0; x < roiSize.width; ++x)
            for (int c = 0; c < FXProcessedChannels(L); ++c) {
                const auto at = [&](int dx, int dy) {
                    return FXRowAt(pSrc, srcStep, y + dy)[std::ptrdiff_t(x + dx) * kCh + c];
                };
                int n = 0;
                values[n++] = at(0, 0);
                for (int d = 1; d <= reach; ++d) {
                    values[n++] = at(-d, 0);
                    values[n++] = at(d, 0);
                    values[n++] = at(0, -d);
                    values[n++] = at(0, d);
                }
                std::nth_element(values.begin(), values.begin() + n / 2, values.begin() + n);
                out[x * kCh + c] = values[n / 2];
            }
    }
    return ippStsNoErr;
}

// The vector median of the square mask: the pixel whose colour has the smallest sum of L1
// distances (over the three colour channels) to all pixels of the mask, itself included. On a
// tie the first such pixel in row order wins (top row first, left to right). All three colour
// channels are copied from that pixel; the alpha of AC4 is neither read nor written.
template <class T, TFXLayout L>
IppStatus FilterMedianColor(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                            IppiMaskSize mask)
{
    constexpr int kCh = FXChannels(L);
    const int reach = mask == ippMskSize5x5 ? 2 : 1;
    const int side = 2 * reach + 1;
    std::array<const T*, 25> pixels{};
    for (int y = 0; y < roiSize.height; ++y) {
        T* out = FXRowAt(pDst, dstStep, y);
        for (int x = 0; x < roiSize.width; ++x) {
            int n = 0;
            for (int dy = -reach; dy <= reach; ++dy)
                for (int dx = -reach; dx <= reach; ++dx)
                    pixels[n++] = FXRowAt(pSrc, srcStep, y + dy) + std::ptrdiff_t(x + dx) * kCh;
            int best = 0;
            long bestSum = -1;
            for (int k = 0; k < side * side; ++k) {
                long sum = 0;
                for (int j = 0; j < side * side; ++j)
                    for (int c = 0; c < 3; ++c)
                        sum += std::abs(int(pixels[k][c]) - int(pixels[j][c]));
                if (bestSum < 0 || sum < bestSum) {
                    best = k;
                    bestSum = sum;
                }
            }
            std::copy_n(pixels[best], 3, out + x * kCh);
        }
    }
    return ippStsNoErr;
}

FX_KERNEL_TABLE(FilterFixedMedian, FX_FILTER_FIXED_MEDIAN_PRIMITIVES)

} // namespace framix::prim::ref
