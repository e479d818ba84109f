// SPDX-License-Identifier: MIT
// Histograms, level kernels: compiled once per level (see CMakeLists.txt). Counting is a
// scatter, which vectors do not speed up; the kernels count every sample value first, in
// several interleaved copies so that equal neighbours do not wait on each other's increment,
// then add the counts up bin by bin.
#include "framework/primitives/families/Histogram.h"

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/FXRound.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

namespace framix::prim::FX_SIMD_NS {
namespace {

// Per-thread counting memory, kept between calls so a stream of frames allocates nothing after
// its first. A type of this file only: no standard template is instantiated with this level's
// instructions.
struct TScratch {
    Ipp32u* Data = nullptr;
    std::size_t Size = 0;
    ~TScratch() { delete[] Data; }
    Ipp32u* Get(std::size_t n)
    {
        if (n > Size) {
            delete[] Data;
            Data = new Ipp32u[n];
            Size = n;
        }
        return Data;
    }
};
thread_local TScratch tCounts, tBelow;

template <class T, TFXLayout L>
IppStatus Count(const T* pSrc, int srcStep, IppiSize roi, Ipp32s* const* pHist,
                Ipp32s* const* pLevels, const int* nLevels, const Ipp32s* lowerLevel,
                const Ipp32s* upperLevel)
{
    constexpr int kCh = FXChannels(L);
    constexpr int kCounted = FXProcessedChannels(L);
    constexpr std::size_t kValues = std::size_t(kFXSampleMax<T>) + 1;
    constexpr int kCopies = sizeof(T) == 1 ? 4 : 2; // 16-bit copies are 256 KB each
    Ipp32u* counts = tCounts.Get(kCopies * kCounted * kValues);
    std::memset(counts, 0, sizeof(Ipp32u) * kCopies * kCounted * kValues);
    const auto copy = [&](int k, int c) { return counts + (k * kCounted + c) * kValues; };
    for (int y = 0; y < roi.height; ++y) {
        const T* in = FXRowAt(pSrc, srcStep, y);
        int x = 0;
        for (; x + kCopies <= roi.width; x += kCopies)
            for (int k = 0; k < kCopies; ++k)
                for (int c = 0; c < kCounted; ++c)
                    ++copy(k, c)[in[(x + k) * kCh + c]];
        for (; x < roi.width; ++x)
            for (int c = 0; c < kCounted; ++c)
                ++copy(0, c)[in[x * kCh + c]];
    }
    // Running totals: below[v] samples lie under v; bin k holds below[hi] - below[lo].
    Ipp32u* below = tBelow.Get(kValues + 1);
    for (int c = 0; c < kCounted; ++c) {
        below[0] = 0;
        for (std::size_t v = 0; v < kValues; ++v) {
            Ipp32u sum = below[v];
            for (int k = 0; k < kCopies; ++k)
                sum += copy(k, c)[v];
            below[v + 1] = sum;
        }
        Ipp32s* levels = pLevels[c];
        FXHistogramLevels(levels, nLevels[c], lowerLevel[c], upperLevel[c]);
        for (int b = 0; b + 1 < nLevels[c]; ++b) {
            const auto lo = std::size_t(std::clamp<std::int64_t>(levels[b], 0, kValues));
            const auto hi = std::size_t(std::clamp<std::int64_t>(levels[b + 1], 0, kValues));
            pHist[c][b] = lo < hi ? Ipp32s(below[hi] - below[lo]) : 0;
        }
    }
    return ippStsNoErr;
}

} // namespace

template <class T, TFXLayout L>
IppStatus HistogramEven(const T* pSrc, int srcStep, IppiSize roiSize, Ipp32s* pHist,
                        Ipp32s* pLevels, int nLevels, Ipp32s lowerLevel, Ipp32s upperLevel)
{
    return Count<T, L>(pSrc, srcStep, roiSize, &pHist, &pLevels, &nLevels, &lowerLevel,
                       &upperLevel);
}

template <class T, TFXLayout L>
IppStatus HistogramEvenChannels(const T* pSrc, int srcStep, IppiSize roiSize, Ipp32s* pHist[],
                                Ipp32s* pLevels[], int nLevels[], Ipp32s lowerLevel[],
                                Ipp32s upperLevel[])
{
    return Count<T, L>(pSrc, srcStep, roiSize, pHist, pLevels, nLevels, lowerLevel, upperLevel);
}

FX_KERNEL_TABLE(Histogram, FX_HISTOGRAM_PRIMITIVES)

} // namespace framix::prim::FX_SIMD_NS
