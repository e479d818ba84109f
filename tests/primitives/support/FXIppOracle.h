// SPDX-License-Identifier: MIT
// Runs a primitive's modern real-IPP counterpart on the same arguments (tests and benchmarks).
// Header-only, so the benchmark binary can use it too.
#pragma once

#include "framework/primitives/FXPrimitiveRegistry.h"
#include "framework/primitives/FXPrimitiveShapes.h"
#include "framework/primitives/dispatch/FXRealIpp.h"
#include "framework/primitives/families/FilterKernel.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>
#include <vector>

namespace framix::test {

// Loads the real IPP, by default from the folder scripts/install-ipp.sh fills; false if absent.
inline bool FXRealIppLoaded()
{
#ifdef FRAMIX_SOURCE_DIR
    setenv("FRAMIX_IPP_DIR", FRAMIX_SOURCE_DIR "/.deps/ipp/lib", 0);
#endif
    return FXRealIppSymbol("ippInit") != nullptr && FXRealIppSymbol("ippiGetLibVersion") != nullptr;
}

// Functions modern IPP still exports unchanged (the colour conversions, twist, gamma, threshold,
// the palette, arithmetic, logic, compositing, weighted accumulation, copies, sets, mirrors,
// sample conversions, noise (9.0 dropped "_Direct" from those names), the test image, the signal
// primitives) are called directly. IPP 9.0 removed the legacy box, rank and separable filters.
// Their replacements:
// - box, min, max, median: ippiFilter<Op>Border_<type>_<layout> with ippBorderInMem (reads the
//   source outside the ROI as the legacy functions did) and a centred mask ((size - 1) / 2); a
//   legacy anchor becomes a shift of the source pointer;
// - row and column filters: ippiFilterBorder with a 1xK (Kx1) float kernel rounding to
//   nearest; it runs the kernel in direct order around (K - 1) / 2, so the kernel is reversed
//   and the source shifted.
// The look-up tables kept their names but take a prepared table now: ippiLUT_Init_8u/16u
// (ippNearest, ippLinear or ippCubic) with the same per-channel arrays, then ippiLUT_<type>.
// The even histogram became ippiHistogramUniformInit + ippiHistogram (unsigned counts; no AC4
// form, so AC4 runs as C4 and alpha's counts are dropped); its levels come from
// ippiHistogramGetLevels.
// - the general integer kernel: ippiFilterBorder with the reversed kernel as 16-bit weights,
//   the divisor, ippRndNear and the accurate mode (its default mode may be off by one); AC4
//   through C4, the alpha bytes put back afterwards;
// - the fixed filters: IPP's own ...Border function where one exists for the layout (edges
//   8u->16s C1, saturated here; Laplace, Hipass, Sharpen 8u), else ippiFilterBorder with the
//   published kernel as above; the cross and colour medians still exist unchanged.
// What the oracle is for: comparing bytes, or timing IPP (then only IPP's own call runs: C1
// images take IPP's C1 path in its default, faster mode, and nothing is fixed up afterwards).
enum class TFXIppPurpose { Compare, Timing };

class TFXIppOracle {
public:
    // args describe one call (as for FXCallShape); Ready() is false when the installed IPP has
    // no counterpart or refuses the arguments.
    TFXIppOracle(const prim::TFXPrimitiveInfo& p, const prim::TFXShapeArgs& args,
                 TFXIppPurpose purpose = TFXIppPurpose::Compare)
        : FPrim(p), FArgs(args), FTiming(purpose == TFXIppPurpose::Timing)
    {
        const int channels = prim::FXChannels(p.Layout);
        const int type = p.Sample == prim::TFXSample::U8 ? kIpp8u : kIpp16u;
        const int pixelBytes = channels * prim::FXSampleBytes(p.Sample);
        const auto* src = static_cast<const Ipp8u*>(args.Src);
        const std::string suffix(p.Name.substr(p.Name.find('_')));
        if (p.Shape == prim::TFXShape::MaskFilter) {
            const std::string op(p.Name.substr(0, p.Name.find('_')));
            FMask = Symbol<TMaskFilter>(op + "Border" + suffix);
            auto bufferSize = Symbol<TBufferSize>(op + "BorderGetBufferSize");
            int size = 0;
            if (FMask == nullptr || bufferSize == nullptr ||
                bufferSize(args.Roi, args.Mask, type, channels, &size) != 0)
                return;
            FBuffer.resize(std::size_t(size) + 64);
            const int shiftX = (args.Mask.width - 1) / 2 - args.Anchor.x;
            const int shiftY = (args.Mask.height - 1) / 2 - args.Anchor.y;
            FSrc =
                src + std::ptrdiff_t(shiftY) * args.SrcStep + std::ptrdiff_t(shiftX) * pixelBytes;
        } else if (p.Shape == prim::TFXShape::KernelFilter ||
                   p.Shape == prim::TFXShape::FixedFilter ||
                   p.Shape == prim::TFXShape::FixedMaskFilter) {
            if (!PrepareKernelFamily(src, type, channels))
                return;
        } else if (p.Shape == prim::TFXShape::Lut || p.Shape == prim::TFXShape::LutChannels) {
            if (!PrepareLut(type, channels))
                return;
        } else if (p.Shape == prim::TFXShape::Histogram ||
                   p.Shape == prim::TFXShape::HistogramChannels) {
            if (!PrepareHistogram(type, suffix))
                return;
        } else if (p.Shape != prim::TFXShape::RowFilter &&
                   p.Shape != prim::TFXShape::ColumnFilter) {
            // Unchanged: threshold, the palette, the colour conversions, twist and gamma, the point
            // operations, copies, conversions, noise, the test image and the signal primitives.
            std::string name(p.Name);
            if (const auto at = name.find("_Direct"); at != std::string::npos)
                name.erase(at, 7);
            FSame = reinterpret_cast<prim::TFXAnyFn>(FXRealIppSymbol(name));
            if (FSame == nullptr)
                return;
        } else {
            auto getSize = Symbol<TGetSize>("ippiFilterBorderGetSize");
            auto init = Symbol<TInit>("ippiFilterBorderInit_32f");
            FKernel = Symbol<TKernelFilter>("ippiFilterBorder" + suffix);
            if (getSize == nullptr || init == nullptr || FKernel == nullptr)
                return;
            const bool row = p.Shape == prim::TFXShape::RowFilter;
            const int k = args.KernelSize;
            const IppiSize kernelSize = row ? IppiSize{k, 1} : IppiSize{1, k};
            const std::vector<Ipp32f> reversed(args.Kernel, args.Kernel + k);
            std::vector<Ipp32f> kernel(reversed.rbegin(), reversed.rend());
            int specSize = 0, bufferSize = 0;
            if (getSize(kernelSize, args.Roi, type, kIpp32f, channels, &specSize, &bufferSize) != 0)
                return;
            FSpec.resize(std::size_t(specSize) + 64);
            FBuffer.resize(std::size_t(bufferSize) + 64);
            if (init(kernel.data(), kernelSize, type, channels, kIppRndNear, FSpec.data()) != 0)
                return;
            const int shift = args.KernelAnchor - (k - 1) + (k - 1) / 2;
            FSrc = src + (row ? std::ptrdiff_t(shift) * pixelBytes
                              : std::ptrdiff_t(shift) * args.SrcStep);
        }
        FReady = true;
    }

