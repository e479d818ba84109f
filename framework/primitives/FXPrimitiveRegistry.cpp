// SPDX-License-Identifier: MIT
// Builds the primitive registry once from every family's rows and level tables.
#include "framework/primitives/FXPrimitiveRegistry.h"

#include "framework/FXError.h"
#include "framework/primitives/FXFamily.h"
#include "framework/primitives/families/FXFamilies.h"

#include <algorithm>
#include <string>
#include <vector>

namespace framix::prim {
namespace {

// Two families must never declare the same name; checked while compiling.
#define FX_ROW_NAME(name, ...) std::string_view(#name),
#define FX_FAMILY_NAMES(Family, LIST) LIST(FX_ROW_NAME)
constexpr std::string_view kAllNames[] = {FX_PRIMITIVE_FAMILIES(FX_FAMILY_NAMES)};
#undef FX_FAMILY_NAMES
#undef FX_ROW_NAME

constexpr bool NamesAreUnique()
{
    std::array<std::string_view, std::size(kAllNames)> sorted{};
    std::copy(std::begin(kAllNames), std::end(kAllNames), sorted.begin());
    std::sort(sorted.begin(), sorted.end());
    return std::adjacent_find(sorted.begin(), sorted.end()) == sorted.end();
}
static_assert(NamesAreUnique(), "two primitive families declare the same IPP name");

#define FX_FAMILY_FN(Fam, LIST) &Fam##Family,
constexpr const TFXFamily& (*kFamilies[])() = {FX_PRIMITIVE_FAMILIES(FX_FAMILY_FN)};
#undef FX_FAMILY_FN

std::vector<TFXPrimitiveInfo> BuildRegistry()
{
    std::vector<TFXPrimitiveInfo> all;
    all.reserve(std::size(kAllNames));
    for (auto familyFn : kFamilies) {
        const TFXFamily& family = familyFn();
        std::array<TFXKernelTable, kFXSimdLevelCount> tables;
        for (int level = 0; level < kFXSimdLevelCount; ++level) {
            tables[level] = family.Levels[level]();
            if (!tables[level].empty() && tables[level].size() != family.Rows.size())
                throw EFXError(std::string("primitive family ") + family.Name + ": level " +
                               std::string(FXLevelName(TFXSimdLevel(level))) +
                               " has a kernel table that does not match its list");
        }
        if (tables[0].empty())
            throw EFXError(std::string("primitive family ") + family.Name +
                           " has no reference kernels");
        for (std::size_t i = 0; i < family.Rows.size(); ++i) {
            const TFXPrimitiveRow& row = family.Rows[i];
            TFXPrimitiveInfo info{row.Name,   family.Name, row.Shape, row.Sample,
                                  row.Layout, row.Entry,   {}};
            for (int level = 0; level < kFXSimdLevelCount; ++level)
                info.Levels[level] = tables[level].empty() ? nullptr : tables[level][i];
            all.push_back(info);
        }
    }
    std::sort(all.begin(), all.end(),
              [](const TFXPrimitiveInfo& a, const TFXPrimitiveInfo& b) { return a.Name < b.Name; });
    return all;
}

const std::vector<TFXPrimitiveInfo>& Registry()
{
    static const std::vector<TFXPrimitiveInfo> kRegistry = BuildRegistry();
    return kRegistry;
}

} // namespace

TFXSimdLevel TFXPrimitiveInfo::SelectedLevel() const
{
    for (int level = static_cast<int>(FXSelectableLevel()); level > 0; --level)
        if (Levels[level] != nullptr)
            return TFXSimdLevel(level);
    return TFXSimdLevel::Ref;
}

std::span<const TFXPrimitiveInfo> FXAllPrimitives()
{
    return Registry();
}

const TFXPrimitiveInfo* FXFindPrimitive(std::string_view name)
{
    const auto& all = Registry();
    auto it =
        std::lower_bound(all.begin(), all.end(), name,
                         [](const TFXPrimitiveInfo& p, std::string_view n) { return p.Name < n; });
    return it != all.end() && it->Name == name ? &*it : nullptr;
}

TFXSelection<void()> FXSelectKernelsByName(const char* name)
{
    const TFXPrimitiveInfo* info = FXFindPrimitive(name);
    if (info == nullptr) // only a broken family definition gets here
        throw EFXError(std::string("primitive ") + name + " is not registered");
    return {reinterpret_cast<void (*)()>(info->At(info->SelectedLevel())),
            reinterpret_cast<void (*)()>(info->At(TFXSimdLevel::Ref))};
}

} // namespace framix::prim
