// SPDX-License-Identifier: MIT
// Every entry point reports bad arguments with IPP's legacy status, in IPP's order, and writes
// nothing then.
#include "tests/primitives/support/FXPrimitiveCases.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>

namespace framix::test {
namespace {

using prim::TFXPrimitiveInfo;
using prim::TFXShape;
using prim::TFXShapeArgs;

class PrimitiveStatus : public testing::TestWithParam<const TFXPrimitiveInfo*> {
protected:
    // A valid call that `change` then breaks: a 4x3 ROI (4 samples for signal primitives), a
    // centred 3x3 mask or 3-tap kernel, and valid parameters (a channel order, the vertical
    // axis, rounding to nearest, scale factor 1, shift 1, noise bounds 0..10).
    IppStatus Call(const std::function<void(TFXShapeArgs&)>& change)
    {
        const TFXPrimitiveInfo& p = *GetParam();
        TFXCase c;
        c.Roi = Geometry().Signal ? IppiSize{4, 1} : IppiSize{4, 3};
        c.Mask = {3, 3};
        c.Anchor = {1, 1};
        c.Kernel = {0.25f, 0.5f, 0.25f};
        c.KernelAnchor = 1;
        c.IntKernel.assign(9, 1);
        c.Divisor = 9;
        c.Values[0] = p.Shape == TFXShape::AddNoise ? 0 : p.Shape == TFXShape::SignalShiftC ? 1 : 2;
        c.Values[1] = p.Shape == TFXShape::AddNoise ? 10 : 1;
        c.Param = 1;
        c.ScaleFactor = 1;
        const TFXCaseImages images(p, c);
        std::vector<Ipp8u> dst = images.Fresh();
        std::uint32_t seed = 5;
        TFXShapeArgs args = images.Args(dst.data(), &seed);
        const IppStatus valid = prim::FXCallShape(p.Shape, p.Sample, p.Entry, args);
        EXPECT_GE(valid, ippStsNoErr) << "the unbroken call must succeed (warnings allowed)";
        dst = images.Fresh();
        args = images.Args(dst.data(), &seed);
        change(args);
        const IppStatus s = prim::FXCallShape(p.Shape, p.Sample, p.Entry, args);
        if (s < ippStsNoErr)
            EXPECT_TRUE(dst == images.Fresh()) << "an error must leave the destination alone";
        return s;
    }
    prim::TFXShapeGeometry Geometry() const
    {
        return prim::FXShapeGeometry(GetParam()->Shape, GetParam()->Sample, GetParam()->Layout);
    }
    TFXShape Shape() const { return GetParam()->Shape; }
    bool IsMask() const { return Shape() == TFXShape::MaskFilter; }
    bool IsKernel() const
    {
        return Shape() == TFXShape::RowFilter || Shape() == TFXShape::ColumnFilter;
    }
    bool IsLut() const { return Shape() == TFXShape::Lut || Shape() == TFXShape::LutChannels; }
    bool IsHistogram() const
    {
        return Shape() == TFXShape::Histogram || Shape() == TFXShape::HistogramChannels;
    }
    bool IsThreshold() const
    {
        return Shape() == TFXShape::Threshold || Shape() == TFXShape::ThresholdBoth;
    }
    bool Is(TFXShape shape) const { return Shape() == shape; }
    bool IsOneDimensional() const { return IsKernel(); }
    bool IsPlanar() const { return Geometry().SrcPlanes > 1 || Geometry().DstPlanes > 1; }
    bool IsMedian() const { return GetParam()->Name.find("Median") != std::string_view::npos; }
    // The last channel the primitive processes: per-channel arguments are checked for all.
    int LastChannel() const { return prim::FXProcessedChannels(GetParam()->Layout) - 1; }
};

TEST_P(PrimitiveStatus, NullPointersComeFirst)
{
    if (Geometry().SrcPixelBytes > 0)
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Src = nullptr; }), ippStsNullPtrErr);
    if (Geometry().SecondSource)
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Src2 = nullptr; }), ippStsNullPtrErr);
    const int c = LastChannel();
    if (IsHistogram()) { // no destination image: the outputs are the counts and levels
        EXPECT_EQ(Call([&](TFXShapeArgs& a) { a.Hist[c] = nullptr; }), ippStsNullPtrErr);
        EXPECT_EQ(Call([&](TFXShapeArgs& a) {
                      a.HistLevels[c] = nullptr, a.Roi = {0, 0};
                  }),
                  ippStsNullPtrErr);
        return;
    }
    EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Dst = nullptr; }), ippStsNullPtrErr);
    // even when the size is bad too
    EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Dst = nullptr, a.Roi = {0, 0}; }), ippStsNullPtrErr);
    if (IsKernel())
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Kernel = nullptr; }), ippStsNullPtrErr);
    if (IsLut()) {
        EXPECT_EQ(Call([&](TFXShapeArgs& a) { a.LutValues[c] = nullptr; }), ippStsNullPtrErr);
        EXPECT_EQ(Call([&](TFXShapeArgs& a) {
                      a.LutLevels[c] = nullptr, a.Roi = {0, 0};
                  }),
                  ippStsNullPtrErr);
    }
    if (Shape() == TFXShape::LutPalette)
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Palette = nullptr; }), ippStsNullPtrErr);
    if (IsThreshold()) {
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Limit = nullptr; }), ippStsNullPtrErr);
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.LimitValue = nullptr; }), ippStsNullPtrErr);
    }
    if (Shape() == TFXShape::ThresholdBoth) {
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.UpperLimit = nullptr; }), ippStsNullPtrErr);
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.UpperValue = nullptr; }), ippStsNullPtrErr);
    }
    if (Is(TFXShape::KernelFilter))
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.IntKernel = nullptr; }), ippStsNullPtrErr);
    if (Is(TFXShape::ColorTwist))
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Twist = nullptr; }), ippStsNullPtrErr);
    if (IsPlanar())
        for (int p = 0; p < std::max(Geometry().SrcPlanes, Geometry().DstPlanes); ++p)
            EXPECT_EQ(Call([p](TFXShapeArgs& a) { a.Planes[p] = nullptr; }), ippStsNullPtrErr)
                << "plane " << p;
    if (Is(TFXShape::AddNoise))
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Seed = nullptr; }), ippStsNullPtrErr);
}

