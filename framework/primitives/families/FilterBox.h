// SPDX-License-Identifier: MIT
// Box and rank filters (average, minimum, maximum, median over a mask): the family's list.
#pragma once

#include "framework/primitives/FXFamily.h"

// X(name, Op, Shape, T, L); see FXFamily.h.
#define FX_FILTER_BOX_PRIMITIVES(X)                                                                \
    X(ippiFilterBox_8u_C1R, FilterBox, MaskFilter, Ipp8u, C1)                                      \
    X(ippiFilterBox_8u_C3R, FilterBox, MaskFilter, Ipp8u, C3)                                      \
    X(ippiFilterBox_8u_C4R, FilterBox, MaskFilter, Ipp8u, C4)                                      \
    X(ippiFilterBox_16u_C1R, FilterBox, MaskFilter, Ipp16u, C1)                                    \
    X(ippiFilterMin_8u_C1R, FilterMin, MaskFilter, Ipp8u, C1)                                      \
    X(ippiFilterMin_8u_C3R, FilterMin, MaskFilter, Ipp8u, C3)                                      \
    X(ippiFilterMin_8u_C4R, FilterMin, MaskFilter, Ipp8u, C4)                                      \
    X(ippiFilterMin_16u_C1R, FilterMin, MaskFilter, Ipp16u, C1)                                    \
    X(ippiFilterMax_8u_C1R, FilterMax, MaskFilter, Ipp8u, C1)                                      \
    X(ippiFilterMax_8u_C3R, FilterMax, MaskFilter, Ipp8u, C3)                                      \
    X(ippiFilterMax_8u_C4R, FilterMax, MaskFilter, Ipp8u, C4)                                      \
    X(ippiFilterMax_16u_C1R, FilterMax, MaskFilter, Ipp16u, C1)                                    \
    X(ippiFilterMedian_8u_C1R, FilterMedian, MaskFilter, Ipp8u, C1)                                \
    X(ippiFilterMedian_8u_C3R, FilterMedian, MaskFilter, Ipp8u, C3)                                \
    X(ippiFilterMedian_8u_C4R, FilterMedian, MaskFilter, Ipp8u, C4)                                \
    X(ippiFilterMedian_16u_C1R, FilterMedian, MaskFilter, Ipp16u, C1)

namespace framix::prim {
const TFXFamily& FilterBoxFamily();
} // namespace framix::prim
