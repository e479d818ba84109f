// SPDX-License-Identifier: MIT
// The file bridges against ffmpeg, the tool users pair them with: each side reads the other's
// files and both agree on every pixel byte. Skipped where ffmpeg is not installed.
#include <gtest/gtest.h>

#include <cstdlib>

#include "bridges/FXImageSequenceReader.h"
#include "bridges/FXPNGFile.h"
#include "bridges/FXY4MReader.h"
#include "bridges/FXY4MWriter.h"
#include "tests/bridges/BridgeTestSupport.h"

namespace framix {
namespace {

using test::TTempDir;
using test::TTestImage;

class FXFfmpegInterop : public testing::Test {
protected:
    void SetUp() override
    {
        if (std::system("command -v ffmpeg >/dev/null 2>&1") != 0)
            GTEST_SKIP() << "ffmpeg is not installed";
    }

    static void Run(const std::string& arguments)
    {
        const std::string command = "ffmpeg -nostdin -v error -y " + arguments;
        ASSERT_EQ(std::system(command.c_str()), 0) << command;
    }

    // Three 33x17 frames of ffmpeg's test pattern (odd sizes need the scaler: the pattern
    // source itself rounds them down to even).
    static std::string Source()
    {
        return "-f lavfi -i testsrc2=size=34x18:rate=25 -vf scale=33:17 -frames:v 3 ";
    }

    TTempDir FDir;
};

struct TPixFmt {
    const char* Name;
    TFXVideoFormat Format;
};

TEST_F(FXFfmpegInterop, Y4MFromFfmpegReadsAsTheSameBytesAndOursReadsBackInFfmpeg)
{
    const TPixFmt formats[] = {{"yuv420p", vfI420},    {"yuv422p", vfI422},
                               {"yuv444p", vfI444},    {"gray", vfGray8},
                               {"gray16le", vfGray16}, {"yuva444p", vfYUVA444}};
    for (const TPixFmt& f : formats) {
        SCOPED_TRACE(f.Name);
        const std::string y4m = FDir / "in.y4m", raw = FDir / "in.raw";
        Run(Source() + "-pix_fmt " + f.Name + " -strict -1 -f yuv4mpegpipe " + y4m);
        Run("-i " + y4m + " -f rawvideo -pix_fmt " + f.Name + " " + raw);
        std::vector<std::uint8_t> ours;
        std::vector<TTestImage> frames;
        {
            TFXY4MReader reader(y4m);
            ASSERT_EQ(reader.Info().Format, f.Format);
            EXPECT_EQ(reader.Info().FramePeriod(), 400000);
            for (;;) {
                TTestImage image(f.Format, 33, 17, 3, 0);
                if (!reader.ReadFrame(image.Planes()))
                    break;
                const auto pixels = image.Bytes();
                ours.insert(ours.end(), pixels.begin(), pixels.end());
                frames.push_back(std::move(image));
            }
        }
        EXPECT_EQ(frames.size(), 3u);
        const std::string theirs = test::ReadBytes(raw);
        EXPECT_TRUE(ours == std::vector<std::uint8_t>(theirs.begin(), theirs.end()));

        const std::string back = FDir / "back.y4m", backRaw = FDir / "back.raw";
        {
            TFXY4MWriter writer(back, TFXY4MStreamInfo::For(f.Format, 33, 17, {25, 1}));
            for (const TTestImage& frame : frames)
                writer.WriteFrame(frame.ConstPlanes());
        }
        Run("-i " + back + " -f rawvideo -pix_fmt " + f.Name + " " + backRaw);
        EXPECT_EQ(test::ReadBytes(backRaw), theirs);
    }
}

TEST_F(FXFfmpegInterop, ImageSequencesFromFfmpegReadAsTheSameBytes)
{
    const struct {
        const char* Extension;
        const char* FilePixFmt;
        const char* MemoryPixFmt;
        TFXVideoFormat Format;
    } cases[] = {
        {"ppm", "rgb24", "bgr24", vfRGB24},        {"pgm", "gray", "gray", vfGray8},
        {"pgm", "gray16be", "gray16le", vfGray16}, {"pam", "rgba", "bgra", vfRGB32},
        {"ppm", "rgb48be", "bgr48le", vfRGB48},    {"png", "rgba", "bgra", vfRGB32},
        {"png", "gray16be", "gray16le", vfGray16},
    };
    for (const auto& c : cases) {
        if (std::string(c.Extension) == "png" && !FXPNGAvailable())
            continue;
        SCOPED_TRACE(std::string(c.Extension) + " " + c.FilePixFmt);
        const std::string pattern = FDir / (std::string("f_%04d.") + c.Extension);
        const std::string raw = FDir / "f.raw";
        Run(Source() + "-pix_fmt " + c.FilePixFmt + " " + pattern);
        Run("-i " + pattern + " -f rawvideo -pix_fmt " + c.MemoryPixFmt + " " + raw);
        TFXImageSequenceReader reader(pattern);
        ASSERT_EQ(reader.Format(), c.Format);
        std::vector<std::uint8_t> ours;
        for (;;) {
            TTestImage image(c.Format, 33, 17, 1, 0);
            if (!reader.ReadFrame(image.Planes()))
                break;
            const auto pixels = image.Bytes();
            ours.insert(ours.end(), pixels.begin(), pixels.end());
        }
        EXPECT_EQ(reader.FrameCount(), 3);
        const std::string theirs = test::ReadBytes(raw);
        EXPECT_TRUE(ours == std::vector<std::uint8_t>(theirs.begin(), theirs.end()));
        for (int i = 1; i <= 3; ++i)
            std::filesystem::remove(TFXSequencePattern(pattern).FileName(i));
    }
}

} // namespace
} // namespace framix
