// SPDX-License-Identifier: MIT
// Dispatcher module Fxconvdispatcher: the IPP-named variables for the conversions back to RGB.
#pragma once

#include "framework/primitives/dispatch/FXDispatcherModule.h"
#include "framework/primitives/dispatch/FXIppPointers.h"
#include "framework/primitives/families/ColorConvertBack.h"
#include "framework/primitives/families/ColorHls.h"

// The module's variables in declaration order (binding order): V(name, ...).
// Intentional: the fifteen conversions back to RGB in their fixed binding order, so HLS (another
// family) comes first and the whole back-conversion list cannot be spliced in.
#define FX_FXCONVDISPATCHER_VARIABLES(V)                                                           \
    V(ippiHLSToRGB_8u_C3R)                                                                         \
    V(ippiHLSToRGB_8u_AC4R)                                                                        \
    FX_COLOR_CONVERT_BACK_PRIMITIVES(V)

namespace framix::ipp {
FX_FXCONVDISPATCHER_VARIABLES(FX_DECLARE_IPP_VARIABLE)
} // namespace framix::ipp

namespace framix {
// Start binds the variables above on the first call; see TFXDispatcherModule.
TFXDispatcherModule& FxconvdispatcherModule();
} // namespace framix
