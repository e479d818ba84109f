// SPDX-License-Identifier: MIT
// Separable row and column filters: argument checks and the family's entry points.
#include "framework/primitives/families/FilterSeparable.h"

#include "framework/primitives/FXArgChecks.h"

namespace framix::prim {

template <class T, TFXLayout L> inline constexpr auto CheckFilterRow32f = FXCheckRowFilter<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckFilterColumn32f = FXCheckColumnFilter<T, L>;

FX_DEFINE_FAMILY(FilterSeparable, FX_FILTER_SEPARABLE_PRIMITIVES)

} // namespace framix::prim
