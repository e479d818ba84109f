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

// A float converted to a sample with IPP's round modes: clamped to the range first (NaN gives 0),
// then truncated (ippRndZero), rounded with halves to even (ippRndNear) or with halves away
// from zero (ippRndFinancial; the clamped value is never negative). The vector kernels clamp
// and round in the same order.
template <class T> inline T FXSaturateRoundMode(float v, IppRoundMode mode)
{
    v = v > 0.0f ? v : 0.0f;
    v = v < float(kFXSampleMax<T>) ? v : float(kFXSampleMax<T>);
    const float whole = std::trunc(v);
    switch (mode) {
    case ippRndZero:
        return T(whole);
    case ippRndNear:
        return T(std::nearbyint(v));
    default:
        return T(v - whole >= 0.5f ? whole + 1.0f : whole);
    }
}

// v * 2^-scaleFactor rounded to nearest with halves to even (IPP's integer result scaling); a
// negative scale factor multiplies, clamping to +-2^62 where that would overflow (callers
// saturate further). |v| <= 2^62.
inline std::int64_t FXScaleHalfEven(std::int64_t v, int scaleFactor)
{
    if (scaleFactor == 0 || v == 0)
        return v;
    if (scaleFactor < 0) {
        constexpr std::int64_t kLimit = std::int64_t(1) << 62;
        if (scaleFactor <= -62) // before negating: INT_MIN has no positive counterpart
            return v > 0 ? kLimit : -kLimit;
        const int n = -scaleFactor;
        if (v > (kLimit >> n) || v < -(kLimit >> n))
            return v > 0 ? kLimit : -kLimit;
        return v * (std::int64_t(1) << n);
    }
    if (scaleFactor >= 63) // |v| / 2^63 <= 1/2, and a half rounds to the even 0
        return 0;
    const std::int64_t q = v >> scaleFactor; // floor
    const std::int64_t rest = v - q * (std::int64_t(1) << scaleFactor);
    const std::int64_t half = std::int64_t(1) << (scaleFactor - 1);
    return rest > half || (rest == half && (q & 1) != 0) ? q + 1 : q;
}

inline std::int32_t FXSaturateInt32(std::int64_t v)
{
    return v < INT32_MIN ? INT32_MIN : v > INT32_MAX ? INT32_MAX : std::int32_t(v);
}

} // namespace FX_ISA_NS
} // namespace framix::prim
