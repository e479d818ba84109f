// SPDX-License-Identifier: MIT
// Colour lookup: built-in tables of empty channels, grey channel 0, sorting, Assign, storage.
#include <gtest/gtest.h>

#include "filters/colour/FXColorLookup.h"
#include "storage/FXGraphLoader.h"
#include "storage/FXGraphSaver.h"
#include "tests/filters/colour/ColourTestSupport.h"

namespace framix {
namespace {

using test::FXBytesOf;
using test::FXFrameOf;
using test::TBytes;
using test::TColourRig;

// Red (channel 2) through (0, 255), (256, 0); the other channels without points.
void InvertRed(TFXLookupTables& tables, TFXColorLookupMode mode)
{
    tables.SetLookupMode(mode);
    tables.GetColorChannel(2).Add(0, 255);
    tables.GetColorChannel(2).Add(256, 0);
}

TEST(FXColorLookup, WithoutPointsTheFramePassesUntouched)
{
    TColourRig<TFXColorLookup> rig;
    const FXImageBufferPtr frame = FXFrameOf(1, 1, vfRGB24, {1, 2, 3});
    EXPECT_EQ(rig.Run(frame)->GetReadPointer(), frame->GetReadPointer());
}

TEST(FXColorLookup, LinearRedCurveInvertsRedAndKeepsTheOtherChannels)
{
    TColourRig<TFXColorLookup> rig;
    InvertRed(rig.Filter.GetLookupTables(), clmLinear);
    // Red x -> 255 - x * 255 / 256, rounded: 0 -> 255, 128 -> 127.5 -> 128, 255 -> 0.75 -> 1.
    EXPECT_EQ(rig.Run(3, 1, vfRGB24, {0, 0, 0, 128, 128, 128, 255, 255, 255}),
              (TBytes{0, 0, 255, 128, 128, 128, 255, 255, 1}));
    // vfRGB32: alpha has no points, so it passes through the built-in table as well.
    EXPECT_EQ(rig.Run(1, 1, vfRGB32, {10, 20, 0, 40}), (TBytes{10, 20, 255, 40}));
}

// Intentional: a channel without points uses (0, 0), (256, 256), which in step mode maps every
// byte to 0.
TEST(FXColorLookup, StepModeMapsUntouchedChannelsToZero_Intentional)
{
    TColourRig<TFXColorLookup> rig;
    InvertRed(rig.Filter.GetLookupTables(), clmStep);
    EXPECT_EQ(rig.Run(2, 1, vfRGB32, {10, 20, 30, 40, 200, 100, 255, 9}),
              (TBytes{0, 0, 255, 0, 0, 0, 255, 0}));
}

TEST(FXColorLookup, GreyFramesUseChannelZeroAlone)
{
    TColourRig<TFXColorLookup> rig;
    TFXLookupTables& tables = rig.Filter.GetLookupTables();
    tables.SetLookupMode(clmLinear);
    // Entered out of order: the frame sorts them.
    tables.GetColorChannel(0).Add(256, 256);
    tables.GetColorChannel(0).Add(0, 100);
    tables.GetColorChannel(2).Add(0, 0); // ignored by grey frames
    EXPECT_EQ(rig.Run(3, 1, vfGray8, {0, 128, 255}), (TBytes{100, 178, 255}));

    // 16-bit samples, linear between the points, saturated at 65535.
    tables.GetColorChannel(0).Clear();
    tables.GetColorChannel(0).Add(0, 0);
    tables.GetColorChannel(0).Add(1000, 70000);
    EXPECT_EQ(rig.Run(3, 1, vfGray16, {100, 0, 0xE8, 0x03, 0xFF, 0xFF}), // 100, 1000, 65535
              (TBytes{0x58, 0x1B, 0xE8, 0x03, 0xFF, 0xFF}));             // 7000, 1000, 65535
}

TEST(FXColorLookup, GreyFramesWithAnEmptyChannelZeroStayUnchanged)
{
    TColourRig<TFXColorLookup> rig;
    rig.Filter.GetLookupTables().GetColorChannel(1).Add(0, 9);
    rig.Filter.GetLookupTables().GetColorChannel(1).Add(256, 9);
    EXPECT_EQ(rig.Run(2, 1, vfGray8, {7, 77}), (TBytes{7, 77}));
}

// Intentional: the single-channel cubic call pairs the levels as entered with the values sorted
// by level, so points entered in descending order map as if the curve were reversed.
TEST(FXColorLookup, CubicGreyPairsEnteredLevelsWithSortedValues_Intentional)
{
    TColourRig<TFXColorLookup> ascending, descending;
    for (auto [level, value] : {std::pair{0, 0}, {100, 50}, {200, 220}, {256, 256}})
        ascending.Filter.GetLookupTables().GetColorChannel(0).Add(level, value);
    for (auto [level, value] : {std::pair{256, 256}, {200, 220}, {100, 50}, {0, 0}})
        descending.Filter.GetLookupTables().GetColorChannel(0).Add(level, value);
    TBytes ramp(256);
    for (int i = 0; i < 256; ++i)
        ramp[std::size_t(i)] = std::uint8_t(i);
    const TBytes up = ascending.Run(256, 1, vfGray8, ramp);
    const TBytes down = descending.Run(256, 1, vfGray8, ramp);
    EXPECT_EQ(up[100], 50);
    EXPECT_EQ(up[200], 220);
    EXPECT_NE(up, down);
    // Levels 256, 200, 100, 0 carry values 0, 50, 220, 256: no interval ascends, every sample
    // keeps its value.
    EXPECT_EQ(down, ramp);
}

TEST(FXColorLookup, TablesSortBySelectionAndBatchChanges)
{
    TColourRig<TFXColorLookup> rig;
    TFXLookupTable& table = rig.Filter.GetLookupTables().GetColorChannel(1);
    int changes = 0;
    rig.Filter.GetLookupTables().OnChange = [&](TFXLookupTable& t) {
        EXPECT_EQ(&t, &table);
        ++changes;
    };
    table.BeginUpdate();
    table.Add(50, 1);
    table.Add(10, 2);
    table.Add(50, 3);
    table.Add(10, 4);
    table.EndUpdate();
    EXPECT_EQ(changes, 1);
    table.Sort();
    EXPECT_EQ(table.GetSortedLevels(), (std::vector<std::int32_t>{10, 10, 50, 50}));
    // Selection by swapping: the first smallest level moves forward, so equal levels may change
    // order (the 50s end as 3, 1).
    EXPECT_EQ(table.GetSortedValues(), (std::vector<std::int32_t>{2, 4, 3, 1}));
    table.SetCount(6); // no change signalled, new points (0, 0)
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(table.GetLevel(5), 0);
    EXPECT_THROW(table.GetValue(6), EFXError);
}

// Intentional: a copied table takes the values only.
TEST(FXColorLookup, AssignCopiesValuesWithoutLevels_Intentional)
{
    TColourRig<TFXColorLookup> a, b;
    InvertRed(a.Filter.GetLookupTables(), clmCubic);
    b.Filter.SetLookupTables(a.Filter.GetLookupTables());
    TFXLookupTable& copy = b.Filter.GetLookupTables().GetColorChannel(2);
    EXPECT_EQ(copy.GetCount(), 2);
    EXPECT_EQ(copy.GetValue(0), 255);
    EXPECT_THROW(copy.GetLevel(0), EFXError); // no levels yet
    // Levels read as 0: no interval, red passes unchanged (no read beyond the arrays).
    EXPECT_EQ(b.Run(1, 1, vfRGB24, {1, 2, 3}), (TBytes{1, 2, 3}));
    copy.SetLevel(0, 0);
    copy.SetLevel(1, 256);
    EXPECT_EQ(b.Run(1, 1, vfRGB24, {1, 2, 0}), (TBytes{1, 2, 255}));
}

TEST(FXColorLookup, ColorChannelsSurviveSaveAndLoad)
{
    const std::string text = "object Graph1: TFXGraph\n"
                             "  object Lookup1: TFXColorLookup\n"
                             "    LookupTables.LookupMode = clmStep\n"
                             "    LookupTables.ColorChannels = ((5 6 1 2) () (-3 400) ())\n"
                             "  end\n"
                             "end\n";
    const auto graph = FXLoadGraphText(text, "lookup.dfm");
    auto& lookup = dynamic_cast<TFXColorLookup&>(*graph->FindComponent("Lookup1"));
    TFXLookupTables& tables = lookup.GetLookupTables();
    EXPECT_EQ(tables.GetLookupMode(), clmStep);
    EXPECT_EQ(tables.GetColorChannel(0).GetPoints(),
              (std::vector<std::pair<std::int32_t, std::int32_t>>{{5, 6}, {1, 2}}));
    EXPECT_EQ(tables.GetColorChannel(1).GetCount(), 0);
    EXPECT_EQ(tables.GetColorChannel(2).GetPoints(),
              (std::vector<std::pair<std::int32_t, std::int32_t>>{{-3, 400}}));
    EXPECT_EQ(tables.GetColorChannel(3).GetCount(), 0);

    const std::string saved = FXSaveGraphText(*graph);
    const auto again = FXLoadGraphText(saved, "saved.dfm");
    EXPECT_EQ(FXSaveGraphText(*again), saved);
    auto& copy = dynamic_cast<TFXColorLookup&>(*again->FindComponent("Lookup1"));
    EXPECT_EQ(copy.GetLookupTables().GetColorChannel(0).GetPoints(),
              tables.GetColorChannel(0).GetPoints());
    EXPECT_EQ(copy.GetLookupTables().GetColorChannel(2).GetPoints(),
              tables.GetColorChannel(2).GetPoints());

    EXPECT_THROW(FXLoadGraphText("object G: TFXGraph\n object L: TFXColorLookup\n"
                                 "  LookupTables.ColorChannels = ((1 2 3))\n end\nend\n",
                                 "bad.dfm"),
                 EFXError);
}

} // namespace
} // namespace framix
