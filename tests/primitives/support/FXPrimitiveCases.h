// SPDX-License-Identifier: MIT
// Argument sets and guarded, padded images for running any registered primitive in tests.
#pragma once

#include "framework/primitives/FXPrimitiveRegistry.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
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
    int SrcPad = 0;         // bytes after each source row but the last
    int DstPad = 0;         // bytes after each destination row but the last
    prim::TFXMargins Extra; // source pixels beyond what the primitive reads
    std::uint32_t Seed = 1;
    // Point operations' parameters (TFXShapeArgs::Values and Param) and the noise generator's
    // seed word.
    int Values[4] = {0, 0, 0, 0};
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

// A random source image exactly as large as the case needs (the last row has no padding, so
// an over-read leaves the allocation) and a destination filled with a sentinel pattern, with
// guard bytes before and after.
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
    // Offset of destination pixel (x, y) channel c in the allocation (plane 0).
    std::size_t DstOffset(int x, int y, int c) const;

    const prim::TFXPrimitiveInfo& Prim() const { return FPrim; }
    const prim::TFXShapeGeometry& Geometry() const { return FGeometry; }
    const TFXCase& Case() const { return FCase; }
    int SrcStep() const { return FSrcStep; }
    int DstStep() const { return FDstStep; }
    const Ipp8u* SrcRoi() const { return FSrcRoi; }

private:
    const prim::TFXPrimitiveInfo& FPrim;
    TFXCase FCase;
    prim::TFXShapeGeometry FGeometry;
    int FSrcStep = 0;
    int FDstStep = 0;
    std::size_t FSrcSize = 0;
    std::unique_ptr<Ipp8u[]> FSrc; // exact size: ASan sees any read past it
    const Ipp8u* FSrcRoi = nullptr;
    std::vector<Ipp8u> FDstInit;
};

inline constexpr int kFXGuardBytes = 64;

// Fills `bytes` bytes with random samples of the type: any bit pattern for integers; for floats
// mostly values around the 8-bit and 16-bit ranges, exact halves, and a few infinities, NaNs and
// huge values; for doubles, magnitudes and phases of moderate size.
void FXFillSamples(prim::TFXSample sample, Ipp8u* p, std::size_t bytes, std::uint32_t seed);

// Every registered primitive, for value-parameterised tests, and their test names.
std::vector<const prim::TFXPrimitiveInfo*> FXAllPrimitivePointers();
std::string FXPrimitiveTestName(const testing::TestParamInfo<const prim::TFXPrimitiveInfo*>& info);

} // namespace framix::test
