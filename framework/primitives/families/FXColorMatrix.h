// SPDX-License-Identifier: MIT
// The fixed-point matrices of the linear colour conversions (YUV, YCbCr, XYZ, both ways), shared
// by their references and vector kernels.
#pragma once

namespace framix::prim {

// Output channel i of a pixel (c0, c1, c2) is (W[i][0] c0 + W[i][1] c1 + W[i][2] c2 + Bias[i])
// >> 16 (floor), saturated to 0 ... 255: weights in 16.16 fixed point (the published
// coefficients times 65536, rounded); the bias carries the offsets and, where the result rounds,
// one half.
struct TFXFixedMatrix {
    int W[3][3];
    int Bias[3];
};

inline constexpr int kFXFixedHalf = 1 << 15;

// The matrix applied to (c0 - o0, c1 - o1, c2 - o2): the input offsets folded into the bias.
constexpr TFXFixedMatrix FXCentred(TFXFixedMatrix m, int o0, int o1, int o2)
{
    for (int i = 0; i < 3; ++i)
        m.Bias[i] -= m.W[i][0] * o0 + m.W[i][1] * o1 + m.W[i][2] * o2;
    return m;
}

// Y'UV (truncating): Y = 0.299R + 0.587G + 0.114B, U = 0.492(B - Y) + 128,
// V = 0.877(R - Y) + 128.
inline constexpr TFXFixedMatrix kFXRgbToYuv = {
    {{19595, 38470, 7471}, {-9634, -18940, 28574}, {40305, -33751, -6554}},
    {0, 128 << 16, 128 << 16}};

// BT.601 studio range (rounding): Y in 16 ... 235, Cb and Cr around 128.
inline constexpr TFXFixedMatrix kFXRgbToYCbCr = {
    {{16843, 33030, 6423}, {-9699, -19071, 28770}, {28770, -24117, -4653}},
    {(16 << 16) + kFXFixedHalf, (128 << 16) + kFXFixedHalf, (128 << 16) + kFXFixedHalf}};

// CIE XYZ of linear Rec.709 primaries with a D65 white (truncating; Z of white saturates).
inline constexpr TFXFixedMatrix kFXRgbToXyz = {
    {{27031, 23434, 11824}, {13938, 46869, 4730}, {1267, 7811, 62274}}, {0, 0, 0}};

// R = Y + 1.140V, G = Y - 0.394U - 0.581V, B = Y + 2.032U (U, V around 128), truncated.
inline constexpr TFXFixedMatrix kFXYuvToRgb = FXCentred(
    {{{65536, 0, 74711}, {65536, -25821, -38076}, {65536, 133169, 0}}, {0, 0, 0}}, 0, 128, 128);

// BT.601 studio range back to full range, rounded.
inline constexpr TFXFixedMatrix kFXYCbCrToRgb =
    FXCentred({{{76284, 0, 104595}, {76284, -25690, -53281}, {76284, 132186, 0}},
               {kFXFixedHalf, kFXFixedHalf, kFXFixedHalf}},
              16, 128, 128);

// The inverse Rec.709 / D65 matrix, truncated.
inline constexpr TFXFixedMatrix kFXXyzToRgb = {
    {{212368, -100739, -32672}, {-63521, 122945, 2723}, {3647, -13372, 69292}}, {0, 0, 0}};

} // namespace framix::prim
