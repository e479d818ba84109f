// SPDX-License-Identifier: MIT
// Every registered primitive at every level this machine runs, at 1920x1080, beside memcpy and
// the real IPP where it is installed. Names: <primitive>/<level>/1920x1080/<parameters>.
#include "framework/primitives/FXPrimitiveRegistry.h"
#include "tests/primitives/support/FXIppOracle.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace framix::bench {
namespace {

using prim::TFXPrimitiveInfo;
using prim::TFXShape;

constexpr IppiSize kFrame{1920, 1080};

// One parameter set of a shape, as it appears in the benchmark name.
struct TFXBenchParams {
    std::string Label;
    IppiSize Mask{1, 1};
    IppiPoint Anchor{0, 0};
    std::vector<Ipp32f> Kernel;
    int KernelAnchor = 0;
    int Values[4] = {0, 0, 0, 0}; // point operations (TFXShapeArgs::Values, Param)
    int Param = 0;
};

TFXBenchParams Point(std::string label, std::initializer_list<int> values, int param = 0)
{
    TFXBenchParams p;
    p.Label = std::move(label);
    std::copy(values.begin(), values.end(), p.Values);
    p.Param = param;
    return p;
}

std::vector<TFXBenchParams> ParamsFor(TFXShape shape)
{
    switch (shape) {
    case TFXShape::MaskFilter:
        return {{"mask:3x3", {3, 3}, {1, 1}, {}, 0}, {"mask:5x5", {5, 5}, {2, 2}, {}, 0}};
    case TFXShape::RowFilter:
    case TFXShape::ColumnFilter:
        return {{"kernel:5", {1, 1}, {0, 0}, {0.0625f, 0.25f, 0.375f, 0.25f, 0.0625f}, 2}};
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
        return {Point("sf:0", {}, 0), Point("sf:3", {}, 3)};
    case TFXShape::SignalMulCScaled:
        return {Point("val:3,sf:2", {3}, 2)};
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
        std::copy(std::begin(params.Values), std::end(params.Values), FArgs.Values);
        FArgs.Param = params.Param;
        FArgs.Seed = &FSeed;
        const IppiSize roi = FArgs.Roi;
        const prim::TFXMargins m = prim::FXShapeMargins(p.Shape, FArgs);
        const int srcRow = (roi.width + m.Left + m.Right) * g.SrcPixelBytes;
        FArgs.SrcStep = (srcRow + 63) / 64 * 64;
        FArgs.DstStep = (roi.width * g.DstPixelBytes + 63) / 64 * 64;
        const std::size_t srcBytes =
            std::size_t(FArgs.SrcStep) * (roi.height + m.Top + m.Bottom) * g.SrcPlanes;
        const std::size_t dstBytes = std::size_t(FArgs.DstStep) * roi.height * g.DstPlanes;
        if (srcBytes > 0) {
            FSrc.reset(static_cast<Ipp8u*>(std::aligned_alloc(64, srcBytes)));
            FillSource(g.SrcSample, FSrc.get(), srcBytes);
            FArgs.Src = FSrc.get() + std::size_t(m.Top) * FArgs.SrcStep +
                        std::size_t(m.Left) * g.SrcPixelBytes;
        }
        FDst.reset(static_cast<Ipp8u*>(std::aligned_alloc(64, dstBytes)));
        if (g.InPlace)
            FillSource(g.DstSample, FDst.get(), dstBytes);
        else
            std::memset(FDst.get(), 0, dstBytes);
        FArgs.Dst = FDst.get();
        // read + written (+ read again in place)
        FBytes =
            double(roi.width) * roi.height *
            (g.SrcPixelBytes * g.SrcPlanes + g.DstPixelBytes * g.DstPlanes * (g.InPlace ? 2 : 1));
    }

    const prim::TFXShapeArgs& Args() const { return FArgs; }
    double Bytes() const { return FBytes; }

private:
    struct TFree {
        void operator()(Ipp8u* p) const { std::free(p); }
    };
    // Random bytes; floats in the 8-bit range and doubles of moderate size, so that no special
    // value takes a slow path.
    static void FillSource(prim::TFXSample sample, Ipp8u* p, std::size_t bytes)
    {
        std::mt19937 rng(7);
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
                p[i] = Ipp8u(rng());
    }

    unsigned int FSeed = 1;
    prim::TFXShapeArgs FArgs;
    std::vector<Ipp32f> FKernel;
    std::unique_ptr<Ipp8u, TFree> FSrc, FDst;
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
    if (first != ippStsNoErr) {
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

void RunIpp(benchmark::State& state, const TFXPrimitiveInfo* p, TFXBenchParams params)
{
    const TFXBenchImages images(*p, params);
    test::TFXIppOracle ipp(*p, images.Args());
    if (!ipp.Ready() || ipp.Run() != 0) {
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
    std::string repo = __FILE__;
    repo.resize(repo.size() - std::strlen("bench/primitives/PrimitiveBench.cpp"));
    setenv("FRAMIX_IPP_DIR", (repo + ".deps/ipp/lib").c_str(), 0);
    const bool ipp = test::FXRealIppLoaded();
    const std::string frame =
        "/" + std::to_string(kFrame.width) + "x" + std::to_string(kFrame.height);
    for (const TFXPrimitiveInfo& p : prim::FXAllPrimitives())
        for (const TFXBenchParams& params : ParamsFor(p.Shape)) {
            for (TFXSimdLevel level : kFXAllSimdLevels)
                if (p.Has(level) && FXCpuSupports(level))
                    benchmark::RegisterBenchmark((std::string(p.Name) + "/" +
                                                  std::string(FXLevelName(level)) + frame +
                                                  (params.Label.empty() ? "" : "/") + params.Label)
                                                     .c_str(),
                                                 RunLevel, &p, level, params)
                        ->Unit(benchmark::kMicrosecond);
            if (ipp)
                benchmark::RegisterBenchmark((std::string(p.Name) + "/ipp" + frame +
                                              (params.Label.empty() ? "" : "/") + params.Label)
                                                 .c_str(),
                                             RunIpp, &p, params)
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
