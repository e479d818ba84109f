// SPDX-License-Identifier: MIT
// The filter cycle: stream start and per-frame order, enable switch, admission, sharing.
#include "framework/FXCommonFilter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "flow/FXChangeFormat.h"
#include "framework/FXError.h"
#include "framework/FXGenericFilter.h"
#include "framework/FXGenericGen.h"
#include "tests/support/FXTestHarness.h"

namespace framix {
namespace {

using test::FXRandomFrame;
using test::FXSamePixels;
using test::TFXTestHarness;

// Records the base's calls and inverts every sample of the processed formats.
class TFXRecordingFilter : public TFXCommonFilter {
public:
    using TFXCommonFilter::TFXCommonFilter;
    std::vector<std::string> Calls;
    std::vector<TFXVideoFormat> SeenFormats;
    std::vector<std::uint8_t> PerStreamMemory;  // sized per stream, like a trail accumulator

protected:
    void SetVideoFormat(IFXImageBuffer& buffer) override { AdmitFormats(buffer, kFXNativeFormats); }
    void SetSizeRate(int& width, int& height, TFXVideoFormat& format, std::int64_t delay,
                     std::uint32_t reserved, std::uint32_t& aw, std::uint32_t& ah) override
    {
        TFXCommonFilter::SetSizeRate(width, height, format, delay, reserved, aw, ah);
        PerStreamMemory.assign(std::size_t(width) * std::size_t(height), 0);
        Calls.push_back("SetSizeRate " + std::to_string(width) + "x" + std::to_string(height));
    }
    void StreamStart() override { Calls.push_back("StreamStart"); }
    void StreamStop() override { Calls.push_back("StreamStop"); }
    void FilterInternalOperation(IFXImageBuffer& input, IFXImageBuffer& output) override
    {
        Calls.push_back("Filter");
        SeenFormats.push_back(input.GetFormat());
        ASSERT_EQ(PerStreamMemory.size(), std::size_t(input.GetWidth()) * input.GetHeight());
        const int rowBytes = input.GetWidth() * input.GetBytesPerPixel();
        const std::uint8_t* src = input.GetReadPointer();
        std::uint8_t* dst = output.GetWritePointer();
        for (int y = 0; y < input.GetHeight(); ++y)
            for (int x = 0; x < rowBytes; ++x)
                dst[y * output.GetRowStride() + x] = std::uint8_t(~src[y * input.GetRowStride() + x]);
    }
};

class FXFilterCycle : public testing::TestWithParam<TFXVideoFormat> {};

// A stream travels from a generator through a filter to a sink in the documented order.
TEST_P(FXFilterCycle, StreamStartAndFramesTravelInOrder)
{
    const TFXVideoFormat format = GetParam();
    TFXGraph graph;
    auto* gen = new TFXGenericGen(&graph);
    auto* filter = new TFXRecordingFilter(&graph);
    auto* sink = new TFXGenericSink(&graph);
    gen->SetFormat(format);
    gen->GetImageSize().SetWidth(7);
    gen->GetImageSize().SetHeight(3);
    std::vector<FXImageBufferPtr> sent;
    gen->OnGenerateFrame = [&](TFXGenericGen&, IFXImageBuffer& frame) {
        const FXImageBufferPtr random = FXRandomFrame(7, 3, format, std::uint32_t(sent.size()));
        frame.CopyFrom(*random);
        sent.push_back(random);
    };
    std::vector<std::string> seen;
    std::vector<FXImageBufferPtr> received;
    sink->OnVideoStreamStart = [&](TFXGenericSink&, int w, int h, TFXVideoFormat f) {
        seen.push_back("announce " + std::to_string(w) + "x" + std::to_string(h) + " " +
                       std::string(FXVideoFormatName(f)));
    };
    sink->OnProcessImage = [&](TFXGenericSink&, IFXImageBuffer& frame) {
        seen.push_back("frame " + std::to_string(frame.GetSequenceStamp().GetBufferNumber()));
        received.emplace_back(&frame);
    };
    sink->OnStop = [&](TFXGenericSink&) { seen.push_back("stop"); };
    filter->GetImageInputPin().SetSourcePin(&gen->GetImageOutputPin());
    sink->GetImageInputPin().SetSourcePin(&filter->GetImageOutputPin());

    graph.Start();
    for (int i = 0; i < 3; ++i)
        graph.Pump();
    graph.Stop();

    EXPECT_EQ(filter->Calls, (std::vector<std::string>{"SetSizeRate 7x3", "StreamStart", "Filter",
                                                       "Filter", "Filter", "StreamStop"}));
    const std::string name(FXVideoFormatName(format));
    EXPECT_EQ(seen, (std::vector<std::string>{"announce 7x3 " + name, "frame 0", "frame 1",
                                              "frame 2", "stop"}));
    ASSERT_EQ(received.size(), 3u);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(received[i]->GetFormat(), format);
        const int rowBytes = 7 * received[i]->GetBytesPerPixel();
        for (int y = 0; y < 3; ++y)
            for (int x = 0; x < rowBytes; ++x)
                ASSERT_EQ(received[i]->GetReadPointer()[y * received[i]->GetRowStride() + x],
                          std::uint8_t(~sent[i]->GetReadPointer()[y * sent[i]->GetRowStride() + x]));
    }
}

INSTANTIATE_TEST_SUITE_P(ProcessedFormats, FXFilterCycle,
                         testing::Values(vfRGB24, vfRGB32, vfGray8, vfGray16),
                         [](const auto& info) { return std::string(FXVideoFormatName(info.param)); });

TEST(FXCommonFilter, DisabledFilterPassesFramesAndAnnouncementUnchanged)
{
    TFXTestHarness h;
    auto& filter = h.Wire<TFXRecordingFilter>();
    filter.SetEnabled(false);
    h.Source().Announce(6, 4, vfI420);
    const FXImageBufferPtr frame = FXRandomFrame(6, 4, vfI420, 5);
    h.Source().Send(frame);
    ASSERT_EQ(h.Captured.Announcements.size(), 1u);
    EXPECT_EQ(h.Captured.Announcements[0].Format, vfI420);
    ASSERT_EQ(h.Captured.Frames.size(), 1u);
    EXPECT_EQ(h.Captured.Frames[0]->GetReadPointer(), frame->GetReadPointer());  // not even copied
    EXPECT_TRUE(filter.SeenFormats.empty());
}

TEST(FXCommonFilter, OtherOrdinalsReachTheFilterAsRGB24)
{
    for (TFXVideoFormat format : {vfRGB555, vfYUY2, vfUYVY, vfI420, vfRGB565, vfYV12}) {
        TFXTestHarness h;
        auto& filter = h.Wire<TFXRecordingFilter>();
        h.Source().Announce(4, 2, format);
        const FXImageBufferPtr frame = FXRandomFrame(4, 2, format, 9);
        h.Source().Send(frame);
        ASSERT_EQ(filter.SeenFormats.size(), 1u);
        EXPECT_EQ(filter.SeenFormats[0], vfRGB24) << FXVideoFormatName(format);
        EXPECT_EQ(h.Captured.Announcements.at(0).Format, vfRGB24);
        EXPECT_EQ(h.Captured.Frames.at(0)->GetFormat(), vfRGB24);
        EXPECT_EQ(frame->GetFormat(), format);  // the sender's frame is untouched
    }
}

TEST(FXCommonFilter, StartFrameMidStreamResizesPerStreamMemoryBeforeTheNextFrame)
{
    TFXTestHarness h;
    auto& filter = h.Wire<TFXRecordingFilter>();
    h.Source().Announce(4, 4, vfGray8);
    h.Source().Send(FXRandomFrame(4, 4, vfGray8, 1));
    h.Source().Announce(9, 5, vfGray8);
    h.Source().Send(FXRandomFrame(9, 5, vfGray8, 2));  // the filter asserts the memory size
    EXPECT_EQ(filter.PerStreamMemory.size(), 45u);
    EXPECT_EQ(h.Captured.Announcements.size(), 2u);
    EXPECT_EQ(h.Captured.Frames.size(), 2u);
}

TEST(FXCommonFilter, PaddedStrideIsProcessedRowByRowAndPaddingSurvives)
{
    TFXTestHarness h;
    auto& filter = h.Wire<TFXGenericFilter>();
    filter.OnProcessData = [](TFXGenericFilter&, IFXImageBuffer& in, IFXImageBuffer& out) {
        std::uint8_t* row = out.GetModifyPointer();
        for (int y = 0; y < out.GetHeight(); ++y, row += out.GetRowStride())
            for (int x = 0; x < out.GetWidth() * 3; ++x)
                row[x] = std::uint8_t(row[x] + 1);
    };
    FXImageBufferPtr frame = new TFXImageBuffer(5, 3, vfRGB24, 16);  // 15 bytes + 1 padding
    std::uint8_t* p = frame->GetWritePointer();
    for (int i = 0; i < 48; ++i)
        p[i] = (i % 16 == 15) ? 0xEE : std::uint8_t(i);
    h.Source().Send(frame);
    const IFXImageBuffer& out = *h.Captured.Frames.at(0);
    ASSERT_EQ(out.GetRowStride(), 16);
    for (int i = 0; i < 48; ++i)
        EXPECT_EQ(out.GetReadPointer()[i], (i % 16 == 15) ? 0xEE : std::uint8_t(i + 1)) << i;
}

TEST(FXCommonFilter, BadAnnouncementIsAClearError)
{
    TFXTestHarness h;
    h.Wire<TFXRecordingFilter>();
    EXPECT_THROW(h.Source().Announce(0, 5, vfRGB24), EFXError);
    EXPECT_THROW(h.Source().Announce(5, -1, vfRGB24), EFXError);
    try {
        h.Source().Announce(4, 4, TFXVideoFormat(42));
        FAIL() << "an unknown ordinal was accepted";
    } catch (const EFXError& e) {
        EXPECT_NE(std::string(e.what()).find("42"), std::string::npos) << e.what();
    }
}

TEST(FXChangeFormat, SameFormatPassesFramesWithoutCopying)
{
    TFXTestHarness h;
    auto& change = h.Wire<TFXChangeFormat>();
    change.SetFormat(vfGray16);
    h.Source().Announce(6, 2, vfGray16);
    const FXImageBufferPtr frame = FXRandomFrame(6, 2, vfGray16, 4);
    const std::uint64_t copied = TFXImageBuffer::GetPixelBytesCopied();
    h.Source().Send(frame);
    EXPECT_EQ(h.Captured.Frames.at(0)->GetReadPointer(), frame->GetReadPointer());
    EXPECT_EQ(TFXImageBuffer::GetPixelBytesCopied(), copied);
}

TEST(FXChangeFormat, ConvertsFramesAndAnnouncesTheNewFormat)
{
    TFXTestHarness h;
    auto& change = h.Wire<TFXChangeFormat>();
    change.SetFormat(vfRGB32);
    h.Source().Announce(3, 3, vfGray8);
    const FXImageBufferPtr frame = FXRandomFrame(3, 3, vfGray8, 6);
    h.Source().Send(frame);
    EXPECT_EQ(h.Captured.Announcements.at(0).Format, vfRGB32);
    const IFXImageBuffer& out = *h.Captured.Frames.at(0);
    ASSERT_EQ(out.GetFormat(), vfRGB32);
    const std::uint8_t gray = frame->GetReadPointer()[0];
    EXPECT_EQ(out.GetReadPointer()[0], gray);
    EXPECT_EQ(out.GetReadPointer()[2], gray);
    EXPECT_EQ(out.GetReadPointer()[3], 255);

    // Disabled: the announcement and the frames are left alone.
    change.SetEnabled(false);
    h.Source().Send(frame);
    EXPECT_EQ(h.Captured.Announcements.back().Format, vfGray8);
    EXPECT_EQ(h.Captured.Frames.back()->GetFormat(), vfGray8);
}

TEST(FXCommonFilter, ChainOfPassThroughFiltersCopiesNoPixels)
{
    TFXGraph graph;
    auto* source = new test::TFXTestSource(&graph);
    TPXSourcePin* upstream = &source->Output();
    for (int i = 0; i < 10; ++i) {
        auto* filter = new TFXGenericFilter(&graph);
        filter->GetImageInputPin().SetSourcePin(upstream);
        upstream = &filter->GetImageOutputPin();
    }
    FXImageBufferPtr last;
    auto* sink = new TFXGenericSink(&graph);
    sink->OnProcessImage = [&](TFXGenericSink&, IFXImageBuffer& f) { last = &f; };
    sink->GetImageInputPin().SetSourcePin(upstream);
    const FXImageBufferPtr frame = FXRandomFrame(64, 48, vfRGB24, 8);
    const std::uint64_t copied = TFXImageBuffer::GetPixelBytesCopied();
    source->Send(frame);
    EXPECT_EQ(TFXImageBuffer::GetPixelBytesCopied(), copied);
    ASSERT_TRUE(last);
    EXPECT_EQ(last->GetReadPointer(), frame->GetReadPointer());
}

} // namespace
} // namespace framix
