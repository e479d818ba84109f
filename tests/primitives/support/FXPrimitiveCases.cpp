// SPDX-License-Identifier: MIT
// Case lists and guarded images for the primitive tests.
#include "tests/primitives/support/FXPrimitiveCases.h"

#include <algorithm>
#include <cstring>
#include <iterator>
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

bool IsPointShape(TFXShape shape)
{
    return shape != TFXShape::MaskFilter && shape != TFXShape::RowFilter &&
           shape != TFXShape::ColumnFilter;
}

// Scale factors, constants, alpha values and types, weights: edge values first, then random.
void SetPointParameters(TFXCase& c, const prim::TFXPrimitiveInfo& p, int n, int rep,
                        std::mt19937& rng)
{
    constexpr int kScales[] = {0, 1,  2,   0, -1, 3,   0, 8, -3, 0, 9, 16,   0, -9,    5,
                               0, 17, -17, 0, 40, -40, 0, 4, -2, 0, 7, 1000, 0, -1000, 15};
    constexpr Ipp32f kWeights[] = {0.3f, 0.5f, 0.0f, 1.0f, 0.123456f, 1.7f, -0.25f, 0.999f};
    const int max = p.Sample == prim::TFXSample::U8 ? 255 : 65535;
    c.ScaleFactor = kScales[n % std::size(kScales)];
    c.AlphaType = n % 12;
    c.Weight = n % 9 == 8 ? float(rng() % 1000) / 1000.0f : kWeights[n % std::size(kWeights)];
    c.SmallSamples = n % 3 == 2;
    for (int& v : c.Values)
        v = int(rng() % (max + 1));
    switch (rep) {
    case 0: // the identity, zero and near-edge fractions
        c.Values[0] = max, c.Values[1] = 0, c.Values[2] = 1, c.Values[3] = max - 1;
        break;
    case 1: // alphas of a half and of 8-bit size on 16-bit images
        c.Values[0] = max / 2 + 1, c.Values[1] = n % 2 == 0 ? max : 255;
        break;
    default:
        break;
    }
    if (n % 4 == 3) // 8-bit alphas that add up to 255, as a cross-fade uses (any sample type)
        c.Values[0] %= 256, c.Values[1] = 255 - c.Values[0];
}

} // namespace

std::string TFXCase::Describe() const
{
    std::ostringstream s;
    s << "roi " << Roi.width << "x" << Roi.height << ", mask " << Mask.width << "x" << Mask.height
      << " anchor (" << Anchor.x << "," << Anchor.y << "), kernel size " << Kernel.size()
      << " anchor " << KernelAnchor << ", pads " << SrcPad << "/" << DstPad << ", extra "
      << Extra.Left << "/" << Extra.Top << "/" << Extra.Right << "/" << Extra.Bottom << ", seed "
      << Seed << ", scale factor " << ScaleFactor << ", values " << Values[0] << "/" << Values[1]
      << "/" << Values[2] << "/" << Values[3] << ", alpha type " << AlphaType << ", weight "
      << Weight << (SmallSamples ? ", small samples" : "");
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
            } else if (IsPointShape(p.Shape)) {
                SetPointParameters(c, p, n, rep, rng);
            } else {
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
    } else if (IsPointShape(p.Shape)) {
        big.Values[0] = 200, big.Values[1] = 77, big.Values[2] = 254, big.Values[3] = 3;
        big.Weight = 0.3f;
    } else {
        big.Kernel = {0.1f, 0.2f, 0.4f, 0.2f, 0.1f};
        big.KernelAnchor = 2;
    }
    cases.push_back(big);
    // Point operations: larger images for every compositing type and several scale factors,
    // so rare roundings (exact halves, estimates corrected by one) occur.
    if (IsPointShape(p.Shape))
        for (int k = 0; k < 12; ++k) {
            TFXCase c = big;
            c.Roi = {97 + 16 * k, 9};
            c.Seed = rng();
            SetPointParameters(c, p, k, 3, rng);
            c.AlphaType = k;
            c.ScaleFactor = k % 3 == 0 ? 0 : c.ScaleFactor;
            cases.push_back(c);
        }
    return cases;
}

