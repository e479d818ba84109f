// SPDX-License-Identifier: MIT
// Uniform and Gaussian noise added in place, from IPP's generator: the family's list.
#pragma once

#include "framework/primitives/FXFamily.h"
#include "framework/primitives/FXIsa.h"

#include <cmath>
#include <cstddef>
#include <cstdint>

// X(name, Op, Shape, T, L); see FXFamily.h. The 16u variants take 16-bit bounds (mean, stdev),
// as modern IPP's 16u functions do.
#define FX_NOISE_PRIMITIVES(X)                                                                     \
    X(ippiAddRandUniform_Direct_8u_C1IR, AddRandUniform, AddNoise, Ipp8u, C1)                      \
    X(ippiAddRandUniform_Direct_8u_C3IR, AddRandUniform, AddNoise, Ipp8u, C3)                      \
    X(ippiAddRandUniform_Direct_8u_C4IR, AddRandUniform, AddNoise, Ipp8u, C4)                      \
    X(ippiAddRandUniform_Direct_8u_AC4IR, AddRandUniform, AddNoise, Ipp8u, AC4)                    \
    X(ippiAddRandUniform_Direct_16u_C1IR, AddRandUniform, AddNoise, Ipp16u, C1)                    \
    X(ippiAddRandGauss_Direct_8u_C1IR, AddRandGauss, AddNoise, Ipp8u, C1)                          \
    X(ippiAddRandGauss_Direct_8u_C3IR, AddRandGauss, AddNoise, Ipp8u, C3)                          \
    X(ippiAddRandGauss_Direct_8u_C4IR, AddRandGauss, AddNoise, Ipp8u, C4)                          \
    X(ippiAddRandGauss_Direct_8u_AC4IR, AddRandGauss, AddNoise, Ipp8u, AC4)                        \
    X(ippiAddRandGauss_Direct_16u_C1IR, AddRandGauss, AddNoise, Ipp16u, C1)

namespace framix::prim {

const TFXFamily& NoiseFamily();

inline namespace FX_ISA_NS {

// IPP's uniform generator, as measured against IPP 2022 (whose signal generator state shows the
// same words): a subtract-with-borrow sequence y combined with a linear congruential sequence z.
//   seed:   y0 = seed, y-1 = 69069 * y0 + 1013904243, y-2 = 69069 * y-1 + 1013904243,
//           borrow = 1, z = 1131199209
//   step:   y = y[n-2] - y[n-3] - borrow (mod 2^32); if y is negative as a signed 32-bit word,
//           y -= 18 and borrow = 1, else borrow = 0
//           z = 69069 * z + 1013904243
//           the output is the signed 32-bit word y + z
// The seed a call returns is the last y, so the next call starts a fresh sequence from it.
// The sign test on the wrapped word (not on the true difference) makes y no plain
// subtract-with-borrow sequence modulo 2^32 - 18: two states can share a successor, so it has
// no multiplicative jump-ahead and every word waits on the one before.
inline constexpr std::uint32_t kFXLcgMul = 69069u, kFXLcgAdd = 1013904243u;
inline constexpr std::uint32_t kFXLcgStart = 1131199209u;

// The generator one output at a time, exactly as described above (the reference runs it).
class TFXIppRandom {
public:
    explicit TFXIppRandom(std::uint32_t seed)
        : FY{seed, kFXLcgMul * seed + kFXLcgAdd,
             kFXLcgMul * (kFXLcgMul * seed + kFXLcgAdd) + kFXLcgAdd}
    {
    }

    std::int32_t Next()
    {
        std::uint32_t y = FY[1] - FY[2] - FBorrow;
        FBorrow = std::int32_t(y) < 0 ? 1u : 0u;
        y -= 18u * FBorrow;
        FY[2] = FY[1], FY[1] = FY[0], FY[0] = y;
        FZ = kFXLcgMul * FZ + kFXLcgAdd;
        return std::int32_t(y + FZ);
    }

    // The seed word after the outputs taken so far.
    std::uint32_t Seed() const { return FY[0]; }

private:
    std::uint32_t FY[3]; // newest first
    std::uint32_t FBorrow = 1;
    std::uint32_t FZ = kFXLcgStart;
};

// v rounded to the nearest integer, halves to even, for |v| < 2^51: adding 1.5 * 2^52 leaves
// no fraction bits, so the default rounding does it (std::nearbyint can be a library call).
inline std::int64_t FXRoundHalfEven(double v)
{
    constexpr double kShift = 6755399441055744.0;
    return std::int64_t((v + kShift) - kShift);
}

// Marsaglia's polar method on two outputs scaled to [-1, 1) (output / 2^31): pairs with
// s = v1^2 + v2^2 outside (0, 1) are drawn again; f = sqrt(-2 ln s / s); v1 * f is used first,
// v2 * f next, and an unused second value is dropped at the end of the call.
class TFXIppGauss {
public:
    explicit TFXIppGauss(TFXIppRandom& rnd) : FRnd(rnd) {}

    double Next()
    {
        if (FCached) {
            FCached = false;
            return FSecond;
        }
        double v1, v2, s;
        do {
            v1 = double(FRnd.Next()) / 2147483648.0;
            v2 = double(FRnd.Next()) / 2147483648.0;
            s = v1 * v1 + v2 * v2;
        } while (s >= 1.0 || s == 0.0);
        const double f = std::sqrt(-2.0 * std::log(s) / s);
        FSecond = v2 * f;
        FCached = true;
        return v1 * f;
    }

private:
    TFXIppRandom& FRnd;
    bool FCached = false;
    double FSecond = 0.0;
};

// v + noise saturated to the sample range.
template <class T> T FXAddSaturated(T v, std::int64_t noise)
{
    const std::int64_t sum = std::int64_t(v) + noise;
    return sum < 0 ? T(0) : sum > T(~T(0)) ? T(~T(0)) : T(sum);
}

// Adds noise() to every processed channel, pixel by pixel in row order, saturating.
template <class T, TFXLayout L, class Noise>
void FXAddNoise(T* pSrcDst, int srcDstStep, IppiSize roiSize, Noise noise)
{
    for (int y = 0; y < roiSize.height; ++y) {
        T* row = reinterpret_cast<T*>(reinterpret_cast<Ipp8u*>(pSrcDst) +
                                      std::ptrdiff_t(y) * srcDstStep);
        for (int x = 0; x < roiSize.width; ++x)
            for (int c = 0; c < FXProcessedChannels(L); ++c) {
                T& v = row[std::ptrdiff_t(x) * FXChannels(L) + c];
                v = FXAddSaturated(v, noise());
            }
    }
}

} // namespace FX_ISA_NS
} // namespace framix::prim
