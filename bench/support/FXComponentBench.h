// SPDX-License-Identifier: MIT
// What the component benchmarks share: a frame source, random 1080p frames, a component run
// between a source and a sink, and a primitive run alone, all counted in frames per second.
#pragma once

#include <benchmark/benchmark.h>

#if FRAMIX_HAVE_OPENCV
#include <opencv2/core.hpp>
#endif

#include <algorithm>
#include <cstdint>
#include <functional>
#include <random>
#include <string>

#include "bench/support/FXAllocationCounter.h"
#include "framework/FXCommonROIFilter.h"
#include "framework/FXGenericSink.h"
#include "framework/FXGraph.h"
#include "framework/primitives/FXIppTypes.h"
#include "framework/primitives/dispatch/FXPrimitiveLayer.h"

namespace framix::bench {

inline constexpr int kBenchWidth = 1920;
inline constexpr int kBenchHeight = 1080;

// A component with one output pin that the benchmark drives.
class TFXBenchSource : public TKTComponent {
public:
    explicit TFXBenchSource(TKTComponent* owner)
        : TKTComponent(owner), Output(*this, "OutputPin", Lock(), nullptr)
    {
    }
    TFXPXImageSourcePin Output;
};

// A 1920x1080 frame of seeded random bytes, padding included.
inline FXImageBufferPtr FXBenchFrame(TFXVideoFormat format)
{
    FXImageBufferPtr frame = new TFXImageBuffer(kBenchWidth, kBenchHeight, format);
    std::mt19937 random(7);
    std::uint8_t* p = frame->GetWritePointer();
    const std::ptrdiff_t bytes = std::ptrdiff_t(frame->GetRowStride()) * kBenchHeight;
    for (std::ptrdiff_t i = 0; i < bytes; ++i)
        p[i] = std::uint8_t(random());
    return frame;
}

inline void FXCountFrames(benchmark::State& state)
{
    state.counters["fps"] =
        benchmark::Counter(double(state.iterations()), benchmark::Counter::kIsRate);
}

// source -> T (set up by `configure`) -> sink, the same frame sent again each iteration; also
// counts heap allocations per frame once the pools are warm.
template <class T>
void FXRunComponent(benchmark::State& state, TFXVideoFormat format,
                    const std::function<void(T&)>& configure)
{
    TFXGraph graph;
    auto* source = new TFXBenchSource(&graph);
    auto* component = new T(&graph);
    configure(*component);
    component->GetImageInputPin().SetSourcePin(&source->Output);
    auto* sink = new TFXGenericSink(&graph);
    sink->GetImageInputPin().SetSourcePin(&component->GetImageOutputPin());
    source->Output.Notify(TPXStartFrameOperation(kBenchWidth, kBenchHeight, 400000, format));
    const FXImageBufferPtr frame = FXBenchFrame(format);
    for (int i = 0; i < 3; ++i)  // warm the pools and working memory
        source->Output.SendBuffer(frame);
    const std::uint64_t allocations = FXHeapAllocations();
    for (auto _ : state)
        source->Output.SendBuffer(frame);
    state.counters["allocs/frame"] = double(FXHeapAllocations() - allocations) /
                                     double(std::max<std::int64_t>(1, state.iterations()));
    FXCountFrames(state);
}

// A primitive call on a source and destination frame, on the region a component hands it.
using TFXBenchCall = std::function<void(const std::uint8_t* src, int srcStep, std::uint8_t* dst,
                                        int dstStep, IppiSize roi)>;

// Runs `call` on a random frame and a second frame of `format`, the frame less `reach`.
inline void FXRunPrimitive(benchmark::State& state, TFXVideoFormat format,
                           const TFXBenchCall& call, TFXMaskReach reach = {})
{
    FXStartPrimitiveLayer();
    const FXImageBufferPtr in = FXBenchFrame(format);
    const FXImageBufferPtr out = FXBenchFrame(format);
    const int bpp = in->GetBytesPerPixel();
    const std::uint8_t* src =
        in->GetReadPointer() + std::ptrdiff_t(reach.Top) * in->GetRowStride() + reach.Left * bpp;
    std::uint8_t* dst = out->GetWritePointer() + std::ptrdiff_t(reach.Top) * out->GetRowStride() +
                        reach.Left * bpp;
    const IppiSize roi{kBenchWidth - reach.Left - reach.Right,
                       kBenchHeight - reach.Top - reach.Bottom};
    for (auto _ : state) {
        call(src, in->GetRowStride(), dst, out->GetRowStride(), roi);
        benchmark::ClobberMemory();
    }
    FXCountFrames(state);
}

inline const char* FXBenchFormatName(TFXVideoFormat format)
{
    switch (format) {
    case vfRGB24: return "vfRGB24";
    case vfRGB32: return "vfRGB32";
    case vfGray8: return "vfGray8";
    default: return "vfGray16";
    }
}

#if FRAMIX_HAVE_OPENCV
// OpenCV's matrix type for a frame format.
inline int FXCvType(TFXVideoFormat format)
{
    switch (format) {
    case vfRGB24: return CV_8UC3;
    case vfRGB32: return CV_8UC4;
    case vfGray8: return CV_8UC1;
    default: return CV_16UC1;
    }
}

// Runs an OpenCV operation, single-threaded, on a random frame (wrapped, not copied) and an
// output matrix of the same type.
inline void FXRunOpenCv(benchmark::State& state, TFXVideoFormat format,
                        const std::function<void(const cv::Mat&, cv::Mat&)>& op)
{
    cv::setNumThreads(1);
    const FXImageBufferPtr frame = FXBenchFrame(format);
    const cv::Mat in(kBenchHeight, kBenchWidth, FXCvType(format),
                     const_cast<std::uint8_t*>(frame->GetReadPointer()),
                     std::size_t(frame->GetRowStride()));
    cv::Mat out(kBenchHeight, kBenchWidth, FXCvType(format));
    for (auto _ : state)
        op(in, out);
    FXCountFrames(state);
}

// Puts the input's alpha back into a four-channel output (what our components keep and OpenCV's
// own operations change).
inline void FXCvKeepAlpha(const cv::Mat& in, cv::Mat& out)
{
    const int alpha[] = {3, 3};
    cv::mixChannels(&in, 1, &out, 1, alpha, 1);
}
#endif

// Registers fn under `name`, timed in milliseconds.
inline void FXRegisterBench(const std::string& name, std::function<void(benchmark::State&)> fn)
{
    benchmark::RegisterBenchmark(name.c_str(), [fn](benchmark::State& s) { fn(s); })
        ->Unit(benchmark::kMillisecond);
}

} // namespace framix::bench
