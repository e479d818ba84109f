// SPDX-License-Identifier: MIT
// Copy, set and channel operations: argument checks and the family's entry points.
#include "framework/primitives/families/CopySet.h"

#include "framework/primitives/FXArgChecks.h"

namespace framix::prim {

template <class T, TFXLayout L> inline constexpr auto CheckCopy = &FXCheckPixelMap<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckCopyToPlanes = &FXCheckCopyToPlanes<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckSet = &FXCheckSetScalar<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckSetChannels = &FXCheckSetChannels<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckSwapChannels = &FXCheckSwapChannels<T, L>;
template <class T, TFXLayout L>
inline constexpr auto CheckSwapChannelsInPlace = &FXCheckSwapChannelsInPlace<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckPackRgb555 = &FXCheckPackRgb16<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckPackRgb565 = &FXCheckPackRgb16<T, L>;

FX_DEFINE_FAMILY(CopySet, FX_COPY_SET_PRIMITIVES)

} // namespace framix::prim
