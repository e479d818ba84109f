// SPDX-License-Identifier: MIT
// Noise, vector kernels: compiled once per level (see CMakeLists.txt). The generator stays one
// sequence (Noise.h); the uniform samples are scaled, rounded and added in vectors.
#include "framework/primitives/families/Noise.h"

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/simd/FXVec.h"

#include <algorithm>

namespace framix::prim::FX_SIMD_NS {

// The reference's operations lane by lane: mean + output * scale in double, rounded half to
// even, added and saturated. Rows of whole pixels (C1, C3, C4) run as sample vectors; AC4
// spreads its samples over the four channels with noise 0 for alpha.
template <class T, TFXLayout L>
IppStatus AddRandUniform(T* pSrcDst, int srcDstStep, IppiSize roiSize, T low, T high,
                         unsigned int* pSeed)
{
    static_assert(TFXIppRandom::kMaxTake % kLanes32 == 0);
    TFXIppRandom rnd(*pSeed);
    const double mean = (double(low) + double(high)) / 2.0;
    const double scale = (double(high) - double(low)) / 4294967296.0;
    const VF64 vMean = SplatF64(mean), vScale = SplatF64(scale);
    auto noise = [&](VI32 out) {
        return RoundToI32(RoundF64(Add(vMean, Mul(ToF64Low(out), vScale))),
                     RoundF64(Add(vMean, Mul(ToF64High(out), vScale))));
    };
    // The noise of samples [from, m) of a run: vectors, then a scalar tail.
    auto fill = [&](const Ipp32s* out, Ipp32s* values, int m) {
        int k = 0;
        for (; k + kLanes32 <= m; k += kLanes32)
            StoreI32(values + k, noise(LoadI32(out + k)));
        for (; k < m; ++k)
            values[k] = Ipp32s(FXRoundHalfEven(mean + double(out[k]) * scale));
    };
    constexpr int kCh = FXChannels(L);
    for (int y = 0; y < roiSize.height; ++y) {
        T* row = FXRowAt(pSrcDst, srcDstStep, y);
        if constexpr (L == TFXLayout::AC4) {
            // sixteen pixels per run: their 48 samples spread over 64 lanes, alpha's noise 0
            for (int x = 0; x < roiSize.width; x += 16) {
                const int px = std::min(16, roiSize.width - x);
                Ipp32s values[48], spread[64];
                fill(rnd.Take(3 * px), values, 3 * px);
                for (int p = 0; p < px; ++p) {
                    for (int c = 0; c < 3; ++c)
                        spread[4 * p + c] = values[3 * p + c];
                    spread[4 * p + 3] = 0;
                }
                T* pixels = row + std::ptrdiff_t(x) * 4;
                int q = 0;
                for (; q + kLanes32 <= 4 * px; q += kLanes32)
                    StoreNarrow(pixels + q, Add(LoadWiden(pixels + q), LoadI32(spread + q)));
                for (; q < 4 * px; ++q)
                    pixels[q] = FXAddSaturated(pixels[q], spread[q]);
            }
        } else {
            const int n = roiSize.width * kCh; // samples per row
            for (int i = 0; i < n; i += TFXIppRandom::kMaxTake) {
                const int m = std::min(TFXIppRandom::kMaxTake, n - i);
                const Ipp32s* out = rnd.Take(m);
                int j = 0;
                for (; j + kLanes32 <= m; j += kLanes32)
                    StoreNarrow(row + i + j, Add(LoadWiden(row + i + j), noise(LoadI32(out + j))));
                for (; j < m; ++j)
                    row[i + j] = FXAddSaturated(
                        row[i + j], Ipp32s(FXRoundHalfEven(mean + double(out[j]) * scale)));
            }
        }
    }
    *pSeed = rnd.Seed();
    return ippStsNoErr;
}

template <class T, TFXLayout L>
IppStatus AddRandGauss(T* pSrcDst, int srcDstStep, IppiSize roiSize, T mean, T stdev,
                       unsigned int* pSeed)
{
    return FXAddRandGauss<T, L>(pSrcDst, srcDstStep, roiSize, mean, stdev, pSeed);
}

FX_KERNEL_TABLE(Noise, FX_NOISE_PRIMITIVES)

} // namespace framix::prim::FX_SIMD_NS
