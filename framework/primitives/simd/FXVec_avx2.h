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

// ---------------------------------------------------------------- point operations
// Lane-wise arithmetic, logic and selection on 8- and 16-bit samples, and what the point
// kernels (arithmetic, logic, blending) need besides. A mask has every bit set in the lanes
// where its comparison holds.
inline VU8 SplatU8(int v)
{
    return {_mm256_set1_epi8(char(v))};
}
inline VU16 SplatU16(int v)
{
    return {_mm256_set1_epi16(short(v))};
}
inline VU8 AddSat(VU8 a, VU8 b)
{
    return {_mm256_adds_epu8(a.V, b.V)};
}
inline VU8 SubSat(VU8 a, VU8 b)
{
    return {_mm256_subs_epu8(a.V, b.V)};
}
inline VU16 AddSat(VU16 a, VU16 b)
{
    return {_mm256_adds_epu16(a.V, b.V)};
}
inline VU16 SubSat(VU16 a, VU16 b)
{
    return {_mm256_subs_epu16(a.V, b.V)};
}
inline VU16 Add(VU16 a, VU16 b)
{
    return {_mm256_add_epi16(a.V, b.V)};
}
inline VU16 Sub(VU16 a, VU16 b)
{
    return {_mm256_sub_epi16(a.V, b.V)};
}
inline VU16 MulLo(VU16 a, VU16 b)
{
    return {_mm256_mullo_epi16(a.V, b.V)};
}
// The high half of the unsigned 32-bit product.
inline VU16 MulHi(VU16 a, VU16 b)
{
    return {_mm256_mulhi_epu16(a.V, b.V)};
}
inline VU16 ShiftRight(VU16 v, int n)
{
    return {_mm256_srl_epi16(v.V, _mm_cvtsi32_si128(n))};
}
inline VU16 ShiftLeft(VU16 v, int n)
{
    return {_mm256_sll_epi16(v.V, _mm_cvtsi32_si128(n))};
}
inline VU8 And(VU8 a, VU8 b)
{
    return {_mm256_and_si256(a.V, b.V)};
}
inline VU8 Or(VU8 a, VU8 b)
{
    return {_mm256_or_si256(a.V, b.V)};
}
inline VU8 Xor(VU8 a, VU8 b)
{
    return {_mm256_xor_si256(a.V, b.V)};
}
inline VU16 And(VU16 a, VU16 b)
{
    return {_mm256_and_si256(a.V, b.V)};
}
inline VU16 Or(VU16 a, VU16 b)
{
    return {_mm256_or_si256(a.V, b.V)};
}
inline VU16 Xor(VU16 a, VU16 b)
{
    return {_mm256_xor_si256(a.V, b.V)};
}

// Point operations: byte selection and shuffles, 32-bit shifts, float rounding and double lanes.
inline VU8 AsU8(VI32 v)
{
    return {v.V};
}
inline VI32 AsI32(VU8 v)
{
    return {v.V};
}
inline VU8 Shuffle(VU8 v, VU8 idx)
{
    return {_mm256_shuffle_epi8(v.V, idx.V)};
}
inline VU8 Broadcast16(const Ipp8u* pattern)
{
    return {
        _mm256_broadcastsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(pattern)))};
}
inline VI32 Or(VI32 a, VI32 b)
{
    return {_mm256_or_si256(a.V, b.V)};
}
inline VU16 CmpEq(VU16 a, VU16 b)
{
    return {_mm256_cmpeq_epi16(a.V, b.V)};
}
inline VI32 CmpEq(VI32 a, VI32 b)
{
    return {_mm256_cmpeq_epi32(a.V, b.V)};
}
// a where the mask is set, b elsewhere.
inline VU16 Select(VU16 mask, VU16 a, VU16 b)
{
    return {_mm256_blendv_epi8(b.V, a.V, mask.V)};
}
inline bool Any(VU8 mask)
{
    return _mm256_testz_si256(mask.V, mask.V) == 0;
}
inline bool Any(VU16 mask)
{
    return _mm256_testz_si256(mask.V, mask.V) == 0;
}
inline bool Any(VI32 mask)
{
    return _mm256_testz_si256(mask.V, mask.V) == 0;
}
// Zero-extended halves, in the lane order NarrowSat puts back (within 128-bit blocks).
inline VU16 WidenLo(VU8 v)
{
    return {_mm256_unpacklo_epi8(v.V, _mm256_setzero_si256())};
}
inline VU16 WidenHi(VU8 v)
{
    return {_mm256_unpackhi_epi8(v.V, _mm256_setzero_si256())};
}
// Undoes WidenLo / WidenHi; values above 255 saturate.
inline VU8 NarrowSat(VU16 lo, VU16 hi)
{
    const auto limit = _mm256_set1_epi16(255);
    return {_mm256_packus_epi16(_mm256_min_epu16(lo.V, limit), _mm256_min_epu16(hi.V, limit))};
}
// The largest lane.
inline int MaxLane(VU8 v)
{
    __m128i m = _mm_max_epu8(_mm256_castsi256_si128(v.V), _mm256_extracti128_si256(v.V, 1));
    m = _mm_max_epu8(m, _mm_srli_si128(m, 8));
    m = _mm_max_epu8(m, _mm_srli_si128(m, 4));
    m = _mm_max_epu8(m, _mm_srli_si128(m, 2));
    m = _mm_max_epu8(m, _mm_srli_si128(m, 1));
    return _mm_cvtsi128_si32(m) & 0xFF;
}

