// SPDX-License-Identifier: MIT
// Name resolution for the loaders: built-in primitives, or a real Intel IPP where allowed.
#pragma once

#include <span>
#include <string_view>

namespace framix {

enum class TFXIppDomain { Image, Signal };

// The address a loader returns for an IPP name: the real IPP's function when the real IPP is
// active and the name is on the verified list, else the built-in entry point, else null.
void* FXResolvePrimitive(const wchar_t* name, TFXIppDomain domain);

// Names whose legacy argument list the supported real IPP (2021 and later) still exports
// unchanged. Only these may bind to it; IppDifferentialTest checks each against the installed
// headers. No box, rank or separable filter qualifies: IPP 9.0 removed or changed them all;
// nor does any look-up table, whose arguments changed under the same names. Copies, sets,
// mirrors, conversions and the signal primitives do.
std::span<const std::string_view> FXRealIppVerifiedNames();

// True when the library was built with FRAMIX_WITH_IPP, FRAMIX_USE_IPP=1 is set, and the IPP
// libraries load (from FRAMIX_IPP_DIR, else the dynamic loader's search path). Decided once.
bool FXRealIppActive();

// The real IPP's symbol of that name (any name, verified or not), or null; for the
// differential tests and benchmarks. Loads the libraries as FXRealIppActive does, without
// FRAMIX_USE_IPP.
void* FXRealIppSymbol(std::string_view name);

} // namespace framix
