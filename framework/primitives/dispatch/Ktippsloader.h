// SPDX-License-Identifier: MIT
// Resolves signal primitives (ipps*) by IPP name for the dispatcher modules.
#pragma once

namespace framix {

// The address of the named signal primitive, or null when nothing provides it (see
// GetIPPIProcAddress).
void* GetIPPSProcAddress(const wchar_t* name);

} // namespace framix
