// SPDX-License-Identifier: MIT
// Uniform and Gaussian noise added in place, from IPP's generator: the family's list.
#pragma once

#include "framework/primitives/FXFamily.h"

// X(name, Op, Shape, T, L); see FXFamily.h. The 16u variants take 16-bit bounds (mean, stdev),
// as modern IPP's 16u functions do.
#define FX_NOISE_PRIMITIVES(X)                                                                     \
    X(ippiAddRandUniform_Direct_8u_C1IR, AddRandUniform, AddNoise, Ipp8u, C1)                      \
    X(ippiAddRandUniform_Direct_8u_C3IR, AddRandUniform, AddNoise, Ipp8u, C3)                      \
    X(ippiAddRandUniform_Direct_8u_C4IR, AddRandUniform, AddNoise, Ipp8u, C4)                      \
    X(ippiAddRandUniform_Direct_8u_AC4IR, AddRandUniform, AddNoise, Ipp8u, AC4)                    \
    X(ippiAddRandUniform_Direct_16u_C1IR, AddRandUniform, AddNoise, Ipp16u, C1)                    \
    X(ippiAddRandGauss_Direct_8u_C1IR, AddRandGauss, AddNoise, Ipp8u, C1)                          \
    X(ippiAddRandGauss_Direct_8u_C3IR, AddRandGauss, AddNoise, Ipp8u, C3)                          \
    X(ippiAddRandGauss_Direct_8u_C4IR, AddRandGauss, AddNoise, Ipp8u, C4)                          \
    X(ippiAddRandGauss_Direct_8u_AC4IR, AddRandGauss, AddNoise, Ipp8u, AC4)                        \
    X(ippiAddRandGauss_Direct_16u_C1IR, AddRandGauss, AddNoise, Ipp16u, C1)

namespace framix::prim {
const TFXFamily& NoiseFamily();
} // namespace framix::prim
