// SPDX-License-Identifier: MIT
// The RGB -> HLS -> RGB round trip image adjustment runs on every frame, at 1920x1080: ours
// (the selected level) beside OpenCV's cvtColor BGR -> HLS -> BGR, when OpenCV is installed.
#include "framework/primitives/FXPrimitiveRegistry.h"

#include <benchmark/benchmark.h>

#ifdef FRAMIX_HAVE_OPENCV
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#endif

#include <random>
#include <vector>

namespace framix::bench {
namespace {

constexpr IppiSize kFrame{1920, 1080};

std::vector<Ipp8u> RandomFrame()
{
    std::vector<Ipp8u> frame(std::size_t(kFrame.width) * kFrame.height * 3);
    std::mt19937 rng(11);
    for (Ipp8u& v : frame)
        v = Ipp8u(rng());
    return frame;
}

void BM_HlsRoundTrip(benchmark::State& state)
{
    const prim::TFXPrimitiveInfo* to = prim::FXFindPrimitive("ippiRGBToHLS_8u_C3R");
    const prim::TFXPrimitiveInfo* back = prim::FXFindPrimitive("ippiHLSToRGB_8u_C3R");
    std::vector<Ipp8u> src = RandomFrame(), hls(src.size()), dst(src.size());
    prim::TFXShapeArgs forward, backward;
    forward.Src = src.data();
    forward.Dst = hls.data();
    backward.Src = hls.data();
    backward.Dst = dst.data();
    forward.SrcStep = forward.DstStep = backward.SrcStep = backward.DstStep = kFrame.width * 3;
    forward.Roi = backward.Roi = kFrame;
    for (auto _ : state) {
        prim::FXCallShape(to->Shape, to->Sample, to->Entry, forward);
        prim::FXCallShape(back->Shape, back->Sample, back->Entry, backward);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_HlsRoundTrip)->Name("ColorHls/roundtrip/framix/1920x1080")->Unit(benchmark::kMicrosecond);

#ifdef FRAMIX_HAVE_OPENCV
void BM_HlsRoundTripOpenCv(benchmark::State& state)
{
    cv::setNumThreads(1);
    std::vector<Ipp8u> frame = RandomFrame();
    const cv::Mat src(kFrame.height, kFrame.width, CV_8UC3, frame.data());
    cv::Mat hls, dst;
    for (auto _ : state) {
        cv::cvtColor(src, hls, cv::COLOR_BGR2HLS);
        cv::cvtColor(hls, dst, cv::COLOR_HLS2BGR);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_HlsRoundTripOpenCv)
    ->Name("ColorHls/roundtrip/opencv/1920x1080")
    ->Unit(benchmark::kMicrosecond);
#endif

} // namespace
} // namespace framix::bench
