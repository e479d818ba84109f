// SPDX-License-Identifier: MIT
// Property look-up along the class chain.
#include "framework/properties/FXClassInfo.h"

namespace framix {

const TFXPropInfo* TFXClassInfo::Find(std::string_view name) const
{
    for (const TFXClassInfo* c = this; c; c = c->FParent)
        for (const TFXPropInfo& p : c->FProps)
            if (p.Name == name)
                return &p;
    return nullptr;
}

bool TFXClassInfo::InheritsFrom(const TFXClassInfo& other) const
{
    for (const TFXClassInfo* c = this; c; c = c->FParent)
        if (c == &other)
            return true;
    return false;
}

} // namespace framix
