// SPDX-License-Identifier: MIT
// Byte permutes (AVX-512 VBMI): the run-time check for them, a whole 256-entry byte table
// looked up in three instructions, and a row mapped through one table (for AVX-512 kernel files).
#pragma once

#if defined(FX_SIMD_LEVEL_AVX512)

#include "framework/primitives/FXIppTypes.h"

#include <immintrin.h>

namespace framix::prim::FX_SIMD_NS {

// VBMI is not part of the level's baseline (Skylake-X lacks it), so it is checked once; without
// it the callers take their other paths.
inline bool HasBytePermutes()
{
    static const bool kHas = __builtin_cpu_supports("avx512vbmi");
    return kHas;
}

// A 256-entry byte table in four registers.
struct TByteTable {
    __m512i Q[4];
};

inline TByteTable LoadByteTable(const Ipp8u* table)
{
    TByteTable t;
    for (int q = 0; q < 4; ++q)
        t.Q[q] = _mm512_loadu_si512(table + 64 * q);
    return t;
}

// table[idx] for each of the 64 bytes: two two-register permutes, chosen by the index's top bit.
__attribute__((target("avx512vbmi"))) inline __m512i LookUp(const TByteTable& t, __m512i idx)
{
    const __m512i low = _mm512_permutex2var_epi8(t.Q[0], idx, t.Q[1]);
    const __m512i high = _mm512_permutex2var_epi8(t.Q[2], idx, t.Q[3]);
    return _mm512_mask_blend_epi8(_mm512_movepi8_mask(idx), low, high);
}

// The first n bytes of a 64-byte vector (all of them from 64 on): a row's tail.
inline __mmask64 FirstBytesMask(int n)
{
    return n >= 64 ? ~__mmask64(0) : (__mmask64(1) << n) - 1;
}

// n bytes of a row through one table, 64 at a time, the tail loaded and stored under a mask.
// Only the lanes set in `stored` are written (four-channel rows leave their alpha bytes: 64 is
// a whole number of pixels, so every vector has the same alpha lanes).
__attribute__((target("avx512vbmi"))) inline void MapRowThroughTable(const Ipp8u* in, Ipp8u* out,
                                                                     int n, TByteTable t,
                                                                     __mmask64 stored)
{
    for (int i = 0; i < n; i += 64) {
        const __mmask64 live = FirstBytesMask(n - i);
        _mm512_mask_storeu_epi8(out + i, live & stored,
                                LookUp(t, _mm512_maskz_loadu_epi8(live, in + i)));
    }
}

} // namespace framix::prim::FX_SIMD_NS

#endif
