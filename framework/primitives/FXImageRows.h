// SPDX-License-Identifier: MIT
// Row addressing by byte steps, shared by the reference implementations and the vector kernels.
#pragma once

#include "framework/primitives/FXIppTypes.h"
#include "framework/primitives/FXIsa.h"
#include "framework/primitives/FXPrimitiveShapes.h"

#include <cstddef>

namespace framix::prim {
inline namespace FX_ISA_NS {

// Row y (may be negative) of an image whose rows are `step` bytes apart.
template <class T> const T* FXRowAt(const T* p, int step, int y)
{
    return reinterpret_cast<const T*>(reinterpret_cast<const Ipp8u*>(p) + std::ptrdiff_t(y) * step);
}

template <class T> T* FXRowAt(T* p, int step, int y)
{
    return reinterpret_cast<T*>(reinterpret_cast<Ipp8u*>(p) + std::ptrdiff_t(y) * step);
}

// Point operations: out = map(in, c) for every processed sample of the ROI, channel c of each
// pixel; the alpha of AC4 is neither read nor written.
template <class T, TFXLayout L, class Map>
void FXMapSamples(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roi, Map map)
{
    constexpr int kCh = FXChannels(L);
    for (int y = 0; y < roi.height; ++y) {
        const T* in = FXRowAt(pSrc, srcStep, y);
        T* out = FXRowAt(pDst, dstStep, y);
        for (int x = 0; x < roi.width; ++x)
            for (int c = 0; c < FXProcessedChannels(L); ++c)
                out[x * kCh + c] = map(in[x * kCh + c], c);
    }
}

// Start of the vector at step i of a row of n samples (n >= lanes): the last one is moved back
// so it ends at the row's end. It recomputes a few samples, which only kernels that are a pure
// function of the source may do.
inline int FXVectorStart(int i, int n, int lanes)
{
    return i + lanes > n ? n - lanes : i;
}

} // namespace FX_ISA_NS
} // namespace framix::prim
