// SPDX-License-Identifier: MIT
// Box and rank filters: argument checks and the family's entry points.
#include "framework/primitives/families/FilterBox.h"

#include "framework/primitives/FXArgChecks.h"

namespace framix::prim {

template <class T, TFXLayout L> inline constexpr auto CheckFilterBox = &FXCheckMaskFilter<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckFilterMin = &FXCheckMaskFilter<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckFilterMax = &FXCheckMaskFilter<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckFilterMedian = &FXCheckOddMaskFilter<T, L>;

FX_DEFINE_FAMILY(FilterBox, FX_FILTER_BOX_PRIMITIVES)

} // namespace framix::prim
