// SPDX-License-Identifier: MIT
// Graphs to stored forms and back: every property kind, extra properties, pin links, errors.
#include <gtest/gtest.h>

#include <string>

#include "framework/FXPins.h"
#include "framework/KTCollection.h"
#include "framework/properties/FXPropertyAccess.h"
#include "storage/FXFormFile.h"
#include "storage/FXFormFiler.h"
#include "storage/FXGraphLoader.h"
#include "storage/FXGraphSaver.h"

namespace framix {
namespace {

FX_ENUM(TTestMode, tmFirst, tmSecond, tmThird)

// A published value held in a plain field, with the getter and setter the tables call.
#define FX_TEST_VALUE(Type, Name, Initial)                                                         \
    Type F##Name = Initial;                                                                        \
    Type Get##Name() const                                                                         \
    {                                                                                              \
        return F##Name;                                                                            \
    }                                                                                              \
    void Set##Name(Type v)                                                                         \
    {                                                                                              \
        F##Name = std::move(v);                                                                    \
    }

// A collection item with two values.
class TTestItem : public TKTCollectionItem {
public:
    static constexpr TFXStringProp kLabel{.Name = "Label", .Help = "item label"};
    static constexpr TFXFloatProp kWeight{.Name = "Weight", .Help = "item weight", .Default = 1.0};

    explicit TTestItem(TKTCollection& c) : TKTCollectionItem(c) {}
    static const TFXClassInfo& ClassInfo()
    {
        static constexpr TFXPropInfo kProps[] = {
            FXProp<&TTestItem::GetLabel, &TTestItem::SetLabel>(kLabel),
            FXProp<&TTestItem::GetWeight, &TTestItem::SetWeight>(kWeight),
        };
        static const TFXClassInfo info{"TTestItem", &TKTCollectionItem::ClassInfo(), kProps};
        return info;
    }
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }
    FX_TEST_VALUE(std::string, Label, "")
    FX_TEST_VALUE(float, Weight, 1.0f)
};

// A group with a value and an extra property of nested lists, as a colour table stores itself.
class TTestGroup : public TKTPersistentNotify {
public:
    static constexpr TFXIntProp kDepth{
        .Name = "Depth", .Help = "depth", .Default = 2, .Min = 0, .Max = 100};

    TTestGroup(TKTPersistent* owner, IKTLock& lock) : TKTPersistentNotify(owner, lock, nullptr) {}
    static const TFXClassInfo& ClassInfo()
    {
        static constexpr TFXPropInfo kProps[] = {
            FXProp<&TTestGroup::GetDepth, &TTestGroup::SetDepth>(kDepth),
        };
        static const TFXClassInfo info{"TTestGroup", &TKTPersistentNotify::ClassInfo(), kProps};
        return info;
    }
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }
    FX_TEST_VALUE(int, Depth, 2)

    void DefineProperties(TFXFiler& filer) override
    {
        filer.DefineProperty(
            "Pairs",
            [this](TFXReader& r) {
                Pairs.clear();
                r.ReadListBegin();
                while (!r.EndOfList()) {
                    r.ReadListBegin();
                    const auto a = r.ReadInteger();
                    const auto b = r.ReadInteger();
                    r.ReadListEnd();
                    Pairs.emplace_back(a, b);
                }
                r.ReadListEnd();
            },
            [this](TFXWriter& w) {
                w.WriteListBegin();
                for (auto [a, b] : Pairs) {
                    w.WriteListBegin();
                    w.WriteInteger(a);
                    w.WriteInteger(b);
                    w.WriteListEnd();
                }
                w.WriteListEnd();
            },
            !Pairs.empty());
    }

    std::vector<std::pair<std::int64_t, std::int64_t>> Pairs;
};

int GLoadedCalls = 0;

