// SPDX-License-Identifier: MIT
// Dispatcher module Qnbasicdispatcher: its variables and their binding.
#include "framework/primitives/dispatch/Qnbasicdispatcher.h"

namespace framix::ipp {
FX_QNBASICDISPATCHER_VARIABLES(FX_DEFINE_IPP_VARIABLE)
} // namespace framix::ipp

namespace framix {
#define FX_QNBASICDISPATCHER_BINDINGS(V)                                                           \
    FX_QNBASICDISPATCHER_VARIABLES(V) FX_QNBASICDISPATCHER_SHARED_VARIABLES(V)
FX_DEFINE_DISPATCHER_MODULE(Qnbasicdispatcher, FX_QNBASICDISPATCHER_BINDINGS)
} // namespace framix
