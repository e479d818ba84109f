// SPDX-License-Identifier: MIT
// Pins: the connection points components exchange notify operations through.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "framework/FXNotifyOperations.h"
#include "framework/KTLock.h"

namespace framix {

class TKTComponent;

// What a pin carries; only pins of the same type connect.
enum TPXDataType : std::uint8_t { dtVideo, dtFloat, dtBool, dtAudio };

// Which way an operation travels: downstream from a source pin to its sinks (announcements,
// frames, stop), upstream from a sink pin to its source (pump and stream queries).
enum TPXNotifyState : std::uint8_t { nsDownstream = 1, nsUpstream = 2 };
using TPXNotifyStates = std::uint8_t;  // a set of TPXNotifyState bits
inline constexpr TPXNotifyStates kPXAllStates = nsDownstream | nsUpstream;

class TPXBasicPin;
// The owner's handler of what reaches a pin; returns true when it handled the operation.
using TPXDispatch = std::function<bool(TPXBasicPin& pin, TPXDataType type,
                                       const IPXNotifyOperation& operation, TPXNotifyState state)>;

class TPXBasicPin {
public:
    TPXBasicPin(TKTComponent& owner, std::string_view name, IKTLock& lock, TPXDataType type,
                TPXDispatch dispatch, TPXNotifyStates accepted);
    virtual ~TPXBasicPin() = default;
    TPXBasicPin(const TPXBasicPin&) = delete;
    TPXBasicPin& operator=(const TPXBasicPin&) = delete;

    TKTComponent& GetOwner() const { return FOwner; }
    const std::string& GetName() const { return FName; }
    TPXDataType GetDataType() const { return FType; }
    IKTLock& GetLock() const { return FLock; }
    virtual bool IsSource() const = 0;
    virtual bool IsConnected() const = 0;
    // "Graph1.Blur1.OutputPin": how the stored form names the pin.
    std::string GetPathName() const;

    // Hands an operation to the owner's dispatch callback on the calling thread.
    bool Deliver(const IPXNotifyOperation& operation, TPXNotifyState state);

protected:
    void SetName(std::string_view name) { FName = name; }

private:
    friend class TPXPinListBase;
    TKTComponent& FOwner;
    std::string FName;
    IKTLock& FLock;
    TPXDataType FType;
    TPXDispatch FDispatch;
    TPXNotifyStates FAccepted;
};

class TPXSinkPin;

// An output: sends each operation to every connected sink pin, one operation at a time.
class TPXSourcePin : public TPXBasicPin {
public:
    using TPXBasicPin::TPXBasicPin;
    ~TPXSourcePin() override;

    bool IsSource() const override { return true; }
    bool IsConnected() const override;
    void Connect(TPXSinkPin& sink);
    void Disconnect(TPXSinkPin& sink);
    void DisconnectAll();
    std::vector<TPXSinkPin*> GetSinkPins() const;

    // Sends downstream to every sink; true when any of them handled it.
    bool Notify(const IPXNotifyOperation& operation);

private:
    friend class TPXSinkPin;
    bool NotifySinks(const IPXNotifyOperation& operation);

    mutable std::recursive_mutex FSendLock;  // serialises sends and guards FSinks
    std::vector<TPXSinkPin*> FSinks;
};

// An input: connected to at most one source pin.
class TPXSinkPin : public TPXBasicPin {
public:
    using TPXBasicPin::TPXBasicPin;
    ~TPXSinkPin() override;

    bool IsSource() const override { return false; }
    bool IsConnected() const override { return FSource.load() != nullptr; }
    TPXSourcePin* GetSourcePin() const { return FSource.load(); }
    // Connects to `source` (replacing any earlier connection), or disconnects with null.
    void SetSourcePin(TPXSourcePin* source);

