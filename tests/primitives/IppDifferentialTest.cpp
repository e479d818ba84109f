// SPDX-License-Identifier: MIT
// Our primitives against the real Intel IPP (loaded at run time, when installed by
// scripts/install-ipp.sh): byte for byte on random images of odd sizes with padded steps.
#include "framework/primitives/dispatch/FXRealIpp.h"
#include "tests/primitives/support/FXPrimitiveCases.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

namespace framix::test {
namespace {

using prim::TFXPrimitiveInfo;
using prim::TFXShape;

// Modern IPP's numbering (2021 and later), which differs from ours.
constexpr int kIppBorderInMem = 0xF0;
constexpr int kIpp8u = 1, kIpp16u = 5, kIpp32f = 13;
constexpr int kIppRndNear = 1;

bool RealIppLoaded()
{
    // Default to the folder scripts/install-ipp.sh fills.
    setenv("FRAMIX_IPP_DIR", FRAMIX_SOURCE_DIR "/.deps/ipp/lib", 0);
    return FXRealIppSymbol("ippInit") != nullptr && FXRealIppSymbol("ippiGetLibVersion") != nullptr;
}

template <class Fn> Fn Symbol(const std::string& name)
{
    return reinterpret_cast<Fn>(FXRealIppSymbol(name));
}

// "ippiFilterBox_8u_C3R" -> "ippiFilterBoxBorder_8u_C3R"
std::string WithBorder(std::string_view name, std::string_view op)
{
    const std::size_t cut = name.find('_');
    return std::string(op) + "Border" + std::string(name.substr(cut));
}

// Box, min, max and median: IPP 9.0 replaced them by ...Border functions with a centred mask
// ((size - 1) / 2) and a border argument; ippBorderInMem reads the source outside the ROI as
// the legacy functions did, and a legacy anchor becomes a shift of the source pointer.
IppStatus RunMaskFilterInIpp(const TFXPrimitiveInfo& p, const TFXCaseImages& images,
                             const TFXCase& c, std::vector<Ipp8u>& dst)
{
    using TFilter =
        IppStatus (*)(const void*, int, void*, int, IppiSize, IppiSize, int, const void*, Ipp8u*);
    using TBufferSize = IppStatus (*)(IppiSize, IppiSize, int, int, int*);
    const std::string op(p.Name.substr(0, p.Name.find('_')));
    auto filter = Symbol<TFilter>(WithBorder(p.Name, op));
    auto bufferSize = Symbol<TBufferSize>(op + "BorderGetBufferSize");
    if (filter == nullptr || bufferSize == nullptr)
        return ippStsNotSupportedModeErr;
    const int channels = prim::FXChannels(p.Layout);
    const int type = p.Sample == prim::TFXSample::U8 ? kIpp8u : kIpp16u;
    int size = 0;
    if (bufferSize(c.Roi, c.Mask, type, channels, &size) != 0)
        return ippStsErr;
    std::vector<Ipp8u> buffer(std::size_t(size) + 64);
    const int pixelBytes = channels * prim::FXSampleBytes(p.Sample);
    const int shiftX = (c.Mask.width - 1) / 2 - c.Anchor.x;
    const int shiftY = (c.Mask.height - 1) / 2 - c.Anchor.y;
    const Ipp8u* src = images.SrcRoi() + std::ptrdiff_t(shiftY) * images.SrcStep() +
                       std::ptrdiff_t(shiftX) * pixelBytes;
    const Ipp8u zeros[8] = {};
    prim::TFXShapeArgs args = images.Args(dst.data());
    return filter(src, images.SrcStep(), args.Dst, images.DstStep(), c.Roi, c.Mask, kIppBorderInMem,
                  zeros, buffer.data());
}

// Row and column filters: IPP 9.0 removed them; the general ippiFilterBorder with a float
// 1xK (or Kx1) kernel, rounding to nearest, computes the same sum. It runs the kernel in
// direct order around the centre (K - 1) / 2, so the kernel is reversed and the source shifted.
IppStatus RunKernelFilterInIpp(const TFXPrimitiveInfo& p, const TFXCaseImages& images,
                               const TFXCase& c, std::vector<Ipp8u>& dst)
{
    using TGetSize = IppStatus (*)(IppiSize, IppiSize, int, int, int, int*, int*);
    using TInit = IppStatus (*)(const Ipp32f*, IppiSize, int, int, int, void*);
    using TFilter = IppStatus (*)(const void*, int, void*, int, IppiSize, int, const void*,
                                  const void*, Ipp8u*);
    auto getSize = Symbol<TGetSize>("ippiFilterBorderGetSize");
    auto init = Symbol<TInit>("ippiFilterBorderInit_32f");
    const std::string suffix(p.Name.substr(p.Name.find('_')));
    auto filter = Symbol<TFilter>("ippiFilterBorder" + suffix);
    if (getSize == nullptr || init == nullptr || filter == nullptr)
        return ippStsNotSupportedModeErr;
    const bool row = p.Shape == TFXShape::RowFilter;
    const int k = int(c.Kernel.size());
    const IppiSize kernelSize = row ? IppiSize{k, 1} : IppiSize{1, k};
    const std::vector<Ipp32f> reversed(c.Kernel.rbegin(), c.Kernel.rend());
    const int channels = prim::FXChannels(p.Layout);
    const int type = p.Sample == prim::TFXSample::U8 ? kIpp8u : kIpp16u;
    int specSize = 0, bufferSize = 0;
    if (getSize(kernelSize, c.Roi, type, kIpp32f, channels, &specSize, &bufferSize) != 0)
        return ippStsErr;
    std::vector<Ipp8u> spec(std::size_t(specSize) + 64), buffer(std::size_t(bufferSize) + 64);
    if (init(reversed.data(), kernelSize, type, channels, kIppRndNear, spec.data()) != 0)
        return ippStsErr;
    const int shift = c.KernelAnchor - (k - 1) + (k - 1) / 2;
    const int pixelBytes = channels * prim::FXSampleBytes(p.Sample);
    const Ipp8u* src = images.SrcRoi() + (row ? std::ptrdiff_t(shift) * pixelBytes
                                              : std::ptrdiff_t(shift) * images.SrcStep());
    const Ipp8u zeros[8] = {};
    prim::TFXShapeArgs args = images.Args(dst.data());
    return filter(src, images.SrcStep(), args.Dst, images.DstStep(), c.Roi, kIppBorderInMem, zeros,
                  spec.data(), buffer.data());
}

class IppDifferential : public testing::TestWithParam<const TFXPrimitiveInfo*> {};

TEST_P(IppDifferential, EqualsRealIppByteForByte)
{
    if (!RealIppLoaded())
        GTEST_SKIP() << "real Intel IPP not found (run scripts/install-ipp.sh, or set "
                        "FRAMIX_IPP_DIR): comparison skipped";
    const TFXPrimitiveInfo& p = *GetParam();
    int compared = 0;
    long differing = 0, samples = 0;
    int worst = 0;
    std::string first;
    for (const TFXCase& c : FXCasesFor(p)) {
        if (p.Shape == TFXShape::MaskFilter && p.Name.find("Median") != std::string_view::npos &&
            (c.Mask.width % 2 == 0 || c.Mask.height % 2 == 0))
            continue; // an error for both
        const TFXCaseImages images(p, c);
        const TFXRunResult ours = images.Run(p.Entry);
        ASSERT_EQ(ours.Status, ippStsNoErr) << c.Describe();
        std::vector<Ipp8u> theirs = images.Fresh();
        const IppStatus s = p.Shape == TFXShape::MaskFilter
                                ? RunMaskFilterInIpp(p, images, c, theirs)
                                : RunKernelFilterInIpp(p, images, c, theirs);
        if (s == ippStsNotSupportedModeErr)
            GTEST_SKIP() << "the installed IPP has no replacement for " << p.Name;
        ASSERT_EQ(s, ippStsNoErr) << "IPP failed on " << c.Describe();
        ++compared;
        const int sampleBytes = prim::FXSampleBytes(p.Sample);
        for (int y = 0; y < c.Roi.height; ++y)
            for (int x = 0; x < c.Roi.width; ++x)
                for (int ch = 0; ch < prim::FXChannels(p.Layout); ++ch) {
                    const std::size_t at = images.DstOffset(x, y, ch);
                    int a = ours.Dst[at], b = theirs[at];
                    if (sampleBytes == 2) {
                        a |= ours.Dst[at + 1] << 8;
                        b |= theirs[at + 1] << 8;
                    }
                    ++samples;
                    if (a == b)
                        continue;
                    worst = std::max(worst, std::abs(a - b));
                    if (differing++ == 0)
                        first = "pixel (" + std::to_string(x) + "," + std::to_string(y) +
                                ") channel " + std::to_string(ch) + ": ours " + std::to_string(a) +
                                ", IPP " + std::to_string(b) + "; " + c.Describe();
                }
    }
    EXPECT_GT(compared, 0);
    if (p.Shape == TFXShape::MaskFilter) {
        EXPECT_EQ(differing, 0) << differing << " of " << samples << " samples differ; first at "
                                << first;
        return;
    }
    // The float filters: IPP's replacement sums in an order of its own, so a sum within a few
    // float steps of a half can round the other way. Dyadic kernels agree exactly.
    EXPECT_LE(worst, 1) << first;
    EXPECT_LE(differing * 100, samples)
        << differing << " of " << samples << " samples differ; first at " << first;
    RecordProperty("differing_samples", std::to_string(differing) + "/" + std::to_string(samples));
}

std::vector<const TFXPrimitiveInfo*> AllPrimitives()
{
    std::vector<const TFXPrimitiveInfo*> all;
    for (const TFXPrimitiveInfo& p : prim::FXAllPrimitives())
        all.push_back(&p);
    return all;
}

INSTANTIATE_TEST_SUITE_P(AllPrimitives, IppDifferential, testing::ValuesIn(AllPrimitives()),
                         [](const testing::TestParamInfo<const TFXPrimitiveInfo*>& info) {
                             return std::string(info.param->Name);
                         });

} // namespace
} // namespace framix::test
