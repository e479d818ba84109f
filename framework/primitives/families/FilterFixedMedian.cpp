// SPDX-License-Identifier: MIT
// Fixed-mask medians: argument checks and the family's entry points.
#include "framework/primitives/families/FilterFixedMedian.h"

#include "framework/primitives/FXArgChecks.h"

namespace framix::prim {

template <class T, TFXLayout L>
inline constexpr auto CheckFilterMedianCross = &FXCheckFixedMaskFilter<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckFilterMedianColor = &FXCheckFixedMaskFilter<T, L>;

FX_DEFINE_FAMILY(FilterFixedMedian, FX_FILTER_FIXED_MEDIAN_PRIMITIVES)

} // namespace framix::prim
