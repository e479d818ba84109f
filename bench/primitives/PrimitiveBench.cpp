// SPDX-License-Identifier: MIT
// Every registered primitive at every level this machine runs, at 1920x1080, beside memcpy and
// the real IPP where it is installed. Names: <primitive>/<level>/1920x1080/<parameters>.
#include "framework/primitives/FXPrimitiveRegistry.h"
#include "tests/primitives/support/FXIppOracle.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace framix::bench {
namespace {

using prim::TFXPrimitiveInfo;
using prim::TFXShape;

constexpr IppiSize kFrame{1920, 1080};

// A colour twist that mixes every channel and saturates some pixels.
constexpr Ipp32f kTwist[3][4] = {
    {0.9f, 0.2f, -0.1f, 4.0f}, {-0.2f, 1.1f, 0.1f, -3.0f}, {0.1f, -0.3f, 1.2f, 10.0f}};

// One parameter set of a shape, as it appears in the benchmark name.
struct TFXBenchParams {
    std::string Label;
    IppiSize Mask{1, 1};
    IppiPoint Anchor{0, 0};
    std::vector<Ipp32f> Kernel;
    int KernelAnchor = 0;
    std::vector<Ipp32s> IntKernel;
    int Divisor = 1;
    IppiMaskSize MaskCode = ippMskSize3x3;
    std::vector<Ipp32s> LutLevels, LutValues; // every channel alike
    int HistLevels = 0;
    Ipp32s Lower = 0, Upper = 0;
    int BitSize = 8;
    Ipp8u Limit = 96, UpperLimit = 160;
    // Arithmetic and compositing: scale factor, constants or alphas, compositing type, weight.
    int ScaleFactor = 0;
    int Values[4] = {200, 100, 50, 250};
    int AlphaType = 0;
    Ipp32f Weight = 0.3f;
    int Param = 0; // flip, round mode
};

// Copies, conversions, noise and signals: a label, the values and the flip or round mode.
TFXBenchParams Point(std::string label, std::initializer_list<int> values, int param = 0,
                     int scaleFactor = 0)
{
    TFXBenchParams p;
    p.Label = std::move(label);
    std::copy(values.begin(), values.end(), p.Values);
    p.Param = param;
    p.ScaleFactor = scaleFactor;
    return p;
}

// A k x k integer kernel of small mixed weights over 7 (16-bit sums for 8-bit samples).
TFXBenchParams IntKernelParams(int k)
{
    TFXBenchParams p;
    p.Label = "kernel:" + std::to_string(k) + "x" + std::to_string(k) + "/7";
    p.Mask = {k, k};
    p.Anchor = {k / 2, k / 2};
    for (int i = 0; i < k * k; ++i)
        p.IntKernel.push_back((i * 7) % 5 - 2);
    p.Divisor = 7;
    return p;
}

std::vector<TFXBenchParams> ParamsFor(const TFXPrimitiveInfo& p)
{
    const int maxValue = p.Sample == prim::TFXSample::U8 ? 255 : 65535;
    switch (p.Shape) {
    case TFXShape::MaskFilter:
        return {{"mask:3x3", {3, 3}, {1, 1}}, {"mask:5x5", {5, 5}, {2, 2}}};
    case TFXShape::KernelFilter:
        return {IntKernelParams(3), IntKernelParams(5)};
    case TFXShape::FixedFilter:
        return {{"fixed:3x3"}};
    case TFXShape::FixedMaskFilter: {
        TFXBenchParams p3{"mask:3x3"}, p5{"mask:5x5"};
        p5.MaskCode = ippMskSize5x5;
        return {p3, p5};
    }
    case TFXShape::RowFilter:
    case TFXShape::ColumnFilter:
        return {{"kernel:5", {1, 1}, {0, 0}, {0.0625f, 0.25f, 0.375f, 0.25f, 0.0625f}, 2}};
    case TFXShape::Lut:
    case TFXShape::LutChannels: { // a full curve: 257 levels, an S-shaped mapping
        TFXBenchParams params{"levels:257"};
        for (int i = 0; i <= 256; ++i) {
            params.LutLevels.push_back(i * (maxValue + 1) / 256);
            const double x = i / 256.0;
            params.LutValues.push_back(Ipp32s(maxValue * x * x * (3 - 2 * x)));
        }
        return {params};
    }
    case TFXShape::Histogram:
    case TFXShape::HistogramChannels: { // what histogram equalisation asks for
        TFXBenchParams params{"levels:" + std::to_string(maxValue + 1)};
        params.HistLevels = maxValue + 1;
        params.Upper = maxValue;
        return {params};
    }
    case TFXShape::LutPalette:
        return {{"bits:8"}};
    case TFXShape::BinarySfs:
    case TFXShape::BinaryInPlaceSfs:
        return {{"sf:0"}};
    case TFXShape::AlphaConst:
    case TFXShape::AlphaPixel: {
        TFXBenchParams over{"over"};
        over.Values[1] = 55; // alphas 200 and 55, as a cross-fade has them
        TFXBenchParams second = over;
        second.Label = p.Shape == TFXShape::AlphaConst ? "plus" : "atop";
        second.AlphaType = p.Shape == TFXShape::AlphaConst ? ippAlphaPlus : ippAlphaATop;
        return {over, second};
    }
    case TFXShape::Binary:
    case TFXShape::BinaryInPlace:
    case TFXShape::UnaryInPlace:
    case TFXShape::ConstScalar:
    case TFXShape::ConstVector:
    case TFXShape::ConstScalarInPlace:
    case TFXShape::ConstVectorInPlace:
    case TFXShape::Reduce:
    case TFXShape::AccumulateWeighted:
        return {{"point"}};
    case TFXShape::PixelMap:
    case TFXShape::ColorConvertC3P3:
    case TFXShape::ColorConvertP3C3:
    case TFXShape::ColorTwist:
        return {{"pixels"}}; // point operations
    case TFXShape::Threshold:
    case TFXShape::ThresholdBoth:
        return {{"limits:96/160"}};
    case TFXShape::SetScalar:
    case TFXShape::SetChannels:
    case TFXShape::SignalSet:
        return {Point("value:7", {7, 7, 7, 7})};
    case TFXShape::SwapChannels:
    case TFXShape::SwapChannelsInPlace:
        return {Point("order:210", {2, 1, 0})};
    case TFXShape::Mirror:
    case TFXShape::MirrorInPlace:
        return {Point("axis:horizontal", {}, ippAxsHorizontal),
                Point("axis:vertical", {}, ippAxsVertical), Point("axis:both", {}, ippAxsBoth)};
    case TFXShape::ConvertFromFloat:
        return {Point("round:near", {}, ippRndNear), Point("round:zero", {}, ippRndZero)};
    case TFXShape::AddNoise:
        return {Point("params:10,40", {10, 40})};
    case TFXShape::SignalAddScaled:
        return {Point("sf:0", {}, 0, 0), Point("sf:3", {}, 0, 3)};
    case TFXShape::SignalMulCScaled:
        return {Point("val:3,sf:2", {3}, 0, 2)};
    case TFXShape::SignalShiftC:
        return {Point("val:3", {3})};
    default:
        return {Point("", {})};
    }
}

// A 1080p frame with the margins the primitive reads, rows 64-byte aligned, and its output.
class TFXBenchImages {
public:
    // Signal primitives run over the frame's samples as one array (Roi {W * H, 1}).
    TFXBenchImages(const TFXPrimitiveInfo& p, const TFXBenchParams& params)
    {
        const prim::TFXShapeGeometry g = prim::FXShapeGeometry(p.Shape, p.Sample, p.Layout);
        FArgs.Roi = g.Signal ? IppiSize{kFrame.width * kFrame.height, 1} : kFrame;
        FArgs.Mask = params.Mask;
        FArgs.Anchor = params.Anchor;
        FKernel = params.Kernel;
        FArgs.Kernel = FKernel.data();
        FArgs.KernelSize = int(params.Kernel.size());
        FArgs.KernelAnchor = params.KernelAnchor;
        FIntKernel = params.IntKernel;
        FArgs.IntKernel = FIntKernel.data();
        FArgs.Divisor = params.Divisor;
        FArgs.MaskCode = params.MaskCode;
        FParams = params;
        for (int c = 0; c < 4; ++c) {
            FArgs.LutValues[c] = FParams.LutValues.data();
            FArgs.LutLevels[c] = FParams.LutLevels.data();
            FArgs.LevelCounts[c] =
                params.HistLevels > 0 ? params.HistLevels : int(params.LutLevels.size());
            FArgs.Lower[c] = params.Lower;
            FArgs.Upper[c] = params.Upper;
            FHist[c].resize(std::size_t(std::max(params.HistLevels, 1)));
            FHistLevels[c].resize(std::size_t(std::max(params.HistLevels, 1)));
            FArgs.Hist[c] = FHist[c].data();
            FArgs.HistLevels[c] = FHistLevels[c].data();
        }
        FPalette.resize(std::size_t(1) << params.BitSize);
        for (std::size_t i = 0; i < FPalette.size(); ++i)
            FPalette[i] = Ipp32u(0xFF000000u | i * 0x010101u);
        FArgs.Palette = FPalette.data();
        FArgs.BitSize = params.BitSize;
        FLimits = {params.Limit,      params.Limit,      params.Limit,      0,   0,   0,
                   params.UpperLimit, params.UpperLimit, params.UpperLimit, 255, 255, 255};
        FArgs.Limit = FLimits.data();
        FArgs.LimitValue = FLimits.data() + 3;
        FArgs.UpperLimit = FLimits.data() + 6;
        FArgs.UpperValue = FLimits.data() + 9;
        FArgs.Twist = kTwist;
        FArgs.ScaleFactor = params.ScaleFactor;
        std::copy(std::begin(params.Values), std::end(params.Values), FArgs.Values);
        FArgs.AlphaType = params.AlphaType;
        FArgs.Weight = params.Weight;
        FArgs.Param = params.Param;
        FArgs.Seed = &FSeed;
        const prim::TFXMargins m = prim::FXShapeMargins(p.Shape, FArgs);
        // Planar sides: the planes of one sample per pixel, stacked in one allocation.
        const IppiSize roi = FArgs.Roi;
        const int srcRow = (roi.width + m.Left + m.Right) * g.SrcPixelBytes;
        FArgs.SrcStep = (srcRow + 63) / 64 * 64;
        FArgs.Src2Step = FArgs.SrcStep;
        FArgs.DstStep = (roi.width * std::max(g.DstPixelBytes, 1) + 63) / 64 * 64;
        const std::size_t srcPlane = std::size_t(FArgs.SrcStep) * (roi.height + m.Top + m.Bottom);
        const std::size_t dstPlane = std::size_t(FArgs.DstStep) * roi.height;
        const std::size_t srcBytes = std::max<std::size_t>(srcPlane * g.SrcPlanes, 1);
        const std::size_t dstBytes = dstPlane * g.DstPlanes;
        std::mt19937 rng(7);
        // A maximum search stops at the largest value: keep it out of its image.
        const int range = g.Reduces ? 255 : 256;
        const auto image = [&](prim::TFXSample sample, std::size_t bytes) {
            TImage img(static_cast<Ipp8u*>(std::aligned_alloc(64, (bytes + 63) / 64 * 64)));
            FillSamples(sample, img.get(), bytes, rng, range);
            return img;
        };
        FSrc = image(g.SrcSample, srcBytes);
        if (g.SecondSource)
            FSrc2 = image(g.SrcSample, srcBytes);
        FDst = image(g.DstSample, dstBytes);
        const std::size_t origin =
            std::size_t(m.Top) * FArgs.SrcStep + std::size_t(m.Left) * g.SrcPixelBytes;
        FArgs.Src = g.SrcPixelBytes > 0 ? FSrc.get() + origin : nullptr;
        FArgs.Src2 = g.SecondSource ? FSrc2.get() + origin : nullptr;
        FArgs.Dst = FDst.get();
        for (int k = 0; k < prim::kFXMaxPlanes; ++k)
            FArgs.Planes[k] = g.SrcPlanes > 1 ? FSrc.get() + k * srcPlane
                                              : FDst.get() + (g.DstPlanes > 1 ? k * dstPlane : 0);
        // Bytes read and written per pixel.
        const int sources = g.SrcPlanes * (g.SecondSource ? 2 : 1);
        const double perPixel = sources * g.SrcPixelBytes + g.DstPlanes * g.DstPixelBytes *
                                                                (g.InPlace ? 2 : 1) *
                                                                (g.Reduces ? 0 : 1);
        FBytes = perPixel * double(roi.width) * roi.height;
    }