template <int N> inline VI32 ShiftLeft(VI32 v)
{
    return {_mm256_slli_epi32(v.V, N)};
}
template <int N> inline VI32 ShiftRight(VI32 v)
{
    return {_mm256_srli_epi32(v.V, N)};
}
inline VI32 Iota()
{
    return {_mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7)};
}

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
inline VI32 CmpGt(VF32 a, VF32 b)
{
    return {_mm256_castps_si256(_mm256_cmp_ps(a.V, b.V, _CMP_GT_OQ))};
}
inline VI32 Select(VI32 mask, VI32 a, VI32 b) // mask lanes all ones: a, else b
{
    return {_mm256_blendv_epi8(b.V, a.V, mask.V)};
}
// a * b + c with one rounding.
inline VF32 MulAdd(VF32 a, VF32 b, VF32 c)
{
    return {_mm256_fmadd_ps(a.V, b.V, c.V)};
}

// Narrows 32-bit lanes (negative values to 0, large ones to the maximum) into one vector of
// samples in memory order: four vectors into 8-bit samples, two into 16-bit ones. The packs
// work inside 128-bit halves; the permutes put the lanes back in memory order.
inline VU8 NarrowSat4(VI32 a, VI32 b, VI32 c, VI32 d)
{
    const __m256i limit = _mm256_set1_epi16(255);
    const __m256i ab = _mm256_min_epu16(_mm256_packus_epi32(a.V, b.V), limit);
    const __m256i cd = _mm256_min_epu16(_mm256_packus_epi32(c.V, d.V), limit);
    return {_mm256_permutevar8x32_epi32(_mm256_packus_epi16(ab, cd),
                                        _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7))};
}
inline VU16 NarrowSat2(VI32 a, VI32 b)
{
    return {_mm256_permute4x64_epi64(_mm256_packus_epi32(a.V, b.V), 0xD8)};
}

// Every byte of a 4-byte group becomes the group's last byte (a pixel's alpha, for AC4).
inline VU8 BroadcastAlpha(VU8 v)
{
    const __m256i pattern =
        _mm256_setr_epi8(3, 3, 3, 3, 7, 7, 7, 7, 11, 11, 11, 11, 15, 15, 15, 15, 3, 3, 3, 3, 7, 7,
                         7, 7, 11, 11, 11, 11, 15, 15, 15, 15);
    return {_mm256_shuffle_epi8(v.V, pattern)};
}
// a where the mask is set, b elsewhere.
inline VF32 Select(VI32 mask, VF32 a, VF32 b)
{
    return {_mm256_blendv_ps(b.V, a.V, _mm256_castsi256_ps(mask.V))};
}
inline VF32 Lookup(const Ipp32f* table, VI32 index)
{
    return {_mm256_i32gather_ps(table, index.V, 4)};
}

// 32-bit halves of 16-bit lanes, zero-extended, in the order NarrowSat(VI32, VI32) puts back
// (within 128-bit blocks).
inline VI32 WidenLo(VU16 v)
{
    return {_mm256_unpacklo_epi16(v.V, _mm256_setzero_si256())};
}
inline VI32 WidenHi(VU16 v)
{
    return {_mm256_unpackhi_epi16(v.V, _mm256_setzero_si256())};
}
// Undoes WidenLo / WidenHi of 16-bit lanes; values outside 0...65535 saturate.
inline VU16 NarrowSat(VI32 lo, VI32 hi)
{
    return {_mm256_packus_epi32(lo.V, hi.V)};
}

