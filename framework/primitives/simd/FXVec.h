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
//   for the point operations:
//     AsU8, AsI32 (same bits), Select(mask, a, b) (bytes of a where the mask byte's top bit is
//     set), Shuffle(v, idx) (within each 16-byte lane), Broadcast16 (a 16-byte pattern in every
//     lane), Or, ShiftLeft<N>, ShiftRight<N> (logical), Iota (0, 1, 2 ... in 32-bit lanes)
//     LoadF32, StoreF32, Sub, TruncF32 (toward zero), IfGe(a, b, then, otherwise), AllLess
//     VF64 (kLanes64 = kVecBytes / 8): LoadF64, SplatF64, Add, Sub, Mul, RoundF64 (halves to even),
//     FloorF64, IfGe, IfNe, Min, Max, StoreF64, ToF64Low / ToF64High (the halves of a VF32 or
//     VI32), ToF32(low, high), ToI32(low, high) (rounding), ShiftRightArith(VI32, count)
//   and, the same at every level, 16-byte blocks VB16 (FXVec128.h).
// Everything else is lane-count agnostic: kernels loop in steps of the lane count and never
// assume a width.
#if defined(FX_SIMD_LEVEL_SSE41)
#include "framework/primitives/simd/FXVec_sse41.h"
#elif defined(FX_SIMD_LEVEL_AVX2)
#include "framework/primitives/simd/FXVec_avx2.h"
#elif defined(FX_SIMD_LEVEL_AVX512)
#include "framework/primitives/simd/FXVec_avx512.h"
#else
#error "FXVec.h is included only by a level's kernel file"
#endif
#include "framework/primitives/simd/FXVec128.h"

namespace framix::prim::FX_SIMD_NS {

// The sample vector of a sample type.
template <class T> using TVec = decltype(Load(static_cast<const T*>(nullptr)));

template <class T> inline constexpr int kLanes = kVecBytes / int(sizeof(T));
inline constexpr int kLanes32 = kVecBytes / 4;
inline constexpr int kLanes64 = kVecBytes / 8;

} // namespace framix::prim::FX_SIMD_NS
