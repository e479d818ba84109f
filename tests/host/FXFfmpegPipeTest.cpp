// SPDX-License-Identifier: MIT
// The main job with real ffmpeg at both ends of the pipes: ffmpeg's Y4M through a format change
// and back into ffmpeg, which must read it without a warning and find the same picture.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "bridges/FXY4MReader.h"
#include "framework/FXImageBuffer.h"
#include "tests/host/HostTestSupport.h"

namespace framix {
namespace {

using test::TTempDir;

constexpr int kWidth = 64;
constexpr int kHeight = 48;
constexpr int kFrames = 4;

// Player on standard input -> TFXChangeFormat to `format` -> logger on standard output.
std::string PipeGraph(const std::string& format, const std::string& in = "-",
                      const std::string& out = "-")
{
    return "object G: TFXGraph\n  object P: TFXFilePlayer\n    FileName = '" + in +
           "'\n  end\n  object C: TFXChangeFormat\n    Format = " + format +
           "\n    InputPin.SourcePin = G.P.OutputPin\n  end\n  object L: TFXFileLogger\n"
           "    FileName = '" +
           out + "'\n    InputPin.SourcePin = G.C.OutputPin\n  end\nend\n";
}

class FXFfmpegPipe : public testing::Test {
protected:
    void SetUp() override
    {
        if (!test::HaveFfmpeg())
            GTEST_SKIP() << "ffmpeg is not installed: the pipe tests with ffmpeg were not run";
    }

    // Runs `script`; ffmpeg's own messages (warnings included) go to ffmpeg.err.
    void Run(const std::string& script)
    {
        const auto r = test::RunShell(FDir, script);
        ASSERT_EQ(r.Status, 0) << script << "\n" << r.Err << test::ReadBytes(FDir / "ffmpeg.err");
        EXPECT_EQ(r.Err, "");
        EXPECT_EQ(test::ReadBytes(FDir / "ffmpeg.err"), "") << "ffmpeg warned about our output";
    }

    static std::string Ffmpeg(const std::string& args)
    {
        return "ffmpeg -nostdin -hide_banner -v warning -y " + args + " 2>>ffmpeg.err";
    }

    static std::string TestSource(const std::string& pixFmt)
    {
        return "-f lavfi -i testsrc2=size=" + std::to_string(kWidth) + "x" +
               std::to_string(kHeight) + ":rate=25 -frames:v " + std::to_string(kFrames) +
               " -pix_fmt " + pixFmt;
    }

