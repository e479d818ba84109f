// SPDX-License-Identifier: MIT
// Every vector level of every primitive gives the reference's bytes, on every case.
#include "tests/primitives/support/FXPrimitiveCases.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

namespace framix::test {
namespace {

using prim::TFXPrimitiveInfo;

class PrimitiveDifferential
    : public testing::TestWithParam<std::tuple<const TFXPrimitiveInfo*, TFXSimdLevel>> {};

TEST_P(PrimitiveDifferential, EqualsReferenceOnRandomImages)
{
    const auto [prim, level] = GetParam();
    if (!FXCpuSupports(level) || !prim->Has(level))
        GTEST_SKIP() << prim->Name << " has no " << FXLevelName(level) << " path on this machine";
    int ran = 0;
    for (const TFXCase& c : FXCasesFor(*prim)) {
        const TFXCaseImages images(*prim, c);
        const TFXRunResult expected = images.Run(prim->At(TFXSimdLevel::Ref));
        ASSERT_GE(expected.Status, ippStsNoErr) << c.Describe(); // warnings are allowed
        ASSERT_EQ(images.FirstDamagedGuard(expected.Dst), -1) << "reference, " << c.Describe();
        const TFXRunResult actual = images.Run(prim->At(level));
        if (actual.Status == prim::kFXDeclined) {
            ASSERT_EQ(images.FirstDamagedGuard(actual.Dst), -1) << "declined but wrote";
            continue;
        }
        ++ran;
        ASSERT_EQ(actual.Status, expected.Status) << c.Describe();
        ASSERT_EQ(images.FirstDamagedGuard(actual.Dst), -1) << c.Describe();
        for (std::size_t i = 0; i < expected.Dst.size(); ++i)
            ASSERT_EQ(int(actual.Dst[i]), int(expected.Dst[i]))
                << "first difference at byte " << i - kFXGuardBytes << " of the destination, "
                << c.Describe();
        ASSERT_EQ(actual.NoiseSeed, expected.NoiseSeed) << c.Describe();
    }
    // A kernel that declines everything would pass vacuously.
    EXPECT_GT(ran, 10) << "the level ran too few cases itself";
}

class PrimitiveEntry : public testing::TestWithParam<const TFXPrimitiveInfo*> {};

// The entry point (what binds) gives the reference's bytes, whatever level it selected.
TEST_P(PrimitiveEntry, EqualsReference)
{
    const TFXPrimitiveInfo* prim = GetParam();
    for (const TFXCase& c : FXCasesFor(*prim)) {
        const TFXCaseImages images(*prim, c);
        const TFXRunResult expected = images.Run(prim->At(TFXSimdLevel::Ref));
        const TFXRunResult actual = images.Run(prim->Entry);
        ASSERT_EQ(actual.Status, expected.Status) << c.Describe();
        ASSERT_TRUE(actual.Dst == expected.Dst) << c.Describe();
        ASSERT_EQ(actual.NoiseSeed, expected.NoiseSeed) << c.Describe();
    }
}

std::string PrimitiveLevelName(
    const testing::TestParamInfo<std::tuple<const TFXPrimitiveInfo*, TFXSimdLevel>>& info)
{
    return std::string(std::get<0>(info.param)->Name) + "_" +
           std::string(FXLevelName(std::get<1>(info.param)));
}

INSTANTIATE_TEST_SUITE_P(AllPrimitives, PrimitiveDifferential,
                         testing::Combine(testing::ValuesIn(FXAllPrimitivePointers()),
                                          testing::Values(TFXSimdLevel::Sse41, TFXSimdLevel::Avx2,
                                                          TFXSimdLevel::Avx512)),
                         PrimitiveLevelName);
INSTANTIATE_TEST_SUITE_P(AllPrimitives, PrimitiveEntry, testing::ValuesIn(FXAllPrimitivePointers()),
                         FXPrimitiveTestName);

} // namespace
} // namespace framix::test
