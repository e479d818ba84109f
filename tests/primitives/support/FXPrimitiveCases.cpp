// SPDX-License-Identifier: MIT
// Case lists and guarded images for the primitive tests.
#include "tests/primitives/support/FXPrimitiveCases.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <limits>
#include <random>
#include <sstream>

namespace framix::test {
namespace {

using prim::TFXShape;

constexpr Ipp8u kSentinel = 0xA5;

std::vector<int> WidthsFor(const prim::TFXPrimitiveInfo& p)
{
    const prim::TFXShapeGeometry g = prim::FXShapeGeometry(p.Shape, p.Sample, p.Layout);
    const int pixelBytes = std::max(g.SrcPixelBytes, g.DstPixelBytes);
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

// A random value of the sample type, as the int that TFXShapeArgs carries.
int ValueFor(prim::TFXSample sample, std::mt19937& rng)
{
    switch (sample) {
    case prim::TFXSample::U8:
        return int(rng() % 256);
    case prim::TFXSample::U16:
        return int(rng() % 65536);
    case prim::TFXSample::S16:
        return int(rng() % 65536) - 32768;
    default:
        return int(rng());
    }
}

// The parameters of the point operations' shapes; n counts the cases, rep the repetition of a
// width.
void PointParameters(const prim::TFXPrimitiveInfo& p, TFXCase& c, int n, int rep, std::mt19937& rng)
{
    static constexpr int kScaleFactors[] = {0, 1, 2, -1, 5, 16, 31, 32, -3, 40, 62, 63, 70, -33};
    switch (p.Shape) {
    case TFXShape::SetScalar:
    case TFXShape::SetChannels:
    case TFXShape::SignalSet:
        for (int& v : c.Values)
            v = ValueFor(p.Sample, rng);
        break;
    case TFXShape::SwapChannels:
    case TFXShape::SwapChannelsInPlace:
        for (int k = 0; k < 3; ++k) // repeats are allowed; every third case a permutation
            c.Values[k] = rep == 0 ? 2 - k : int(rng() % 3);
        break;
    case TFXShape::Mirror:
    case TFXShape::MirrorInPlace:
    case TFXShape::ConvertFromFloat:
        c.Param = n % 3; // the three axes; zero, nearest and financial rounding
        break;
    case TFXShape::AddNoise: {
        int a = ValueFor(p.Sample, rng), b = ValueFor(p.Sample, rng);
        if (rep == 0 && a > b) // bounds in order, reversed, and a narrow range
            std::swap(a, b);
        if (rep == 2)
            b = std::min(a + int(rng() % 8), p.Sample == prim::TFXSample::U8 ? 255 : 65535);
        c.Values[0] = a;
        c.Values[1] = b;
        c.NoiseSeed = rng();
        break;
    }
    case TFXShape::SignalAddScaled:
        c.Param = kScaleFactors[n % std::size(kScaleFactors)];
        break;
    case TFXShape::SignalMulCScaled:
        // mostly small constants (the vector kernels' range), some of any size
        c.Values[0] = rep != 2 ? int(rng() % 2001) - 1000 : ValueFor(p.Sample, rng);
        c.Param = kScaleFactors[n % std::size(kScaleFactors)];
        break;
    case TFXShape::SignalShiftC:
        c.Values[0] = int(rng() % 40);
        break;
    default:
        break;
    }
}

} // namespace

void FXFillSamples(prim::TFXSample sample, Ipp8u* p, std::size_t bytes, std::uint32_t seed)
{
    std::mt19937 rng(seed);
    std::size_t i = 0;
    if (sample == prim::TFXSample::F32) {
        std::uniform_real_distribution<float> byteRange(-20.0f, 300.0f), wordRange(-20.0f, 7e4f);
        const float specials[] = {std::numeric_limits<float>::quiet_NaN(),
                                  std::numeric_limits<float>::infinity(),
                                  -std::numeric_limits<float>::infinity(),
                                  -0.0f,
                                  1e20f,
                                  -1e20f,
                                  255.5f,
                                  65535.5f};
        for (; i + 4 <= bytes; i += 4) {
            const unsigned kind = rng() % 20;
            float v = kind < 11 ? byteRange(rng) : kind < 15 ? wordRange(rng) : 0.0f;
            if (kind >= 15 && kind < 18) // exact halves, where the round modes differ
                v = float(int(rng() % 66000) - 3) + 0.5f;
            if (kind == 18)
                v = specials[rng() % std::size(specials)];
            if (kind == 19)
                v = float(int(rng() % 300));
            std::memcpy(p + i, &v, 4);
        }
    } else if (sample == prim::TFXSample::F64) {
        std::uniform_real_distribution<double> moderate(-1000.0, 1000.0), large(-1e6, 1e6);
        for (; i + 8 <= bytes; i += 8) {
            const double v = rng() % 8 == 0 ? large(rng) : moderate(rng);
            std::memcpy(p + i, &v, 8);
        }
    }
    for (; i < bytes; ++i)
        p[i] = Ipp8u(rng());
}

std::string TFXCase::Describe() const
{
    std::ostringstream s;
    s << "roi " << Roi.width << "x" << Roi.height << ", mask " << Mask.width << "x" << Mask.height
      << " anchor (" << Anchor.x << "," << Anchor.y << "), kernel size " << Kernel.size()
      << " anchor " << KernelAnchor << ", pads " << SrcPad << "/" << DstPad << ", extra "
      << Extra.Left << "/" << Extra.Top << "/" << Extra.Right << "/" << Extra.Bottom << ", seed "
      << Seed << ", values " << Values[0] << "," << Values[1] << "," << Values[2] << ","
      << Values[3] << ", param " << Param << ", noise seed " << NoiseSeed;
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
            const bool filter = p.Shape == TFXShape::MaskFilter || p.Shape == TFXShape::RowFilter ||
                                p.Shape == TFXShape::ColumnFilter;
            if (!filter) {
                if (prim::FXShapeGeometry(p.Shape, p.Sample, p.Layout).Signal) {
                    c.Roi.height = 1; // one sample row per array
                    c.Extra = {};
                }
                PointParameters(p, c, n, rep, rng);
            } else if (p.Shape == TFXShape::MaskFilter) {
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
    } else if (p.Shape == TFXShape::RowFilter || p.Shape == TFXShape::ColumnFilter) {
        big.Kernel = {0.1f, 0.2f, 0.4f, 0.2f, 0.1f};
        big.KernelAnchor = 2;
    } else {
        if (prim::FXShapeGeometry(p.Shape, p.Sample, p.Layout).Signal)
            big.Roi = {big.Roi.width * big.Roi.height, 1};
        PointParameters(p, big, n, 1, rng);
    }
    cases.push_back(big);
    return cases;
}

TFXCaseImages::TFXCaseImages(const prim::TFXPrimitiveInfo& prim, const TFXCase& c)
    : FPrim(prim), FCase(c), FGeometry(prim::FXShapeGeometry(prim.Shape, prim.Sample, prim.Layout))
{
    const prim::TFXShapeGeometry& g = FGeometry;
    const prim::TFXMargins m = prim::FXShapeMargins(prim.Shape, Args(nullptr));
    if (g.SrcPixelBytes > 0) {
        const int left = m.Left + c.Extra.Left, right = m.Right + c.Extra.Right;
        const int top = m.Top + c.Extra.Top, bottom = m.Bottom + c.Extra.Bottom;
        const int srcRowBytes = (c.Roi.width + left + right) * g.SrcPixelBytes;
        const int srcRows = (c.Roi.height + top + bottom) * g.SrcPlanes;
        // Steps stay multiples of the sample size, as IPP requires for 16-bit images.
        const int sampleBytes = prim::FXSampleBytes(g.SrcSample);
        FSrcStep = srcRowBytes + c.SrcPad - c.SrcPad % sampleBytes;
        FSrcSize = std::size_t(FSrcStep) * (srcRows - 1) + srcRowBytes;
        FSrc.reset(new Ipp8u[FSrcSize]);
        FXFillSamples(g.SrcSample, FSrc.get(), FSrcSize, c.Seed);
        FSrcRoi = FSrc.get() + std::size_t(top) * FSrcStep + std::size_t(left) * g.SrcPixelBytes;
    }
    const int dstSampleBytes = prim::FXSampleBytes(g.DstSample);
    const int dstRowBytes = c.Roi.width * g.DstPixelBytes;
    const int dstRows = c.Roi.height * g.DstPlanes;
    FDstStep = dstRowBytes + c.DstPad - c.DstPad % dstSampleBytes;
    FDstInit.assign(2 * kFXGuardBytes + std::size_t(FDstStep) * (dstRows - 1) + dstRowBytes,
                    kSentinel);
    if (g.InPlace) // the image the primitive works on; padding keeps the sentinel
        for (int y = 0; y < dstRows; ++y)
            FXFillSamples(g.DstSample, FDstInit.data() + kFXGuardBytes + std::size_t(y) * FDstStep,
                          dstRowBytes, c.Seed * 31u + std::uint32_t(y));
}

prim::TFXShapeArgs TFXCaseImages::Args(Ipp8u* dstAllocation, std::uint32_t* seed) const
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
    std::copy(std::begin(FCase.Values), std::end(FCase.Values), a.Values);
    a.Param = FCase.Param;
    a.Seed = seed;
    return a;
}

TFXRunResult TFXCaseImages::Run(prim::TFXAnyFn fn) const
{
    TFXRunResult r;
    r.Dst = FDstInit;
    r.NoiseSeed = FCase.NoiseSeed;
    r.Status = prim::FXCallShape(FPrim.Shape, FPrim.Sample, fn, Args(r.Dst.data(), &r.NoiseSeed));
    return r;
}

std::size_t TFXCaseImages::DstOffset(int x, int y, int c) const
{
    return kFXGuardBytes + std::size_t(y) * FDstStep + std::size_t(x) * FGeometry.DstPixelBytes +
           std::size_t(c) * prim::FXSampleBytes(FGeometry.DstSample);
}

long TFXCaseImages::FirstDamagedGuard(const std::vector<Ipp8u>& dst) const
{
    const std::size_t rowBytes = std::size_t(FCase.Roi.width) * FGeometry.DstPixelBytes;
    const std::size_t rows = std::size_t(FCase.Roi.height) * FGeometry.DstPlanes;
    for (std::size_t i = 0; i < dst.size(); ++i) {
        const bool inRow = i >= kFXGuardBytes && (i - kFXGuardBytes) / FDstStep < rows &&
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
