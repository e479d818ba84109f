// SPDX-License-Identifier: MIT
// Argument sets and guarded, padded images for running any registered primitive in tests.
#pragma once

#include "framework/primitives/FXPrimitiveRegistry.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace framix::test {

// One way to call a primitive: sizes, the shape's parameters, padding and the random seed.
struct TFXCase {
    IppiSize Roi{1, 1};
    IppiSize Mask{1, 1};
    IppiPoint Anchor{0, 0};
    std::vector<Ipp32f> Kernel;
    int KernelAnchor = 0;
    std::vector<Ipp32s> IntKernel; // Mask.width x Mask.height, row by row
    int Divisor = 1;
    IppiMaskSize MaskCode = ippMskSize3x3;
    int SrcPad = 0;                               // bytes after each source row but the last
    int DstPad = 0;                               // bytes after each destination row but the last
    prim::TFXMargins Extra;                       // source pixels beyond what the primitive reads
    std::array<std::array<Ipp32f, 4>, 3> Twist{}; // ColorTwist
    std::uint32_t Seed = 1;
    // Lut, LutChannels: channel c's levels and values (by default one interval, 0 ... 256).
    std::array<std::vector<Ipp32s>, 4> LutLevels{{{0, 256}, {0, 256}, {0, 256}, {0, 256}}};
    std::array<std::vector<Ipp32s>, 4> LutValues{{{0, 256}, {0, 256}, {0, 256}, {0, 256}}};
    // Histogram, HistogramChannels: levels and range per channel.
    std::array<int, 4> HistLevels{5, 5, 5, 5};
    std::array<Ipp32s, 4> Lower{0, 0, 0, 0};
    std::array<Ipp32s, 4> Upper{256, 256, 256, 256};
    // LutPalette
    std::vector<Ipp32u> Palette = std::vector<Ipp32u>(256, 0x01020304);
    int BitSize = 8;
    // Threshold: Limit/LimitValue; ThresholdBoth: also UpperLimit/UpperValue (Limit below).
    std::array<Ipp8u, 3> Limit{100, 100, 100};
    std::array<Ipp8u, 3> LimitValue{0, 0, 0};
    std::array<Ipp8u, 3> UpperLimit{200, 200, 200};
    std::array<Ipp8u, 3> UpperValue{255, 255, 255};
    // Arithmetic, logic, compositing and accumulation
    int ScaleFactor = 0;
    int Values[4] = {0, 0, 0, 0}; // constants, or alpha1 and alpha2
    int AlphaType = 0;
    Ipp32f Weight = 0.0f;
    bool SmallSamples = false; // sources hold small values (ties, zeros, no saturation)
    // Copies, conversions, mirrors, noise, signals: the flip or round mode (TFXShapeArgs::Param)
    // and the noise generator's seed word; the set values, channel orders, noise bounds and
    // signal constants are in Values.
    int Param = 0;
    std::uint32_t NoiseSeed = 0;

    std::string Describe() const;
};

// Cases that cover one primitive: 1x1, odd widths, widths around 16, 32 and 64 bytes, padded
// steps, ROIs inside larger images, and the shape's parameter space (every mask size the
// median has a network for, anchors at the mask's corners, kernels with exact halves ...).
std::vector<TFXCase> FXCasesFor(const prim::TFXPrimitiveInfo& prim);

// What a run left behind.
struct TFXRunResult {
    IppStatus Status = ippStsNoErr;
    std::vector<Ipp8u> Dst;      // the whole destination allocation, guards and padding included
    std::uint32_t NoiseSeed = 0; // the seed word after the call (AddNoise)
};

// Random source images exactly as large as the case needs (the last row has no padding, so
// an over-read leaves the allocation) and a destination filled with a sentinel pattern, with
// guard bytes before and after. An in-place destination holds random samples in its ROI rows
// (finite floats for a float accumulator); a reduction's destination is one value.
class TFXCaseImages {
public:
    TFXCaseImages(const prim::TFXPrimitiveInfo& prim, const TFXCase& c);

