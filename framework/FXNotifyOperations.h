// SPDX-License-Identifier: MIT
// The operations pins deliver: stream announcements, frames, stop, and the pump requests.
#pragma once

#include <cstdint>
#include <memory>

#include "framework/FXImageBuffer.h"
#include "framework/FXVideoFormat.h"

namespace framix {

// Receivers test an operation's class (dynamic_cast or As<T>).
class IPXNotifyOperation {
public:
    virtual ~IPXNotifyOperation() = default;
    // A copy that can wait in a queue (worker threads, frame queues).
    virtual std::unique_ptr<IPXNotifyOperation> Clone() const = 0;

    template <class T>
    const T* As() const
    {
        return dynamic_cast<const T*>(this);
    }
};

// Common helper: Clone through the copy constructor.
template <class Derived, class Base = IPXNotifyOperation>
class TPXNotifyOperationOf : public Base {
public:
    using Base::Base;
    std::unique_ptr<IPXNotifyOperation> Clone() const override
    {
        return std::make_unique<Derived>(static_cast<const Derived&>(*this));
    }
};

// Announces a video stream before its first frame and whenever its geometry, format or rate
// changes. FrameDelay is the interval between frames in 100 ns units.
class TPXStartFrameOperation : public IPXNotifyOperation {
public:
    TPXStartFrameOperation(int width, int height, std::int64_t frameDelay, TFXVideoFormat format,
                           std::uint32_t reserved = 0, std::uint32_t aspectWidth = 1,
                           std::uint32_t aspectHeight = 1)
        : Width(width), Height(height), FrameDelay(frameDelay), Format(format), Reserved(reserved),
          AspectWidth(aspectWidth), AspectHeight(aspectHeight)
    {
    }
    std::unique_ptr<IPXNotifyOperation> Clone() const override
    {
        return std::make_unique<TPXStartFrameOperation>(*this);
    }
    // Frames per second (10,000,000 / FrameDelay); 0 when no period was announced.
    double FrameRate() const { return FrameDelay > 0 ? 1e7 / double(FrameDelay) : 0.0; }

    int Width;
    int Height;
    std::int64_t FrameDelay;
    TFXVideoFormat Format;
    // Flags of the sender: kFXStartFlagInterlaced... (see below); 0 when it has none.
    std::uint32_t Reserved;
    std::uint32_t AspectWidth;
    std::uint32_t AspectHeight;
};

// Bits of TPXStartFrameOperation::Reserved: the Y4M bridge keeps a stream's interlacing there.
inline constexpr std::uint32_t kFXStartFlagTopFieldFirst = 1;
inline constexpr std::uint32_t kFXStartFlagBottomFieldFirst = 2;
inline constexpr std::uint32_t kFXStartFlagMixedFields = 3;
inline constexpr std::uint32_t kFXStartFlagFieldMask = 3;

// The framework's internal form of the announcement: queued receivers put it behind the frames
// they already hold, so it takes effect in order with them.
class TFXInternalStartFrameOperation final : public TPXStartFrameOperation {
public:
    using TPXStartFrameOperation::TPXStartFrameOperation;
    explicit TFXInternalStartFrameOperation(const TPXStartFrameOperation& op)
        : TPXStartFrameOperation(op)
    {
    }
    std::unique_ptr<IPXNotifyOperation> Clone() const override
    {
        return std::make_unique<TFXInternalStartFrameOperation>(*this);
    }
};

// The announced stream will carry no frames.
class TPXIgnoreVideoStreamOperation final
    : public TPXNotifyOperationOf<TPXIgnoreVideoStreamOperation> {
public:
    explicit TPXIgnoreVideoStreamOperation(TFXVideoFormat format) : Format(format) {}
    TFXVideoFormat Format;
};

// Generic form of the ignore announcement, for streams of any kind.
class TPXIgnoreStreamOperation final : public TPXNotifyOperationOf<TPXIgnoreStreamOperation> {};

// Carries one frame.
class TPXSuppliedBufferOperation final : public TPXNotifyOperationOf<TPXSuppliedBufferOperation> {
public:
    explicit TPXSuppliedBufferOperation(FXImageBufferPtr buffer) : Buffer(std::move(buffer)) {}
    FXImageBufferPtr Buffer;
};

// The stream has ended; receivers reset their stream state.
class TPXStopOperation final : public TPXNotifyOperationOf<TPXStopOperation> {};

// A graph starts: sources prepare, filters reset their counters.
class TPXStartOperation final : public TPXNotifyOperationOf<TPXStartOperation> {};

// Sent downstream by a source that produces frames when pumped: pacing components learn that
// they may ask it for frames.
class TPXStartPumpOperation final : public TPXNotifyOperationOf<TPXStartPumpOperation> {};

// Sent upstream: asks the source to produce `Count` frames.
class TPXPumpRequestOperation final : public TPXNotifyOperationOf<TPXPumpRequestOperation> {
public:
    explicit TPXPumpRequestOperation(int count = 1) : Count(count) {}
    int Count;
};

// Sent upstream by a multi-input component to the input that paces all the others.
class TPXMasterPumpOperation final : public TPXNotifyOperationOf<TPXMasterPumpOperation> {
public:
    explicit TPXMasterPumpOperation(bool master = true) : Master(master) {}
    bool Master;
};

// Sent upstream by a late-connected receiver: the source announces its current stream again.
class TPXQueryStreamOperation final : public TPXNotifyOperationOf<TPXQueryStreamOperation> {};

} // namespace framix
