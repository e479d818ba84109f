// SPDX-License-Identifier: MIT
// Signal primitives: argument checks and the family's entry points.
#include "framework/primitives/families/Signal.h"

#include "framework/primitives/FXArgChecks.h"

namespace framix::prim {

template <class T, TFXLayout L> inline constexpr auto CheckSignalSet = &FXCheckSignalSet<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckSignalCopy = &FXCheckSignalCopy<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckSignalAdd = &FXCheckSignalAddScaled<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckSignalMulC = &FXCheckSignalMulCScaled<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckSignalRShiftC = &FXCheckSignalShiftC<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckPolarToCart = &FXCheckSignalPolarToCart<T, L>;

FX_DEFINE_FAMILY(Signal, FX_SIGNAL_PRIMITIVES)

} // namespace framix::prim