    // Runs fn (a level kernel or an entry point of the primitive's shape) on a fresh copy of
    // the destination (and of the noise seed).
    TFXRunResult Run(prim::TFXAnyFn fn) const;
    // The arguments for a destination buffer from Fresh() (and a seed word, for AddNoise).
    prim::TFXShapeArgs Args(Ipp8u* dstAllocation, std::uint32_t* seed = nullptr) const;
    // The destination before the call: sentinel bytes, and random samples in the ROI rows of
    // in-place shapes.
    std::vector<Ipp8u> Fresh() const { return FDstInit; }
    // The first byte outside the ROI rows that differs from the sentinel, or -1.
    long FirstDamagedGuard(const std::vector<Ipp8u>& dst) const;
    // Offset of destination pixel (x, y) channel c in the allocation (planar destinations: of
    // plane c; signals: sample x of array c).
    std::size_t DstOffset(int x, int y, int c) const;
    // The histograms' outputs: bin counts and levels of channel c in a run's destination.
    std::vector<Ipp32s> Counts(const std::vector<Ipp8u>& dst, int c) const;
    std::vector<Ipp32s> HistogramLevels(const std::vector<Ipp8u>& dst, int c) const;
    // The destination's extent: the ROI, or one pixel for a reduction.
    IppiSize DstRoi() const;

    const prim::TFXPrimitiveInfo& Prim() const { return FPrim; }
    const prim::TFXShapeGeometry& Geometry() const { return FGeometry; }
    const TFXCase& Case() const { return FCase; }
    int SrcStep() const { return FSrcStep; }
    int DstStep() const { return FDstStep; }
    const Ipp8u* SrcRoi() const { return FSrcRoi[0]; }

private:
    // Start of destination plane p (0 for interleaved destinations) in the allocation.
    std::size_t DstPlaneStart(int p) const;

    const prim::TFXPrimitiveInfo& FPrim;
    TFXCase FCase;
    prim::TFXShapeGeometry FGeometry;
    int FSrcStep = 0;
    int FSrc2Step = 0;
    int FDstStep = 0;
    int FDstRows = 0;
    std::size_t FDstRowBytes = 0;
    std::array<std::size_t, 4> FHistAt{}; // histograms: channel c's counts, then its levels
    std::size_t FSrcSize = 0;
    std::size_t FDstPlaneBytes = 0;
    // One allocation per source plane (and second source), each of exact size: ASan sees any
    // read past it.
    std::array<std::unique_ptr<Ipp8u[]>, prim::kFXPlanes> FSrc;
    std::array<const Ipp8u*, prim::kFXPlanes> FSrcRoi{};
    std::unique_ptr<Ipp8u[]> FSrc2;
    const Ipp8u* FSrc2Roi = nullptr;
    std::vector<Ipp8u> FDstInit; // guard, plane, guard [, plane, guard ...]
    Ipp32f FTwist[3][4]{};
};

inline constexpr int kFXGuardBytes = 64;

// Fills `bytes` bytes with random samples of the type from rng: any bit pattern for integers;
// for floats mostly values around the 8-bit and 16-bit ranges, exact halves, and a few
// infinities, NaNs and huge values; for doubles, magnitudes and phases of moderate size.
void FXFillSamples(prim::TFXSample sample, Ipp8u* p, std::size_t bytes, std::mt19937& rng);

// The shapes of the arithmetic, logic, compositing and accumulation primitives (declared
// together in TFXShape).
constexpr bool FXIsArithmeticShape(prim::TFXShape s)
{
    return s >= prim::TFXShape::BinarySfs && s <= prim::TFXShape::AccumulateWeighted;
}

// Every registered primitive, for value-parameterised tests, and their test names.
std::vector<const prim::TFXPrimitiveInfo*> FXAllPrimitivePointers();
std::string FXPrimitiveTestName(const testing::TestParamInfo<const prim::TFXPrimitiveInfo*>& info);

} // namespace framix::test
