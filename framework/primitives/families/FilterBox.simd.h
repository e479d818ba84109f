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

// 8-bit samples whose mask sums fit 16 bits (divisor valid): the box kernel below in 16-bit
// lanes, twice the samples per instruction, 2 * kLanes16 outputs per step. Wrapping lanes are
// fine: every column and mask sum is below 2^16, so the sliding update's intermediate
// wrap-around cancels.
template <TFXLayout L>
void FilterBoxWords(const Ipp8u* pSrc, int srcStep, Ipp8u* pDst, int dstStep, IppiSize roi,
                    IppiSize mask, IppiPoint anchor, const TFXWordDivisor& divisor)
{
    constexpr int kCh = FXChannels(L);
    constexpr int kStep = 2 * kLanes16;
    const int n = roi.width * kCh;
    const int e = (roi.width + mask.width - 1) * kCh;
    const Ipp8u* first = FXRowAt(pSrc, srcStep, -anchor.y) - std::ptrdiff_t(anchor.x) * kCh;
    std::unique_ptr<Ipp16s[]> columns(new Ipp16s[e]);
    Ipp16s* col = columns.get();
    for (int i = 0; i < e; i += kLanes16) {
        const int at = FXVectorStart(i, e, kLanes16);
        VI16 s = LoadWiden16(first + at);
        for (int dy = 1; dy < mask.height; ++dy)
            s = Add(s, LoadWiden16(FXRowAt(first, srcStep, dy) + at));
        StoreI16(col + at, s);
    }
    const TWordDivide divide(divisor);
    for (int y = 0; y < roi.height; ++y) {
        Ipp8u* out = FXRowAt(pDst, dstStep, y);
        for (int i = 0; i < n; i += kStep) {
            const Ipp16s* at = col + FXVectorStart(i, n, kStep);
            VI16 lo = LoadI16(at);
            VI16 hi = LoadI16(at + kLanes16);
            for (int dx = 1; dx < mask.width; ++dx) {
                lo = Add(lo, LoadI16(at + dx * kCh));
                hi = Add(hi, LoadI16(at + kLanes16 + dx * kCh));
            }
            Store(out + (at - col), NarrowU8(divide(lo), divide(hi)));
        }
        if (y + 1 == roi.height)
            break;
        const Ipp8u* leaving = FXRowAt(first, srcStep, y);
        const Ipp8u* entering = FXRowAt(first, srcStep, y + mask.height);
        int i = 0;
        for (; i + kLanes16 <= e; i += kLanes16)
            StoreI16(col + i, Add(LoadI16(col + i),
                                  Sub(LoadWiden16(entering + i), LoadWiden16(leaving + i))));
        for (; i < e; ++i)
            col[i] = Ipp16s(col[i] + entering[i] - leaving[i]);
    }
}

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
    if constexpr (sizeof(T) == 1) {
        const TFXWordDivisor divisor = FXWordDivisorFor(int(count));
        if (divisor.Valid() && n >= 2 * kLanes16) {
            FilterBoxWords<L>(pSrc, srcStep, pDst, dstStep, dstRoiSize, maskSize, anchor, divisor);
            return ippStsNoErr;
        }
    }
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

// The mask sizes with a selection network (simd/FXVecMedian.h); the others run the reference.
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
