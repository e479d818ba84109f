// SPDX-License-Identifier: MIT
// Colour conversion from other colour spaces but HLS back to RGB (or BGR): the family's list.
#pragma once

#include "framework/primitives/FXFamily.h"

// X(name, Op, Shape, T, L); see FXFamily.h.
#define FX_COLOR_CONVERT_BACK_PRIMITIVES(X)                                                        \
    X(ippiHSVToRGB_8u_C3R, HSVToRGB, PixelMap, Ipp8u, C3)                                          \
    X(ippiHSVToRGB_8u_AC4R, HSVToRGB, PixelMap, Ipp8u, AC4)                                        \
    X(ippiYUVToRGB_8u_C3R, YUVToRGB, PixelMap, Ipp8u, C3)                                          \
    X(ippiYUVToRGB_8u_AC4R, YUVToRGB, PixelMap, Ipp8u, AC4)                                        \
    X(ippiXYZToRGB_8u_C3R, XYZToRGB, PixelMap, Ipp8u, C3)                                          \
    X(ippiXYZToRGB_8u_AC4R, XYZToRGB, PixelMap, Ipp8u, AC4)                                        \
    X(ippiYCCToRGB_8u_C3R, YCCToRGB, PixelMap, Ipp8u, C3)                                          \
    X(ippiYCCToRGB_8u_AC4R, YCCToRGB, PixelMap, Ipp8u, AC4)                                        \
    X(ippiYCbCrToRGB_8u_C3R, YCbCrToRGB, PixelMap, Ipp8u, C3)                                      \
    X(ippiYCbCrToRGB_8u_AC4R, YCbCrToRGB, PixelMap, Ipp8u, AC4)                                    \
    X(ippiLUVToRGB_8u_C3R, LUVToRGB, PixelMap, Ipp8u, C3)                                          \
    X(ippiLUVToRGB_8u_AC4R, LUVToRGB, PixelMap, Ipp8u, AC4)                                        \
    X(ippiLabToBGR_8u_C3R, LabToBGR, PixelMap, Ipp8u, C3)

namespace framix::prim {
const TFXFamily& ColorConvertBackFamily();
} // namespace framix::prim