    bool Ready() const { return FReady; }
    // IPP has a counterpart, but not for these arguments (16-bit weights, positive divisors).
    bool CaseSkipped() const { return FCaseSkipped; }
    // IPP's counterpart is not exact on these samples (see IppDifferentialTest).
    bool Approximate() const
    {
        return FKind == TKind::FilterBorder && FPrim.Sample == prim::TFXSample::U16;
    }

    // IPP's status (modern numbering); writes args.Dst (the histograms: args.Hist and
    // args.HistLevels).
    int Run()
    {
        const Ipp8u zeros[8] = {};
        if (FKind != TKind::Legacy)
            return RunKernelFamily(zeros);
        if (FSame != nullptr)
            return prim::FXCallShape(FPrim.Shape, FPrim.Sample, FSame, FArgs);
        if (FLut != nullptr)
            return FLut(FArgs.Src, FArgs.SrcStep, FArgs.Dst, FArgs.DstStep, FArgs.Roi,
                        FSpec.data());
        if (FHistogram != nullptr)
            return RunHistogram();
        if (FPrim.Shape == prim::TFXShape::MaskFilter)
            return FMask(FSrc, FArgs.SrcStep, FArgs.Dst, FArgs.DstStep, FArgs.Roi, FArgs.Mask,
                         kIppBorderInMem, zeros, FBuffer.data());
        return FKernel(FSrc, FArgs.SrcStep, FArgs.Dst, FArgs.DstStep, FArgs.Roi, kIppBorderInMem,
                       zeros, FSpec.data(), FBuffer.data());
    }

