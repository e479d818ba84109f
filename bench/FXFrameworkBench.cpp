// SPDX-License-Identifier: MIT
// The cost of moving frames: hand-off through pass-through filters, allocations per frame.
#include <benchmark/benchmark.h>

#include "bench/support/FXAllocationCounter.h"
#include "flow/FXChangeFormat.h"
#include "framework/FXBufferPool.h"
#include "framework/FXGenericFilter.h"
#include "framework/FXGenericSink.h"
#include "framework/FXGraph.h"

namespace framix {
namespace {

// A component that only owns an output pin, to push frames into a chain.
class TFXBenchSource : public TKTComponent {
public:
    explicit TFXBenchSource(TKTComponent* owner)
        : TKTComponent(owner), Output(*this, "OutputPin", Lock(), nullptr)
    {
    }
    TFXPXImageSourcePin Output;
};

// One 1080p RGB24 frame through `filters` pass-through filters per iteration.
void BM_FrameHandOff(benchmark::State& state)
{
    const int filters = int(state.range(0));
    TFXGraph graph;
    auto* source = new TFXBenchSource(&graph);
    TPXSourcePin* upstream = &source->Output;
    for (int i = 0; i < filters; ++i) {
        auto* f = new TFXChangeFormat(&graph);  // Format = vfRGB24: frames pass untouched
        f->GetImageInputPin().SetSourcePin(upstream);
        upstream = &f->GetImageOutputPin();
    }
    auto* sink = new TFXGenericSink(&graph);
    std::int64_t received = 0;
    sink->OnProcessImage = [&](TFXGenericSink&, IFXImageBuffer&) { ++received; };
    sink->GetImageInputPin().SetSourcePin(upstream);
    source->Output.Notify(TPXStartFrameOperation(1920, 1080, 400000, vfRGB24));

    FXImageBufferPtr frame = new TFXImageBuffer(1920, 1080, vfRGB24);
    const TPXSuppliedBufferOperation op(frame);
    for (int i = 0; i < 16; ++i)  // warm the pools
        source->Output.Notify(op);
    const std::uint64_t copiedBefore = TFXImageBuffer::GetPixelBytesCopied();
    const std::uint64_t heapBefore = bench::FXHeapAllocations();
    const std::uint64_t blocksBefore = TFXBufferPool::Global().GetSystemAllocations();
    for (auto _ : state)
        source->Output.Notify(op);
    const double frames = double(state.iterations());
    state.counters["ns_per_filter"] = benchmark::Counter(
        double(filters), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
    state.counters["pixel_bytes_copied_per_frame"] =
        double(TFXImageBuffer::GetPixelBytesCopied() - copiedBefore) / frames;
    state.counters["heap_allocations_per_frame"] =
        double(bench::FXHeapAllocations() - heapBefore) / frames;
    state.counters["pixel_blocks_allocated_per_frame"] =
        double(TFXBufferPool::Global().GetSystemAllocations() - blocksBefore) / frames;
    benchmark::DoNotOptimize(received);
}
BENCHMARK(BM_FrameHandOff)->Name("FXFrameHandOff/vfRGB24/1920x1080/filters")->Arg(1)->Arg(10);

// A steady stream where every filter writes a new frame (an inverting filter): pixel memory
// comes from the pool, so nothing is allocated after the first frames.
void BM_SteadyStreamAllocations(benchmark::State& state)
{
    TFXGraph graph;
    auto* source = new TFXBenchSource(&graph);
    TPXSourcePin* upstream = &source->Output;
    for (int i = 0; i < 3; ++i) {
        auto* f = new TFXGenericFilter(&graph);
        f->OnProcessData = [](TFXGenericFilter&, IFXImageBuffer&, IFXImageBuffer& out) {
            out.GetWritePointer()[0] = 1;
        };
        f->GetImageInputPin().SetSourcePin(upstream);
        upstream = &f->GetImageOutputPin();
    }
    auto* sink = new TFXGenericSink(&graph);
    sink->GetImageInputPin().SetSourcePin(upstream);
    FXImageBufferPtr frame = new TFXImageBuffer(1920, 1080, vfRGB24);
    const TPXSuppliedBufferOperation op(frame);
    for (int i = 0; i < 16; ++i)
        source->Output.Notify(op);
    const std::uint64_t heapBefore = bench::FXHeapAllocations();
    const std::uint64_t blocksBefore = TFXBufferPool::Global().GetSystemAllocations();
    for (auto _ : state)
        source->Output.Notify(op);
    const double frames = double(state.iterations());
    state.counters["heap_allocations_per_frame"] =
        double(bench::FXHeapAllocations() - heapBefore) / frames;
    state.counters["pixel_blocks_allocated_per_frame"] =
        double(TFXBufferPool::Global().GetSystemAllocations() - blocksBefore) / frames;
}
BENCHMARK(BM_SteadyStreamAllocations)->Name("FXSteadyStream/vfRGB24/1920x1080/3-writing-filters");

} // namespace
} // namespace framix
