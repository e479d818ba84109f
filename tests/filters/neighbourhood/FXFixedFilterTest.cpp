// SPDX-License-Identifier: MIT
// The fixed filters: the primitive behind each type, the reported mask, formats and failures.
#include "filters/neighbourhood/FXFixedFilter.h"

#include <gtest/gtest.h>

#include "framework/primitives/dispatch/FXPrimitiveLayer.h"
#include "framework/primitives/dispatch/Fxdispatcher.h"
#include "tests/filters/neighbourhood/NeighbourhoodTestSupport.h"

namespace framix {
namespace {

using namespace test;

// What the filter must produce on an 8-bit frame: the input, and inside the frame less a
// margin of `margin` pixels, the named primitive's result.
template <class... Mask>
FXImageBufferPtr Reference(const IFXImageBuffer& in, int margin,
                           IppStatus (*fn)(const Ipp8u*, int, Ipp8u*, int, IppiSize, Mask...),
                           Mask... mask)
{
    FXImageBufferPtr out = new TFXImageBuffer(in);
    const int s = in.GetRowStride();
    const int d = out->GetRowStride();
    const int x = margin * in.GetBytesPerPixel();
    EXPECT_EQ(fn(in.GetReadPointer() + margin * s + x, s, out->GetModifyPointer() + margin * d + x,
                 d, {in.GetWidth() - 2 * margin, in.GetHeight() - 2 * margin}, mask...),
              ippStsNoErr);
    return out;
}

TEST(FXFixedFilter, EachTypeRunsItsPrimitiveInsideTheAnchorMargin_Intentional)
{
    // The primitives are read before any component exists (the test may run alone).
    FXStartPrimitiveLayer();
    using namespace ipp;
    const FXImageBufferPtr frame = FXRandomFrame(13, 11, vfGray8, 21);
    struct TCase {
        TFXFixedFilterType Type;
        TFXFixedMaskSize Mask;
        FXImageBufferPtr Expected;
    };
    const TCase cases[] = {
        {ftPrewittHoriz, fms5x5, Reference(*frame, 2, ippiFilterPrewittHoriz_8u_C1R)},
        {ftPrewittVert, fms3x3, Reference(*frame, 2, ippiFilterPrewittVert_8u_C1R)},
        {ftSobelHoriz, fms3x3, Reference(*frame, 2, ippiFilterSobelHoriz_8u_C1R)},
        {ftSobelVert, fms3x3, Reference(*frame, 2, ippiFilterSobelVert_8u_C1R)},
        {ftRobertsDown, fms3x3, Reference(*frame, 2, ippiFilterRobertsDown_8u_C1R)},
        {ftRobertsUp, fms3x3, Reference(*frame, 2, ippiFilterRobertsUp_8u_C1R)},
        {ftLaplace, fms5x5, Reference(*frame, 3, ippiFilterLaplace_8u_C1R, ippMskSize5x5)},
        {ftGauss, fms3x3, Reference(*frame, 2, ippiFilterGauss_8u_C1R, ippMskSize3x3)},
        {ftHipass, fms5x5, Reference(*frame, 3, ippiFilterHipass_8u_C1R, ippMskSize5x5)},
        {ftLowpass, fms3x3, Reference(*frame, 2, ippiFilterLowpass_8u_C1R, ippMskSize3x3)},
        {ftSharpen, fms5x5, Reference(*frame, 2, ippiFilterSharpen_8u_C1R)},
        // The medians filter with 5 x 5 but keep the 3 x 3 margin.
        {ftMedianCross, fms5x5, Reference(*frame, 2, ippiFilterMedianCross_8u_C1R, ippMskSize5x5)},
    };
    TFXTestHarness h;
    auto& filter = h.Wire<TFXFixedFilter>();
    for (const TCase& c : cases) {
        filter.SetFilterType(c.Type);
        filter.SetMaskSize(c.Mask);
        EXPECT_TRUE(FXSamePixels(Filter(h, frame), *c.Expected)) << "type " << int(c.Type);
        EXPECT_EQ(filter.GetLastStatus(), ippStsNoErr);
    }
}

class FXFixedFilterFormats : public testing::TestWithParam<TFXVideoFormat> {};

TEST_P(FXFixedFilterFormats, FiltersColoursAndKeepsAlphaByteForByte)
{
    const TFXVideoFormat format = GetParam();
    TFXTestHarness h;
    auto& filter = h.Wire<TFXFixedFilter>();
    filter.SetFilterType(ftLowpass);
    filter.GetROI().SetEnabled(true);
    filter.GetROI().SetLeft(3);
    filter.GetROI().SetWidth(4);
    filter.GetROI().SetHeight(100);
    const FXImageBufferPtr frame = FlatFrame(10, 7, format, 0, PaddedStride(10, format, 3));
    for (int y = 0; y < 7; ++y)
        for (int x = 0; x < 10; ++x)
            for (int c = 0; c < Channels(format); ++c)
                SetSample(*frame, x, y, c, 9 * ((x * 5 + y * 3 + c) % 28)); // exact 3 x 3 means
    const IFXImageBuffer& out = Filter(h, frame);
    for (int y = 0; y < 7; ++y)
        for (int x = 0; x < 10; ++x)
            for (int c = 0; c < Channels(format); ++c) {
                int expected = Sample(*frame, x, y, c);
                if (x >= 3 && x < 7 && y >= 2 && y < 5 && !(format == vfRGB32 && c == 3)) {
                    expected = 0;
                    for (int j = -1; j <= 1; ++j)
                        for (int i = -1; i <= 1; ++i)
                            expected += Sample(*frame, x + i, y + j, c);
                    expected /= 9;
                }
                ASSERT_EQ(Sample(out, x, y, c), expected) << x << "," << y << " ch " << c;
            }
}

TEST_P(FXFixedFilterFormats, ARegionTooSmallPassesTheInputFrameItself)
{
    TFXTestHarness h;
    auto& filter = h.Wire<TFXFixedFilter>();
    filter.SetFilterType(ftGauss);
    filter.SetMaskSize(fms5x5); // margin 3: a 6 x 6 frame has no pixel to filter
    for (int side : {1, 4, 6}) {
        const FXImageBufferPtr frame = FXRandomFrame(side, side, GetParam(), std::uint32_t(side));
        const IFXImageBuffer& out = Filter(h, frame);
        EXPECT_TRUE(FXSamePixels(out, *frame));
        EXPECT_EQ(out.GetReadPointer(), frame->GetReadPointer()) << "not a copy";
        EXPECT_NE(filter.GetLastStatus(), ippStsNoErr);
    }
    const FXImageBufferPtr seven = FXRandomFrame(7, 7, GetParam(), 7); // one pixel filtered
    EXPECT_FALSE(FXSamePixels(Filter(h, seven), *seven));
}

INSTANTIATE_TEST_SUITE_P(AllFormats, FXFixedFilterFormats, testing::ValuesIn(kNeighbourhoodFormats),
                         FormatTestName);

TEST(FXFixedFilter, ColourMedianTakesGreyFramesAsRGB24)
{
    TFXTestHarness h;
    auto& filter = h.Wire<TFXFixedFilter>();
    h.Source().Announce(8, 8, vfGray8);
    EXPECT_EQ(h.Captured.Announcements.back().Format, vfGray8);
    filter.SetFilterType(ftMedianColor);
    const FXImageBufferPtr grey = FXRandomFrame(8, 8, vfGray8, 4);
    const IFXImageBuffer& out = Filter(h, grey);
    EXPECT_EQ(h.Captured.Announcements.back().Format, vfRGB24); // announced again
    ASSERT_EQ(out.GetFormat(), vfRGB24);
    FXImageBufferPtr rgb = new TFXImageBuffer(*grey);
    rgb->ConvertFormat(vfRGB24);
    EXPECT_TRUE(
        FXSamePixels(out, *Reference(*rgb, 2, ipp::ippiFilterMedianColor_8u_C3R, ippMskSize3x3)))
        << "the three-channel colour median";
    filter.SetFilterType(ftSobelVert);
    EXPECT_EQ(Filter(h, grey).GetFormat(), vfGray8);
    EXPECT_EQ(h.Captured.Announcements.back().Format, vfGray8);
}

} // namespace
} // namespace framix