// A component publishing every kind of property, pins of both directions and a pin list, and
// three extra properties: a counted list of floats, a binary block and a legacy value that is
// read but never written.
class TTestKitchen : public TKTComponent {
public:
    static constexpr TFXBoolProp kFlag{.Name = "Flag", .Help = "a switch"};
    static constexpr TFXIntProp kCount{
        .Name = "Count", .Help = "a count", .Default = 3, .Min = -5, .Max = 1000};
    static constexpr TFXFloatProp kGain{
        .Name = "Gain", .Help = "gain", .Default = 1.0, .Min = 0, .Max = 10};
    static constexpr TFXFloatProp kRatio{.Name = "Ratio", .Help = "ratio", .Default = 0.5};
    static constexpr TFXEnumProp<TTestMode> kMode{
        .Name = "Mode", .Help = "mode", .Default = tmFirst};
    static constexpr TFXColourProp kTint{.Name = "Tint", .Help = "colour", .Default = 0x00FFFFFF};
    static constexpr TFXStringProp kCaption{.Name = "Caption", .Help = "text", .Default = "none"};
    static constexpr TFXIntProp kAlways{
        .Name = "Always", .Help = "stored even when default", .Flags = pfStored | pfNoDefault};
    static constexpr TFXIntProp kOld{
        .Name = "OldCount", .Help = "older name of Count", .Default = 3, .Flags = pfLegacy};
    static constexpr TFXIntProp kSerial{
        .Name = "Serial", .Help = "read-only", .Flags = pfStored | pfReadOnly};

    explicit TTestKitchen(TKTComponent* owner)
        : TKTComponent(owner), FSize(this, Lock()),
          FItems(this, Lock(), nullptr,
                 [](TKTCollection& c) { return std::make_unique<TTestItem>(c); }),
          FInput(*this, "InputPin", Lock(), nullptr), FOutput(*this, "OutputPin", Lock(), nullptr),
          FInputs(*this, "InputPins", [this](std::string_view name) {
              return std::make_unique<TFXPXImageSinkPin>(*this, name, Lock(), nullptr);
          })
    {
        FInputs.SetCount(3);
    }
    static const TFXClassInfo& ClassInfo()
    {
        using T = TTestKitchen;
        static constexpr TFXPropInfo kProps[] = {
            FXProp<&T::GetFlag, &T::SetFlag>(kFlag),
            FXProp<&T::GetCount, &T::SetCount>(kCount),
            FXProp<&T::GetGain, &T::SetGain>(kGain),
            FXProp<&T::GetRatio, &T::SetRatio>(kRatio),
            FXProp<&T::GetMode, &T::SetMode>(kMode),
            FXProp<&T::GetTint, &T::SetTint>(kTint),
            FXProp<&T::GetCaption, &T::SetCaption>(kCaption),
            FXProp<&T::GetAlways, &T::SetAlways>(kAlways),
            FXProp<&T::GetCount, &T::SetCount>(kOld),
            FXProp<&T::GetSerial, nullptr>(kSerial),
            FXGroup<&T::GetSize>({.Name = "Size", .Help = "a group"}),
            FXCollection<&T::GetItems>({.Name = "Items", .Help = "a collection"}),
            FXPin<&T::GetInput>({.Name = "InputPin", .Help = "in"}),
            FXPin<&T::GetOutput>({.Name = "OutputPin", .Help = "out"}),
            FXPinList<&T::GetInputs>({.Name = "InputPins", .Help = "more ins"}),
            FXEvent({.Name = "OnThing", .Help = "an event"}),
        };
        static const TFXClassInfo info{"TTestKitchen", &TKTComponent::ClassInfo(), kProps};
        return info;
    }
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    FX_TEST_VALUE(bool, Flag, false)
    FX_TEST_VALUE(int, Count, 3)
    FX_TEST_VALUE(float, Gain, 1.0f)
    FX_TEST_VALUE(double, Ratio, 0.5)
    FX_TEST_VALUE(TTestMode, Mode, tmFirst)
    FX_TEST_VALUE(std::uint32_t, Tint, 0x00FFFFFF)
    FX_TEST_VALUE(std::string, Caption, "none")
    FX_TEST_VALUE(int, Always, 0)
    int GetSerial() const { return 7; }
    TTestGroup& GetSize() { return FSize; }
    TKTCollection& GetItems() { return FItems; }
    TFXPXImageSinkPin& GetInput() { return FInput; }
    TFXPXImageSourcePin& GetOutput() { return FOutput; }
    TPXPinListBase& GetInputs() { return FInputs; }

