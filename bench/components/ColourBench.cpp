// SPDX-License-Identifier: MIT
// The colour filters at 1920x1080 per admitted format, in frames per second: the component in a
// graph, the primitive it calls alone, and OpenCV's nearest operation (single-threaded).
#include <benchmark/benchmark.h>

#ifdef FRAMIX_HAVE_OPENCV
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#endif

#include <cstring>
#include <functional>
#include <random>
#include <string>

#include "bench/support/FXAllocationCounter.h"
#include "filters/colour/FXColorLookup.h"
#include "filters/colour/FXColorTwist.h"
#include "filters/colour/FXGammaFilter.h"
#include "filters/colour/FXHistogramEqualize.h"
#include "filters/colour/FXImageAdjust.h"
#include "filters/colour/FXThreshold.h"
#include "framework/FXGenericSink.h"
#include "framework/FXGraph.h"
#include "framework/primitives/dispatch/FXPrimitiveLayer.h"
#include "framework/primitives/dispatch/Fxconvdispatcher.h"
#include "framework/primitives/dispatch/Fxdispatcher.h"

namespace framix::bench {
namespace {

constexpr int kWidth = 1920, kHeight = 1080;

FXImageBufferPtr RandomFrame(TFXVideoFormat format)
{
    FXImageBufferPtr frame = new TFXImageBuffer(kWidth, kHeight, format);
    std::mt19937 random(7);
    std::uint8_t* p = frame->GetWritePointer();
    for (int i = 0; i < frame->GetRowStride() * kHeight; ++i)
        p[i] = std::uint8_t(random());
    return frame;
}

void Rate(benchmark::State& state)
{
    state.counters["fps"] = benchmark::Counter(1, benchmark::Counter::kIsIterationInvariantRate);
}

// A frame source for the component under test.
class TBenchSource : public TKTComponent {
public:
    explicit TBenchSource(TKTComponent* owner)
        : TKTComponent(owner), Output(*this, "OutputPin", Lock(), nullptr)
    {
    }
    TFXPXImageSourcePin Output;
};

// source -> T (set up by `setup`) -> sink; one frame per iteration.
template <class T>
void RunComponent(benchmark::State& state, TFXVideoFormat format,
                  const std::function<void(T&)>& setup)
{
    TFXGraph graph;
    auto* source = new TBenchSource(&graph);
    auto* filter = new T(&graph);
    auto* sink = new TFXGenericSink(&graph);
    setup(*filter);
    filter->GetImageInputPin().SetSourcePin(&source->Output);
    sink->GetImageInputPin().SetSourcePin(&filter->GetImageOutputPin());
    source->Output.Notify(TPXStartFrameOperation(kWidth, kHeight, 400000, format));
    const FXImageBufferPtr frame = RandomFrame(format);
    source->Output.SendBuffer(frame); // warm: pools and working memory
    const std::uint64_t allocations = FXHeapAllocations();
    for (auto _ : state)
        source->Output.SendBuffer(frame);
    state.counters["allocs/frame"] = double(FXHeapAllocations() - allocations) /
                                     double(std::max<std::int64_t>(1, state.iterations()));
    Rate(state);
}

// Runs `call` on a random frame and an output frame of `format`.
void RunPrimitive(benchmark::State& state, TFXVideoFormat format,
                  const std::function<void(const Ipp8u*, int, Ipp8u*, int, IppiSize)>& call)
{
    FXStartPrimitiveLayer();
    const FXImageBufferPtr in = RandomFrame(format);
    FXImageBufferPtr out = new TFXImageBuffer(kWidth, kHeight, format);
    Ipp8u* dst = out->GetWritePointer();
    for (auto _ : state) {
        call(in->GetReadPointer(), in->GetRowStride(), dst, out->GetRowStride(), {kWidth, kHeight});
        benchmark::ClobberMemory();
    }
    Rate(state);
}

void Register(const std::string& name, std::function<void(benchmark::State&)> fn)
{
    benchmark::RegisterBenchmark(name.c_str(), [fn](benchmark::State& s) {
        fn(s);
    })->Unit(benchmark::kMillisecond);
}

const char* Name(TFXVideoFormat format)
{
    return format == vfRGB24   ? "vfRGB24"
           : format == vfRGB32 ? "vfRGB32"
           : format == vfGray8 ? "vfGray8"
                               : "vfGray16";
}

// ---------------------------------------------------------------- settings

const float kSepia[3][4] = {
    {0.131f, 0.534f, 0.272f, 0.0f}, {0.168f, 0.686f, 0.349f, 0.0f}, {0.189f, 0.769f, 0.393f, 0.0f}};

void SetSepia(TFXColorTwist& twist)
{
    TFXColorTwists& t = twist.GetColorTwists();
    TFXColorChannelTwist* rows[3] = {&t.GetBlueTwist(), &t.GetGreenTwist(), &t.GetRedTwist()};
    for (int r = 0; r < 3; ++r)
        for (int i = 0; i < 4; ++i)
            rows[r]->SetItem(i, kSepia[r][i]);
}

// A three-point curve per channel (an S curve).
void SetCurves(TFXColorLookup& lookup, TFXColorLookupMode mode, int top)
{
    lookup.GetLookupTables().SetLookupMode(mode);
    for (int c = 0; c < 4; ++c) {
        TFXLookupTable& t = lookup.GetLookupTables().GetColorChannel(c);
        t.Add(0, 0);
        t.Add(top / 4, top / 8);
        t.Add(top * 3 / 4, top * 7 / 8);
        t.Add(top + 1, top + 1);
    }
}

// ---------------------------------------------------------------- registration

[[maybe_unused]] const bool kRegistered = [] {
    for (TFXVideoFormat f : {vfRGB24, vfRGB32}) {
        const std::string n = Name(f);
        const bool c4 = f == vfRGB32;
        Register("FXColorTwist/" + n + "/sepia",
                 [f](auto& s) { RunComponent<TFXColorTwist>(s, f, SetSepia); });
        Register("ippiColorTwist32f/" + n, [f, c4](auto& s) {
            RunPrimitive(s, f, [c4](const Ipp8u* a, int as, Ipp8u* b, int bs, IppiSize r) {
                (c4 ? ipp::ippiColorTwist32f_8u_AC4R : ipp::ippiColorTwist32f_8u_C3R)(a, as, b, bs,
                                                                                      r, kSepia);
            });
        });
        Register("FXGammaFilter/" + n + "/forward",
                 [f](auto& s) { RunComponent<TFXGammaFilter>(s, f, [](auto&) {}); });
        Register("ippiGammaFwd/" + n, [f, c4](auto& s) {
            RunPrimitive(s, f, [c4](const Ipp8u* a, int as, Ipp8u* b, int bs, IppiSize r) {
                (c4 ? ipp::ippiGammaFwd_8u_AC4R : ipp::ippiGammaFwd_8u_C3R)(a, as, b, bs, r);
            });
        });
        Register("FXImageAdjust/" + n + "/neutral",
                 [f](auto& s) { RunComponent<TFXImageAdjust>(s, f, [](auto&) {}); });
        Register("FXImageAdjust/" + n + "/contrast", [f](auto& s) {
            RunComponent<TFXImageAdjust>(s, f, [](TFXImageAdjust& a) {
                a.SetContrast(1.2f);
                a.SetBrightness(-0.05f);
            });
        });
        Register("FXImageAdjust/" + n + "/saturation", [f](auto& s) {
            RunComponent<TFXImageAdjust>(s, f, [](TFXImageAdjust& a) {
                a.SetSaturation(1.3f);
                a.SetHue(1.0f);
                a.SetContrast(1.1f);
            });
        });
        Register("FXThreshold/" + n + "/both",
                 [f](auto& s) { RunComponent<TFXThreshold>(s, f, [](auto&) {}); });
        Register("ippiThreshold_LTValGTVal/" + n, [f, c4](auto& s) {
            RunPrimitive(s, f, [c4](const Ipp8u* a, int as, Ipp8u* b, int bs, IppiSize r) {
                const Ipp8u lo[3] = {0, 0, 0}, hi[3] = {128, 128, 128}, v[3] = {0, 0, 0};
                (c4 ? ipp::ippiThreshold_LTValGTVal_8u_AC4R
                    : ipp::ippiThreshold_LTValGTVal_8u_C3R)(a, as, b, bs, r, lo, v, hi, v);
            });
        });
    }
    for (TFXVideoFormat f : {vfRGB24, vfRGB32, vfGray8, vfGray16}) {
        const std::string n = Name(f);
        const int top = f == vfGray16 ? 65535 : 255;
        for (TFXColorLookupMode mode : {clmStep, clmLinear, clmCubic}) {
            const std::string m = std::string(FXEnumNames(mode)[mode]);
            Register("FXColorLookup/" + n + "/" + m, [f, mode, top](auto& s) {
                RunComponent<TFXColorLookup>(s, f,
                                             [&](TFXColorLookup& l) { SetCurves(l, mode, top); });
            });
        }
        Register("FXHistogramEqualize/" + n,
                 [f](auto& s) { RunComponent<TFXHistogramEqualize>(s, f, [](auto&) {}); });
    }
    Register("memcpy/vfRGB24", [](auto& s) {
        RunPrimitive(s, vfRGB24, [](const Ipp8u* a, int as, Ipp8u* b, int, IppiSize r) {
            std::memcpy(b, a, std::size_t(as) * std::size_t(r.height));
        });
    });
    return true;
}();

#ifdef FRAMIX_HAVE_OPENCV
// OpenCV on the same frames, one thread.
void RunOpenCv(benchmark::State& state, int type, const std::function<void(cv::Mat&, cv::Mat&)>& op)
{
    cv::setNumThreads(1);
    cv::Mat src(kHeight, kWidth, type), dst;
    cv::randu(src, 0, 256);
    op(src, dst);
    for (auto _ : state) {
        op(src, dst);
        benchmark::ClobberMemory();
    }
    Rate(state);
}

[[maybe_unused]] const bool kRegisteredOpenCv = [] {
    for (int type : {CV_8UC3, CV_8UC4}) {
        const std::string n = type == CV_8UC3 ? "vfRGB24" : "vfRGB32";
        Register("opencv/transform/" + n, [type](auto& s) {
            RunOpenCv(s, type, [type](cv::Mat& a, cv::Mat& b) {
                // 8UC4 keeps alpha through a fourth row that copies it.
                cv::Mat m = type == CV_8UC3 ? cv::Mat(3, 4, CV_32F, (void*)kSepia).clone()
                                            : cv::Mat::zeros(4, 5, CV_32F);
                if (type == CV_8UC4) {
                    for (int r = 0; r < 3; ++r)
                        for (int c = 0; c < 3; ++c)
                            m.at<float>(r, c) = kSepia[r][c];
                    m.at<float>(3, 3) = 1.0f;
                }
                cv::transform(a, b, m);
            });
        });
        Register("opencv/LUT/" + n, [type](auto& s) {
            cv::Mat table(1, 256, CV_8U);
            for (int i = 0; i < 256; ++i)
                table.at<std::uint8_t>(i) = std::uint8_t(255 - i);
            RunOpenCv(s, type, [table](cv::Mat& a, cv::Mat& b) { cv::LUT(a, table, b); });
        });
        Register("opencv/threshold/" + n, [type](auto& s) {
            RunOpenCv(s, type, [](cv::Mat& a, cv::Mat& b) {
                cv::threshold(a, b, 128, 0, cv::THRESH_TOZERO_INV);
            });
        });
        Register("opencv/cvtColor-HLS-roundtrip/" + n, [type](auto& s) {
            RunOpenCv(s, type, [type](cv::Mat& a, cv::Mat& b) {
                static thread_local cv::Mat hls;
                cv::cvtColor(a, hls, type == CV_8UC3 ? cv::COLOR_BGR2HLS : cv::COLOR_BGRA2BGR);
                if (type == CV_8UC4)
                    cv::cvtColor(hls, hls, cv::COLOR_BGR2HLS);
                cv::cvtColor(hls, b, cv::COLOR_HLS2BGR);
            });
        });
    }
    Register("opencv/LUT/vfGray8", [](auto& s) {
        cv::Mat table(1, 256, CV_8U);
        for (int i = 0; i < 256; ++i)
            table.at<std::uint8_t>(i) = std::uint8_t(255 - i);
        RunOpenCv(s, CV_8UC1, [table](cv::Mat& a, cv::Mat& b) { cv::LUT(a, table, b); });
    });
    Register("opencv/equalizeHist/vfGray8", [](auto& s) {
        RunOpenCv(s, CV_8UC1, [](cv::Mat& a, cv::Mat& b) { cv::equalizeHist(a, b); });
    });
    Register("opencv/cvtColor-HLS-equalizeHist/vfRGB24", [](auto& s) {
        RunOpenCv(s, CV_8UC3, [](cv::Mat& a, cv::Mat& b) {
            static thread_local cv::Mat hls, planes[3];
            cv::cvtColor(a, hls, cv::COLOR_BGR2HLS);
            cv::split(hls, planes);
            cv::equalizeHist(planes[1], planes[1]);
            cv::merge(planes, 3, hls);
            cv::cvtColor(hls, b, cv::COLOR_HLS2BGR);
        });
    });
    return true;
}();
#endif

} // namespace
} // namespace framix::bench
