// SPDX-License-Identifier: MIT
// TPtr_<name>: the pointer type of every IPP-named primitive, with IPP's exact argument list.
#pragma once

#include "framework/primitives/families/FXFamilies.h"

#define FX_IPP_POINTER_TYPE(name, Op, Shape, T, L)                                                 \
    using TPtr_##name = ::framix::prim::FXShapeFn<::framix::prim::TFXShape::Shape, T>*;
#define FX_IPP_FAMILY_POINTER_TYPES(Fam, LIST) LIST(FX_IPP_POINTER_TYPE)

namespace framix::ipp {
FX_PRIMITIVE_FAMILIES(FX_IPP_FAMILY_POINTER_TYPES)
} // namespace framix::ipp

#undef FX_IPP_FAMILY_POINTER_TYPES
#undef FX_IPP_POINTER_TYPE
