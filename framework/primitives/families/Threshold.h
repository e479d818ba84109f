// SPDX-License-Identifier: MIT
// Threshold with replacement values (above a limit, below a limit, or both), per channel: the
// family's list.
#pragma once

#include "framework/primitives/FXFamily.h"

// X(name, Op, Shape, T, L); see FXFamily.h. The limits and values are given per colour channel
// in storage order; AC4 leaves alpha untouched.
#define FX_THRESHOLD_PRIMITIVES(X)                                                                 \
    X(ippiThreshold_GTVal_8u_C3R, ThresholdGTVal, Threshold, Ipp8u, C3)                            \
    X(ippiThreshold_GTVal_8u_AC4R, ThresholdGTVal, Threshold, Ipp8u, AC4)                          \
    X(ippiThreshold_LTVal_8u_C3R, ThresholdLTVal, Threshold, Ipp8u, C3)                            \
    X(ippiThreshold_LTVal_8u_AC4R, ThresholdLTVal, Threshold, Ipp8u, AC4)                          \
    X(ippiThreshold_LTValGTVal_8u_C3R, ThresholdLTValGTVal, ThresholdBoth, Ipp8u, C3)              \
    X(ippiThreshold_LTValGTVal_8u_AC4R, ThresholdLTValGTVal, ThresholdBoth, Ipp8u, AC4)

namespace framix::prim {
const TFXFamily& ThresholdFamily();
} // namespace framix::prim
