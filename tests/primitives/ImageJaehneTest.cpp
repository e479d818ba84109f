// SPDX-License-Identifier: MIT
// The Jaehne test image: values read from IPP 2022's ippiImageJaehne_8u_C3R, its centre and
// symmetry, and the single-precision phase that decides wide images.
#include "framework/primitives/dispatch/FXPrimitiveLayer.h"
#include "framework/primitives/dispatch/Fxjaehnedispatcher.h"

#include <gtest/gtest.h>

#include <vector>

namespace framix::test {
namespace {

using TBytes = std::vector<Ipp8u>;

class ImageJaehne : public testing::Test {
protected:
    void SetUp() override { FXStartPrimitiveLayer(); }

    // The first channel of every pixel, after checking that all three are equal.
    static TBytes Grey(int w, int h)
    {
        TBytes rgb(std::size_t(3) * w * h), grey;
        EXPECT_EQ(ipp::ippiImageJaehne_8u_C3R(rgb.data(), 3 * w, {w, h}), ippStsNoErr);
        for (std::size_t i = 0; i < rgb.size(); i += 3) {
            EXPECT_TRUE(rgb[i] == rgb[i + 1] && rgb[i] == rgb[i + 2]) << i / 3;
            grey.push_back(rgb[i]);
        }
        return grey;
    }
};

// Centred rings: 128 + 128 sin(pi/2 * (x2^2 + y2^2) / H), 256 saturated to 255.
TEST_F(ImageJaehne, RingsAroundTheCentreAsIppDrawsThem)
{
    EXPECT_EQ(Grey(5, 3), (TBytes{192, 239, 192, 239, 192, //
                                  239, 192, 128, 192, 239, //
                                  192, 239, 192, 239, 192}));
    const TBytes square = Grey(8, 8);
    EXPECT_EQ(TBytes(square.begin(), square.begin() + 8),
              (TBytes{1, 68, 165, 209, 209, 165, 68, 1}));
    EXPECT_EQ(TBytes(square.begin() + 8, square.begin() + 16),
              (TBytes{68, 209, 255, 250, 250, 255, 209, 68}));
}

// A 3001x1 image has phases near 2.2e6 at its ends: only the float rounding of
// x2^2 + y2^2 and of the product gives IPP's bytes there.
TEST_F(ImageJaehne, WideImagesFollowTheSinglePrecisionPhase)
{
    const TBytes row = Grey(3001, 1);
    EXPECT_EQ(TBytes(row.begin(), row.begin() + 6), (TBytes{130, 255, 129, 255, 152, 254}));
    EXPECT_EQ(row[1500], 128);
}

TEST_F(ImageJaehne, ImageIsSymmetricAboutBothCentreLines)
{
    for (const IppiSize s : {IppiSize{64, 37}, IppiSize{101, 50}}) {
        const TBytes g = Grey(s.width, s.height);
        for (int y = 0; y < s.height; ++y)
            for (int x = 0; x < s.width; ++x) {
                const int mx = s.width - 1 - x, my = s.height - 1 - y;
                ASSERT_EQ(g[y * s.width + x], g[y * s.width + mx]) << x << "," << y;
                ASSERT_EQ(g[y * s.width + x], g[my * s.width + x]) << x << "," << y;
            }
    }
}

} // namespace
} // namespace framix::test
