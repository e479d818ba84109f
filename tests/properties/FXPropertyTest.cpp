// SPDX-License-Identifier: MIT
// Published properties: paths, text values, bounds, enumerations, groups and clear errors.
#include <gtest/gtest.h>

#include <string>

#include "flow/FXChangeFormat.h"
#include "framework/FXCommonROIMatrixFilter.h"
#include "framework/FXError.h"
#include "framework/FXGenericGen.h"
#include "framework/FXGeometricTransfromFilter.h"
#include "framework/FXGraph.h"
#include "framework/properties/FXPropertyAccess.h"

namespace framix {
namespace {

std::string ErrorOf(const std::function<void()>& action)
{
    try {
        action();
    } catch (const EFXError& e) {
        return e.what();
    }
    return "no error";
}

bool Contains(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

TEST(FXProperties, SetAndGetByPathThroughGroups)
{
    TFXGraph graph;
    auto* gen = new TFXGenericGen(&graph);
    gen->SetName("Gen1");
    gen->SetPropertyByPath("ImageSize.Width", "640");
    gen->SetPropertyByPath("ImageSize.Height", "$1E0");
    gen->SetPropertyByPath("FrameRate", "29.97");
    gen->SetPropertyByPath("Format", "vfGray16");
    EXPECT_EQ(gen->GetImageSize().GetWidth(), 640);
    EXPECT_EQ(gen->GetImageSize().GetHeight(), 480);
    EXPECT_DOUBLE_EQ(gen->GetFrameRate(), 29.97);
    EXPECT_EQ(gen->GetFormat(), vfGray16);
    EXPECT_EQ(gen->GetPropertyByPath("Format"), "vfGray16");
    EXPECT_EQ(gen->GetPropertyByPath("FrameRate"), "29.97");
    EXPECT_EQ(gen->GetPropertyByPath("ImageSize.Height"), "480");
    gen->SetPropertyByPath("Format", "8");  // an ordinal works too
    EXPECT_EQ(gen->GetFormat(), vfGray8);
}

TEST(FXProperties, BadPathsAndValuesAreClearErrors)
{
    TFXGraph graph;
    graph.SetName("Graph1");
    auto* change = new TFXChangeFormat(&graph);
    change->SetName("Change1");
    const std::string unknown = ErrorOf([&] { change->SetPropertyByPath("Formt", "vfRGB24"); });
    EXPECT_TRUE(Contains(unknown, "Graph1.Change1")) << unknown;
    EXPECT_TRUE(Contains(unknown, "'Formt'")) << unknown;
    EXPECT_TRUE(Contains(unknown, "did you mean 'Format'")) << unknown;

    const std::string notGroup = ErrorOf([&] { change->SetPropertyByPath("Enabled.X", "1"); });
    EXPECT_TRUE(Contains(notGroup, "not a property group")) << notGroup;

    const std::string enumName = ErrorOf([&] { change->SetPropertyByPath("Format", "vfRGB42"); });
    EXPECT_TRUE(Contains(enumName, "no value 'vfRGB42'")) << enumName;
    EXPECT_TRUE(Contains(enumName, "did you mean 'vfRGB32'")) << enumName;

    const std::string ordinal = ErrorOf([&] { change->SetPropertyByPath("Format", "16"); });
    EXPECT_TRUE(Contains(ordinal, "16")) << ordinal;

    const std::string kind = ErrorOf([&] { change->SetPropertyByPath("Enabled", "maybe"); });
    EXPECT_TRUE(Contains(kind, "True or False")) << kind;

    const std::string range =
        ErrorOf([&] { change->SetPropertyByPath("Threading.QueueSize", "0"); });
    EXPECT_TRUE(Contains(range, "out of range (1 to 1024)")) << range;

    const std::string width = ErrorOf([&] {
        auto* gen = new TFXGenericGen(&graph);
        gen->SetPropertyByPath("ImageSize.Width", "70000");  // beyond 16 bits
    });
    EXPECT_TRUE(Contains(width, "out of range")) << width;

    EXPECT_EQ(change->GetFormat(), vfRGB24);  // nothing was changed by the failures
    EXPECT_TRUE(Contains(ErrorOf([&] { change->SetPropertyByPath("InputPin", "x"); }),
                         "no text value"));
}

TEST(FXProperties, CppSettersClampToTheDeclaredBounds)
{
    TFXGraph graph;
    auto* gen = new TFXGenericGen(&graph);
    gen->SetFrameRate(1e9);
    EXPECT_DOUBLE_EQ(gen->GetFrameRate(), TFXCommonGen::kFrameRate.Max);
    gen->SetFrameRate(-5);
    EXPECT_DOUBLE_EQ(gen->GetFrameRate(), TFXCommonGen::kFrameRate.Min);
    auto* change = new TFXChangeFormat(&graph);
    change->SetPropertyByPath("Threading.Enabled", "true");
    EXPECT_TRUE(change->GetThreading().GetEnabled());
    change->GetThreading().SetQueueSize(5000);
    EXPECT_EQ(change->GetThreading().GetQueueSize(), 1024);
}

// A matrix filter with nothing to do, to reach the groups of the matrix chain.
class TFXNullMatrixFilter : public TFXCommonROIMatrixFilterIntermidiate {
public:
    using TFXCommonROIMatrixFilterIntermidiate::TFXCommonROIMatrixFilterIntermidiate;
    int ChangedCalls = 0;

protected:
    void Changed(TKTPersistent&) override { ++ChangedCalls; }
    bool PerformFilter(const std::uint8_t*, int, std::uint8_t*, int, TFXImageSize, TFXImageSize,
                       TFXPoint, TFXVideoFormat) override
    {
        return true;
    }
};

TEST(FXProperties, GroupAssignCopiesValuesAndNotifiesOnce)
{
    TFXGraph graph;
    auto* a = new TFXNullMatrixFilter(&graph);
    auto* b = new TFXNullMatrixFilter(&graph);
    a->GetMaskSize().SetWidth(7);
    a->GetMaskSize().SetHeight(5);
    EXPECT_EQ(a->ChangedCalls, 2);
    b->SetMaskSize(a->GetMaskSize());
    EXPECT_EQ(b->GetMaskSize().GetWidth(), 7);
    EXPECT_EQ(b->GetMaskSize().GetHeight(), 5);
    EXPECT_EQ(b->ChangedCalls, 1);
    b->SetMaskSize(a->GetMaskSize());  // nothing changes, nothing is reported
    EXPECT_EQ(b->ChangedCalls, 1);
    b->GetMaskSize().SetWidth(0);  // a matrix mask keeps at least one cell
    EXPECT_EQ(b->GetMaskSize().GetWidth(), 1);
}

TEST(FXProperties, EnumerationNamesComeFromOneDeclaration)
{
    const TFXPropInfo* info =
        TFXGeometricTransfromFilter::ClassInfo().Find("InterpolationType");
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(info->EnumNames.size(), 5u);
    EXPECT_EQ(info->EnumNames[2], "itCubic");
    EXPECT_EQ(FXFormatPropertyValue(*info, info->Default()), "itCubic");
}

} // namespace
} // namespace framix