TEST_P(PrimitiveStatus, NonPositiveRoiIsASizeError)
{
    EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Roi.width = 0; }), ippStsSizeErr);
    EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Roi.width = -2; }), ippStsSizeErr);
    if (Geometry().Signal)
        return; // a length only
    EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Roi.height = -3; }), ippStsSizeErr);
    EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Roi.width = 0, a.SrcStep = 0, a.DstStep = 0; }),
              ippStsSizeErr)
        << "sizes are checked before steps";
}

TEST_P(PrimitiveStatus, StepsSmallerThanARowAreStepErrors)
{
    const prim::TFXShapeGeometry g = Geometry();
    if (g.Signal)
        return; // no steps
    // IPP's header reports a bad step of the test image as a size error.
    const IppStatus expected = Is(TFXShape::TestImage) ? ippStsSizeErr : ippStsStepErr;
    if (g.SrcPixelBytes > 0) {
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.SrcStep = 0; }), expected);
        EXPECT_EQ(Call([&](TFXShapeArgs& a) { a.SrcStep = 4 * g.SrcPixelBytes - 1; }), expected);
    }
    if (g.SecondSource)
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Src2Step = -a.Src2Step; }), expected);
    if (g.DstPixelBytes > 0 && !g.Reduces) { // histograms and reductions write no image
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.DstStep = -a.DstStep; }), expected);
        EXPECT_EQ(Call([&](TFXShapeArgs& a) { a.DstStep = 4 * g.DstPixelBytes - 1; }), expected);
    }
    if (Is(TFXShape::RowFilter)) // the source row must hold the kernel's reach
        EXPECT_EQ(Call([&](TFXShapeArgs& a) { a.SrcStep = 6 * g.SrcPixelBytes - 1; }), expected);
}

// No primitive reads or writes a 16-bit, 32-bit or float sample at an odd address.
TEST_P(PrimitiveStatus, StepsThatSplitSamplesAreNotEvenStepErrors)
{
    const prim::TFXShapeGeometry g = Geometry();
    if (g.Signal)
        return; // one-dimensional: no step
    if (GetParam()->Sample != prim::TFXSample::U8 && g.SrcPixelBytes > 0)
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.SrcStep += 1; }), ippStsNotEvenStepErr);
    const int dstSampleBytes = prim::FXSampleBytes(g.DstSample);
    if (dstSampleBytes > 1 && g.DstPixelBytes > 0 && !g.Reduces)
        EXPECT_EQ(Call([&](TFXShapeArgs& a) { a.DstStep += 2 * dstSampleBytes - 1; }),
                  ippStsNotEvenStepErr);
}

TEST_P(PrimitiveStatus, UnknownAlphaTypesAreRejectedAfterTheSize)
{
    const TFXShape shape = GetParam()->Shape;
    if (shape != TFXShape::AlphaConst && shape != TFXShape::AlphaPixel)
        return; // no compositing type
    EXPECT_EQ(Call([](TFXShapeArgs& a) { a.AlphaType = 12; }), ippStsAlphaTypeErr);
    EXPECT_EQ(Call([](TFXShapeArgs& a) { a.AlphaType = -1; }), ippStsAlphaTypeErr);
    EXPECT_EQ(Call([](TFXShapeArgs& a) { a.AlphaType = 12, a.Roi.height = 0; }), ippStsSizeErr);
    EXPECT_EQ(Call([](TFXShapeArgs& a) { a.AlphaType = 11; }), ippStsNoErr);
}

