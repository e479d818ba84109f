// SPDX-License-Identifier: MIT
// Noise, vector kernels: compiled once per level (see CMakeLists.txt). The generator's
// subtract-with-borrow words come from a tight scalar loop a chunk at a time; the congruential
// words, the scaling and the rounding run in vectors; the Gaussian draws its candidate pairs a
// batch at a time.
#include "framework/primitives/families/Noise.h"

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/simd/FXVec.h"

#include <algorithm>

namespace framix::prim::FX_SIMD_NS {

// The subtract-with-borrow words of TFXIppRandom, many per call. The borrow is kept as a mask
// (0 or ~0) so each step is add, shift, and, add; the three words rotate through a, b, c so no
// word is copied.
class TFXSwbWords {
public:
    explicit TFXSwbWords(std::uint32_t seed)
        : FA(seed), FB(kFXLcgMul * seed + kFXLcgAdd), FC(kFXLcgMul * FB + kFXLcgAdd)
    {
    }

    // The next n words. Dense: out[0 .. n). Rgb: three words to each four slots (the fourth,
    // alpha's, left alone), n a multiple of 3.
    template <bool Rgb> void Fill(Ipp32s* out, int n)
    {
        std::uint32_t a = FA, b = FB, c = FC, mask = FMask; // newest first
        auto step = [&mask](std::uint32_t previous, std::uint32_t& oldest) {
            const std::uint32_t t = previous - oldest + mask;
            mask = std::uint32_t(std::int32_t(t) >> 31);
            oldest = t + (mask & std::uint32_t(-18));
            return std::int32_t(oldest);
        };
        constexpr int kStride = Rgb ? 4 : 3;
        int i = 0;
        for (; i + 3 <= n; i += 3, out += kStride) {
            out[0] = step(b, c); // newest c, previous a, oldest b
            out[1] = step(a, b); // newest b, previous c, oldest a
            out[2] = step(c, a); // newest a again
        }
        for (; i < n; ++i) { // dense tails only
            *out++ = step(b, c);
            const std::uint32_t newest = c;
            c = b, b = a, a = newest;
        }
        FA = a, FB = b, FC = c, FMask = mask;
    }

    std::uint32_t Seed() const { return FA; }

private:
    std::uint32_t FA, FB, FC;
    std::uint32_t FMask = ~0u; // the initial borrow is 1
};

// k steps of the congruential sequence as one affine map z -> Mul * z + Add (mod 2^32).
struct TFXLcgSteps {
    std::uint32_t Mul = 1, Add = 0;

