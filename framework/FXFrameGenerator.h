// SPDX-License-Identifier: MIT
// What every frame source shares: announcing, pumping, stamping and sending frames.
#pragma once

#include <cstdint>

#include "framework/FXImageBuffer.h"
#include "framework/FXPins.h"

namespace framix {

// The operations a source component provides to its frame generator (its own virtual
// operations: the generator bases implement this interface with them).
class IFXGeneratorHooks {
public:
    // Start and end of a stream, under the lock (open and close files, reset state).
    virtual void IntStart() = 0;
    virtual void IntStop() = 0;
    virtual void GetImageSize(int& width, int& height) = 0;
    virtual TFXVideoFormat GetVideoFormat() = 0;
    virtual double GetGeneratorFrameRate() = 0;
    // Draws one frame (size and format already set), under the lock.
    virtual void GenerateFrame(IFXImageBuffer& buffer) = 0;
    // Like GenerateFrame, for sources that can run out (a file): false when there is no frame,
    // which is then not sent.
    virtual bool FillFrame(IFXImageBuffer& buffer)
    {
        GenerateFrame(buffer);
        return true;
    }

protected:
    ~IFXGeneratorHooks() = default;
};

// Owned by a source component. Runs its stream: the announcement and a start-pump operation at
// the start, one frame per pump (drawn under the component lock, numbered and stamped with the
// frame period, sent outside the lock so setters need not wait while it travels), a new
// announcement when size, format or rate changed between frames, pump requests and stream
// queries from downstream, and the stop operation.
class TFXFrameGenerator {
public:
    TFXFrameGenerator(IFXGeneratorHooks& hooks, IKTLock& lock, TFXPXImageSourcePin& output)
        : FHooks(hooks), FLock(lock), FOutput(output)
    {
    }

    // Frame period in 100 ns units for a rate in frames per second (at least 1).
    static std::int64_t FrameDelayOf(double frameRate);

    // The flags and pixel aspect the announcements carry (a file player keeps a file's
    // interlacing and aspect with them); 0 and 1:1 unless set.
    void SetStreamFlags(std::uint32_t reserved, std::uint32_t aspectWidth,
                        std::uint32_t aspectHeight);

    void Start();
    // Makes and sends one frame; false when the source had none (FillFrame said so).
    bool Pump();
    void Stop();
    // Stream queries arriving at the output pin (the announcement is repeated); false for
    // anything else. Pump requests are the component's: it decides when its stream ends.
    bool HandleQuery(const IPXNotifyOperation& operation);

    bool IsStarted() const { return FStarted; }
    std::int64_t FramesSent() const { return FCount; }

private:
    void StartLocked();
    void Announce();

    IFXGeneratorHooks& FHooks;
    IKTLock& FLock;
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
