// SPDX-License-Identifier: MIT
// Image sequences: name patterns, numbering, ends, still images and images that do not fit.
#include "bridges/FXImageSequenceReader.h"
#include "bridges/FXImageSequenceWriter.h"

#include <gtest/gtest.h>

#include "tests/bridges/BridgeTestSupport.h"

namespace framix {
namespace {

using test::ErrorMessage;
using test::TTempDir;
using test::TTestImage;

TEST(FXSequencePattern, ExpandsOneNumberDirectiveAndEscapedPercents)
{
    EXPECT_EQ(TFXSequencePattern("in_%04d.ppm").FileName(7), "in_0007.ppm");
    EXPECT_EQ(TFXSequencePattern("in_%04d.ppm").FileName(123456), "in_123456.ppm");
    EXPECT_EQ(TFXSequencePattern("%d.pgm").FileName(12), "12.pgm");
    EXPECT_EQ(TFXSequencePattern("%3d.pgm").FileName(5), "  5.pgm");
    EXPECT_EQ(TFXSequencePattern("100%%_%02d.ppm").FileName(5), "100%_05.ppm");
    EXPECT_FALSE(TFXSequencePattern("still%%.ppm").IsNumbered());
    EXPECT_EQ(TFXSequencePattern("still%%.ppm").FileName(3), "still%.ppm");
    for (const char* bad : {"a_%s.ppm", "a_%04x.ppm", "a_%", "50%.ppm", "a_%123d.ppm"})
        EXPECT_NE(ErrorMessage([&] { TFXSequencePattern p(bad); }).find("unsupported '%"),
                  std::string::npos)
            << bad;
    EXPECT_NE(ErrorMessage([] { TFXSequencePattern p("%d_%d.ppm"); }).find("more than one number"),
              std::string::npos);
}

// Writes `count` numbered frames of `format` from `first` on and returns them.
std::vector<TTestImage> WriteSequence(const std::string& pattern, int first, int count,
                                      TFXVideoFormat format = vfRGB24)
{
    std::vector<TTestImage> frames;
    TFXImageSequenceWriter writer(pattern, first);
    for (int i = 0; i < count; ++i) {
        frames.emplace_back(format, 5, 3, 2, std::uint32_t(i + 1));
        writer.WriteFrame(format, 5, 3, frames.back().ConstPlanes());
    }
    return frames;
}

TEST(FXImageSequence, NumbersFromOneAndReadsBackUntilTheFirstGap)
{
    TTempDir dir;
    const std::vector<TTestImage> frames = WriteSequence(dir / "f_%03d.ppm", 1, 3);
    EXPECT_TRUE(std::filesystem::exists(dir / "f_001.ppm"));
    EXPECT_TRUE(std::filesystem::exists(dir / "f_003.ppm"));
    WriteSequence(dir / "f_%03d.ppm", 5, 1); // after the gap at 4: never read
    TFXImageSequenceReader reader(dir / "f_%03d.ppm");
    EXPECT_TRUE(reader.IsNumbered());
    EXPECT_EQ(reader.Format(), vfRGB24);
    EXPECT_EQ(reader.Width(), 5);
    for (const TTestImage& expected : frames) {
        TTestImage got(vfRGB24, 5, 3, 1, 0);
        ASSERT_TRUE(reader.ReadFrame(got.Planes()));
        EXPECT_EQ(got.Bytes(), expected.Bytes());
        EXPECT_TRUE(got.PaddingIntact());
    }
    EXPECT_EQ(reader.CurrentFile(), dir / "f_003.ppm");
    TTestImage spare(vfRGB24, 5, 3, 0, 0);
    EXPECT_FALSE(reader.ReadFrame(spare.Planes()));
    EXPECT_FALSE(reader.ReadFrame(spare.Planes()));
    EXPECT_EQ(reader.FrameCount(), 3);
}

TEST(FXImageSequence, ASequenceStartingAtZeroIsReadFromZero)
{
    TTempDir dir;
    const std::vector<TTestImage> frames = WriteSequence(dir / "z%d.pgm", 0, 2, vfGray16);
    TFXImageSequenceReader reader(dir / "z%d.pgm");
    TTestImage got(vfGray16, 5, 3, 0, 0);
    ASSERT_TRUE(reader.ReadFrame(got.Planes()));
    EXPECT_EQ(got.Bytes(), frames[0].Bytes());
    EXPECT_EQ(reader.CurrentFile(), dir / "z0.pgm");
    ASSERT_TRUE(reader.ReadFrame(got.Planes()));
    EXPECT_FALSE(reader.ReadFrame(got.Planes()));
}

TEST(FXImageSequence, APlainNameIsOneFileHoldingEveryFrame)
{
    TTempDir dir;
    const std::vector<TTestImage> frames = WriteSequence(dir / "all.pam", 1, 3, vfRGB32);
    EXPECT_FALSE(std::filesystem::exists(dir / "all1.pam"));
    TFXImageSequenceReader reader(dir / "all.pam");
    EXPECT_FALSE(reader.IsNumbered());
    for (const TTestImage& expected : frames) {
        TTestImage got(vfRGB32, 5, 3, 0, 0);
        ASSERT_TRUE(reader.ReadFrame(got.Planes()));
        EXPECT_EQ(got.Bytes(), expected.Bytes());
    }
    TTestImage spare(vfRGB32, 5, 3, 0, 0);
    EXPECT_FALSE(reader.ReadFrame(spare.Planes()));
    // A name that exists is taken literally, even with a percent sign in it.
    WriteSequence(dir / "odd%%d.ppm", 1, 1);
    TFXImageSequenceReader literal(dir / "odd%d.ppm");
    EXPECT_FALSE(literal.IsNumbered());
}

TEST(FXImageSequence, MissingImagesAndMisfitsAreErrorsAfterTheGoodFrames)
{
    TTempDir dir;
    EXPECT_EQ(ErrorMessage([&] { TFXImageSequenceReader r(dir / "n_%02d.ppm"); }),
              dir / "n_%02d.ppm" + ": no image of the sequence found (looked for " +
                  dir / "n_00.ppm" + " and " + dir / "n_01.ppm" + ")");
    EXPECT_NE(ErrorMessage([&] {
                  TFXImageSequenceReader r(dir / "still.ppm");
              }).find("still.ppm: cannot open"),
              std::string::npos);

    WriteSequence(dir / "m_%d.ppm", 1, 2);
    test::WriteBytes(dir / "m_3.ppm", "P5 5 3 255\n" + std::string(15, 'g'));
    TFXImageSequenceReader reader(dir / "m_%d.ppm");
    TTestImage got(vfRGB24, 5, 3, 0, 0);
    EXPECT_TRUE(reader.ReadFrame(got.Planes()));
    EXPECT_TRUE(reader.ReadFrame(got.Planes()));
    EXPECT_EQ(ErrorMessage([&] { reader.ReadFrame(got.Planes()); }),
              dir / "m_3.ppm" +
                  ": the image is 5x3 vfGray8, but the sequence began with 5x3 vfRGB24");

    test::WriteBytes(dir / "m_3.ppm", "P6 5 3 255\nshort");
    TFXImageSequenceReader cut(dir / "m_%d.ppm");
    EXPECT_TRUE(cut.ReadFrame(got.Planes()));
    EXPECT_TRUE(cut.ReadFrame(got.Planes()));
    EXPECT_THROW(cut.ReadFrame(got.Planes()), EFXIncompleteFrame);
}

TEST(FXImageSequence, WriterRefusesFormatsAndPatternsBeforeWriting)
{
    TTempDir dir;
    EXPECT_THROW(TFXImageSequenceWriter(dir / "bad_%s.ppm"), EFXError);
    TFXImageSequenceWriter writer(dir / "y_%d.ppm");
    const TTestImage yuv(vfI420, 4, 4, 0, 1);
    EXPECT_NE(ErrorMessage([&] {
                  writer.WriteFrame(vfI420, 4, 4, yuv.ConstPlanes());
              }).find("cannot hold vfI420"),
              std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(dir / "y_1.ppm"));
    EXPECT_EQ(writer.FrameCount(), 0);
}

} // namespace
} // namespace framix
