// SPDX-License-Identifier: MIT
// Arithmetic on images: sums, differences, products and quotients with a scale factor, scaling
// by a constant fraction, absolute differences and the maximum: the family's list.
#pragma once

#include "framework/primitives/FXFamily.h"

// X(name, Op, Shape, T, L); see FXFamily.h. Ops ending in I work in place.
#define FX_ARITHMETIC_PRIMITIVES(X)                                                                \
    X(ippiAdd_8u_C1RSfs, Add, BinarySfs, Ipp8u, C1)                                                \
    X(ippiAdd_8u_C3RSfs, Add, BinarySfs, Ipp8u, C3)                                                \
    X(ippiAdd_8u_AC4RSfs, Add, BinarySfs, Ipp8u, AC4)                                              \
    X(ippiAdd_8u_AC4IRSfs, AddI, BinaryInPlaceSfs, Ipp8u, AC4)                                     \
    X(ippiAdd_16u_C1RSfs, Add, BinarySfs, Ipp16u, C1)                                              \
    X(ippiSub_8u_C1RSfs, Sub, BinarySfs, Ipp8u, C1)                                                \
    X(ippiSub_8u_C3RSfs, Sub, BinarySfs, Ipp8u, C3)                                                \
    X(ippiSub_8u_AC4RSfs, Sub, BinarySfs, Ipp8u, AC4)                                              \
    X(ippiSub_8u_AC4IRSfs, SubI, BinaryInPlaceSfs, Ipp8u, AC4)                                     \
    X(ippiSub_16u_C1RSfs, Sub, BinarySfs, Ipp16u, C1)                                              \
    X(ippiMul_8u_C1RSfs, Mul, BinarySfs, Ipp8u, C1)                                                \
    X(ippiMul_8u_C3RSfs, Mul, BinarySfs, Ipp8u, C3)                                                \
    X(ippiMul_8u_AC4RSfs, Mul, BinarySfs, Ipp8u, AC4)                                              \
    X(ippiMul_8u_AC4IRSfs, MulI, BinaryInPlaceSfs, Ipp8u, AC4)                                     \
    X(ippiMul_16u_C1RSfs, Mul, BinarySfs, Ipp16u, C1)                                              \
    X(ippiDiv_8u_C1RSfs, Div, BinarySfs, Ipp8u, C1)                                                \
    X(ippiDiv_8u_C3RSfs, Div, BinarySfs, Ipp8u, C3)                                                \
    X(ippiDiv_8u_AC4RSfs, Div, BinarySfs, Ipp8u, AC4)                                              \
    X(ippiDiv_8u_AC4IRSfs, DivI, BinaryInPlaceSfs, Ipp8u, AC4)                                     \
    X(ippiDiv_16u_C1RSfs, Div, BinarySfs, Ipp16u, C1)                                              \
    X(ippiMulCScale_8u_C1R, MulCScale, ConstScalar, Ipp8u, C1)                                     \
    X(ippiMulCScale_8u_C3R, MulCScaleV, ConstVector, Ipp8u, C3)                                    \
    X(ippiMulCScale_8u_C4R, MulCScaleV, ConstVector, Ipp8u, C4)                                    \
    X(ippiMulCScale_8u_C1IR, MulCScaleI, ConstScalarInPlace, Ipp8u, C1)                            \
    X(ippiMulCScale_8u_C3IR, MulCScaleVI, ConstVectorInPlace, Ipp8u, C3)                           \
    X(ippiMulCScale_8u_C4IR, MulCScaleVI, ConstVectorInPlace, Ipp8u, C4)                           \
    X(ippiMulCScale_16u_C1R, MulCScale, ConstScalar, Ipp16u, C1)                                   \
    X(ippiMulCScale_16u_C3R, MulCScaleV, ConstVector, Ipp16u, C3)                                  \
    X(ippiMulCScale_16u_C4R, MulCScaleV, ConstVector, Ipp16u, C4)                                  \
    X(ippiMulCScale_16u_C1IR, MulCScaleI, ConstScalarInPlace, Ipp16u, C1)                          \
    X(ippiMulCScale_16u_C3IR, MulCScaleVI, ConstVectorInPlace, Ipp16u, C3)                         \
    X(ippiMulCScale_16u_C4IR, MulCScaleVI, ConstVectorInPlace, Ipp16u, C4)                         \
    X(ippiAbsDiff_8u_C1R, AbsDiff, Binary, Ipp8u, C1)                                              \
    X(ippiAbsDiff_16u_C1R, AbsDiff, Binary, Ipp16u, C1)                                            \
    X(ippiMax_8u_C1R, Max, Reduce, Ipp8u, C1)

namespace framix::prim {
const TFXFamily& ArithmeticFamily();
} // namespace framix::prim