struct VF64 {
    __m256d V;
};

inline VF64 SplatF64(double v)
{
    return {_mm256_set1_pd(v)};
}
// kLanes64 samples, zero-extended and converted exactly.
inline VF64 LoadWidenF64(const Ipp16u* p)
{
    return {_mm256_cvtepi32_pd(
        _mm_cvtepu16_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p))))};
}
inline VF64 Add(VF64 a, VF64 b)
{
    return {_mm256_add_pd(a.V, b.V)};
}
inline VF64 Mul(VF64 a, VF64 b)
{
    return {_mm256_mul_pd(a.V, b.V)};
}
// a * b + c with one rounding.
inline VF64 MulAdd(VF64 a, VF64 b, VF64 c)
{
    return {_mm256_fmadd_pd(a.V, b.V, c.V)};
}
// Both halves of a VI32, rounded to nearest (halves to even).
inline VI32 RoundToI32(VF64 lo, VF64 hi)
{
    return {_mm256_inserti128_si256(_mm256_castsi128_si256(_mm256_cvtpd_epi32(lo.V)),
                                    _mm256_cvtpd_epi32(hi.V), 1)};
}

inline VF32 TruncF32(VF32 v)
{
    return {_mm256_round_ps(v.V, _MM_FROUND_TO_ZERO | _MM_FROUND_NO_EXC)};
}
inline VF32 IfGe(VF32 a, VF32 b, VF32 then, VF32 otherwise)
{
    return {_mm256_blendv_ps(otherwise.V, then.V, _mm256_cmp_ps(a.V, b.V, _CMP_GE_OQ))};
}
inline bool AllLess(VF32 a, VF32 b)
{
    return _mm256_movemask_ps(_mm256_cmp_ps(a.V, b.V, _CMP_LT_OQ)) == 0xFF;
}

inline VF64 LoadF64(const Ipp64f* p)
{
    return {_mm256_loadu_pd(p)};
}
inline VF64 Sub(VF64 a, VF64 b)
{
    return {_mm256_sub_pd(a.V, b.V)};
}
inline VF64 RoundF64(VF64 v)
{
    return {_mm256_round_pd(v.V, _MM_FROUND_TO_NEAREST_INT | _MM_FROUND_NO_EXC)};
}
inline VF64 FloorF64(VF64 v)
{
    return {_mm256_floor_pd(v.V)};
}
inline VF64 IfGe(VF64 a, VF64 b, VF64 then, VF64 otherwise)
{
    return {_mm256_blendv_pd(otherwise.V, then.V, _mm256_cmp_pd(a.V, b.V, _CMP_GE_OQ))};
}
inline VF64 IfNe(VF64 a, VF64 b, VF64 then, VF64 otherwise)
{
    return {_mm256_blendv_pd(otherwise.V, then.V, _mm256_cmp_pd(a.V, b.V, _CMP_NEQ_UQ))};
}
inline VF64 ToF64Low(VF32 v)
{
    return {_mm256_cvtps_pd(_mm256_castps256_ps128(v.V))};
}
inline VF64 ToF64High(VF32 v)
{
    return {_mm256_cvtps_pd(_mm256_extractf128_ps(v.V, 1))};
}
inline VF32 ToF32(VF64 low, VF64 high)
{
    return {_mm256_set_m128(_mm256_cvtpd_ps(high.V), _mm256_cvtpd_ps(low.V))};
}

inline VI32 ShiftRightArith(VI32 v, int count)
{
    return {_mm256_sra_epi32(v.V, _mm_cvtsi32_si128(count))};
}
inline void StoreF64(Ipp64f* p, VF64 v)
{
    _mm256_storeu_pd(p, v.V);
}
inline VF64 Min(VF64 a, VF64 b)
{
    return {_mm256_min_pd(a.V, b.V)};
}
inline VF64 Max(VF64 a, VF64 b)
{
    return {_mm256_max_pd(a.V, b.V)};
}
inline VF64 ToF64Low(VI32 v)
{
    return {_mm256_cvtepi32_pd(_mm256_castsi256_si128(v.V))};
}
inline VF64 ToF64High(VI32 v)
{
    return {_mm256_cvtepi32_pd(_mm256_extracti128_si256(v.V, 1))};
}

} // namespace framix::prim::FX_SIMD_NS
