// SPDX-License-Identifier: MIT
// Dispatcher module Fxsdispatcher: the IPP-named variables for the signal primitive
// ippsPolarToCart_64f.
#pragma once

#include "framework/primitives/dispatch/FXDispatcherModule.h"
#include "framework/primitives/dispatch/FXIppPointers.h"
#include "framework/primitives/families/Signal.h"

// The module's variables in declaration order (binding order): V(name, ...).
#define FX_FXSDISPATCHER_VARIABLES(V) V(ippsPolarToCart_64f)

namespace framix::ipp {
FX_FXSDISPATCHER_VARIABLES(FX_DECLARE_IPP_VARIABLE)
} // namespace framix::ipp

namespace framix {
// Start binds the variables above on the first call; see TFXDispatcherModule.
TFXDispatcherModule& FxsdispatcherModule();
} // namespace framix
