// SPDX-License-Identifier: MIT
// The list of primitive families: the registry, the IPP pointer types and the generic tests
// expand it. A new family adds one line here (and one fx_add_dispatched_family in CMake).
#pragma once

#include "framework/primitives/families/Accumulate.h"
#include "framework/primitives/families/Arithmetic.h"
#include "framework/primitives/families/Blend.h"
#include "framework/primitives/families/FilterBox.h"
#include "framework/primitives/families/FilterSeparable.h"
#include "framework/primitives/families/Logic.h"

// F(Family, X-list macro)
#define FX_PRIMITIVE_FAMILIES(F)                                                                   \
    F(FilterBox, FX_FILTER_BOX_PRIMITIVES)                                                         \
    F(FilterSeparable, FX_FILTER_SEPARABLE_PRIMITIVES)                                             \
    F(Arithmetic, FX_ARITHMETIC_PRIMITIVES)                                                        \
    F(Logic, FX_LOGIC_PRIMITIVES)                                                                  \
    F(Blend, FX_BLEND_PRIMITIVES)                                                                  \
    F(Accumulate, FX_ACCUMULATE_PRIMITIVES)
