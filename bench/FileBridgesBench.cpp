// SPDX-License-Identifier: MIT
// File bridges at 1920x1080: Y4M 4:2:0 read and write, PPM read and write, PNG write.
#include <benchmark/benchmark.h>

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

void Y4MRead(benchmark::State& state)
{
    const std::string path = TempFile("framix-bench-1080p.y4m");
    TBenchFrame frame(vfI420);
    {
        TFXY4MWriter writer(path, TFXY4MStreamInfo::For(vfI420, kWidth, kHeight, {25, 1}));
        for (int i = 0; i < 30; ++i)
            writer.WriteFrame(frame.Planes);
    }
    auto reader = std::make_unique<TFXY4MReader>(path);
    for (auto _ : state) {
        if (!reader->ReadFrame(frame.Planes)) {
            state.PauseTiming();
            reader = std::make_unique<TFXY4MReader>(path);
            state.ResumeTiming();
            reader->ReadFrame(frame.Planes);
        }
        benchmark::ClobberMemory();
    }
    SetFrameCounters(state, FXImageBytes(vfI420, kWidth, kHeight));
    reader.reset();
    std::filesystem::remove(path);
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
BENCHMARK(PPMRead)->Name("FXPNMReader/vfRGB24/1920x1080/file")->Unit(benchmark::kMicrosecond);
BENCHMARK(PPMWrite)->Name("FXPNMWriter/vfRGB24/1920x1080/devnull")->Unit(benchmark::kMicrosecond);
BENCHMARK(PNGWrite)->Name("FXWritePNG/vfRGB24/1920x1080/file")->Unit(benchmark::kMillisecond);

} // namespace
} // namespace framix
