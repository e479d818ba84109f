// SPDX-License-Identifier: MIT
// Box and rank filters, vector kernels: compiled once per level (see CMakeLists.txt).
#include "framework/primitives/families/FilterBox.h"

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/FXRound.h"
#include "framework/primitives/simd/FXVec.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

// All kernels work on the samples of a row as one sequence, C1, C3 and C4 alike: the
// neighbour dx columns away of sample i is sample i + dx * channels. A row shorter than one
// vector is declined (the reference runs it).

namespace framix::prim::FX_SIMD_NS {
namespace {

// ---------------------------------------------------------------- box

// Exact sum / count, halves to even, for 0 <= sum < 2^31: a float estimate (times the
// reciprocal) is within one of the truth, the remainder corrects it, then the remainder
// decides the rounding.
inline VI32 DivRoundHalfEven(VI32 sum, VI32 count, VF32 reciprocal)
{
    const VI32 zero = SplatI32(0);
    const VI32 one = SplatI32(1);
    VI32 q = TruncToI32(Mul(ToF32(sum), reciprocal));
    VI32 r = Sub(sum, MulLo(q, count));
    const VI32 under = CmpGt(zero, r); // all ones: q one too big
    q = Add(q, under);
    r = Add(r, And(under, count));
    const VI32 over = CmpGt(r, Sub(count, one)); // q one too small
    q = Sub(q, over);
    r = Sub(r, And(over, count));
    // Up when 2r > count, or 2r == count and q is odd.
    const VI32 up = CmpGt(Add(Add(r, r), And(q, one)), count);
    return Sub(q, up);
}

// The same result with fewer steps, for 2 * sum + count < 2^21 (8-bit images up to 4103
// samples per mask, 16-bit ones up to 16): halves to even is floor((2 sum + count) / (2 count)),
// one lower when that division is exact and gives an odd quotient (a tie). The float quotient
// of (2 sum + count + 0.5) stays at least 0.5 / (2 count) from every integer, far more than its
// rounding error, so truncating it is the exact floor.
inline VI32 DivRoundHalfEvenSmall(VI32 sum, VI32 twiceCount, VF32 reciprocalOfTwice, VI32 count)
{
    const VI32 one = SplatI32(1);
    const VI32 x = Add(Add(sum, sum), count);
    VI32 q = TruncToI32(Mul(Add(ToF32(x), SplatF32(0.5f)), reciprocalOfTwice));
    const VI32 exact = CmpGt(one, Sub(x, MulLo(q, twiceCount))); // remainder 0
    return Sub(q, And(exact, And(q, one)));
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
    const bool small = (2 * kFXSampleMax<T> + 1) * count < (std::int64_t(1) << 21);
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

// A selection network for the median of N values, built while compiling: Batcher's odd-even
// merge sort on the next power of two, padded with values known to be below or above every
// input, then reduced to the comparisons that can reach the median (a comparison whose minimum
// or maximum nobody reads computes only the other). Each comparison is one Min and/or one Max
// on whole vectors, so a vector of pixels takes its medians at once.
struct TMedianStep {
    int A;    // slot that receives the minimum
    int B;    // slot that receives the maximum
    int Kind; // kBoth, kMinOnly (A = min(A, B)), kMaxOnly (B = max(A, B))
};
constexpr int kBoth = 0, kMinOnly = 1, kMaxOnly = 2;
constexpr int kMaxMedianSteps = 600;

struct TMedianNet {
    std::array<TMedianStep, kMaxMedianSteps> Steps{};
    int Count = 0;
    int Out = 0; // slot holding the median at the end
};

constexpr int kBelowAll = -1, kAboveAll = -2;

constexpr TMedianNet BuildMedianNet(int n)
{
    int p = 1;
    while (p < n)
        p *= 2;
    const int low = (p - n) / 2;
    // wire -> input slot, or a padding constant
    std::array<int, 64> wire{};
    for (int w = 0; w < p; ++w)
        wire[w] = w < low ? kBelowAll : w < low + n ? w - low : kAboveAll;
    std::array<TMedianStep, kMaxMedianSteps> all{};
    int count = 0;
    auto compare = [&](int i, int j) { // wire i takes the minimum, wire j the maximum
        const int a = wire[i], b = wire[j];
        if (a == kBelowAll || b == kAboveAll)
            return; // already in order
        if (a >= 0 && b >= 0) {
            all[count++] = {a, b, kBoth};
            return;
        }
        wire[i] = b; // a constant on the wrong side: the two wires just trade places
        wire[j] = a;
    };
    for (int span = 1; span < p; span *= 2)
        for (int k = span; k >= 1; k /= 2)
            for (int j = k % span; j + k < p; j += 2 * k)
                for (int i = 0; i < k && i + j + k < p; ++i)
                    if ((i + j) / (2 * span) == (i + j + k) / (2 * span))
                        compare(i + j, i + j + k);
    TMedianNet net;
    net.Out = wire[low + n / 2];
    std::array<bool, 64> live{};
    live[net.Out] = true;
    std::array<TMedianStep, kMaxMedianSteps> kept{};
    int keptCount = 0;
    for (int s = count - 1; s >= 0; --s) {
        TMedianStep step = all[s];
        const bool needMin = live[step.A], needMax = live[step.B];
        if (!needMin && !needMax)
            continue;
        step.Kind = needMin && needMax ? kBoth : needMin ? kMinOnly : kMaxOnly;
        live[step.A] = live[step.B] = true;
        kept[keptCount++] = step;
    }
    for (int s = 0; s < keptCount; ++s)
        net.Steps[s] = kept[keptCount - 1 - s];
    net.Count = keptCount;
    return net;
}

template <int N> inline constexpr TMedianNet kMedianNet = BuildMedianNet(N);

template <int A, int B, int Kind, class V> inline void MedianStep(V* w)
{
    if constexpr (Kind == kBoth) {
        const V lo = Min(w[A], w[B]);
        w[B] = Max(w[A], w[B]);
        w[A] = lo;
    } else if constexpr (Kind == kMinOnly) {
        w[A] = Min(w[A], w[B]);
    } else {
        w[B] = Max(w[A], w[B]);
    }
}

template <int N, class V, std::size_t... S>
inline void RunMedianNet([[maybe_unused]] V* w, std::index_sequence<S...>)
{
    constexpr const TMedianNet& net = kMedianNet<N>;
    (MedianStep<net.Steps[S].A, net.Steps[S].B, net.Steps[S].Kind>(w), ...);
}

// One output row: taps[k] points at the k-th neighbour of the row's first sample.
template <int N, class T> void MedianRow(const T* const* taps, T* out, int n)
{
    for (int i = 0; i < n; i += kLanes<T>) {
        const int at = FXVectorStart(i, n, kLanes<T>);
        TVec<T> w[N];
        for (int k = 0; k < N; ++k)
            w[k] = Load(taps[k] + at);
        RunMedianNet<N>(w, std::make_index_sequence<std::size_t(kMedianNet<N>.Count)>());
        Store(out + at, w[kMedianNet<N>.Out]);
    }
}

template <class T> using TMedianRowFn = void (*)(const T* const*, T*, int);

// The mask sizes with a network: 1x1 ... 7x7 and the thin and 3x5 masks between.
template <class T> TMedianRowFn<T> MedianRowFor(int count)
{
    switch (count) {
    case 1:
        return &MedianRow<1, T>;
    case 3:
        return &MedianRow<3, T>;
    case 5:
        return &MedianRow<5, T>;
    case 7:
        return &MedianRow<7, T>;
    case 9:
        return &MedianRow<9, T>;
    case 15:
        return &MedianRow<15, T>;
    case 21:
        return &MedianRow<21, T>;
    case 25:
        return &MedianRow<25, T>;
    case 49:
        return &MedianRow<49, T>;
    default:
        return nullptr;
    }
}

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
