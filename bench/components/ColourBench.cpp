// SPDX-License-Identifier: MIT
// The colour filters at 1920x1080 per admitted format, in frames per second: the component in a
// graph, the primitive it calls alone, and OpenCV's nearest operation (single-threaded).
#include <benchmark/benchmark.h>

#if FRAMIX_HAVE_OPENCV
#include <opencv2/imgproc.hpp>
#endif

#include <cstring>
#include <string>

#include "bench/support/FXComponentBench.h"
#include "filters/colour/FXColorLookup.h"
#include "filters/colour/FXColorTwist.h"
#include "filters/colour/FXGammaFilter.h"
#include "filters/colour/FXHistogramEqualize.h"
#include "filters/colour/FXImageAdjust.h"
#include "filters/colour/FXThreshold.h"
#include "framework/primitives/dispatch/Fxconvdispatcher.h"
#include "framework/primitives/dispatch/Fxdispatcher.h"

namespace framix::bench {
namespace {

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
        const std::string n = FXBenchFormatName(f);
        const bool c4 = f == vfRGB32;
        FXRegisterBench("FXColorTwist/" + n + "/sepia",
                        [f](auto& s) { FXRunComponent<TFXColorTwist>(s, f, SetSepia); });
        FXRegisterBench("ippiColorTwist32f/" + n, [f, c4](auto& s) {
            FXRunPrimitive(s, f, [c4](const Ipp8u* a, int as, Ipp8u* b, int bs, IppiSize r) {
                (c4 ? ipp::ippiColorTwist32f_8u_AC4R : ipp::ippiColorTwist32f_8u_C3R)(a, as, b, bs,
                                                                                      r, kSepia);
            });
        });
        FXRegisterBench("FXGammaFilter/" + n + "/forward",
                        [f](auto& s) { FXRunComponent<TFXGammaFilter>(s, f, [](auto&) {}); });
        FXRegisterBench("ippiGammaFwd/" + n, [f, c4](auto& s) {
            FXRunPrimitive(s, f, [c4](const Ipp8u* a, int as, Ipp8u* b, int bs, IppiSize r) {
                (c4 ? ipp::ippiGammaFwd_8u_AC4R : ipp::ippiGammaFwd_8u_C3R)(a, as, b, bs, r);
            });
        });
        FXRegisterBench("FXImageAdjust/" + n + "/neutral",
                        [f](auto& s) { FXRunComponent<TFXImageAdjust>(s, f, [](auto&) {}); });
        FXRegisterBench("FXImageAdjust/" + n + "/contrast", [f](auto& s) {
            FXRunComponent<TFXImageAdjust>(s, f, [](TFXImageAdjust& a) {
                a.SetContrast(1.2f);
                a.SetBrightness(-0.05f);
            });
        });
        FXRegisterBench("FXImageAdjust/" + n + "/saturation", [f](auto& s) {
            FXRunComponent<TFXImageAdjust>(s, f, [](TFXImageAdjust& a) {
                a.SetSaturation(1.3f);
                a.SetHue(1.0f);
                a.SetContrast(1.1f);
            });
        });
        FXRegisterBench("FXThreshold/" + n + "/both",
                        [f](auto& s) { FXRunComponent<TFXThreshold>(s, f, [](auto&) {}); });
        FXRegisterBench("ippiThreshold_LTValGTVal/" + n, [f, c4](auto& s) {
            FXRunPrimitive(s, f, [c4](const Ipp8u* a, int as, Ipp8u* b, int bs, IppiSize r) {
                const Ipp8u lo[3] = {0, 0, 0}, hi[3] = {128, 128, 128}, v[3] = {0, 0, 0};
                (c4 ? ipp::ippiThreshold_LTValGTVal_8u_AC4R
                    : ipp::ippiThreshold_LTValGTVal_8u_C3R)(a, as, b, bs, r, lo, v, hi, v);
            });
        });
    }
    for (TFXVideoFormat f : {vfRGB24, vfRGB32, vfGray8, vfGray16}) {
        const std::string n = FXBenchFormatName(f);
        const int top = f == vfGray16 ? 65535 : 255;
        for (TFXColorLookupMode mode : {clmStep, clmLinear, clmCubic}) {
            const std::string m = std::string(FXEnumNames(mode)[mode]);
            FXRegisterBench("FXColorLookup/" + n + "/" + m, [f, mode, top](auto& s) {
                FXRunComponent<TFXColorLookup>(s, f,
                                               [&](TFXColorLookup& l) { SetCurves(l, mode, top); });
            });
        }
        FXRegisterBench("FXHistogramEqualize/" + n,
                        [f](auto& s) { FXRunComponent<TFXHistogramEqualize>(s, f, [](auto&) {}); });
    }
    FXRegisterBench("memcpy/vfRGB24", [](auto& s) {
        FXRunPrimitive(s, vfRGB24, [](const Ipp8u* a, int as, Ipp8u* b, int, IppiSize r) {
            std::memcpy(b, a, std::size_t(as) * std::size_t(r.height));
        });
    });
    return true;
}();

