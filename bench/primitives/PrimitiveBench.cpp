// SPDX-License-Identifier: MIT
// Every registered primitive at every level this machine runs, at 1920x1080, beside memcpy and
// the real IPP where it is installed. Names: <primitive>/<level>/1920x1080/<parameters>.
#include "framework/primitives/FXPrimitiveRegistry.h"
#include "tests/primitives/support/FXIppOracle.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
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
    // Point operations: scale factor, constants or alphas, compositing type, weight.
    int ScaleFactor = 0;
    int Values[4] = {200, 100, 50, 250};
    int AlphaType = 0;
    Ipp32f Weight = 0.3f;
};

std::vector<TFXBenchParams> ParamsFor(TFXShape shape)
{
    if (shape == TFXShape::MaskFilter)
        return {{"mask:3x3", {3, 3}, {1, 1}, {}, 0}, {"mask:5x5", {5, 5}, {2, 2}, {}, 0}};
    if (shape == TFXShape::RowFilter || shape == TFXShape::ColumnFilter)
        return {{"kernel:5", {1, 1}, {0, 0}, {0.0625f, 0.25f, 0.375f, 0.25f, 0.0625f}, 2}};
    TFXBenchParams point{"point"};
    switch (shape) {
    case TFXShape::BinarySfs:
    case TFXShape::BinaryInPlaceSfs:
        point.Label = "sf:0";
        break;
    case TFXShape::AlphaConst:
    case TFXShape::AlphaPixel: {
        point.Values[1] = 55; // alphas 200 and 55, as a cross-fade has them
        TFXBenchParams second = point;
        point.Label = "over";
        second.Label = shape == TFXShape::AlphaConst ? "plus" : "atop";
        second.AlphaType = shape == TFXShape::AlphaConst ? 5 : 3;
        return {point, second};
    }
    default:
        break;
    }
    return {point};
}

// A 1080p frame with the margins the primitive reads, rows 64-byte aligned, and its output.
class TFXBenchImages {
public:
    TFXBenchImages(const TFXPrimitiveInfo& p, const TFXBenchParams& params)
    {
        FArgs.Roi = kFrame;
        FArgs.Mask = params.Mask;
        FArgs.Anchor = params.Anchor;
        FArgs.Kernel = params.Kernel.data();
        FArgs.KernelSize = int(params.Kernel.size());
        FArgs.KernelAnchor = params.KernelAnchor;
        FKernel = params.Kernel;
        FArgs.Kernel = FKernel.data();
        FArgs.ScaleFactor = params.ScaleFactor;
        std::copy(std::begin(params.Values), std::end(params.Values), FArgs.Values);
        FArgs.AlphaType = params.AlphaType;
        FArgs.Weight = params.Weight;
        const prim::TFXShapeTraits traits = prim::FXShapeTraits(p.Shape, p.Sample);
        const prim::TFXMargins m = prim::FXShapeMargins(p.Shape, FArgs);
        const int pixelBytes = prim::FXChannels(p.Layout) * prim::FXSampleBytes(p.Sample);
        const int dstPixelBytes = prim::FXChannels(p.Layout) * traits.DstSampleBytes;
        const int srcRow = (kFrame.width + m.Left + m.Right) * pixelBytes;
        FArgs.SrcStep = (srcRow + 63) / 64 * 64;
        FArgs.Src2Step = FArgs.SrcStep;
        FArgs.DstStep = (kFrame.width * dstPixelBytes + 63) / 64 * 64;
        const std::size_t srcBytes =
            std::size_t(FArgs.SrcStep) * (kFrame.height + m.Top + m.Bottom);
        const std::size_t dstBytes = std::size_t(FArgs.DstStep) * kFrame.height;
        std::mt19937 rng(7);
        // A maximum search stops at the largest value: keep it out of its image.
        const int range = traits.Reduces ? 255 : 256;
        const auto image = [&](std::size_t bytes) {
            TImage img(static_cast<Ipp8u*>(std::aligned_alloc(64, bytes)));
            for (std::size_t i = 0; i < bytes; ++i)
                img.get()[i] = Ipp8u(rng() % range);
            return img;
        };
        FSrc = image(srcBytes);
        FSrc2 = image(srcBytes);
        FDst = image(dstBytes);
        if (traits.DstSampleBytes == int(sizeof(Ipp32f)))
            for (std::size_t i = 0; i < dstBytes / sizeof(Ipp32f); ++i)
                reinterpret_cast<Ipp32f*>(FDst.get())[i] = float(i % 1000);
        const std::size_t origin =
            std::size_t(m.Top) * FArgs.SrcStep + std::size_t(m.Left) * pixelBytes;
        FArgs.Src = FSrc.get() + origin;
        FArgs.Src2 = FSrc2.get() + origin;
        FArgs.Dst = FDst.get();
        // Bytes read and written per pixel.
        const double perPixel = traits.Sources * pixelBytes + (traits.InPlace ? dstPixelBytes : 0) +
                                (traits.Reduces ? 0 : dstPixelBytes);
        FBytes = perPixel * double(kFrame.width) * kFrame.height;
    }

    const prim::TFXShapeArgs& Args() const { return FArgs; }
    double Bytes() const { return FBytes; }

private:
    struct TFree {
        void operator()(Ipp8u* p) const { std::free(p); }
    };
    using TImage = std::unique_ptr<Ipp8u, TFree>;
    prim::TFXShapeArgs FArgs;
    std::vector<Ipp32f> FKernel;
    TImage FSrc, FSrc2, FDst;
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

void RunIpp(benchmark::State& state, const TFXPrimitiveInfo* p, TFXBenchParams params)
{
    const TFXBenchImages images(*p, params);
    test::TFXIppOracle ipp(*p, images.Args());
    if (!ipp.Ready() || ipp.Run() < 0) {
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
        "/" + std::to_string(kFrame.width) + "x" + std::to_string(kFrame.height) + "/";
    for (const TFXPrimitiveInfo& p : prim::FXAllPrimitives())
        for (const TFXBenchParams& params : ParamsFor(p.Shape)) {
            for (TFXSimdLevel level : kFXAllSimdLevels)
                if (p.Has(level) && FXCpuSupports(level))
                    benchmark::RegisterBenchmark((std::string(p.Name) + "/" +
                                                  std::string(FXLevelName(level)) + frame +
                                                  params.Label)
                                                     .c_str(),
                                                 RunLevel, &p, level, params)
                        ->Unit(benchmark::kMicrosecond);
            if (ipp)
                benchmark::RegisterBenchmark(
                    (std::string(p.Name) + "/ipp" + frame + params.Label).c_str(), RunIpp, &p,
                    params)
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