    void DefineProperties(TFXFiler& filer) override
    {
        filer.DefineProperty(
            "Matrix",
            [this](TFXReader& r) {
                r.ReadListBegin();
                const std::int64_t n = r.ReadInteger();
                Matrix.clear();
                for (std::int64_t i = 0; i < n; ++i)
                    Matrix.push_back(float(r.ReadFloat()));
                r.ReadListEnd();
            },
            [this](TFXWriter& w) {
                w.WriteListBegin();
                w.WriteInteger(std::int64_t(Matrix.size()));
                for (float v : Matrix)
                    w.WriteFloat(v);
                w.WriteListEnd();
            },
            !Matrix.empty());
        filer.DefineProperty(
            "Blob", [this](TFXReader& r) { Blob = r.ReadBinary(); },
            [this](TFXWriter& w) { w.WriteBinary(Blob); }, !Blob.empty());
        filer.DefineProperty(
            "Params", [this](TFXReader& r) { FRatio = r.ReadFloat(); }, nullptr, false);
    }

    void Loaded() override
    {
        ++GLoadedCalls;
        InputWiredWhenLoaded = FInput.IsConnected();
    }

    std::vector<float> Matrix;
    std::vector<std::uint8_t> Blob;
    bool InputWiredWhenLoaded = false;

private:
    TTestGroup FSize;
    TKTCollection FItems;
    TFXPXImageSinkPin FInput;
    TFXPXImageSourcePin FOutput;
    TPXPinListBase FInputs;
};

const TFXPalette& TestPalette()
{
    static const TFXPalette palette = [] {
        TFXPalette p;
        p.Register<TTestKitchen>("Tests");
        return p;
    }();
    return palette;
}

std::unique_ptr<TFXGraph> Load(const std::string& text)
{
    return FXLoadGraphText(text, "graph.dfm", TestPalette());
}

TTestKitchen& Kitchen(TFXGraph& graph, const char* name)
{
    return *dynamic_cast<TTestKitchen*>(graph.FindComponent(name));
}

// A graph of three components that uses every kind of value, every extra property and pins
// of both directions, a pin list included.
std::unique_ptr<TFXGraph> EveryKindGraph()
{
    auto graph = std::make_unique<TFXGraph>();
    graph->SetName("Graph1");
    auto* a = new TTestKitchen(graph.get());
    a->SetName("A");
    auto* b = new TTestKitchen(graph.get());
    b->SetName("B");
    auto* c = new TTestKitchen(graph.get()); // unnamed: the saver names it
    a->SetFlag(true);
    a->SetCount(-5);
    a->SetGain(0.1f);
    a->SetRatio(1e-300);
    a->SetMode(tmThird);
    a->SetTint(0xFF102030);
    a->SetCaption("it's\r\n" + std::string(70, 'x') + "\xc3\xa4");
    a->SetAlways(0);
    a->GetSize().SetDepth(100);
    a->GetSize().Pairs = {{1, -2}, {3, 4}};
    static_cast<TTestItem&>(a->GetItems().Add()).SetLabel("one");
    static_cast<TTestItem&>(a->GetItems().Add()).SetWeight(2.5f);
    a->Matrix = {0.5f, -1.25f, 3.0f};
    a->Blob = {0, 1, 0xFE, 0xFF};
    b->SetCaption("");
    b->GetInput().SetSourcePin(&a->GetOutput());
    static_cast<TPXSinkPin&>(c->GetInputs().GetPin(1)).SetSourcePin(&b->GetOutput());
    static_cast<TPXSinkPin&>(c->GetInputs().GetPin(0)).SetSourcePin(&a->GetOutput());
    return graph;
}

