// SPDX-License-Identifier: MIT
// YUV4MPEG2 reader and writer: round trips, header tags, pipes, and broken or lying streams.
#include "bridges/FXY4MReader.h"
#include "bridges/FXY4MWriter.h"

#include <gtest/gtest.h>

#include <sys/ioctl.h>
#include <unistd.h>

#include "tests/bridges/BridgeTestSupport.h"

namespace framix {
namespace {

using test::ErrorMessage;
using test::TTempDir;
using test::TTestImage;

class FXY4MRoundTrip : public testing::TestWithParam<TFXVideoFormat> {};

TEST_P(FXY4MRoundTrip, EveryCarriedFormatComesBackByteExactThroughPaddedStrides)
{
    const TFXVideoFormat format = GetParam();
    TTempDir dir;
    for (auto [w, h] : {std::pair{5, 3}, std::pair{1, 1}, std::pair{16, 9}}) {
        const std::string path = dir / "clip.y4m";
        std::vector<TTestImage> frames;
        {
            TFXY4MWriter writer(path, TFXY4MStreamInfo::For(format, w, h, {25, 1}));
            for (std::uint32_t seed = 1; seed <= 3; ++seed) {
                frames.emplace_back(format, w, h, 7, seed + std::uint32_t(w));
                writer.WriteFrame(format, w, h, frames.back().ConstPlanes());
            }
        }
        TFXY4MReader reader(path);
        EXPECT_EQ(reader.Info().Format, format);
        for (const TTestImage& expected : frames) {
            TTestImage got(format, w, h, 3, 0);
            ASSERT_TRUE(reader.ReadFrame(got.Planes()));
            EXPECT_EQ(got.Bytes(), expected.Bytes()) << w << "x" << h;
            EXPECT_TRUE(got.PaddingIntact());
        }
        TTestImage spare(format, w, h, 0, 0);
        EXPECT_FALSE(reader.ReadFrame(spare.Planes()));
        EXPECT_EQ(reader.FrameCount(), 3);
        // Exactly the header and three unpadded frames: none of the padding leaked out.
        EXPECT_EQ(test::ReadBytes(path).size(), FXFormatY4MHeader(reader.Info(), "").size() +
                                                    3 * (6 + frames[0].Bytes().size()));
    }
}

INSTANTIATE_TEST_SUITE_P(CarriedFormats, FXY4MRoundTrip,
                         testing::Values(vfI420, vfI422, vfI444, vfYUVA444, vfGray8, vfGray16),
                         [](const auto& info) {
                             return std::string(FXVideoFormatName(info.param));
                         });

TEST(FXY4M, HeaderTagsAreKeptAndWrittenBack)
{
    TTempDir dir;
    TFXY4MStreamInfo info = TFXY4MStreamInfo::For(vfI420, 5, 3, {30000, 1001});
    info.Chroma = "420mpeg2";
    info.Interlacing = 'b';
    info.PixelAspect = TFXRatio{128, 117};
    info.Comments = {"YSCSS=420MPEG2", "COLORRANGE=LIMITED"};
    const std::string header = "YUV4MPEG2 W5 H3 F30000:1001 Ib A128:117 C420mpeg2 "
                               "XYSCSS=420MPEG2 XCOLORRANGE=LIMITED\n";
    EXPECT_EQ(FXFormatY4MHeader(info, ""), header);
    {
        TFXY4MWriter(dir / "a.y4m", info);
    }
    const TFXY4MStreamInfo back = TFXY4MReader(dir / "a.y4m").Info();
    EXPECT_EQ(FXFormatY4MHeader(back, ""), header);
    EXPECT_EQ(back.FramePeriod(), 333667);

    // Absent tags stay absent (the C tag is always written).
    TFXY4MStreamInfo bare;
    bare.Width = bare.Height = 2;
    bare.Format = vfGray16;
    EXPECT_EQ(FXFormatY4MHeader(bare, ""), "YUV4MPEG2 W2 H2 Cmono16\n");
    EXPECT_EQ(bare.FramePeriod(), 0);
}

TEST(FXY4M, ReadsHeadersAndFrameLinesAsOtherToolsWriteThem)
{
    TTempDir dir;
    const std::string frame = std::string(8, 'y') + "uuvv";
    // No C tag (4:2:0 is the default), a double space, an unknown tag, FRAME parameters.
    test::WriteBytes(dir / "t.y4m", "YUV4MPEG2 W4 H2  F25:1 A0:0 Zfuture\nFRAME Ixyz Xc\n" + frame +
                                        "FRAME\n" + frame);
    TFXY4MReader reader(dir / "t.y4m");
    EXPECT_EQ(reader.Info().Format, vfI420);
    EXPECT_EQ(reader.Info().PixelAspect, (TFXRatio{0, 0}));
    TTestImage image(vfI420, 4, 2, 0, 0);
    ASSERT_TRUE(reader.ReadFrame(image.Planes()));
    EXPECT_EQ(image.Bytes(), std::vector<std::uint8_t>(frame.begin(), frame.end()));
    EXPECT_TRUE(reader.ReadFrame(image.Planes()));
    EXPECT_FALSE(reader.ReadFrame(image.Planes()));
    for (const char* tag : {"420mpeg2", "420paldv", "420"})
        EXPECT_EQ(FXParseY4MHeader(std::string("YUV4MPEG2 W2 H2 C") + tag, "").Format, vfI420);
}

TEST(FXY4M, FramePeriodsAndRatesConvertBothWays)
{
    const std::pair<TFXRatio, std::int64_t> pairs[] = {
        {{25, 1}, 400000},       {{30000, 1001}, 333667},        {{24000, 1001}, 417083},
        {{60000, 1001}, 166833}, {{10000000, 1234567}, 1234567}, {{0, 0}, 0},
        {{30, 1}, 333333},       {{3, 1}, 3333333},  // whole rates whose period was rounded
    };
    for (const auto& [rate, period] : pairs) {
        EXPECT_EQ(FXFramePeriodFromRate(rate), period);
        EXPECT_EQ(FXFrameRateFromPeriod(period), rate) << period;
    }
}

TEST(FXY4M, MalformedHeadersAreClearErrorsNamingTheFile)
{
    TTempDir dir;
    const std::pair<std::string, const char*> cases[] = {
        {"", "empty stream"},
        {"YUV4MPEG W2 H2\n", "not a YUV4MPEG2 stream"},
        {"YUV4MPEG2 W2 H2", "truncated stream header"},
        {"YUV4MPEG2 W0 H2\n", "invalid image size 0x2"},
        {"YUV4MPEG2 W-5 H2\n", "invalid size 'W-5'"},
        {"YUV4MPEG2 W99999999999 H2\n", "invalid size"},
        {"YUV4MPEG2 W2\n", "no height (H)"},
        {"YUV4MPEG2 W40000 H2\n", "beyond the supported"},
        {"YUV4MPEG2 W20000 H20000\n", "beyond the supported"},
        {"YUV4MPEG2 W2 H2 F30:0\n", "invalid ratio 'F30:0'"},
        {"YUV4MPEG2 W2 H2 A1:x\n", "invalid ratio 'A1:x'"},
        {"YUV4MPEG2 W2 H2 Ix\n", "unknown interlacing 'Ix'"},
        {"YUV4MPEG2 W2 H2 C420p10\n", "10-bit samples"},
        {"YUV4MPEG2 W2 H2 C411\n", "unsupported chroma 'C411'"},
        {"YUV4MPEG2 W2 H2 " + std::string(70000, 'X') + "\n", "header line longer than"},
    };
    for (const auto& [bytes, message] : cases) {
        const std::string path = dir / "bad.y4m";
        test::WriteBytes(path, bytes);
        const std::string error = ErrorMessage([&] { TFXY4MReader reader(path); });
        EXPECT_EQ(error.rfind(path + ": ", 0), 0u) << error;
        EXPECT_NE(error.find(message), std::string::npos) << error;
    }
    EXPECT_NE(ErrorMessage([&] { TFXY4MReader(dir / "none.y4m"); }).find("none.y4m: cannot open"),
              std::string::npos);
}

TEST(FXY4M, AStreamCutInsideAFrameReportsItAfterTheCompleteFrames)
{
    TTempDir dir;
    const std::string path = dir / "cut.y4m";
    const TTestImage source(vfI420, 5, 3, 0, 9); // 15 + 6 + 6 bytes
    {
        TFXY4MWriter writer(path, TFXY4MStreamInfo::For(vfI420, 5, 3, {25, 1}));
        for (int i = 0; i < 3; ++i)
            writer.WriteFrame(source.ConstPlanes());
    }
    const std::string whole = test::ReadBytes(path);
    const std::string twoFrames = whole.substr(0, whole.size() - 33);
    for (int cut : {3, 10, 21}) { // inside the FRAME line, the Y plane, the U plane
        test::WriteBytes(path, twoFrames + whole.substr(twoFrames.size(), std::size_t(cut)));
        TFXY4MReader reader(path);
        TTestImage image(vfI420, 5, 3, 2, 0);
        EXPECT_TRUE(reader.ReadFrame(image.Planes()));
        EXPECT_TRUE(reader.ReadFrame(image.Planes()));
        EXPECT_EQ(image.Bytes(), source.Bytes());
        try {
            reader.ReadFrame(image.Planes());
            ADD_FAILURE() << "no error for a frame cut after " << cut << " bytes";
        } catch (const EFXIncompleteFrame& e) {
            EXPECT_NE(std::string(e.what()).find(path + ": frame 3 is incomplete"),
                      std::string::npos);
            EXPECT_EQ(e.BytesRead(), std::max(0, cut - 6));
            EXPECT_EQ(e.BytesExpected(), 27);
        }
        EXPECT_TRUE(image.PaddingIntact());
    }
    test::WriteBytes(path, twoFrames + "FRAMEX\n");
    TFXY4MReader reader(path);
    TTestImage image(vfI420, 5, 3, 0, 0);
    reader.ReadFrame(image.Planes());
    reader.ReadFrame(image.Planes());
    EXPECT_NE(ErrorMessage([&] {
                  reader.ReadFrame(image.Planes());
              }).find("expected 'FRAME' before frame 3, found 'FRAMEX'"),
              std::string::npos);
}

TEST(FXY4M, WriterRefusesFramesAndHeadersItCannotWriteFaithfully)
{
    TTempDir dir;
    const std::string path = dir / "out.y4m";
    auto headerError = [&](TFXY4MStreamInfo info) {
        return ErrorMessage([&] { TFXY4MWriter(path, info); });
    };
    TFXY4MStreamInfo info = TFXY4MStreamInfo::For(vfRGB24, 4, 4, {25, 1});
    EXPECT_NE(headerError(info).find("YUV4MPEG2 cannot carry vfRGB24"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(path)) << "refused before the file is created";
    info.Format = vfI420;
    info.Chroma = "422";
    EXPECT_NE(headerError(info).find("does not describe vfI420"), std::string::npos);
    info.Chroma.clear();
    info.Comments = {"two words"};
    EXPECT_NE(headerError(info).find("may not contain spaces"), std::string::npos);
    info.Comments.clear();
    info.FrameRate = TFXRatio{25, 0};
    EXPECT_NE(headerError(info).find("invalid frame rate F25:0"), std::string::npos);
    info.FrameRate = TFXRatio{25, 1};

    TFXY4MWriter writer(path, info);
    const TTestImage other(vfI420, 6, 4, 0, 1), gray(vfGray8, 4, 4, 0, 1), good(vfI420, 4, 4, 0, 1);
    EXPECT_NE(ErrorMessage([&] {
                  writer.WriteFrame(vfI420, 6, 4, other.ConstPlanes());
              }).find("cannot write a 6x4 vfI420 frame into a stream of 4x4 vfI420 frames"),
              std::string::npos);
    EXPECT_THROW(writer.WriteFrame(vfGray8, 4, 4, gray.ConstPlanes()), EFXError);
    TFXConstPlanes narrow = good.ConstPlanes();
    narrow.Stride[1] = 1;
    EXPECT_NE(ErrorMessage([&] { writer.WriteFrame(narrow); }).find("plane 1 has a stride of 1"),
              std::string::npos);
    TFXConstPlanes missing = good.ConstPlanes();
    missing.Data[2] = nullptr;
    EXPECT_NE(ErrorMessage([&] { writer.WriteFrame(missing); }).find("plane 2"), std::string::npos);
    writer.WriteFrame(vfI420, 4, 4, good.ConstPlanes());
    // The refused frames left no trace: the file holds exactly one frame.
    EXPECT_EQ(test::ReadBytes(path).size(), FXFormatY4MHeader(info, "").size() + 6 + 24);
}

TEST(FXY4M, PipeReadersSeeEachFrameAsSoonAsItIsWritten)
{
    int fds[2];
    ASSERT_EQ(::pipe(fds), 0);
    auto pending = [&] {
        int bytes = 0;
        ::ioctl(fds[0], FIONREAD, &bytes);
        return bytes;
    };
    const TFXY4MStreamInfo info = TFXY4MStreamInfo::For(vfGray8, 8, 4, {25, 1});
    {
        TFXY4MWriter writer(TFXFileStream::FromDescriptor(fds[1], TFXFileMode::Write, "pipe"),
                            info);
        ::close(fds[1]);
        EXPECT_EQ(pending(), int(FXFormatY4MHeader(info, "").size()));
        TFXY4MReader reader(TFXFileStream::FromDescriptor(fds[0], TFXFileMode::Read, "pipe"));
        const TTestImage frame(vfGray8, 8, 4, 0, 5);
        writer.WriteFrame(frame.ConstPlanes());
        EXPECT_EQ(pending(), 6 + 32);
        TTestImage got(vfGray8, 8, 4, 0, 0);
        ASSERT_TRUE(reader.ReadFrame(got.Planes())); // would block if the frame were held back
        EXPECT_EQ(got.Bytes(), frame.Bytes());
    } // the writer's copy of the write end closes: a new reader sees the end of the stream
    EXPECT_EQ(ErrorMessage([&] {
                  TFXY4MReader(TFXFileStream::FromDescriptor(fds[0], TFXFileMode::Read, "pipe"));
              }),
              "pipe: empty stream, expected a YUV4MPEG2 header");
    ::close(fds[0]);
}

TEST(FXY4M, DashMeansStandardInputAndOutput)
{
    const TFXFileStream in("-", TFXFileMode::Read), out("-", TFXFileMode::Write);
    EXPECT_EQ(in.Handle(), stdin);
    EXPECT_EQ(out.Handle(), stdout);
    EXPECT_EQ(in.Name(), "standard input"); // what error messages call it
    EXPECT_EQ(out.Name(), "standard output");
}

} // namespace
} // namespace framix
