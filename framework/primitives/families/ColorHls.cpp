// SPDX-License-Identifier: MIT
// RGB <-> HLS: argument checks and the family's entry points.
#include "framework/primitives/families/ColorHls.h"

#include "framework/primitives/FXArgChecks.h"

namespace framix::prim {

template <class T, TFXLayout L> inline constexpr auto CheckRGBToHLS = &FXCheckPixelMap<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckHLSToRGB = &FXCheckPixelMap<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckBGRToHLS = &FXCheckColorConvertC3P3<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckHLSToBGR = &FXCheckColorConvertP3C3<T, L>;

FX_DEFINE_FAMILY(ColorHls, FX_COLOR_HLS_PRIMITIVES)

} // namespace framix::prim