    // IPP's status for a division by zero (a warning; modern numbering).
    static constexpr int kDivByZero = 2;

private:
    // Modern IPP's numbering (2021 and later), which differs from the legacy one we use.
    static constexpr int kIppBorderInMem = 0xF0;
    static constexpr int kIpp8u = 1, kIpp16u = 5, kIpp32f = 13;
    static constexpr int kIppRndNear = 1;
    static constexpr int kIppNearest = 1, kIppLinear = 2, kIppCubic = 6;
    static constexpr int kIppAC4 = 9;

    bool PrepareLut(int type, int channels)
    {
        auto getSize = Symbol<TLutGetSize>("ippiLUT_GetSize");
        auto init = Symbol<TLutInit>(type == kIpp8u ? "ippiLUT_Init_8u" : "ippiLUT_Init_16u");
        // ippiLUT_Linear_8u_C3R -> ippiLUT_8u_C3R
        const std::string name(FPrim.Name);
        FLut = Symbol<TLut>("ippiLUT" + name.substr(name.rfind('_', name.rfind('_') - 1)));
        const int interp = name.find("_Linear") != std::string::npos  ? kIppLinear
                           : name.find("_Cubic") != std::string::npos ? kIppCubic
                                                                      : kIppNearest;
        const int chan = FPrim.Layout == prim::TFXLayout::AC4 ? kIppAC4 : channels;
        std::array<const Ipp32s*, 4> values = FArgs.LutValues, levels = FArgs.LutLevels;
        std::array<int, 4> counts = FArgs.LevelCounts;
        int size = 0;
        if (getSize == nullptr || init == nullptr || FLut == nullptr ||
            getSize(interp, type, chan, FArgs.Roi, counts.data(), &size) != 0)
            return false;
        FSpec.resize(std::size_t(size) + 64);
        return init(interp, chan, FArgs.Roi, values.data(), levels.data(), counts.data(),
                    FSpec.data()) == 0;
    }

    bool PrepareHistogram(int type, const std::string& suffix)
    {
        FChannels = prim::FXChannels(FPrim.Layout); // AC4 counts as C4
        FCounted = prim::FXProcessedChannels(FPrim.Layout);
        auto bufferSize = Symbol<THistogramBufferSize>("ippiHistogramGetBufferSize");
        auto init = Symbol<THistogramInit>("ippiHistogramUniformInit");
        FGetLevels = Symbol<THistogramLevels>("ippiHistogramGetLevels");
        FHistogram = Symbol<THistogram>("ippiHistogram" + (FPrim.Layout == prim::TFXLayout::AC4
                                                               ? std::string("_8u_C4R")
                                                               : suffix));
        std::array<Ipp32f, 4> lower{}, upper{};
        std::array<int, 4> counts{};
        for (int c = 0; c < FChannels; ++c) {
            const int k = c < FCounted ? c : 0; // alpha of AC4: any valid bins
            lower[c] = Ipp32f(FArgs.Lower[k]);
            upper[c] = Ipp32f(FArgs.Upper[k]);
            counts[c] = FArgs.LevelCounts[k];
        }
        int specSize = 0, size = 0;
        if (bufferSize == nullptr || init == nullptr || FGetLevels == nullptr ||
            FHistogram == nullptr ||
            bufferSize(type, FArgs.Roi, counts.data(), FChannels, 1, &specSize, &size) != 0)
            return false;
        FSpec.resize(std::size_t(specSize) + 64);
        FBuffer.resize(std::size_t(size) + 64);
        if (init(type, lower.data(), upper.data(), counts.data(), FChannels, FSpec.data()) < 0)
            return false;
        for (int c = 0; c < FChannels; ++c) {
            FCounts[c].resize(std::size_t(counts[c]) - 1);
            FLevels[c].resize(std::size_t(counts[c]));
        }
        return true;
    }

