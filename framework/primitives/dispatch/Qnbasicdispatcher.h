// SPDX-License-Identifier: MIT
// Dispatcher module Qnbasicdispatcher: the IPP-named variables for mirror, copy and set of
// four-channel images, alpha composition and the 32-bit integer signal operations.
#pragma once

#include "framework/primitives/dispatch/FXDispatcherModule.h"
#include "framework/primitives/dispatch/FXIppPointers.h"

// The module's variables in declaration order (binding order): V(name, ...).
#define FX_QNBASICDISPATCHER_VARIABLES(V) /* none implemented yet */

namespace framix::ipp {
FX_QNBASICDISPATCHER_VARIABLES(FX_DECLARE_IPP_VARIABLE)
} // namespace framix::ipp

namespace framix {
// Start binds the variables above on the first call; see TFXDispatcherModule.
TFXDispatcherModule& QnbasicdispatcherModule();
} // namespace framix
