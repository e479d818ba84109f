// SPDX-License-Identifier: MIT
// Box and rank filters, vector kernels: compiled once per level (see CMakeLists.txt).
#include "framework/primitives/families/FilterBox.h"

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/FXRound.h"
#include "framework/primitives/simd/FXVec.h"
#include "framework/primitives/simd/FXVecDivide.h"
#include "framework/primitives/simd/FXVecMedian.h"

#include <cstddef>
#include <cstdint>
#include <memory>

// All kernels work on the samples of a row as one sequence, C1, C3 and C4 alike: the
// neighbour dx columns away of sample i is sample i + dx * channels. A row shorter than one
// vector is declined (the reference runs it).

namespace framix::prim::FX_SIMD_NS {
namespace {

// ---------------------------------------------------------------- box

// Running column sums over the mask's rows, then a horizontal sum per output sample.
template <class T, TFXLayout L>
IppStatus FilterBox(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize dstRoiSize,
                    IppiSize maskSize, IppiPoint anchor)
{
    constexpr int kCh = FXChannels(L);
    const int n = dstRoiSize.width * kCh;
    const int e = (dstRoiSize.width + maskSize.width - 1) * kCh;
    const std::int64_t count = std::int64_t(maskSize.width) * maskSize.height;
    if (L == TFXLayout::AC4 || n < kLanes32 || count * kFXSampleMax < T >> INT32_MAX)
        return kFXDeclined;
    // first: the neighbourhood's top-left sample for ROI pixel (0, 0)
    const T* first = FXRowAt(pSrc, srcStep, -anchor.y) - std::ptrdiff_t(anchor.x) * kCh;
    std::unique_ptr<Ipp32s[]> columns(new Ipp32s[e]);
    Ipp32s* col = columns.get();
    for (int i = 0; i < e; i += kLanes32) {
        const int at = FXVectorStart(i, e, kLanes32);
        VI32 s = LoadWiden(first + at);
        for (int dy = 1; dy < maskSize.height; ++dy)
            s = Add(s, LoadWiden(FXRowAt(first, srcStep, dy) + at));
        StoreI32(col + at, s);
    }
    const bool small = (kFXSampleMax<T> + 1) * count < (std::int64_t(1) << 21);
    const VI32 countV = SplatI32(int(count));
    const VI32 twiceCount = SplatI32(int(2 * count));
    const VF32 reciprocal = SplatF32(1.0f / float(count));
    const VF32 reciprocalOfTwice = SplatF32(1.0f / float(2 * count));
    for (int y = 0; y < dstRoiSize.height; ++y) {
        T* out = FXRowAt(pDst, dstStep, y);
        for (int i = 0; i < n; i += kLanes32) {
            const int at = FXVectorStart(i, n, kLanes32);
            VI32 s = LoadI32(col + at);
            for (int dx = 1; dx < maskSize.width; ++dx)
                s = Add(s, LoadI32(col + at + dx * kCh));
            StoreNarrow(out + at,
                        small ? DivRoundHalfEvenSmall(s, twiceCount, reciprocalOfTwice, countV)
                              : DivRoundHalfEven(s, countV, reciprocal));
        }
        if (y + 1 == dstRoiSize.height)
            break;
        // Slide the column sums one row down. Not idempotent, so the tail is scalar.
        const T* leaving = FXRowAt(first, srcStep, y);
        const T* entering = FXRowAt(first, srcStep, y + maskSize.height);
        int i = 0;
        for (; i + kLanes32 <= e; i += kLanes32)
            StoreI32(col + i,
                     Add(LoadI32(col + i), Sub(LoadWiden(entering + i), LoadWiden(leaving + i))));
        for (; i < e; ++i)
            col[i] += int(entering[i]) - int(leaving[i]);
    }
    return ippStsNoErr;
}

// ---------------------------------------------------------------- min, max

struct TakeMin {
    template <class V> V operator()(V a, V b) const { return Min(a, b); }
};
struct TakeMax {
    template <class V> V operator()(V a, V b) const { return Max(a, b); }
};

// Separable: the extreme over the mask's rows, then over its columns.
template <class T, TFXLayout L, class Take>
IppStatus FilterExtreme(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roi,
                        IppiSize mask, IppiPoint anchor, Take take)
{
    constexpr int kCh = FXChannels(L);
    const int n = roi.width * kCh;
    const int e = (roi.width + mask.width - 1) * kCh;
    if (L == TFXLayout::AC4 || n < kLanes<T>)
        return kFXDeclined;
    const T* first = FXRowAt(pSrc, srcStep, -anchor.y) - std::ptrdiff_t(anchor.x) * kCh;
    std::unique_ptr<T[]> columns(new T[e]);
    T* col = columns.get();
    for (int y = 0; y < roi.height; ++y) {
        const T* top = FXRowAt(first, srcStep, y);
        for (int i = 0; i < e; i += kLanes<T>) {
            const int at = FXVectorStart(i, e, kLanes<T>);
            auto v = Load(top + at);
            for (int dy = 1; dy < mask.height; ++dy)
                v = take(v, Load(FXRowAt(top, srcStep, dy) + at));
            Store(col + at, v);
        }
        T* out = FXRowAt(pDst, dstStep, y);
        for (int i = 0; i < n; i += kLanes<T>) {
            const int at = FXVectorStart(i, n, kLanes<T>);
            auto v = Load(col + at);
            for (int dx = 1; dx < mask.width; ++dx)
                v = take(v, Load(col + at + dx * kCh));
            Store(out + at, v);
        }
    }
    return ippStsNoErr;
}

template <class T, TFXLayout L>
IppStatus FilterMin(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize dstRoiSize,
                    IppiSize maskSize, IppiPoint anchor)
{
    return FilterExtreme<T, L>(pSrc, srcStep, pDst, dstStep, dstRoiSize, maskSize, anchor,
                               TakeMin{});
}

template <class T, TFXLayout L>
IppStatus FilterMax(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize dstRoiSize,
                    IppiSize maskSize, IppiPoint anchor)
{
    return FilterExtreme<T, L>(pSrc, srcStep, pDst, dstStep, dstRoiSize, maskSize, anchor,
                               TakeMax{});
}

// ---------------------------------------------------------------- median

template <class V> inline V MedianOf3(V a, V b, V c)
{
    return Max(Min(a, b), Min(Max(a, b), c));
}

// 3 x 3: every column of three samples is sorted once, into a row of lows, middles and highs;
// a sample's median is then the median of the largest of its three columns' lows, the median of
// their middles and the smallest of their highs (the median of nine without sorting each
// column three times). first: the neighbourhood's top-left sample for ROI pixel (0, 0).
template <class T, int kCh>
void Median3x3(const T* first, int srcStep, T* pDst, int dstStep, IppiSize roi)
{
    constexpr int kLanesT = kLanes<T>;
    const int n = roi.width * kCh;
    const int e = n + 2 * kCh; // the columns the row's neighbourhoods cover
    std::unique_ptr<T[]> sorted(new T[3 * std::size_t(e)]);
    T* const low = sorted.get();
    T* const middle = low + e;
    T* const high = middle + e;
    for (int y = 0; y < roi.height; ++y) {
        const T* r0 = FXRowAt(first, srcStep, y);
        const T* r1 = FXRowAt(first, srcStep, y + 1);
        const T* r2 = FXRowAt(first, srcStep, y + 2);
        for (int i = 0; i < e; i += kLanesT) {
            const int at = FXVectorStart(i, e, kLanesT);
            const auto a = Load(r0 + at), b = Load(r1 + at), c = Load(r2 + at);
            const auto lowAB = Min(a, b), highAB = Max(a, b);
            const auto lowBC = Min(highAB, c);
            Store(low + at, Min(lowAB, lowBC));
            Store(middle + at, Max(lowAB, lowBC));
            Store(high + at, Max(highAB, c));
        }
        T* out = FXRowAt(pDst, dstStep, y);
        for (int i = 0; i < n; i += kLanesT) {
            const int at = FXVectorStart(i, n, kLanesT);
            const auto lows =
                Max(Max(Load(low + at), Load(low + at + kCh)), Load(low + at + 2 * kCh));
            const auto highs =
                Min(Min(Load(high + at), Load(high + at + kCh)), Load(high + at + 2 * kCh));
            const auto middles =
                MedianOf3(Load(middle + at), Load(middle + at + kCh), Load(middle + at + 2 * kCh));
            Store(out + at, MedianOf3(lows, middles, highs));
        }
    }
}

// 3 x 3 by sorted columns; the other mask sizes with a selection network
// (simd/FXVecMedian.h), or the reference where none is built.
template <class T, TFXLayout L>
IppStatus FilterMedian(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize dstRoiSize,
                       IppiSize maskSize, IppiPoint anchor)
{
    constexpr int kCh = FXChannels(L);
    const int n = dstRoiSize.width * kCh;
    const int count = maskSize.width * maskSize.height;
    const TMedianRowFn<T> row = MedianRowFor<T>(count);
    if (L == TFXLayout::AC4 || n < kLanes<T> || row == nullptr)
        return kFXDeclined;
    const T* first = FXRowAt(pSrc, srcStep, -anchor.y) - std::ptrdiff_t(anchor.x) * kCh;
    if (maskSize.width == 3 && maskSize.height == 3) {
        Median3x3<T, kCh>(first, srcStep, pDst, dstStep, dstRoiSize);
        return ippStsNoErr;
    }
    const T* taps[64];
    for (int y = 0; y < dstRoiSize.height; ++y) {
        int k = 0;
        for (int dy = 0; dy < maskSize.height; ++dy)
            for (int dx = 0; dx < maskSize.width; ++dx)
                taps[k++] = FXRowAt(first, srcStep, y + dy) + dx * kCh;
        row(taps, FXRowAt(pDst, dstStep, y), n);
    }
    return ippStsNoErr;
}

} // namespace

FX_KERNEL_TABLE(FilterBox, FX_FILTER_BOX_PRIMITIVES)

} // namespace framix::prim::FX_SIMD_NS
