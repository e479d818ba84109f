// SPDX-License-Identifier: MIT
// Dispatcher module Snbasicdispatcher: the IPP-named variables for conversion between 8-bit and
// floating point, 16-bit signed copy and set.
#pragma once

#include "framework/primitives/dispatch/FXDispatcherModule.h"
#include "framework/primitives/dispatch/FXIppPointers.h"
#include "framework/primitives/dispatch/Fxbasicdispatcher.h"
#include "framework/primitives/dispatch/Fxdispatcher.h"

// The module's variables in declaration order (binding order): V(name, ...).
#define FX_SNBASICDISPATCHER_VARIABLES(V) /* none of its own */

// Variables of Fxdispatcher and Fxbasicdispatcher that this module binds as well: the same
// variable, bound to the same primitive.
#define FX_SNBASICDISPATCHER_SHARED_VARIABLES(V)                                                   \
    V(ippiConvert_8u32f_C1R)                                                                       \
    V(ippiConvert_32f8u_C1R)                                                                       \
    V(ippiCopy_16s_C1R)                                                                            \
    V(ippiSet_16s_C1R)

namespace framix::ipp {
FX_SNBASICDISPATCHER_VARIABLES(FX_DECLARE_IPP_VARIABLE)
} // namespace framix::ipp

namespace framix {
// Start binds the variables above on the first call; see TFXDispatcherModule.
TFXDispatcherModule& SnbasicdispatcherModule();
} // namespace framix
