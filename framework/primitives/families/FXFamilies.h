// SPDX-License-Identifier: MIT
// The list of primitive families: the registry, the IPP pointer types and the generic tests
// expand it. A new family adds one line here (and one fx_add_dispatched_family in CMake).
#pragma once

#include "framework/primitives/families/Accumulate.h"
#include "framework/primitives/families/Arithmetic.h"
#include "framework/primitives/families/Blend.h"
#include "framework/primitives/families/ColorConvert.h"
#include "framework/primitives/families/ColorConvertBack.h"
#include "framework/primitives/families/ColorHls.h"
#include "framework/primitives/families/ColorTwist.h"
#include "framework/primitives/families/Convert.h"
#include "framework/primitives/families/CopySet.h"
#include "framework/primitives/families/FilterBox.h"
#include "framework/primitives/families/FilterFixedMedian.h"
#include "framework/primitives/families/FilterKernel.h"
#include "framework/primitives/families/FilterSeparable.h"
#include "framework/primitives/families/Histogram.h"
#include "framework/primitives/families/ImageJaehne.h"
#include "framework/primitives/families/Logic.h"
#include "framework/primitives/families/Lut.h"
#include "framework/primitives/families/Mirror.h"
#include "framework/primitives/families/Noise.h"
#include "framework/primitives/families/Signal.h"
#include "framework/primitives/families/Threshold.h"

// F(Family, X-list macro)
#define FX_PRIMITIVE_FAMILIES(F)                                                                   \
    F(FilterBox, FX_FILTER_BOX_PRIMITIVES)                                                         \
    F(FilterSeparable, FX_FILTER_SEPARABLE_PRIMITIVES)                                             \
    F(FilterKernel, FX_FILTER_KERNEL_PRIMITIVES)                                                   \
    F(FilterFixedMedian, FX_FILTER_FIXED_MEDIAN_PRIMITIVES)                                        \
    F(Lut, FX_LUT_PRIMITIVES)                                                                      \
    F(Threshold, FX_THRESHOLD_PRIMITIVES)                                                          \
    F(Histogram, FX_HISTOGRAM_PRIMITIVES)                                                          \
    F(ColorConvert, FX_COLOR_CONVERT_PRIMITIVES)                                                   \
    F(ColorConvertBack, FX_COLOR_CONVERT_BACK_PRIMITIVES)                                          \
    F(ColorHls, FX_COLOR_HLS_PRIMITIVES)                                                           \
    F(ColorTwist, FX_COLOR_TWIST_PRIMITIVES)                                                       \
    F(Arithmetic, FX_ARITHMETIC_PRIMITIVES)                                                        \
    F(Logic, FX_LOGIC_PRIMITIVES)                                                                  \
    F(Blend, FX_BLEND_PRIMITIVES)                                                                  \
    F(Accumulate, FX_ACCUMULATE_PRIMITIVES)                                                        \
    F(CopySet, FX_COPY_SET_PRIMITIVES)                                                             \
    F(Convert, FX_CONVERT_PRIMITIVES)                                                              \
    F(Mirror, FX_MIRROR_PRIMITIVES)                                                                \
    F(Noise, FX_NOISE_PRIMITIVES)                                                                  \
    F(ImageJaehne, FX_IMAGE_JAEHNE_PRIMITIVES)                                                     \
    F(Signal, FX_SIGNAL_PRIMITIVES)