    int RunHistogram()
    {
        std::array<Ipp32u*, 4> counts{};
        std::array<Ipp32f*, 4> levels{};
        for (int c = 0; c < FChannels; ++c) {
            counts[c] = FCounts[c].data();
            levels[c] = FLevels[c].data();
        }
        // One channel passes its counts directly, several an array of them.
        const int s = FHistogram(FArgs.Src, FArgs.SrcStep, FArgs.Roi,
                                 FChannels == 1 ? static_cast<void*>(counts[0]) : counts.data(),
                                 FSpec.data(), FBuffer.data());
        if (s != 0 || FGetLevels(FSpec.data(), levels.data()) != 0)
            return s != 0 ? s : -1;
        for (int c = 0; c < FCounted; ++c) {
            for (std::size_t k = 0; k < FCounts[c].size(); ++k)
                FArgs.Hist[c][k] = Ipp32s(FCounts[c][k]);
            for (std::size_t k = 0; k < FLevels[c].size(); ++k)
                FArgs.HistLevels[c][k] = Ipp32s(FLevels[c][k]);
        }
        return 0;
    }

    // Border values are passed by value (C1) or by pointer (C3, C4) depending on the function;
    // both travel in an integer register, so one pointer-typed declaration serves.
    using TMaskFilter = int (*)(const void*, int, void*, int, IppiSize, IppiSize, int, const void*,
                                Ipp8u*);
    using TBufferSize = int (*)(IppiSize, IppiSize, int, int, int*);
    using TGetSize = int (*)(IppiSize, IppiSize, int, int, int, int*, int*);
    using TInit = int (*)(const Ipp32f*, IppiSize, int, int, int, void*);
    using TKernelFilter = int (*)(const void*, int, void*, int, IppiSize, int, const void*,
                                  const void*, Ipp8u*);
    using TLutGetSize = int (*)(int, int, int, IppiSize, const int*, int*);
    using TLutInit = int (*)(int, int, IppiSize, const Ipp32s**, const Ipp32s**, int*, void*);
    using TLut = int (*)(const void*, int, void*, int, IppiSize, void*);
    using THistogramBufferSize = int (*)(int, IppiSize, const int*, int, int, int*, int*);
    using THistogramInit = int (*)(int, Ipp32f*, Ipp32f*, int*, int, void*);
    using THistogramLevels = int (*)(const void*, Ipp32f**);
    using THistogram = int (*)(const void*, int, IppiSize, void*, const void*, Ipp8u*);

    template <class Fn> static Fn Symbol(const std::string& name)
    {
        return reinterpret_cast<Fn>(FXRealIppSymbol(name));
    }

    // How the integer convolution family and the fixed medians reach IPP.
    enum class TKind { Legacy, FilterBorder, Named8u16s, Named, SameName };
    static constexpr int kIpp16s = 7, kIppAlgHintAccurate = 2;
    using TSetMode = int (*)(int, int, void*);
    using TInit16s = int (*)(const Ipp16s*, IppiSize, int, int, int, int, void*);
    using TNamedBufferSize = int (*)(IppiSize, int, int, int, int, int*);
    using TNamedFilter = int (*)(const void*, int, void*, int, IppiSize, int, int, const void*,
                                 Ipp8u*);
    using TSameName = int (*)(const void*, int, void*, int, IppiSize, int);

