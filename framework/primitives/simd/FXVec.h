// SPDX-License-Identifier: MIT
// The vector layer the kernels are written against; one backend per level, chosen by the
// level's kernel file (FX_SIMD_LEVEL_SSE41 / _AVX2 / _AVX512, set by CMake).
#pragma once

// Every backend defines, in namespace framix::prim::<level>:
//   kVecBytes                         bytes per vector
//   VU8, VU16                         samples as they lie in memory (kVecBytes / sizeof lanes)
//     Load(const T*), Store(T*, v), Min, Max
//     CmpEq(VU8, VU8) (all-ones lanes where equal), Select(mask, a, b) (a where the mask lane
//     is all ones, else b)
//   VI32, VF32                        32-bit lanes (kLanes32 = kVecBytes / 4)
//     LoadWiden(const Ipp8u*|const Ipp16u*)    kLanes32 samples, zero-extended
//     LoadI32, StoreI32, SplatI32, Add, Sub, MulLo, CmpGt (all-ones lanes where a > b), And
//     SplatF32, ToF32, Add, Mul, Div, Max, Min (Max/Min return the second operand when the
//     first is NaN), TruncToI32, RoundToI32 (halves to even)
//     StoreNarrow(Ipp8u*|Ipp16u*, VI32)       kLanes32 samples, saturated
//     Min, Max (signed)
//     LoadF32, StoreF32, Sub(VF32), CmpGt(VF32, VF32) -> VI32 mask, Select(mask, a, b) on VI32
//     and VF32 (a where the mask lane is all ones), Lookup(const Ipp32f* table, VI32 index)
//   VI16                              16-bit lanes (kLanes16 = kVecBytes / 2), wrapping
//     LoadWiden16(const Ipp8u*)               kLanes16 samples, zero-extended
//     LoadI16, StoreI16, SplatI16, Add, Sub, MulLo, MulHiU (high half of the unsigned
//     product), Min, Max, CmpGt (signed), And, ShiftRightU (logical), Select
//     NarrowU8(VI16 lo, VI16 hi)              2 * kLanes16 lanes saturated to 0..255, as a VU8
//   Select(mask, a, b)                 per lane (VI16) or byte (VU8): a where mask is set, else b
//   ZipLo8/ZipHi8(VU8, VU8), ZipLo16/ZipHi16(VI16, VI16)   interleave two vectors
//   SplatPair8, SplatPair16             a pair of weights repeated
//   MulAddPairs(VU8, VU8) -> VI16       unsigned bytes times signed byte weights, pairs added
//                                       (saturating); MulAddPairs(VI16, VI16) -> VI32 likewise
//   PackU8(VI16, VI16), PackU16(VI32, VI32)   saturating narrowing of the Lo and Hi halves of
//                                       a Zip, back into memory order
//   Point operations (arithmetic, logic, blending):
//     VU8/VU16: SplatU8/SplatU16, AddSat, SubSat, And, Or, Xor, CmpEq, Select, Any; VU16 also
//     Add, Sub, MulLo, MulHi (unsigned), ShiftLeft/ShiftRight (by a count)
//     WidenLo/WidenHi (VU8 -> VU16, VU16 -> VI32) and NarrowSat back, in 128-bit-block order
//     NarrowSat4 (4 VI32 -> VU8), NarrowSat2 (2 VI32 -> VU16) in memory order; MaxLane(VU8)
//     BroadcastAlpha (every byte of a 4-byte group becomes its last byte)
//     VI32: CmpEq, Or, Any; VF32 and VF64: MulAdd (AVX2 and AVX-512 only)
//   Copies, conversions, noise and signals:
//     AsU8, AsI32 (same bits), Shuffle(v, idx) (within each 16-byte lane), Broadcast16 (a
//     16-byte pattern in every lane), ShiftLeft<N>, ShiftRight<N> (logical), Iota (0, 1, 2 ...
//     in 32-bit lanes), TruncF32 (toward zero), IfGe(a, b, then, otherwise), AllLess
//   VF64 (kLanes64 = kVecBytes / 8): LoadF64, StoreF64, SplatF64, LoadWidenF64(const Ipp16u*),
//     Add, Sub, Mul, Min, Max, RoundF64 (halves to even), FloorF64, IfGe, IfNe, ToF64Low /
//     ToF64High (the halves of a VF32 or VI32), ToF32(low, high), RoundToI32(low, high),
//     ShiftRightArith(VI32, count)
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
inline constexpr int kLanes16 = kVecBytes / 2;

// The same bits as 32-bit lanes (every backend keeps integer lanes in one register type).
inline VI32 AsI32(VI16 v)
{
    return {v.V};
}

inline constexpr int kLanes64 = kVecBytes / 8;

} // namespace framix::prim::FX_SIMD_NS
