// SPDX-License-Identifier: MIT
// Dispatcher modules bind their variables by name once, report what is missing, and the
// registry they bind from is complete.
#include "framework/FXError.h"
#include "framework/primitives/FXPrimitiveRegistry.h"
#include "framework/primitives/dispatch/FXPrimitiveLayer.h"
#include "framework/primitives/dispatch/FXRealIpp.h"
#include "framework/primitives/dispatch/Fxbasicdispatcher.h"
#include "framework/primitives/dispatch/Fxdispatcher.h"
#include "framework/primitives/dispatch/Ktippiloader.h"
#include "framework/primitives/dispatch/Ktippsloader.h"
#include "framework/primitives/dispatch/Qnbasicdispatcher.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace framix::test {
namespace {

// A module of two variables whose loader counts its calls.
int gLookups = 0;
void* gBoundFirst = nullptr;
void* gBoundSecond = nullptr;
void* CountingLoader(const wchar_t* name)
{
    ++gLookups;
    return GetIPPIProcAddress(name);
}
const TFXBinding kTwo[] = {
    {L"ippiFilterBox_8u_C1R", &CountingLoader, [](void* a) { gBoundFirst = a; }},
    {L"ippiFilterMedian_16u_C1R", &CountingLoader, [](void* a) { gBoundSecond = a; }},
};

TEST(Dispatcher, StartingTwiceBindsOnceAndStopKeepsTheVariables)
{
    TFXDispatcherModule module("TestModule", kTwo);
    gLookups = 0;
    module.Start();
    EXPECT_EQ(gLookups, 2) << "one lookup per variable";
    ASSERT_NE(gBoundFirst, nullptr);
    module.Start();
    EXPECT_EQ(gLookups, 2) << "a later start binds nothing";
    EXPECT_EQ(module.BindCount(), 1);
    EXPECT_EQ(module.StartCount(), 2);
    module.Stop();
    module.Stop();
    EXPECT_NE(gBoundSecond, nullptr) << "stop does not clear";
    module.Start();
    EXPECT_EQ(gLookups, 2) << "a start after stops still binds nothing";
}

TEST(Dispatcher, MissingPrimitiveIsAStartErrorThatNamesIt)
{
    void* untouched = reinterpret_cast<void*>(0x1);
    static void** target = &untouched;
    const TFXBinding bindings[] = {
        {L"ippiFilterBox_8u_C1R", &GetIPPIProcAddress, [](void* a) { *target = a; }},
        {L"ippiNoSuchPrimitive_8u_C1R", &GetIPPIProcAddress, [](void*) {}},
    };
    TFXDispatcherModule module("Broken", bindings);
    try {
        module.Start();
        FAIL() << "start must fail";
    } catch (const EFXError& e) {
        EXPECT_NE(std::string(e.what()).find("ippiNoSuchPrimitive_8u_C1R"), std::string::npos)
            << e.what();
        EXPECT_NE(std::string(e.what()).find("Broken"), std::string::npos) << e.what();
    }
    EXPECT_EQ(untouched, reinterpret_cast<void*>(0x1)) << "nothing is bound on failure";
    EXPECT_EQ(module.StartCount(), 0);
}

TEST(Dispatcher, LayerStartBindsEveryVariableFromAnyThread)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([] { FXStartPrimitiveLayer(); });
    for (auto& t : threads)
        t.join();
    FXStartPrimitiveLayer();
    std::set<std::wstring> names;
    for (TFXDispatcherModule* module : FXDispatcherModules()) {
        EXPECT_EQ(module->BindCount(), 1) << module->Name();
        for (const TFXBinding& b : module->Bindings())
            names.insert(b.Name);
    }
    EXPECT_EQ(names.size(), prim::FXAllPrimitives().size())
        << "every registered primitive is bound by a module";
    EXPECT_NE(ipp::ippiFilterBox_8u_C3R, nullptr);
    EXPECT_NE(ipp::ippiFilterColumn32f_16u_C1R, nullptr);
    if (!FXRealIppActive())
        EXPECT_EQ(reinterpret_cast<void*>(ipp::ippiFilterMedian_8u_C4R),
                  reinterpret_cast<void*>(prim::FXFindPrimitive("ippiFilterMedian_8u_C4R")->Entry));
}

