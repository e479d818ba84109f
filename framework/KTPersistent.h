// SPDX-License-Identifier: MIT
// Roots of everything that publishes properties: persistent objects and property groups.
#pragma once

#include <functional>

#include "framework/KTLock.h"
#include "framework/properties/FXClassInfo.h"
#include "framework/properties/FXFiler.h"

namespace framix {

// Anything with published properties: components and the property groups they own.
class TKTPersistent {
public:
    virtual ~TKTPersistent() = default;
    TKTPersistent(const TKTPersistent&) = delete;
    TKTPersistent& operator=(const TKTPersistent&) = delete;

    static const TFXClassInfo& ClassInfo();
    virtual const TFXClassInfo& GetClassInfo() const { return ClassInfo(); }

    // Registers stored properties that are not table entries ("MatrixData" and the like).
    virtual void DefineProperties(TFXFiler& filer) {}

    // Copies every published value of `source` (same class or a descendant) into this object,
    // groups included; pins, events and read-only values are left alone.
    virtual void Assign(const TKTPersistent& source);

    // The lock that guards this object's values (a group shares its owner's).
    IKTLock& Lock() const { return *FLock; }

protected:
    explicit TKTPersistent(IKTLock* lock) : FLock(lock) {}
    void SetLock(IKTLock* lock) { FLock = lock; }

private:
    IKTLock* FLock;
};

// A property group: constructed with its owner, the owner's lock and a change notification,
// which every change of a value calls (under the lock) with the group as sender.
class TKTPersistentNotify : public TKTPersistent {
public:
    using TChangeNotify = std::function<void(TKTPersistent& sender)>;

    TKTPersistentNotify(TKTPersistent* owner, IKTLock& lock, TChangeNotify onChange);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    TKTPersistent* GetOwner() const { return FOwner; }
    void Assign(const TKTPersistent& source) override;

protected:
    // Stores under the lock and notifies when the value changed.
    template <class T, class V>
    void StoreAndNotify(T& field, const V& value)
    {
        Lock().StoreNotify(field, value, [this] { Changed(); });
    }
    void Changed();

private:
    TKTPersistent* FOwner;
    TChangeNotify FOnChange;
    int FAssignDepth = 0;  // an Assign reports one change at its end, not one per value
    bool FChangedDuringAssign = false;
};

// A group with a boolean `Enabled`.
class TKTOptionalEnabledPersistent : public TKTPersistentNotify {
public:
    static constexpr TFXBoolProp kEnabled{.Name = "Enabled", .Help = "switches the group on"};

    using TKTPersistentNotify::TKTPersistentNotify;
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    bool GetEnabled() const;
    void SetEnabled(bool value);

private:
    bool FEnabled = kEnabled.Default;
};

} // namespace framix
