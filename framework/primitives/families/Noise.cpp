// SPDX-License-Identifier: MIT
// Noise: argument checks and the family's entry points.
#include "framework/primitives/families/Noise.h"

#include "framework/primitives/FXArgChecks.h"

namespace framix::prim {

template <class T, TFXLayout L> inline constexpr auto CheckAddRandUniform = &FXCheckAddNoise<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckAddRandGauss = &FXCheckAddNoise<T, L>;

FX_DEFINE_FAMILY(Noise, FX_NOISE_PRIMITIVES)

} // namespace framix::prim
