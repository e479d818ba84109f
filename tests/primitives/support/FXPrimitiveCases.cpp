// SPDX-License-Identifier: MIT
// Case lists and guarded images for the primitive tests.
#include "tests/primitives/support/FXPrimitiveCases.h"

#include <algorithm>
#include <random>
#include <sstream>

namespace framix::test {
namespace {

using prim::TFXShape;

constexpr Ipp8u kSentinel = 0xA5;

std::vector<int> WidthsFor(const prim::TFXPrimitiveInfo& p)
{
    const int pixelBytes = prim::FXChannels(p.Layout) * prim::FXSampleBytes(p.Sample);
    std::vector<int> widths = {1, 2, 3, 5, 7, 9, 13};
    // Around each vector width in bytes (16, 32, 64) and in 32-bit lanes (4, 8, 16 samples).
    for (int bytes : {16, 32, 64, 128, 16 * pixelBytes, 32 * pixelBytes / 2})
        for (int d : {-1, 0, 1}) {
            const int w = bytes / pixelBytes + d;
            if (w >= 1)
                widths.push_back(w);
        }
    std::sort(widths.begin(), widths.end());
    widths.erase(std::unique(widths.begin(), widths.end()), widths.end());
    return widths;
}

std::vector<IppiSize> MasksFor(const prim::TFXPrimitiveInfo& p)
{
    // Median: every size that has a network, and 9x1 that has none.
    if (p.Name.find("Median") != std::string_view::npos)
        return {{3, 3}, {5, 5}, {1, 1}, {3, 1}, {1, 5}, {7, 1}, {5, 3}, {3, 7}, {7, 7}, {9, 1}};
    return {{3, 3}, {5, 5}, {1, 1}, {2, 1}, {1, 2}, {4, 3}, {7, 5}, {2, 6}, {9, 9}};
}

std::vector<Ipp32f> KernelFor(int variant, std::mt19937& rng)
{
    std::uniform_real_distribution<float> any(-1.0f, 2.0f);
    switch (variant % 5) {
    case 0: { // random weights
        std::vector<Ipp32f> k(1 + rng() % 7);
        for (auto& v : k)
            v = any(rng);
        return k;
    }
    case 1: // exact halves: rounding ties
        return {0.5f, 0.5f};
    case 2: { // normalised smoothing
        std::vector<Ipp32f> k(3 + 2 * (rng() % 3));
        for (auto& v : k)
            v = 1.0f / float(k.size());
        return k;
    }
    case 3: // saturates both ways
        return {3.0f, -2.5f, 0.25f};
    default: // single tap: picks one pixel
        return {1.0f};
    }
}

using TTwist = std::array<std::array<Ipp32f, 4>, 3>;

TTwist TwistFor(int variant, std::mt19937& rng)
{
    std::uniform_real_distribution<float> weight(-1.5f, 1.5f), offset(-128.0f, 128.0f);
    switch (variant % 4) {
    case 0: { // random weights and offsets: saturates both ways
        TTwist t;
        for (auto& row : t)
            row = {weight(rng), weight(rng), weight(rng), offset(rng)};
        return t;
    }
    case 1: // halves: rounding ties
        return {{{0.5f, 0, 0, 0}, {0, 0.5f, 0, 0.5f}, {0.25f, 0.25f, 0, 0}}};
    case 2: // a YCbCr-like matrix with offsets
        return {{{0.257f, 0.504f, 0.098f, 16},
                 {-0.148f, -0.291f, 0.439f, 128},
                 {0.439f, -0.368f, -0.071f, 128}}};
    default: // channel permutation
        return {{{0, 0, 1, 0}, {0, 1, 0, 0}, {1, 0, 0, 0}}};
    }
}

} // namespace

std::string TFXCase::Describe() const
{
    std::ostringstream s;
    s << "roi " << Roi.width << "x" << Roi.height << ", mask " << Mask.width << "x" << Mask.height
      << " anchor (" << Anchor.x << "," << Anchor.y << "), kernel size " << Kernel.size()
      << " anchor " << KernelAnchor << ", pads " << SrcPad << "/" << DstPad << ", extra "
      << Extra.Left << "/" << Extra.Top << "/" << Extra.Right << "/" << Extra.Bottom << ", seed "
      << Seed;
    return s.str();
}

std::vector<TFXCase> FXCasesFor(const prim::TFXPrimitiveInfo& p)
{
    std::vector<TFXCase> cases;
    std::mt19937 rng(0x5EED + static_cast<unsigned>(p.Name.size()));
    const std::vector<int> widths = WidthsFor(p);
    const std::vector<IppiSize> masks = MasksFor(p);
    const int heights[] = {1, 2, 3, 5, 8};
    int n = 0;
    for (int w : widths)
        for (int rep = 0; rep < 3; ++rep, ++n) {
            TFXCase c;
            c.Roi = {w, heights[(n + rep) % 5]};
            c.Seed = rng();
            c.SrcPad = (n % 3 == 0) ? 0 : int(rng() % 17);
            c.DstPad = (n % 4 == 1) ? 0 : int(rng() % 9);
            if (n % 5 == 2) // a ROI inside a larger image
                c.Extra = {int(rng() % 4), int(rng() % 3), int(rng() % 4), int(rng() % 3)};
            if (p.Shape == TFXShape::MaskFilter) {
                c.Mask = masks[n % masks.size()];
                switch (rep) {
                case 0:
                    c.Anchor = {c.Mask.width / 2, c.Mask.height / 2};
                    break;
                case 1:
                    c.Anchor = {0, c.Mask.height - 1};
                    break;
                default:
                    c.Anchor = {int(rng() % c.Mask.width), int(rng() % c.Mask.height)};
                }
            } else if (p.Shape == TFXShape::ColorTwist) {
                c.Twist = TwistFor(n, rng);
            } else if (p.Shape == TFXShape::RowFilter || p.Shape == TFXShape::ColumnFilter) {
                c.Kernel = KernelFor(n, rng);
                const int k = int(c.Kernel.size());
                c.KernelAnchor = rep == 0 ? k / 2 : rep == 1 ? k - 1 : int(rng() % k);
            }
            cases.push_back(c);
        }
    // One larger image, so every vector kernel runs several full vectors per row.
    TFXCase big;
    big.Roi = {203, 7};
    big.SrcPad = 5;
    big.Seed = 77;
    if (p.Shape == TFXShape::MaskFilter) {
        big.Mask = {5, 5};
        big.Anchor = {2, 2};
    } else if (p.Shape == TFXShape::RowFilter || p.Shape == TFXShape::ColumnFilter) {
        big.Kernel = {0.1f, 0.2f, 0.4f, 0.2f, 0.1f};
        big.KernelAnchor = 2;
    } else if (p.Shape == TFXShape::ColorTwist) {
        big.Twist = TwistFor(0, rng);
    }
    cases.push_back(big);
    return cases;
}

TFXCaseImages::TFXCaseImages(const prim::TFXPrimitiveInfo& prim, const TFXCase& c)
    : FPrim(prim), FCase(c)
{
    const int sampleBytes = prim::FXSampleBytes(prim.Sample);
    const int pixelBytes = prim::FXChannels(prim.Layout) * sampleBytes;
    const int srcPlanes = prim::FXSrcPlanes(prim.Shape), dstPlanes = prim::FXDstPlanes(prim.Shape);
    FSrcPixelBytes = srcPlanes > 1 ? sampleBytes : pixelBytes;
    FDstPixelBytes = dstPlanes > 1 ? sampleBytes : pixelBytes;
    for (int r = 0; r < 3; ++r)
        for (int k = 0; k < 4; ++k)
            FTwist[r][k] = c.Twist[r][k];
    const prim::TFXMargins m = prim::FXShapeMargins(prim.Shape, Args(nullptr));
    const int left = m.Left + c.Extra.Left, right = m.Right + c.Extra.Right;
    const int top = m.Top + c.Extra.Top, bottom = m.Bottom + c.Extra.Bottom;
    const int srcRowBytes = (c.Roi.width + left + right) * FSrcPixelBytes;
    const int srcRows = c.Roi.height + top + bottom;
    // Steps stay multiples of the sample size, as IPP requires for 16-bit images.
    const int srcPad = c.SrcPad - c.SrcPad % sampleBytes;
    const int dstPad = c.DstPad - c.DstPad % sampleBytes;
    FSrcStep = srcRowBytes + srcPad;
    FSrcSize = std::size_t(FSrcStep) * (srcRows - 1) + srcRowBytes;
    std::mt19937 rng(c.Seed);
    for (int p = 0; p < srcPlanes; ++p) {
        FSrc[p].reset(new Ipp8u[FSrcSize]);
        for (std::size_t i = 0; i < FSrcSize; ++i)
            FSrc[p][i] = Ipp8u(rng());
        FSrcRoi[p] =
            FSrc[p].get() + std::size_t(top) * FSrcStep + std::size_t(left) * FSrcPixelBytes;
    }
    const int dstRowBytes = c.Roi.width * FDstPixelBytes;
    FDstStep = dstRowBytes + dstPad;
    FDstPlaneBytes = std::size_t(FDstStep) * (c.Roi.height - 1) + dstRowBytes;
    FDstInit.assign(kFXGuardBytes + dstPlanes * (FDstPlaneBytes + kFXGuardBytes), kSentinel);
}

std::size_t TFXCaseImages::DstPlaneStart(int p) const
{
    return kFXGuardBytes + std::size_t(p) * (FDstPlaneBytes + kFXGuardBytes);
}

prim::TFXShapeArgs TFXCaseImages::Args(Ipp8u* dstAllocation) const
{
    prim::TFXShapeArgs a;
    a.Src = FSrcRoi[0];
    a.SrcStep = FSrcStep;
    a.Dst = dstAllocation != nullptr ? dstAllocation + kFXGuardBytes : nullptr;
    a.DstStep = FDstStep;
    a.Roi = FCase.Roi;
    a.Mask = FCase.Mask;
    a.Anchor = FCase.Anchor;
    a.Kernel = FCase.Kernel.data();
    a.KernelSize = int(FCase.Kernel.size());
    a.KernelAnchor = FCase.KernelAnchor;
    a.Twist = FTwist;
    for (int p = 0; p < prim::kFXPlanes; ++p) {
        if (prim::FXSrcPlanes(FPrim.Shape) > 1)
            a.Planes[p] = const_cast<Ipp8u*>(FSrcRoi[p]);
        else if (dstAllocation != nullptr && prim::FXDstPlanes(FPrim.Shape) > 1)
            a.Planes[p] = dstAllocation + DstPlaneStart(p);
    }
    return a;
}

TFXRunResult TFXCaseImages::Run(prim::TFXAnyFn fn) const
{
    TFXRunResult r;
    r.Dst = FDstInit;
    r.Status = prim::FXCallShape(FPrim.Shape, FPrim.Sample, fn, Args(r.Dst.data()));
    return r;
}

std::size_t TFXCaseImages::DstOffset(int x, int y, int c) const
{
    if (prim::FXDstPlanes(FPrim.Shape) > 1)
        return DstPlaneStart(c) + std::size_t(y) * FDstStep + std::size_t(x) * FDstPixelBytes;
    return kFXGuardBytes + std::size_t(y) * FDstStep + std::size_t(x) * FDstPixelBytes +
           std::size_t(c) * prim::FXSampleBytes(FPrim.Sample);
}

long TFXCaseImages::FirstDamagedGuard(const std::vector<Ipp8u>& dst) const
{
    const std::size_t rowBytes = std::size_t(FCase.Roi.width) * FDstPixelBytes;
    const std::size_t planeSpan = FDstPlaneBytes + kFXGuardBytes;
    for (std::size_t i = 0; i < dst.size(); ++i) {
        const std::size_t inPlane = i < kFXGuardBytes ? planeSpan : (i - kFXGuardBytes) % planeSpan;
        const bool inRow = i >= kFXGuardBytes && inPlane < FDstPlaneBytes &&
                           inPlane / FDstStep < std::size_t(FCase.Roi.height) &&
                           inPlane % FDstStep < rowBytes;
        if (!inRow && dst[i] != kSentinel)
            return long(i);
    }
    return -1;
}

std::vector<const prim::TFXPrimitiveInfo*> FXAllPrimitivePointers()
{
    std::vector<const prim::TFXPrimitiveInfo*> all;
    for (const prim::TFXPrimitiveInfo& p : prim::FXAllPrimitives())
        all.push_back(&p);
    return all;
}

std::string FXPrimitiveTestName(const testing::TestParamInfo<const prim::TFXPrimitiveInfo*>& info)
{
    return std::string(info.param->Name);
}

} // namespace framix::test
