// SPDX-License-Identifier: MIT
// Bitwise logic on images (and, or, exclusive or of two images; not): the family's list.
#pragma once

#include "framework/primitives/FXFamily.h"

// X(name, Op, Shape, T, L); see FXFamily.h. Ops ending in I work in place.
#define FX_LOGIC_PRIMITIVES(X)                                                                     \
    X(ippiAnd_8u_C1R, And, Binary, Ipp8u, C1)                                                      \
    X(ippiAnd_8u_C3R, And, Binary, Ipp8u, C3)                                                      \
    X(ippiAnd_8u_AC4R, And, Binary, Ipp8u, AC4)                                                    \
    X(ippiAnd_16u_C1R, And, Binary, Ipp16u, C1)                                                    \
    X(ippiAnd_8u_C1IR, AndI, BinaryInPlace, Ipp8u, C1)                                             \
    X(ippiAnd_8u_C3IR, AndI, BinaryInPlace, Ipp8u, C3)                                             \
    X(ippiAnd_8u_AC4IR, AndI, BinaryInPlace, Ipp8u, AC4)                                           \
    X(ippiOr_8u_C1R, Or, Binary, Ipp8u, C1)                                                        \
    X(ippiOr_8u_C3R, Or, Binary, Ipp8u, C3)                                                        \
    X(ippiOr_8u_AC4R, Or, Binary, Ipp8u, AC4)                                                      \
    X(ippiOr_16u_C1R, Or, Binary, Ipp16u, C1)                                                      \
    X(ippiOr_8u_C1IR, OrI, BinaryInPlace, Ipp8u, C1)                                               \
    X(ippiOr_8u_C3IR, OrI, BinaryInPlace, Ipp8u, C3)                                               \
    X(ippiOr_8u_AC4IR, OrI, BinaryInPlace, Ipp8u, AC4)                                             \
    X(ippiXor_8u_C1R, Xor, Binary, Ipp8u, C1)                                                      \
    X(ippiXor_8u_C3R, Xor, Binary, Ipp8u, C3)                                                      \
    X(ippiXor_8u_AC4R, Xor, Binary, Ipp8u, AC4)                                                    \
    X(ippiXor_16u_C1R, Xor, Binary, Ipp16u, C1)                                                    \
    X(ippiXor_8u_C1IR, XorI, BinaryInPlace, Ipp8u, C1)                                             \
    X(ippiXor_8u_C3IR, XorI, BinaryInPlace, Ipp8u, C3)                                             \
    X(ippiXor_8u_AC4IR, XorI, BinaryInPlace, Ipp8u, AC4)                                           \
    X(ippiNot_8u_AC4IR, NotI, UnaryInPlace, Ipp8u, AC4)

namespace framix::prim {
const TFXFamily& LogicFamily();
} // namespace framix::prim
