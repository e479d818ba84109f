// SPDX-License-Identifier: MIT
// Dispatcher module Snbasicdispatcher: its variables and their binding.
#include "framework/primitives/dispatch/Snbasicdispatcher.h"

namespace framix::ipp {
FX_SNBASICDISPATCHER_VARIABLES(FX_DEFINE_IPP_VARIABLE)
} // namespace framix::ipp

namespace framix {
FX_DEFINE_DISPATCHER_MODULE(Snbasicdispatcher, FX_SNBASICDISPATCHER_VARIABLES)
} // namespace framix
