// SPDX-License-Identifier: MIT
// Sample type conversion between 8-bit or 16-bit integers and single-precision floats: the list.
#pragma once

#include "framework/primitives/FXFamily.h"

// X(name, Op, Shape, T, L); see FXFamily.h. T is the integer side of the conversion.
#define FX_CONVERT_PRIMITIVES(X)                                                                   \
    X(ippiConvert_8u32f_C1R, ConvertToFloat, ConvertToFloat, Ipp8u, C1)                            \
    X(ippiConvert_16u32f_C1R, ConvertToFloat, ConvertToFloat, Ipp16u, C1)                          \
    X(ippiConvert_32f8u_C1R, ConvertFromFloat, ConvertFromFloat, Ipp8u, C1)                        \
    X(ippiConvert_32f16u_C1R, ConvertFromFloat, ConvertFromFloat, Ipp16u, C1)

namespace framix::prim {
const TFXFamily& ConvertFamily();
} // namespace framix::prim
