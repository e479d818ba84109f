// SPDX-License-Identifier: MIT
// Persistent objects and property groups: class tables, assignment, change notification.
#include "framework/KTPersistent.h"

#include "framework/properties/FXPropertyAccess.h"

namespace framix {

const TFXClassInfo& TKTPersistent::ClassInfo()
{
    static const TFXClassInfo info{"TKTPersistent", nullptr, {}};
    return info;
}

void TKTPersistent::Assign(const TKTPersistent& source)
{
    if (&source != this)
        FXAssignProperties(*this, source);
}

TKTPersistentNotify::TKTPersistentNotify(TKTPersistent* owner, IKTLock& lock, TChangeNotify onChange)
    : TKTPersistent(&lock), FOwner(owner), FOnChange(std::move(onChange))
{
}

const TFXClassInfo& TKTPersistentNotify::ClassInfo()
{
    static const TFXClassInfo info{"TKTPersistentNotify", &TKTPersistent::ClassInfo(), {}};
    return info;
}

void TKTPersistentNotify::Changed()
{
    if (FAssignDepth > 0) {
        FChangedDuringAssign = true;
        return;
    }
    if (FOnChange)
        FOnChange(*this);
}

void TKTPersistentNotify::Assign(const TKTPersistent& source)
{
    TKTLockGuard guard(Lock());
    ++FAssignDepth;
    try {
        TKTPersistent::Assign(source);
    } catch (...) {
        --FAssignDepth;
        throw;
    }
    --FAssignDepth;
    if (FAssignDepth == 0 && FChangedDuringAssign) {
        FChangedDuringAssign = false;
        Changed();
    }
}

const TFXClassInfo& TKTOptionalEnabledPersistent::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXProp<&TKTOptionalEnabledPersistent::GetEnabled, &TKTOptionalEnabledPersistent::SetEnabled>(
            kEnabled),
    };
    static const TFXClassInfo info{"TKTOptionalEnabledPersistent",
                                   &TKTPersistentNotify::ClassInfo(), kProps};
    return info;
}

bool TKTOptionalEnabledPersistent::GetEnabled() const
{
    auto guard = Lock().Read();
    return FEnabled;
}

void TKTOptionalEnabledPersistent::SetEnabled(bool value) { StoreAndNotify(FEnabled, value); }

} // namespace framix
