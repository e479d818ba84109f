// SPDX-License-Identifier: MIT
// File bridges at 1920x1080: Y4M 4:2:0 read and write (the codecs, the player and logger
// components, and ffmpeg's own decode of the same file), PPM read and write, PNG write.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "bridges/FXFrameLayout.h"
#include "bridges/FXPNGFile.h"
#include "bridges/FXPNMReader.h"
#include "bridges/FXPNMWriter.h"
#include "bridges/FXY4MReader.h"
#include "bridges/FXY4MWriter.h"
#include "bridges/FXFileLogger.h"
#include "bridges/FXFilePlayer.h"
#include "framework/FXGenericSink.h"
#include "framework/FXGraph.h"

namespace framix {
namespace {

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;

// One frame in contiguous planes, filled with a gradient so compression has real work.
struct TBenchFrame {
    explicit TBenchFrame(TFXVideoFormat format) : Format(format)
    {
        for (int p = 0; p < FXFormatInfo(format).PlaneCount; ++p) {
            const TFXPlaneGeometry g = FXPlaneGeometry(format, kWidth, kHeight, p);
            Memory[p].resize(std::size_t(g.RowBytes) * g.Rows);
            for (std::size_t i = 0; i < Memory[p].size(); ++i)
                Memory[p][i] = std::uint8_t(i * 7 / 3 + p * 40);
            Planes.Data[p] = Memory[p].data();
            Planes.Stride[p] = g.RowBytes;
        }
    }
    TFXVideoFormat Format;
    std::vector<std::uint8_t> Memory[4];
    TFXPlanes Planes;
};

std::string TempFile(const char* name)
{
    return (std::filesystem::temp_directory_path() / name).string();
}

void SetFrameCounters(benchmark::State& state, std::int64_t frameBytes)
{
    state.SetBytesProcessed(std::int64_t(state.iterations()) * frameBytes);
    state.counters["fps"] =
        benchmark::Counter(double(state.iterations()), benchmark::Counter::kIsRate);
}

// One 1080p 4:2:0 file for the reader, the player and ffmpeg, written once per run.
constexpr int kClipFrames = 40;

const std::string& Clip()
{
    struct TClip {
        std::string Path = TempFile("framix-bench-clip-1080p.y4m");
        TClip()
        {
            TBenchFrame frame(vfI420);
            TFXY4MWriter writer(Path, TFXY4MStreamInfo::For(vfI420, kWidth, kHeight, {25, 1}));
            for (int i = 0; i < kClipFrames; ++i)
                writer.WriteFrame(frame.Planes);
        }
        ~TClip() { std::filesystem::remove(Path); }
    };
    static const TClip clip;
    return clip.Path;
}

void Y4MRead(benchmark::State& state)
{
    TBenchFrame frame(vfI420);
    auto reader = std::make_unique<TFXY4MReader>(Clip());
    for (auto _ : state) {
        if (!reader->ReadFrame(frame.Planes)) {
            state.PauseTiming();
            reader = std::make_unique<TFXY4MReader>(Clip());
            state.ResumeTiming();
            reader->ReadFrame(frame.Planes);
        }
        benchmark::ClobberMemory();
    }
    SetFrameCounters(state, FXImageBytes(vfI420, kWidth, kHeight));
}

void Y4MWrite(benchmark::State& state, const std::string& path)
{
    const TBenchFrame frame(vfI420);
    const TFXY4MStreamInfo info = TFXY4MStreamInfo::For(vfI420, kWidth, kHeight, {25, 1});
    auto writer = std::make_unique<TFXY4MWriter>(path, info);
    for (auto _ : state) {
        writer->WriteFrame(frame.Planes);
        if (writer->FrameCount() == 100 && path != "/dev/null") { // keep the temporary file small
            state.PauseTiming();
            writer = std::make_unique<TFXY4MWriter>(path, info);
            state.ResumeTiming();
        }
    }
    SetFrameCounters(state, FXImageBytes(vfI420, kWidth, kHeight));
    writer.reset();
    if (path != "/dev/null")
        std::filesystem::remove(path);
}

// The component path: a player pumped by its graph, each frame a fresh buffer sent to a sink.
void PlayerRead(benchmark::State& state)
{
    TFXGraph graph;
    auto* player = new TFXFilePlayer(&graph);
    player->SetFileName(Clip());
    auto* sink = new TFXGenericSink(&graph);
    sink->GetImageInputPin().SetSourcePin(&player->GetImageOutputPin());
    graph.Start();
    for (auto _ : state) {
        if (!graph.Pump()) {
            state.PauseTiming();
            graph.Stop();
            graph.Start();
            state.ResumeTiming();
            graph.Pump();
        }
    }
    graph.Stop();
    SetFrameCounters(state, FXImageBytes(vfI420, kWidth, kHeight));
}

// A source pin feeding a logger: the frame goes through the sink base into the Y4M writer.
void LoggerWrite(benchmark::State& state)
{
    struct TSource : TKTComponent {
        TFXPXImageSourcePin Pin;
        explicit TSource(TKTComponent* o)
            : TKTComponent(o), Pin(*this, "OutputPin", Lock(), nullptr)
        {
        }
    };
    const std::string path = TempFile("framix-bench-logger.y4m");
    TFXGraph graph;
    auto* source = new TSource(&graph);
    auto* logger = new TFXFileLogger(&graph);
    logger->SetFileName(path);
    logger->GetImageInputPin().SetSourcePin(&source->Pin);
    FXImageBufferPtr frame = new TFXImageBuffer(kWidth, kHeight, vfI420);
    std::memset(frame->GetWritePointer(), 90, std::size_t(FXImageBytes(vfI420, kWidth, kHeight)));
    source->Pin.Notify(TPXStartFrameOperation(kWidth, kHeight, 400000, vfI420));
    std::int64_t written = 0;
    for (auto _ : state) {
        source->Pin.SendBuffer(frame);
        if (++written % 100 == 0) {  // keep the temporary file small
            state.PauseTiming();
            source->Pin.Notify(TPXStopOperation());
            // Freed here, not by the truncation when the logger opens the file again.
            std::filesystem::remove(path);
            source->Pin.Notify(TPXStartFrameOperation(kWidth, kHeight, 400000, vfI420));
            state.ResumeTiming();
        }
    }
    source->Pin.Notify(TPXStopOperation());
    SetFrameCounters(state, FXImageBytes(vfI420, kWidth, kHeight));
    std::filesystem::remove(path);
}

// ffmpeg on the same file, timed by ffmpeg itself (-benchmark); each iteration is one run over
// the whole clip. `output` is what ffmpeg does with the frames: "-f null -" demuxes and decodes
// them with its rawvideo decoder only; "-f yuv4mpegpipe <file>" also writes them out again, as
// the player -> logger copy does. "fps" is frames per second of ffmpeg's CPU time (user and
// system, as the other benchmarks count theirs), "fps_real" per second of its wall time
// (start-up included).
void Ffmpeg(benchmark::State& state, const std::string& output)
{
    if (std::system("command -v ffmpeg >/dev/null 2>&1") != 0) {
        state.SkipWithError("ffmpeg is not installed");
        return;
    }
    const std::string command =
        "ffmpeg -nostdin -hide_banner -benchmark -y -i '" + Clip() + "' " + output + " 2>&1";
    double cpu = 0;
    double real = 0;
    for (auto _ : state) {
        std::FILE* pipe = ::popen(command.c_str(), "r");
        char line[512];
        double user = -1, system = 0, wall = -1;
        while (pipe && std::fgets(line, sizeof line, pipe)) {
            if (const char* at = std::strstr(line, "utime="))
                user = std::atof(at + 6);
            if (const char* at = std::strstr(line, "stime="))
                system = std::atof(at + 6);
            if (const char* at = std::strstr(line, "rtime="))
                wall = std::atof(at + 6);
        }
        if (!pipe || ::pclose(pipe) != 0 || user < 0 || wall <= 0) {
            state.SkipWithError("ffmpeg -benchmark gave no timing");
            return;
        }
        state.SetIterationTime((user + system) / kClipFrames);
        cpu += user + system;
        real += wall;
    }
    const double frames = double(state.iterations()) * kClipFrames;
    state.counters["fps"] = benchmark::Counter(frames / cpu);
    state.counters["fps_real"] = benchmark::Counter(frames / real);
    std::filesystem::remove(TempFile("framix-bench-ffmpeg-out.y4m"));
}

// The player -> logger copy of the clip into a new file, the job ffmpeg's copy above does.
void PlayerToLogger(benchmark::State& state)
{
    const std::string out = TempFile("framix-bench-copy.y4m");
    TFXGraph graph;
    auto* player = new TFXFilePlayer(&graph);
    player->SetFileName(Clip());
    auto* logger = new TFXFileLogger(&graph);
    logger->SetFileName(out);
    logger->GetImageInputPin().SetSourcePin(&player->GetImageOutputPin());
    graph.Start();
    for (auto _ : state) {
        if (!graph.Pump()) {
            state.PauseTiming();
            graph.Stop();
            std::filesystem::remove(out);
            graph.Start();
            state.ResumeTiming();
            graph.Pump();
        }
    }
    graph.Stop();
    std::filesystem::remove(out);
    SetFrameCounters(state, FXImageBytes(vfI420, kWidth, kHeight));
}

void PPMRead(benchmark::State& state)
{
    const std::string path = TempFile("framix-bench-1080p.ppm");
    TBenchFrame frame(vfRGB24);
    TFXPNMWriter(path).WriteFrame(vfRGB24, kWidth, kHeight, frame.Planes);
    for (auto _ : state) {
        TFXPNMReader reader(path);
        reader.ReadPixels(frame.Planes);
        benchmark::ClobberMemory();
    }
    SetFrameCounters(state, std::int64_t(kWidth) * kHeight * 3);
    std::filesystem::remove(path);
}

void PPMWrite(benchmark::State& state)
{
    const TBenchFrame frame(vfRGB24);
    TFXPNMWriter writer("/dev/null");
    for (auto _ : state)
        writer.WriteFrame(vfRGB24, kWidth, kHeight, frame.Planes);
    SetFrameCounters(state, std::int64_t(kWidth) * kHeight * 3);
}

void PNGWrite(benchmark::State& state)
{
    if (!FXPNGAvailable()) {
        state.SkipWithError("built without libpng");
        return;
    }
    const TBenchFrame frame(vfRGB24);
    const std::string path = TempFile("framix-bench-1080p.png");
    for (auto _ : state)
        FXWritePNG(path, vfRGB24, kWidth, kHeight, frame.Planes);
    SetFrameCounters(state, std::int64_t(kWidth) * kHeight * 3);
    std::filesystem::remove(path);
}

BENCHMARK(Y4MRead)->Name("FXY4MReader/vfI420/1920x1080/file")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Y4MWrite, null, std::string("/dev/null"))
    ->Name("FXY4MWriter/vfI420/1920x1080/devnull")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Y4MWrite, file, TempFile("framix-bench-out.y4m"))
    ->Name("FXY4MWriter/vfI420/1920x1080/file")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(PlayerRead)->Name("TFXFilePlayer/vfI420/1920x1080/file")->Unit(benchmark::kMicrosecond);
BENCHMARK(LoggerWrite)->Name("TFXFileLogger/vfI420/1920x1080/file")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Ffmpeg, decode, std::string("-f null -"))
    ->Name("ffmpeg-rawvideo-decode/yuv420p/1920x1080/file")
    ->UseManualTime()
    ->Iterations(3)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(PlayerToLogger)
    ->Name("TFXFilePlayer-TFXFileLogger-copy/vfI420/1920x1080/file")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Ffmpeg, copy, "-f yuv4mpegpipe " + TempFile("framix-bench-ffmpeg-out.y4m"))
    ->Name("ffmpeg-y4m-copy/yuv420p/1920x1080/file")
    ->UseManualTime()
    ->Iterations(3)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(PPMRead)->Name("FXPNMReader/vfRGB24/1920x1080/file")->Unit(benchmark::kMicrosecond);
BENCHMARK(PPMWrite)->Name("FXPNMWriter/vfRGB24/1920x1080/devnull")->Unit(benchmark::kMicrosecond);
BENCHMARK(PNGWrite)->Name("FXWritePNG/vfRGB24/1920x1080/file")->Unit(benchmark::kMillisecond);

} // namespace
} // namespace framix
