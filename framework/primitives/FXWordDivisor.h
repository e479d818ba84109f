// SPDX-License-Identifier: MIT
// Division of 16-bit sums by a fixed count with halves to even, by multiply-high and shift.
#pragma once

#include "framework/primitives/FXIsa.h"

#include <cstdint>

namespace framix::prim {
inline namespace FX_ISA_NS {

// sum / count rounded to nearest, halves to even, for 0 <= sum <= 255 * count, in the steps a
// vector of 16-bit lanes can take: floor(x / count) is (x * Multiplier) >> (16 + Shift) for
// every x up to 255 * count + count / 2 (the sum plus the rounding bias).
//
// Odd counts have no exact halves: round(sum / count) = floor((sum + (count - 1) / 2) / count).
// Even counts take two quotients, halves up (bias count / 2) and halves down (bias count / 2 - 1);
// they differ only on a tie, and then the even one of the two is the result.
struct TFXWordDivisor {
    int Multiplier = 0; // 0: no 16-bit multiplier is exact for this count
    int Shift = 0;
    int Bias = 0; // added before the division that rounds halves up (odd counts: the only one)
    bool Even = false;

    bool Valid() const { return Multiplier != 0; }

    // The scalar form of the vector steps, for the kernels' tests.
    int Quotient(int x) const
    {
        return int((std::uint32_t(x) * std::uint32_t(Multiplier)) >> 16) >> Shift;
    }
    int Divide(int sum) const
    {
        const int up = Quotient(sum + Bias);
        if (!Even)
            return up;
        const int down = Quotient(sum + Bias - 1);
        return up - ((up - down) & up);
    }
};

// The divisor for count samples of 8 bits. Multiplier = ceil(2^k / count) with k = 16 + Shift
// overshoots by e = Multiplier * count - 2^k (0 <= e < count); with x = q count + r,
// x Multiplier / 2^k = q + (r + x e / 2^k) / count, whose floor is q whenever x e < 2^k, as
// r <= count - 1. The smallest shift meeting that for the largest x wins (larger shifts only
// grow the multiplier). Count 1 and some counts above 185 have none: Valid() is false.
inline TFXWordDivisor FXWordDivisorFor(int count)
{
    TFXWordDivisor d;
    const std::int64_t bias = count / 2;
    const std::int64_t largest = 255 * std::int64_t(count) + bias;
    if (count < 2 || largest > 0xFFFF)
        return d;
    for (int shift = 0; shift < 16; ++shift) {
        const std::int64_t power = std::int64_t(1) << (16 + shift);
        const std::int64_t multiplier = (power + count - 1) / count;
        if (multiplier > 0xFFFF)
            break;
        if (largest * (multiplier * count - power) < power) {
            d.Multiplier = int(multiplier);
            d.Shift = shift;
            d.Even = count % 2 == 0;
            d.Bias = int(d.Even ? bias : (count - 1) / 2);
            return d;
        }
    }
    return d;
}

} // namespace FX_ISA_NS
} // namespace framix::prim
