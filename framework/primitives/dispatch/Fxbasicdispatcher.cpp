// SPDX-License-Identifier: MIT
// Dispatcher module Fxbasicdispatcher: its variables and their binding.
#include "framework/primitives/dispatch/Fxbasicdispatcher.h"

namespace framix::ipp {
FX_FXBASICDISPATCHER_VARIABLES(FX_DEFINE_IPP_VARIABLE)
} // namespace framix::ipp

namespace framix {
FX_DEFINE_DISPATCHER_MODULE(Fxbasicdispatcher, FX_FXBASICDISPATCHER_VARIABLES)
} // namespace framix
