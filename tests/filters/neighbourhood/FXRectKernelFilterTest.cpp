// SPDX-License-Identifier: MIT
// The rectangular kernel: integer kernel and divisor, resizing, the stored form, the filter.
#include "filters/neighbourhood/FXRectKernelFilter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "framework/FXError.h"
#include "storage/FXGraphLoader.h"
#include "storage/FXGraphSaver.h"
#include "tests/filters/neighbourhood/NeighbourhoodTestSupport.h"

namespace framix {
namespace {

using namespace test;

void SetAll(TFXRectKernel& kernel, std::initializer_list<float> values, int width)
{
    int i = 0;
    for (float v : values) {
        kernel.SetItem(i % width, i / width, v);
        ++i;
    }
}

TEST(FXRectKernel, DivisorIsTheLargestScaleAndElementZeroStaysZero_Intentional)
{
    TFXGraph graph;
    auto* filter = new TFXRectKernelFilter(&graph);
    TFXRectKernel& k = filter->GetKernel();
    EXPECT_EQ(k.GetDivisor(), 1); // all zero
    EXPECT_EQ(k.GetIntKernel(), std::vector<std::int32_t>(9, 0));

    const float ninth = 1.0f / 9; // 0.11111111194: 1 / it is 8.99999993, so 8 + 1
    SetAll(k, {ninth, ninth, ninth, ninth, ninth, ninth, ninth, ninth, ninth}, 3);
    EXPECT_EQ(k.GetDivisor(), 9);
    EXPECT_EQ(k.GetIntKernel(), (std::vector<std::int32_t>{0, 1, 1, 1, 1, 1, 1, 1, 1}));

    SetAll(k, {0, 0.5f, 0, 0, 2.5f, 0, 0, 0, 0}, 3); // 0.5: trunc(2) + 1 = 3
    EXPECT_EQ(k.GetDivisor(), 3);
    EXPECT_EQ(k.GetIntKernel()[4], 7); // trunc(7.5)
    SetAll(k, {0.1f, -0.3f, 0, 0, NAN, 0, 0, 1e-20f, 4e9f}, 3);
    EXPECT_EQ(k.GetDivisor(), 2147483647); // a tiny coefficient's scale saturates
    const std::vector<std::int32_t> ints = k.GetIntKernel();
    EXPECT_EQ(ints[0], 0);
    EXPECT_EQ(ints[1], std::int32_t(std::trunc(double(-0.3f) * 2147483647.0)));
    EXPECT_EQ(ints[4], 0);          // not a number counts as 0
    EXPECT_EQ(ints[8], 2147483647); // saturated
    EXPECT_THROW(k.SetItem(3, 2, 1.0f), EFXError);
}

TEST(FXRectKernel, ResizingKeepsEveryCoefficientInItsRowAndColumn)
{
    TFXGraph graph;
    auto* filter = new TFXRectKernelFilter(&graph);
    TFXRectKernel& k = filter->GetKernel();
    SetAll(k, {1, 2, 3, 4, 5, 6, 7, 8, 9}, 3);
    filter->GetMaskSize().SetWidth(5); // 3 x 3 -> 5 x 3
    EXPECT_EQ(k.GetWidth(), 5u);
    EXPECT_EQ(k.GetCoefficients(),
              (std::vector<float>{1, 2, 3, 0, 0, 4, 5, 6, 0, 0, 7, 8, 9, 0, 0}));
    filter->GetMaskSize().SetHeight(4);
    EXPECT_EQ(k.GetItem(2, 2), 9);
    EXPECT_EQ(k.GetItem(0, 3), 0);
    filter->GetMaskSize().SetWidth(2); // narrower: the first two columns of each row remain
    filter->GetMaskSize().SetHeight(2);
    EXPECT_EQ(k.GetCoefficients(), (std::vector<float>{1, 2, 4, 5}));
    EXPECT_EQ(k.GetIntKernel(), (std::vector<std::int32_t>{0, 2, 4, 5}));
    EXPECT_THROW(k.RecalcArray(65535, 65535), EFXError);
    EXPECT_EQ(k.GetCoefficients().size(), 4u);
}

TEST(FXRectKernel, AssignCopiesTheCoefficientsButNotTheSize)
{
    TFXGraph graph;
    auto* a = new TFXRectKernelFilter(&graph);
    auto* b = new TFXRectKernelFilter(&graph);
    b->GetMaskSize().SetWidth(1);
    b->GetMaskSize().SetHeight(2);
    SetAll(b->GetKernel(), {0.5f, 0.25f}, 1);
    a->SetKernel(b->GetKernel());
    EXPECT_EQ(a->GetKernel().GetCoefficients(), (std::vector<float>{0.5f, 0.25f}));
    EXPECT_EQ(a->GetKernel().GetWidth(), 3u);
    EXPECT_EQ(a->GetKernel().GetDivisor(), 5);
}

TEST(FXRectKernel, MatrixDataSurvivesTheStoredFormByteForByte)
{
    TFXGraph graph;
    graph.SetName("Graph1");
    auto* filter = new TFXRectKernelFilter(&graph);
    filter->SetName("Kernel1");
    filter->GetMaskSize().SetWidth(5);
    const float values[] = {-0.1f, 1.0f / 3, 1e-7f, 123.456f, -0.0f, 3.4e38f, 1.17549435e-38f};
    for (int i = 0; i < 7; ++i)
        filter->GetKernel().SetItem(i % 5, i / 5, values[i]);
    const std::string text = FXSaveGraphText(graph);
    EXPECT_NE(text.find("Kernel.MatrixData = ("), std::string::npos) << text;
    const auto loaded = FXLoadGraphText(text, "kernel.dfm");
    auto* copy = dynamic_cast<TFXRectKernelFilter*>(loaded->FindComponent("Kernel1"));
    ASSERT_NE(copy, nullptr);
    const std::vector<float> a = filter->GetKernel().GetCoefficients();
    const std::vector<float> b = copy->GetKernel().GetCoefficients();
    ASSERT_EQ(a.size(), b.size());
    EXPECT_EQ(std::memcmp(a.data(), b.data(), a.size() * sizeof(float)), 0);
    EXPECT_EQ(copy->GetKernel().GetWidth(), 5u);
    EXPECT_EQ(FXSaveGraphText(*loaded), text);

    // A count that the list does not hold is refused with the form's position.
    std::string bad = text;
    bad.replace(bad.find("15"), 2, "16");
    EXPECT_THROW(FXLoadGraphText(bad, "kernel.dfm"), EFXError);
}

// A kernel whose only nonzero cell is the bottom-right one moves the image down and right by
// one pixel: the convolution runs the kernel in inverse order.
class FXRectKernelFilterFormats : public testing::TestWithParam<TFXVideoFormat> {};

TEST_P(FXRectKernelFilterFormats, ConvolvesInsideTheReachAndKeepsAlpha)
{
    const TFXVideoFormat format = GetParam();
    TFXTestHarness h;
    auto& filter = h.Wire<TFXRectKernelFilter>();
    filter.GetKernel().SetItem(2, 2, 1.0f);
    h.Source().Announce(9, 6, format);
    const FXImageBufferPtr frame = FXRandomFrame(9, 6, format, 11, PaddedStride(9, format, 7));
    const IFXImageBuffer& out = Filter(h, frame);
    for (int y = 0; y < 6; ++y)
        for (int x = 0; x < 9; ++x)
            for (int c = 0; c < Channels(format); ++c) {
                const bool inside =
                    x >= 1 && x < 8 && y >= 1 && y < 5 && !(format == vfRGB32 && c == 3);
                ASSERT_EQ(Sample(out, x, y, c),
                          Sample(*frame, inside ? x - 1 : x, inside ? y - 1 : y, c))
                    << x << "," << y << " ch " << c;
            }
}

INSTANTIATE_TEST_SUITE_P(AllFormats, FXRectKernelFilterFormats,
                         testing::ValuesIn(kNeighbourhoodFormats), FormatTestName);

TEST(FXRectKernelFilter, NinthKernelSumsEightNeighboursAndDividesByNine_Intentional)
{
    TFXTestHarness h;
    auto& filter = h.Wire<TFXRectKernelFilter>();
    const float ninth = 1.0f / 9;
    SetAll(filter.GetKernel(), {ninth, ninth, ninth, ninth, ninth, ninth, ninth, ninth, ninth}, 3);
    h.Source().Announce(5, 5, vfGray8);
    const IFXImageBuffer& out = Filter(h, FlatFrame(5, 5, vfGray8, 90));
    for (int y = 0; y < 5; ++y)
        for (int x = 0; x < 5; ++x)
            EXPECT_EQ(Sample(out, x, y), x % 4 && y % 4 ? 80 : 90) << x << "," << y;
}

// Exposes PerformFilter to check its result.
class TFXOpenRectKernelFilter : public TFXRectKernelFilter {
public:
    using TFXRectKernelFilter::PerformFilter;
    using TFXRectKernelFilter::TFXRectKernelFilter;
};

TEST(FXRectKernelFilter, PerformFilterReportsFalseAfterTheFourChannelVariant_Intentional)
{
    TFXGraph graph;
    auto* filter = new TFXOpenRectKernelFilter(&graph);
    std::uint8_t src[4 * 3 * 3] = {}, dst[4 * 3 * 3] = {};
    for (TFXVideoFormat f : kNeighbourhoodFormats) {
        const int stride = 3 * FXFormatInfo(f).BytesPerPixel;
        EXPECT_EQ(filter->PerformFilter(src + stride + stride / 3, stride, dst, stride, {1, 1},
                                        {3, 3}, {1, 1}, f),
                  f != vfRGB32)
            << FXVideoFormatName(f);
    }
}

TEST(FXRectKernelFilter, AKernelSmallerThanTheMaskLeavesTheFrame)
{
    TFXTestHarness h;
    auto& filter = h.Wire<TFXRectKernelFilter>();
    filter.GetKernel().SetItem(1, 1, 2.0f);
    filter.GetKernel().SetCurrentWidth(1); // 1 x 3 coefficients under a 3 x 3 mask
    const FXImageBufferPtr frame = FXRandomFrame(6, 6, vfGray8, 3);
    EXPECT_TRUE(FXSamePixels(Filter(h, frame), *frame));
}

} // namespace
} // namespace framix
