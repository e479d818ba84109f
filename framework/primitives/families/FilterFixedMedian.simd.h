// SPDX-License-Identifier: MIT
// Fixed-mask medians, vector kernels: compiled once per level (see CMakeLists.txt).
#include "framework/primitives/families/FilterFixedMedian.h"

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/simd/FXVec.h"
#include "framework/primitives/simd/FXVecAlpha.h"
#include "framework/primitives/simd/FXVecMedian.h"

#include <cstddef>
#include <memory>

namespace framix::prim::FX_SIMD_NS {
namespace {

// ---------------------------------------------------------------- cross median

// The selection network of 5 or 9 values on whole vectors; a row is one sequence of samples
// (neighbours channels apart). AC4 rows go through a scratch row that keeps alpha.
template <class T, TFXLayout L>
IppStatus FilterMedianCross(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                            IppiMaskSize mask)
{
    constexpr int kCh = FXChannels(L);
    constexpr bool kAlpha = L == TFXLayout::AC4;
    const int n = roiSize.width * kCh;
    const int reach = mask == ippMskSize5x5 ? 2 : 1;
    const int count = 4 * reach + 1;
    const TMedianRowFn<T> median = MedianRowFor<T>(count);
    if (n < kLanes<T> || (kAlpha && n < kLanes<Ipp8u>) || median == nullptr)
        return kFXDeclined;
    std::unique_ptr<T[]> scratch(kAlpha ? new T[std::size_t(n)] : nullptr);
    const T* taps[9];
    for (int y = 0; y < roiSize.height; ++y) {
        const T* centre = FXRowAt(pSrc, srcStep, y);
        int k = 0;
        taps[k++] = centre;
        for (int d = 1; d <= reach; ++d) {
            taps[k++] = centre - d * kCh;
            taps[k++] = centre + d * kCh;
            taps[k++] = FXRowAt(pSrc, srcStep, y - d);
            taps[k++] = FXRowAt(pSrc, srcStep, y + d);
        }
        T* row = FXRowAt(pDst, dstStep, y);
        median(taps, kAlpha ? scratch.get() : row, n);
        if constexpr (kAlpha)
            StoreKeepingAlpha(reinterpret_cast<Ipp8u*>(row),
                              reinterpret_cast<const Ipp8u*>(scratch.get()), n);
    }
    return ippStsNoErr;
}

// ---------------------------------------------------------------- colour median

// Vectorised over kLanes16 neighbouring output pixels: the mask's rows are kept as planar
// 16-bit colour rows (each source row split once), every pair of mask positions adds its L1
// distance to both positions' sums, and the first smallest sum in row order picks the colour.
// The planes are at least one vector wide (zeros beyond the image), so narrow images need no
// other path: the lanes past the image are computed and dropped.
template <int Side> class TColourMedian {
public:
    static constexpr int kCount = Side * Side;
    static constexpr int kReach = Side / 2;

    TColourMedian(int width)
        : FWidth(width), FLanes(width > kLanes16 ? width : kLanes16), FStride(FLanes + 2 * kReach)
    {
        FPlanes.reset(new Ipp16s[std::size_t(FStride) * 3 * Side]());
        FResult.reset(new Ipp16s[std::size_t(FLanes) * 3]);
    }

    // Splits source row y (pixels -kReach ... width + kReach - 1) into ring slot y mod Side.
    template <int Ch> void Split(const Ipp8u* row, int y)
    {
        Ipp16s* plane = Plane(y, 0);
        for (int x = 0; x < FWidth + 2 * kReach; ++x)
            for (int c = 0; c < 3; ++c)
                plane[std::size_t(c) * FStride + x] = row[std::ptrdiff_t(x - kReach) * Ch + c];
    }

    // Output row y, once rows y - kReach ... y + kReach are split; writes the colour channels.
    template <int Ch> void Row(int y, Ipp8u* out)
    {
        for (int i = 0; i < FWidth; i += kLanes16)
            Step(y, FXVectorStart(i, FLanes, kLanes16));
        for (int x = 0; x < FWidth; ++x)
            for (int c = 0; c < 3; ++c)
                out[std::ptrdiff_t(x) * Ch + c] = Ipp8u(FResult[std::size_t(c) * FLanes + x]);
    }

private:
    Ipp16s* Plane(int y, int c)
    {
        const int slot = ((y % Side) + Side) % Side;
        return FPlanes.get() + (std::size_t(slot) * 3 + c) * FStride;
    }

    void Step(int y, int x)
    {
        VI16 colour[3][kCount];
        VI16 sum[kCount];
        for (int k = 0; k < kCount; ++k) {
            const int dy = k / Side - kReach, dx = k % Side; // dx counted from the left column
            for (int c = 0; c < 3; ++c)
                colour[c][k] = LoadI16(Plane(y + dy, c) + x + dx);
            sum[k] = SplatI16(0);
        }
        for (int k = 0; k < kCount; ++k)
            for (int j = k + 1; j < kCount; ++j) {
                VI16 d = SplatI16(0);
                for (int c = 0; c < 3; ++c)
                    d = Add(d,
                            Sub(Max(colour[c][k], colour[c][j]), Min(colour[c][k], colour[c][j])));
                sum[k] = Add(sum[k], d);
                sum[j] = Add(sum[j], d);
            }
        // Strictly smaller replaces, so the first smallest in row order stays.
        VI16 best = sum[0];
        VI16 pick[3] = {colour[0][0], colour[1][0], colour[2][0]};
        for (int k = 1; k < kCount; ++k) {
            const VI16 smaller = CmpGt(best, sum[k]);
            best = Select(smaller, sum[k], best);
            for (int c = 0; c < 3; ++c)
                pick[c] = Select(smaller, colour[c][k], pick[c]);
        }
        for (int c = 0; c < 3; ++c)
            StoreI16(FResult.get() + std::size_t(c) * FLanes + x, pick[c]);
    }

    int FWidth;
    int FLanes; // the width, at least one vector
    int FStride;
    std::unique_ptr<Ipp16s[]> FPlanes; // Side ring slots of 3 planes
    std::unique_ptr<Ipp16s[]> FResult; // 3 planes of the output row
};

// Sums stay within 16 bits: at most 24 distances of 3 * 255.
template <int Side, TFXLayout L>
IppStatus ColourMedian(const Ipp8u* pSrc, int srcStep, Ipp8u* pDst, int dstStep, IppiSize roi)
{
    constexpr int kCh = FXChannels(L);
    TColourMedian<Side> median(roi.width);
    for (int dy = -Side / 2; dy < Side / 2; ++dy)
        median.template Split<kCh>(FXRowAt(pSrc, srcStep, dy), dy);
    for (int y = 0; y < roi.height; ++y) {
        median.template Split<kCh>(FXRowAt(pSrc, srcStep, y + Side / 2), y + Side / 2);
        median.template Row<kCh>(y, FXRowAt(pDst, dstStep, y));
    }
    return ippStsNoErr;
}

template <class T, TFXLayout L>
IppStatus FilterMedianColor(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                            IppiMaskSize mask)
{
    if (mask == ippMskSize5x5)
        return ColourMedian<5, L>(pSrc, srcStep, pDst, dstStep, roiSize);
    return ColourMedian<3, L>(pSrc, srcStep, pDst, dstStep, roiSize);
}

} // namespace

FX_KERNEL_TABLE(FilterFixedMedian, FX_FILTER_FIXED_MEDIAN_PRIMITIVES)

} // namespace framix::prim::FX_SIMD_NS
