// SPDX-License-Identifier: MIT
// Dispatcher module Fxsdispatcher: its variables and their binding.
#include "framework/primitives/dispatch/Fxsdispatcher.h"

namespace framix::ipp {
FX_FXSDISPATCHER_VARIABLES(FX_DEFINE_IPP_VARIABLE)
} // namespace framix::ipp

namespace framix {
FX_DEFINE_DISPATCHER_MODULE(Fxsdispatcher, FX_FXSDISPATCHER_VARIABLES)
} // namespace framix
