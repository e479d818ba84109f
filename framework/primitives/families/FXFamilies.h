// SPDX-License-Identifier: MIT
// The list of primitive families: the registry, the IPP pointer types and the generic tests
// expand it. A new family adds one line here (and one fx_add_dispatched_family in CMake).
#pragma once

#include "framework/primitives/families/Convert.h"
#include "framework/primitives/families/CopySet.h"
#include "framework/primitives/families/FilterBox.h"
#include "framework/primitives/families/FilterSeparable.h"
#include "framework/primitives/families/ImageJaehne.h"
#include "framework/primitives/families/Mirror.h"
#include "framework/primitives/families/Noise.h"
#include "framework/primitives/families/Signal.h"

// F(Family, X-list macro)
#define FX_PRIMITIVE_FAMILIES(F)                                                                   \
    F(FilterBox, FX_FILTER_BOX_PRIMITIVES)                                                         \
    F(FilterSeparable, FX_FILTER_SEPARABLE_PRIMITIVES)                                             \
    F(CopySet, FX_COPY_SET_PRIMITIVES)                                                             \
    F(Convert, FX_CONVERT_PRIMITIVES)                                                              \
    F(Mirror, FX_MIRROR_PRIMITIVES)                                                                \
    F(Noise, FX_NOISE_PRIMITIVES)                                                                  \
    F(ImageJaehne, FX_IMAGE_JAEHNE_PRIMITIVES)                                                     \
    F(Signal, FX_SIGNAL_PRIMITIVES)