TFXCaseImages::TFXCaseImages(const prim::TFXPrimitiveInfo& prim, const TFXCase& c)
    : FPrim(prim), FCase(c)
{
    const int sampleBytes = prim::FXSampleBytes(prim.Sample);
    const prim::TFXShapeTraits traits = prim::FXShapeTraits(prim.Shape, prim.Sample);
    FPixelBytes = prim::FXChannels(prim.Layout) * sampleBytes;
    FDstPixelBytes = prim::FXChannels(prim.Layout) * traits.DstSampleBytes;
    const prim::TFXMargins m = prim::FXShapeMargins(prim.Shape, Args(nullptr));
    const int left = m.Left + c.Extra.Left, right = m.Right + c.Extra.Right;
    const int top = m.Top + c.Extra.Top, bottom = m.Bottom + c.Extra.Bottom;
    const int srcRowBytes = (c.Roi.width + left + right) * FPixelBytes;
    const int srcRows = c.Roi.height + top + bottom;
    // Steps stay multiples of the sample size, as IPP requires for 16-bit images.
    const int srcPad = c.SrcPad - c.SrcPad % sampleBytes;
    const int dstPad = c.DstPad - c.DstPad % traits.DstSampleBytes;
    std::mt19937 rng(c.Seed);
    // Point operations on small samples: bytes below 16 (8-bit and 16-bit samples alike).
    const Ipp8u byteMask = c.SmallSamples ? 0x0F : 0xFF;
    const auto fill = [&](std::unique_ptr<Ipp8u[]>& image, int step) {
        const std::size_t size = std::size_t(step) * (srcRows - 1) + srcRowBytes;
        image.reset(new Ipp8u[size]);
        for (std::size_t i = 0; i < size; ++i)
            image[i] = Ipp8u(rng()) & byteMask;
        return size;
    };
    const std::size_t leftBytes = std::size_t(left) * FPixelBytes;
    FSrcStep = srcRowBytes + srcPad;
    if (traits.Sources >= 1) {
        FSrcSize = fill(FSrc, FSrcStep);
        FSrcRoi = FSrc.get() + std::size_t(top) * FSrcStep + leftBytes;
    }
    if (traits.Sources == 2) { // its own padding, so the two steps differ
        const int pad2 = (c.SrcPad * 5 + 3) % 11;
        FSrc2Step = srcRowBytes + pad2 - pad2 % sampleBytes;
        fill(FSrc2, FSrc2Step);
        FSrc2Roi = FSrc2.get() + std::size_t(top) * FSrc2Step + leftBytes;
    }
    const IppiSize dstRoi = DstRoi();
    const int dstRowBytes = dstRoi.width * FDstPixelBytes;
    FDstStep = dstRowBytes + dstPad;
    FDstInit.assign(2 * kFXGuardBytes + std::size_t(FDstStep) * (dstRoi.height - 1) + dstRowBytes,
                    kSentinel);
    if (traits.InPlace)
        for (int y = 0; y < dstRoi.height; ++y) {
            Ipp8u* row = FDstInit.data() + kFXGuardBytes + std::size_t(y) * FDstStep;
            if (traits.DstSampleBytes == int(sizeof(Ipp32f))) {
                std::uniform_real_distribution<float> any(-100.0f, 70000.0f);
                for (int i = 0; i < dstRowBytes; i += int(sizeof(Ipp32f))) {
                    const Ipp32f v = any(rng);
                    std::memcpy(row + i, &v, sizeof v);
                }
            } else {
                for (int i = 0; i < dstRowBytes; ++i)
                    row[i] = Ipp8u(rng()) & byteMask;
            }
        }
}

IppiSize TFXCaseImages::DstRoi() const
{
    return prim::FXShapeTraits(FPrim.Shape, FPrim.Sample).Reduces ? IppiSize{1, 1} : FCase.Roi;
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
    a.Src2 = FSrc2Roi;
    a.Src2Step = FSrc2Step;
    a.ScaleFactor = FCase.ScaleFactor;
    std::copy(std::begin(FCase.Values), std::end(FCase.Values), a.Values);
    a.AlphaType = FCase.AlphaType;
    a.Weight = FCase.Weight;
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
    return kFXGuardBytes + std::size_t(y) * FDstStep + std::size_t(x) * FDstPixelBytes +
           std::size_t(c) * (FDstPixelBytes / prim::FXChannels(FPrim.Layout));
}

long TFXCaseImages::FirstDamagedGuard(const std::vector<Ipp8u>& dst) const
{
    const IppiSize dstRoi = DstRoi();
    const std::size_t rowBytes = std::size_t(dstRoi.width) * FDstPixelBytes;
    for (std::size_t i = 0; i < dst.size(); ++i) {
        const bool inRow = i >= kFXGuardBytes &&
                           (i - kFXGuardBytes) / FDstStep < std::size_t(dstRoi.height) &&
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