    constexpr std::uint32_t Apply(std::uint32_t z) const { return Mul * z + Add; }
    constexpr TFXLcgSteps Then(TFXLcgSteps next) const
    {
        return {next.Mul * Mul, next.Mul * Add + next.Add};
    }
};

constexpr TFXLcgSteps FXLcgSteps(unsigned k)
{
    TFXLcgSteps result, power{kFXLcgMul, kFXLcgAdd};
    for (; k != 0; k >>= 1, power = power.Then(power))
        if (k & 1u)
            result = result.Then(power);
    return result;
}

// The congruential words in vector lanes: lane i holds the word of sample Offset(i) of the
// current vector, and each vector moves every lane on by the samples it covers (Rgb: three
// per four lanes, the alpha lanes' words unused).
template <bool Rgb> class TFXLcgLanes {
public:
    static constexpr int kSamples = Rgb ? kLanes32 / 4 * 3 : kLanes32;

    // Lanes for the samples after z (the word of the sample before them).
    explicit TFXLcgLanes(std::uint32_t z)
    {
        Ipp32s lanes[kLanes32];
        for (int i = 0; i < kLanes32; ++i)
            lanes[i] = Ipp32s(FXLcgSteps(unsigned(Offset(i) + 1)).Apply(z));
        FZ = LoadI32(lanes);
    }

    // y + z of the current vector's samples; moves on to the next vector.
    VI32 Next(VI32 y)
    {
        static constexpr TFXLcgSteps kStep = FXLcgSteps(kSamples);
        const VI32 out = Add(y, FZ);
        FZ = Add(MulLo(FZ, SplatI32(int(kStep.Mul))), SplatI32(int(kStep.Add)));
        return out;
    }

private:
    static constexpr int Offset(int lane)
    {
        return Rgb ? lane / 4 * 3 + std::min(lane % 4, 2) : lane;
    }

    VI32 FZ;
};

// Uniform noise: the reference's operations lane by lane (mean + output * scale in double,
// rounded half to even, added and saturated), a chunk of whole pixels at a time. AC4 runs as
// four channels whose alpha lanes get noise 0.
template <class T, TFXLayout L>
IppStatus AddRandUniform(T* pSrcDst, int srcDstStep, IppiSize roiSize, T low, T high,
                         unsigned int* pSeed)
{
    constexpr bool kRgb = L == TFXLayout::AC4;
    constexpr int kCh = FXChannels(L);
    constexpr int kChunk = 2048; // slots per chunk
    constexpr int kChunkPixels = kChunk / kCh;
    static_assert(kLanes32 % 4 == 0, "AC4 vectors start on a pixel");

    const double mean = (double(low) + double(high)) / 2.0;
    const double scale = (double(high) - double(low)) / 4294967296.0;
    const VF64 vMean = SplatF64(mean), vScale = SplatF64(scale);
    Ipp32s keep[kLanes32];
    for (int i = 0; i < kLanes32; ++i)
        keep[i] = kRgb && i % 4 == 3 ? 0 : -1;
    const VI32 vKeep = LoadI32(keep);
    auto noise = [&](VI32 out) {
        const VI32 n = RoundToI32(RoundF64(Add(vMean, Mul(ToF64Low(out), vScale))),
                                  RoundF64(Add(vMean, Mul(ToF64High(out), vScale))));
        return kRgb ? And(n, vKeep) : n;
    };

    TFXSwbWords words(*pSeed);
    std::uint32_t z = kFXLcgStart;
    // Zeroed once: the alpha slots and the slack after a chunk are read but never used.
    Ipp32s ys[kChunk + kLanes32] = {};
    for (int y = 0; y < roiSize.height; ++y) {
        T* row = FXRowAt(pSrcDst, srcDstStep, y);
        for (int x = 0; x < roiSize.width; x += kChunkPixels) {
            const int pixels = std::min(kChunkPixels, roiSize.width - x);
            const int samples = pixels * FXProcessedChannels(L);
            words.Fill<kRgb>(ys, samples);
            TFXLcgLanes<kRgb> lanes(z);
            z = FXLcgSteps(unsigned(samples)).Apply(z);
            T* p = row + std::ptrdiff_t(x) * kCh;
            const int n = pixels * kCh;
            int j = 0;
            for (; j + kLanes32 <= n; j += kLanes32)
                StoreNarrow(p + j, Add(LoadWiden(p + j), noise(lanes.Next(LoadI32(ys + j)))));
            if (j < n) {
                Ipp32s tail[kLanes32];
                StoreI32(tail, noise(lanes.Next(LoadI32(ys + j))));
                for (int k = j; k < n; ++k)
                    p[k] = FXAddSaturated(p[k], tail[k - j]);
            }
        }
    }
    *pSeed = words.Seed();
    return ippStsNoErr;
}

// TFXIppGauss's values, rounded to noise, a batch of candidate pairs at a time: the pairs are
// drawn regardless of which get rejected, so a batch computes every s, keeps the accepted
// pairs without a branch, and then runs the logarithms and square roots of independent pairs
// back to back. Same operations, same order per value, so the same bits.
class TFXGaussBatch {
public:
    TFXGaussBatch(std::uint32_t seed, double mean, double stdev, long samples)
        : FWords(seed), FBefore(seed), FMean(mean), FStdev(stdev), FLeft(samples)
    {
    }

    // The next n noise values.
    void Take(Ipp32s* values, int n)
    {
        while (n > 0) {
            if (FAt == FCount)
                Refill();
            const int k = std::min(n, FCount - FAt);
            std::copy(FNoise + FAt, FNoise + FAt + k, values);
            FAt += k, values += k, n -= k, FLeft -= k;
        }
    }

    // The seed word after the pair of the last value taken (its unused second value dropped):
    // the batch's words are drawn again up to that pair.
    std::uint32_t Seed()
    {
        if (FCount == 0)
            return FWords.Seed();
        const int pairs = FPair[(FAt - 1) / 2] + 1;
        TFXSwbWords words = FBefore;
        words.Fill<false>(FY, 2 * pairs);
        return words.Seed();
    }

private:
    static constexpr int kMaxPairs = 256;

