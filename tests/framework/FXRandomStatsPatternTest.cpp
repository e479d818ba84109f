// SPDX-License-Identifier: MIT
// The process-wide random generator, per-component frame statistics and the test pattern.
#include <gtest/gtest.h>

#include <chrono>
#include <cstring>
#include <thread>

#include "flow/FXChangeFormat.h"
#include "framework/FXGenericGen.h"
#include "framework/FXGenericSink.h"
#include "framework/FXGraph.h"
#include "framework/FXRandom.h"
#include "framework/FXTestPatternGen.h"
#include "tests/support/FXTestHarness.h"

namespace framix {
namespace {

std::vector<std::uint32_t> Draw(std::uint64_t seed, std::uint32_t n, int count)
{
    FXRandomSeed(seed);
    std::vector<std::uint32_t> values;
    for (int i = 0; i < count; ++i)
        values.push_back(FXRandom(n));
    return values;
}

TEST(FXRandom, ValuesAreUniformInTheRangeAndASeedRepeatsTheSequence)
{
    for (std::uint32_t n : {1u, 2u, 7u, 1000u, 2147483647u, 4294967295u})
        for (std::uint32_t v : Draw(n, n, 2000))
            ASSERT_LT(v, n) << n;
    EXPECT_EQ(FXRandom(0), 0u);
    EXPECT_EQ(Draw(42, 1000, 50), Draw(42, 1000, 50));
    EXPECT_NE(Draw(42, 1000, 50), Draw(43, 1000, 50));
    // Uniform: ten buckets fill evenly.
    int counts[10] = {};
    for (int i = 0; i < 100000; ++i)
        ++counts[FXRandom(10)];
    for (int c : counts)
        EXPECT_NEAR(c, 10000, 500);
    // The top of a large range is reached too (no truncation to 31 bits).
    bool high = false;
    for (int i = 0; i < 100 && !high; ++i)
        high = FXRandom(4294967295u) > 3000000000u;
    EXPECT_TRUE(high);
}

TEST(FXRandom, ConcurrentCallersGetDistinctValues)
{
    FXRandomSeed(1);
    std::vector<std::vector<std::uint32_t>> drawn(4);
    std::vector<std::thread> threads;
    for (auto& values : drawn)
        threads.emplace_back([&values] {
            for (int i = 0; i < 5000; ++i)
                values.push_back(FXRandom(4294967295u));
        });
    for (auto& t : threads)
        t.join();
    std::vector<std::uint32_t> all;
    for (const auto& values : drawn)
        all.insert(all.end(), values.begin(), values.end());
    std::sort(all.begin(), all.end());
    // 20,000 draws from 2^32 values: a repeat would mean two threads shared a state.
    EXPECT_EQ(std::adjacent_find(all.begin(), all.end()), all.end());
}

// Generator -> threaded format change -> format change -> a sink that takes 2 ms per frame.
TEST(FXFrameStats, CountFramesAndChargeEachComponentOnlyItsOwnTime)
{
    TFXGraph graph;
    auto* gen = new TFXGenericGen(&graph);
    gen->SetFormat(vfGray8);
    auto* a = new TFXChangeFormat(&graph);
    a->SetFormat(vfRGB24);
    a->GetThreading().SetEnabled(true);
    auto* b = new TFXChangeFormat(&graph);
    b->SetFormat(vfRGB32);
    auto* sink = new TFXGenericSink(&graph);
    sink->OnProcessImage = [](TFXGenericSink&, IFXImageBuffer&) {
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    };
    a->GetImageInputPin().SetSourcePin(&gen->GetImageOutputPin());
    b->GetImageInputPin().SetSourcePin(&a->GetImageOutputPin());
    sink->GetImageInputPin().SetSourcePin(&b->GetImageOutputPin());

    graph.Start();
    graph.Pump(); // not counted: statistics are off
    graph.WaitIdle();
    FXEnableFrameStats(true);
    for (int i = 0; i < 5; ++i)
        graph.Pump();
    graph.WaitIdle();
    FXEnableFrameStats(false);
    graph.Pump();
    graph.Stop();

    auto expect = [](TKTComponent* c, std::uint64_t in, std::uint64_t out) {
        EXPECT_EQ(c->GetFrameStats().FramesIn, in) << c->GetClassInfo().Name();
        EXPECT_EQ(c->GetFrameStats().FramesOut, out) << c->GetClassInfo().Name();
    };
    expect(gen, 0, 5);
    expect(a, 5, 5);
    expect(b, 5, 5);
    expect(sink, 5, 0);
    const double sinkNs = sink->GetFrameStats().NsPerFrame();
    EXPECT_GE(sinkNs, 2e6);
    // The sink's sleep is downstream of everyone else: none of them is charged for it.
    for (TKTComponent* c : {static_cast<TKTComponent*>(gen), static_cast<TKTComponent*>(a),
                            static_cast<TKTComponent*>(b)}) {
        EXPECT_GT(c->GetFrameStats().BusyNs, 0u) << c->GetClassInfo().Name();
        EXPECT_LT(c->GetFrameStats().NsPerFrame(), sinkNs / 2) << c->GetClassInfo().Name();
    }
}

TEST(FXTestPatternGen, BarsMoveBySpeedEachFrameOverAFixedRamp)
{
    TFXGraph graph;
    auto* gen = new TFXTestPatternGen(&graph);
    gen->GetImageSize().SetWidth(64);
    gen->GetImageSize().SetHeight(30);
    gen->SetSpeed(3);
    const auto frames = test::FXPumpFrames(*gen, 2);
    ASSERT_EQ(frames.size(), 2u);
    const std::uint8_t* f0 = frames[0]->GetReadPointer();
    const std::uint8_t* f1 = frames[1]->GetReadPointer();
    const int stride = frames[0]->GetRowStride();
    // Frame 0: white bar first, black bar last; frame 1 is frame 0 moved 3 pixels right.
    EXPECT_EQ(f0[0], 255);
    EXPECT_EQ(f0[3 * 63], 0);
    EXPECT_EQ(std::memcmp(f1 + 3 * 3, f0, 3 * 61), 0);
    EXPECT_EQ(std::memcmp(f1, f0 + 3 * 61, 3 * 3), 0);
    // The ramp in the bottom third runs from black to white (the marker sits at the left).
    const std::uint8_t* ramp = f0 + 29 * stride;
    EXPECT_EQ(ramp[3 * 63], 255);
    EXPECT_EQ(ramp[3 * 32], 32 * 255 / 63);
    // The same settings always give the same pictures.
    EXPECT_TRUE(test::FXSamePixels(*test::FXPumpFrames(*gen, 1)[0], *frames[0]));
}

TEST(FXTestPatternGen, NoiseComesFromTheSeededGeneratorAndOtherFormatsAreConverted)
{
    TFXGraph graph;
    auto* gen = new TFXTestPatternGen(&graph);
    gen->GetImageSize().SetWidth(32);
    gen->GetImageSize().SetHeight(12);
    gen->SetNoise(10);
    FXRandomSeed(99);
    const auto a = test::FXPumpFrames(*gen, 1);
    FXRandomSeed(99);
    const auto b = test::FXPumpFrames(*gen, 1);
    FXRandomSeed(100);
    const auto c = test::FXPumpFrames(*gen, 1);
    EXPECT_TRUE(test::FXSamePixels(*a[0], *b[0]));
    EXPECT_FALSE(test::FXSamePixels(*a[0], *c[0]));
    std::vector<std::uint8_t> clean(32 * 12 * 3);
    TFXTestPatternGen::Draw(clean.data(), 32 * 3, 32, 12, 0, gen->GetSpeed());
    for (int y = 0; y < 12; ++y)
        for (int i = 0; i < 32 * 3; ++i)
            ASSERT_LE(std::abs(int(a[0]->GetReadPointer()[y * a[0]->GetRowStride() + i]) -
                               int(clean[std::size_t(y * 96 + i)])),
                      10);

    gen->SetNoise(0);
    gen->SetFormat(vfI420);
    const auto yuv = test::FXPumpFrames(*gen, 1);
    EXPECT_EQ(yuv[0]->GetFormat(), vfI420);
    FXImageBufferPtr expected = new TFXImageBuffer(clean.data(), 32, 12, vfRGB24);
    expected->ConvertFormat(vfI420);
    EXPECT_TRUE(test::FXSamePixels(*yuv[0], *expected));
}

} // namespace
} // namespace framix
