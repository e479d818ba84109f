// SPDX-License-Identifier: MIT
// Dispatcher module Qnresizedispatcher: the IPP-named variables for resize.
#pragma once

#include "framework/primitives/dispatch/FXDispatcherModule.h"
#include "framework/primitives/dispatch/FXIppPointers.h"

// The module's variables in declaration order (binding order): V(name, ...).
#define FX_QNRESIZEDISPATCHER_VARIABLES(V) /* none implemented yet */

namespace framix::ipp {
FX_QNRESIZEDISPATCHER_VARIABLES(FX_DECLARE_IPP_VARIABLE)
} // namespace framix::ipp

namespace framix {
// Start binds the variables above on the first call; see TFXDispatcherModule.
TFXDispatcherModule& QnresizedispatcherModule();
} // namespace framix
