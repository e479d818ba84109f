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

// Running column sums over the mask's rows, then a horizontal sum per output sample, in the
// lanes of a sums policy: TWideSums (32-bit lanes, any sample type) or TWordSums (16-bit lanes,
// twice the samples per instruction, for 8-bit samples whose mask sums fit 16 bits). A policy
// has TSum (the column sum type), kLanes (column sums per vector), kOutLanes (outputs per
// step), Widen (samples to sum lanes), LoadSum, StoreSum and Average (the mask sums of
// kOutLanes outputs from their column sums, divided and stored).
template <class T> struct TWideSums {
    using TSum = Ipp32s;
    static constexpr int kLanes = kLanes32;
    static constexpr int kOutLanes = kLanes32;

    explicit TWideSums(int count)
        : FSmall((kFXSampleMax<T> + 1) * std::int64_t(count) < (std::int64_t(1) << 21)),
          FOdd(count % 2 == 1), FCount(SplatI32(count)), FTwiceCount(SplatI32(2 * count)),
          FReciprocal(SplatF32(1.0f / float(count))),
          FReciprocalOfTwice(SplatF32(1.0f / float(2 * count)))
    {
    }
    static VI32 Widen(const T* p) { return LoadWiden(p); }
    static VI32 LoadSum(const Ipp32s* p) { return LoadI32(p); }
    static void StoreSum(Ipp32s* p, VI32 v) { StoreI32(p, v); }
    void Average(const Ipp32s* col, int width, int channels, T* out) const
    {
        VI32 s = LoadI32(col);
        for (int dx = 1; dx < width; ++dx)
            s = Add(s, LoadI32(col + dx * channels));
        StoreNarrow(out, FSmall && FOdd ? DivRoundOddSmall(s, FReciprocal)
                         : FSmall
                             ? DivRoundHalfEvenSmall(s, FTwiceCount, FReciprocalOfTwice, FCount)
                             : DivRoundHalfEven(s, FCount, FReciprocal));
    }

    bool FSmall, FOdd;
    VI32 FCount, FTwiceCount;
    VF32 FReciprocal, FReciprocalOfTwice;
};

// Lanes wrap at 2^16, which is harmless: every column and mask sum is below it, so the sliding
// update's intermediate wrap-around cancels. The divisor must be Valid().
struct TWordSums {
    using TSum = Ipp16s;
    static constexpr int kLanes = kLanes16;
    static constexpr int kOutLanes = 2 * kLanes16;

    explicit TWordSums(const TFXWordDivisor& divisor) : FDivide(divisor) {}
    static VI16 Widen(const Ipp8u* p) { return LoadWiden16(p); }
    static VI16 LoadSum(const Ipp16s* p) { return LoadI16(p); }
    static void StoreSum(Ipp16s* p, VI16 v) { StoreI16(p, v); }
    void Average(const Ipp16s* col, int width, int channels, Ipp8u* out) const
    {
        VI16 lo = LoadI16(col);
        VI16 hi = LoadI16(col + kLanes16);
        for (int dx = 1; dx < width; ++dx) {
            lo = Add(lo, LoadI16(col + dx * channels));
            hi = Add(hi, LoadI16(col + kLanes16 + dx * channels));
        }
        Store(out, NarrowU8(FDivide(lo), FDivide(hi)));
    }

    TWordDivide FDivide;
};

// The rows must hold at least Sums::kOutLanes samples.
template <class T, TFXLayout L, class Sums>
void FilterBoxIn(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roi, IppiSize mask,
                 IppiPoint anchor, const Sums& sums)
{
    using TSum = typename Sums::TSum;
    constexpr int kCh = FXChannels(L);
    const int n = roi.width * kCh;
    const int e = (roi.width + mask.width - 1) * kCh;
    // first: the neighbourhood's top-left sample for ROI pixel (0, 0)
    const T* first = FXRowAt(pSrc, srcStep, -anchor.y) - std::ptrdiff_t(anchor.x) * kCh;
    std::unique_ptr<TSum[]> columns(new TSum[e]);
    TSum* col = columns.get();
    for (int i = 0; i < e; i += Sums::kLanes) {
        const int at = FXVectorStart(i, e, Sums::kLanes);
        auto s = Sums::Widen(first + at);
        for (int dy = 1; dy < mask.height; ++dy)
            s = Add(s, Sums::Widen(FXRowAt(first, srcStep, dy) + at));
        Sums::StoreSum(col + at, s);
    }
    for (int y = 0; y < roi.height; ++y) {
        T* out = FXRowAt(pDst, dstStep, y);
        for (int i = 0; i < n; i += Sums::kOutLanes) {
            const int at = FXVectorStart(i, n, Sums::kOutLanes);
            sums.Average(col + at, mask.width, kCh, out + at);
        }
        if (y + 1 == roi.height)
            break;
        // Slide the column sums one row down. Not idempotent, so the tail is scalar.
        const T* leaving = FXRowAt(first, srcStep, y);
        const T* entering = FXRowAt(first, srcStep, y + mask.height);
        int i = 0;
        for (; i + Sums::kLanes <= e; i += Sums::kLanes)
            Sums::StoreSum(col + i, Add(Sums::LoadSum(col + i),
                                        Sub(Sums::Widen(entering + i), Sums::Widen(leaving + i))));
        for (; i < e; ++i)
            col[i] = TSum(col[i] + int(entering[i]) - int(leaving[i]));
    }
}

template <class T, TFXLayout L>
IppStatus FilterBox(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize dstRoiSize,
                    IppiSize maskSize, IppiPoint anchor)
{
    const int n = dstRoiSize.width * FXChannels(L);
    const std::int64_t count = std::int64_t(maskSize.width) * maskSize.height;
    if (L == TFXLayout::AC4 || n < kLanes32 || count * kFXSampleMax < T >> INT32_MAX)
        return kFXDeclined;
    if constexpr (sizeof(T) == 1) {
        const TFXWordDivisor divisor = FXWordDivisorFor(int(count));
        if (divisor.Valid() && n >= TWordSums::kOutLanes) {
            FilterBoxIn<T, L>(pSrc, srcStep, pDst, dstStep, dstRoiSize, maskSize, anchor,
                              TWordSums(divisor));
            return ippStsNoErr;
        }
    }
    FilterBoxIn<T, L>(pSrc, srcStep, pDst, dstStep, dstRoiSize, maskSize, anchor,
                      TWideSums<T>(int(count)));
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
