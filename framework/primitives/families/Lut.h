// SPDX-License-Identifier: MIT
// Look-up tables (step, linear and cubic mappings through level/value tables, and the 32-bit
// palette): the family's list and the mapping that its reference and its kernels share.
#pragma once

#include "framework/primitives/FXFamily.h"
#include "framework/primitives/FXIsa.h"

#include <array>

// X(name, Op, Shape, T, L); see FXFamily.h. One-channel forms take one table, the others one
// table per processed channel.
#define FX_LUT_PRIMITIVES(X)                                                                       \
    X(ippiLUT_8u_C1R, Lut, Lut, Ipp8u, C1)                                                         \
    X(ippiLUT_8u_C3R, LutChannels, LutChannels, Ipp8u, C3)                                         \
    X(ippiLUT_8u_C4R, LutChannels, LutChannels, Ipp8u, C4)                                         \
    X(ippiLUT_16u_C1R, Lut, Lut, Ipp16u, C1)                                                       \
    X(ippiLUT_Linear_8u_C1R, LutLinear, Lut, Ipp8u, C1)                                            \
    X(ippiLUT_Linear_8u_C3R, LutLinearChannels, LutChannels, Ipp8u, C3)                            \
    X(ippiLUT_Linear_8u_C4R, LutLinearChannels, LutChannels, Ipp8u, C4)                            \
    X(ippiLUT_Linear_8u_AC4R, LutLinearChannels, LutChannels, Ipp8u, AC4)                          \
    X(ippiLUT_Linear_16u_C1R, LutLinear, Lut, Ipp16u, C1)                                          \
    X(ippiLUT_Cubic_8u_C1R, LutCubic, Lut, Ipp8u, C1)                                              \
    X(ippiLUT_Cubic_8u_C3R, LutCubicChannels, LutChannels, Ipp8u, C3)                              \
    X(ippiLUT_Cubic_8u_C4R, LutCubicChannels, LutChannels, Ipp8u, C4)                              \
    X(ippiLUT_Cubic_16u_C1R, LutCubic, Lut, Ipp16u, C1)                                            \
    X(ippiLUTPalette_8u32u_C1R, LutPalette, LutPalette, Ipp8u, C1)

namespace framix::prim {

const TFXFamily& LutFamily();

// How a sample between two levels is mapped.
enum class TFXLutKind { Step, Linear, Cubic };

// One channel's table as the caller passes it: Count levels and as many values.
struct TFXLutTable {
    const Ipp32s* Values;
    const Ipp32s* Levels;
    int Count; // >= 2
};

// The sample that `table` maps v (0 ... maxValue) to, saturated to 0 ... maxValue:
// - v >= the last level, or v inside no interval [L[k], L[k+1]): v itself;
// - else, for the last such interval k (the only one when the levels ascend):
//   Step: P[k]; Linear: P[k] + (v - L[k]) (P[k+1] - P[k]) / (L[k+1] - L[k]);
//   Cubic (4 levels or more): the cubic through the four points k-1 ... k+2, the window moved
//   inside the table at its ends (fewer than 4 levels: Linear);
//   rounded to nearest, halves upwards.
// Defined with the reference (Lut.ref.cpp); the reference applies it to every sample.
Ipp32s FXLutValue(TFXLutKind kind, const TFXLutTable& table, int v, int maxValue);

// out[v] = FXLutValue(kind, table, v, max) for every v of the sample type (256 or 65536
// entries), computed interval by interval with exact forward differences (Lut.ref.cpp). The
// level kernels map through it.
void FXLutFill(TFXLutKind kind, const TFXLutTable& table, Ipp8u* out);
void FXLutFill(TFXLutKind kind, const TFXLutTable& table, Ipp16u* out);

inline namespace FX_ISA_NS {

// The tables of the processed channels, from the LutChannels shape's per-channel arrays.
template <TFXLayout L>
std::array<TFXLutTable, 4> FXLutTables(const Ipp32s* const* pValues, const Ipp32s* const* pLevels,
                                       const int* nLevels)
{
    std::array<TFXLutTable, 4> tables{};
    for (int c = 0; c < FXProcessedChannels(L); ++c)
        tables[c] = {pValues[c], pLevels[c], nLevels[c]};
    return tables;
}

} // namespace FX_ISA_NS

} // namespace framix::prim
