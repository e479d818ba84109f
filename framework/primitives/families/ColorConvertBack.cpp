// SPDX-License-Identifier: MIT
// Colour conversion back to RGB: argument checks and the family's entry points.
#include "framework/primitives/families/ColorConvertBack.h"

#include "framework/primitives/FXArgChecks.h"

namespace framix::prim {

template <class T, TFXLayout L> inline constexpr auto CheckHSVToRGB = &FXCheckPixelMap<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckYUVToRGB = &FXCheckPixelMap<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckXYZToRGB = &FXCheckPixelMap<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckYCCToRGB = &FXCheckPixelMap<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckYCbCrToRGB = &FXCheckPixelMap<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckLUVToRGB = &FXCheckPixelMap<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckLabToBGR = &FXCheckPixelMap<T, L>;

FX_DEFINE_FAMILY(ColorConvertBack, FX_COLOR_CONVERT_BACK_PRIMITIVES)

} // namespace framix::prim
