// SPDX-License-Identifier: MIT
// PNG output (and the reader that proves it): every format, sequences and damaged files.
#include "bridges/FXPNGFile.h"

#include <gtest/gtest.h>

#include "bridges/FXImageSequenceReader.h"
#include "bridges/FXImageSequenceWriter.h"
#include "tests/bridges/BridgeTestSupport.h"

namespace framix {
namespace {

using test::ErrorMessage;
using test::TTempDir;
using test::TTestImage;

class FXPNGFile : public testing::Test {
protected:
    void SetUp() override
    {
        if (!FXPNGAvailable())
            GTEST_SKIP() << "built without libpng";
    }
    TTempDir FDir;
};

TEST_F(FXPNGFile, EveryFormatComesBackByteExact)
{
    for (TFXVideoFormat format : {vfGray8, vfGray16, vfRGB24, vfRGB32, vfRGB48, vfRGBA64}) {
        const TTestImage source(format, 5, 3, 3, std::uint32_t(format) + 1);
        const std::string path = FDir / "a.png";
        FXWritePNG(path, format, 5, 3, source.ConstPlanes());
        EXPECT_EQ(test::ReadBytes(path).substr(1, 3), "PNG");
        const TFXPNGImage back = FXReadPNG(path);
        ASSERT_EQ(back.Format, format) << FXVideoFormatName(format);
        EXPECT_EQ(back.Width, 5);
        EXPECT_EQ(back.Height, 3);
        TTestImage copy(format, 5, 3, 0, 0);
        for (int y = 0; y < 3; ++y)
            std::copy_n(back.Pixels.data() + std::ptrdiff_t(y) * back.Stride,
                        FXPlaneGeometry(format, 5, 3, 0).RowBytes, copy.Row(0, y));
        EXPECT_EQ(copy.Bytes(), source.Bytes()) << FXVideoFormatName(format);
    }
}

TEST_F(FXPNGFile, SequencesOfPngFilesPlayLikeOtherImages)
{
    std::vector<TTestImage> frames;
    {
        TFXImageSequenceWriter writer(FDir / "p_%02d.PNG");
        for (std::uint32_t i = 1; i <= 2; ++i) {
            frames.emplace_back(vfRGB32, 7, 2, 1, i);
            writer.WriteFrame(vfRGB32, 7, 2, frames.back().ConstPlanes());
        }
    }
    TFXImageSequenceReader reader(FDir / "p_%02d.PNG");
    EXPECT_EQ(reader.Format(), vfRGB32);
    for (const TTestImage& expected : frames) {
        TTestImage got(vfRGB32, 7, 2, 2, 0);
        ASSERT_TRUE(reader.ReadFrame(got.Planes()));
        EXPECT_EQ(got.Bytes(), expected.Bytes());
        EXPECT_TRUE(got.PaddingIntact());
    }
    TTestImage spare(vfRGB32, 7, 2, 0, 0);
    EXPECT_FALSE(reader.ReadFrame(spare.Planes()));

    // A plain .png name keeps the latest frame.
    TFXImageSequenceWriter last(FDir / "last.png");
    last.WriteFrame(vfRGB32, 7, 2, frames[0].ConstPlanes());
    last.WriteFrame(vfRGB32, 7, 2, frames[1].ConstPlanes());
    EXPECT_EQ(FXReadPNG(FDir / "last.png").Pixels, frames[1].Bytes());
}

TEST_F(FXPNGFile, DamagedFilesAndUnsupportedFormatsAreClearErrors)
{
    const TTestImage source(vfRGB24, 16, 16, 0, 3);
    const std::string path = FDir / "d.png";
    FXWritePNG(path, vfRGB24, 16, 16, source.ConstPlanes());
    const std::string whole = test::ReadBytes(path);
    test::WriteBytes(path, whole.substr(0, whole.size() / 2));
    EXPECT_NE(ErrorMessage([&] { FXReadPNG(path); }).find(path + ": cannot read PNG ("),
              std::string::npos);
    test::WriteBytes(path, "P6 1 1 255\nabc");
    EXPECT_EQ(ErrorMessage([&] { FXReadPNG(path); }), path + ": not a PNG image");
    std::string lying = whole;
    lying[19] = 0x7F; // the width in the header chunk, no longer matching its checksum
    test::WriteBytes(path, lying);
    EXPECT_NE(ErrorMessage([&] { FXReadPNG(path); }).find("cannot read PNG"), std::string::npos);
    const TTestImage yuv(vfYUY2, 4, 4, 0, 1);
    EXPECT_NE(ErrorMessage([&] {
                  FXWritePNG(path, vfYUY2, 4, 4, yuv.ConstPlanes());
              }).find("PNG cannot hold vfYUY2"),
              std::string::npos);
}

} // namespace
} // namespace framix
