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
//   Point operations (arithmetic, logic, blending):
//     VU8/VU16: SplatU8/SplatU16, AddSat, SubSat, And, Or, Xor, CmpEq, Select, Any; VU16 also
//     Add, Sub, MulLo, MulHi (unsigned), ShiftLeft/ShiftRight (by a count)
//     WidenLo/WidenHi (VU8 -> VU16, VU16 -> VI32) and NarrowSat back, in 128-bit-block order
//     NarrowSat4 (4 VI32 -> VU8), NarrowSat2 (2 VI32 -> VU16) in memory order; MaxLane(VU8)
//     BroadcastAlpha (every byte of a 4-byte group becomes its last byte)
//     VI32: CmpEq, Or, Any; VF32: Sub, LoadF32, StoreF32, Select(VI32 mask, a, b), and MulAdd
//     (AVX2 and AVX-512 only)
//     VF64 (kLanes64 = kVecBytes / 8): SplatF64, LoadWidenF64(const Ipp16u*), Add, Mul,
//     RoundToI32(lo, hi)
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
