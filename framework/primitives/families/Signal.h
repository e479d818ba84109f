// SPDX-License-Identifier: MIT
// One-dimensional (signal) primitives: fill, copy, scaled 32-bit arithmetic and shifts, polar to
// Cartesian conversion. The family's list.
#pragma once

#include "framework/primitives/FXFamily.h"
#include "framework/primitives/FXIsa.h"

#include <cmath>

// X(name, Op, Shape, T, L); see FXFamily.h. The layout is C1 throughout.
#define FX_SIGNAL_PRIMITIVES(X)                                                                    \
    X(ippsSet_8u, SignalSet, SignalSet, Ipp8u, C1)                                                 \
    X(ippsSet_32s, SignalSet, SignalSet, Ipp32s, C1)                                               \
    X(ippsCopy_8u, SignalCopy, SignalCopy, Ipp8u, C1)                                              \
    X(ippsAdd_32s_ISfs, SignalAdd, SignalAddScaled, Ipp32s, C1)                                    \
    X(ippsMulC_32s_ISfs, SignalMulC, SignalMulCScaled, Ipp32s, C1)                                 \
    X(ippsRShiftC_32s_I, SignalRShiftC, SignalShiftC, Ipp32s, C1)                                  \
    X(ippsPolarToCart_64f, PolarToCart, SignalPolarToCart, Ipp64f, C1)

namespace framix::prim {

const TFXFamily& SignalFamily();

inline namespace FX_ISA_NS {

// Sine and cosine for ippsPolarToCart_64f, the same at every level: n = round(x * 2/pi),
// r = x - n * pi/2 with pi/2 split in three parts (exact products for |n| < 2^23), Taylor series
// of sin r and cos r to the 17th and 16th power (|r| <= pi/4: truncation below 1e-17), the
// quadrant n mod 4 choosing and negating. |x| from kFXPolarLargePhase on (and NaN) use the C
// library.
inline constexpr double kFXPolarTwoOverPi = 0x1.45f306dc9c883p-1;
inline constexpr double kFXPolarPio2[3] = {0x1.921fb54p+0, 0x1.10b46118p-30, 0x1.313198a2e0370p-61};
inline constexpr double kFXPolarLargePhase = 1048576.0;
inline constexpr int kFXPolarTerms = 8;
// 1/17!, -1/15!, ... -1/3! and 1/16!, -1/14!, ... -1/2!, highest power first (Horner order).
inline constexpr double kFXPolarSin[kFXPolarTerms] = {
    1.0 / 355687428096000.0, -1.0 / 1307674368000.0, 1.0 / 6227020800.0, -1.0 / 39916800.0,
    1.0 / 362880.0,          -1.0 / 5040.0,          1.0 / 120.0,        -1.0 / 6.0};
inline constexpr double kFXPolarCos[kFXPolarTerms] = {
    1.0 / 20922789888000.0, -1.0 / 87178291200.0, 1.0 / 479001600.0, -1.0 / 3628800.0,
    1.0 / 40320.0,          -1.0 / 720.0,         1.0 / 24.0,        -1.0 / 2.0};

inline void FXPolarSinCos(double x, double& sine, double& cosine)
{
    if (!(std::fabs(x) < kFXPolarLargePhase)) {
        sine = std::sin(x);
        cosine = std::cos(x);
        return;
    }
    const double n = std::nearbyint(x * kFXPolarTwoOverPi);
    const double r = ((x - n * kFXPolarPio2[0]) - n * kFXPolarPio2[1]) - n * kFXPolarPio2[2];
    const double r2 = r * r;
    double ps = kFXPolarSin[0], pc = kFXPolarCos[0];
    for (int i = 1; i < kFXPolarTerms; ++i) {
        ps = ps * r2 + kFXPolarSin[i];
        pc = pc * r2 + kFXPolarCos[i];
    }
    const double s = r + r * (r2 * ps), c = 1.0 + r2 * pc;
    switch (static_cast<long long>(n) & 3) {
    case 0:
        sine = s, cosine = c;
        break;
    case 1:
        sine = c, cosine = -s;
        break;
    case 2:
        sine = -s, cosine = -c;
        break;
    default:
        sine = -c, cosine = s;
        break;
    }
}

// One element of the polar conversion (the reference's loop body and the vector kernel's tail).
inline void FXPolarToCartOne(double magn, double phase, double& re, double& im)
{
    double sine, cosine;
    FXPolarSinCos(phase, sine, cosine);
    re = magn * cosine;
    im = magn * sine;
}

} // namespace FX_ISA_NS
} // namespace framix::prim
