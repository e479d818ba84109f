// SPDX-License-Identifier: MIT
// The file player and file logger in graphs: lossless paths, stream parameters, format rules,
// and broken, lying or truncated input that must leave every earlier frame intact.
#include <gtest/gtest.h>

#include "bridges/FXFileLogger.h"
#include "bridges/FXFilePlayer.h"
#include "bridges/FXImageSequenceReader.h"
#include "bridges/FXPNGFile.h"
#include "bridges/FXPNMWriter.h"
#include "bridges/FXY4MReader.h"
#include "bridges/FXY4MWriter.h"
#include "storage/FXGraphLoader.h"
#include "tests/bridges/BridgeTestSupport.h"
#include "tests/support/FXTestHarness.h"

namespace framix {
namespace {

using test::ErrorMessage;
using test::TTempDir;
using test::TTestImage;

// Player -> logger, loaded from a stored form as a user would write it.
std::unique_ptr<TFXGraph> Copier(const std::string& in, const std::string& out,
                                 const std::string& playerExtra = "")
{
    return FXLoadGraphText("object G: TFXGraph\n  object Player: TFXFilePlayer\n    FileName = '" +
                           in + "'\n" + playerExtra +
                           "  end\n  object Logger: TFXFileLogger\n    FileName = '" + out +
                           "'\n    InputPin.SourcePin = G.Player.OutputPin\n  end\nend\n");
}

// Pumps until the sources end; returns the frames pumped.
int RunGraph(TFXGraph& graph)
{
    graph.Start();
    int frames = 0;
    while (graph.Pump())
        ++frames;
    graph.Stop();
    return frames;
}

std::string FirstLine(const std::string& path)
{
    const std::string bytes = test::ReadBytes(path);
    return bytes.substr(0, bytes.find('\n'));
}

std::vector<std::vector<std::uint8_t>> Y4MFrames(const std::string& path)
{
    TFXY4MReader reader(path);
    std::vector<std::vector<std::uint8_t>> frames;
    for (;;) {
        TTestImage image(reader.Info().Format, reader.Info().Width, reader.Info().Height);
        if (!reader.ReadFrame(image.Planes()))
            return frames;
        frames.push_back(image.Bytes());
    }
}

// Writes `count` random frames with the given header; returns their bytes.
std::vector<std::vector<std::uint8_t>> WriteY4M(const std::string& path,
                                                const TFXY4MStreamInfo& info, int count)
{
    std::vector<std::vector<std::uint8_t>> frames;
    TFXY4MWriter writer(path, info);
    for (int i = 0; i < count; ++i) {
        TTestImage image(info.Format, info.Width, info.Height, 5, std::uint32_t(i + 11));
        writer.WriteFrame(image.ConstPlanes());
        frames.push_back(image.Bytes());
    }
    return frames;
}

class FXFilePlayerY4M : public testing::TestWithParam<const char*> {};

TEST_P(FXFilePlayerY4M, CopiesEveryChromaLayoutByteExactWithRateInterlacingAndAspect)
{
    TTempDir dir;
    TFXY4MStreamInfo info = FXParseY4MHeader(
        std::string("YUV4MPEG2 W7 H5 F30000:1001 It A128:117 C") + GetParam(), "x");
    const auto frames = WriteY4M(dir / "in.y4m", info, 3);
    const auto graph = Copier(dir / "in.y4m", dir / "out.y4m");
    EXPECT_EQ(RunGraph(*graph), 3);
    EXPECT_EQ(Y4MFrames(dir / "out.y4m"), frames);
    const TFXY4MStreamInfo out = TFXY4MReader(dir / "out.y4m").Info();
    EXPECT_EQ(out.Format, info.Format);
    EXPECT_EQ(out.FrameRate, (TFXRatio{30000, 1001}));
    EXPECT_EQ(out.Interlacing, 't');
    EXPECT_EQ(out.PixelAspect, (TFXRatio{128, 117}));
}

INSTANTIATE_TEST_SUITE_P(Chroma, FXFilePlayerY4M,
                         testing::Values("420jpeg", "420mpeg2", "420paldv", "422", "444",
                                         "444alpha", "mono", "mono16"));

TEST(FXFilePlayer, AnnouncesTheFilesStreamAndStampsFrames)
{
    TTempDir dir;
    WriteY4M(dir / "in.y4m", FXParseY4MHeader("YUV4MPEG2 W4 H2 F50:1 Ib A0:0 C422", "x"), 2);
    TFXGraph graph;
    auto* player = new TFXFilePlayer(&graph);
    player->SetFileName(dir / "in.y4m");
    struct TProbe : TKTComponent {
        TFXPXImageSinkPin Pin;
        std::vector<TPXStartFrameOperation> Starts;
        std::vector<std::int64_t> Times;
        explicit TProbe(TKTComponent* o)
            : TKTComponent(o), Pin(*this, "InputPin", Lock(), [this](auto&, auto, auto& op, auto) {
                  if (auto* s = op.template As<TPXStartFrameOperation>())
                      Starts.push_back(*s);
                  if (auto* f = op.template As<TPXSuppliedBufferOperation>())
                      Times.push_back(f->Buffer->GetTimeStamp().GetBegin());
                  return true;
              })
        {
        }
    };
    auto* probe = new TProbe(&graph);
    probe->Pin.SetSourcePin(&player->GetImageOutputPin());
    EXPECT_EQ(RunGraph(graph), 2);
    ASSERT_EQ(probe->Starts.size(), 1u);
    const TPXStartFrameOperation& s = probe->Starts[0];
    EXPECT_EQ(s.Width, 4);
    EXPECT_EQ(s.Height, 2);
    EXPECT_EQ(s.Format, vfI422);
    EXPECT_EQ(s.FrameDelay, 200000);
    EXPECT_EQ(s.Reserved, kFXStartFlagBottomFieldFirst);
    EXPECT_EQ(s.AspectWidth, 0u); // unknown aspect stays unknown
    EXPECT_EQ(probe->Times, (std::vector<std::int64_t>{0, 200000}));
    EXPECT_EQ(player->GetFramesPlayed(), 2);
}

TEST(FXFilePlayer, ImagesAreLosslessInEveryProcessedFormatAndPlayAtFrameRate)
{
    TTempDir dir;
    for (TFXVideoFormat format : {vfGray8, vfGray16, vfRGB24, vfRGB32}) {
        SCOPED_TRACE(FXVideoFormatName(format));
        const char* ext = format == vfRGB32 ? "pam" : format == vfRGB24 ? "ppm" : "pgm";
        std::vector<std::vector<std::uint8_t>> frames;
        for (int i = 1; i <= 3; ++i) {
            TTestImage image(format, 9, 4, 3, std::uint32_t(i));
            TFXPNMWriter(dir / ("in_" + std::to_string(i) + "." + ext))
                .WriteFrame(format, 9, 4, image.ConstPlanes());
            frames.push_back(image.Bytes());
        }
        const std::string out = dir / (std::string("out_%03d.") + ext);
        const auto graph = Copier(dir / (std::string("in_%d.") + ext), out, "    FrameRate = 30\n");
        EXPECT_EQ(RunGraph(*graph), 3);
        TFXImageSequenceReader back(out);
        EXPECT_EQ(back.Format(), format);
        for (const auto& expected : frames) {
            TTestImage got(format, 9, 4);
            ASSERT_TRUE(back.ReadFrame(got.Planes()));
            EXPECT_EQ(got.Bytes(), expected);
        }
        // Into a Y4M file, the player's rate becomes the header's.
        const auto toY4M =
            Copier(dir / (std::string("in_%d.") + ext), dir / "seq.y4m", "    FrameRate = 30\n");
        RunGraph(*toY4M);
        EXPECT_NE(FirstLine(dir / "seq.y4m").find(" F30:1 "), std::string::npos);
    }
}

TEST(FXFileLogger, ChoosesTheY4MLayoutFromTheFirstFrame)
{
    const std::pair<TFXVideoFormat, TFXVideoFormat> cases[] = {
        {vfI420, vfI420},   {vfYV12, vfI420},     {vfNV12, vfI420},  {vfYUY2, vfI422},
        {vfUYVY, vfI422},   {vfI422, vfI422},     {vfI444, vfI444},  {vfYUVA444, vfYUVA444},
        {vfGray8, vfGray8}, {vfGray16, vfGray16}, {vfRGB24, vfI444}, {vfRGB32, vfI444},
        {vfRGB565, vfI444}, {vfRGBA64, vfI444},
    };
    TTempDir dir;
    for (auto [in, expected] : cases) {
        SCOPED_TRACE(FXVideoFormatName(in));
        EXPECT_EQ(TFXFileLogger::Y4MFormatFor(in), expected);
    }
    // A stream of RGB frames, written as 4:4:4 with the announced rate.
    TFXGraph graph;
    auto& source = *new test::TFXTestSource(&graph);
    auto* logger = new TFXFileLogger(&graph);
    logger->SetFileName(dir / "rgb.y4m");
    logger->GetImageInputPin().SetSourcePin(&source.Output());
    source.Announce(6, 4, vfRGB24, 400000);
    source.Send(test::FXRandomFrame(6, 4, vfRGB24, 3));
    source.Stop();
    EXPECT_EQ(FirstLine(dir / "rgb.y4m"), "YUV4MPEG2 W6 H4 F25:1 Ip C444");
    EXPECT_EQ(Y4MFrames(dir / "rgb.y4m").size(), 1u);
}

TEST(FXFileLogger, ASizeOrLayoutChangeInAY4MStreamIsAnErrorAndEarlierFramesStayIntact)
{
    TTempDir dir;
    TFXGraph graph;
    graph.SetName("G");
    auto& source = *new test::TFXTestSource(&graph);
    auto* logger = new TFXFileLogger(&graph);
    logger->SetName("Logger");
    logger->SetFileName(dir / "out.y4m");
    logger->GetImageInputPin().SetSourcePin(&source.Output());
    source.Announce(4, 2, vfI420);
    const FXImageBufferPtr first = test::FXRandomFrame(4, 2, vfI420, 1);
    source.Send(first);
    source.Send(test::FXRandomFrame(4, 2, vfYV12, 2)); // another format, the same layout
    const std::string resized =
        ErrorMessage([&] { source.Send(test::FXRandomFrame(6, 2, vfI420, 3)); });
    EXPECT_NE(resized.find("G.Logger: " + (dir / "out.y4m") +
                           ": a Y4M stream holds frames of one size and layout: it was started "
                           "with 4x2 vfI420 frames, frame 3 is 6x2 vfI420"),
              std::string::npos)
        << resized;
    const std::string regray =
        ErrorMessage([&] { source.Send(test::FXRandomFrame(4, 2, vfGray8, 4)); });
    EXPECT_NE(regray.find("frame 3 is 4x2 vfGray8"), std::string::npos) << regray;
    source.Stop();
    const auto frames = Y4MFrames(dir / "out.y4m");
    ASSERT_EQ(frames.size(), 2u);
    TTestImage expected(vfI420, 4, 2);
    for (int p = 0; p < 3; ++p) {
        const TFXPlaneGeometry g = FXPlaneGeometry(vfI420, 4, 2, p);
        for (int y = 0; y < g.Rows; ++y)
            std::memcpy(expected.Row(p, y),
                        first->GetReadPlanes().Data[p] + y * first->GetReadPlanes().Stride[p],
                        std::size_t(g.RowBytes));
    }
    EXPECT_EQ(frames[0], expected.Bytes());
}

TEST(FXFileLogger, ImagesTakeTheTypeOfTheFrameAndPNGKeepsTheLatestFrame)
{
    TTempDir dir;
    TFXGraph graph;
    auto& source = *new test::TFXTestSource(&graph);
    auto* pnm = new TFXFileLogger(&graph);
    pnm->SetFileName(dir / "all.pnm");
    pnm->GetImageInputPin().SetSourcePin(&source.Output());
    auto* png = new TFXFileLogger(&graph);
    png->SetFileName(dir / "still.png");
    if (FXPNGAvailable())
        png->GetImageInputPin().SetSourcePin(&source.Output());
    source.Announce(5, 3, vfI420);
    source.Send(test::FXRandomFrame(5, 3, vfI420, 1));
    const FXImageBufferPtr last = test::FXRandomFrame(5, 3, vfYUVA444, 2);
    source.Send(last);
    source.Stop();
    TFXImageSequenceReader all(dir / "all.pnm"); // two images in one stream
    EXPECT_EQ(all.Format(), vfRGB24);
    TTestImage image(vfRGB24, 5, 3);
    EXPECT_TRUE(all.ReadFrame(image.Planes()));
    EXPECT_THROW(all.ReadFrame(image.Planes()), EFXError); // the second is RGB with alpha
    if (!FXPNGAvailable())
        GTEST_SKIP() << "built without libpng";
    const TFXPNGImage still = FXReadPNG(dir / "still.png");
    EXPECT_EQ(still.Format, vfRGB32);
    FXImageBufferPtr expected = new TFXImageBuffer(*last);
    expected->ConvertFormat(vfRGB32);
    const FXImageBufferPtr read =
        new TFXImageBuffer(still.Pixels.data(), 5, 3, vfRGB32, still.Stride);
    EXPECT_TRUE(test::FXSamePixels(*expected, *read));
}

// Bad input files: each must give a clear error naming the player and the file, never a crash.
struct TBadInput {
    const char* Name;
    const char* FileName;
    std::string Bytes; // written to FileName unless empty
    const char* Message;
    int FramesBefore; // complete frames that must reach the logger first
};

class FXFilePlayerBadInput : public testing::TestWithParam<TBadInput> {};

std::string Y4MFrame(int bytes)
{
    return "FRAME\n" + std::string(std::size_t(bytes), '\x40');
}

TEST_P(FXFilePlayerBadInput, ReportsAClearErrorAfterEveryCompleteFrame)
{
    const TBadInput& c = GetParam();
    TTempDir dir;
    const std::string in = dir / c.FileName;
    if (in.back() == '/')
        std::filesystem::create_directories(in);
    else if (!c.Bytes.empty())
        test::WriteBytes(in, c.Bytes);
    const auto graph = Copier(in, dir / "out.y4m");
    const std::string message = ErrorMessage([&] {
        graph->Start();
        while (graph->Pump()) {
        }
    });
    graph->Stop();
    EXPECT_NE(message.find("G.Player: "), std::string::npos) << message;
    EXPECT_NE(message.find(c.Message), std::string::npos) << message;
    if (c.FramesBefore > 0) {
        const auto frames = Y4MFrames(dir / "out.y4m");
        ASSERT_EQ(int(frames.size()), c.FramesBefore);
        for (const auto& f : frames)
            EXPECT_EQ(f, std::vector<std::uint8_t>(f.size(), 0x40));
    }
}

const TBadInput kBadInputs[] = {
    {"Missing", "none.y4m", "", "none.y4m: cannot open (No such file or directory)", 0},
    {"MissingSequence", "none_%03d.ppm", "", "no image of the sequence found", 0},
    {"Directory", "dir.y4m/", "", "Is a directory", 0},
    {"WrongSignature", "bad.y4m", "YUV4MPEG3 W2 H2\n", "YUV4MPEG2", 0},
    {"AbsurdSize", "huge.y4m", "YUV4MPEG2 W100000 H100000 F25:1\nFRAME\n", "100000", 0},
    {"UnknownChroma", "c.y4m", "YUV4MPEG2 W2 H2 C411\n", "unsupported chroma", 0},
    {"ShortFrame", "short.y4m",
     "YUV4MPEG2 W4 H2 F25:1 C444\n" + Y4MFrame(24) + Y4MFrame(24) + Y4MFrame(10),
     "frame 3 is incomplete: the stream ends after 10 of its 24 bytes", 2},
    {"CutInFrameLine", "cut.y4m", "YUV4MPEG2 W4 H2 F25:1 C444\n" + Y4MFrame(24) + "FRA",
     "frame 2 is incomplete", 1},
    {"GarbageFrameLine", "junk.y4m", "YUV4MPEG2 W4 H2 F25:1 C444\n" + Y4MFrame(24) + "JUNK\n",
     "expected 'FRAME' before frame 2", 1},
    {"PNMWrongHeader", "bad.ppm", "P9\n2 2\n255\n", "bad.ppm", 0},
    {"PNMAbsurdSize", "huge.pgm", "P5\n99999 99999\n255\n", "99999", 0},
    {"PNMTruncated", "short.ppm", "P6\n4 4\n255\n" + std::string(20, 'x'), "short.ppm", 0},
};

INSTANTIATE_TEST_SUITE_P(Files, FXFilePlayerBadInput, testing::ValuesIn(kBadInputs),
                         [](const auto& info) { return std::string(info.param.Name); });

TEST(FXFilePlayer, AnEmptyFileNameIsNamedInTheError)
{
    TFXGraph graph;
    graph.SetName("G");
    auto* player = new TFXFilePlayer(&graph);
    player->SetName("P");
    EXPECT_NE(ErrorMessage([&] { graph.Start(); }).find("G.P: FileName is empty"),
              std::string::npos);
}

} // namespace
} // namespace framix
