// SPDX-License-Identifier: MIT
// Dispatcher module Qnbasicdispatcher: the IPP-named variables for mirror, copy and set of
// four-channel images, alpha composition and the 32-bit integer signal operations.
#pragma once

#include "framework/primitives/dispatch/FXDispatcherModule.h"
#include "framework/primitives/dispatch/FXIppPointers.h"
#include "framework/primitives/dispatch/Fxbasicdispatcher.h"

// The module's variables in declaration order (binding order): V(name, ...).
#define FX_QNBASICDISPATCHER_VARIABLES(V)                                                          \
    V(ippsAdd_32s_ISfs)                                                                            \
    V(ippsMulC_32s_ISfs)                                                                           \
    V(ippsRShiftC_32s_I)                                                                           \
    V(ippsSet_32s)

// Variables of Fxbasicdispatcher that this module binds as well, after its own: the same
// variable, bound to the same primitive, so either module's start makes it usable.
#define FX_QNBASICDISPATCHER_SHARED_VARIABLES(V)                                                   \
    V(ippiCopy_8u_C4R)                                                                             \
    V(ippiCopy_8u_AC4R)                                                                            \
    V(ippiSet_8u_C4R)                                                                              \
    V(ippiSet_8u_AC4R)                                                                             \
    V(ippiMirror_8u_C4R)                                                                           \
    V(ippiMirror_8u_AC4R)                                                                          \
    V(ippiMirror_8u_C4IR)

namespace framix::ipp {
FX_QNBASICDISPATCHER_VARIABLES(FX_DECLARE_IPP_VARIABLE)
} // namespace framix::ipp

namespace framix {
// Start binds the variables above on the first call; see TFXDispatcherModule.
TFXDispatcherModule& QnbasicdispatcherModule();
} // namespace framix