TEST(FXGraphForm, SaveLoadSaveGivesTheSameTextForEveryPropertyKind)
{
    const auto graph = EveryKindGraph();
    const std::string text = FXSaveGraphText(*graph);
    const auto loaded = Load(text);
    EXPECT_EQ(FXSaveGraphText(*loaded), text);

    TTestKitchen& a = Kitchen(*loaded, "A");
    EXPECT_TRUE(a.GetFlag());
    EXPECT_EQ(a.GetCount(), -5);
    EXPECT_EQ(a.GetGain(), 0.1f);
    EXPECT_EQ(a.GetRatio(), 1e-300);
    EXPECT_EQ(a.GetMode(), tmThird);
    EXPECT_EQ(a.GetTint(), 0xFF102030u);
    EXPECT_EQ(a.GetCaption(), Kitchen(*graph, "A").GetCaption());
    EXPECT_EQ(a.GetSize().GetDepth(), 100);
    EXPECT_EQ(a.GetSize().Pairs, Kitchen(*graph, "A").GetSize().Pairs);
    ASSERT_EQ(a.GetItems().Count(), 2);
    EXPECT_EQ(static_cast<TTestItem&>(a.GetItems().GetItem(0)).GetLabel(), "one");
    EXPECT_EQ(static_cast<TTestItem&>(a.GetItems().GetItem(1)).GetWeight(), 2.5f);
    EXPECT_EQ(a.Matrix, Kitchen(*graph, "A").Matrix);
    EXPECT_EQ(a.Blob, Kitchen(*graph, "A").Blob);
    EXPECT_EQ(Kitchen(*loaded, "B").GetCaption(), "");

    auto& c = Kitchen(*loaded, "TestKitchen1");
    EXPECT_EQ(static_cast<TPXSinkPin&>(c.GetInputs().GetPin(0)).GetSourcePin(), &a.GetOutput());
    EXPECT_EQ(static_cast<TPXSinkPin&>(c.GetInputs().GetPin(1)).GetSourcePin(),
              &Kitchen(*loaded, "B").GetOutput());
    EXPECT_FALSE(c.GetInputs().GetPin(2).IsConnected());
    EXPECT_EQ(Kitchen(*loaded, "B").GetInput().GetSourcePin(), &a.GetOutput());
}

TEST(FXGraphForm, SavedTextFollowsTheNormalForm)
{
    const std::string text = FXSaveGraphText(*EveryKindGraph());
    auto has = [&](const std::string& part) { return text.find(part) != std::string::npos; };
    // Defaults are left out, except where the table says always; legacy and read-only never.
    EXPECT_TRUE(has("  object B: TTestKitchen\n    Caption = ''\n    Always = 0\n"));
    EXPECT_FALSE(has("OldCount")) << text;
    EXPECT_FALSE(has("Serial")) << text;
    EXPECT_FALSE(has("Params")) << text;
    // Single-precision values use the digits of the float, groups are dotted paths, and extra
    // properties follow their own object's values.
    EXPECT_TRUE(has("Gain = 0.100000000000000000")) << text;
    EXPECT_TRUE(has("Size.Depth = 100\n    Size.Pairs = (\n      (\n        1\n        -2)"))
        << text;
    EXPECT_TRUE(has("Items = <\n      item\n        Label = 'one'\n      end")) << text;
    // Links at both ends; unused pins of a list are left off its end.
    EXPECT_TRUE(has("OutputPin.SinkPins = (\n      Graph1.B.InputPin\n      "
                    "Graph1.TestKitchen1.InputPins._Pin0)"))
        << text;
    EXPECT_TRUE(has("InputPin.SourcePin = Graph1.A.OutputPin")) << text;
    EXPECT_TRUE(has("InputPins.Pins = (\n      Graph1.A.OutputPin\n      Graph1.B.OutputPin)"))
        << text;
}

TEST(FXGraphForm, LinksWrittenAtEitherEndAreWiredAfterTheWholeFormIsRead)
{
    GLoadedCalls = 0;
    const auto graph = Load(R"(object g: TFXGraph
  object Sink: TTestKitchen
    inputpin.sourcepin = G.Source.OUTPUTPIN
    InputPins.Pins = (nil Source.OutputPin)
  end
  object Source: TTestKitchen
    OutputPin.SinkPins = Other.InputPin
  end
  object Other: TTestKitchen
    Params = 4
    Count = $10
    Mode = tmSecond
    Ratio = 3
  end
end
)");
    TTestKitchen& source = Kitchen(*graph, "Source");
    EXPECT_EQ(Kitchen(*graph, "Sink").GetInput().GetSourcePin(), &source.GetOutput());
    EXPECT_FALSE(Kitchen(*graph, "Sink").GetInputs().GetPin(0).IsConnected());
    EXPECT_TRUE(Kitchen(*graph, "Sink").GetInputs().GetPin(1).IsConnected());
    EXPECT_EQ(Kitchen(*graph, "Other").GetInput().GetSourcePin(), &source.GetOutput());
    EXPECT_EQ(Kitchen(*graph, "Other").GetCount(), 16);
    EXPECT_EQ(Kitchen(*graph, "Other").GetMode(), tmSecond);
    EXPECT_EQ(Kitchen(*graph, "Other").GetRatio(), 3.0); // the later assignment wins
    // Loaded runs once per component, after the links exist.
    EXPECT_EQ(GLoadedCalls, 3);
    EXPECT_TRUE(Kitchen(*graph, "Sink").InputWiredWhenLoaded);
}

