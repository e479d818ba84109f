// SPDX-License-Identifier: MIT
// The bookkeeping every frame source shares: announcing, stamping and sending frames.
#pragma once

#include <cstdint>
#include <functional>

#include "framework/FXImageBuffer.h"
#include "framework/FXPins.h"

namespace framix {

// Owned by a source component. Keeps the announced stream, numbers and stamps frames
// (sequence number, media time from the frame period, time code) and re-announces when the
// source's size, format or rate changed between frames.
class TFXFrameGenerator {
public:
    explicit TFXFrameGenerator(TFXPXImageSourcePin& output) : FOutput(output) {}

    // Frame period in 100 ns units for a rate in frames per second (at least 1).
    static std::int64_t FrameDelayOf(double frameRate);

    // The flags and pixel aspect the announcements carry (a file player keeps a file's
    // interlacing and aspect with them); 0 and 1:1 unless set.
    void SetStreamFlags(std::uint32_t reserved, std::uint32_t aspectWidth,
                        std::uint32_t aspectHeight);

    // Sends the start-frame announcement and a start-pump operation; resets the count.
    void Start(int width, int height, TFXVideoFormat format, double frameRate);
    bool IsStarted() const { return FStarted; }
    // Makes a frame of the stream's geometry, lets `fill` draw it and stamps it. When the
    // geometry differs from the announcement, the stream is announced again first.
    FXImageBufferPtr Produce(int width, int height, TFXVideoFormat format, double frameRate,
                             const std::function<void(IFXImageBuffer&)>& fill);
    void Send(FXImageBufferPtr frame) { FOutput.SendBuffer(std::move(frame)); }
    // Sends the announcement again (a stream query from downstream).
    void Reannounce();
    void Stop();
    std::int64_t FramesSent() const { return FCount; }

private:
    void Announce();

    TFXPXImageSourcePin& FOutput;
    bool FStarted = false;
    int FWidth = 0;
    int FHeight = 0;
    TFXVideoFormat FFormat = vfRGB24;
    std::int64_t FDelay = 0;
    std::int64_t FCount = 0;
    std::uint32_t FReserved = 0;
    std::uint32_t FAspectWidth = 1;
    std::uint32_t FAspectHeight = 1;
};

} // namespace framix
