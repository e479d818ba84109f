// SPDX-License-Identifier: MIT
// Pin connection and delivery.
#include "framework/FXPins.h"

#include <algorithm>

#include "framework/FXError.h"
#include "framework/KTComponent.h"

namespace framix {

TPXBasicPin::TPXBasicPin(TKTComponent& owner, std::string_view name, IKTLock& lock,
                         TPXDataType type, TPXDispatch dispatch, TPXNotifyStates accepted)
    : FOwner(owner), FName(name), FLock(lock), FType(type), FDispatch(std::move(dispatch)),
      FAccepted(accepted)
{
}

std::string TPXBasicPin::GetPathName() const { return FOwner.GetPathName() + "." + FName; }

bool TPXBasicPin::Deliver(const IPXNotifyOperation& operation, TPXNotifyState state)
{
    if (!(FAccepted & state) || !FDispatch)
        return false;
    if (FXFrameStatsEnabled() && state == nsDownstream &&
        operation.As<TPXSuppliedBufferOperation>()) {
        TFXFrameStats& stats = FOwner.GetFrameStats();
        ++stats.FramesIn;
        TFXFrameTimer timer(&stats);
        return FDispatch(*this, FType, operation, state);
    }
    return FDispatch(*this, FType, operation, state);
}

// ---------------------------------------------------------------- source pins

TPXSourcePin::~TPXSourcePin() { DisconnectAll(); }

bool TPXSourcePin::IsConnected() const
{
    std::lock_guard lock(FSendLock);
    return !FSinks.empty();
}

void TPXSourcePin::Connect(TPXSinkPin& sink) { sink.SetSourcePin(this); }

void TPXSourcePin::Disconnect(TPXSinkPin& sink)
{
    if (sink.GetSourcePin() == this)
        sink.SetSourcePin(nullptr);
}

void TPXSourcePin::DisconnectAll()
{
    for (TPXSinkPin* sink : GetSinkPins())
        Disconnect(*sink);
}

std::vector<TPXSinkPin*> TPXSourcePin::GetSinkPins() const
{
    std::lock_guard lock(FSendLock);
    return FSinks;
}

bool TPXSourcePin::Notify(const IPXNotifyOperation& operation)
{
    std::lock_guard lock(FSendLock);
    if (FXFrameStatsEnabled() && operation.As<TPXSuppliedBufferOperation>()) {
        ++GetOwner().GetFrameStats().FramesOut;
        // What the receivers do with the frame is their time, not the sender's.
        TFXExcludedTime downstream;
        return NotifySinks(operation);
    }
    return NotifySinks(operation);
}

bool TPXSourcePin::NotifySinks(const IPXNotifyOperation& operation)
{
    bool handled = false;
    // Index loop: a receiver may connect further sinks while the operation travels.
    for (std::size_t i = 0; i < FSinks.size(); ++i)
        handled |= FSinks[i]->Deliver(operation, nsDownstream);
    return handled;
}

// ---------------------------------------------------------------- sink pins

TPXSinkPin::~TPXSinkPin() { SetSourcePin(nullptr); }

void TPXSinkPin::SetSourcePin(TPXSourcePin* source)
{
    if (source && source->GetDataType() != GetDataType())
        throw EFXError("Cannot connect " + source->GetPathName() + " to " + GetPathName() +
                       ": the pins carry different kinds of data");
    if (source && &source->GetOwner() == &GetOwner())
        throw EFXError("Cannot connect " + source->GetPathName() + " to " + GetPathName() +
                       ": a component cannot feed itself");
    TPXSourcePin* old = FSource.load();
    if (old == source)
        return;
    if (old) {
        std::lock_guard lock(old->FSendLock);
        auto& sinks = old->FSinks;
        sinks.erase(std::remove(sinks.begin(), sinks.end(), this), sinks.end());
    }
    FSource.store(source);
    if (source) {
        std::lock_guard lock(source->FSendLock);
        source->FSinks.push_back(this);
    }
}

bool TPXSinkPin::NotifyUpstream(const IPXNotifyOperation& operation)
{
    TPXSourcePin* source = FSource.load();
    return source && source->Deliver(operation, nsUpstream);
}

// ---------------------------------------------------------------- pin lists

TPXPinListBase::TPXPinListBase(TKTComponent& owner, std::string_view name, TFactory factory)
    : FOwner(owner), FName(name), FFactory(std::move(factory))
{
}

TPXBasicPin& TPXPinListBase::GetPin(int index) const
{
    if (index < 0 || index >= Count())
        throw EFXError(FOwner.GetPathName() + "." + FName + " has no pin " +
                       std::to_string(index) + " (count " + std::to_string(Count()) + ")");
    return *FPins[std::size_t(index)];
}

TPXBasicPin* TPXPinListBase::FindPin(std::string_view name) const
{
    // Pins are named "<list>._PinN"; accept the full name or the part after the list's name.
    for (const auto& pin : FPins) {
        const std::string& full = pin->GetName();
        if (full == name || std::string_view(full).substr(FName.size() + 1) == name)
            return pin.get();
    }
    return nullptr;
}

void TPXPinListBase::SetCount(int count)
{
    if (count < 0)
        throw EFXError("A pin list cannot have " + std::to_string(count) + " pins");
    while (Count() > count)
        FPins.pop_back();
    while (Count() < count)
        FPins.push_back(FFactory(FName + "._Pin" + std::to_string(Count())));
}

} // namespace framix
