// SPDX-License-Identifier: MIT
// Vector layer backend for AVX2 (256-bit).
#pragma once

#include "framework/primitives/FXIppTypes.h"

#include <immintrin.h>

namespace framix::prim::FX_SIMD_NS {

inline constexpr int kVecBytes = 32;

struct VU8 {
    __m256i V;
};
struct VU16 {
    __m256i V;
};
struct VI32 {
    __m256i V;
};
struct VF32 {
    __m256 V;
};

inline VU8 Load(const Ipp8u* p)
{
    return {_mm256_loadu_si256(reinterpret_cast<const __m256i*>(p))};
}
inline void Store(Ipp8u* p, VU8 v)
{
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), v.V);
}
inline VU8 Min(VU8 a, VU8 b)
{
    return {_mm256_min_epu8(a.V, b.V)};
}
inline VU8 Max(VU8 a, VU8 b)
{
    return {_mm256_max_epu8(a.V, b.V)};
}
inline VU8 CmpEq(VU8 a, VU8 b)
{
    return {_mm256_cmpeq_epi8(a.V, b.V)};
}
inline VU8 Select(VU8 mask, VU8 a, VU8 b)
{
    return {_mm256_blendv_epi8(b.V, a.V, mask.V)};
}

inline VU16 Load(const Ipp16u* p)
{
    return {_mm256_loadu_si256(reinterpret_cast<const __m256i*>(p))};
}
inline void Store(Ipp16u* p, VU16 v)
{
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), v.V);
}
inline VU16 Min(VU16 a, VU16 b)
{
    return {_mm256_min_epu16(a.V, b.V)};
}
inline VU16 Max(VU16 a, VU16 b)
{
    return {_mm256_max_epu16(a.V, b.V)};
}

inline VI32 LoadWiden(const Ipp8u* p)
{
    return {_mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)))};
}
inline VI32 LoadWiden(const Ipp16u* p)
{
    return {_mm256_cvtepu16_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)))};
}
inline VI32 LoadI32(const Ipp32s* p)
{
    return {_mm256_loadu_si256(reinterpret_cast<const __m256i*>(p))};
}
inline void StoreI32(Ipp32s* p, VI32 v)
{
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), v.V);
}
inline VI32 SplatI32(int v)
{
    return {_mm256_set1_epi32(v)};
}
inline VI32 Add(VI32 a, VI32 b)
{
    return {_mm256_add_epi32(a.V, b.V)};
}
inline VI32 Sub(VI32 a, VI32 b)
{
    return {_mm256_sub_epi32(a.V, b.V)};
}
inline VI32 MulLo(VI32 a, VI32 b)
{
    return {_mm256_mullo_epi32(a.V, b.V)};
}
inline VI32 CmpGt(VI32 a, VI32 b)
{
    return {_mm256_cmpgt_epi32(a.V, b.V)};
}
inline VI32 And(VI32 a, VI32 b)
{
    return {_mm256_and_si256(a.V, b.V)};
}

inline VF32 SplatF32(float v)
{
    return {_mm256_set1_ps(v)};
}
inline VF32 ToF32(VI32 v)
{
    return {_mm256_cvtepi32_ps(v.V)};
}
inline VF32 Add(VF32 a, VF32 b)
{
    return {_mm256_add_ps(a.V, b.V)};
}
inline VF32 Mul(VF32 a, VF32 b)
{
    return {_mm256_mul_ps(a.V, b.V)};
}
inline VF32 Div(VF32 a, VF32 b)
{
    return {_mm256_div_ps(a.V, b.V)};
}
inline VF32 Max(VF32 a, VF32 b)
{
    return {_mm256_max_ps(a.V, b.V)};
}
inline VF32 Min(VF32 a, VF32 b)
{
    return {_mm256_min_ps(a.V, b.V)};
}
inline VI32 TruncToI32(VF32 v)
{
    return {_mm256_cvttps_epi32(v.V)};
}
inline VI32 RoundToI32(VF32 v)
{
    return {_mm256_cvtps_epi32(v.V)};
}

// The packs work inside 128-bit halves; the permutes put the lanes back in memory order.
inline void StoreNarrow(Ipp8u* p, VI32 v)
{
    const __m256i w = _mm256_packus_epi32(v.V, v.V);
    const __m256i b = _mm256_packus_epi16(w, w);
    const __m256i ordered =
        _mm256_permutevar8x32_epi32(b, _mm256_setr_epi32(0, 4, 0, 4, 0, 4, 0, 4));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p), _mm256_castsi256_si128(ordered));
}
inline void StoreNarrow(Ipp16u* p, VI32 v)
{
    const __m256i w = _mm256_packus_epi32(v.V, v.V);
    const __m256i ordered = _mm256_permute4x64_epi64(w, 0x08);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p), _mm256_castsi256_si128(ordered));
}

// ---------------------------------------------------------------- 16-bit lanes, selections
// (integer convolution, colour median)

struct VI16 {
    __m256i V;
};

