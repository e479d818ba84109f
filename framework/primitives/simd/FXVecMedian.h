// SPDX-License-Identifier: MIT
// Selection networks for medians on whole vectors, shared by the kernel files of the families
// that take medians (included after simd/FXVec.h, once per level).
#pragma once

#include "framework/primitives/simd/FXVec.h"

#include <array>
#include <cstddef>
#include <utility>

namespace framix::prim::FX_SIMD_NS {

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

// The row function for N = count values, or null: the box filter's masks 1x1 ... 7x7 and the
// thin and 3x5 masks between, and the cross medians (5 and 9 values).
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
} // namespace framix::prim::FX_SIMD_NS
