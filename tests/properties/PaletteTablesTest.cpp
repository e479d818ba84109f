// SPDX-License-Identifier: MIT
// Every class on the palette, generically: defaults, enumeration names, text round trips.
#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>

#include "framework/FXGraph.h"
#include "framework/properties/FXPalette.h"
#include "framework/FXError.h"
#include "framework/properties/FXPropertyAccess.h"

namespace framix {
namespace {

// Visits every value property of `object` and of its groups, with its path.
void ForEachValue(TKTPersistent& object, const std::string& prefix,
                  const std::function<void(TKTPersistent&, const TFXPropInfo&, std::string)>& visit)
{
    object.GetClassInfo().ForEach([&](const TFXPropInfo& p) {
        const std::string path = prefix + std::string(p.Name);
        if (p.Kind == TFXPropKind::Group)
            ForEachValue(*p.GetObject(object), path + ".", visit);
        else if (p.HasValue())
            visit(object, p, path);
    });
}

class PaletteTables : public testing::TestWithParam<const TFXPaletteEntry*> {};

TEST_P(PaletteTables, NewObjectsHoldTheTableDefaults)
{
    TFXGraph graph;
    TKTComponent* component = GetParam()->Create(&graph);
    EXPECT_EQ(component->GetClassInfo().Name(), GetParam()->ClassName);
    ForEachValue(*component, "", [](TKTPersistent& o, const TFXPropInfo& p, const std::string& path) {
        EXPECT_TRUE(FXIsDefaultValue(p, p.Get(o)) || (p.Flags & pfNoDefault))
            << path << " starts as " << FXFormatPropertyValue(p, p.Get(o)) << ", declared "
            << FXFormatPropertyValue(p, p.Default());
    });
}

TEST_P(PaletteTables, PropertyNamesAreUniqueAlongTheChain)
{
    std::set<std::string_view> names;
    GetParam()->Info->ForEach([&](const TFXPropInfo& p) {
        EXPECT_TRUE(names.insert(p.Name).second) << "duplicate " << p.Name;
    });
}

TEST_P(PaletteTables, EveryValueSurvivesATextRoundTrip)
{
    TFXGraph graph;
    TKTComponent* component = GetParam()->Create(&graph);
    ForEachValue(*component, "", [&](TKTPersistent& o, const TFXPropInfo& p, const std::string& path) {
        if (!p.IsWritable())
            return;
        // Every enumeration name, and for numbers a value other than the default.
        std::vector<std::string> texts;
        if (p.Kind == TFXPropKind::Enum)
            for (std::string_view name : p.EnumNames)
                texts.emplace_back(name);
        else if (p.Kind == TFXPropKind::Bool)
            texts = {"True", "False"};
        else if (p.Kind == TFXPropKind::String)
            texts = {"it's"};
        else
            texts = {FXFormatPropertyValue(p, p.Kind == TFXPropKind::Float ||
                                                      p.Kind == TFXPropKind::Double
                                                  ? TFXValue(std::max(p.Min, std::min(p.Max, 3.5)))
                                                  : TFXValue(std::int64_t(std::max(
                                                        p.Min, std::min(p.Max, 3.0)))))};
        for (const std::string& text : texts) {
            component->SetPropertyByPath(path, text);
            EXPECT_EQ(component->GetPropertyByPath(path), text) << path;
        }
    });
}

std::vector<const TFXPaletteEntry*> AllEntries()
{
    std::vector<const TFXPaletteEntry*> entries;
    for (const TFXPaletteEntry& e : TFXPalette::Global().Entries())
        entries.push_back(&e);
    return entries;
}

INSTANTIATE_TEST_SUITE_P(AllClasses, PaletteTables, testing::ValuesIn(AllEntries()),
                         [](const auto& info) { return std::string(info.param->ClassName); });

TEST(FXPalette, EveryClassIsOnTheFramixPageAndUnknownNamesSuggestTheClosest)
{
    for (const TFXPaletteEntry& e : TFXPalette::Global().Entries())
        EXPECT_EQ(e.Page, "Framix") << e.ClassName;
    try {
        TFXPalette::Global().Get("TFXChangeFromat");
        FAIL();
    } catch (const EFXError& e) {
        EXPECT_NE(std::string(e.what()).find("did you mean 'TFXChangeFormat'"), std::string::npos)
            << e.what();
    }
}

} // namespace
} // namespace framix