#if FRAMIX_HAVE_OPENCV
[[maybe_unused]] const bool kRegisteredOpenCv = [] {
    for (TFXVideoFormat f : {vfRGB24, vfRGB32}) {
        const std::string n = FXBenchFormatName(f);
        const int type = FXCvType(f);
        FXRegisterBench("opencv/transform/" + n, [f, type](auto& s) {
            FXRunOpenCv(s, f, [type](const cv::Mat& a, cv::Mat& b) {
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
        FXRegisterBench("opencv/LUT/" + n, [f](auto& s) {
            cv::Mat table(1, 256, CV_8U);
            for (int i = 0; i < 256; ++i)
                table.at<std::uint8_t>(i) = std::uint8_t(255 - i);
            FXRunOpenCv(s, f, [table](const cv::Mat& a, cv::Mat& b) { cv::LUT(a, table, b); });
        });
        FXRegisterBench("opencv/threshold/" + n, [f](auto& s) {
            FXRunOpenCv(s, f, [](const cv::Mat& a, cv::Mat& b) {
                cv::threshold(a, b, 128, 0, cv::THRESH_TOZERO_INV);
            });
        });
        if (type == CV_8UC4) // the same work as the component: the input's alpha put back
            FXRegisterBench("opencv/threshold-keeping-alpha/" + n, [f](auto& s) {
                FXRunOpenCv(s, f, [](const cv::Mat& a, cv::Mat& b) {
                    cv::threshold(a, b, 128, 0, cv::THRESH_TOZERO_INV);
                    FXCvKeepAlpha(a, b);
                });
            });
        FXRegisterBench("opencv/cvtColor-HLS-roundtrip/" + n, [f, type](auto& s) {
            FXRunOpenCv(s, f, [type](const cv::Mat& a, cv::Mat& b) {
                static thread_local cv::Mat hls;
                cv::cvtColor(a, hls, type == CV_8UC3 ? cv::COLOR_BGR2HLS : cv::COLOR_BGRA2BGR);
                if (type == CV_8UC4)
                    cv::cvtColor(hls, hls, cv::COLOR_BGR2HLS);
                cv::cvtColor(hls, b, cv::COLOR_HLS2BGR);
            });
        });
    }
    FXRegisterBench("opencv/LUT/vfGray8", [](auto& s) {
        cv::Mat table(1, 256, CV_8U);
        for (int i = 0; i < 256; ++i)
            table.at<std::uint8_t>(i) = std::uint8_t(255 - i);
        FXRunOpenCv(s, vfGray8, [table](const cv::Mat& a, cv::Mat& b) { cv::LUT(a, table, b); });
    });
    FXRegisterBench("opencv/equalizeHist/vfGray8", [](auto& s) {
        FXRunOpenCv(s, vfGray8, [](const cv::Mat& a, cv::Mat& b) { cv::equalizeHist(a, b); });
    });
    FXRegisterBench("opencv/cvtColor-HLS-equalizeHist/vfRGB24", [](auto& s) {
        FXRunOpenCv(s, vfRGB24, [](const cv::Mat& a, cv::Mat& b) {
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
