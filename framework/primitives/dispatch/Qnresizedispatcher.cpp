// SPDX-License-Identifier: MIT
// Dispatcher module Qnresizedispatcher: its variables and their binding.
#include "framework/primitives/dispatch/Qnresizedispatcher.h"

namespace framix::ipp {
FX_QNRESIZEDISPATCHER_VARIABLES(FX_DEFINE_IPP_VARIABLE)
} // namespace framix::ipp

namespace framix {
FX_DEFINE_DISPATCHER_MODULE(Qnresizedispatcher, FX_QNRESIZEDISPATCHER_VARIABLES)
} // namespace framix
