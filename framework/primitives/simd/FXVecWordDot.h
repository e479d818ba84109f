// SPDX-License-Identifier: MIT
// Sums of 16-bit products into 32-bit lanes, fused where the processor can (included after
// simd/FXVec.h, once per level).
#pragma once

#include "framework/primitives/simd/FXVec.h"

namespace framix::prim::FX_SIMD_NS {

// True when the processor has the fused 16-bit multiply-add-accumulate (AVX-512 VNNI): checked
// once at run time, not part of any level.
inline bool HasWordDotProducts()
{
#if defined(FX_SIMD_LEVEL_AVX512)
    static const bool kHas = __builtin_cpu_supports("avx512vnni");
    return kHas;
#else
    return false;
#endif
}

// sum + the pairwise products of the signed 16-bit words of pairs and weights, each lane's two
// added; one instruction where kFused.
template <bool kFused> inline VI32 MulAddTo(VI32 sum, VI32 pairs, VI32 weights)
{
#if defined(FX_SIMD_LEVEL_AVX512)
    if constexpr (kFused) {
        // Intentional: assembly rather than the intrinsic, which would need the VNNI flag for
        // the whole level; only reached where HasWordDotProducts() holds.
        __asm__("vpdpwssd %2, %1, %0" : "+v"(sum.V) : "v"(pairs.V), "v"(weights.V));
        return sum;
    }
#endif
    return Add(sum, MulAddPairs(VI16{pairs.V}, VI16{weights.V}));
}

// body.template operator()<kFused>() with kFused = HasWordDotProducts(): a kernel compiles both
// forms and the processor picks one per call.
template <class Body> inline decltype(auto) WithWordDotProducts(Body&& body)
{
    if (HasWordDotProducts())
        return body.template operator()<true>();
    return body.template operator()<false>();
}

} // namespace framix::prim::FX_SIMD_NS
