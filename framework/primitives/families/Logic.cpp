// SPDX-License-Identifier: MIT
// Bitwise logic: argument checks and the family's entry points.
#include "framework/primitives/families/Logic.h"

#include "framework/primitives/FXArgChecks.h"

namespace framix::prim {

template <class T, TFXLayout L> inline constexpr auto CheckAnd = &FXCheckBinary<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckOr = &FXCheckBinary<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckXor = &FXCheckBinary<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckAndI = &FXCheckBinaryInPlace<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckOrI = &FXCheckBinaryInPlace<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckXorI = &FXCheckBinaryInPlace<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckNotI = &FXCheckUnaryInPlace<T, L>;

FX_DEFINE_FAMILY(Logic, FX_LOGIC_PRIMITIVES)

} // namespace framix::prim
