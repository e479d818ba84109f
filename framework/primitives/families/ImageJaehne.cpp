// SPDX-License-Identifier: MIT
// The Jaehne test image: argument checks and the family's entry point.
#include "framework/primitives/families/ImageJaehne.h"

#include "framework/primitives/FXArgChecks.h"

namespace framix::prim {

template <class T, TFXLayout L> inline constexpr auto CheckImageJaehne = &FXCheckTestImage<T, L>;

FX_DEFINE_FAMILY(ImageJaehne, FX_IMAGE_JAEHNE_PRIMITIVES)

} // namespace framix::prim
