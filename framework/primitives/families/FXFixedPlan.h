// SPDX-License-Identifier: MIT
// How the vector kernels compute each fixed-point colour matrix exactly with 16-bit multiply-adds.
#pragma once

#include "framework/primitives/families/FXColorMatrix.h"

namespace framix::prim {

// The vector kernels hold a pixel per 32-bit lane, its channels placed in pairs of 16-bit words:
// a pair (lo, hi) is worth c_lo + 65536 c_hi as a 32-bit number. An output's sum (see
// FXColorMatrix.h) is built as its bias, plus small multiples of pairs' 32-bit values (they
// supply 65536 times a channel, for weights beyond 16 bits), plus multiply-adds of pairs with
// 16-bit weights. The sum is the matrix's exactly: FXFixedWeights derives the 16-bit weights as
// what the multiples leave of each channel's weight, and a plan is only accepted when every
// remainder fits the words available to it. Plans were chosen for the fewest vector operations.
struct TFXFixedPlan {
    int Pairs;      // 1 ... 3
    int Pair[3][2]; // channels of the low and the high word of each pair
    int Add[3][3];  // [output][pair]: multiple of the pair's 32-bit value added (-2 ... 2)
    bool Dot[3][3]; // [output][pair]: the pair multiplied and added with 16-bit weights
};

struct TFXFixedWeights {
    int W[3][3][2]; // [output][pair]: weights of the pair's low and high word
    bool Exact;     // every weight fits 16 bits and the weights sum to the matrix's
};

constexpr TFXFixedWeights FXFixedWeights(const TFXFixedMatrix& m, const TFXFixedPlan& plan)
{
    TFXFixedWeights out{};
    out.Exact = true;
    for (int r = 0; r < 3; ++r) {
        int rest[3] = {m.W[r][0], m.W[r][1], m.W[r][2]};
        for (int j = 0; j < plan.Pairs; ++j) {
            rest[plan.Pair[j][0]] -= plan.Add[r][j];
            rest[plan.Pair[j][1]] -= 65536 * plan.Add[r][j];
        }
        // What is left of a channel's weight is spread over its words in the multiplied pairs.
        for (int j = 0; j < plan.Pairs; ++j)
            for (int s = 0; s < 2 && plan.Dot[r][j]; ++s) {
                int& left = rest[plan.Pair[j][s]];
                const int w = left < -32768 ? -32768 : left > 32767 ? 32767 : left;
                out.W[r][j][s] = w;
                left -= w;
            }
        for (int c = 0; c < 3; ++c)
            out.Exact = out.Exact && rest[c] == 0;
    }
    return out;
}

// Forward: green's weight (and red's for V) exceeds 16 bits; two words carry green.
inline constexpr TFXFixedPlan kFXRgbToYuvPlan = {
    2, {{1, 0}, {1, 2}}, {{0, 0}, {0, 0}, {1, 0}}, {{true, true}, {true, true}, {true, true}}};
inline constexpr TFXFixedPlan kFXRgbToYCbCrPlan = {
    2, {{0, 1}, {1, 2}}, {}, {{true, true}, {true, true}, {true, true}}};
inline constexpr TFXFixedPlan kFXRgbToXyzPlan = {
    2, {{0, 1}, {1, 2}}, {{0, 0}, {0, 0}, {0, 1}}, {{true, true}, {true, true}, {true, true}}};

// Back to RGB: luma's weight is 65536 or more in every output, some chroma weights twice that.
inline constexpr TFXFixedPlan kFXYuvToRgbPlan = {3,
                                                 {{0, 1}, {0, 2}, {2, 0}},
                                                 {{0, 1, 1}, {0, 0, 0}, {2, 0, 0}},
                                                 {{false, false, true},
                                                  {true, true, true},
                                                  {true, false, true}}};
inline constexpr TFXFixedPlan kFXYCbCrToRgbPlan = {3,
                                                   {{0, 0}, {0, 1}, {2, 2}},
                                                   {{0, 0, 1}, {0, 0, 0}, {0, 2, 0}},
                                                   {{true, true, true},
                                                    {true, true, true},
                                                    {true, true, false}}};
inline constexpr TFXFixedPlan kFXXyzToRgbPlan = {3,
                                                 {{0, 0}, {0, 1}, {1, 2}},
                                                 {{2, -1, 0}, {-1, 1, 0}, {0, 0, 1}},
                                                 {{true, true, true},
                                                  {false, true, true},
                                                  {false, true, true}}};

} // namespace framix::prim
