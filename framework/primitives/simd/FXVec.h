// SPDX-License-Identifier: MIT
// The vector layer the kernels are written against; one backend per level, chosen by the
// level's kernel file (FX_SIMD_LEVEL_SSE41 / _AVX2 / _AVX512, set by CMake).
#pragma once

// Every backend defines, in namespace framix::prim::<level>:
//   kVecBytes                         bytes per vector
//   VU8, VU16                         samples as they lie in memory (kVecBytes / sizeof lanes)
//     Load(const T*), Store(T*, v), Min, Max
//   VI32, VF32                        32-bit lanes (kLanes32 = kVecBytes / 4)
//     LoadWiden(const Ipp8u*|const Ipp16u*)    kLanes32 samples, zero-extended
//     LoadI32, StoreI32, SplatI32, Add, Sub, MulLo, CmpGt (all-ones lanes where a > b), And
//     SplatF32, ToF32, Add, Mul, Div, Max, Min (Max/Min return the second operand when the
//     first is NaN), TruncToI32, RoundToI32 (halves to even)
//     StoreNarrow(Ipp8u*|Ipp16u*, VI32)       kLanes32 samples, saturated
//     LoadF32, StoreF32, Sub(VF32), CmpGt(VF32, VF32) -> VI32 mask, Select(mask, a, b) on VI32
//     and VF32 (a where the mask lane is all ones), Lookup(const Ipp32f* table, VI32 index)
// Everything is lane-count agnostic: kernels loop in steps of the lane count and never assume
// a width.
#if defined(FX_SIMD_LEVEL_SSE41)
#include "framework/primitives/simd/FXVec_sse41.h"
#elif defined(FX_SIMD_LEVEL_AVX2)
#include "framework/primitives/simd/FXVec_avx2.h"
#elif defined(FX_SIMD_LEVEL_AVX512)
#include "framework/primitives/simd/FXVec_avx512.h"
#else
#error "FXVec.h is included only by a level's kernel file"
#endif

namespace framix::prim::FX_SIMD_NS {

// The sample vector of a sample type.
template <class T> using TVec = decltype(Load(static_cast<const T*>(nullptr)));

template <class T> inline constexpr int kLanes = kVecBytes / int(sizeof(T));
inline constexpr int kLanes32 = kVecBytes / 4;

} // namespace framix::prim::FX_SIMD_NS
