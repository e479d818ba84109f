// SPDX-License-Identifier: MIT
// Mirroring about the horizontal axis, the vertical axis or both: the family's list.
#pragma once

#include "framework/primitives/FXFamily.h"

// X(name, Op, Shape, T, L); see FXFamily.h.
#define FX_MIRROR_PRIMITIVES(X)                                                                    \
    X(ippiMirror_8u_C1R, Mirror, Mirror, Ipp8u, C1)                                                \
    X(ippiMirror_8u_C3R, Mirror, Mirror, Ipp8u, C3)                                                \
    X(ippiMirror_8u_C4R, Mirror, Mirror, Ipp8u, C4)                                                \
    X(ippiMirror_8u_AC4R, Mirror, Mirror, Ipp8u, AC4)                                              \
    X(ippiMirror_16u_C1R, Mirror, Mirror, Ipp16u, C1)                                              \
    X(ippiMirror_8u_C4IR, MirrorInPlace, MirrorInPlace, Ipp8u, C4)

namespace framix::prim {
const TFXFamily& MirrorFamily();
} // namespace framix::prim
