// SPDX-License-Identifier: MIT
// Mirror, noise and the Jaehne generator at 1920x1080 per format, in frames per second: the
// component, the primitive it calls alone, and OpenCV's nearest operation (single-threaded).
#include <benchmark/benchmark.h>

#include <string>

#include "bench/support/FXComponentBench.h"
#include "filters/colour/FXGaussNoise.h"
#include "filters/colour/FXJaehneGen.h"
#include "filters/colour/FXMirror.h"
#include "filters/colour/FXUniformNoise.h"
#include "framework/primitives/dispatch/Fxbasicdispatcher.h"
#include "framework/primitives/dispatch/Fxdispatcher.h"
#include "framework/primitives/dispatch/Fxjaehnedispatcher.h"

namespace framix::bench {
namespace {

constexpr TFXVideoFormat kFormats[] = {vfRGB24, vfRGB32, vfGray8, vfGray16};

void Mirror(const std::uint8_t* s, int ss, std::uint8_t* d, int ds, IppiSize roi,
            TFXVideoFormat format)
{
    using namespace ipp;
    const IppiAxis axis = ippAxsVertical;
    switch (format) {
    case vfRGB24: ippiMirror_8u_C3R(s, ss, d, ds, roi, axis); break;
    case vfRGB32: ippiMirror_8u_AC4R(s, ss, d, ds, roi, axis); break;
    case vfGray8: ippiMirror_8u_C1R(s, ss, d, ds, roi, axis); break;
    default:
        ippiMirror_16u_C1R(reinterpret_cast<const Ipp16u*>(s), ss, reinterpret_cast<Ipp16u*>(d),
                           ds, roi, axis);
    }
}

void GaussNoise(std::uint8_t* p, int step, IppiSize roi, TFXVideoFormat format, unsigned* seed)
{
    using namespace ipp;
    switch (format) {
    case vfRGB24: ippiAddRandGauss_Direct_8u_C3IR(p, step, roi, 0, 100, seed); break;
    case vfRGB32: ippiAddRandGauss_Direct_8u_AC4IR(p, step, roi, 0, 100, seed); break;
    case vfGray8: ippiAddRandGauss_Direct_8u_C1IR(p, step, roi, 0, 100, seed); break;
    default:
        ippiAddRandGauss_Direct_16u_C1IR(reinterpret_cast<Ipp16u*>(p), step, roi, 0, 25600, seed);
    }
}

void UniformNoise(std::uint8_t* p, int step, IppiSize roi, TFXVideoFormat format, unsigned* seed)
{
    using namespace ipp;
    switch (format) {
    case vfRGB24: ippiAddRandUniform_Direct_8u_C3IR(p, step, roi, 0, 255, seed); break;
    case vfRGB32: ippiAddRandUniform_Direct_8u_AC4IR(p, step, roi, 0, 255, seed); break;
    case vfGray8: ippiAddRandUniform_Direct_8u_C1IR(p, step, roi, 0, 255, seed); break;
    default:
        ippiAddRandUniform_Direct_16u_C1IR(reinterpret_cast<Ipp16u*>(p), step, roi, 0, 65280,
                                           seed);
    }
}

// A generator's frames, pumped by hand.
template <class T>
void RunGenerator(benchmark::State& state, const std::function<void(T&)>& configure)
{
    TFXGraph graph;
    auto* generator = new T(&graph);
    generator->GetImageSize().SetWidth(kBenchWidth);
    generator->GetImageSize().SetHeight(kBenchHeight);
    configure(*generator);
    auto* sink = new TFXGenericSink(&graph);
    sink->GetImageInputPin().SetSourcePin(&generator->GetImageOutputPin());
    generator->StartSource();
    generator->PumpFrame();
    for (auto _ : state)
        generator->PumpFrame();
    generator->StopSource();
    FXCountFrames(state);
}

void RegisterAll()
{
    for (const TFXVideoFormat f : kFormats) {
        const std::string fmt = FXBenchFormatName(f);
        FXRegisterBench("Components/Mirror/" + fmt + "/component", [f](benchmark::State& s) {
            FXRunComponent<TFXMirror>(s, f, [](TFXMirror& m) { m.SetMirrorType(mtVertical); });
        });
        FXRegisterBench("Components/Mirror/" + fmt + "/primitive", [f](benchmark::State& s) {
            FXRunPrimitive(s, f, [f](const std::uint8_t* src, int ss, std::uint8_t* dst, int ds,
                                     IppiSize roi) { Mirror(src, ss, dst, ds, roi, f); });
        });
        FXRegisterBench("Components/GaussNoise/" + fmt + "/component", [f](benchmark::State& s) {
            FXRunComponent<TFXGaussNoise>(s, f, [](TFXGaussNoise&) {});
        });
        FXRegisterBench("Components/GaussNoise/" + fmt + "/primitive", [f](benchmark::State& s) {
            unsigned seed = 1;
            FXRunPrimitive(s, f, [&](const std::uint8_t*, int, std::uint8_t* dst, int ds,
                                     IppiSize roi) { GaussNoise(dst, ds, roi, f, &seed); });
        });
        FXRegisterBench("Components/UniformNoise/" + fmt + "/component", [f](benchmark::State& s) {
            FXRunComponent<TFXUniformNoise>(s, f, [](TFXUniformNoise&) {});
        });
        FXRegisterBench("Components/UniformNoise/" + fmt + "/primitive", [f](benchmark::State& s) {
            unsigned seed = 1;
            FXRunPrimitive(s, f, [&](const std::uint8_t*, int, std::uint8_t* dst, int ds,
                                     IppiSize roi) { UniformNoise(dst, ds, roi, f, &seed); });
        });
#if FRAMIX_HAVE_OPENCV
        FXRegisterBench("Components/Mirror/" + fmt + "/opencv", [f](benchmark::State& s) {
            FXRunOpenCv(s, f, [](const cv::Mat& in, cv::Mat& out) { cv::flip(in, out, 1); });
        });
        if (f == vfRGB32) // the same work as the component: alpha left where it was
            FXRegisterBench("Components/Mirror/" + fmt + "/opencv-keeping-alpha",
                            [f](benchmark::State& s) {
                                FXRunOpenCv(s, f, [](const cv::Mat& in, cv::Mat& out) {
                                    cv::flip(in, out, 1);
                                    FXCvKeepAlpha(in, out);
                                });
                            });
        // OpenCV draws the noise into a frame; adding it costs one more pass on top.
        FXRegisterBench("Components/GaussNoise/" + fmt + "/opencv", [f](benchmark::State& s) {
            FXRunOpenCv(s, f, [](const cv::Mat&, cv::Mat& out) { cv::randn(out, 0, 100); });
        });
        FXRegisterBench("Components/UniformNoise/" + fmt + "/opencv", [f](benchmark::State& s) {
            FXRunOpenCv(s, f, [](const cv::Mat&, cv::Mat& out) { cv::randu(out, 0, 256); });
        });
#endif
    }
    FXRegisterBench("Components/UniformNoise/generator/component", [](benchmark::State& s) {
        RunGenerator<TFXUniformNoise>(s, [](TFXUniformNoise&) {});
    });
    FXRegisterBench("Components/JaehneGen/vfRGB24/component", [](benchmark::State& s) {
        RunGenerator<TFXJaehneGen>(s, [](TFXJaehneGen&) {});
    });
    FXRegisterBench("Components/JaehneGen/vfRGB24/primitive", [](benchmark::State& s) {
        FXRunPrimitive(s, vfRGB24, [](const std::uint8_t*, int, std::uint8_t* dst, int ds,
                                      IppiSize roi) { ipp::ippiImageJaehne_8u_C3R(dst, ds, roi); });
    });
}

const bool kRegistered = (RegisterAll(), true);

} // namespace
} // namespace framix::bench
