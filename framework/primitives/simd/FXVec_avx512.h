// SPDX-License-Identifier: MIT
// Vector layer backend for AVX-512 F/BW/VL/DQ (512-bit).
#pragma once

#include "framework/primitives/FXIppTypes.h"

#include <immintrin.h>

namespace framix::prim::FX_SIMD_NS {

inline constexpr int kVecBytes = 64;

struct VU8 {
    __m512i V;
};
struct VU16 {
    __m512i V;
};
struct VI32 {
    __m512i V;
};
struct VF32 {
    __m512 V;
};

inline VU8 Load(const Ipp8u* p)
{
    return {_mm512_loadu_si512(p)};
}
inline void Store(Ipp8u* p, VU8 v)
{
    _mm512_storeu_si512(p, v.V);
}
inline VU8 Min(VU8 a, VU8 b)
{
    return {_mm512_min_epu8(a.V, b.V)};
}
inline VU8 Max(VU8 a, VU8 b)
{
    return {_mm512_max_epu8(a.V, b.V)};
}

inline VU16 Load(const Ipp16u* p)
{
    return {_mm512_loadu_si512(p)};
}
inline void Store(Ipp16u* p, VU16 v)
{
    _mm512_storeu_si512(p, v.V);
}
inline VU16 Min(VU16 a, VU16 b)
{
    return {_mm512_min_epu16(a.V, b.V)};
}
inline VU16 Max(VU16 a, VU16 b)
{
    return {_mm512_max_epu16(a.V, b.V)};
}

inline VI32 LoadWiden(const Ipp8u* p)
{
    return {_mm512_cvtepu8_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)))};
}
inline VI32 LoadWiden(const Ipp16u* p)
{
    return {_mm512_cvtepu16_epi32(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(p)))};
}
inline VI32 LoadI32(const Ipp32s* p)
{
    return {_mm512_loadu_si512(p)};
}
inline void StoreI32(Ipp32s* p, VI32 v)
{
    _mm512_storeu_si512(p, v.V);
}
inline VI32 SplatI32(int v)
{
    return {_mm512_set1_epi32(v)};
}
inline VI32 Add(VI32 a, VI32 b)
{
    return {_mm512_add_epi32(a.V, b.V)};
}
inline VI32 Sub(VI32 a, VI32 b)
{
    return {_mm512_sub_epi32(a.V, b.V)};
}
inline VI32 MulLo(VI32 a, VI32 b)
{
    return {_mm512_mullo_epi32(a.V, b.V)};
}
inline VI32 CmpGt(VI32 a, VI32 b)
{
    return {_mm512_movm_epi32(_mm512_cmpgt_epi32_mask(a.V, b.V))};
}
inline VI32 And(VI32 a, VI32 b)
{
    return {_mm512_and_si512(a.V, b.V)};
}

inline VF32 SplatF32(float v)
{
    return {_mm512_set1_ps(v)};
}
inline VF32 ToF32(VI32 v)
{
    return {_mm512_cvtepi32_ps(v.V)};
}
inline VF32 Add(VF32 a, VF32 b)
{
    return {_mm512_add_ps(a.V, b.V)};
}
inline VF32 Mul(VF32 a, VF32 b)
{
    return {_mm512_mul_ps(a.V, b.V)};
}
inline VF32 Div(VF32 a, VF32 b)
{
    return {_mm512_div_ps(a.V, b.V)};
}
inline VF32 Max(VF32 a, VF32 b)
{
    return {_mm512_max_ps(a.V, b.V)};
}
inline VF32 Min(VF32 a, VF32 b)
{
    return {_mm512_min_ps(a.V, b.V)};
}
inline VI32 TruncToI32(VF32 v)
{
    return {_mm512_cvttps_epi32(v.V)};
}
inline VI32 RoundToI32(VF32 v)
{
    return {_mm512_cvtps_epi32(v.V)};
}

inline void StoreNarrow(Ipp8u* p, VI32 v)
{
    const __m512i clamped = _mm512_max_epi32(v.V, _mm512_setzero_si512());
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p), _mm512_cvtusepi32_epi8(clamped));
}
inline void StoreNarrow(Ipp16u* p, VI32 v)
{
    const __m512i clamped = _mm512_max_epi32(v.V, _mm512_setzero_si512());
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), _mm512_cvtusepi32_epi16(clamped));
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
inline VU8 Select(VU8 mask, VU8 a, VU8 b)
{
    return {_mm512_mask_blend_epi8(_mm512_movepi8_mask(mask.V), b.V, a.V)};
}
inline VU8 Shuffle(VU8 v, VU8 idx)
{
    return {_mm512_shuffle_epi8(v.V, idx.V)};
}
inline VU8 Broadcast16(const Ipp8u* pattern)
{
    return {_mm512_maskz_broadcast_i32x4(
        0xFFFF, _mm_loadu_si128(reinterpret_cast<const __m128i*>(pattern)))};
}
inline VI32 Or(VI32 a, VI32 b)
{
    return {_mm512_or_si512(a.V, b.V)};
}
template <int N> inline VI32 ShiftLeft(VI32 v)
{
    return {_mm512_slli_epi32(v.V, N)};
}
template <int N> inline VI32 ShiftRight(VI32 v)
{
    return {_mm512_srli_epi32(v.V, N)};
}
inline VI32 Iota()
{
    return {_mm512_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15)};
}

