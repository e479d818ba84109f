// SPDX-License-Identifier: MIT
// Worker threads: order of operations, settings changed from other threads, errors.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "flow/FXChangeFormat.h"
#include "framework/FXError.h"
#include "framework/FXGenericFilter.h"
#include "tests/support/FXTestHarness.h"

namespace framix {
namespace {

using test::TFXTestSource;

struct TFXThreadedChain {
    TFXGraph Graph;
    TFXTestSource* Source = new TFXTestSource(&Graph);
    TFXChangeFormat* Change = new TFXChangeFormat(&Graph);
    TFXGenericFilter* Filter = new TFXGenericFilter(&Graph);
    TFXGenericSink* Sink = new TFXGenericSink(&Graph);
    std::vector<std::int64_t> Numbers;
    std::vector<TFXVideoFormat> Formats;

    TFXThreadedChain()
    {
        Change->GetImageInputPin().SetSourcePin(&Source->Output());
        Filter->GetImageInputPin().SetSourcePin(&Change->GetImageOutputPin());
        Sink->GetImageInputPin().SetSourcePin(&Filter->GetImageOutputPin());
        Sink->OnProcessImage = [this](TFXGenericSink&, IFXImageBuffer& f) {
            Numbers.push_back(f.GetSequenceStamp().GetBufferNumber());
            Formats.push_back(f.GetFormat());
        };
    }
    void Send(int count)
    {
        for (int i = 0; i < count; ++i) {
            FXImageBufferPtr frame = new TFXImageBuffer(16, 8, vfGray8);
            frame->GetWritePointer()[0] = std::uint8_t(i);
            frame->GetSequenceStamp().SetBufferNumber(i);
            Source->Send(frame);
        }
    }
};

TEST(FXThreading, FramesKeepTheirOrderWhileSettingsChangeFromAnotherThread)
{
    TFXThreadedChain chain;
    chain.Change->GetThreading().SetEnabled(true);
    chain.Change->GetThreading().SetQueueSize(2);
    chain.Filter->GetThreading().SetEnabled(true);
    chain.Filter->OnProcessData = [](TFXGenericFilter&, IFXImageBuffer& in, IFXImageBuffer& out) {
        out.GetModifyPointer()[0] = std::uint8_t(in.GetReadPointer()[0] + 1);
    };
    chain.Change->SetFormat(vfGray16);
    chain.Source->Announce(16, 8, vfGray8);
    std::atomic<bool> done{false};
    std::thread setter([&] {
        for (int i = 0; !done; ++i) {
            chain.Change->SetFormat(i % 2 ? vfRGB32 : vfGray16);
            chain.Filter->SetEnabled(i % 3 != 0);
            chain.Change->SetPropertyByPath("Enabled", i % 5 ? "True" : "False");
            (void)chain.Change->GetPropertyByPath("Format");
        }
    });
    chain.Send(300);
    done = true;
    setter.join();
    chain.Graph.WaitIdle();
    ASSERT_EQ(chain.Numbers.size(), 300u);
    for (std::int64_t i = 0; i < 300; ++i)
        ASSERT_EQ(chain.Numbers[std::size_t(i)], i);
    for (TFXVideoFormat f : chain.Formats)
        EXPECT_TRUE(f == vfRGB32 || f == vfGray16 || f == vfGray8) << int(f);
}

TEST(FXThreading, SwitchingTheWorkerOffMidStreamKeepsTheOrder)
{
    TFXThreadedChain chain;
    chain.Filter->GetThreading().SetEnabled(true);
    chain.Filter->GetThreading().SetQueueSize(64);
    chain.Send(50);
    chain.Filter->GetThreading().SetEnabled(false);  // the next frame waits for the queue
    chain.Send(50);
    EXPECT_FALSE(chain.Filter->HasWorker());
    ASSERT_EQ(chain.Numbers.size(), 100u);
    for (std::size_t i = 0; i < 100; ++i)
        EXPECT_EQ(chain.Numbers[i], std::int64_t(i % 50));
}

TEST(FXThreading, AnErrorOnAWorkerReachesWaitIdle)
{
    TFXThreadedChain chain;
    chain.Filter->GetThreading().SetEnabled(true);
    chain.Filter->OnProcessData = [](TFXGenericFilter&, IFXImageBuffer&, IFXImageBuffer&) {
        throw EFXError("worker failed");
    };
    chain.Send(3);
    EXPECT_THROW(chain.Graph.WaitIdle(), EFXError);
    EXPECT_NO_THROW(chain.Graph.WaitIdle());  // reported once
}

} // namespace
} // namespace framix
