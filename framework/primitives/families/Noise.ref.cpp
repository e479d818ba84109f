// SPDX-License-Identifier: MIT
// Noise, reference (and only) implementation: IPP's generator, reproduced sample for sample.
#include "framework/primitives/families/Noise.h"

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/FXRound.h"

#include <cmath>
#include <cstdint>

namespace framix::prim::ref {
namespace {

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
    explicit TFXIppRandom(std::uint32_t seed)
        : FY{seed, kMul * seed + kAdd, kMul * (kMul * seed + kAdd) + kAdd}
    {
    }

    std::int32_t Next()
    {
        std::uint32_t y = FY[1] - FY[2] - FBorrow;
        FBorrow = std::int32_t(y) < 0 ? 1 : 0;
        if (FBorrow != 0)
            y -= 18;
        FY[2] = FY[1];
        FY[1] = FY[0];
        FY[0] = y;
        FZ = kMul * FZ + kAdd;
        return std::int32_t(y + FZ);
    }

    std::uint32_t Seed() const { return FY[0]; }

private:
    static constexpr std::uint32_t kMul = 69069u, kAdd = 1013904243u;
    std::uint32_t FY[3]; // newest first
    std::uint32_t FBorrow = 1;
    std::uint32_t FZ = 1131199209u;
};

// Adds noise() to every processed channel, pixel by pixel in row order, saturating.
template <class T, TFXLayout L, class Noise>
void AddToImage(T* pSrcDst, int srcDstStep, IppiSize roiSize, Noise noise)
{
    for (int y = 0; y < roiSize.height; ++y) {
        T* row = FXRowAt(pSrcDst, srcDstStep, y);
        for (int x = 0; x < roiSize.width; ++x)
            for (int c = 0; c < FXProcessedChannels(L); ++c) {
                T& v = row[std::ptrdiff_t(x) * FXChannels(L) + c];
                v = FXSaturate<T>(std::int64_t(v) + noise());
            }
    }
}

} // namespace

// Sample = (low + high) / 2 + output * (high - low) / 2^32 in double, rounded to nearest with
// halves to even, then added to the pixel and saturated. low > high is allowed (the range is
// mirrored).
template <class T, TFXLayout L>
IppStatus AddRandUniform(T* pSrcDst, int srcDstStep, IppiSize roiSize, T low, T high,
                         unsigned int* pSeed)
{
    TFXIppRandom rnd(*pSeed);
    const double mean = (double(low) + double(high)) / 2.0;
    const double scale = (double(high) - double(low)) / 4294967296.0;
    AddToImage<T, L>(pSrcDst, srcDstStep, roiSize, [&] {
        return std::int64_t(std::nearbyint(mean + double(rnd.Next()) * scale));
    });
    *pSeed = rnd.Seed();
    return ippStsNoErr;
}

// Marsaglia's polar method on two outputs scaled to [-1, 1) (output / 2^31): pairs with
// s = v1^2 + v2^2 outside (0, 1) are drawn again; f = sqrt(-2 ln s / s); v1 * f is used first,
// v2 * f next, and an unused second value is dropped at the end of the call. Sample = mean +
// stdev * g, rounded to nearest with halves to even.
template <class T, TFXLayout L>
IppStatus AddRandGauss(T* pSrcDst, int srcDstStep, IppiSize roiSize, T mean, T stdev,
                       unsigned int* pSeed)
{
    TFXIppRandom rnd(*pSeed);
    bool cached = false;
    double second = 0.0;
    AddToImage<T, L>(pSrcDst, srcDstStep, roiSize, [&] {
        double g;
        if (cached) {
            g = second;
            cached = false;
        } else {
            double v1, v2, s;
            do {
                v1 = double(rnd.Next()) / 2147483648.0;
                v2 = double(rnd.Next()) / 2147483648.0;
                s = v1 * v1 + v2 * v2;
            } while (s >= 1.0 || s == 0.0);
            const double f = std::sqrt(-2.0 * std::log(s) / s);
            g = v1 * f;
            second = v2 * f;
            cached = true;
        }
        return std::int64_t(std::nearbyint(double(mean) + double(stdev) * g));
    });
    *pSeed = rnd.Seed();
    return ippStsNoErr;
}

FX_KERNEL_TABLE(Noise, FX_NOISE_PRIMITIVES)

} // namespace framix::prim::ref
