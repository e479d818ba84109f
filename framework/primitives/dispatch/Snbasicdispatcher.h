// SPDX-License-Identifier: MIT
// Dispatcher module Snbasicdispatcher: the IPP-named variables for conversion between 8-bit and
// floating point, 16-bit signed copy and set.
#pragma once

#include "framework/primitives/dispatch/FXDispatcherModule.h"
#include "framework/primitives/dispatch/FXIppPointers.h"

// The module's variables in declaration order (binding order): V(name, ...).
#define FX_SNBASICDISPATCHER_VARIABLES(V) /* none implemented yet */

namespace framix::ipp {
FX_SNBASICDISPATCHER_VARIABLES(FX_DECLARE_IPP_VARIABLE)
} // namespace framix::ipp

namespace framix {
// Start binds the variables above on the first call; see TFXDispatcherModule.
TFXDispatcherModule& SnbasicdispatcherModule();
} // namespace framix
