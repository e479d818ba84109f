// SPDX-License-Identifier: MIT
// Regions of interest, mask reach, the matrix chain and the geometric output size.
#include "framework/FXCommonROIFilter.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "framework/FXCommonROIGenFilter.h"
#include "framework/FXCommonROIMatrixFilter.h"
#include "framework/FXError.h"
#include "framework/FXGeometricTransfromFilter.h"
#include "tests/support/FXTestHarness.h"

namespace framix {
namespace {

using test::FXRandomFrame;
using test::TFXTestHarness;

// A rank filter (maximum) written straight from the neighbourhood definition: it reads every
// mask cell around the written pixel, so a wrong region makes the sanitizers fire.
class TFXPlainMaxFilter : public TFXCommonROIMatrixFilterIntermidiate {
public:
    using TFXCommonROIMatrixFilterIntermidiate::TFXCommonROIMatrixFilterIntermidiate;
    TFXImageSize LastRoi{-1, -1};

protected:
    void SetVideoFormat(IFXImageBuffer& buffer) override { AdmitFormats(buffer, {vfGray8}); }
    bool PerformFilter(const std::uint8_t* src, int srcStride, std::uint8_t* dst, int dstStride,
                       TFXImageSize roi, TFXImageSize mask, TFXPoint anchor,
                       TFXVideoFormat) override
    {
        LastRoi = roi;
        for (int y = 0; y < roi.height; ++y)
            for (int x = 0; x < roi.width; ++x) {
                std::uint8_t best = 0;
                for (int j = 0; j < mask.height; ++j)
                    for (int i = 0; i < mask.width; ++i)
                        best = std::max(best, src[(y - anchor.y + j) * srcStride + x - anchor.x + i]);
                dst[y * dstStride + x] = best;
            }
        return true;
    }
};

std::uint8_t At(const IFXImageBuffer& f, int x, int y) { return f.GetReadPointer()[y * f.GetRowStride() + x]; }

TEST(FXCommonROIFilter, MatrixFilterLeavesTheBorderItsMaskCannotReach)
{
    TFXTestHarness h;
    auto& filter = h.Wire<TFXPlainMaxFilter>();
    filter.GetMaskSize().SetWidth(3);
    filter.GetMaskSize().SetHeight(3);
    const FXImageBufferPtr frame = FXRandomFrame(6, 5, vfGray8, 3);
    h.Source().Send(frame);
    const IFXImageBuffer& out = *h.Captured.Frames.at(0);
    EXPECT_EQ(filter.LastRoi.width, 4);
    EXPECT_EQ(filter.LastRoi.height, 3);
    for (int y = 0; y < 5; ++y)
        for (int x = 0; x < 6; ++x) {
            if (x == 0 || y == 0 || x == 5 || y == 4) {
                EXPECT_EQ(At(out, x, y), At(*frame, x, y)) << x << "," << y;
                continue;
            }
            std::uint8_t best = 0;
            for (int j = -1; j <= 1; ++j)
                for (int i = -1; i <= 1; ++i)
                    best = std::max(best, At(*frame, x + i, y + j));
            EXPECT_EQ(At(out, x, y), best) << x << "," << y;
        }
}

TEST(FXCommonROIFilter, RegionOfInterestIsClippedAndShrunkByAnOffCentreAnchor)
{
    TFXTestHarness h;
    auto& filter = h.Wire<TFXPlainMaxFilter>();
    filter.GetMaskSize().SetWidth(5);
    filter.GetMaskSize().SetHeight(1);
    filter.GetAnchor().SetX(4);  // reads four pixels to the left, none to the right
    filter.GetROI().SetEnabled(true);
    filter.GetROI().SetLeft(2);
    filter.GetROI().SetTop(1);
    filter.GetROI().SetWidth(100);  // clipped to the frame
    filter.GetROI().SetHeight(2);
    const FXImageBufferPtr frame = FXRandomFrame(9, 4, vfGray8, 4);
    h.Source().Send(frame);
    const IFXImageBuffer& out = *h.Captured.Frames.at(0);
    EXPECT_EQ(filter.LastRoi.width, 5);  // columns 4..8
    EXPECT_EQ(filter.LastRoi.height, 2);
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 9; ++x) {
            const bool inside = y >= 1 && y <= 2 && x >= 4;
            std::uint8_t expected = At(*frame, x, y);
            if (inside)
                for (int i = 1; i <= 4; ++i)
                    expected = std::max(expected, At(*frame, x - i, y));
            EXPECT_EQ(At(out, x, y), expected) << x << "," << y;
        }
}

TEST(FXCommonROIFilter, FrameSmallerThanTheMaskPassesUnchanged)
{
    TFXTestHarness h;
    auto& filter = h.Wire<TFXPlainMaxFilter>();
    filter.GetMaskSize().SetWidth(7);
    filter.GetMaskSize().SetHeight(7);
    for (int side : {1, 2, 6}) {
        const FXImageBufferPtr frame = FXRandomFrame(side, side, vfGray8, std::uint32_t(side));
        h.Source().Send(frame);
        EXPECT_TRUE(test::FXSamePixels(*h.Captured.Frames.back(), *frame)) << side;
    }
}

// Doubles the width in osmBoundingRect.
class TFXWideningFilter : public TFXGeometricTransfromFilter {
public:
    using TFXGeometricTransfromFilter::TFXGeometricTransfromFilter;

protected:
    void GetBoundingRect(int& width, int& height) override { width *= 2; }
    void FilterInternalOperation(IFXImageBuffer& input, IFXImageBuffer& output) override
    {
        output.SetSize(GetOutputWidth(), GetOutputHeight(), input.GetFormat());
        FillBackground(output);
    }
};

TEST(FXGeometricTransfromFilter, OutputSizeModesAreAnnouncedAndFollowChanges)
{
    TFXTestHarness h;
    auto& filter = h.Wire<TFXWideningFilter>();
    filter.SetBackgroundColor(0x00FF0000);  // blue, red in the lowest byte
    h.Source().Announce(10, 4, vfRGB24);
    EXPECT_EQ(h.Captured.Announcements.back().Width, 10);
    filter.GetOutputSize().SetMode(osmBoundingRect);
    h.Source().Send(FXRandomFrame(10, 4, vfRGB24, 1));
    EXPECT_EQ(h.Captured.Announcements.back().Width, 20);
    const IFXImageBuffer& out = *h.Captured.Frames.back();
    EXPECT_EQ(out.GetWidth(), 20);
    EXPECT_EQ(out.GetReadPointer()[0], 255);  // blue is stored first
    EXPECT_EQ(out.GetReadPointer()[2], 0);
    filter.GetOutputSize().SetMode(osmCustom);
    filter.GetOutputSize().SetWidth(33);
    h.Source().Send(FXRandomFrame(10, 4, vfRGB24, 2));
    EXPECT_EQ(h.Captured.Announcements.back().Width, 33);
    EXPECT_EQ(h.Captured.Frames.back()->GetWidth(), 33);
    EXPECT_EQ(filter.GetInterpolationFlag(), 4);  // ordinal 2 by default
}

// Generates a counter pattern when nothing feeds it, inverts when something does.
class TFXCountingGenFilter : public TFXCommonROIGenFilter {
public:
    using TFXCommonROIGenFilter::TFXCommonROIGenFilter;

protected:
    TFXVideoFormat GetVideoFormat() override { return vfGray8; }
    void GenerateFrame(IFXImageBuffer& buffer) override
    {
        buffer.GetWritePointer()[0] = std::uint8_t(++FCount);
    }
    void SetVideoFormat(IFXImageBuffer& buffer) override { AdmitFormats(buffer, {vfGray8}); }
    void FilterInternalOperation(IFXImageBuffer& input, IFXImageBuffer& output) override
    {
        output.GetModifyPointer()[0] = std::uint8_t(~input.GetReadPointer()[0]);
    }

private:
    int FCount = 0;
};

TEST(FXCommonROIGenFilter, GeneratesWhenUnconnectedAndFiltersWhenFed)
{
    TFXGraph graph;
    auto* gen = new TFXCountingGenFilter(&graph);
    gen->GetImageSize().SetWidth(4);
    gen->GetImageSize().SetHeight(2);
    std::vector<int> values;
    auto* sink = new TFXGenericSink(&graph);
    sink->OnProcessImage = [&](TFXGenericSink&, IFXImageBuffer& f) {
        values.push_back(f.GetReadPointer()[0]);
        EXPECT_EQ(f.GetWidth(), 4);
    };
    sink->GetImageInputPin().SetSourcePin(&gen->GetImageOutputPin());
    ASSERT_EQ(graph.GetActiveSources().size(), 1u);
    graph.Start();
    graph.Pump();
    graph.Pump();
    graph.Stop();
    EXPECT_EQ(values, (std::vector<int>{1, 2}));

    auto* feeder = new test::TFXTestSource(&graph);
    gen->GetImageInputPin().SetSourcePin(&feeder->Output());
    EXPECT_TRUE(graph.GetActiveSources().empty());
    FXImageBufferPtr frame = new TFXImageBuffer(4, 2, vfGray8);
    frame->GetWritePointer()[0] = 0x0F;
    feeder->Send(frame);
    EXPECT_EQ(values.back(), 0xF0);
}

TEST(FXPins, ConnectionsAreCheckedAndListsNameTheirPins)
{
    TFXGraph graph;
    graph.SetName("Graph1");
    auto* a = new test::TFXTestSource(&graph);
    a->SetName("A");
    auto* b = new TFXGenericSink(&graph);
    b->SetName("B");
    TPXSinkPin floatPin(*b, "Level", b->Lock(), dtFloat, nullptr, kPXAllStates);
    EXPECT_THROW(floatPin.SetSourcePin(&a->Output()), EFXError);
    b->GetImageInputPin().SetSourcePin(&a->Output());
    EXPECT_EQ(a->Output().GetSinkPins().size(), 1u);
    EXPECT_EQ(b->GetImageInputPin().GetSourcePin()->GetPathName(), "Graph1.A.OutputPin");
    a->Output().Disconnect(b->GetImageInputPin());
    EXPECT_FALSE(a->Output().IsConnected());

    TPXPinListBase list(*b, "InputPins", [&](std::string_view name) {
        return std::make_unique<TFXPXImageSinkPin>(*b, name, b->Lock(), nullptr);
    });
    list.SetCount(3);
    EXPECT_EQ(list.GetPin(2).GetPathName(), "Graph1.B.InputPins._Pin2");
    EXPECT_EQ(list.FindPin("_Pin1"), &list.GetPin(1));
    EXPECT_THROW(list.GetPin(3), EFXError);
    list.SetCount(1);
    EXPECT_EQ(list.Count(), 1);
    EXPECT_THROW(b->SetName("A"), EFXError);  // names are unique within the owner
    EXPECT_THROW(b->SetName("9lives"), EFXError);
}

} // namespace
} // namespace framix
