// SPDX-License-Identifier: MIT
// Wraps one component between a feeding source pin and a capturing sink for tests.
#pragma once

#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>
#include <mutex>
#include <random>
#include <vector>

#include "framework/FXCommonFilter.h"
#include "framework/FXGenericSink.h"
#include "framework/FXGraph.h"
#include "framework/FXImageBuffer.h"

namespace framix::test {

// A component with one output pin that a test drives by hand.
class TFXTestSource : public TKTComponent {
public:
    explicit TFXTestSource(TKTComponent* owner)
        : TKTComponent(owner), FOutput(*this, "OutputPin", Lock(), nullptr)
    {
    }
    TFXPXImageSourcePin& Output() { return FOutput; }
    void Announce(int width, int height, TFXVideoFormat format, std::int64_t delay = 400000)
    {
        FOutput.Notify(TPXStartFrameOperation(width, height, delay, format));
    }
    void Send(const FXImageBufferPtr& frame) { FOutput.SendBuffer(frame); }
    void Stop() { FOutput.Notify(TPXStopOperation()); }

private:
    TFXPXImageSourcePin FOutput;
};

// Everything that reached the capture, in order.
struct TFXCapture {
    std::mutex Mutex;
    std::vector<TPXStartFrameOperation> Announcements;
    std::vector<FXImageBufferPtr> Frames;
    int Stops = 0;
};

// source -> component -> capture, owned by one graph.
class TFXTestHarness {
public:
    TFXCapture Captured;  // declared first: it outlives the components that write to it

    TFXTestHarness() : FSource(new TFXTestSource(&FGraph)), FSink(new TFXGenericSink(&FGraph))
    {
        FSink->OnVideoStreamStart = [this](TFXGenericSink&, int w, int h, TFXVideoFormat f) {
            std::lock_guard lock(Captured.Mutex);
            Captured.Announcements.emplace_back(w, h, 0, f);
        };
        FSink->OnProcessImage = [this](TFXGenericSink&, IFXImageBuffer& frame) {
            std::lock_guard lock(Captured.Mutex);
            Captured.Frames.emplace_back(&frame);
        };
        FSink->OnStop = [this](TFXGenericSink&) {
            std::lock_guard lock(Captured.Mutex);
            ++Captured.Stops;
        };
    }

    // Creates the component under test inside the graph and wires it in.
    template <class T>
    T& Wire()
    {
        auto* component = new T(&FGraph);
        component->GetImageInputPin().SetSourcePin(&FSource->Output());
        FSink->GetImageInputPin().SetSourcePin(&component->GetImageOutputPin());
        return *component;
    }

    TFXTestSource& Source() { return *FSource; }
    TFXGenericSink& Sink() { return *FSink; }
    TFXGraph& Graph() { return FGraph; }

private:
    TFXGraph FGraph;
    TFXTestSource* FSource;
    TFXGenericSink* FSink;
};

// `count` frames of a generator (any frame source with an image output pin), pumped by hand into
// a sink created beside it and removed afterwards.
template <class TGenerator>
std::vector<FXImageBufferPtr> FXPumpFrames(TGenerator& generator, int count)
{
    std::vector<FXImageBufferPtr> frames;
    auto* sink = new TFXGenericSink(generator.GetOwner());
    sink->OnProcessImage = [&](TFXGenericSink&, IFXImageBuffer& f) { frames.emplace_back(&f); };
    sink->GetImageInputPin().SetSourcePin(&generator.GetImageOutputPin());
    generator.StartSource();
    for (int i = 0; i < count; ++i)
        generator.PumpFrame();
    generator.StopSource();
    delete sink;
    return frames;
}

// A frame filled with seeded random bytes, padding included.
inline FXImageBufferPtr FXRandomFrame(int width, int height, TFXVideoFormat format,
                                      std::uint32_t seed, int stride = 0)
{
    FXImageBufferPtr frame = new TFXImageBuffer(width, height, format, stride);
    std::mt19937 random(seed);
    const TFXPlanes planes = frame->GetWritePlanes();
    for (int p = 0; p < FXFormatInfo(format).PlaneCount; ++p) {
        const TFXPlaneGeometry g = FXPlaneGeometry(format, width, height, p);
        for (int y = 0; y < g.Rows; ++y)
            for (int x = 0; x < planes.Stride[p]; ++x)
                planes.Data[p][std::ptrdiff_t(y) * planes.Stride[p] + x] = std::uint8_t(random());
    }
    return frame;
}

// True when both frames hold the same size, format and pixel bytes (padding ignored).
inline bool FXSamePixels(const IFXImageBuffer& a, const IFXImageBuffer& b)
{
    if (a.GetWidth() != b.GetWidth() || a.GetHeight() != b.GetHeight() ||
        a.GetFormat() != b.GetFormat())
        return false;
    const TFXConstPlanes pa = a.GetReadPlanes();
    const TFXConstPlanes pb = b.GetReadPlanes();
    for (int p = 0; p < FXFormatInfo(a.GetFormat()).PlaneCount; ++p) {
        const TFXPlaneGeometry g = FXPlaneGeometry(a.GetFormat(), a.GetWidth(), a.GetHeight(), p);
        for (int y = 0; y < g.Rows; ++y)
            if (std::memcmp(pa.Data[p] + std::ptrdiff_t(y) * pa.Stride[p],
                            pb.Data[p] + std::ptrdiff_t(y) * pb.Stride[p],
                            std::size_t(g.RowBytes)) != 0)
                return false;
    }
    return true;
}

} // namespace framix::test
