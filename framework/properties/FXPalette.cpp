// SPDX-License-Identifier: MIT
// The palette registry and the expansion of the registration list.
#include "framework/properties/FXPalette.h"

#include <algorithm>
#include <mutex>

#include "framework/FXError.h"
#include "framework/KTComponent.h"
#include "framework/properties/FXPropertyAccess.h"

namespace framix {

#define FX_UNIT(Unit) void Register##Unit(TFXPalette& palette);
#include "framework/properties/FXComponents.def"
#undef FX_UNIT

const TFXPalette& TFXPalette::Global()
{
    static const TFXPalette palette = [] {
        TFXPalette p;
#define FX_UNIT(Unit) Register##Unit(p);
#include "framework/properties/FXComponents.def"
#undef FX_UNIT
        return p;
    }();
    return palette;
}

void TFXPalette::Add(TFXPaletteEntry entry)
{
    if (Find(entry.ClassName))
        throw EFXError("Class " + std::string(entry.ClassName) + " is registered twice");
    FEntries.push_back(std::move(entry));
}

const TFXPaletteEntry* TFXPalette::Find(std::string_view className) const
{
    auto it = std::find_if(FEntries.begin(), FEntries.end(),
                           [&](const TFXPaletteEntry& e) { return e.ClassName == className; });
    return it == FEntries.end() ? nullptr : &*it;
}

const TFXPaletteEntry& TFXPalette::Get(std::string_view className) const
{
    if (const TFXPaletteEntry* entry = Find(className))
        return *entry;
    std::vector<std::string_view> names;
    for (const TFXPaletteEntry& e : FEntries)
        names.push_back(e.ClassName);
    std::string message = "Unknown component class '" + std::string(className) + "'";
    if (std::string_view near = FXClosestName(className, names); !near.empty())
        message += " (did you mean '" + std::string(near) + "'?)";
    throw EFXError(message);
}

TKTComponent* TFXPalette::Create(std::string_view className, TKTComponent* owner) const
{
    return Get(className).Create(owner);
}

} // namespace framix