TEST(FXGraphForm, LegacyValuesAreReadButNeverWritten)
{
    const auto graph = Load("object G: TFXGraph\n  object K: TTestKitchen\n    OldCount = 9\n"
                            "    Params = 0.25\n  end\nend\n");
    EXPECT_EQ(Kitchen(*graph, "K").GetCount(), 9);
    EXPECT_EQ(Kitchen(*graph, "K").GetRatio(), 0.25);
    EXPECT_EQ(FXSaveGraphText(*graph), "object G: TFXGraph\n  object K: TTestKitchen\n"
                                       "    Count = 9\n    Ratio = 0.250000000000000000\n"
                                       "    Always = 0\n  end\nend\n");
}

struct TBadForm {
    const char* Name;
    const char* Body; // the objects inside `object G: TFXGraph ... end`
    int Line;         // of the text at fault, in the whole form
    int Column;
    const char* Message;
};

class FXGraphFormErrors : public testing::TestWithParam<TBadForm> {};

TEST_P(FXGraphFormErrors, NameTheFileLineColumnAndTheProblem)
{
    const TBadForm& c = GetParam();
    GLoadedCalls = 0;
    const std::string text = std::string("object G: TFXGraph\n") + c.Body + "end\n";
    try {
        Load(text);
        FAIL() << "loaded:\n" << text;
    } catch (const EFXFormError& e) {
        EXPECT_EQ(e.FileName(), "graph.dfm");
        EXPECT_EQ(e.Line(), c.Line) << e.what();
        EXPECT_EQ(e.Column(), c.Column) << e.what();
        EXPECT_NE(std::string(e.what()).find(c.Message), std::string::npos) << e.what();
    }
    EXPECT_EQ(GLoadedCalls, 0) << "nothing may be started when a form fails";
}

