// SPDX-License-Identifier: MIT
// Saturation and rounding rules shared by the reference implementations and the vector kernels.
#pragma once

#include "framework/primitives/FXIppTypes.h"
#include "framework/primitives/FXIsa.h"

#include <cmath>
#include <cstdint>

namespace framix::prim {
inline namespace FX_ISA_NS {

// Largest value of an unsigned sample type.
template <class T> inline constexpr int kFXSampleMax = T(~T(0));

// Clamps an exact integer result to the sample range (IPP never wraps).
template <class T> inline T FXSaturate(std::int64_t v)
{
    return v < 0 ? T(0) : v > kFXSampleMax<T> ? T(kFXSampleMax<T>) : T(v);
}

// sum / n rounded to the nearest integer, halves to the even neighbour; sum >= 0, n > 0.
// This is what IPP's box average gives (2x1 masks: 1.5 -> 2, 2.5 -> 2).
inline std::int64_t FXDivRoundHalfEven(std::int64_t sum, std::int64_t n)
{
    std::int64_t q = sum / n;
    const std::int64_t twiceRest = 2 * (sum - q * n);
    if (twiceRest > n || (twiceRest == n && (q & 1)))
        ++q;
    return q;
}

// A float result converted to a sample: clamped to the range (NaN gives 0), then rounded to
// nearest with halves to even, as the processor's default conversion does. The vector kernels
// clamp in the same order (max with 0 first) so that both agree on every input.
template <class T> inline T FXSaturateRound(float v)
{
    v = v > 0.0f ? v : 0.0f;
    v = v < float(kFXSampleMax<T>) ? v : float(kFXSampleMax<T>);
    return T(std::nearbyint(v));
}

} // namespace FX_ISA_NS
} // namespace framix::prim
