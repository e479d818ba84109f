// SPDX-License-Identifier: MIT
// What a host needs of a component that produces frames when pumped.
#pragma once

namespace framix {

// Implemented by generators, generator filters and file players. The host (or a pacing
// component, through a pump request) calls these on one thread at a time.
class IFXPumpSource {
public:
    virtual ~IFXPumpSource() = default;
    // True when the component currently produces frames of its own (a generator filter whose
    // input is connected is an ordinary filter instead).
    virtual bool IsActiveSource() = 0;
    // Announces the stream downstream (and that it can be pumped).
    virtual void StartSource() = 0;
    // Produces and sends one frame; false once the source has no more frames.
    virtual bool PumpFrame() = 0;
    // Ends the stream: a stop operation goes downstream.
    virtual void StopSource() = 0;
    // Frames per second of the stream, for hosts that pace in real time.
    virtual double GetSourceFrameRate() = 0;
};

} // namespace framix