inline VF32 LoadF32(const Ipp32f* p)
{
    return {_mm512_loadu_ps(p)};
}
inline void StoreF32(Ipp32f* p, VF32 v)
{
    _mm512_storeu_ps(p, v.V);
}
inline VF32 Sub(VF32 a, VF32 b)
{
    return {_mm512_sub_ps(a.V, b.V)};
}
inline VF32 TruncF32(VF32 v)
{
    return {_mm512_maskz_roundscale_ps(0xFFFF, v.V, _MM_FROUND_TO_ZERO | _MM_FROUND_NO_EXC)};
}
inline VF32 IfGe(VF32 a, VF32 b, VF32 then, VF32 otherwise)
{
    return {_mm512_mask_blend_ps(_mm512_cmp_ps_mask(a.V, b.V, _CMP_GE_OQ), otherwise.V, then.V)};
}
inline bool AllLess(VF32 a, VF32 b)
{
    return _mm512_cmp_ps_mask(a.V, b.V, _CMP_LT_OQ) == 0xFFFF;
}

struct VF64 {
    __m512d V;
};
inline VF64 LoadF64(const Ipp64f* p)
{
    return {_mm512_loadu_pd(p)};
}
inline VF64 SplatF64(double v)
{
    return {_mm512_set1_pd(v)};
}
inline VF64 Add(VF64 a, VF64 b)
{
    return {_mm512_add_pd(a.V, b.V)};
}
inline VF64 Sub(VF64 a, VF64 b)
{
    return {_mm512_sub_pd(a.V, b.V)};
}
inline VF64 Mul(VF64 a, VF64 b)
{
    return {_mm512_mul_pd(a.V, b.V)};
}
inline VF64 RoundF64(VF64 v)
{
    return {_mm512_maskz_roundscale_pd(0xFF, v.V, _MM_FROUND_TO_NEAREST_INT | _MM_FROUND_NO_EXC)};
}
inline VF64 FloorF64(VF64 v)
{
    return {_mm512_maskz_roundscale_pd(0xFF, v.V, _MM_FROUND_TO_NEG_INF | _MM_FROUND_NO_EXC)};
}
inline VF64 IfGe(VF64 a, VF64 b, VF64 then, VF64 otherwise)
{
    return {_mm512_mask_blend_pd(_mm512_cmp_pd_mask(a.V, b.V, _CMP_GE_OQ), otherwise.V, then.V)};
}
inline VF64 IfNe(VF64 a, VF64 b, VF64 then, VF64 otherwise)
{
    return {_mm512_mask_blend_pd(_mm512_cmp_pd_mask(a.V, b.V, _CMP_NEQ_UQ), otherwise.V, then.V)};
}
inline VF64 ToF64Low(VF32 v)
{
    return {_mm512_cvtps_pd(_mm512_castps512_ps256(v.V))};
}
inline VF64 ToF64High(VF32 v)
{
    return {_mm512_cvtps_pd(_mm512_extractf32x8_ps(v.V, 1))};
}
inline VF32 ToF32(VF64 low, VF64 high)
{
    return {_mm512_insertf32x8(_mm512_castps256_ps512(_mm512_cvtpd_ps(low.V)),
                               _mm512_cvtpd_ps(high.V), 1)};
}

inline VI32 ShiftRightArith(VI32 v, int count)
{
    return {_mm512_sra_epi32(v.V, _mm_cvtsi32_si128(count))};
}
inline void StoreF64(Ipp64f* p, VF64 v)
{
    _mm512_storeu_pd(p, v.V);
}
inline VF64 Min(VF64 a, VF64 b)
{
    return {_mm512_min_pd(a.V, b.V)};
}
inline VF64 Max(VF64 a, VF64 b)
{
    return {_mm512_max_pd(a.V, b.V)};
}
inline VF64 ToF64Low(VI32 v)
{
    return {_mm512_cvtepi32_pd(_mm512_castsi512_si256(v.V))};
}
inline VF64 ToF64High(VI32 v)
{
    return {_mm512_cvtepi32_pd(_mm512_extracti32x8_epi32(v.V, 1))};
}
inline VI32 ToI32(VF64 low, VF64 high)
{
    return {_mm512_inserti32x8(_mm512_castsi256_si512(_mm512_cvtpd_epi32(low.V)),
                               _mm512_cvtpd_epi32(high.V), 1)};
}

} // namespace framix::prim::FX_SIMD_NS
