// SPDX-License-Identifier: MIT
// Signal primitive loader: the real IPP where allowed, else the built-in implementation.
#include "framework/primitives/dispatch/Ktippsloader.h"

#include "framework/primitives/dispatch/FXRealIpp.h"

namespace framix {

void* GetIPPSProcAddress(const wchar_t* name)
{
    return FXResolvePrimitive(name, TFXIppDomain::Signal);
}

} // namespace framix
