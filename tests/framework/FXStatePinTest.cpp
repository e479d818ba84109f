// SPDX-License-Identifier: MIT
// State pins: values from a connected output, the owner's handler, stored links.
#include <gtest/gtest.h>

#include "filters/colour/FXImageAdjust.h"
#include "framework/FXGraph.h"
#include "framework/properties/FXPalette.h"
#include "storage/FXGraphLoader.h"
#include "storage/FXGraphSaver.h"

namespace framix {
namespace {

// A component with a float output and a bool state pin, standing for a control panel.
class TTestPanel : public TKTComponent {
public:
    explicit TTestPanel(TKTComponent* owner)
        : TKTComponent(owner), FLevel(*this, "LevelPin", Lock()),
          FSwitch(*this, "SwitchPin", Lock(),
                  [this](TPXBoolStatePin&, bool v) { Seen.push_back(v); })
    {
    }
    static const TFXClassInfo& ClassInfo()
    {
        static constexpr TFXPropInfo kProps[] = {
            FXPin<&TTestPanel::GetLevelPin>({.Name = "LevelPin", .Help = "a float output"}),
            FXPin<&TTestPanel::GetSwitchPin>({.Name = "SwitchPin", .Help = "a bool state"}),
        };
        static const TFXClassInfo info{"TTestPanel", &TKTComponent::ClassInfo(), kProps};
        return info;
    }
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }
    TPXFloatSourcePin& GetLevelPin() { return FLevel; }
    TPXBoolStatePin& GetSwitchPin() { return FSwitch; }
    std::vector<bool> Seen;

private:
    TPXFloatSourcePin FLevel;
    TPXBoolStatePin FSwitch;
};

const TFXPalette& Palette()
{
    static const TFXPalette palette = [] {
        TFXPalette p;
        p.Register<TTestPanel>("Tests");
        p.Register<TFXImageAdjust>("Tests");
        return p;
    }();
    return palette;
}

TEST(FXStatePin, LinksLoadSaveAndCarryValues)
{
    const std::string text = "object Graph1: TFXGraph\n"
                             "  object Panel1: TTestPanel\n"
                             "  end\n"
                             "  object Adjust1: TFXImageAdjust\n"
                             "    HuePin.SourcePin = Graph1.Panel1.LevelPin\n"
                             "  end\n"
                             "end\n";
    const auto graph = FXLoadGraphText(text, "pins.dfm", Palette());
    auto& panel = dynamic_cast<TTestPanel&>(*graph->FindComponent("Panel1"));
    auto& adjust = dynamic_cast<TFXImageAdjust&>(*graph->FindComponent("Adjust1"));
    EXPECT_EQ(adjust.GetHuePin().GetSourcePin(), &panel.GetLevelPin());
    EXPECT_TRUE(panel.GetLevelPin().SendValue(0.5f));
    EXPECT_EQ(adjust.GetHue(), 0.5f);

    const std::string saved = FXSaveGraphText(*graph);
    EXPECT_NE(saved.find("HuePin.SourcePin = Graph1.Panel1.LevelPin"), std::string::npos) << saved;
    EXPECT_EQ(FXSaveGraphText(*FXLoadGraphText(saved, "saved.dfm", Palette())), saved);
}

TEST(FXStatePin, OnlyPinsOfTheSameKindConnect)
{
    TFXGraph graph;
    auto* panel = new TTestPanel(&graph);
    auto* other = new TTestPanel(&graph);
    auto* adjust = new TFXImageAdjust(&graph);
    EXPECT_THROW(panel->GetSwitchPin().SetSourcePin(&other->GetLevelPin()), EFXError);
    EXPECT_THROW(adjust->GetBrightnessPin().SetSourcePin(&adjust->GetImageOutputPin()), EFXError);

    // A bool source drives the bool state pin; setting the value locally notifies nobody.
    TPXBoolSourcePin source(*other, "Out", other->Lock());
    panel->GetSwitchPin().SetSourcePin(&source);
    source.SendValue(true);
    panel->GetSwitchPin().SetValue(false);
    EXPECT_EQ(panel->Seen, std::vector<bool>{true});
    EXPECT_FALSE(panel->GetSwitchPin().GetValue());
}

} // namespace
} // namespace framix
