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

// Integer kernels for ippiFilter: the weights, the divisor, and what they exercise.
void IntKernelFor(int variant, TFXCase& c, std::mt19937& rng)
{
    const int taps = c.Mask.width * c.Mask.height;
    c.IntKernel.assign(std::size_t(taps), 0);
    auto uniform = [&](int lo, int hi) { return lo + int(rng() % unsigned(hi - lo + 1)); };
    switch (variant % 6) {
    case 0: // small signed weights, 16-bit sums for 8-bit samples
        for (auto& k : c.IntKernel)
            k = uniform(-4, 4);
        c.Divisor = uniform(1, 20);
        break;
    case 1: // the mean: exact halves when the area is even
        c.IntKernel.assign(std::size_t(taps), 1);
        c.Divisor = taps;
        break;
    case 2: // weights whose sums need 32 bits
        for (auto& k : c.IntKernel)
            k = uniform(-3000, 3000);
        c.Divisor = uniform(100, 5000);
        break;
    case 3: // a negative divisor: the quotient of the negated sum
        for (auto& k : c.IntKernel)
            k = uniform(-5, 1);
        c.Divisor = -uniform(1, 9);
        break;
    case 4: // weights beyond 16 bits (sums beyond 32 on 16-bit samples), a power-of-two divisor
        for (auto& k : c.IntKernel)
            k = uniform(-(1 << 17), 1 << 17);
        c.Divisor = 1 << 12;
        break;
    default: // one weight: picks (and scales) one pixel, no division
        c.IntKernel[rng() % c.IntKernel.size()] = uniform(1, 3);
        c.Divisor = 1;
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
    if (!IntKernel.empty()) {
        s << ", kernel {";
        for (std::size_t i = 0; i < IntKernel.size(); ++i)
            s << (i ? "," : "") << IntKernel[i];
        s << "} / " << Divisor;
    }
    s << ", mask code " << int(MaskCode);
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
            if (p.Shape == TFXShape::FixedMaskFilter) {
                c.MaskCode = (n + rep) % 2 ? ippMskSize5x5 : ippMskSize3x3;
            } else if (p.Shape == TFXShape::MaskFilter || p.Shape == TFXShape::KernelFilter) {
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
                if (p.Shape == TFXShape::KernelFilter)
                    IntKernelFor(n, c, rng);
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
    if (p.Shape == TFXShape::FixedMaskFilter)
        big.MaskCode = ippMskSize5x5;
    if (p.Shape == TFXShape::MaskFilter || p.Shape == TFXShape::KernelFilter) {
        big.Mask = {5, 5};
        big.Anchor = {2, 2};
        if (p.Shape == TFXShape::KernelFilter) {
            big.IntKernel.resize(25);
            for (int i = 0; i < 25; ++i)
                big.IntKernel[std::size_t(i)] = (i * 7) % 5 - 2;
            big.Divisor = 3;
        }
    } else if (p.Shape == TFXShape::RowFilter || p.Shape == TFXShape::ColumnFilter) {
        big.Kernel = {0.1f, 0.2f, 0.4f, 0.2f, 0.1f};
        big.KernelAnchor = 2;
    }
    cases.push_back(big);
    return cases;
}

TFXCaseImages::TFXCaseImages(const prim::TFXPrimitiveInfo& prim, const TFXCase& c)
    : FPrim(prim), FCase(c)
{
    const int sampleBytes = prim::FXSampleBytes(prim.Sample);
    FPixelBytes = prim::FXChannels(prim.Layout) * sampleBytes;
    const prim::TFXMargins m = prim::FXShapeMargins(prim.Shape, Args(nullptr));
    const int left = m.Left + c.Extra.Left, right = m.Right + c.Extra.Right;
    const int top = m.Top + c.Extra.Top, bottom = m.Bottom + c.Extra.Bottom;
    const int srcRowBytes = (c.Roi.width + left + right) * FPixelBytes;
    const int srcRows = c.Roi.height + top + bottom;
    // Steps stay multiples of the sample size, as IPP requires for 16-bit images.
    const int srcPad = c.SrcPad - c.SrcPad % sampleBytes;
    const int dstPad = c.DstPad - c.DstPad % sampleBytes;
    FSrcStep = srcRowBytes + srcPad;
    FSrcSize = std::size_t(FSrcStep) * (srcRows - 1) + srcRowBytes;
    FSrc.reset(new Ipp8u[FSrcSize]);
    std::mt19937 rng(c.Seed);
    for (std::size_t i = 0; i < FSrcSize; ++i)
        FSrc[i] = Ipp8u(rng());
    FSrcRoi = FSrc.get() + std::size_t(top) * FSrcStep + std::size_t(left) * FPixelBytes;
    const int dstRowBytes = c.Roi.width * FPixelBytes;
    FDstStep = dstRowBytes + dstPad;
    FDstInit.assign(2 * kFXGuardBytes + std::size_t(FDstStep) * (c.Roi.height - 1) + dstRowBytes,
                    kSentinel);
}

prim::TFXShapeArgs TFXCaseImages::Args(Ipp8u* dstAllocation) const
{
    prim::TFXShapeArgs a;
    a.Src = FSrcRoi;
    a.SrcStep = FSrcStep;
    a.Dst = dstAllocation != nullptr ? dstAllocation + kFXGuardBytes : nullptr;
    a.DstStep = FDstStep;
    a.Roi = FCase.Roi;
    a.Mask = FCase.Mask;
    a.Anchor = FCase.Anchor;
    a.Kernel = FCase.Kernel.data();
    a.KernelSize = int(FCase.Kernel.size());
    a.KernelAnchor = FCase.KernelAnchor;
    a.IntKernel = FCase.IntKernel.data();
    a.Divisor = FCase.Divisor;
    a.MaskCode = FCase.MaskCode;
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
    return kFXGuardBytes + std::size_t(y) * FDstStep + std::size_t(x) * FPixelBytes +
           std::size_t(c) * prim::FXSampleBytes(FPrim.Sample);
}

long TFXCaseImages::FirstDamagedGuard(const std::vector<Ipp8u>& dst) const
{
    const std::size_t rowBytes = std::size_t(FCase.Roi.width) * FPixelBytes;
    for (std::size_t i = 0; i < dst.size(); ++i) {
        const bool inRow = i >= kFXGuardBytes &&
                           (i - kFXGuardBytes) / FDstStep < std::size_t(FCase.Roi.height) &&
                           (i - kFXGuardBytes) % FDstStep < rowBytes;
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
