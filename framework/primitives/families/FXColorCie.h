// SPDX-License-Identifier: MIT
// The single-precision arithmetic of the conversions through CIE XYZ (LUV, Lab, both ways),
// shared by their references and vector kernels: every step is one IEEE float operation in a
// fixed order (no library call, no fused multiply-add), so a vector lane repeats it exactly.
#pragma once

#include <bit>
#include <cstdint>

namespace framix::prim {

// Rec.709 primaries with a D65 white: XYZ (0 ... 1 scale) of 8-bit RGB, the 1/255 folded in.
// Lab divides X and Z by the white's; those rows have the division folded in too.
struct TFXCieMatrix {
    float W[3][3];
};

inline constexpr double kFXCieXn = 0.950455, kFXCieZn = 1.088753;

inline constexpr double kFXCieToXyz[3][3] = {
    {0.412453, 0.357580, 0.180423}, {0.212671, 0.715160, 0.072169}, {0.019334, 0.119193, 0.950227}};
inline constexpr double kFXCieToRgb[3][3] = {{3.240479, -1.53715, -0.498535},
                                             {-0.969256, 1.875991, 0.041556},
                                             {0.055648, -0.204043, 1.057311}};

// m with row i (byRow) or column i scaled by scale[i], in float.
constexpr TFXCieMatrix FXCieScaled(const double (&m)[3][3], const double (&scale)[3], bool byRow)
{
    TFXCieMatrix out{};
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            out.W[i][j] = float(m[i][j] * scale[byRow ? i : j]);
    return out;
}

inline constexpr TFXCieMatrix kFXRgbToXyzCie =
    FXCieScaled(kFXCieToXyz, {1.0 / 255.0, 1.0 / 255.0, 1.0 / 255.0}, true);
inline constexpr TFXCieMatrix kFXRgbToXyzLab =
    FXCieScaled(kFXCieToXyz, {1.0 / kFXCieXn / 255.0, 1.0 / 255.0, 1.0 / kFXCieZn / 255.0}, true);

// The inverse: linear RGB on the 0 ... 255 scale from XYZ (from X / Xn, Y, Z / Zn for Lab).
inline constexpr TFXCieMatrix kFXXyzToRgbCie =
    FXCieScaled(kFXCieToRgb, {255.0, 255.0, 255.0}, false);
inline constexpr TFXCieMatrix kFXXyzToRgbLab =
    FXCieScaled(kFXCieToRgb, {kFXCieXn * 255.0, 255.0, kFXCieZn * 255.0}, false);

// Below the knee L and f(t) are linear.
inline constexpr float kFXCieKnee = 0.008856f;
inline constexpr float kFXCieSlopeL = 903.3f, kFXCieSlopeF = 7.787f;
inline constexpr float kFXCieOffsetF = float(16.0 / 116.0);
// White's chromaticity u', v' (D65: x 0.312713, y 0.329016).
inline constexpr float kFXCieUn = float(4 * 0.312713 / (-2 * 0.312713 + 12 * 0.329016 + 3));
inline constexpr float kFXCieVn = float(9 * 0.329016 / (-2 * 0.312713 + 12 * 0.329016 + 3));

// The inverse cube root's first guess: the exponent divided by three through the float bits
// (an integer division by three done as a float multiplication, truncated, which every level
// has), a few percent off; each of three Newton steps about squares the relative error.
inline constexpr std::int32_t kFXCieRootMagic = 0x54A21D2A;
inline constexpr float kFXCieThird = float(1.0 / 3.0), kFXCieFourThirds = float(4.0 / 3.0);

// The cube root of t in [kFXCieKnee, 2) to within a few float ulps.
inline float FXCieCubeRoot(float t)
{
    const std::int32_t bits = std::bit_cast<std::int32_t>(t);
    float r = std::bit_cast<float>(kFXCieRootMagic - std::int32_t(float(bits) * kFXCieThird));
    const float tThird = t * kFXCieThird;
    for (int i = 0; i < 3; ++i) {
        const float r3 = (r * r) * r;
        r = r * (kFXCieFourThirds - tThird * r3);
    }
    return t * (r * r);
}

} // namespace framix::prim
