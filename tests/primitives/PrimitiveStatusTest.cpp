// SPDX-License-Identifier: MIT
// Every entry point reports bad arguments with IPP's legacy status, in IPP's order, and writes
// nothing then.
#include "tests/primitives/support/FXPrimitiveCases.h"

#include <gtest/gtest.h>

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
        c.Values[0] = p.Shape == TFXShape::AddNoise ? 0 : p.Shape == TFXShape::SignalShiftC ? 1 : 2;
        c.Values[1] = p.Shape == TFXShape::AddNoise ? 10 : 1;
        c.Param = 1;
        const TFXCaseImages images(p, c);
        std::vector<Ipp8u> dst = images.Fresh();
        std::uint32_t seed = 5;
        TFXShapeArgs args = images.Args(dst.data(), &seed);
        const IppStatus valid = prim::FXCallShape(p.Shape, p.Sample, p.Entry, args);
        EXPECT_EQ(valid, ippStsNoErr) << "the unbroken call must succeed";
        dst = images.Fresh();
        args = images.Args(dst.data(), &seed);
        change(args);
        const IppStatus s = prim::FXCallShape(p.Shape, p.Sample, p.Entry, args);
        if (s != ippStsNoErr)
            EXPECT_TRUE(dst == images.Fresh()) << "an error must leave the destination alone";
        return s;
    }
    prim::TFXShapeGeometry Geometry() const
    {
        return prim::FXShapeGeometry(GetParam()->Shape, GetParam()->Sample, GetParam()->Layout);
    }
    bool Is(TFXShape shape) const { return GetParam()->Shape == shape; }
    bool IsFilter() const
    {
        return Is(TFXShape::MaskFilter) || Is(TFXShape::RowFilter) || Is(TFXShape::ColumnFilter);
    }
    bool IsMedian() const { return GetParam()->Name.find("Median") != std::string_view::npos; }
};

TEST_P(PrimitiveStatus, NullPointersComeFirst)
{
    if (Geometry().SrcPixelBytes > 0)
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Src = nullptr; }), ippStsNullPtrErr);
    EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Dst = nullptr; }), ippStsNullPtrErr);
    // even when the size is bad too
    EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Dst = nullptr, a.Roi = {0, 0}; }), ippStsNullPtrErr);
    if (Is(TFXShape::RowFilter) || Is(TFXShape::ColumnFilter))
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Kernel = nullptr; }), ippStsNullPtrErr);
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
    if (Geometry().Signal)
        GTEST_SKIP() << "signal primitives have no steps";
    // IPP's header reports a bad step of the test image as a size error.
    const IppStatus expected = Is(TFXShape::TestImage) ? ippStsSizeErr : ippStsStepErr;
    const int dstPixelBytes = Geometry().DstPixelBytes;
    if (Geometry().SrcPixelBytes > 0)
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.SrcStep = 0; }), expected);
    EXPECT_EQ(Call([](TFXShapeArgs& a) { a.DstStep = -a.DstStep; }), expected);
    EXPECT_EQ(Call([&](TFXShapeArgs& a) { a.DstStep = 4 * dstPixelBytes - 1; }), expected);
    if (Is(TFXShape::RowFilter)) // the source row must hold the kernel's reach
        EXPECT_EQ(Call([&](TFXShapeArgs& a) { a.SrcStep = 6 * dstPixelBytes - 1; }), expected);
}

TEST_P(PrimitiveStatus, BadMasksAndAnchorsAreRejected)
{
    if (!IsFilter())
        GTEST_SKIP() << "no mask or kernel";
    if (Is(TFXShape::MaskFilter)) {
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Mask = {0, 3}; }), ippStsMaskSizeErr);
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Mask = {3, -1}; }), ippStsMaskSizeErr);
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Anchor = {3, 1}; }), ippStsAnchorErr);
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Anchor = {1, -1}; }), ippStsAnchorErr);
        EXPECT_EQ(Call([](TFXShapeArgs& a) {
                      a.Mask = {2, 3}, a.Anchor = {0, 1};
                  }),
                  IsMedian() ? ippStsMaskSizeErr : ippStsNoErr);
    } else {
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.KernelSize = 0; }), ippStsSizeErr);
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.KernelAnchor = 3; }), ippStsAnchorErr);
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.KernelAnchor = -1; }), ippStsAnchorErr);
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
    } else {
        GTEST_SKIP() << "no ranged parameter";
    }
}

INSTANTIATE_TEST_SUITE_P(AllPrimitives, PrimitiveStatus,
                         testing::ValuesIn(FXAllPrimitivePointers()), FXPrimitiveTestName);

} // namespace
} // namespace framix::test
