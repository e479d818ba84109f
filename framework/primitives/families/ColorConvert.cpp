// SPDX-License-Identifier: MIT
// Colour conversion to other spaces: argument checks and the family's entry points.
#include "framework/primitives/families/ColorConvert.h"

#include "framework/primitives/FXArgChecks.h"

namespace framix::prim {

template <class T, TFXLayout L> inline constexpr auto CheckRGBToHSV = &FXCheckPixelMap<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckRGBToLUV = &FXCheckPixelMap<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckRGBToXYZ = &FXCheckPixelMap<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckRGBToYCC = &FXCheckPixelMap<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckRGBToYCbCr = &FXCheckPixelMap<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckRGBToYUV = &FXCheckPixelMap<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckBGRToLab = &FXCheckPixelMap<T, L>;

FX_DEFINE_FAMILY(ColorConvert, FX_COLOR_CONVERT_PRIMITIVES)

} // namespace framix::prim