TEST_P(PrimitiveStatus, BadMasksAndAnchorsAreRejected)
{
    if (IsMask()) {
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Mask = {0, 3}; }), ippStsMaskSizeErr);
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Mask = {3, -1}; }), ippStsMaskSizeErr);
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Anchor = {3, 1}; }), ippStsAnchorErr);
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Anchor = {1, -1}; }), ippStsAnchorErr);
        EXPECT_EQ(Call([](TFXShapeArgs& a) {
                      a.Mask = {2, 3}, a.Anchor = {0, 1};
                  }),
                  IsMedian() ? ippStsMaskSizeErr : ippStsNoErr);
    } else if (IsOneDimensional()) {
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.KernelSize = 0; }), ippStsSizeErr);
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.KernelAnchor = 3; }), ippStsAnchorErr);
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.KernelAnchor = -1; }), ippStsAnchorErr);
    } else if (Is(TFXShape::KernelFilter)) {
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Mask = {3, 0}; }), ippStsSizeErr);
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Divisor = 0; }), ippStsDivisorErr);
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Anchor = {3, 1}; }), ippStsAnchorErr);
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Anchor = {1, -1}; }), ippStsAnchorErr);
        EXPECT_EQ(Call([](TFXShapeArgs& a) {
                      a.Divisor = 0, a.Anchor = {5, 5};
                  }),
                  ippStsDivisorErr)
            << "the divisor is checked before the anchor";
    } else if (Is(TFXShape::FixedMaskFilter)) {
        for (int code : {0, 13, 31, 34, 51, 53, 56})
            EXPECT_EQ(Call([&](TFXShapeArgs& a) { a.MaskCode = IppiMaskSize(code); }),
                      ippStsMaskSizeErr)
                << code;
    }
}

// Tables and bins need two levels; the palette one to eight bits; a lower limit may equal but
// not exceed its channel's upper limit. Sizes and steps are reported first, except that IPP
// checks the palette's bit count before the steps.
TEST_P(PrimitiveStatus, TablesLevelsAndLimitsOutOfRangeAreRejected)
{
    const int c = LastChannel();
    if (IsLut() || IsHistogram()) {
        const IppStatus levels = IsLut() ? ippStsLUTNofLevelsErr : ippStsHistoNofLevelsErr;
        EXPECT_EQ(Call([&](TFXShapeArgs& a) { a.LevelCounts[c] = 1; }), levels);
        EXPECT_EQ(Call([&](TFXShapeArgs& a) { a.LevelCounts[c] = -4; }), levels);
        EXPECT_EQ(Call([&](TFXShapeArgs& a) { a.LevelCounts[c] = 0, a.SrcStep = 0; }),
                  ippStsStepErr);
        EXPECT_EQ(Call([&](TFXShapeArgs& a) { a.LevelCounts[c] = 2; }), ippStsNoErr);
    }
    if (Shape() == TFXShape::LutPalette) {
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.BitSize = 0; }), ippStsOutOfRangeErr);
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.BitSize = 9; }), ippStsOutOfRangeErr);
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.BitSize = 9, a.SrcStep = 0; }), ippStsOutOfRangeErr);
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.BitSize = 9, a.Roi.width = 0; }), ippStsSizeErr);
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.BitSize = 1; }), ippStsNoErr);
    }
    if (Shape() == TFXShape::ThresholdBoth) {
        static const Ipp8u kLow[3] = {10, 200, 10}, kHigh[3] = {20, 199, 10};
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Limit = kLow, a.UpperLimit = kHigh; }),
                  ippStsThresholdErr);
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Limit = kLow, a.UpperLimit = kLow; }), ippStsNoErr);
        EXPECT_EQ(
            Call([](TFXShapeArgs& a) { a.Limit = kLow, a.UpperLimit = kHigh, a.DstStep = 0; }),
            ippStsStepErr);
    }
}

// Axes, round modes, channel orders and shifts outside what IPP defines.
TEST_P(PrimitiveStatus, ParametersOutsideTheirRangeAreRejected)
{
    if (Is(TFXShape::Mirror) || Is(TFXShape::MirrorInPlace)) {
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Param = 3; }), ippStsMirrorFlipErr);
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Param = -1; }), ippStsMirrorFlipErr);
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Param = 5, a.Roi.width = 0; }), ippStsSizeErr)
            << "the axis is checked after the size";
    } else if (Is(TFXShape::ConvertFromFloat)) {
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Param = 3; }), ippStsRoundModeNotSupportedErr);
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Param = -1; }), ippStsRoundModeNotSupportedErr);
    } else if (Is(TFXShape::SwapChannels) || Is(TFXShape::SwapChannelsInPlace)) {
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Values[2] = 3; }), ippStsChannelOrderErr);
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Values[0] = -1; }), ippStsChannelOrderErr);
    } else if (Is(TFXShape::SignalShiftC)) {
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Values[0] = -1; }), ippStsShiftErr);
    }
}

INSTANTIATE_TEST_SUITE_P(AllPrimitives, PrimitiveStatus,
                         testing::ValuesIn(FXAllPrimitivePointers()), FXPrimitiveTestName);

} // namespace
} // namespace framix::test