const TBadForm kBadForms[] = {
    {"SyntaxError", "  object K: TTestKitchen\n    Count 3\n  end\n", 3, 11, "expected '='"},
    {"UnknownClass", "  object K: TTestKitchn\n  end\n", 2, 3,
     "Unknown component class 'TTestKitchn' (did you mean 'TTestKitchen'?)"},
    {"UnknownProperty", "  object K: TTestKitchen\n    Size.Dpth = 3\n  end\n", 3, 5,
     "G.K: Unknown property 'Size.Dpth': TTestGroup has no property 'Dpth' (did you mean "
     "'Depth'?)"},
    {"UnknownExtraSuggested", "  object K: TTestKitchen\n    Matrx = ()\n  end\n", 3, 5,
     "(did you mean 'Matrix'?)"},
    {"StringForInteger", "  object K: TTestKitchen\n    Count = '3'\n  end\n", 3, 13,
     "G.K: property 'Count' expects an integer, found string '3'"},
    {"IntegerOutOfRange", "  object K: TTestKitchen\n    Size.Depth = 101\n  end\n", 3, 18,
     "out of range (0 to 100)"},
    {"UnknownEnumName", "  object K: TTestKitchen\n    Mode = tmSecnd\n  end\n", 3, 12,
     "(did you mean 'tmSecond'?)"},
    {"SetForEnumeration", "  object K: TTestKitchen\n    Mode = [tmFirst]\n  end\n", 3, 12,
     "expects one of tmFirst, tmSecond, tmThird, found set"},
    {"ReadOnly", "  object K: TTestKitchen\n    Serial = 3\n  end\n", 3, 14, "read-only"},
    {"GroupAssignedWhole", "  object K: TTestKitchen\n    Size = 3\n  end\n", 3, 5,
     "is a property group"},
    {"EventStored", "  object K: TTestKitchen\n    OnThing = Foo\n  end\n", 3, 15, "is an event"},
    {"DuplicateName", "  object K: TTestKitchen\n  end\n  object k: TTestKitchen\n  end\n", 4, 3,
     "already has a component named 'k'"},
    {"ExtraWithWrongItem", "  object K: TTestKitchen\n    Matrix = (2 1.5 'x')\n  end\n", 3, 21,
     "G.K: Matrix: expected a number, found string 'x'"},
    {"CollectionItemValue",
     "  object K: TTestKitchen\n    Items = <\n      item\n        Weight = "
     "'heavy'\n      end>\n  end\n",
     5, 18, "G.K: property 'Weight' expects a number"},
    {"MissingComponent",
     "  object K: TTestKitchen\n    InputPin.SourcePin = G.Nope.OutputPin\n"
     "  end\n",
     3, 26, "G.K.InputPin: pin 'G.Nope.OutputPin': there is no component 'Nope' in G"},
    {"MissingPin",
     "  object K: TTestKitchen\n  end\n  object L: TTestKitchen\n"
     "    InputPin.SourcePin = G.K.OutputPn\n  end\n",
     5, 26, "G.K has no pin 'OutputPn' (did you mean 'OutputPin'?)"},
    {"SinkNamedAsSource",
     "  object K: TTestKitchen\n    InputPin.SourcePin = G.L.InputPin\n"
     "  end\n  object L: TTestKitchen\n  end\n",
     3, 26, "G.L.InputPin is an input; a source must be an output pin"},
    {"TwoSourcesForOneSink",
     "  object K: TTestKitchen\n    OutputPin.SinkPins = (G.M.InputPin)\n"
     "  end\n  object L: TTestKitchen\n    OutputPin.SinkPins = (G.M.InputPin)\n"
     "  end\n  object M: TTestKitchen\n  end\n",
     6, 27, "G.M.InputPin is fed by two sources: G.K.OutputPin (line 3) and G.L.OutputPin"},
    {"Cycle",
     "  object A: TTestKitchen\n    InputPin.SourcePin = G.C.OutputPin\n  end\n"
     "  object B: TTestKitchen\n    InputPin.SourcePin = G.A.OutputPin\n  end\n"
     "  object C: TTestKitchen\n    InputPin.SourcePin = G.B.OutputPin\n  end\n",
     3, 26, "the pin links form a cycle: G.A -> G.B -> G.C -> G.A"},
    {"TooManySourcesForAList",
     "  object A: TTestKitchen\n    InputPins.Pins = (nil nil nil "
     "G.A.OutputPin)\n  end\n",
     3, 22, "has 3 pins, the form names 4 sources"},
};

INSTANTIATE_TEST_SUITE_P(BadForms, FXGraphFormErrors, testing::ValuesIn(kBadForms),
                         [](const auto& info) { return std::string(info.param.Name); });

TEST(FXGraphForm, AnExtraPropertyWriterMustWriteExactlyOneFiniteValue)
{
    TFXFormValueWriter two;
    two.WriteInteger(1);
    two.WriteInteger(2);
    EXPECT_THROW(two.Take("X"), EFXError);
    TFXFormValueWriter open;
    open.WriteListBegin();
    EXPECT_THROW(open.Take("X"), EFXError);
    EXPECT_THROW(TFXFormValueWriter().WriteFloat(1.0 / 0.0), EFXError);
}

TEST(FXGraphForm, AnyRootClassBecomesAGraphAndNamesAreCaseInsensitive)
{
    const auto graph = FXLoadGraphText(
        "object Form1: TForm1\n  object C1: TFXChangeFormat\n    format = VFGRAY8\n  end\nend\n");
    EXPECT_EQ(graph->GetName(), "Form1");
    EXPECT_EQ(graph->FindComponent("C1")->GetPropertyByPath("Format"), "vfGray8");
    EXPECT_EQ(FXSaveGraphText(*graph),
              "object Form1: TFXGraph\n  object C1: TFXChangeFormat\n    Format = vfGray8\n"
              "  end\nend\n");

    // Without a root name, references start at the root's components.
    const std::string unnamed =
        "object TFXGraph\n  object A: TFXChangeFormat\n"
        "    OutputPin.SinkPins = (\n      B.InputPin)\n  end\n"
        "  object B: TFXChangeFormat\n    InputPin.SourcePin = A.OutputPin\n"
        "  end\nend\n";
    EXPECT_EQ(FXSaveGraphText(*FXLoadGraphText(unnamed)), unnamed);
}

} // namespace
} // namespace framix
