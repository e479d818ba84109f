// SPDX-License-Identifier: MIT
// Colour conversion from RGB (or BGR) to other colour spaces but HLS: the family's list.
#pragma once

#include "framework/primitives/FXFamily.h"

// X(name, Op, Shape, T, L); see FXFamily.h.
#define FX_COLOR_CONVERT_PRIMITIVES(X)                                                             \
    X(ippiRGBToHSV_8u_C3R, RGBToHSV, PixelMap, Ipp8u, C3)                                          \
    X(ippiRGBToHSV_8u_AC4R, RGBToHSV, PixelMap, Ipp8u, AC4)                                        \
    X(ippiRGBToLUV_8u_C3R, RGBToLUV, PixelMap, Ipp8u, C3)                                          \
    X(ippiRGBToLUV_8u_AC4R, RGBToLUV, PixelMap, Ipp8u, AC4)                                        \
    X(ippiRGBToXYZ_8u_C3R, RGBToXYZ, PixelMap, Ipp8u, C3)                                          \
    X(ippiRGBToXYZ_8u_AC4R, RGBToXYZ, PixelMap, Ipp8u, AC4)                                        \
    X(ippiRGBToYCC_8u_C3R, RGBToYCC, PixelMap, Ipp8u, C3)                                          \
    X(ippiRGBToYCC_8u_AC4R, RGBToYCC, PixelMap, Ipp8u, AC4)                                        \
    X(ippiRGBToYCbCr_8u_C3R, RGBToYCbCr, PixelMap, Ipp8u, C3)                                      \
    X(ippiRGBToYCbCr_8u_AC4R, RGBToYCbCr, PixelMap, Ipp8u, AC4)                                    \
    X(ippiRGBToYUV_8u_C3R, RGBToYUV, PixelMap, Ipp8u, C3)                                          \
    X(ippiRGBToYUV_8u_AC4R, RGBToYUV, PixelMap, Ipp8u, AC4)                                        \
    X(ippiBGRToLab_8u_C3R, BGRToLab, PixelMap, Ipp8u, C3)

namespace framix::prim {
const TFXFamily& ColorConvertFamily();
} // namespace framix::prim
