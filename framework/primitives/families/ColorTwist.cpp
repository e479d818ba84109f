// SPDX-License-Identifier: MIT
// Colour twist and gamma: argument checks and the family's entry points.
#include "framework/primitives/families/ColorTwist.h"

#include "framework/primitives/FXArgChecks.h"

namespace framix::prim {

template <class T, TFXLayout L>
inline constexpr auto CheckColorTwist32f = &FXCheckColorTwist<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckGammaFwd = &FXCheckPixelMap<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckGammaInv = &FXCheckPixelMap<T, L>;

FX_DEFINE_FAMILY(ColorTwist, FX_COLOR_TWIST_PRIMITIVES)

} // namespace framix::prim
