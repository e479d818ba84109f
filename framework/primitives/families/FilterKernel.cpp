// SPDX-License-Identifier: MIT
// Integer convolution: argument checks and the family's entry points.
#include "framework/primitives/families/FilterKernel.h"

#include "framework/primitives/FXArgChecks.h"

namespace framix::prim {

template <class T, TFXLayout L>
inline constexpr auto CheckFilterKernel32s = &FXCheckKernelFilter<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckFilterPrewittHoriz = &FXCheckFixedFilter<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckFilterPrewittVert = &FXCheckFixedFilter<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckFilterSobelHoriz = &FXCheckFixedFilter<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckFilterSobelVert = &FXCheckFixedFilter<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckFilterRobertsDown = &FXCheckFixedFilter<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckFilterRobertsUp = &FXCheckFixedFilter<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckFilterSharpen = &FXCheckFixedFilter<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckFilterLaplace = &FXCheckFixedMaskFilter<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckFilterGauss = &FXCheckFixedMaskFilter<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckFilterHipass = &FXCheckFixedMaskFilter<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckFilterLowpass = &FXCheckFixedMaskFilter<T, L>;

FX_DEFINE_FAMILY(FilterKernel, FX_FILTER_KERNEL_PRIMITIVES)

} // namespace framix::prim