    TTempDir FDir;
};

struct TRoundTrip {
    std::array<int, 3> Worst{}; // largest difference per plane over the in-gamut samples
    int InGamut = 0;            // samples whose YUV code is an RGB colour
    int Differences = 0;        // samples unlike our own conversion of the input
};

// Compares what ffmpeg decoded (4:4:4 planes) with ffmpeg's input, its chroma widened to 4:4:4:
// over the samples whose YUV code stands for an RGB colour (the documented YUV -> RGB formula
// does not clamp) the round trip is bounded; the others clamp in RGB, as they must. Every sample
// must also equal this library's own conversion of the input through vfRGB24.
TRoundTrip Compare(const std::string& inY4M, const std::string& outRaw)
{
    TRoundTrip result;
    TFXY4MReader reader(inY4M);
    const std::string raw = test::ReadBytes(outRaw);
    const std::size_t frameBytes = std::size_t(kWidth) * kHeight * 3;
    EXPECT_EQ(raw.size(), frameBytes * kFrames);
    for (int f = 0; f < kFrames && raw.size() >= frameBytes * std::size_t(f + 1); ++f) {
        FXImageBufferPtr input = new TFXImageBuffer(kWidth, kHeight, reader.Info().Format);
        EXPECT_TRUE(reader.ReadFrame(input->GetWritePlanes()));
        FXImageBufferPtr ours = new TFXImageBuffer(*input);
        ours->ConvertFormat(vfRGB24);
        ours->ConvertFormat(vfI444);
        input->ConvertFormat(vfI444); // chroma replicated
        const TFXConstPlanes in = input->GetReadPlanes();
        const TFXConstPlanes own = ours->GetReadPlanes();
        auto sample = [&](int p, int x, int y) {
            return int(std::uint8_t(
                raw[f * frameBytes + std::size_t(p * kHeight + y) * kWidth + std::size_t(x)]));
        };
        for (int y = 0; y < kHeight; ++y)
            for (int x = 0; x < kWidth; ++x) {
                const int Y = in.Data[0][y * in.Stride[0] + x] - 16;
                const int U = in.Data[1][y * in.Stride[1] + x] - 128;
                const int V = in.Data[2][y * in.Stride[2] + x] - 128;
                const int rgb[3] = {(9539 * Y + 13075 * V + 4096) >> 13,
                                    (9539 * Y - 3209 * U - 6660 * V + 4096) >> 13,
                                    (9539 * Y + 16525 * U + 4096) >> 13};
                const bool inGamut =
                    std::all_of(rgb, rgb + 3, [](int c) { return c >= 0 && c <= 255; });
                result.InGamut += inGamut;
                for (int p = 0; p < 3; ++p) {
                    const int theirs = sample(p, x, y);
                    result.Differences += theirs != own.Data[p][y * own.Stride[p] + x];
                    if (inGamut)
                        result.Worst[std::size_t(p)] =
                            std::max(result.Worst[std::size_t(p)],
                                     std::abs(theirs - in.Data[p][y * in.Stride[p] + x]));
                }
            }
    }
    return result;
}

TEST_F(FXFfmpegPipe, ColourThroughRGBComesBackWithinTheRoundTripBound)
{
    for (const char* pixFmt : {"yuv420p", "yuv444p"}) {
        SCOPED_TRACE(pixFmt);
        test::WriteBytes(FDir / "rgb.dfm", PipeGraph("vfRGB24"));
        Run(Ffmpeg(TestSource(pixFmt) + " -f yuv4mpegpipe in.y4m"));
        Run(Ffmpeg(TestSource(pixFmt) + " -f yuv4mpegpipe -") + " | " + test::Framix() +
            " run rgb.dfm | " +
            Ffmpeg("-f yuv4mpegpipe -i - -f rawvideo -pix_fmt yuv444p out.raw"));
        // The logger writes RGB frames as 4:4:4. YUV -> RGB -> YUV moves a code that stands for
        // an RGB colour by at most 2 (docs/formats.md); testsrc2's saturated colours are
        // partly outside RGB, so a good share, not all, of the samples count.
        const TRoundTrip r = Compare(FDir / "in.y4m", FDir / "out.raw");
        EXPECT_GT(r.InGamut, kWidth * kHeight * kFrames / 3);
        EXPECT_LE(r.Worst[0], 2);
        EXPECT_LE(r.Worst[1], 2);
        EXPECT_LE(r.Worst[2], 2);
        EXPECT_EQ(r.Differences, 0) << "the pipe changed what the conversions give";
    }
}

TEST_F(FXFfmpegPipe, GreyIsExactThroughSixteenBits)
{
    test::WriteBytes(FDir / "grey16.dfm", PipeGraph("vfGray16"));
    Run(Ffmpeg(TestSource("gray") + " -f rawvideo in.raw"));
    Run(Ffmpeg(TestSource("gray") + " -f yuv4mpegpipe -") + " | " + test::Framix() +
        " run grey16.dfm | " +
        Ffmpeg("-f yuv4mpegpipe -i - -f rawvideo -pix_fmt gray16le out.raw"));
    const std::string in = test::ReadBytes(FDir / "in.raw");
    const std::string out = test::ReadBytes(FDir / "out.raw");
    ASSERT_EQ(out.size(), 2 * in.size());
    for (std::size_t i = 0; i < in.size(); ++i)
        ASSERT_EQ(std::uint8_t(out[2 * i]) | std::uint8_t(out[2 * i + 1]) << 8,
                  std::uint8_t(in[i]) * 257)
            << i;
}

TEST_F(FXFfmpegPipe, PamSequencesAreExact)
{
    test::WriteBytes(FDir / "pam.dfm", PipeGraph("vfRGB32", "in_%03d.pam", "out_%03d.pam"));
    Run(Ffmpeg(TestSource("rgba") + " in_%03d.pam"));
    Run(test::Framix() + " run pam.dfm");
    Run(Ffmpeg("-i in_%03d.pam -f rawvideo -pix_fmt rgba in.raw"));
    Run(Ffmpeg("-i out_%03d.pam -f rawvideo -pix_fmt rgba out.raw"));
    EXPECT_EQ(test::ReadBytes(FDir / "out.raw").size(),
              std::size_t(kWidth) * kHeight * 4 * kFrames);
    EXPECT_TRUE(test::ReadBytes(FDir / "out.raw") == test::ReadBytes(FDir / "in.raw"));
}

} // namespace
} // namespace framix
