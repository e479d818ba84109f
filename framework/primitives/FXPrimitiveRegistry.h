// SPDX-License-Identifier: MIT
// Name -> primitive information for every primitive of every family, built from the families'
// X-lists; the binding, the tests and the benchmarks all go through it.
#pragma once

#include "framework/primitives/FXCpu.h"
#include "framework/primitives/FXPrimitiveShapes.h"

#include <array>
#include <span>
#include <string_view>

namespace framix::prim {

struct TFXPrimitiveInfo {
    std::string_view Name;
    std::string_view Family;
    TFXShape Shape;
    TFXSample Sample;
    TFXLayout Layout;
    // IPP's function: checks the arguments, runs the selected level. This is what binds.
    TFXAnyFn Entry;
    // Kernels per level (null where the level has none). They expect checked arguments and may
    // return kFXDeclined; tests and benchmarks call them directly.
    std::array<TFXAnyFn, kFXSimdLevelCount> Levels;

    bool Has(TFXSimdLevel level) const { return Levels[static_cast<int>(level)] != nullptr; }
    TFXAnyFn At(TFXSimdLevel level) const { return Levels[static_cast<int>(level)]; }
    // The best level with a kernel that this machine and FRAMIX_SIMD allow.
    TFXSimdLevel SelectedLevel() const;
};

// All primitives, sorted by name.
std::span<const TFXPrimitiveInfo> FXAllPrimitives();

// The primitive of that IPP name, or null.
const TFXPrimitiveInfo* FXFindPrimitive(std::string_view name);

} // namespace framix::prim
