// SPDX-License-Identifier: MIT
// Dispatcher module Fxjaehnedispatcher: its variables and their binding.
#include "framework/primitives/dispatch/Fxjaehnedispatcher.h"

namespace framix::ipp {
FX_FXJAEHNEDISPATCHER_VARIABLES(FX_DEFINE_IPP_VARIABLE)
} // namespace framix::ipp

namespace framix {
FX_DEFINE_DISPATCHER_MODULE(Fxjaehnedispatcher, FX_FXJAEHNEDISPATCHER_VARIABLES)
} // namespace framix