    const prim::TFXShapeArgs& Args() const { return FArgs; }
    double Bytes() const { return FBytes; }

private:
    struct TFree {
        void operator()(Ipp8u* p) const { std::free(p); }
    };
    using TImage = std::unique_ptr<Ipp8u, TFree>;
    // Random samples: bytes below `range`; floats in the 8-bit range and doubles of moderate
    // size, so that no special value takes a slow path.
    static void FillSamples(prim::TFXSample sample, Ipp8u* p, std::size_t bytes, std::mt19937& rng,
                            int range)
    {
        if (sample == prim::TFXSample::F32)
            for (std::size_t i = 0; i + 4 <= bytes; i += 4) {
                const float v = float(rng() % 30000) / 100.0f;
                std::memcpy(p + i, &v, 4);
            }
        else if (sample == prim::TFXSample::F64)
            for (std::size_t i = 0; i + 8 <= bytes; i += 8) {
                const double v = double(rng() % 200000) / 100.0 - 1000.0;
                std::memcpy(p + i, &v, 8);
            }
        else
            for (std::size_t i = 0; i < bytes; ++i)
                p[i] = Ipp8u(rng() % range);
    }

    prim::TFXShapeArgs FArgs;
    std::vector<Ipp32f> FKernel;
    std::vector<Ipp32s> FIntKernel;
    TFXBenchParams FParams;
    std::array<std::vector<Ipp32s>, 4> FHist, FHistLevels;
    std::vector<Ipp32u> FPalette;
    std::array<Ipp8u, 12> FLimits{};
    TImage FSrc, FSrc2, FDst;
    unsigned int FSeed = 1;
    double FBytes = 0;
};

void SetCounters(benchmark::State& state, double bytes)
{
    state.SetBytesProcessed(int64_t(double(state.iterations()) * bytes));
    state.counters["MPix/s"] = benchmark::Counter(double(kFrame.width) * kFrame.height / 1e6,
                                                  benchmark::Counter::kIsIterationInvariantRate);
}

void RunLevel(benchmark::State& state, const TFXPrimitiveInfo* p, TFXSimdLevel level,
              TFXBenchParams params)
{
    const TFXBenchImages images(*p, params);
    const prim::TFXAnyFn fn = p->At(level);
    const IppStatus first = prim::FXCallShape(p->Shape, p->Sample, fn, images.Args());
    if (first < ippStsNoErr || first == prim::kFXDeclined) { // warnings are fine
        state.SkipWithError(first == prim::kFXDeclined ? "declined: the reference runs"
                                                       : "the primitive failed");
        return;
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(prim::FXCallShape(p->Shape, p->Sample, fn, images.Args()));
        benchmark::ClobberMemory();
    }
    SetCounters(state, images.Bytes());
}

// IPP at its own choice of code (its AVX-512 code here) or, for the comparison with our AVX2
// level, made to run its AVX2 code.
void RunIpp(benchmark::State& state, const TFXPrimitiveInfo* p, TFXBenchParams params, bool avx2)
{
    std::optional<test::TFXIppAvx2Scope> avx2Code;
    if (avx2 && !avx2Code.emplace().Active()) {
        state.SkipWithError("IPP cannot be switched to its AVX2 code");
        return;
    }
    const TFXBenchImages images(*p, params);
    test::TFXIppOracle ipp(*p, images.Args(), test::TFXIppPurpose::Timing);
    if (!ipp.Ready() || ipp.Run() < 0) { // warnings are fine
        state.SkipWithError("IPP refused the arguments");
        return;
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(ipp.Run());
        benchmark::ClobberMemory();
    }
    SetCounters(state, images.Bytes());
}

void RunMemcpy(benchmark::State& state, int pixelBytes)
{
    const std::size_t bytes = std::size_t(kFrame.width) * kFrame.height * pixelBytes;
    std::vector<Ipp8u> src(bytes, 1), dst(bytes);
    for (auto _ : state) {
        std::memcpy(dst.data(), src.data(), bytes);
        benchmark::DoNotOptimize(dst.data());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(bytes) * 2);
}

bool RegisterAll()
{
    // The real IPP from scripts/install-ipp.sh, unless FRAMIX_IPP_DIR says otherwise.
    const bool ipp = test::FXRealIppLoaded();
    const std::string frame =
        "/" + std::to_string(kFrame.width) + "x" + std::to_string(kFrame.height);
    for (const TFXPrimitiveInfo& p : prim::FXAllPrimitives())
        for (const TFXBenchParams& params : ParamsFor(p)) {
            for (TFXSimdLevel level : kFXAllSimdLevels)
                if (p.Has(level) && FXCpuSupports(level))
                    benchmark::RegisterBenchmark((std::string(p.Name) + "/" +
                                                  std::string(FXLevelName(level)) + frame +
                                                  (params.Label.empty() ? "" : "/") + params.Label)
                                                     .c_str(),
                                                 RunLevel, &p, level, params)
                        ->Unit(benchmark::kMicrosecond);
            if (ipp)
                for (const bool avx2 : {false, true})
                    benchmark::RegisterBenchmark((std::string(p.Name) +
                                                  (avx2 ? "/ipp-avx2" : "/ipp") + frame +
                                                  (params.Label.empty() ? "" : "/") + params.Label)
                                                     .c_str(),
                                                 RunIpp, &p, params, avx2)
                        ->Unit(benchmark::kMicrosecond);
        }
    for (int pixelBytes : {1, 2, 4})
        benchmark::RegisterBenchmark(("memcpy/1920x1080x" + std::to_string(pixelBytes)).c_str(),
                                     RunMemcpy, pixelBytes)
            ->Unit(benchmark::kMicrosecond);
    return true;
}

const bool kRegistered = RegisterAll();

} // namespace
} // namespace framix::bench
