// SPDX-License-Identifier: MIT
// Colour matrix (a 3x4 float twist) and the BT.709 gamma curve: the family's list.
#pragma once

#include "framework/primitives/FXFamily.h"

#include <array>

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
} // namespace framix::prim
