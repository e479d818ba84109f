// SPDX-License-Identifier: MIT
// Alpha compositing of two images, by constant or per-pixel alpha: the family's list.
#pragma once

#include "framework/primitives/FXFamily.h"

#include <cstdint>

// X(name, Op, Shape, T, L); see FXFamily.h.
#define FX_BLEND_PRIMITIVES(X)                                                                     \
    X(ippiAlphaCompC_8u_C1R, AlphaCompC, AlphaConst, Ipp8u, C1)                                    \
    X(ippiAlphaCompC_8u_C3R, AlphaCompC, AlphaConst, Ipp8u, C3)                                    \
    X(ippiAlphaCompC_8u_C4R, AlphaCompC, AlphaConst, Ipp8u, C4)                                    \
    X(ippiAlphaCompC_16u_C1R, AlphaCompC, AlphaConst, Ipp16u, C1)                                  \
    X(ippiAlphaComp_8u_AC4R, AlphaComp, AlphaPixel, Ipp8u, AC4)

namespace framix::prim {

const TFXFamily& BlendFamily();

// The compositing rules as weights: with M the largest sample value, alphas a (first source)
// and b (second) in 0...M, every rule's colour is (P * A + Q * B) / M^2 for the samples A, B,
// rounded to nearest and saturated; the alpha it produces is the colour of the rule's
// non-premultiplied form for A = B = M. Shared by the reference and the vector kernels.
struct TFXCompositeWeights {
    std::uint64_t P;
    std::uint64_t Q;
};

constexpr TFXCompositeWeights FXCompositeWeights(int alphaType, std::uint64_t a, std::uint64_t b,
                                                 std::uint64_t m)
{
    const std::uint64_t na = m - a, nb = m - b;
    switch (alphaType) {
    case ippAlphaOver: // aA A + (1 - aA) aB B
        return {a * m, na * b};
    case ippAlphaIn: // aA A aB
        return {a * b, 0};
    case ippAlphaOut: // aA A (1 - aB)
        return {a * nb, 0};
    case ippAlphaATop: // aA A aB + (1 - aA) aB B
        return {a * b, na * b};
    case ippAlphaXor: // aA A (1 - aB) + (1 - aA) aB B
        return {a * nb, na * b};
    case ippAlphaPlus: // aA A + aB B
        return {a * m, b * m};
    case ippAlphaOverPremul: // A + (1 - aA) B
        return {m * m, na * m};
    case ippAlphaInPremul: // A aB
        return {b * m, 0};
    case ippAlphaOutPremul: // A (1 - aB)
        return {nb * m, 0};
    case ippAlphaATopPremul: // A aB + (1 - aA) B
        return {b * m, na * m};
    case ippAlphaXorPremul: // A (1 - aB) + (1 - aA) B
        return {nb * m, na * m};
    default: // ippAlphaPlusPremul: A + B
        return {m * m, m * m};
    }
}

} // namespace framix::prim
