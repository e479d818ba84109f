// SPDX-License-Identifier: MIT
// Sample type conversion: argument checks and the family's entry points.
#include "framework/primitives/families/Convert.h"

#include "framework/primitives/FXArgChecks.h"

namespace framix::prim {

template <class T, TFXLayout L>
inline constexpr auto CheckConvertToFloat = &FXCheckConvertToFloat<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckConvertFromFloat = &FXCheckConvertFromFloat<T, L>;

FX_DEFINE_FAMILY(Convert, FX_CONVERT_PRIMITIVES)

} // namespace framix::prim