    bool PrepareKernelFamily(const Ipp8u* src, int type, int channels)
    {
        const std::string name(FPrim.Name);
        const std::string op = name.substr(0, name.find('_'));
        const std::string suffix = name.substr(name.find('_'));
        const bool c1u8 = FPrim.Sample == prim::TFXSample::U8 && channels == 1;
        const int code = FPrim.Shape == prim::TFXShape::FixedMaskFilter ? int(FArgs.MaskCode) : 33;
        FSrc = src;
        FMaskCode = code;
        if (op == "ippiFilterMedianCross" || op == "ippiFilterMedianColor") {
            FKind = TKind::SameName;
            FSameName = Symbol<TSameName>(name);
            return FSameName != nullptr;
        }
        const bool edge = op == "ippiFilterPrewittHoriz" || op == "ippiFilterPrewittVert" ||
                          op == "ippiFilterSobelHoriz" || op == "ippiFilterSobelVert" ||
                          op == "ippiFilterRobertsDown" || op == "ippiFilterRobertsUp";
        const bool named8u =
            op == "ippiFilterLaplace" || op == "ippiFilterHipass" || op == "ippiFilterSharpen";
        if ((edge && c1u8) || (named8u && FPrim.Sample == prim::TFXSample::U8)) {
            FKind = edge ? TKind::Named8u16s : TKind::Named;
            FNamed = Symbol<TNamedFilter>(op + "Border" + (edge ? "_8u16s_C1R" : suffix));
            auto size = Symbol<TNamedBufferSize>(op + "BorderGetBufferSize");
            int bytes = 0;
            if (FNamed == nullptr || size == nullptr ||
                size(FArgs.Roi, code, kIpp8u, edge ? kIpp16s : kIpp8u, channels, &bytes) != 0)
                return false;
            FBuffer.resize(std::size_t(bytes) + 64);
            FEdges.resize(std::size_t(FArgs.Roi.width) * FArgs.Roi.height);
            return true;
        }
        // ippiFilterBorder with a kernel: the caller's or the published one.
        std::vector<Ipp32s> kernel;
        IppiSize size = FArgs.Mask;
        IppiPoint anchor = FArgs.Anchor;
        int divisor = FArgs.Divisor;
        if (FPrim.Shape == prim::TFXShape::KernelFilter) {
            kernel.assign(FArgs.IntKernel, FArgs.IntKernel + std::size_t(size.width) * size.height);
        } else {
            const prim::TFXFixedKernel& k = FixedKernel(op, code);
            kernel.assign(k.Published.begin(), k.Published.begin() + k.Size * k.Size);
            size = {k.Size, k.Size};
            anchor = {k.Size / 2, k.Size / 2};
            divisor = k.Divisor;
        }
        const auto outside = [](Ipp32s v) { return v < -32768 || v > 32767; };
        if (divisor <= 0 || std::any_of(kernel.begin(), kernel.end(), outside)) {
            FCaseSkipped = true;
            return false;
        }
        FKind = TKind::FilterBorder;
        // IPP's C1 path rounds exact halves up whatever the rounding mode (its C3 and C4 paths
        // follow ippRndNear), so a C1 image runs as C3 with every sample in all three channels.
        FExpand = channels == 1 && !FTiming;
        const int ippChannels = FExpand ? 3 : channels;
        const std::string sample = FPrim.Sample == prim::TFXSample::U8 ? "_8u" : "_16u";
        FKernel = Symbol<TKernelFilter>("ippiFilterBorder" + sample + "_C" +
                                        std::to_string(ippChannels) + "R");
        auto getSize = Symbol<TGetSize>("ippiFilterBorderGetSize");
        auto init = Symbol<TInit16s>("ippiFilterBorderInit_16s");
        auto setMode = Symbol<TSetMode>("ippiFilterBorderSetMode");
        if (FKernel == nullptr || getSize == nullptr || init == nullptr || setMode == nullptr)
            return false;
        std::vector<Ipp16s> reversed(kernel.rbegin(), kernel.rend());
        int specSize = 0, bufferSize = 0;
        if (getSize(size, FArgs.Roi, type, kIpp16s, ippChannels, &specSize, &bufferSize) != 0)
            return false;
        FSpec.resize(std::size_t(specSize) + 64);
        FBuffer.resize(std::size_t(bufferSize) + 64);
        if (init(reversed.data(), size, divisor, type, ippChannels, kIppRndNear, FSpec.data()) !=
                0 ||
            (!FTiming && setMode(kIppAlgHintAccurate, 0, FSpec.data()) != 0))
            return false;
        const int sampleBytes = prim::FXSampleBytes(FPrim.Sample);
        int srcStep = FArgs.SrcStep;
        if (FExpand) {
            // The rows and columns the primitive reads, each sample three times.
            const prim::TFXMargins m = prim::FXShapeMargins(FPrim.Shape, FArgs);
            const int rows = m.Top + FArgs.Roi.height + m.Bottom;
            const int cols = m.Left + FArgs.Roi.width + m.Right;
            srcStep = cols * 3 * sampleBytes;
            FWide.resize(std::size_t(rows) * srcStep);
            for (int y = 0; y < rows; ++y)
                for (int x = 0; x < cols; ++x)
                    for (int c = 0; c < 3; ++c)
                        std::copy_n(src + std::ptrdiff_t(y - m.Top) * FArgs.SrcStep +
                                        std::ptrdiff_t(x - m.Left) * sampleBytes,
                                    sampleBytes,
                                    FWide.data() + std::size_t(y) * srcStep +
                                        (std::size_t(x) * 3 + c) * sampleBytes);
            src =
                FWide.data() + std::size_t(m.Top) * srcStep + std::size_t(m.Left) * 3 * sampleBytes;
            FWideDst.resize(std::size_t(FArgs.Roi.width) * FArgs.Roi.height * 3 * sampleBytes);
        }
        FSrcStep = srcStep;
        const int pixelBytes = ippChannels * sampleBytes;
        const int shiftX = anchor.x - (size.width - 1) + (size.width - 1) / 2;
        const int shiftY = anchor.y - (size.height - 1) + (size.height - 1) / 2;
        FSrc = src + std::ptrdiff_t(shiftY) * srcStep + std::ptrdiff_t(shiftX) * pixelBytes;
        return true;
    }

