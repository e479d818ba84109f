// SPDX-License-Identifier: MIT
// Uniform and Gaussian noise added in place, from IPP's generator: the family's list.
#pragma once

#include "framework/primitives/FXFamily.h"
#include "framework/primitives/FXIsa.h"

#include <algorithm>
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
class TFXIppRandom {
public:
    static constexpr int kMaxTake = 64;

    explicit TFXIppRandom(std::uint32_t seed)
        : FY{seed, kMul * seed + kAdd, kMul * (kMul * seed + kAdd) + kAdd}
    {
        std::uint32_t z = 1131199209u;
        for (std::uint32_t& next : FZNext)
            next = z = kMul * z + kAdd;
    }

    std::int32_t Next() { return *Take(1); }

    // The next n outputs (n <= kMaxTake), consecutive.
    const std::int32_t* Take(int n)
    {
        if (FCount - FAt < n)
            Refill();
        const std::int32_t* p = FOut + FAt;
        FAt += n;
        return p;
    }

    // The seed word after the outputs taken so far.
    std::uint32_t Seed() const { return FAt == 0 ? FY[0] : FYs[FAt - 1]; }

private:
    static constexpr std::uint32_t kMul = 69069u, kAdd = 1013904243u;
    // Four steps of z at once: z(n + 4) = kMul^4 z(n) + kAdd (kMul^3 + kMul^2 + kMul + 1).
    static constexpr std::uint32_t kMul4 = kMul * kMul * kMul * kMul;
    static constexpr std::uint32_t kAdd4 = kAdd * (kMul * kMul * kMul + kMul * kMul + kMul + 1u);
    static constexpr int kBlock = 252; // a multiple of 3 (the y rotation) and 4 (the z chains)

    // Outputs ahead of use, after the ones not taken yet: y is one chain (each word needs the
    // previous borrow), z four interleaved ones, so neither waits on a multiplication.
    void Refill()
    {
        const int kept = FCount - FAt;
        std::copy(FOut + FAt, FOut + FCount, FOut);
        std::copy(FYs + FAt, FYs + FCount, FYs);
        std::uint32_t* ys = FYs + kept;
        // newest, previous, oldest; three steps per turn, each overwriting the oldest
        std::uint32_t a = FY[0], b = FY[1], c = FY[2], borrow = FBorrow;
        auto step = [&borrow](std::uint32_t previous, std::uint32_t& oldest) {
            const std::uint32_t y = previous - oldest - borrow;
            borrow = y >> 31; // negative as a signed word (no branch: it is a coin toss)
            oldest = y - 18 * borrow;
            return oldest;
        };
        for (int i = 0; i < kBlock; i += 3) {
            ys[i] = step(b, c);     // newest c, previous a, oldest b
            ys[i + 1] = step(a, b); // newest b, previous c, oldest a
            ys[i + 2] = step(c, a); // newest a, previous b, oldest c
        }
        FY[0] = a, FY[1] = b, FY[2] = c, FBorrow = borrow;
        std::uint32_t z[4] = {FZNext[0], FZNext[1], FZNext[2], FZNext[3]};
        for (int i = 0; i < kBlock; i += 4)
            for (int k = 0; k < 4; ++k) {
                FOut[kept + i + k] = std::int32_t(ys[i + k] + z[k]);
                z[k] = kMul4 * z[k] + kAdd4;
            }
        std::copy(z, z + 4, FZNext);
        FAt = 0;
        FCount = kept + kBlock;
    }

    std::uint32_t FY[3]; // newest first
    std::uint32_t FBorrow = 1;
    std::uint32_t FZNext[4]; // z of the next four outputs generated
    std::uint32_t FYs[kBlock + kMaxTake];
    std::int32_t FOut[kBlock + kMaxTake];
    int FAt = 0, FCount = 0;
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

// Gaussian noise: mean + stdev * g, rounded to nearest with halves to even (every level runs
// this: the polar method's redraws leave nothing to vectorise).
template <class T, TFXLayout L>
IppStatus FXAddRandGauss(T* pSrcDst, int srcDstStep, IppiSize roiSize, T mean, T stdev,
                         unsigned int* pSeed)
{
    TFXIppRandom rnd(*pSeed);
    TFXIppGauss gauss(rnd);
    FXAddNoise<T, L>(pSrcDst, srcDstStep, roiSize,
                     [&] { return FXRoundHalfEven(double(mean) + double(stdev) * gauss.Next()); });
    *pSeed = rnd.Seed();
    return ippStsNoErr;
}

} // namespace FX_ISA_NS
} // namespace framix::prim
