// SPDX-License-Identifier: MIT
// Resolves image primitives (ippi*) by IPP name for the dispatcher modules.
#pragma once

namespace framix {

// The address of the named image primitive, or null when nothing provides it. Built-in
// implementations answer every registered name; a real Intel IPP answers instead only for
// names on its verified list, when enabled (FXRealIpp.h).
void* GetIPPIProcAddress(const wchar_t* name);

} // namespace framix