    static const prim::TFXFixedKernel& FixedKernel(const std::string& op, int code)
    {
        using namespace prim;
        static const struct {
            const char* Op;
            const TFXFixedKernel* Kernel3x3;
            const TFXFixedKernel* Kernel5x5;
        } kKernels[] = {
            {"ippiFilterPrewittHoriz", &kFXPrewittHoriz, &kFXPrewittHoriz},
            {"ippiFilterPrewittVert", &kFXPrewittVert, &kFXPrewittVert},
            {"ippiFilterSobelHoriz", &kFXSobelHoriz, &kFXSobelHoriz},
            {"ippiFilterSobelVert", &kFXSobelVert, &kFXSobelVert},
            {"ippiFilterRobertsDown", &kFXRobertsDown, &kFXRobertsDown},
            {"ippiFilterRobertsUp", &kFXRobertsUp, &kFXRobertsUp},
            {"ippiFilterSharpen", &kFXSharpen, &kFXSharpen},
            {"ippiFilterLaplace", &kFXLaplace3x3, &kFXLaplace5x5},
            {"ippiFilterGauss", &kFXGauss3x3, &kFXGauss5x5},
            {"ippiFilterHipass", &kFXHipass3x3, &kFXHipass5x5},
            {"ippiFilterLowpass", &kFXLowpass3x3, &kFXLowpass5x5},
        };
        for (const auto& k : kKernels)
            if (op == k.Op)
                return code == 55 ? *k.Kernel5x5 : *k.Kernel3x3;
        return kFXLowpass3x3;
    }

    int RunKernelFamily(const Ipp8u* zeros)
    {
        const bool ac4 = FPrim.Layout == prim::TFXLayout::AC4;
        auto* dst = static_cast<Ipp8u*>(FArgs.Dst);
        switch (FKind) {
        case TKind::SameName:
            return FSameName(FSrc, FArgs.SrcStep, dst, FArgs.DstStep, FArgs.Roi, FMaskCode);
        case TKind::Named:
            return FNamed(FSrc, FArgs.SrcStep, dst, FArgs.DstStep, FArgs.Roi, FMaskCode,
                          kIppBorderInMem, zeros, FBuffer.data());
        case TKind::Named8u16s: {
            const int width = FArgs.Roi.width;
            const int s = FNamed(FSrc, FArgs.SrcStep, FEdges.data(), width * 2, FArgs.Roi,
                                 FMaskCode, kIppBorderInMem, zeros, FBuffer.data());
            for (int y = 0; !FTiming && y < FArgs.Roi.height; ++y)
                for (int x = 0; x < width; ++x)
                    dst[std::ptrdiff_t(y) * FArgs.DstStep + x] =
                        Ipp8u(std::clamp<int>(FEdges[std::size_t(y) * width + x], 0, 255));
            return s;
        }
        default: {
            if (FExpand) {
                const int sampleBytes = prim::FXSampleBytes(FPrim.Sample);
                const int wideStep = FArgs.Roi.width * 3 * sampleBytes;
                const int s = FKernel(FSrc, FSrcStep, FWideDst.data(), wideStep, FArgs.Roi,
                                      kIppBorderInMem, zeros, FSpec.data(), FBuffer.data());
                for (int y = 0; y < FArgs.Roi.height; ++y)
                    for (int x = 0; x < FArgs.Roi.width; ++x)
                        std::copy_n(FWideDst.data() + std::size_t(y) * wideStep +
                                        std::size_t(x) * 3 * sampleBytes,
                                    sampleBytes,
                                    dst + std::ptrdiff_t(y) * FArgs.DstStep + x * sampleBytes);
                return s;
            }
            // AC4 runs as C4: keep the alpha bytes the destination had.
            std::vector<Ipp8u> alpha;
            for (int y = 0; ac4 && !FTiming && y < FArgs.Roi.height; ++y)
                for (int x = 0; x < FArgs.Roi.width; ++x)
                    alpha.push_back(dst[std::ptrdiff_t(y) * FArgs.DstStep + 4 * x + 3]);
            const int s = FKernel(FSrc, FSrcStep, dst, FArgs.DstStep, FArgs.Roi, kIppBorderInMem,
                                  zeros, FSpec.data(), FBuffer.data());
            std::size_t i = 0;
            for (int y = 0; ac4 && !FTiming && y < FArgs.Roi.height; ++y)
                for (int x = 0; x < FArgs.Roi.width; ++x)
                    dst[std::ptrdiff_t(y) * FArgs.DstStep + 4 * x + 3] = alpha[i++];
            return s;
        }
        }
    }