    // Sends upstream to the connected source; false when unconnected or unhandled.
    bool NotifyUpstream(const IPXNotifyOperation& operation);

private:
    friend class TPXSourcePin;
    std::atomic<TPXSourcePin*> FSource{nullptr};
};

// Image pins: the frames of a video stream travel through them.
class TFXPXImageSinkPin final : public TPXSinkPin {
public:
    TFXPXImageSinkPin(TKTComponent& owner, std::string_view name, IKTLock& lock,
                      TPXDispatch dispatch, TPXNotifyStates accepted = kPXAllStates)
        : TPXSinkPin(owner, name, lock, dtVideo, std::move(dispatch), accepted)
    {
    }
};

class TFXPXImageSourcePin final : public TPXSourcePin {
public:
    TFXPXImageSourcePin(TKTComponent& owner, std::string_view name, IKTLock& lock,
                        TPXDispatch dispatch, TPXNotifyStates accepted = kPXAllStates)
        : TPXSourcePin(owner, name, lock, dtVideo, std::move(dispatch), accepted)
    {
    }
    // Sends one frame.
    bool SendBuffer(FXImageBufferPtr buffer)
    {
        return Notify(TPXSuppliedBufferOperation(std::move(buffer)));
    }
};

// One value carried by a state pin: a float (dtFloat) or a boolean (dtBool).
template <class T>
class TPXStateValueOperation final : public TPXNotifyOperationOf<TPXStateValueOperation<T>> {
public:
    explicit TPXStateValueOperation(T value) : Value(value) {}
    T Value;
};

// A state pin holds one value that a component publishes for run-time control (a brightness, a
// switch). It is an input: connected to an output of its data type (a value source, or another
// component's state output), every value that arrives is stored and handed to the owner's change
// handler on the sender's thread. The owner sets the pin's value itself when its property changes
// by other means, so the pin always shows the current setting; that store notifies nobody. The
// value is atomic: any thread may read it.
template <class T, TPXDataType Type>
class TPXStatePin : public TPXSinkPin {
public:
    using TChangeHandler = std::function<void(TPXStatePin& pin, T value)>;

    TPXStatePin(TKTComponent& owner, std::string_view name, IKTLock& lock, TChangeHandler onChange,
                T value = T())
        : TPXSinkPin(owner, name, lock, Type,
                     [this](TPXBasicPin&, TPXDataType, const IPXNotifyOperation& operation,
                            TPXNotifyState) { return Receive(operation); },
                     nsDownstream),
          FOnChange(std::move(onChange)), FValue(value)
    {
    }

    T GetValue() const { return FValue.load(); }
    // Stores the value without calling the change handler (the owner's own setters use it).
    void SetValue(T value) { FValue.store(value); }

private:
    bool Receive(const IPXNotifyOperation& operation)
    {
        const auto* value = operation.As<TPXStateValueOperation<T>>();
        if (!value)
            return false;
        FValue.store(value->Value);
        if (FOnChange)
            FOnChange(*this, value->Value);
        return true;
    }

    TChangeHandler FOnChange;
    std::atomic<T> FValue;
};

using TPXFloatStatePin = TPXStatePin<float, dtFloat>;
using TPXBoolStatePin = TPXStatePin<bool, dtBool>;

// An output of state values: sends each new value to every connected state pin. A component
// that drives other components' settings (a slider, an automation curve) publishes one.
template <class T, TPXDataType Type>
class TPXStateSourcePin final : public TPXSourcePin {
public:
    TPXStateSourcePin(TKTComponent& owner, std::string_view name, IKTLock& lock)
        : TPXSourcePin(owner, name, lock, Type, nullptr, 0)
    {
    }
    bool SendValue(T value) { return Notify(TPXStateValueOperation<T>(value)); }
};

using TPXFloatSourcePin = TPXStateSourcePin<float, dtFloat>;
using TPXBoolSourcePin = TPXStateSourcePin<bool, dtBool>;

// A published list of pins named "_Pin0", "_Pin1", ... (full names "InputPins._Pin0"); the
// owner decides the pins' kind through the factory.
class TPXPinListBase {
public:
    using TFactory = std::function<std::unique_ptr<TPXBasicPin>(std::string_view name)>;
    TPXPinListBase(TKTComponent& owner, std::string_view name, TFactory factory);

    TKTComponent& GetOwner() const { return FOwner; }
    const std::string& GetName() const { return FName; }
    int Count() const { return int(FPins.size()); }
    TPXBasicPin& GetPin(int index) const;  // throws EFXError out of range
    TPXBasicPin* FindPin(std::string_view name) const;
    // Grows or shrinks the list; removed pins are disconnected.
    void SetCount(int count);

private:
    TKTComponent& FOwner;
    std::string FName;
    TFactory FFactory;
    std::vector<std::unique_ptr<TPXBasicPin>> FPins;
};

} // namespace framix
