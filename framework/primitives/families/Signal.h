// SPDX-License-Identifier: MIT
// One-dimensional (signal) primitives: fill, copy, scaled 32-bit arithmetic and shifts, polar to
// Cartesian conversion. The family's list.
#pragma once

#include "framework/primitives/FXFamily.h"

// X(name, Op, Shape, T, L); see FXFamily.h. The layout is C1 throughout.
#define FX_SIGNAL_PRIMITIVES(X)                                                                    \
    X(ippsSet_8u, SignalSet, SignalSet, Ipp8u, C1)                                                 \
    X(ippsSet_32s, SignalSet, SignalSet, Ipp32s, C1)                                               \
    X(ippsCopy_8u, SignalCopy, SignalCopy, Ipp8u, C1)                                              \
    X(ippsAdd_32s_ISfs, SignalAdd, SignalAddScaled, Ipp32s, C1)                                    \
    X(ippsMulC_32s_ISfs, SignalMulC, SignalMulCScaled, Ipp32s, C1)                                 \
    X(ippsRShiftC_32s_I, SignalRShiftC, SignalShiftC, Ipp32s, C1)                                  \
    X(ippsPolarToCart_64f, PolarToCart, SignalPolarToCart, Ipp64f, C1)

namespace framix::prim {
const TFXFamily& SignalFamily();
} // namespace framix::prim
