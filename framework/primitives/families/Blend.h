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
// non-premultiplied form for A = B = M. Each weight is a product of two factors, each an alpha,
// its complement M - alpha, or M; the rules with no second term have Q = 0. Shared by the
// reference and the vector kernels.
enum class TFXCompositeFactor { A, B, NotA, NotB, Max, Zero };

struct TFXCompositeFactors {
    TFXCompositeFactor P1, P2, Q1, Q2;
};

constexpr TFXCompositeFactors FXCompositeFactors(int alphaType)
{
    using enum TFXCompositeFactor;
    switch (alphaType) {
    case ippAlphaOver: // aA A + (1 - aA) aB B
        return {A, Max, NotA, B};
    case ippAlphaIn: // aA A aB
        return {A, B, Zero, Zero};
    case ippAlphaOut: // aA A (1 - aB)
        return {A, NotB, Zero, Zero};
    case ippAlphaATop: // aA A aB + (1 - aA) aB B
        return {A, B, NotA, B};
    case ippAlphaXor: // aA A (1 - aB) + (1 - aA) aB B
        return {A, NotB, NotA, B};
    case ippAlphaPlus: // aA A + aB B
        return {A, Max, B, Max};
    case ippAlphaOverPremul: // A + (1 - aA) B
        return {Max, Max, NotA, Max};
    case ippAlphaInPremul: // A aB
        return {B, Max, Zero, Zero};
    case ippAlphaOutPremul: // A (1 - aB)
        return {NotB, Max, Zero, Zero};
    case ippAlphaATopPremul: // A aB + (1 - aA) B
        return {B, Max, NotA, Max};
    case ippAlphaXorPremul: // A (1 - aB) + (1 - aA) B
        return {NotB, Max, NotA, Max};
    default: // ippAlphaPlusPremul: A + B
        return {Max, Max, Max, Max};
    }
}

struct TFXCompositeWeights {
    std::uint64_t P;
    std::uint64_t Q;
};

constexpr TFXCompositeWeights FXCompositeWeights(int alphaType, std::uint64_t a, std::uint64_t b,
                                                 std::uint64_t m)
{
    const auto value = [&](TFXCompositeFactor f) -> std::uint64_t {
        switch (f) {
        case TFXCompositeFactor::A:
            return a;
        case TFXCompositeFactor::B:
            return b;
        case TFXCompositeFactor::NotA:
            return m - a;
        case TFXCompositeFactor::NotB:
            return m - b;
        case TFXCompositeFactor::Max:
            return m;
        default:
            return 0;
        }
    };
    const TFXCompositeFactors f = FXCompositeFactors(alphaType);
    return {value(f.P1) * value(f.P2), value(f.Q1) * value(f.Q2)};
}

} // namespace framix::prim
