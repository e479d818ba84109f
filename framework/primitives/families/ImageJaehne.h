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

// The phase of pixel (x, y) is, in single precision, r2 * k with r2 = x2^2 + y2^2 rounded once
// to a float, x2 = x - (W - 1)/2, y2 = y - (H - 1)/2 and k = pi * (0.5 / H): IPP's rounding of
// the phase, which decides the result once the phase is large (FXJaehnePhase). The sine of that
// float is computed in double precision: n = round(phase / pi), r = phase - n * pi with pi split
// in two parts (the first product is exact for n < 2^23, the second errs by less than
// 1e-25 * n), then the Taylor series of sin r to the 13th power (|r| <= pi/2, so the truncation
// error is below 1e-9: the float it rounds to is the correctly rounded sine but in about one
// case in a hundred, and a byte moves only when that float also lies a step from a half),
// negated for odd n. Phases from kFXJaehneLargePhase on use std::sin. Every level evaluates
// exactly these operations.
inline constexpr double kFXJaehneOneOverPi = 0x1.45f306dc9c883p-2;
inline constexpr double kFXJaehnePi[2] = {0x1.921fb54p+1, 0x1.10b4611a62633p-29};
inline constexpr float kFXJaehneLargePhase = 1048576.0f;
inline constexpr int kFXJaehneTerms = 6;
// 1/13!, -1/11!, ... -1/3!: the series' coefficients, highest power first (Horner order).
inline constexpr double kFXJaehneSin[kFXJaehneTerms] = {
    1.0 / 6227020800.0, -1.0 / 39916800.0, 1.0 / 362880.0, -1.0 / 5040.0, 1.0 / 120.0, -1.0 / 6.0};

inline double FXJaehneSine(float phase)
{
    const double x = phase;
    if (!(phase < kFXJaehneLargePhase))
        return std::sin(x);
    const double n = std::nearbyint(x * kFXJaehneOneOverPi);
    const double r = (x - n * kFXJaehnePi[0]) - n * kFXJaehnePi[1];
    const double r2 = r * r;
    double p = kFXJaehneSin[0];
    for (int i = 1; i < kFXJaehneTerms; ++i)
        p = p * r2 + kFXJaehneSin[i];
    const double s = r + r * (r2 * p);
    return (static_cast<long long>(n) & 1) != 0 ? -s : s;
}

inline float FXJaehnePhase(float x2, float y2, float k)
{
    const double r2 = double(x2) * x2 + double(y2) * y2; // exact
    return static_cast<float>(r2) * k;
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