    void Refill()
    {
        // about 4/5 of the pairs are accepted: enough for what is left, and a few more
        const long wanted = (FLeft + 1) / 2 * 5 / 4 + 4;
        const int pairs = int(std::min<long>(kMaxPairs, wanted));
        FBefore = FWords;
        FWords.Fill<false>(FY, 2 * pairs);
        TFXLcgLanes<false> lanes(FZ);
        FZ = FXLcgSteps(unsigned(2 * pairs)).Apply(FZ);
        for (int j = 0; j < 2 * pairs; j += kLanes32)
            StoreI32(FY + j, lanes.Next(LoadI32(FY + j)));
        int accepted = 0;
        for (int p = 0; p < pairs; ++p) {
            const double v1 = double(FY[2 * p]) / 2147483648.0;
            const double v2 = double(FY[2 * p + 1]) / 2147483648.0;
            const double s = v1 * v1 + v2 * v2;
            FV1[accepted] = v1, FV2[accepted] = v2, FS[accepted] = s, FPair[accepted] = p;
            accepted += int(s < 1.0) & int(s != 0.0);
        }
        for (int j = 0; j < accepted; ++j) {
            const double f = std::sqrt(-2.0 * std::log(FS[j]) / FS[j]);
            FNoise[2 * j] = Ipp32s(FXRoundHalfEven(FMean + FStdev * (FV1[j] * f)));
            FNoise[2 * j + 1] = Ipp32s(FXRoundHalfEven(FMean + FStdev * (FV2[j] * f)));
        }
        FAt = 0;
        FCount = 2 * accepted;
    }

    TFXSwbWords FWords, FBefore; // now, and before the current batch
    std::uint32_t FZ = kFXLcgStart;
    double FMean, FStdev;
    long FLeft; // values still to be taken
    int FAt = 0, FCount = 0;
    // one batch: words then outputs (with a vector of slack), accepted pairs, noise values
    Ipp32s FY[2 * kMaxPairs + kLanes32] = {};
    double FV1[kMaxPairs], FV2[kMaxPairs], FS[kMaxPairs];
    int FPair[kMaxPairs];
    Ipp32s FNoise[2 * kMaxPairs];
};

// Gaussian noise: mean + stdev * g, rounded to nearest with halves to even, added in vectors
// (AC4 sample by sample: the logarithms dominate anyway).
template <class T, TFXLayout L>
IppStatus AddRandGauss(T* pSrcDst, int srcDstStep, IppiSize roiSize, T mean, T stdev,
                       unsigned int* pSeed)
{
    constexpr int kCh = FXChannels(L), kProcessed = FXProcessedChannels(L);
    constexpr int kChunkPixels = 256;
    TFXGaussBatch gauss(*pSeed, double(mean), double(stdev),
                        long(roiSize.width) * roiSize.height * kProcessed);
    Ipp32s values[kChunkPixels * 4];
    for (int y = 0; y < roiSize.height; ++y) {
        T* row = FXRowAt(pSrcDst, srcDstStep, y);
        for (int x = 0; x < roiSize.width; x += kChunkPixels) {
            const int pixels = std::min(kChunkPixels, roiSize.width - x);
            T* p = row + std::ptrdiff_t(x) * kCh;
            gauss.Take(values, pixels * kProcessed);
            if constexpr (L == TFXLayout::AC4) {
                for (int i = 0; i < pixels; ++i)
                    for (int c = 0; c < 3; ++c)
                        p[4 * i + c] = FXAddSaturated(p[4 * i + c], values[3 * i + c]);
            } else {
                const int n = pixels * kCh;
                int j = 0;
                for (; j + kLanes32 <= n; j += kLanes32)
                    StoreNarrow(p + j, Add(LoadWiden(p + j), LoadI32(values + j)));
                for (; j < n; ++j)
                    p[j] = FXAddSaturated(p[j], values[j]);
            }
        }
    }
    *pSeed = gauss.Seed();
    return ippStsNoErr;
}

FX_KERNEL_TABLE(Noise, FX_NOISE_PRIMITIVES)

} // namespace framix::prim::FX_SIMD_NS
