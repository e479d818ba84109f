// SPDX-License-Identifier: MIT
// Start-up of the primitive layer: binds every dispatcher module's variables.
#pragma once

#include <span>

namespace framix {

class TFXDispatcherModule;

// Starts all dispatcher modules, in a fixed order, once per process: later and concurrent
// calls return when the first has finished. Throws EFXError naming a primitive nothing
// provides (a later call then tries again).
void FXStartPrimitiveLayer();

// Every dispatcher module, in start order.
std::span<TFXDispatcherModule* const> FXDispatcherModules();

} // namespace framix
