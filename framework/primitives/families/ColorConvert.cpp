// SPDX-License-Identifier: MIT
// Colour conversion to other spaces: argument checks and the family's entry points.
#include "framework/primitives/families/ColorConvert.h"

#include "framework/primitives/FXArgChecks.h"

namespace framix::prim {

template <class T, TFXLayout L> inline constexpr auto CheckRGBToHSV = &FXCheckColorConvert<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckRGBToLUV = &FXCheckColorConvert<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckRGBToXYZ = &FXCheckColorConvert<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckRGBToYCC = &FXCheckColorConvert<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckRGBToYCbCr = &FXCheckColorConvert<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckRGBToYUV = &FXCheckColorConvert<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckBGRToLab = &FXCheckColorConvert<T, L>;

FX_DEFINE_FAMILY(ColorConvert, FX_COLOR_CONVERT_PRIMITIVES)

} // namespace framix::prim
