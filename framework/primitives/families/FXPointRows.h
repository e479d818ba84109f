// SPDX-License-Identifier: MIT
// Row traversal shared by the vector kernels of the point families (arithmetic, logic,
// blending); included only by their kernel files, after simd/FXVec.h.
#pragma once

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/FXPrimitiveShapes.h"

#include <array>
#include <cstddef>
#include <cstring>

namespace framix::prim::FX_SIMD_NS {
namespace {

// Runs vec(a, b, d, at) on every whole vector (kLanes<T> samples) of a row of n samples, `at`
// being the vector's first sample. The samples left over go through copies padded with ones:
// nothing beyond the row is read or written, and no sample is computed twice, so in-place
// kernels (d == b) and the alpha of AC4 (read back from d) stay right. a, b may be null when
// the operation has fewer sources.
template <class T, class Vec> void ForEachVector(const T* a, const T* b, T* d, int n, Vec vec)
{
    constexpr int kL = kLanes<T>;
    int at = 0;
    for (; at + kL <= n; at += kL)
        vec(a != nullptr ? a + at : nullptr, b != nullptr ? b + at : nullptr, d + at, at);
    if (at == n)
        return;
    // Plain arrays and memcpy: no standard template is instantiated with this level's flags.
    const std::size_t rest = std::size_t(n - at) * sizeof(T);
    T ta[kL], tb[kL], td[kL];
    for (int k = 0; k < kL; ++k)
        ta[k] = tb[k] = td[k] = T(1);
    if (a != nullptr)
        std::memcpy(ta, a + at, rest);
    if (b != nullptr)
        std::memcpy(tb, b + at, rest);
    std::memcpy(td, d + at, rest);
    vec(ta, tb, td, at);
    std::memcpy(d + at, td, rest);
}

// Every row of the ROI: row y of each image, n = width * channels samples.
template <class T, class Vec>
void ForEachRow(const T* a, int aStep, const T* b, int bStep, T* d, int dStep, IppiSize roi,
                int channels, Vec vec)
{
    for (int y = 0; y < roi.height; ++y)
        ForEachVector(a != nullptr ? FXRowAt(a, aStep, y) : nullptr,
                      b != nullptr ? FXRowAt(b, bStep, y) : nullptr, FXRowAt(d, dStep, y),
                      roi.width * channels, vec);
}

// Lanes that hold the alpha of AC4 (every fourth byte); vectors always start at a pixel.
inline VU8 AlphaLanes()
{
    Ipp8u bytes[kVecBytes];
    for (int i = 0; i < kVecBytes; ++i)
        bytes[i] = i % 4 == 3 ? 0xFF : 0;
    return Load(bytes);
}

// Stores a result vector; AC4 keeps the destination's alpha bytes.
template <TFXLayout L> void Put(Ipp8u* d, VU8 result, VU8 alphaLanes)
{
    if constexpr (L == TFXLayout::AC4)
        Store(d, Select(alphaLanes, Load(d), result));
    else
        Store(d, result);
}

template <TFXLayout L> void Put(Ipp16u* d, VU16 result, VU8)
{
    static_assert(L != TFXLayout::AC4, "16-bit AC4 kernels are not implemented");
    Store(d, result);
}

// Per-channel constants as vectors: phase p holds value[(at + k) % channels] in lane k for
// vectors starting at a sample `at` with at % channels == p (C3 cycles through three phases;
// C1 and C4 have one, as the vector length is a multiple of 4 samples).
template <class T, TFXLayout L> struct TChannelConstants {
    static constexpr int kCh = FXChannels(L);
    static constexpr int kPhases = kCh == 3 ? 3 : 1;
    std::array<TVec<T>, kPhases> Phase;

    explicit TChannelConstants(const T* value)
    {
        for (int p = 0; p < kPhases; ++p) {
            T lanes[kLanes<T>];
            for (int k = 0; k < kLanes<T>; ++k)
                lanes[k] = value[(p + k) % kCh];
            Phase[p] = Load(lanes);
        }
    }
    TVec<T> At(int at) const { return Phase[kPhases == 1 ? 0 : at % kPhases]; }
};

} // namespace
} // namespace framix::prim::FX_SIMD_NS
