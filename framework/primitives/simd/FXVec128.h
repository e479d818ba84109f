// SPDX-License-Identifier: MIT
// 16-byte blocks for the kernels that move bytes between layouts (three-byte pixels, planes,
// reversals): one implementation with SSE4.1 instructions, which every level has.
#pragma once

#include "framework/primitives/FXIppTypes.h"

#include <smmintrin.h>

namespace framix::prim::FX_SIMD_NS {

// Sixteen bytes as they lie in memory.
struct VB16 {
    __m128i V;
};

inline VB16 LoadB16(const Ipp8u* p)
{
    return {_mm_loadu_si128(reinterpret_cast<const __m128i*>(p))};
}
inline void StoreB16(Ipp8u* p, VB16 v)
{
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v.V);
}
// Byte i of the result is v[idx[i]], or 0 where idx[i] has its top bit set.
inline VB16 Shuffle(VB16 v, VB16 idx)
{
    return {_mm_shuffle_epi8(v.V, idx.V)};
}
// a where the mask byte has its top bit set, else b.
inline VB16 Select(VB16 mask, VB16 a, VB16 b)
{
    return {_mm_blendv_epi8(b.V, a.V, mask.V)};
}
inline VB16 Or(VB16 a, VB16 b)
{
    return {_mm_or_si128(a.V, b.V)};
}
// Interleave the low or high 32-bit (64-bit) halves of a and b: a0 b0 a1 b1 (a0 b0).
inline VB16 UnpackLo32(VB16 a, VB16 b)
{
    return {_mm_unpacklo_epi32(a.V, b.V)};
}
inline VB16 UnpackHi32(VB16 a, VB16 b)
{
    return {_mm_unpackhi_epi32(a.V, b.V)};
}
inline VB16 UnpackLo64(VB16 a, VB16 b)
{
    return {_mm_unpacklo_epi64(a.V, b.V)};
}
inline VB16 UnpackHi64(VB16 a, VB16 b)
{
    return {_mm_unpackhi_epi64(a.V, b.V)};
}

// A block from sixteen byte values (shuffle indices, masks), written in memory order.
struct TFXBytes16 {
    Ipp8u B[16];
};
inline VB16 B16(const TFXBytes16& bytes)
{
    return LoadB16(bytes.B);
}

} // namespace framix::prim::FX_SIMD_NS
