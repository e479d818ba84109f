// SPDX-License-Identifier: MIT
// Mirroring: argument checks and the family's entry points.
#include "framework/primitives/families/Mirror.h"

#include "framework/primitives/FXArgChecks.h"

namespace framix::prim {

template <class T, TFXLayout L> inline constexpr auto CheckMirror = &FXCheckMirror<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckMirrorInPlace = &FXCheckMirrorInPlace<T, L>;

FX_DEFINE_FAMILY(Mirror, FX_MIRROR_PRIMITIVES)

} // namespace framix::prim
