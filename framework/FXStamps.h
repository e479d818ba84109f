// SPDX-License-Identifier: MIT
// The stamps a frame carries: media time, sequence number, time code and date.
#pragma once

#include <chrono>
#include <cstdint>

namespace framix {

// Media time in 100 ns units: when the frame begins and ends.
class TZPTimeStamp {
public:
    std::int64_t GetBegin() const { return FBegin; }
    std::int64_t GetEnd() const { return FEnd; }
    bool GetAvailable() const { return FAvailable; }
    void SetBegin(std::int64_t value) { FBegin = value; }
    void SetEnd(std::int64_t value) { FEnd = value; }
    void SetAvailable(bool value) { FAvailable = value; }
    bool operator==(const TZPTimeStamp&) const = default;

private:
    std::int64_t FBegin = 0;
    std::int64_t FEnd = 0;
    bool FAvailable = false;
};

// The frame's number in its stream; not available when the source set none.
class TQNSequenceStamp {
public:
    std::int64_t GetBufferNumber() const { return FBufferNumber; }
    bool GetAvailable() const { return FAvailable; }
    void SetBufferNumber(std::int64_t value)
    {
        FBufferNumber = value;
        FAvailable = true;
    }
    void SetAvailable(bool value) { FAvailable = value; }
    bool operator==(const TQNSequenceStamp&) const = default;

private:
    std::int64_t FBufferNumber = 0;
    bool FAvailable = false;
};

// An optional frame count since the start of the stream.
class TFXTimeCode {
public:
    std::int64_t GetFrame() const { return FFrame; }
    bool GetAvailable() const { return FAvailable; }
    void SetFrame(std::int64_t frame)
    {
        FFrame = frame;
        FAvailable = true;
    }
    void SetAvailable(bool value) { FAvailable = value; }
    bool operator==(const TFXTimeCode&) const = default;

private:
    std::int64_t FFrame = 0;
    bool FAvailable = false;
};

// An optional wall-clock date of the frame (when it was captured).
class TFXDateTime {
public:
    using TClock = std::chrono::system_clock;
    TClock::time_point GetValue() const { return FValue; }
    bool GetAvailable() const { return FAvailable; }
    void SetValue(TClock::time_point value)
    {
        FValue = value;
        FAvailable = true;
    }
    void SetAvailable(bool value) { FAvailable = value; }
    bool operator==(const TFXDateTime&) const = default;

private:
    TClock::time_point FValue{};
    bool FAvailable = false;
};

} // namespace framix
