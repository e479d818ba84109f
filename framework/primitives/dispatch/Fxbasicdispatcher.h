// SPDX-License-Identifier: MIT
// Dispatcher module Fxbasicdispatcher: the IPP-named variables for arithmetic and logic, copy and
// set, mirror, alpha composition, channel swap, separable row and column filters, weighted
// accumulation.
#pragma once

#include "framework/primitives/dispatch/FXDispatcherModule.h"
#include "framework/primitives/dispatch/FXIppPointers.h"
#include "framework/primitives/families/Accumulate.h"
#include "framework/primitives/families/Arithmetic.h"
#include "framework/primitives/families/Blend.h"
#include "framework/primitives/families/CopySet.h"
#include "framework/primitives/families/FilterSeparable.h"
#include "framework/primitives/families/Logic.h"
#include "framework/primitives/families/Mirror.h"
#include "framework/primitives/families/Signal.h"

// The module's variables in declaration order (binding order): V(name, ...).
#define FX_FXBASICDISPATCHER_VARIABLES(V)                                                          \
    FX_FILTER_SEPARABLE_PRIMITIVES(V)                                                              \
    FX_ARITHMETIC_PRIMITIVES(V)                                                                    \
    FX_LOGIC_PRIMITIVES(V)                                                                         \
    FX_BLEND_PRIMITIVES(V)                                                                         \
    FX_ACCUMULATE_PRIMITIVES(V)                                                                    \
    FX_COPY_SET_PRIMITIVES(V)                                                                      \
    V(ippsSet_8u)                                                                                  \
    V(ippsCopy_8u)                                                                                 \
    FX_MIRROR_PRIMITIVES(V)

namespace framix::ipp {
FX_FXBASICDISPATCHER_VARIABLES(FX_DECLARE_IPP_VARIABLE)
} // namespace framix::ipp

namespace framix {
// Start binds the variables above on the first call; see TFXDispatcherModule.
TFXDispatcherModule& FxbasicdispatcherModule();
} // namespace framix
