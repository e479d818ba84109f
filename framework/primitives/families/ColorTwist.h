// SPDX-License-Identifier: MIT
// Colour matrix (a 3x4 float twist) and the BT.709 gamma curve: the family's list.
#pragma once

#include "framework/primitives/FXFamily.h"
#include "framework/primitives/FXIsa.h"
#include "framework/primitives/FXRound.h"

#include <array>
#include <cmath>

// X(name, Op, Shape, T, L); see FXFamily.h.
#define FX_COLOR_TWIST_PRIMITIVES(X)                                                               \
    X(ippiColorTwist32f_8u_C3R, ColorTwist32f, ColorTwist, Ipp8u, C3)                              \
    X(ippiColorTwist32f_8u_AC4R, ColorTwist32f, ColorTwist, Ipp8u, AC4)                            \
    X(ippiGammaFwd_8u_C3R, GammaFwd, PixelMap, Ipp8u, C3)                                          \
    X(ippiGammaFwd_8u_AC4R, GammaFwd, PixelMap, Ipp8u, AC4)                                        \
    X(ippiGammaInv_8u_C3R, GammaInv, PixelMap, Ipp8u, C3)                                          \
    X(ippiGammaInv_8u_AC4R, GammaInv, PixelMap, Ipp8u, AC4)

namespace framix::prim {
const TFXFamily& ColorTwistFamily();

// The BT.709 curve (forward) or its inverse on v = sample / 255, as rounded samples: the tables
// every level's gamma maps through.
const std::array<Ipp8u, 256>& FXGammaTable(bool forward);

inline namespace FX_ISA_NS {

// One output channel of a twist row t for samples c0, c1, c2: t0 c0 + t1 c1 + t2 c2 + t3, added
// left to right, rounded to nearest (halves to even) and saturated; a NaN sum (an infinite
// weight times a zero sample, or infinities of both signs) saturates high, as IPP's does.
inline Ipp8u FXTwistSample(const Ipp32f* t, int c0, int c1, int c2)
{
    const float sum = t[0] * float(c0) + t[1] * float(c1) + t[2] * float(c2) + t[3];
    return std::isnan(sum) ? Ipp8u(255) : FXSaturateRound<Ipp8u>(sum);
}

} // namespace FX_ISA_NS
} // namespace framix::prim
