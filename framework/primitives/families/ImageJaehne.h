// SPDX-License-Identifier: MIT
// The Jaehne test image (concentric rings whose frequency rises outwards): the family's list
// and the sine that the reference and the vector kernels share.
#pragma once

#include "framework/primitives/FXFamily.h"
#include "framework/primitives/FXIsa.h"

#include <cmath>

// X(name, Op, Shape, T, L); see FXFamily.h.
#define FX_IMAGE_JAEHNE_PRIMITIVES(X) X(ippiImageJaehne_8u_C3R, ImageJaehne, TestImage, Ipp8u, C3)

namespace framix::prim {

const TFXFamily& ImageJaehneFamily();

inline namespace FX_ISA_NS {

// The phase of pixel (x, y) is, in single precision, (x2^2 + y2^2) * k with x2 = x - (W - 1)/2,
// y2 = y - (H - 1)/2 and k = pi * (0.5 / H): IPP's rounding of the phase, which decides the
// result once the phase is large. The sine of that float is computed in double precision:
// n = round(phase * 2/pi), r = phase - n * pi/2 with pi/2 split in three parts (exact products
// for n < 2^23), then Taylor series of sin r and cos r to the 17th and 16th power (|r| <= pi/4,
// so the truncation error is below 1e-19), the quadrant choosing between them. Phases from
// kFXJaehneLargePhase on use std::sin. Every level evaluates exactly these operations.
inline constexpr double kFXJaehneTwoOverPi = 0x1.45f306dc9c883p-1;
inline constexpr double kFXJaehnePio2[3] = {0x1.921fb54p+0, 0x1.10b46118p-30,
                                            0x1.313198a2e0370p-61};
inline constexpr float kFXJaehneLargePhase = 1048576.0f;
// 1/3!, 1/5!, ... 1/17! with alternating signs, highest power first (Horner order).
inline constexpr double kFXJaehneSin[8] = {
    1.0 / 355687428096000.0, -1.0 / 1307674368000.0, 1.0 / 6227020800.0, -1.0 / 39916800.0,
    1.0 / 362880.0,          -1.0 / 5040.0,          1.0 / 120.0,        -1.0 / 6.0};
// 1/2!, 1/4!, ... 1/16! with alternating signs, highest power first.
inline constexpr double kFXJaehneCos[8] = {
    1.0 / 20922789888000.0, -1.0 / 87178291200.0, 1.0 / 479001600.0, -1.0 / 3628800.0,
    1.0 / 40320.0,          -1.0 / 720.0,         1.0 / 24.0,        -1.0 / 2.0};

inline double FXJaehneSine(float phase)
{
    const double x = phase;
    if (!(phase < kFXJaehneLargePhase))
        return std::sin(x);
    const double n = std::nearbyint(x * kFXJaehneTwoOverPi);
    const double r = ((x - n * kFXJaehnePio2[0]) - n * kFXJaehnePio2[1]) - n * kFXJaehnePio2[2];
    const double r2 = r * r;
    double ps = kFXJaehneSin[0], pc = kFXJaehneCos[0];
    for (int i = 1; i < 8; ++i) {
        ps = ps * r2 + kFXJaehneSin[i];
        pc = pc * r2 + kFXJaehneCos[i];
    }
    const double sinR = r + r * (r2 * ps);
    const double cosR = 1.0 + r2 * pc;
    const long long quadrant = static_cast<long long>(n) & 3;
    const double v = (quadrant & 1) != 0 ? cosR : sinR;
    return (quadrant & 2) != 0 ? -v : v;
}

// The byte of a phase: 128 + 128 * sine in single precision, rounded to nearest with halves to
// even, 256 saturated to 255.
inline Ipp8u FXJaehneByte(float phase)
{
    const float v = 128.0f + 128.0f * static_cast<float>(FXJaehneSine(phase));
    const float r = std::nearbyint(v);
    return static_cast<Ipp8u>(r > 255.0f ? 255.0f : r);
}

} // namespace FX_ISA_NS
} // namespace framix::prim
