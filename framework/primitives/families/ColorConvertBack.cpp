// SPDX-License-Identifier: MIT
// Colour conversion back to RGB: argument checks and the family's entry points.
#include "framework/primitives/families/ColorConvertBack.h"

#include "framework/primitives/FXArgChecks.h"

namespace framix::prim {

template <class T, TFXLayout L> inline constexpr auto CheckHSVToRGB = &FXCheckColorConvert<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckYUVToRGB = &FXCheckColorConvert<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckXYZToRGB = &FXCheckColorConvert<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckYCCToRGB = &FXCheckColorConvert<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckYCbCrToRGB = &FXCheckColorConvert<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckLUVToRGB = &FXCheckColorConvert<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckLabToBGR = &FXCheckColorConvert<T, L>;

FX_DEFINE_FAMILY(ColorConvertBack, FX_COLOR_CONVERT_BACK_PRIMITIVES)

} // namespace framix::prim