inline VI16 LoadWiden16(const Ipp8u* p)
{
    return {_mm256_cvtepu8_epi16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)))};
}
inline VI16 LoadI16(const Ipp16s* p)
{
    return {_mm256_loadu_si256(reinterpret_cast<const __m256i*>(p))};
}
inline void StoreI16(Ipp16s* p, VI16 v)
{
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), v.V);
}
inline VI16 SplatI16(int v)
{
    return {_mm256_set1_epi16(short(v))};
}
inline VI16 Add(VI16 a, VI16 b)
{
    return {_mm256_add_epi16(a.V, b.V)};
}
inline VI16 Sub(VI16 a, VI16 b)
{
    return {_mm256_sub_epi16(a.V, b.V)};
}
inline VI16 MulLo(VI16 a, VI16 b)
{
    return {_mm256_mullo_epi16(a.V, b.V)};
}
inline VI16 MulHiU(VI16 a, VI16 b)
{
    return {_mm256_mulhi_epu16(a.V, b.V)};
}
inline VI16 Min(VI16 a, VI16 b)
{
    return {_mm256_min_epi16(a.V, b.V)};
}
inline VI16 Max(VI16 a, VI16 b)
{
    return {_mm256_max_epi16(a.V, b.V)};
}
inline VI16 CmpGt(VI16 a, VI16 b)
{
    return {_mm256_cmpgt_epi16(a.V, b.V)};
}
inline VI16 And(VI16 a, VI16 b)
{
    return {_mm256_and_si256(a.V, b.V)};
}
inline VI16 ShiftRightU(VI16 a, int bits)
{
    return {_mm256_srl_epi16(a.V, _mm_cvtsi32_si128(bits))};
}
inline VI16 Select(VI16 mask, VI16 a, VI16 b)
{
    return {_mm256_blendv_epi8(b.V, a.V, mask.V)};
}
// The pack works inside 128-bit halves; the permute puts the 64-bit groups back in order.
inline VU8 NarrowU8(VI16 lo, VI16 hi)
{
    return {_mm256_permute4x64_epi64(_mm256_packus_epi16(lo.V, hi.V), 0xD8)};
}
// Pairs for the multiply-add instructions. ZipLo/ZipHi interleave two vectors (within each
// 128-bit block); MulAddPairs multiplies the interleaved samples by weight pairs and adds each
// pair; PackU8/PackU16 narrow two such halves back into memory order.
inline VU8 ZipLo8(VU8 a, VU8 b)
{
    return {_mm256_unpacklo_epi8(a.V, b.V)};
}
inline VU8 ZipHi8(VU8 a, VU8 b)
{
    return {_mm256_unpackhi_epi8(a.V, b.V)};
}
inline VU8 SplatPair8(int first, int second)
{
    return {_mm256_set1_epi16(short((second << 8) | (first & 0xFF)))};
}
inline VI16 MulAddPairs(VU8 zipped, VU8 weights) // unsigned samples, signed weights, saturating
{
    return {_mm256_maddubs_epi16(zipped.V, weights.V)};
}
inline VU8 PackU8(VI16 lo, VI16 hi)
{
    return {_mm256_packus_epi16(lo.V, hi.V)};
}
inline VI16 ZipLo16(VI16 a, VI16 b)
{
    return {_mm256_unpacklo_epi16(a.V, b.V)};
}
inline VI16 ZipHi16(VI16 a, VI16 b)
{
    return {_mm256_unpackhi_epi16(a.V, b.V)};
}
inline VI16 SplatPair16(int first, int second)
{
    return {_mm256_set1_epi32(int((unsigned(second) << 16) | (unsigned(first) & 0xFFFF)))};
}
inline VI32 MulAddPairs(VI16 zipped, VI16 weights)
{
    return {_mm256_madd_epi16(zipped.V, weights.V)};
}
inline VI16 PackU16(VI32 lo, VI32 hi) // saturated to 0..65535
{
    return {_mm256_packus_epi32(lo.V, hi.V)};
}
inline VI32 Min(VI32 a, VI32 b)
{
    return {_mm256_min_epi32(a.V, b.V)};
}
inline VI32 Max(VI32 a, VI32 b)
{
    return {_mm256_max_epi32(a.V, b.V)};
}

// Colour conversions: float loads, selection by a comparison mask, float comparison, table
// look-up by 32-bit indices (the index lanes must lie inside the table).
inline VF32 LoadF32(const Ipp32f* p)
{
    return {_mm256_loadu_ps(p)};
}
inline void StoreF32(Ipp32f* p, VF32 v)
{
    _mm256_storeu_ps(p, v.V);
}
inline VF32 Sub(VF32 a, VF32 b)
{
    return {_mm256_sub_ps(a.V, b.V)};
}
inline VI32 CmpGt(VF32 a, VF32 b)
{
    return {_mm256_castps_si256(_mm256_cmp_ps(a.V, b.V, _CMP_GT_OQ))};
}
inline VI32 Select(VI32 mask, VI32 a, VI32 b) // mask lanes all ones: a, else b
{
    return {_mm256_blendv_epi8(b.V, a.V, mask.V)};
}
inline VF32 Select(VI32 mask, VF32 a, VF32 b)
{
    return {_mm256_blendv_ps(b.V, a.V, _mm256_castsi256_ps(mask.V))};
}
inline VF32 Lookup(const Ipp32f* table, VI32 index)
{
    return {_mm256_i32gather_ps(table, index.V, 4)};
}

} // namespace framix::prim::FX_SIMD_NS
