// SPDX-License-Identifier: MIT
// Neighbourhood filters at 1920x1080: each component, its primitive calls alone on the same
// region, and OpenCV's nearest equivalent (single-threaded), all as frames per second.
#include <benchmark/benchmark.h>

#include <functional>
#include <random>
#include <string>

#include "bench/support/FXComponentBench.h"
#include "filters/neighbourhood/FXBoxFilter.h"
#include "filters/neighbourhood/FXFixedFilter.h"
#include "filters/neighbourhood/FXGaussianBlur.h"
#include "filters/neighbourhood/FXRectKernelFilter.h"
#include "framework/FXMakeGaussianKernel.h"
#include "framework/primitives/dispatch/Fxbasicdispatcher.h"
#include "framework/primitives/dispatch/Fxdispatcher.h"

#if FRAMIX_HAVE_OPENCV
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#endif

namespace framix {
namespace {

using namespace bench;
using TFXPrimitiveCall = TFXBenchCall;

template <class T> const T* As(const std::uint8_t* p)
{
    return reinterpret_cast<const T*>(p);
}
template <class T> T* As(std::uint8_t* p)
{
    return reinterpret_cast<T*>(p);
}

// ---------------------------------------------------------------- primitive calls by format

// The row pass the blur runs (the column pass it would overwrite is skipped when the row pass
// succeeds).
TFXPrimitiveCall GaussianPasses(TFXVideoFormat f, int taps)
{
    auto k = std::make_shared<std::vector<float>>(std::size_t(taps));
    FXMakeGaussianKernelS(k->data(), taps - 1, 0.0);
    const int a = (taps + 1) / 2;
    return [f, k, taps, a](const std::uint8_t* s, int ss, std::uint8_t* d, int ds, IppiSize r) {
        using namespace ipp;
        switch (f) {
        case vfRGB24: ippiFilterRow32f_8u_C3R(s, ss, d, ds, r, k->data(), taps, a); break;
        case vfRGB32: ippiFilterRow32f_8u_C4R(s, ss, d, ds, r, k->data(), taps, a); break;
        case vfGray8: ippiFilterRow32f_8u_C1R(s, ss, d, ds, r, k->data(), taps, a); break;
        default:
            ippiFilterRow32f_16u_C1R(As<Ipp16u>(s), ss, As<Ipp16u>(d), ds, r, k->data(), taps, a);
            break;
        }
    };
}

TFXPrimitiveCall KernelFilter(TFXVideoFormat f, int side)
{
    auto k = std::make_shared<std::vector<Ipp32s>>(std::size_t(side * side), 1);
    const IppiSize m{side, side};
    const IppiPoint a{side / 2, side / 2};
    const int divisor = side * side;
    return [f, k, m, a, divisor](const std::uint8_t* s, int ss, std::uint8_t* d, int ds,
                                 IppiSize r) {
        using namespace ipp;
        switch (f) {
        case vfRGB24:
            ippiFilter_8u_C3R(s, ss, d, ds, r, k->data(), m, a, divisor);
            break;
        case vfRGB32:
            ippiFilter_8u_AC4R(s, ss, d, ds, r, k->data(), m, a, divisor);
            break;
        case vfGray8:
            ippiFilter_8u_C1R(s, ss, d, ds, r, k->data(), m, a, divisor);
            break;
        default:
            ippiFilter_16u_C1R(As<Ipp16u>(s), ss, As<Ipp16u>(d), ds, r, k->data(), m, a, divisor);
            break;
        }
    };
}

TFXPrimitiveCall BoxFilter(TFXVideoFormat f, int side)
{
    const IppiSize m{side, side};
    const IppiPoint a{side / 2, side / 2};
    return [f, m, a](const std::uint8_t* s, int ss, std::uint8_t* d, int ds, IppiSize r) {
        using namespace ipp;
        switch (f) {
        case vfRGB24:
            ippiFilterBox_8u_C3R(s, ss, d, ds, r, m, a);
            break;
        case vfRGB32:
            ippiFilterBox_8u_C4R(s, ss, d, ds, r, m, a);
            break;
        case vfGray8:
            ippiFilterBox_8u_C1R(s, ss, d, ds, r, m, a);
            break;
        default:
            ippiFilterBox_16u_C1R(As<Ipp16u>(s), ss, As<Ipp16u>(d), ds, r, m, a);
            break;
        }
    };
}

TFXPrimitiveCall FixedFilter(TFXVideoFormat f, TFXFixedFilterType type)
{
    return [f, type](const std::uint8_t* s, int ss, std::uint8_t* d, int ds, IppiSize r) {
        using namespace ipp;
        const bool sobel = type == ftSobelVert;
        switch (f) {
        case vfRGB24:
            (sobel ? ippiFilterSobelVert_8u_C3R : ippiFilterPrewittHoriz_8u_C3R)(s, ss, d, ds, r);
            break;
        case vfRGB32:
            // The fixed filter's four-channel step copies the alpha channel back afterwards.
            (sobel ? ippiFilterSobelVert_8u_AC4R : ippiFilterPrewittHoriz_8u_AC4R)(s, ss, d, ds, r);
            ippiCopy_8u_C4CR(s + 3, ss, d + 3, ds, r);
            break;
        case vfGray8:
            (sobel ? ippiFilterSobelVert_8u_C1R : ippiFilterPrewittHoriz_8u_C1R)(s, ss, d, ds, r);
            break;
        default:
            (sobel ? ippiFilterSobelVert_16u_C1R
                   : ippiFilterPrewittHoriz_16u_C1R)(As<Ipp16u>(s), ss, As<Ipp16u>(d), ds, r);
            break;
        }
    };
}

// ---------------------------------------------------------------- registration

struct TFXCase {
    std::string Name; // component/setting
    std::function<void(benchmark::State&, TFXVideoFormat)> Component;
    std::function<TFXMaskReach()> Reach;
    std::function<TFXPrimitiveCall(TFXVideoFormat)> Primitive;
#if FRAMIX_HAVE_OPENCV
    std::function<void(const cv::Mat&, cv::Mat&)> OpenCV;
    bool OpenCVGray16 = true;
#endif
};

std::vector<TFXCase> Cases()
{
    std::vector<TFXCase> cases;
    for (int taps : {5, 7}) {
        TFXCase c;
        c.Name = "FXGaussianBlur/" + std::string(taps == 5 ? "default" : "7x7");
        c.Component = [taps](benchmark::State& s, TFXVideoFormat f) {
            FXRunComponent<TFXGaussianBlur>(s, f, [taps](TFXGaussianBlur& b) {
                b.GetKernel().SetWidth(std::uint16_t(taps));
                b.GetKernel().SetHeight(std::uint16_t(taps));
            });
        };
        c.Reach = [taps] {
            const int a = (taps + 1) / 2;
            return FXKernelMaskReach({taps, taps}, {a, a});
        };
        c.Primitive = [taps](TFXVideoFormat f) { return GaussianPasses(f, taps); };
#if FRAMIX_HAVE_OPENCV
        c.OpenCV = [taps](const cv::Mat& in, cv::Mat& out) {
            static const cv::Mat k = cv::getGaussianKernel(taps, taps / 6.0, CV_32F);
            cv::sepFilter2D(in, out, -1, k, k);
        };
#endif
        cases.push_back(c);
    }
    for (int side : {3, 7}) {
        TFXCase c;
        c.Name = "FXRectKernelFilter/" + std::string(side == 3 ? "default" : "7x7");
        c.Component = [side](benchmark::State& s, TFXVideoFormat f) {
            FXRunComponent<TFXRectKernelFilter>(s, f, [side](TFXRectKernelFilter& k) {
                k.GetMaskSize().SetWidth(std::uint16_t(side));
                k.GetMaskSize().SetHeight(std::uint16_t(side));
                for (int y = 0; y < side; ++y)
                    for (int x = 0; x < side; ++x)
                        k.GetKernel().SetItem(x, y, 1.0f / float(side * side));
            });
        };
        c.Reach = [side] { return FXKernelMaskReach({side, side}, {side / 2, side / 2}); };
        c.Primitive = [side](TFXVideoFormat f) { return KernelFilter(f, side); };
#if FRAMIX_HAVE_OPENCV
        c.OpenCV = [side](const cv::Mat& in, cv::Mat& out) {
            static const cv::Mat k = cv::Mat::ones(side, side, CV_32F) / float(side * side);
            cv::filter2D(in, out, -1, k);
        };
#endif
        cases.push_back(c);
    }
    for (int side : {3, 7}) {
        TFXCase c;
        c.Name = "FXBoxFilter/" + std::string(side == 3 ? "default" : "7x7");
        c.Component = [side](benchmark::State& s, TFXVideoFormat f) {
            FXRunComponent<TFXBoxFilter>(s, f, [side](TFXBoxFilter& b) {
                b.GetMaskSize().SetWidth(std::uint16_t(side));
                b.GetMaskSize().SetHeight(std::uint16_t(side));
            });
        };
        c.Reach = [side] { return TFXMaskReach{side / 2, side / 2, side / 2, side / 2}; };
        c.Primitive = [side](TFXVideoFormat f) { return BoxFilter(f, side); };
#if FRAMIX_HAVE_OPENCV
        c.OpenCV = [side](const cv::Mat& in, cv::Mat& out) { cv::blur(in, out, {side, side}); };
#endif
        cases.push_back(c);
    }
    for (TFXFixedFilterType type : {ftPrewittHoriz, ftSobelVert}) {
        TFXCase c;
        c.Name = "FXFixedFilter/" + std::string(type == ftPrewittHoriz ? "default" : "sobel");
        c.Component = [type](benchmark::State& s, TFXVideoFormat f) {
            FXRunComponent<TFXFixedFilter>(s, f,
                                         [type](TFXFixedFilter& x) { x.SetFilterType(type); });
        };
        c.Reach = [] { return TFXMaskReach{2, 2, 2, 2}; };
        c.Primitive = [type](TFXVideoFormat f) { return FixedFilter(f, type); };
#if FRAMIX_HAVE_OPENCV
        if (type == ftSobelVert) {
            c.OpenCV = [](const cv::Mat& in, cv::Mat& out) { cv::Sobel(in, out, -1, 1, 0); };
            c.OpenCVGray16 = false; // OpenCV's Sobel gives no 16-bit unsigned result
        } else {
            c.OpenCV = [](const cv::Mat& in, cv::Mat& out) {
                static const cv::Mat k = (cv::Mat_<float>(3, 3) << 1, 1, 1, 0, 0, 0, -1, -1, -1);
                cv::filter2D(in, out, -1, k);
            };
        }
#endif
        cases.push_back(c);
    }
    return cases;
}

const bool kRegistered = [] {
    static const std::vector<TFXCase> cases = Cases();
    for (const TFXCase& c : cases)
        for (TFXVideoFormat f : {vfRGB24, vfRGB32, vfGray8, vfGray16}) {
            const std::string base = c.Name.substr(0, c.Name.find('/')) + "/" +
                                     std::string(FXVideoFormatName(f)) +
                                     c.Name.substr(c.Name.find('/'));
            benchmark::RegisterBenchmark(base.c_str(), [&c, f](benchmark::State& s) {
                c.Component(s, f);
            })->Unit(benchmark::kMillisecond);
            benchmark::RegisterBenchmark((base + "/primitive").c_str(), [&c,
                                                                         f](benchmark::State& s) {
                FXRunPrimitive(s, f, c.Primitive(f), c.Reach());
            })->Unit(benchmark::kMillisecond);
#if FRAMIX_HAVE_OPENCV
            if (f != vfGray16 || c.OpenCVGray16)
                benchmark::RegisterBenchmark((base + "/opencv").c_str(), [&c,
                                                                          f](benchmark::State& s) {
                    FXRunOpenCv(s, f, c.OpenCV);
                })->Unit(benchmark::kMillisecond);
#endif
        }
    return true;
}();

} // namespace
} // namespace framix
