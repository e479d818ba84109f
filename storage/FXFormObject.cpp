// SPDX-License-Identifier: MIT
// Stored-form object blocks: building, lookups and content equality.
#include "storage/FXFormObject.h"

namespace framix {

TFXFormProperty& TFXFormObject::Add(std::string path, TFXFormValue value)
{
    Properties.push_back({std::move(path), std::move(value), {}});
    return Properties.back();
}

TFXFormObject& TFXFormObject::AddChild(std::string name, std::string className)
{
    TFXFormObject& child = Children.emplace_back();
    child.Name = std::move(name);
    child.ClassName = std::move(className);
    return child;
}

const TFXFormProperty* TFXFormObject::FindProperty(std::string_view path) const
{
    for (const TFXFormProperty& p : Properties)
        if (FXFormSameName(p.Path, path))
            return &p;
    return nullptr;
}

const TFXFormObject* TFXFormObject::FindChild(std::string_view name) const
{
    for (const TFXFormObject& c : Children)
        if (FXFormSameName(c.Name, name))
            return &c;
    return nullptr;
}

const TFXFormObject* TFXFormObject::FindDescendant(std::string_view dottedName) const
{
    const TFXFormObject* at = this;
    while (at) {
        const std::size_t dot = dottedName.find('.');
        at = at->FindChild(dottedName.substr(0, dot));
        if (dot == std::string_view::npos)
            return at;
        dottedName.remove_prefix(dot + 1);
    }
    return nullptr;
}

bool operator==(const TFXFormObject& a, const TFXFormObject& b)
{
    return a.Kind == b.Kind && a.Name == b.Name && a.ClassName == b.ClassName &&
           a.Index == b.Index && a.Properties == b.Properties && a.Children == b.Children;
}

} // namespace framix
