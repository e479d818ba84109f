// SPDX-License-Identifier: MIT
// The palette: every component class by name, with its page, factory and property table.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "framework/properties/FXClassInfo.h"

namespace framix {

class TKTComponent;

struct TFXPaletteEntry {
    std::string_view ClassName;
    std::string_view Page;
    const TFXClassInfo* Info;
    std::function<TKTComponent*(TKTComponent* owner)> Create;
};

// Filled once, on first use, by the registration operation of every unit (the list in
// FXComponents.def); read-only afterwards.
class TFXPalette {
public:
    static const TFXPalette& Global();

    template <class T>
    void Register(std::string_view page)
    {
        Add({T::ClassInfo().Name(), page, &T::ClassInfo(),
             [](TKTComponent* owner) -> TKTComponent* { return new T(owner); }});
    }

    const std::vector<TFXPaletteEntry>& Entries() const { return FEntries; }
    const TFXPaletteEntry* Find(std::string_view className) const;
    // Like Find, but throws EFXError naming the class and the closest registered name.
    const TFXPaletteEntry& Get(std::string_view className) const;
    // Creates a component of the named class owned by `owner`.
    TKTComponent* Create(std::string_view className, TKTComponent* owner) const;

private:
    void Add(TFXPaletteEntry entry);
    std::vector<TFXPaletteEntry> FEntries;
};

// The page every component of the library registers on.
inline constexpr std::string_view kFXPalettePage = "Framix";

} // namespace framix
