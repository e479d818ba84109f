// SPDX-License-Identifier: MIT
// Dispatcher module Fxdispatcher: its variables and their binding.
#include "framework/primitives/dispatch/Fxdispatcher.h"

namespace framix::ipp {
FX_FXDISPATCHER_VARIABLES(FX_DEFINE_IPP_VARIABLE)
} // namespace framix::ipp

namespace framix {
FX_DEFINE_DISPATCHER_MODULE(Fxdispatcher, FX_FXDISPATCHER_VARIABLES)
} // namespace framix
