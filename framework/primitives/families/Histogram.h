// SPDX-License-Identifier: MIT
// Histograms with evenly spaced levels: the family's list and the level rule its reference and
// kernels share.
#pragma once

#include "framework/primitives/FXFamily.h"

// X(name, Op, Shape, T, L); see FXFamily.h. Multi-channel forms count every processed channel
// into its own histogram; AC4 does not count alpha.
#define FX_HISTOGRAM_PRIMITIVES(X)                                                                 \
    X(ippiHistogramEven_8u_C1R, HistogramEven, Histogram, Ipp8u, C1)                               \
    X(ippiHistogramEven_8u_C3R, HistogramEvenChannels, HistogramChannels, Ipp8u, C3)               \
    X(ippiHistogramEven_8u_C4R, HistogramEvenChannels, HistogramChannels, Ipp8u, C4)               \
    X(ippiHistogramEven_8u_AC4R, HistogramEvenChannels, HistogramChannels, Ipp8u, AC4)             \
    X(ippiHistogramEven_16u_C1R, HistogramEven, Histogram, Ipp16u, C1)

namespace framix::prim {

const TFXFamily& HistogramFamily();

// Writes the nLevels (>= 2) levels from lowerLevel to upperLevel: the nLevels - 1 bins are
// (upper - lower) / (nLevels - 1) wide, and the first (upper - lower) % (nLevels - 1) of them
// one wider (C division, so with upper < lower the levels descend and no bin holds anything).
// Bin k counts the samples v with pLevels[k] <= v < pLevels[k + 1]. Histogram.ref.cpp.
void FXHistogramLevels(Ipp32s* pLevels, int nLevels, Ipp32s lowerLevel, Ipp32s upperLevel);

} // namespace framix::prim
