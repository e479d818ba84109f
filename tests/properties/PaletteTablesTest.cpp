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
#include "framework/KTCollection.h"
#include "storage/FXGraphLoader.h"
#include "storage/FXGraphSaver.h"

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

// A value of the property's kind that differs from its default and lies within its bounds.
TFXValue OtherValue(const TFXPropInfo& p)
{
    const TFXValue def = p.Default();
    switch (p.Kind) {
    case TFXPropKind::Bool: return TFXValue(!std::get<bool>(def));
    case TFXPropKind::Int: {
        const std::int64_t d = std::get<std::int64_t>(def);
        return TFXValue(double(d) + 1 <= p.Max ? d + 1 : d - 1);
    }
    case TFXPropKind::Enum:
        return TFXValue(
            std::int64_t((std::get<std::int64_t>(def) + 1) % std::int64_t(p.EnumNames.size())));
    case TFXPropKind::Colour: return TFXValue(std::get<std::int64_t>(def) ^ 0x00A5C30F);
    case TFXPropKind::Float:
    case TFXPropKind::Double: {
        const double d = std::get<double>(def);
        return TFXValue(d + 0.375 <= p.Max ? d + 0.375 : d - 0.375);
    }
    case TFXPropKind::String: return TFXValue(std::get<std::string>(def) + "it's #1\n");
    default: return def;
    }
}

// Sets every writable value of `object`, its groups and one new item of each collection to a
// value other than its default.
void SetNonDefaults(TKTPersistent& object)
{
    object.GetClassInfo().ForEach([&](const TFXPropInfo& p) {
        if (p.Kind == TFXPropKind::Group)
            SetNonDefaults(*p.GetObject(object));
        else if (p.Kind == TFXPropKind::Collection)
            SetNonDefaults(dynamic_cast<TKTCollection&>(*p.GetObject(object)).Add());
        else if (p.HasValue() && p.IsWritable() && !(p.Flags & pfLegacy))
            p.Set(object, OtherValue(p));
    });
}

void ExpectSameValues(TKTPersistent& a, TKTPersistent& b, const std::string& prefix)
{
    a.GetClassInfo().ForEach([&](const TFXPropInfo& p) {
        const std::string path = prefix + std::string(p.Name);
        if (p.Kind == TFXPropKind::Group) {
            ExpectSameValues(*p.GetObject(a), *p.GetObject(b), path + ".");
        } else if (p.Kind == TFXPropKind::Collection) {
            auto& ca = dynamic_cast<TKTCollection&>(*p.GetObject(a));
            auto& cb = dynamic_cast<TKTCollection&>(*p.GetObject(b));
            ASSERT_EQ(ca.Count(), cb.Count()) << path;
            for (int i = 0; i < ca.Count(); ++i)
                ExpectSameValues(ca.GetItem(i), cb.GetItem(i),
                                 path + "[" + std::to_string(i) + "].");
        } else if (p.HasValue()) {
            EXPECT_TRUE(p.Get(a) == p.Get(b))
                << path << ": " << FXFormatPropertyValue(p, p.Get(a)) << " came back as "
                << FXFormatPropertyValue(p, p.Get(b));
        }
    });
}

TEST_P(PaletteTables, EveryValueSurvivesAStoredFormRoundTrip)
{
    TFXGraph graph;
    graph.SetName("Graph1");
    TKTComponent* component = GetParam()->Create(&graph);
    component->SetName("Component1");
    SetNonDefaults(*component);
    const std::string text = FXSaveGraphText(graph);
    const auto loaded = FXLoadGraphText(text, "saved.dfm");
    TKTComponent* back = loaded->FindComponent("Component1");
    ASSERT_NE(back, nullptr) << text;
    ASSERT_EQ(back->GetClassInfo().Name(), GetParam()->ClassName);
    ExpectSameValues(*component, *back, "");
    EXPECT_EQ(FXSaveGraphText(*loaded), text);
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
