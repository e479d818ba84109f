// SPDX-License-Identifier: MIT
// Dispatcher module Fxdispatcher: the IPP-named variables for filters, colour conversion, look-up
// tables, threshold, geometry, histogram, noise, gamma, colour twist and sample type conversions.
#pragma once

#include "framework/primitives/dispatch/FXDispatcherModule.h"
#include "framework/primitives/dispatch/FXIppPointers.h"
#include "framework/primitives/families/ColorConvert.h"
#include "framework/primitives/families/ColorHls.h"
#include "framework/primitives/families/ColorTwist.h"
#include "framework/primitives/families/Convert.h"
#include "framework/primitives/families/FilterBox.h"
#include "framework/primitives/families/FilterFixedMedian.h"
#include "framework/primitives/families/FilterKernel.h"
#include "framework/primitives/families/Histogram.h"
#include "framework/primitives/families/Lut.h"
#include "framework/primitives/families/Noise.h"
#include "framework/primitives/families/Threshold.h"

// The module's variables in declaration order (binding order): V(name, ...).
#define FX_FXDISPATCHER_VARIABLES(V)                                                               \
    FX_FILTER_BOX_PRIMITIVES(V)                                                                    \
    FX_FILTER_KERNEL_PRIMITIVES(V)                                                                 \
    FX_FILTER_FIXED_MEDIAN_PRIMITIVES(V)                                                           \
    V(ippiRGBToHLS_8u_C3R)                                                                         \
    V(ippiRGBToHLS_8u_AC4R)                                                                        \
    FX_COLOR_CONVERT_PRIMITIVES(V)                                                                 \
    V(ippiBGRToHLS_8u_C3P3R)                                                                       \
    V(ippiHLSToBGR_8u_P3C3R)                                                                       \
    FX_LUT_PRIMITIVES(V)                                                                           \
    FX_THRESHOLD_PRIMITIVES(V)                                                                     \
    FX_HISTOGRAM_PRIMITIVES(V)                                                                     \
    FX_COLOR_TWIST_PRIMITIVES(V)                                                                   \
    FX_CONVERT_PRIMITIVES(V)                                                                       \
    FX_NOISE_PRIMITIVES(V)

namespace framix::ipp {
FX_FXDISPATCHER_VARIABLES(FX_DECLARE_IPP_VARIABLE)
} // namespace framix::ipp

namespace framix {
// Start binds the variables above on the first call; see TFXDispatcherModule.
TFXDispatcherModule& FxdispatcherModule();
} // namespace framix
