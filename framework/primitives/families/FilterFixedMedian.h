// SPDX-License-Identifier: MIT
// Fixed-mask medians: the cross median per channel and the colour (vector) median: the
// family's list.
#pragma once

#include "framework/primitives/FXFamily.h"

// X(name, Op, Shape, T, L); see FXFamily.h.
#define FX_FILTER_FIXED_MEDIAN_PRIMITIVES(X)                                                       \
    X(ippiFilterMedianCross_8u_C1R, FilterMedianCross, FixedMaskFilter, Ipp8u, C1)                 \
    X(ippiFilterMedianCross_8u_C3R, FilterMedianCross, FixedMaskFilter, Ipp8u, C3)                 \
    X(ippiFilterMedianCross_8u_AC4R, FilterMedianCross, FixedMaskFilter, Ipp8u, AC4)               \
    X(ippiFilterMedianCross_16u_C1R, FilterMedianCross, FixedMaskFilter, Ipp16u, C1)               \
    X(ippiFilterMedianColor_8u_C3R, FilterMedianColor, FixedMaskFilter, Ipp8u, C3)                 \
    X(ippiFilterMedianColor_8u_AC4R, FilterMedianColor, FixedMaskFilter, Ipp8u, AC4)

namespace framix::prim {
const TFXFamily& FilterFixedMedianFamily();
} // namespace framix::prim
