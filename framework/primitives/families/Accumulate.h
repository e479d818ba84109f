// SPDX-License-Identifier: MIT
// Weighted accumulation of an image into a single-precision accumulator: the family's list.
#pragma once

#include "framework/primitives/FXFamily.h"

// X(name, Op, Shape, T, L); see FXFamily.h. T is the source's sample type; the accumulator is
// Ipp32f.
#define FX_ACCUMULATE_PRIMITIVES(X)                                                                \
    X(ippiAddWeighted_8u32f_C1IR, AddWeighted, AccumulateWeighted, Ipp8u, C1)                      \
    X(ippiAddWeighted_16u32f_C1IR, AddWeighted, AccumulateWeighted, Ipp16u, C1)

namespace framix::prim {
const TFXFamily& AccumulateFamily();
} // namespace framix::prim
