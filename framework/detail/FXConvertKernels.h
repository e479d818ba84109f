// SPDX-License-Identifier: MIT
// Internals of pixel conversion: the integer formulas, the scalar reference and the vector levels.
#pragma once

#include <cstdint>

#include "framework/FXPlanes.h"
#include "framework/FXVideoFormat.h"

namespace framix::conv {

// ---------------------------------------------------------------- integer formulas
// Every path (scalar or vector) computes exactly these expressions, so results never depend on
// the machine. Coefficients are BT.601 scaled by 2^15 (to RGB: 2^13) and chosen so that grey
// stays grey: the luma weights sum to 2^15 and each chroma row sums to 0.

// Luma of 8- or 16-bit B, G, R (weights 0.299, 0.587, 0.114).
inline constexpr int kLumaR = 9798, kLumaG = 19235, kLumaB = 3735;
constexpr std::uint32_t FXLuma(std::uint32_t b, std::uint32_t g, std::uint32_t r)
{
    return (kLumaR * r + kLumaG * g + kLumaB * b + 16384) >> 15;
}

// 8-bit RGB -> limited-range Y'CbCr (Y 16..235, C 16..240).
inline constexpr int kYR = 8414, kYG = 16520, kYB = 3208;
inline constexpr int kUR = -4857, kUG = -9535, kUB = 14392;
inline constexpr int kVR = 14392, kVG = -12052, kVB = -2340;
constexpr int FXRgbToY(int b, int g, int r)
{
    return 16 + ((kYR * r + kYG * g + kYB * b + 16384) >> 15);
}
// Chroma from the sums of B, G, R over n covered pixels (n = 1, 2 or 4): the rounded mean.
constexpr int FXSumsToU(int sb, int sg, int sr, int n)
{
    return 128 + (((kUR * sr + kUG * sg + kUB * sb) * (4 / n) + 65536) >> 17);
}
constexpr int FXSumsToV(int sb, int sg, int sr, int n)
{
    return 128 + (((kVR * sr + kVG * sg + kVB * sb) * (4 / n) + 65536) >> 17);
}

// Limited-range Y'CbCr -> 8-bit RGB, clamped to 0..255.
inline constexpr int kCY = 9539, kCRV = 13075, kCGU = -3209, kCGV = -6660, kCBU = 16525;
inline constexpr int kYBias = 4096 - 16 * kCY; // folds the rounding half and the Y offset
constexpr int FXClamp8(int v)
{
    return v < 0 ? 0 : v > 255 ? 255 : v;
}
constexpr int FXYuvToR(int y, int u, int v)
{
    return FXClamp8((kCY * y + kYBias + kCRV * (v - 128)) >> 13);
}
constexpr int FXYuvToG(int y, int u, int v)
{
    return FXClamp8((kCY * y + kYBias + kCGU * (u - 128) + kCGV * (v - 128)) >> 13);
}
constexpr int FXYuvToB(int y, int u, int v)
{
    return FXClamp8((kCY * y + kYBias + kCBU * (u - 128)) >> 13);
}

// Bit depth changes: 8 -> 16 replicates the byte; 16 -> 8 rounds to nearest (exact inverse).
constexpr std::uint32_t FXWiden8(std::uint32_t v)
{
    return v * 257;
}
constexpr std::uint32_t FXNarrow16(std::uint32_t v)
{
    return (v * 255 + 32767) / 65535;
}

// ---------------------------------------------------------------- kernels and levels
// Converts a whole image; arguments are already checked.
using TFXConvertKernel = void (*)(const TFXConstPlanes& src, const TFXPlanes& dst, int width,
                                  int height);

// The scalar reference: defines the result of every pair, including same-format copies.
void ConvertReference(TFXVideoFormat srcFormat, const TFXConstPlanes& src, TFXVideoFormat dstFormat,
                      const TFXPlanes& dst, int width, int height);

enum class TFXConvertLevel : int { Ref, Sse41, Avx2, Avx512 };
inline constexpr int kConvertLevelCount = 4;
const char* FXConvertLevelName(TFXConvertLevel level);

// The pairs that have vector paths, in table order.
#define FX_CONVERT_FAST_PAIRS(X)                                                                   \
    X(vfRGB24, vfRGB32)                                                                            \
    X(vfRGB32, vfRGB24)                                                                            \
    X(vfRGB24, vfGray8)                                                                            \
    X(vfRGB32, vfGray8)                                                                            \
    X(vfGray8, vfRGB24)                                                                            \
    X(vfGray8, vfRGB32)                                                                            \
    X(vfGray8, vfGray16)                                                                           \
    X(vfGray16, vfGray8)                                                                           \
    X(vfI420, vfRGB24)                                                                             \
    X(vfYV12, vfRGB24)                                                                             \
    X(vfNV12, vfRGB24)                                                                             \
    X(vfI422, vfRGB24)                                                                             \
    X(vfI444, vfRGB24)                                                                             \
    X(vfRGB24, vfI420)                                                                             \
    X(vfRGB24, vfYV12)                                                                             \
    X(vfRGB24, vfNV12)                                                                             \
    X(vfRGB24, vfI422)                                                                             \
    X(vfRGB24, vfI444)                                                                             \
    X(vfYUY2, vfRGB24)                                                                             \
    X(vfUYVY, vfRGB24)

enum class TFXFastPair : int {
#define FX_FAST_PAIR_ENUM(s, d) s##_##d,
    FX_CONVERT_FAST_PAIRS(FX_FAST_PAIR_ENUM)
#undef FX_FAST_PAIR_ENUM
        Count
};
inline constexpr int kFastPairCount = int(TFXFastPair::Count);

struct TFXFastPairInfo {
    TFXVideoFormat Src;
    TFXVideoFormat Dst;
};
inline constexpr TFXFastPairInfo kFastPairs[kFastPairCount] = {
#define FX_FAST_PAIR_INFO(s, d) {s, d},
    FX_CONVERT_FAST_PAIRS(FX_FAST_PAIR_INFO)
#undef FX_FAST_PAIR_INFO
};

// One level's kernels, indexed by TFXFastPair (null where the level has none).
using TFXFastKernelTable = TFXConvertKernel[kFastPairCount];
const TFXFastKernelTable& FastKernelsSse41();
const TFXFastKernelTable& FastKernelsAvx2();
const TFXFastKernelTable& FastKernelsAvx512();

// True when this CPU runs the level (the reference always runs).
bool FXConvertLevelSupported(TFXConvertLevel level);
// The best supported level, capped by the FRAMIX_SIMD environment variable (ref, sse41, avx2,
// avx512) when it is set; chosen once.
TFXConvertLevel FXSelectedConvertLevel();
// The level's kernel for a pair, or null when the pair has no kernel at that level.
TFXConvertKernel FXFastKernel(TFXVideoFormat srcFormat, TFXVideoFormat dstFormat,
                              TFXConvertLevel level);

} // namespace framix::conv
