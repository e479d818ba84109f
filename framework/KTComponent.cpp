// SPDX-License-Identifier: MIT
// Component ownership, names and property access by path.
#include "framework/KTComponent.h"

#include <algorithm>
#include <cctype>

#include "framework/FXError.h"
#include "framework/primitives/dispatch/FXPrimitiveLayer.h"
#include "framework/properties/FXPropertyAccess.h"

namespace framix {

TKTComponent::TKTComponent(TKTComponent* owner) : TKTPersistent(&FOwnLock), FOwner(owner)
{
    // Components call primitives through variables bound by name; the first component of the
    // process binds them (a cheap check afterwards).
    FXStartPrimitiveLayer();
    if (FOwner)
        FOwner->FComponents.push_back(this);
}

void TKTComponent::BeforeDestruction()
{
    for (TKTComponent* child : FComponents)
        child->BeforeDestruction();
}

TKTComponent::~TKTComponent()
{
    if (!FOwner)
        BeforeDestruction();  // the root of a tree prepares the whole tree once
    // Children go first, newest first, so a child never outlives what it was wired to last.
    while (!FComponents.empty())
        delete FComponents.back();
    if (FOwner) {
        auto& siblings = FOwner->FComponents;
        siblings.erase(std::remove(siblings.begin(), siblings.end(), this), siblings.end());
    }
}

const TFXClassInfo& TKTComponent::ClassInfo()
{
    static const TFXClassInfo info{"TKTComponent", &TKTPersistent::ClassInfo(), {}};
    return info;
}

void TKTComponent::SetName(std::string_view name)
{
    const bool valid =
        !name.empty() && !std::isdigit(static_cast<unsigned char>(name[0])) &&
        std::all_of(name.begin(), name.end(), [](char c) {
            return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
        });
    if (!valid)
        throw EFXError("'" + std::string(name) + "' is not a valid component name");
    if (FOwner)
        if (TKTComponent* other = FOwner->FindComponent(name); other && other != this)
            throw EFXError("A component named '" + std::string(name) + "' already exists in " +
                           FOwner->GetPathName());
    FName = name;
}

TKTComponent* TKTComponent::FindComponent(std::string_view name) const
{
    for (TKTComponent* c : FComponents)
        if (c->FName == name)
            return c;
    return nullptr;
}

std::string TKTComponent::GetPathName() const
{
    const std::string own = FName.empty() ? std::string(GetClassInfo().Name()) : FName;
    return FOwner ? FOwner->GetPathName() + "." + own : own;
}

void TKTComponent::SetPropertyByPath(std::string_view path, std::string_view text)
{
    try {
        const TFXPropertyRef ref = FXResolvePropertyPath(*this, path);
        FXSetPropertyValue(*ref.Object, *ref.Info, FXParsePropertyText(*ref.Info, text));
    } catch (const EFXError& e) {
        throw EFXError(GetPathName() + ": " + e.what());
    }
}

std::string TKTComponent::GetPropertyByPath(std::string_view path) const
{
    try {
        const TFXPropertyRef ref =
            FXResolvePropertyPath(const_cast<TKTComponent&>(*this), path);
        if (!ref.Info->HasValue())
            throw EFXError("Property '" + std::string(path) + "' has no text value");
        return FXFormatPropertyValue(*ref.Info, ref.Info->Get(*ref.Object));
    } catch (const EFXError& e) {
        throw EFXError(GetPathName() + ": " + e.what());
    }
}

} // namespace framix
