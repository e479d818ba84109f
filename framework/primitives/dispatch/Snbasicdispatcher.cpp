// SPDX-License-Identifier: MIT
// Dispatcher module Snbasicdispatcher: its variables and their binding.
#include "framework/primitives/dispatch/Snbasicdispatcher.h"

namespace framix::ipp {
FX_SNBASICDISPATCHER_VARIABLES(FX_DEFINE_IPP_VARIABLE)
} // namespace framix::ipp

namespace framix {
#define FX_SNBASICDISPATCHER_BINDINGS(V)                                                           \
    FX_SNBASICDISPATCHER_VARIABLES(V) FX_SNBASICDISPATCHER_SHARED_VARIABLES(V)
FX_DEFINE_DISPATCHER_MODULE(Snbasicdispatcher, FX_SNBASICDISPATCHER_BINDINGS)
} // namespace framix
