// SPDX-License-Identifier: MIT
// Dispatcher module Fxconvdispatcher: the IPP-named variables for the conversions back to RGB.
#pragma once

#include "framework/primitives/dispatch/FXDispatcherModule.h"
#include "framework/primitives/dispatch/FXIppPointers.h"
#include "framework/primitives/families/ColorConvertBack.h"

// The module's variables in declaration order (binding order): V(name, ...).
#define FX_FXCONVDISPATCHER_VARIABLES(V) FX_COLOR_CONVERT_BACK_TO_RGB_PRIMITIVES(V)

namespace framix::ipp {
FX_FXCONVDISPATCHER_VARIABLES(FX_DECLARE_IPP_VARIABLE)
} // namespace framix::ipp

namespace framix {
// Start binds the variables above on the first call; see TFXDispatcherModule.
TFXDispatcherModule& FxconvdispatcherModule();
} // namespace framix