// Four-channel copies and mirrors belong to Fxbasicdispatcher and Qnbasicdispatcher, 16-bit
// copy and 8-bit conversion to two modules too: one variable each, bound to one primitive.
TEST(Dispatcher, ModulesSharingAPrimitiveBindOneVariable)
{
    FXStartPrimitiveLayer();
    for (const std::wstring name : {L"ippiMirror_8u_C4IR", L"ippiSet_8u_AC4R",
                                    L"ippiConvert_32f8u_C1R", L"ippiCopy_16s_C1R"}) {
        int modules = 0;
        for (TFXDispatcherModule* module : FXDispatcherModules())
            for (const TFXBinding& b : module->Bindings())
                modules += b.Name == name;
        EXPECT_EQ(modules, 2) << std::string(name.begin(), name.end());
    }
    EXPECT_EQ(reinterpret_cast<void*>(ipp::ippiMirror_8u_C4IR),
              GetIPPIProcAddress(L"ippiMirror_8u_C4IR"));
    EXPECT_EQ(reinterpret_cast<void*>(ipp::ippsRShiftC_32s_I),
              GetIPPSProcAddress(L"ippsRShiftC_32s_I"));
}

TEST(Dispatcher, LoadersAnswerOnlyForTheirOwnLibrary)
{
    EXPECT_NE(GetIPPIProcAddress(L"ippiFilterRow32f_8u_C1R"), nullptr);
    EXPECT_EQ(GetIPPSProcAddress(L"ippiFilterRow32f_8u_C1R"), nullptr);
    EXPECT_EQ(GetIPPIProcAddress(L"ippiFilterRow32f_8u_C2R"), nullptr);
}

TEST(PrimitiveRegistry, NamesAreSortedUniqueAndDescribeTheirSignature)
{
    const auto all = prim::FXAllPrimitives();
    std::set<std::string_view> names;
    for (std::size_t i = 0; i < all.size(); ++i) {
        const prim::TFXPrimitiveInfo& p = all[i];
        if (i > 0)
            EXPECT_LT(all[i - 1].Name, p.Name);
        names.insert(p.Name);
        EXPECT_EQ(prim::FXFindPrimitive(p.Name), &p);
        ASSERT_NE(p.Entry, nullptr) << p.Name;
        ASSERT_TRUE(p.Has(TFXSimdLevel::Ref)) << p.Name;
        // The name spells the sample type and (for images) the layout the registry claims: a
        // second type may follow or precede the first (ippiLUTPalette_8u32u_C1R, _8u32f_C1IR,
        // ippiConvert_32f8u_C1R); planar colour conversions name both sides (C3P3, P3C3); in-place
        // and scaled forms end in IR, Sfs; the RGBA packers name what they pack into.
        const std::string sample(prim::FXSampleName(p.Sample));
        if (!p.Name.starts_with("ippi")) {
            EXPECT_NE(p.Name.find(sample), std::string_view::npos) << p.Name;
            continue;
        }
        const prim::TFXShapeGeometry g = prim::FXShapeGeometry(p.Shape, p.Sample, p.Layout);
        std::string sides(prim::FXLayoutName(p.Layout));
        if (p.Shape == prim::TFXShape::ColorConvertC3P3)
            sides += "P3";
        if (g.SrcPlanes > 1)
            sides = "P3" + sides;
        const std::regex suffix("_(32f)?" + sample + "(32u|32f)?_" + sides +
                                "I?R(Sfs|To[A-Za-z0-9]+)?$");
        EXPECT_TRUE(std::regex_search(std::string(p.Name), suffix)) << p.Name;
    }
    EXPECT_EQ(names.size(), all.size());
    EXPECT_EQ(prim::FXFindPrimitive("ippiFilterBox_8u_C2R"), nullptr);
}

TEST(PrimitiveRegistry, SelectionNeverExceedsTheMachine)
{
    for (const prim::TFXPrimitiveInfo& p : prim::FXAllPrimitives()) {
        const TFXSimdLevel level = p.SelectedLevel();
        EXPECT_TRUE(p.Has(level)) << p.Name;
        EXPECT_LE(level, FXSelectableLevel()) << p.Name;
    }
    TFXSimdLevel parsed;
    EXPECT_TRUE(FXParseLevel("avx2", parsed));
    EXPECT_EQ(parsed, TFXSimdLevel::Avx2);
    EXPECT_FALSE(FXParseLevel("avx3", parsed));
}

} // namespace
} // namespace framix::test
