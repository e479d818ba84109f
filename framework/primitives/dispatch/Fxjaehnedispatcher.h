// SPDX-License-Identifier: MIT
// Dispatcher module Fxjaehnedispatcher: the IPP-named variables for the test image
// ippiImageJaehne_8u_C3R.
#pragma once

#include "framework/primitives/dispatch/FXDispatcherModule.h"
#include "framework/primitives/dispatch/FXIppPointers.h"
#include "framework/primitives/families/ImageJaehne.h"

// The module's variables in declaration order (binding order): V(name, ...).
#define FX_FXJAEHNEDISPATCHER_VARIABLES(V) FX_IMAGE_JAEHNE_PRIMITIVES(V)

namespace framix::ipp {
FX_FXJAEHNEDISPATCHER_VARIABLES(FX_DECLARE_IPP_VARIABLE)
} // namespace framix::ipp

namespace framix {
// Start binds the variables above on the first call; see TFXDispatcherModule.
TFXDispatcherModule& FxjaehnedispatcherModule();
} // namespace framix
