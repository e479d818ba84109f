// SPDX-License-Identifier: MIT
// Copy, set and channel primitives on small images with hand-written bytes, through the bound
// IPP-named variables: which channels move, which stay, and the 16-bit packing of colour.
#include "framework/FXFormatConversion.h"
#include "framework/primitives/dispatch/FXPrimitiveLayer.h"
#include "framework/primitives/dispatch/Fxbasicdispatcher.h"

#include <gtest/gtest.h>

#include <memory>
#include <numeric>
#include <random>
#include <vector>

namespace framix::test {
namespace {

using TBytes = std::vector<Ipp8u>;

class CopySet : public testing::Test {
protected:
    void SetUp() override { FXStartPrimitiveLayer(); }
};

// 0, 1, 2 ... n - 1: every byte tells where it came from.
TBytes Ramp(int n, int first = 0)
{
    TBytes v(n);
    std::iota(v.begin(), v.end(), Ipp8u(first));
    return v;
}

TEST_F(CopySet, LayoutCopiesMoveColourAndKeepOrDropAlpha)
{
    const TBytes rgba = Ramp(8); // two pixels: 0 1 2 3 | 4 5 6 7
    TBytes dst3(6, 0xEE), dst4(8, 0xEE);
    ASSERT_EQ(ipp::ippiCopy_8u_AC4C3R(rgba.data(), 8, dst3.data(), 6, {2, 1}), ippStsNoErr);
    EXPECT_EQ(dst3, (TBytes{0, 1, 2, 4, 5, 6})) << "source alpha dropped";
    ASSERT_EQ(ipp::ippiCopy_8u_C3AC4R(dst3.data(), 6, dst4.data(), 8, {2, 1}), ippStsNoErr);
    EXPECT_EQ(dst4, (TBytes{0, 1, 2, 0xEE, 4, 5, 6, 0xEE})) << "destination alpha kept";
    dst4.assign(8, 0xEE);
    ASSERT_EQ(ipp::ippiCopy_8u_AC4R(rgba.data(), 8, dst4.data(), 8, {2, 1}), ippStsNoErr);
    EXPECT_EQ(dst4, (TBytes{0, 1, 2, 0xEE, 4, 5, 6, 0xEE}));
    ASSERT_EQ(ipp::ippiCopy_8u_C4R(rgba.data(), 8, dst4.data(), 8, {2, 1}), ippStsNoErr);
    EXPECT_EQ(dst4, rgba) << "C4 copies the fourth channel like the others";
}

// The channel-of-interest copies write one byte per pixel and nothing else, also when the
// addressed channel is the last byte of the buffer (ASan sees any byte past it).
TEST_F(CopySet, ChannelCopiesTouchOnlyTheAddressedChannel)
{
    constexpr int kW = 37; // whole vectors and a tail at every level
    const TBytes grey = Ramp(kW, 100);
    const TBytes src4 = Ramp(4 * kW);
    auto dst = std::make_unique<Ipp8u[]>(4 * kW);
    std::fill_n(dst.get(), 4 * kW, Ipp8u(0xEE));
    // alpha from a grey image: the pointer addresses byte 3 of the first pixel
    ASSERT_EQ(ipp::ippiCopy_8u_C1C4R(grey.data(), kW, dst.get() + 3, 4 * kW, {kW, 1}), ippStsNoErr);
    for (int x = 0; x < kW; ++x) {
        EXPECT_EQ(dst[4 * x + 3], grey[x]) << x;
        EXPECT_EQ(dst[4 * x], 0xEE) << x;
    }
    // alpha from another four-channel image, as components copy alpha past a colour operation
    ASSERT_EQ(ipp::ippiCopy_8u_C4CR(src4.data() + 3, 4 * kW, dst.get() + 3, 4 * kW, {kW, 1}),
              ippStsNoErr);
    for (int x = 0; x < kW; ++x) {
        EXPECT_EQ(dst[4 * x + 3], src4[4 * x + 3]) << x;
        EXPECT_EQ(dst[4 * x + 2], 0xEE) << x;
    }
    // channel 1 of a three-channel image into channel 2 of a four-channel one
    const TBytes src3 = Ramp(3 * kW);
    ASSERT_EQ(
        ipp::ippiCopyChannel_8u_C3RAC4R(src3.data() + 1, 3 * kW, dst.get() + 2, 4 * kW, {kW, 1}),
        ippStsNoErr);
    for (int x = 0; x < kW; ++x) {
        EXPECT_EQ(dst[4 * x + 2], src3[3 * x + 1]) << x;
        EXPECT_EQ(dst[4 * x + 1], 0xEE) << x;
    }
}

TEST_F(CopySet, PlanarCopiesSeparateTheChannels)
{
    constexpr int kW = 21, kH = 2;
    const TBytes src = Ramp(4 * kW * kH);
    TBytes planes[4] = {TBytes(kW * kH), TBytes(kW * kH), TBytes(kW * kH), TBytes(kW * kH)};
    Ipp8u* const p4[4] = {planes[0].data(), planes[1].data(), planes[2].data(), planes[3].data()};
    ASSERT_EQ(ipp::ippiCopy_8u_C4P4R(src.data(), 4 * kW, p4, kW, {kW, kH}), ippStsNoErr);
    for (int i = 0; i < kW * kH; ++i)
        for (int c = 0; c < 4; ++c)
            ASSERT_EQ(planes[c][i], src[4 * i + c]) << i << " " << c;
    ASSERT_EQ(ipp::ippiCopy_8u_C3P3R(src.data(), 3 * kW, p4, kW, {kW, kH}), ippStsNoErr);
    for (int i = 0; i < kW * kH; ++i)
        for (int c = 0; c < 3; ++c)
            ASSERT_EQ(planes[c][i], src[3 * i + c]) << i << " " << c;
}

TEST_F(CopySet, SetWritesEachChannelsValueAndAc4KeepsAlpha)
{
    TBytes img(4 * 5, 0xEE);
    const Ipp8u value[4] = {10, 20, 30, 40};
    ASSERT_EQ(ipp::ippiSet_8u_AC4R(value, img.data(), 20, {5, 1}), ippStsNoErr);
    for (int x = 0; x < 5; ++x)
        EXPECT_EQ(TBytes(img.begin() + 4 * x, img.begin() + 4 * x + 4), (TBytes{10, 20, 30, 0xEE}));
    ASSERT_EQ(ipp::ippiSet_8u_C4R(value, img.data(), 20, {5, 1}), ippStsNoErr);
    EXPECT_EQ(img[19], 40);
    TBytes rgb(3 * 23, 0); // past one vector at every level: the pattern keeps its phase
    ASSERT_EQ(ipp::ippiSet_8u_C3R(value, rgb.data(), 3 * 23, {23, 1}), ippStsNoErr);
    for (int i = 0; i < 3 * 23; ++i)
        ASSERT_EQ(rgb[i], value[i % 3]) << i;
    Ipp16s words[40];
    ASSERT_EQ(ipp::ippiSet_16s_C1R(-2, words, 40, {20, 2}), ippStsNoErr);
    for (Ipp16s v : words)
        EXPECT_EQ(v, -2);
}

TEST_F(CopySet, SwapChannelsTakesTheListedSourceChannels)
{
    const TBytes bgra = {1, 2, 3, 4, 5, 6, 7, 8};
    TBytes dst(8, 0xEE);
    const int reverse[3] = {2, 1, 0}, first[3] = {0, 0, 0};
    ASSERT_EQ(ipp::ippiSwapChannels_8u_AC4R(bgra.data(), 8, dst.data(), 8, {2, 1}, reverse),
              ippStsNoErr);
    EXPECT_EQ(dst, (TBytes{3, 2, 1, 0xEE, 7, 6, 5, 0xEE}));
    ASSERT_EQ(ipp::ippiSwapChannels_8u_AC4R(bgra.data(), 8, dst.data(), 8, {2, 1}, first),
              ippStsNoErr);
    EXPECT_EQ(dst, (TBytes{1, 1, 1, 0xEE, 5, 5, 5, 0xEE})) << "repeats are allowed";
    // in place, 17 pixels (blocks and a tail): each pixel is read whole before it is written
    TBytes rgb = Ramp(3 * 17);
    const int rotate[3] = {1, 2, 0};
    ASSERT_EQ(ipp::ippiSwapChannels_8u_C3IR(rgb.data(), 3 * 17, {17, 1}, rotate), ippStsNoErr);
    for (int x = 0; x < 17; ++x)
        EXPECT_EQ(TBytes(rgb.begin() + 3 * x, rgb.begin() + 3 * x + 3),
                  (TBytes{Ipp8u(3 * x + 1), Ipp8u(3 * x + 2), Ipp8u(3 * x)}));
}

// Channel 0 goes to the low bits, channel 2 to the high ones; each is scaled to its width and
// rounded to nearest (5 is the first byte that gives 1 in five bits, 3 in six).
TEST_F(CopySet, RgbaPacksIntoFiveAndSixBitFieldsRoundedToNearest)
{
    const TBytes px = {255, 255, 255, 0, 4, 2, 0, 9, 5, 3, 255, 255, 0, 128, 0, 7};
    Ipp16u w555[4], w565[4];
    ASSERT_EQ(ipp::ippiRGBA_8u_AC4RToRGB555(px.data(), 16, w555, 8, {4, 1}), ippStsNoErr);
    ASSERT_EQ(ipp::ippiRGBA_8u_AC4RToRGB565(px.data(), 16, w565, 8, {4, 1}), ippStsNoErr);
    EXPECT_EQ(w555[0], 0x7FFF) << "top bit zero";
    EXPECT_EQ(w565[0], 0xFFFF);
    EXPECT_EQ(w555[1], 0) << "4 and 2 round down";
    EXPECT_EQ(w565[1], 0);
    EXPECT_EQ(w555[2], 1 | 0 << 5 | 31 << 10) << "5 rounds up, 3 down in five bits";
    EXPECT_EQ(w565[2], 1 | 1 << 5 | 31 << 11) << "3 rounds up in six bits";
    EXPECT_EQ(w555[3], 16 << 5);
    EXPECT_EQ(w565[3], 32 << 5);
}

// The packers give the words the format conversion gives for vfRGB32 -> vfRGB555 / vfRGB565.
TEST_F(CopySet, RgbaPackingAgreesWithTheFormatConversion)
{
    constexpr int kW = 41, kH = 3;
    TBytes src(4 * kW * kH);
    std::mt19937 rng(3);
    for (Ipp8u& b : src)
        b = Ipp8u(rng());
    for (const bool six : {false, true}) {
        std::vector<Ipp16u> ours(kW * kH), theirs(kW * kH);
        const auto pack = six ? ipp::ippiRGBA_8u_AC4RToRGB565 : ipp::ippiRGBA_8u_AC4RToRGB555;
        ASSERT_EQ(pack(src.data(), 4 * kW, ours.data(), 2 * kW, {kW, kH}), ippStsNoErr);
        TFXConstPlanes in;
        in.Data[0] = src.data();
        in.Stride[0] = 4 * kW;
        TFXPlanes out;
        out.Data[0] = reinterpret_cast<Ipp8u*>(theirs.data());
        out.Stride[0] = 2 * kW;
        FXConvertPixels(vfRGB32, in, six ? vfRGB565 : vfRGB555, out, kW, kH);
        EXPECT_EQ(ours, theirs) << (six ? "565" : "555");
    }
}

} // namespace
} // namespace framix::test
