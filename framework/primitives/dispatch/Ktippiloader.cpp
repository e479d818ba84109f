// SPDX-License-Identifier: MIT
// Image primitive loader: the real IPP where allowed, else the built-in implementation.
#include "framework/primitives/dispatch/Ktippiloader.h"

#include "framework/primitives/dispatch/FXRealIpp.h"

namespace framix {

void* GetIPPIProcAddress(const wchar_t* name)
{
    return FXResolvePrimitive(name, TFXIppDomain::Image);
}

} // namespace framix
