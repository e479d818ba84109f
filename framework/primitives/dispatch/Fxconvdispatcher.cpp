// SPDX-License-Identifier: MIT
// Dispatcher module Fxconvdispatcher: its variables and their binding.
#include "framework/primitives/dispatch/Fxconvdispatcher.h"

namespace framix::ipp {
FX_FXCONVDISPATCHER_VARIABLES(FX_DEFINE_IPP_VARIABLE)
} // namespace framix::ipp

namespace framix {
FX_DEFINE_DISPATCHER_MODULE(Fxconvdispatcher, FX_FXCONVDISPATCHER_VARIABLES)
} // namespace framix
