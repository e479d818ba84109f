// SPDX-License-Identifier: MIT
// Separable filtering with single-precision kernels (one row or one column pass): the list.
#pragma once

#include "framework/primitives/FXFamily.h"

// X(name, Op, Shape, T, L); see FXFamily.h.
#define FX_FILTER_SEPARABLE_PRIMITIVES(X)                                                          \
    X(ippiFilterRow32f_8u_C1R, FilterRow32f, RowFilter, Ipp8u, C1)                                 \
    X(ippiFilterRow32f_8u_C3R, FilterRow32f, RowFilter, Ipp8u, C3)                                 \
    X(ippiFilterRow32f_8u_C4R, FilterRow32f, RowFilter, Ipp8u, C4)                                 \
    X(ippiFilterRow32f_16u_C1R, FilterRow32f, RowFilter, Ipp16u, C1)                               \
    X(ippiFilterColumn32f_8u_C1R, FilterColumn32f, ColumnFilter, Ipp8u, C1)                        \
    X(ippiFilterColumn32f_8u_C3R, FilterColumn32f, ColumnFilter, Ipp8u, C3)                        \
    X(ippiFilterColumn32f_8u_C4R, FilterColumn32f, ColumnFilter, Ipp8u, C4)                        \
    X(ippiFilterColumn32f_16u_C1R, FilterColumn32f, ColumnFilter, Ipp16u, C1)

namespace framix::prim {
const TFXFamily& FilterSeparableFamily();
} // namespace framix::prim
