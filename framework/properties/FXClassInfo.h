// SPDX-License-Identifier: MIT
// A class's table of published properties, chained to its parent's.
#pragma once

#include <span>
#include <string_view>

#include "framework/properties/FXProperty.h"

namespace framix {

class TFXClassInfo {
public:
    constexpr TFXClassInfo(std::string_view name, const TFXClassInfo* parent,
                           std::span<const TFXPropInfo> props)
        : FName(name), FParent(parent), FProps(props)
    {
    }

    std::string_view Name() const { return FName; }
    const TFXClassInfo* Parent() const { return FParent; }
    // This class's own entries, in declaration order.
    std::span<const TFXPropInfo> OwnProps() const { return FProps; }

    // The entry named `name` in this class or an ancestor (a redeclaration wins), or null.
    const TFXPropInfo* Find(std::string_view name) const;
    bool InheritsFrom(const TFXClassInfo& other) const;

    // Every entry, ancestors first, then declaration order: the stored form's order. A property
    // that a descendant redeclares keeps its place and is visited with the descendant's entry.
    template <class F>
    void ForEach(F&& visit) const
    {
        ForEachOf(*this, visit);
    }

private:
    template <class F>
    void ForEachOf(const TFXClassInfo& leaf, F& visit) const
    {
        if (FParent)
            FParent->ForEachOf(leaf, visit);
        for (const TFXPropInfo& p : FProps)
            if (!FParent || FParent->Find(p.Name) == nullptr)
                visit(*leaf.Find(p.Name));
    }

    std::string_view FName;
    const TFXClassInfo* FParent;
    std::span<const TFXPropInfo> FProps;
};

} // namespace framix
