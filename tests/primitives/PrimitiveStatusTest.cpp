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
        EXPECT_GE(valid, ippStsNoErr) << "the unbroken call must succeed (warnings allowed)";
        dst = images.Fresh();
        args = images.Args(dst.data());
        change(args);
        const IppStatus s = prim::FXCallShape(p.Shape, p.Sample, p.Entry, args);
        if (s < ippStsNoErr)
            EXPECT_TRUE(dst == images.Fresh()) << "an error must leave the destination alone";
        return s;
    }
    prim::TFXShapeTraits Traits() const
    {
        return prim::FXShapeTraits(GetParam()->Shape, GetParam()->Sample);
    }
    bool IsMask() const { return GetParam()->Shape == TFXShape::MaskFilter; }
    bool IsKernel() const
    {
        return GetParam()->Shape == TFXShape::RowFilter ||
               GetParam()->Shape == TFXShape::ColumnFilter;
    }
    bool IsMedian() const { return GetParam()->Name.find("Median") != std::string_view::npos; }
};

TEST_P(PrimitiveStatus, NullPointersComeFirst)
{
    if (Traits().Sources >= 1)
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Src = nullptr; }), ippStsNullPtrErr);
    if (Traits().Sources == 2)
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Src2 = nullptr; }), ippStsNullPtrErr);
    EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Dst = nullptr; }), ippStsNullPtrErr);
    // even when the size is bad too
    EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Dst = nullptr, a.Roi = {0, 0}; }), ippStsNullPtrErr);
    if (IsKernel())
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Kernel = nullptr; }), ippStsNullPtrErr);
}

TEST_P(PrimitiveStatus, NonPositiveRoiIsASizeError)
{
    EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Roi.width = 0; }), ippStsSizeErr);
    EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Roi.height = -3; }), ippStsSizeErr);
    EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Roi.width = 0, a.SrcStep = 0, a.DstStep = 0; }),
              ippStsSizeErr)
        << "sizes are checked before steps";
}

TEST_P(PrimitiveStatus, StepsSmallerThanARowAreStepErrors)
{
    const int pixelBytes =
        prim::FXChannels(GetParam()->Layout) * prim::FXSampleBytes(GetParam()->Sample);
    if (Traits().Sources >= 1)
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.SrcStep = 0; }), ippStsStepErr);
    if (Traits().Sources == 2)
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.Src2Step = -a.Src2Step; }), ippStsStepErr);
    if (!Traits().Reduces) {
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.DstStep = -a.DstStep; }), ippStsStepErr);
        EXPECT_EQ(Call([&](TFXShapeArgs& a) { a.DstStep = 4 * pixelBytes - 1; }), ippStsStepErr);
    }
    if (GetParam()->Shape == TFXShape::RowFilter) // the source row must hold the kernel's reach
        EXPECT_EQ(Call([&](TFXShapeArgs& a) { a.SrcStep = 6 * pixelBytes - 1; }), ippStsStepErr);
}

// Point operations never read a 16-bit or float sample at an odd address.
TEST_P(PrimitiveStatus, StepsThatSplitSamplesAreNotEvenStepErrors)
{
    if (IsMask() || IsKernel())
        return; // filters keep IPP's legacy step checks
    if (GetParam()->Sample != prim::TFXSample::U8 && Traits().Sources >= 1)
        EXPECT_EQ(Call([](TFXShapeArgs& a) { a.SrcStep += 1; }), ippStsNotEvenStepErr);
    if (Traits().DstSampleBytes > 1 && !Traits().Reduces)
        EXPECT_EQ(Call([this](TFXShapeArgs& a) { a.DstStep += 2 * Traits().DstSampleBytes - 1; }),
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
    if (!IsMask() && !IsKernel())
        return; // no mask or kernel
    if (IsMask()) {
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

INSTANTIATE_TEST_SUITE_P(AllPrimitives, PrimitiveStatus,
                         testing::ValuesIn(FXAllPrimitivePointers()), FXPrimitiveTestName);

} // namespace
} // namespace framix::test
