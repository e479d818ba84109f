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
    // A valid 4x3 call (3x3 mask or 3-tap kernel, centred) that `change` then breaks.
    IppStatus Call(const std::function<void(TFXShapeArgs&)>& change)
    {
        const TFXPrimitiveInfo& p = *GetParam();
        TFXCase c;
        c.Roi = {4, 3};
        c.Mask = {3, 3};
        c.Anchor = {1, 1};
        c.Kernel = {0.25f, 0.5f, 0.25f};
        c.KernelAnchor = 1;
        const TFXCaseImages images(p, c);
        std::vector<Ipp8u> dst = images.Fresh();
        TFXShapeArgs args = images.Args(dst.data());
        const IppStatus valid = prim::FXCallShape(p.Shape, p.Sample, p.Entry, args);
        EXPECT_EQ(valid, ippStsNoErr) << "the unbroken call must succeed";
        dst = images.Fresh();
        args = images.Args(dst.data());
        change(args);
        const IppStatus s = prim::FXCallShape(p.Shape, p.Sample, p.Entry, args);
        if (s != ippStsNoErr)
            EXPECT_TRUE(dst == images.Fresh()) << "an error must leave the destination alone";
        return s;
    }
    bool IsMask() const { return GetParam()->Shape == TFXShape::MaskFilter; }
    bool HasKernel() const
    {
        return GetParam()->Shape == TFXShape::RowFilter ||
               GetParam()->Shape == TFXShape::ColumnFilter;
    }
    bool IsPlanar() const
    {
        return prim::FXSrcPlanes(GetParam()->Shape) > 1 || prim::FXDstPlanes(GetParam()->Shape) > 1;
    }
    // Bytes per pixel of the source or destination (one sample on a planar side).
    int PixelBytes(bool source) const
    {
        const TFXPrimitiveInfo& p = *GetParam();
        const int planes = source ? prim::FXSrcPlanes(p.Shape) : prim::FXDstPlanes(p.Shape);
        return (planes > 1 ? 1 : prim::FXChannels(p.Layout)) * prim::FXSampleBytes(p.Sample);
    }
    bool IsMedian() const { return GetParam()->Name.find("Median") != std::string_view::npos; }
};

TEST_P(PrimitiveStatus, NullPointersComeFirst)
{
    EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Src = nullptr; }), ippStsNullPtrErr);
    EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Dst = nullptr; }), ippStsNullPtrErr);
    // even when the size is bad too
    EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Dst = nullptr, a.Roi = {0, 0}; }), ippStsNullPtrErr);
    if (HasKernel())
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Kernel = nullptr; }), ippStsNullPtrErr);
    if (GetParam()->Shape == TFXShape::ColorTwist)
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Twist = nullptr; }), ippStsNullPtrErr);
    if (IsPlanar())
        for (int p = 0; p < prim::kFXPlanes; ++p)
            EXPECT_EQ(Call([p](TFXShapeArgs& a) { a.Planes[p] = nullptr; }), ippStsNullPtrErr)
                << "plane " << p;
}

TEST_P(PrimitiveStatus, NonPositiveRoiIsASizeError)
{
    EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Roi.width = 0; }), ippStsSizeErr);
    EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Roi.height = -3; }), ippStsSizeErr);
    EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Roi.width = 0, a.SrcStep = 0; }), ippStsSizeErr)
        << "sizes are checked before steps";
}

TEST_P(PrimitiveStatus, StepsSmallerThanARowAreStepErrors)
{
    const int pixelBytes = PixelBytes(true);
    EXPECT_EQ(Call([](TFXShapeArgs& a) { a.SrcStep = 0; }), ippStsStepErr);
    EXPECT_EQ(Call([](TFXShapeArgs& a) { a.DstStep = -a.DstStep; }), ippStsStepErr);
    EXPECT_EQ(Call([&](TFXShapeArgs& a) { a.DstStep = 4 * PixelBytes(false) - 1; }),
              ippStsStepErr);
    EXPECT_EQ(Call([&](TFXShapeArgs& a) { a.SrcStep = 4 * pixelBytes - 1; }), ippStsStepErr);
    if (GetParam()->Shape == TFXShape::RowFilter) // the source row must hold the kernel's reach
        EXPECT_EQ(Call([&](TFXShapeArgs& a) { a.SrcStep = 6 * pixelBytes - 1; }), ippStsStepErr);
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
    } else if (HasKernel()) {
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.KernelSize = 0; }), ippStsSizeErr);
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.KernelAnchor = 3; }), ippStsAnchorErr);
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.KernelAnchor = -1; }), ippStsAnchorErr);
    }
}

INSTANTIATE_TEST_SUITE_P(AllPrimitives, PrimitiveStatus,
                         testing::ValuesIn(FXAllPrimitivePointers()), FXPrimitiveTestName);

} // namespace
} // namespace framix::test
