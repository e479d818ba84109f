// SPDX-License-Identifier: MIT
// The `framix` program: its commands, exit codes, single error lines, pipes and signals.
#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <iterator>
#include <spawn.h>
#include <sstream>
#include <sys/wait.h>
#include <thread>

#include "bridges/FXPNGFile.h"
#include "bridges/FXY4MReader.h"
#include "bridges/FXY4MWriter.h"
#include "framework/properties/FXPalette.h"
#include "tests/host/HostTestSupport.h"

extern char** environ;

namespace framix {
namespace {

using test::Framix;
using test::RunShell;
using test::TTempDir;
using test::TTestImage;

// player '-' -> logger '-': a byte-exact copy from standard input to standard output.
constexpr const char* kCopyGraph = "object Graph1: TFXGraph\n"
                                   "  object Player: TFXFilePlayer\n    FileName = '-'\n  end\n"
                                   "  object Logger: TFXFileLogger\n    FileName = '-'\n"
                                   "    InputPin.SourcePin = Graph1.Player.OutputPin\n  end\nend\n";

// A pattern with noise, logged to pattern.y4m.
constexpr const char* kNoiseGraph =
    "object Graph1: TFXGraph\n"
    "  object Pattern: TFXTestPatternGen\n    ImageSize.Width = 32\n"
    "    ImageSize.Height = 16\n    Noise = 30\n  end\n"
    "  object Logger: TFXFileLogger\n    FileName = 'pattern.y4m'\n"
    "    InputPin.SourcePin = Graph1.Pattern.OutputPin\n  end\nend\n";

void WriteClip(const std::string& path, int frames, int width = 16, int height = 8)
{
    TFXY4MWriter writer(path, TFXY4MStreamInfo::For(vfI420, width, height, {25, 1}));
    for (int i = 0; i < frames; ++i)
        writer.WriteFrame(TTestImage(vfI420, width, height, 0, std::uint32_t(i + 1)).ConstPlanes());
}

int LineCount(const std::string& text)
{
    return int(std::count(text.begin(), text.end(), '\n'));
}

// Every failure ends with exactly one line on standard error, and nothing on standard output.
void ExpectOneErrorLine(const test::TShellResult& r, int status, const std::string& part)
{
    EXPECT_EQ(r.Status, status) << r.Err;
    EXPECT_EQ(LineCount(r.Err), 1) << r.Err;
    EXPECT_EQ(r.Err.rfind("framix: ", 0), 0u) << r.Err;
    EXPECT_NE(r.Err.find(part), std::string::npos) << r.Err;
    EXPECT_EQ(r.Out, "");
}

TEST(FXHost, BadCommandLinesExitWithStatusTwoAndOneLine)
{
    TTempDir dir;
    const std::pair<const char*, const char*> cases[] = {
        {"", "no command given (see framix --help)"},
        {"frobnicate", "unknown command 'frobnicate'"},
        {"run", "expected one stored graph"},
        {"run a.dfm --frames", "--frames needs a value"},
        {"run a.dfm --frames=-3", "--frames needs a whole number, got '-3'"},
        {"run a.dfm --seed x", "--seed needs a whole number"},
        {"run a.dfm --fast", "unknown option '--fast'"},
        {"run a.dfm --stats=1", "--stats takes no value"},
        {"save a.dfm", "expected two files"},
        {"props", "expected one class name"},
        {"demo out.y4m", "demo takes no file names"},
    };
    for (const auto& [args, message] : cases)
        ExpectOneErrorLine(RunShell(dir, Framix() + " " + args), 2, message);
    const auto help = RunShell(dir, Framix() + " --help");
    EXPECT_EQ(help.Status, 0);
    EXPECT_NE(help.Out.find("run GRAPH.dfm [--frames N] [--seed N] [--realtime] [--stats]"),
              std::string::npos);
}

TEST(FXHost, ListNamesEveryPaletteClassAndPropsDescribesOne)
{
    TTempDir dir;
    const auto list = RunShell(dir, Framix() + " list");
    EXPECT_EQ(list.Status, 0);
    EXPECT_EQ(LineCount(list.Out), int(TFXPalette::Global().Entries().size()));
    for (const TFXPaletteEntry& e : TFXPalette::Global().Entries())
        EXPECT_NE(list.Out.find(std::string(e.ClassName) + "  (Framix"), std::string::npos);

    const auto props = RunShell(dir, Framix() + " props TFXFilePlayer");
    EXPECT_EQ(props.Status, 0) << props.Err;
    EXPECT_NE(props.Out.find("FrameRate  Double        25       0.001 .. 1000"), std::string::npos)
        << props.Out;
    EXPECT_NE(props.Out.find("OutputPin  Pin (output)"), std::string::npos) << props.Out;
    const auto logger = RunShell(dir, Framix() + " props TFXFileLogger");
    EXPECT_NE(logger.Out.find("Threading.QueueSize"), std::string::npos) << logger.Out;
    EXPECT_NE(logger.Out.find("values: tpIdle tpLowest"), std::string::npos) << logger.Out;

    ExpectOneErrorLine(RunShell(dir, Framix() + " props TFXFilePlayr"), 1,
                       "Unknown component class 'TFXFilePlayr' (did you mean 'TFXFilePlayer'?)");
}

TEST(FXHost, SaveWritesTheNormalFormAndLoadErrorsPointAtTheText)
{
    TTempDir dir;
    // Any case, a link written at one end only, a value equal to its default.
    test::WriteBytes(dir / "in.dfm", "OBJECT g: TForm1\n object p: TFXFilePlayer\n"
                                     "  filename = 'a.y4m'  FrameRate = 25\n"
                                     "  OUTPUTPIN.SINKPINS = (G.L.InputPin)\n end\n"
                                     " object L: TFXFileLogger FileName = 'b.y4m' end\nend");
    const auto saved = RunShell(dir, Framix() + " save in.dfm out.dfm");
    EXPECT_EQ(saved.Status, 0) << saved.Err;
    EXPECT_EQ(saved.Out + saved.Err, "");
    EXPECT_EQ(test::ReadBytes(dir / "out.dfm"),
              "object g: TFXGraph\n"
              "  object p: TFXFilePlayer\n    FileName = 'a.y4m'\n"
              "    OutputPin.SinkPins = (\n      g.L.InputPin)\n  end\n"
              "  object L: TFXFileLogger\n    FileName = 'b.y4m'\n"
              "    InputPin.SourcePin = g.p.OutputPin\n  end\nend\n");

    test::WriteBytes(dir / "bad.dfm", "object G: TFXGraph\n  object P: TFXFilePlayer\n"
                                      "    FrameRate = 'fast'\n  end\nend\n");
    ExpectOneErrorLine(RunShell(dir, Framix() + " save bad.dfm out2.dfm"), 1,
                       "bad.dfm:3:17: G.P: property 'FrameRate' expects a number, found string");
    EXPECT_FALSE(std::filesystem::exists(dir / "out2.dfm"));
    ExpectOneErrorLine(RunShell(dir, Framix() + " run missing.dfm"), 1, "missing.dfm");
    test::WriteBytes(dir / "nosource.dfm",
                     "object G: TFXGraph\n  object L: TFXFileLogger\n  end\nend\n");
    ExpectOneErrorLine(RunShell(dir, Framix() + " run nosource.dfm"), 1,
                       "nosource.dfm: the graph has no source to run");
}

TEST(FXHost, RunCopiesAStreamThroughPipesAndWritesNothingElseToStandardOutput)
{
    TTempDir dir;
    test::WriteBytes(dir / "copy.dfm", kCopyGraph);
    WriteClip(dir / "in.y4m", 5);
    const auto all = RunShell(dir, Framix() + " run copy.dfm < in.y4m > out.y4m");
    EXPECT_EQ(all.Status, 0) << all.Err;
    EXPECT_EQ(all.Err, ""); // no progress line when standard error is not a terminal
    EXPECT_EQ(test::ReadBytes(dir / "out.y4m"), test::ReadBytes(dir / "in.y4m"));

    const auto two =
        RunShell(dir, "cat in.y4m | " + Framix() + " run copy.dfm --frames 2 | cat > two.y4m");
    EXPECT_EQ(two.Status, 0) << two.Err;
    TFXY4MReader reader(dir / "two.y4m");
    TTestImage frame(vfI420, 16, 8);
    int frames = 0;
    while (reader.ReadFrame(frame.Planes()))
        ++frames;
    EXPECT_EQ(frames, 2);
}

TEST(FXHost, ATruncatedStreamFailsWithOneLineAfterWritingEveryCompleteFrame)
{
    TTempDir dir;
    test::WriteBytes(dir / "copy.dfm", kCopyGraph);
    WriteClip(dir / "in.y4m", 3);
    const std::string whole = test::ReadBytes(dir / "in.y4m");
    test::WriteBytes(dir / "cut.y4m", whole.substr(0, whole.size() - 50));
    const auto r = RunShell(dir, Framix() + " run copy.dfm < cut.y4m > out.y4m");
    EXPECT_EQ(r.Status, 1);
    EXPECT_EQ(LineCount(r.Err), 1) << r.Err;
    EXPECT_NE(r.Err.find("Graph1.Player: standard input: frame 3 is incomplete"), std::string::npos)
        << r.Err;
    const std::size_t frameBytes = (whole.size() - whole.find('\n') - 1) / 3;
    EXPECT_EQ(test::ReadBytes(dir / "out.y4m"), whole.substr(0, whole.size() - frameBytes));
}

TEST(FXHost, WritingIntoAClosedPipeIsAnErrorNotASilentDeath)
{
    TTempDir dir;
    test::WriteBytes(dir / "copy.dfm", kCopyGraph);
    WriteClip(dir / "in.y4m", 60, 64, 64); // far more than a pipe holds
    const auto r = RunShell(dir, Framix() + " run copy.dfm < in.y4m | head -c 100 > /dev/null");
    EXPECT_EQ(r.Status, 1);
    EXPECT_EQ(LineCount(r.Err), 1) << r.Err;
    EXPECT_NE(r.Err.find("Graph1.Logger: standard output: write error (Broken pipe)"),
              std::string::npos)
        << r.Err;
}

TEST(FXHost, SeedMakesRandomComponentsRepeatAndStatsCountEachComponent)
{
    TTempDir dir;
    test::WriteBytes(dir / "noise.dfm", kNoiseGraph);
    auto run = [&](const std::string& args) {
        const auto r = RunShell(dir, Framix() + " run noise.dfm --frames 3 " + args);
        EXPECT_EQ(r.Status, 0) << r.Err;
        return test::ReadBytes(dir / "pattern.y4m");
    };
    const std::string a = run("--seed 1");
    EXPECT_EQ(run("--seed=1"), a);
    EXPECT_NE(run("--seed 2"), a);

    const auto stats = RunShell(dir, Framix() + " run noise.dfm --frames 4 --stats");
    EXPECT_EQ(stats.Status, 0);
    // One row per component: path, class, frames in, frames out, milliseconds per frame.
    std::istringstream table(stats.Err);
    std::vector<std::vector<std::string>> rows;
    for (std::string line; std::getline(table, line);) {
        std::istringstream words(line);
        rows.emplace_back(std::istream_iterator<std::string>(words),
                          std::istream_iterator<std::string>());
    }
    ASSERT_EQ(rows.size(), 3u) << stats.Err;
    EXPECT_EQ(rows[0], (std::vector<std::string>{"component", "class", "frames", "in", "frames",
                                                 "out", "ms/frame"}));
    ASSERT_EQ(rows[1].size(), 5u);
    EXPECT_EQ(std::vector<std::string>(rows[1].begin(), rows[1].begin() + 4),
              (std::vector<std::string>{"Graph1.Pattern", "TFXTestPatternGen", "0", "4"}));
    EXPECT_EQ(std::vector<std::string>(rows[2].begin(), rows[2].begin() + 4),
              (std::vector<std::string>{"Graph1.Logger", "TFXFileLogger", "4", "0"}));
    EXPECT_GT(std::stod(rows[2][4]), 0.0);
}

TEST(FXHost, RealtimePacesStepsToTheFrameRate)
{
    TTempDir dir;
    test::WriteBytes(dir / "noise.dfm", kNoiseGraph); // 25 frames/s
    const auto start = std::chrono::steady_clock::now();
    const auto r = RunShell(dir, Framix() + " run noise.dfm --frames 6 --realtime");
    EXPECT_EQ(r.Status, 0) << r.Err;
    // Six frames are five intervals of 40 ms.
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(200));
}

TEST(FXHost, CtrlCStopsCleanlyWithCompleteFramesAndStatus130)
{
    TTempDir dir;
    test::WriteBytes(dir / "noise.dfm", kNoiseGraph);
    const std::string out = dir / "pattern.y4m";
    const std::string graph = dir / "noise.dfm";
    // --realtime: 25 frames a second for as long as it runs.
    const std::string binary = Framix();
    std::vector<char*> argv = {const_cast<char*>(binary.c_str()), const_cast<char*>("run"),
                               const_cast<char*>(graph.c_str()), const_cast<char*>("--realtime"),
                               nullptr};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 2, (dir / "err.txt").c_str(),
                                     O_WRONLY | O_CREAT | O_TRUNC, 0644);
    posix_spawn_file_actions_addchdir_np(&actions, (dir / "").c_str());
    pid_t pid = 0;
    ASSERT_EQ(posix_spawn(&pid, binary.c_str(), &actions, nullptr, argv.data(), environ), 0);
    posix_spawn_file_actions_destroy(&actions);
    // Wait until a few frames were written, then interrupt.
    for (int i = 0; i < 200 && test::ReadBytes(out).size() < 4 * (6 + 32 * 16 * 3); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    kill(pid, SIGINT);
    int status = 0;
    waitpid(pid, &status, 0);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 130);
    EXPECT_NE(test::ReadBytes(dir / "err.txt").find("interrupted after"), std::string::npos);
    const std::string bytes = test::ReadBytes(out);
    const std::size_t header = bytes.find('\n') + 1;
    ASSERT_GT(bytes.size(), header);
    EXPECT_EQ((bytes.size() - header) % (6 + 32 * 16 * 3), 0u) << "a frame was cut";
}

TEST(FXHost, DemoWritesAVideoAndAStillIntoTheCurrentFolder)
{
    TTempDir dir;
    const auto r = RunShell(dir, Framix() + " demo --frames 6");
    EXPECT_EQ(r.Status, 0) << r.Err;
    EXPECT_NE(r.Out.find("framix-demo.y4m: 6 frames of 4:2:0 YUV4MPEG2 at 25 frames/s"),
              std::string::npos)
        << r.Out;
    TFXY4MReader video(dir / "framix-demo.y4m");
    EXPECT_EQ(video.Info().Width, 640);
    EXPECT_EQ(video.Info().Format, vfI420);
    if (FXPNGAvailable()) {
        EXPECT_EQ(FXReadPNG(dir / "framix-demo.png").Width, 640);
        EXPECT_NE(r.Out.find("framix-demo.png: frame 6"), std::string::npos) << r.Out;
        EXPECT_EQ(FXReadPNG(dir / "framix-demo-edges.png").Width, 640);
    }
}

} // namespace
} // namespace framix