    const prim::TFXPrimitiveInfo& FPrim;
    prim::TFXShapeArgs FArgs;
    bool FTiming = false;
    const Ipp8u* FSrc = nullptr;
    TMaskFilter FMask = nullptr;
    TKernelFilter FKernel = nullptr;
    prim::TFXAnyFn FSame = nullptr;
    TLut FLut = nullptr;
    THistogram FHistogram = nullptr;
    THistogramLevels FGetLevels = nullptr;
    int FChannels = 0, FCounted = 0;
    std::array<std::vector<Ipp32u>, 4> FCounts;
    std::array<std::vector<Ipp32f>, 4> FLevels;
    std::vector<Ipp8u> FSpec, FBuffer;
    bool FReady = false;
    bool FCaseSkipped = false;
    TKind FKind = TKind::Legacy;
    int FMaskCode = 33;
    TNamedFilter FNamed = nullptr;
    TSameName FSameName = nullptr;
    std::vector<Ipp16s> FEdges;
    bool FExpand = false;
    int FSrcStep = 0;
    std::vector<Ipp8u> FWide, FWideDst;
};

// Makes IPP run its AVX2 code while it lives, where the processor has AVX2 (IPP keeps its own
// choice otherwise), then restores the features IPP had enabled. IPP's AVX-512 division
// rounds some exact halves down (175 / 10 gives 17) and gives 0 instead of the largest value
// for x / 0 at scale factors -14 and -15; its AVX2, SSE4.2 and SSE3 code all follow the
// documented rule, which is ours. (Restoring with ippInit would leave later switches without
// effect in IPP 2022.3, so the saved features are set back instead.)
class TFXIppAvx2Scope {
public:
    TFXIppAvx2Scope()
    {
        auto get = reinterpret_cast<TGetFeatures>(FXRealIppSymbol("ippGetEnabledCpuFeatures"));
        FSetFeatures = reinterpret_cast<TSetFeatures>(FXRealIppSymbol("ippSetCpuFeatures"));
        if (get == nullptr || FSetFeatures == nullptr)
            return;
        FSaved = get();
        FSet = FSetFeatures(kAvx2Features) == 0;
    }
    ~TFXIppAvx2Scope()
    {
        if (FSet)
            FSetFeatures(FSaved);
    }
    TFXIppAvx2Scope(const TFXIppAvx2Scope&) = delete;
    TFXIppAvx2Scope& operator=(const TFXIppAvx2Scope&) = delete;

    bool Active() const { return FSet; }

private:
    using TGetFeatures = unsigned long long (*)();
    using TSetFeatures = int (*)(unsigned long long);
    // IPP's "L9" feature set: MMX ... SSE4.2, AVX (enabled by the system), F16C, MOVBE, AVX2,
    // PREFETCHW.
    static constexpr unsigned long long kAvx2Features = 0x1 | 0x2 | 0x4 | 0x8 | 0x10 | 0x20 | 0x40 |
                                                        0x80 | 0x100 | 0x200 | 0x4000 | 0x8000 |
                                                        0x40000;
    TSetFeatures FSetFeatures = nullptr;
    unsigned long long FSaved = 0;
    bool FSet = false;
};

} // namespace framix::test
