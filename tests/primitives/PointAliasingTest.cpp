// SPDX-License-Identifier: MIT
// Point operations whose destination is also their second source (a caller may combine two
// frames into one of them): every level gives what it gives with a separate destination.
#include "tests/primitives/support/FXPrimitiveCases.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace framix::test {
namespace {

using prim::TFXPrimitiveInfo;
using prim::TFXShape;

std::vector<const TFXPrimitiveInfo*> TwoSourcePointPrimitives()
{
    std::vector<const TFXPrimitiveInfo*> all;
    for (const TFXPrimitiveInfo* p : FXAllPrimitivePointers())
        if (p->Shape == TFXShape::BinarySfs || p->Shape == TFXShape::Binary ||
            p->Shape == TFXShape::AlphaConst || p->Shape == TFXShape::AlphaPixel)
            all.push_back(p);
    return all;
}

class PointAliasing : public testing::TestWithParam<const TFXPrimitiveInfo*> {};

TEST_P(PointAliasing, DestinationMayBeTheSecondSource)
{
    const TFXPrimitiveInfo& p = *GetParam();
    const int pixelBytes = prim::FXChannels(p.Layout) * prim::FXSampleBytes(p.Sample);
    for (TFXSimdLevel level : kFXAllSimdLevels) {
        if (!FXCpuSupports(level) || !p.Has(level))
            continue;
        for (const TFXCase& c : FXCasesFor(p)) {
            if (c.Extra.Left + c.Extra.Right + c.Extra.Top + c.Extra.Bottom != 0)
                continue; // the second source is copied as one block below
            const TFXCaseImages images(p, c);
            const TFXRunResult separate = images.Run(p.At(level));
            if (separate.Status == prim::kFXDeclined)
                continue;
            // The second source, copied into the destination's rows and steps.
            prim::TFXShapeArgs args = images.Args(nullptr);
            std::vector<Ipp8u> shared = images.Fresh();
            auto* dst = shared.data() + kFXGuardBytes;
            for (int y = 0; y < c.Roi.height; ++y)
                std::memcpy(dst + std::size_t(y) * args.DstStep,
                            static_cast<const Ipp8u*>(args.Src2) + std::size_t(y) * args.Src2Step,
                            std::size_t(c.Roi.width) * pixelBytes);
            args.Dst = dst;
            args.Src2 = dst;
            args.Src2Step = args.DstStep;
            const IppStatus s = prim::FXCallShape(p.Shape, p.Sample, p.At(level), args);
            ASSERT_EQ(s, separate.Status) << FXLevelName(level) << ", " << c.Describe();
            // AC4 destinations keep their alpha: there it is the second source's.
            for (int y = 0; y < c.Roi.height; ++y)
                for (int x = 0; x < c.Roi.width * pixelBytes; ++x) {
                    const bool alpha = p.Layout == prim::TFXLayout::AC4 &&
                                       p.Shape != TFXShape::AlphaPixel && x % 4 == 3;
                    if (alpha)
                        continue;
                    const std::size_t at = kFXGuardBytes + std::size_t(y) * args.DstStep + x;
                    ASSERT_EQ(int(shared[at]), int(separate.Dst[at]))
                        << FXLevelName(level) << ", byte " << x << " of row " << y << ", "
                        << c.Describe();
                }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(TwoSources, PointAliasing, testing::ValuesIn(TwoSourcePointPrimitives()),
                         FXPrimitiveTestName);

} // namespace
} // namespace framix::test
