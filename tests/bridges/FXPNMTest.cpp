// SPDX-License-Identifier: MIT
// PGM/PPM/PAM reader and writer: byte-exact round trips, sample order, every header form,
// rescaling, several images in one stream, and broken or lying files.
#include "bridges/FXPNMReader.h"
#include "bridges/FXPNMWriter.h"

#include <gtest/gtest.h>

#include "tests/bridges/BridgeTestSupport.h"

namespace framix {
namespace {

using test::ErrorMessage;
using test::TTempDir;
using test::TTestImage;

class FXPNMRoundTrip : public testing::TestWithParam<TFXVideoFormat> {};

TEST_P(FXPNMRoundTrip, EveryWritableFormatComesBackByteExactThroughPaddedStrides)
{
    const TFXVideoFormat format = GetParam();
    TTempDir dir;
    for (auto [w, h] : {std::pair{5, 3}, std::pair{1, 1}, std::pair{17, 2}}) {
        const std::string path = dir / "image.pnm";
        const TTestImage source(format, w, h, 5, std::uint32_t(w * 31 + h));
        TFXPNMWriter(path).WriteFrame(format, w, h, source.ConstPlanes());
        TFXPNMReader reader(path);
        EXPECT_EQ(reader.Info().Format, format);
        EXPECT_EQ(reader.Info().Width, w);
        EXPECT_EQ(reader.Info().Height, h);
        TTestImage back(format, w, h, 2, 0);
        reader.ReadPixels(back.Planes());
        EXPECT_EQ(back.Bytes(), source.Bytes()) << w << "x" << h;
        EXPECT_TRUE(back.PaddingIntact());
        EXPECT_FALSE(reader.NextImage());
    }
}

INSTANTIATE_TEST_SUITE_P(WritableFormats, FXPNMRoundTrip,
                         testing::Values(vfGray8, vfGray16, vfRGB24, vfRGB32, vfRGB48, vfRGBA64),
                         [](const auto& info) {
                             return std::string(FXVideoFormatName(info.param));
                         });

TEST(FXPNM, FilesHoldRedFirstAndBigEndianSamples)
{
    TTempDir dir;
    auto written = [&](TFXVideoFormat format, std::vector<std::uint8_t> pixel) {
        TTestImage image(format, 1, 1, 0, 0);
        std::copy(pixel.begin(), pixel.end(), image.Row(0, 0));
        TFXPNMWriter(dir / "p").WriteFrame(format, 1, 1, image.ConstPlanes());
        return test::ReadBytes(dir / "p");
    };
    EXPECT_EQ(written(vfGray8, {7}), std::string("P5\n1 1\n255\n\x07", 12));
    EXPECT_EQ(written(vfGray16, {0x34, 0x12}), "P5\n1 1\n65535\n\x12\x34");
    EXPECT_EQ(written(vfRGB24, {1, 2, 3}), "P6\n1 1\n255\n\x03\x02\x01");
    EXPECT_EQ(written(vfRGB48, {1, 2, 3, 4, 5, 6}), "P6\n1 1\n65535\n\x06\x05\x04\x03\x02\x01");
    EXPECT_EQ(
        written(vfRGB32, {1, 2, 3, 4}),
        "P7\nWIDTH 1\nHEIGHT 1\nDEPTH 4\nMAXVAL 255\nTUPLTYPE RGB_ALPHA\nENDHDR\n\x03\x02\x01\x04");
    EXPECT_EQ(written(vfRGBA64, {1, 2, 3, 4, 5, 6, 7, 8}).substr(28),
              "MAXVAL 65535\nTUPLTYPE RGB_ALPHA\nENDHDR\n\x06\x05\x04\x03\x02\x01\x08\x07");
}

TEST(FXPNM, DecodesEveryHeaderFormTupleTypeAndMaxval)
{
    using TBytes = std::vector<std::uint8_t>;
    const std::string pam = "P7\nWIDTH 1\nHEIGHT 1\nDEPTH ";
    const struct {
        std::string File;
        TFXVideoFormat Format;
        TBytes Pixels;
    } cases[] = {
        // Plain forms, comments anywhere white space may be.
        {"P2\n# by hand\n3 1 # w h\n255\n0 128\n255\n", vfGray8, {0, 128, 255}},
        {"P3 2 1 255 1 2 3 # in the data\n 4 5 6", vfRGB24, {3, 2, 1, 6, 5, 4}},
        {"P5#after the magic\n2#w\n1\n255\n\x10\x20", vfGray8, {0x10, 0x20}},
        {"P2 2 1 65535 258 65535", vfGray16, {2, 1, 255, 255}},
        // Other maxvals rescale to the full range, rounded; samples above maxval count as it.
        {"P2 4 1 15 0 7 15 99", vfGray8, {0, 119, 255, 255}},
        {std::string("P5 3 1 1000\n\x00\x00\x01\xF4\x03\xE8", 18),
         vfGray16,
         {0, 0, 0x00, 0x80, 0xFF, 0xFF}},
        {std::string("P5 1 1 300\n\x01\x2D", 13), vfGray16, {255, 255}},
        {std::string("P6 1 1 1\n\x01\x00\x01", 12), vfRGB24, {255, 0, 255}},
        // PAM tuple types; gray with alpha becomes B = G = R = gray, A = alpha.
        {pam + "1\nMAXVAL 255\nTUPLTYPE GRAYSCALE\nENDHDR\n\x07", vfGray8, {7}},
        {pam + "2\nMAXVAL 255\nTUPLTYPE GRAYSCALE_ALPHA\nENDHDR\n\x0A\x14",
         vfRGB32,
         {10, 10, 10, 20}},
        {pam + "2\nMAXVAL 65535\nTUPLTYPE GRAYSCALE_ALPHA\nENDHDR\n\x12\x34\xAB\xCD",
         vfRGBA64,
         {0x34, 0x12, 0x34, 0x12, 0x34, 0x12, 0xCD, 0xAB}},
        {"P7\n# c\n\nTUPLTYPE RGB\nDEPTH 3\nWIDTH 1\nHEIGHT 1\nMAXVAL 255\nENDHDR\n\x01\x02\x03",
         vfRGB24,
         {3, 2, 1}},
        {pam + "1\nMAXVAL 1\nTUPLTYPE BLACKANDWHITE\nENDHDR\n\x01", vfGray8, {255}},
        {pam + "4\nMAXVAL 255\nENDHDR\n\x01\x02\x03\x04", vfRGB32, {3, 2, 1, 4}},
    };
    TTempDir dir;
    for (const auto& c : cases) {
        test::WriteBytes(dir / "in.pnm", c.File);
        TFXPNMReader reader(dir / "in.pnm");
        ASSERT_EQ(reader.Info().Format, c.Format) << c.File;
        TTestImage image(c.Format, reader.Info().Width, reader.Info().Height, 3, 0);
        reader.ReadPixels(image.Planes());
        EXPECT_EQ(image.Bytes(), c.Pixels) << c.File;
        EXPECT_TRUE(image.PaddingIntact());
        EXPECT_FALSE(reader.NextImage());
    }
}

TEST(FXPNM, AStreamOfSeveralImagesIsReadOneAfterAnother)
{
    TTempDir dir;
    const std::string path = dir / "many.ppm";
    const TTestImage a(vfRGB24, 3, 2, 0, 1), b(vfGray16, 2, 2, 4, 2), c(vfRGB32, 1, 3, 0, 3);
    {
        TFXPNMWriter writer(path);
        writer.WriteFrame(vfRGB24, 3, 2, a.ConstPlanes());
        writer.WriteFrame(vfGray16, 2, 2, b.ConstPlanes());
        writer.WriteFrame(vfRGB32, 1, 3, c.ConstPlanes());
    }
    test::WriteBytes(path, test::ReadBytes(path) + "\n\n"); // trailing line ends are no image
    TFXPNMReader reader(path);
    TTestImage backA(vfRGB24, 3, 2, 0, 0);
    reader.ReadPixels(backA.Planes());
    EXPECT_EQ(backA.Bytes(), a.Bytes());
    ASSERT_TRUE(reader.NextImage());
    EXPECT_EQ(reader.Info().Format, vfGray16);
    ASSERT_TRUE(reader.NextImage()); // skips the gray image unread
    EXPECT_EQ(reader.Info().Type, 7);
    TTestImage backC(vfRGB32, 1, 3, 0, 0);
    reader.ReadPixels(backC.Planes());
    EXPECT_EQ(backC.Bytes(), c.Bytes());
    EXPECT_FALSE(reader.NextImage());
    EXPECT_EQ(reader.ImageCount(), 2);
    EXPECT_THROW(reader.ReadPixels(backC.Planes()), EFXError);
}

TEST(FXPNM, BrokenHeadersAreClearErrorsNamingTheFile)
{
    TTempDir dir;
    const std::pair<std::string, const char*> cases[] = {
        {"", "empty file"},
        {"GIF89a", "not a PNM or PAM image (it starts with 'G')"},
        {"P4\n1 1\n\x80", "PBM bitmaps (P1, P4) are not supported"},
        {"P5 4", "truncated header (the file ends before the height)"},
        {"P5 4x4 255\n", "invalid width in the header (found 'x')"},
        {"P5 0 4 255\n", "invalid image size 0x4"},
        {"P5 4 4 0\n", "maxval 0 is out of range"},
        {"P5 4 4 70000\n", "maxval 70000 is out of range"},
        {"P6 20000 20000 255\n", "beyond the supported"},
        {"P6 99999999999999999999 1 255\n", "width in the header is absurdly large"},
        {"P7\nWIDTH 1\nHEIGHT 1\nDEPTH 1\nMAXVAL 255\n", "truncated PAM header (no ENDHDR line)"},
        {"P7\nWIDTH 1\nDEPTH 1\nMAXVAL 255\nENDHDR\n", "the PAM header has no HEIGHT line"},
        {"P7\nWIDTH 1\nHEIGHT 1\nDEPTH 4\nMAXVAL 255\nTUPLTYPE CMYK\nENDHDR\n",
         "unsupported TUPLTYPE 'CMYK'"},
        {"P7\nWIDTH 1\nHEIGHT 1\nDEPTH 2\nMAXVAL 255\nTUPLTYPE RGB\nENDHDR\n",
         "TUPLTYPE RGB needs DEPTH 3, the header says 2"},
        {"P7\nWIDTH 1\nHEIGHT 1\nDEPTH 5\nMAXVAL 255\nENDHDR\n", "DEPTH 5 is not supported"},
        {"P7\nWIDTH 1\nHEIGHT 1\nCOLOR 1\nENDHDR\n", "unknown PAM header line 'COLOR 1'"},
        {"P7 WIDTH 1\n", "invalid PAM header (expected a line end after P7)"},
    };
    for (const auto& [bytes, message] : cases) {
        const std::string path = dir / "bad.pnm";
        test::WriteBytes(path, bytes);
        const std::string error = ErrorMessage([&] { TFXPNMReader reader(path); });
        EXPECT_EQ(error.rfind(path + ": ", 0), 0u) << error;
        EXPECT_NE(error.find(message), std::string::npos) << error;
    }
    EXPECT_NE(ErrorMessage([&] { TFXPNMReader(dir / "none.pgm"); }).find("none.pgm: cannot open"),
              std::string::npos);
}

TEST(FXPNM, ShortOrGarbledImageDataIsReportedAsSuch)
{
    TTempDir dir;
    const std::string path = dir / "short.pnm";
    auto failure = [&](const std::string& bytes, TFXVideoFormat format, int w, int h) {
        test::WriteBytes(path, bytes);
        TFXPNMReader reader(path);
        TTestImage image(format, w, h, 1, 0);
        try {
            reader.ReadPixels(image.Planes());
        } catch (const EFXIncompleteFrame& e) {
            EXPECT_TRUE(image.PaddingIntact());
            return std::string(e.what()) + " [" + std::to_string(e.BytesRead()) + "/" +
                   std::to_string(e.BytesExpected()) + "]";
        } catch (const EFXError& e) {
            return std::string(e.what());
        }
        ADD_FAILURE() << "no error";
        return std::string();
    };
    EXPECT_EQ(failure("P5 4 2 255\nabcdef", vfGray8, 4, 2),
              path + ": image 1 is incomplete: the file ends after 6 of its 8 bytes [6/8]");
    EXPECT_EQ(failure("P6 2 2 255\nabcdefghi", vfRGB24, 2, 2),
              path + ": image 1 is incomplete: the file ends after 9 of its 12 bytes [9/12]");
    EXPECT_EQ(failure("P2 2 2 255 1 2 3", vfGray8, 2, 2),
              path + ": image 1 is incomplete: the file ends after 3 of its 4 samples [3/4]");
    EXPECT_EQ(failure("P2 2 1 255 1 x", vfGray8, 2, 1),
              path + ": invalid 'x' in the image data of image 1");
    EXPECT_EQ(failure("P2 2 1 255 1 2x", vfGray8, 2, 1),
              path + ": invalid 'x' in the image data of image 1");
}

TEST(FXPNM, WriterRefusesFormatsAndPlanesItCannotWrite)
{
    TTempDir dir;
    TFXPNMWriter writer(dir / "x.ppm");
    const TTestImage yuv(vfI420, 4, 4, 0, 1);
    EXPECT_NE(ErrorMessage([&] {
                  writer.WriteFrame(vfI420, 4, 4, yuv.ConstPlanes());
              }).find("cannot hold vfI420 frames"),
              std::string::npos);
    TTestImage rgb(vfRGB24, 4, 4, 0, 1);
    TFXConstPlanes planes = rgb.ConstPlanes();
    planes.Stride[0] = 11;
    EXPECT_NE(ErrorMessage([&] {
                  writer.WriteFrame(vfRGB24, 4, 4, planes);
              }).find("stride of 11 bytes, less than its 12 bytes per row"),
              std::string::npos);
    EXPECT_NE(ErrorMessage([&] {
                  writer.WriteFrame(vfRGB24, 0, 4, rgb.ConstPlanes());
              }).find("invalid image size 0x4"),
              std::string::npos);
    EXPECT_TRUE(test::ReadBytes(dir / "x.ppm").empty());
}

} // namespace
} // namespace framix
