// SPDX-License-Identifier: MIT
// Pixel conversion at 1920x1080 (each fast pair per vector level, every other pair, memcpy) and
// resampling.
#include <benchmark/benchmark.h>

#include <cstring>
#include <string>
#include <vector>

#include "framework/FXFormatConversion.h"
#include "framework/FXResize.h"
#include "framework/detail/FXConvertKernels.h"

namespace framix {
namespace {

constexpr int kWidth = 1920, kHeight = 1080;

// One frame of a format in a single 64-byte aligned block, rows padded to 64 bytes.
struct TBenchFrame {
    explicit TBenchFrame(TFXVideoFormat format) : Format(format)
    {
        size_t offsets[4] = {};
        size_t total = 0;
        for (int p = 0; p < FXFormatInfo(format).PlaneCount; ++p) {
            const TFXPlaneGeometry g = FXPlaneGeometry(format, kWidth, kHeight, p);
            Planes.Stride[p] = (g.RowBytes + 63) / 64 * 64;
            offsets[p] = total;
            total += size_t(Planes.Stride[p]) * size_t(g.Rows);
            Bytes += size_t(g.RowBytes) * size_t(g.Rows);
        }
        Memory.resize(total + 64);
        std::uint8_t* base =
            Memory.data() + (64 - reinterpret_cast<std::uintptr_t>(Memory.data()) % 64) % 64;
        for (size_t i = 0; i < total; ++i)
            base[i] = std::uint8_t(i * 2654435761u >> 13);
        for (int p = 0; p < FXFormatInfo(format).PlaneCount; ++p)
            Planes.Data[p] = base + offsets[p];
    }
    TFXVideoFormat Format;
    TFXPlanes Planes;
    size_t Bytes = 0; // pixel bytes, without row padding
    std::vector<std::uint8_t> Memory;
};

void SetRate(benchmark::State& state, size_t bytes)
{
    state.SetBytesProcessed(std::int64_t(state.iterations()) * std::int64_t(bytes));
    state.counters["GB/s"] =
        benchmark::Counter(double(bytes) / 1e9, benchmark::Counter::kIsIterationInvariantRate);
}

// Through the public entry point (the selected level), or one level's kernel directly.
void RunConvert(benchmark::State& state, TFXVideoFormat from, TFXVideoFormat to, int level)
{
    TBenchFrame src(from), dst(to);
    const conv::TFXConvertKernel kernel =
        level < 0 ? nullptr : conv::FXFastKernel(from, to, conv::TFXConvertLevel(level));
    for (auto _ : state) {
        if (level < 0)
            FXConvertPixels(from, src.Planes, to, dst.Planes, kWidth, kHeight);
        else if (kernel)
            kernel(src.Planes, dst.Planes, kWidth, kHeight);
        else
            conv::ConvertReference(from, src.Planes, to, dst.Planes, kWidth, kHeight);
        benchmark::ClobberMemory();
    }
    SetRate(state, src.Bytes + dst.Bytes);
}

// memcpy moving the same traffic: (read + written) / 2 bytes copied.
void RunMemcpy(benchmark::State& state, size_t traffic)
{
    std::vector<std::uint8_t> a(traffic / 2, 1), b(traffic / 2);
    for (auto _ : state) {
        std::memcpy(b.data(), a.data(), a.size());
        benchmark::ClobberMemory();
    }
    SetRate(state, a.size() * 2);
}

// Resampling 1920x1080 to 1280x720 (bytes = source + destination pixel bytes).
void RunResize(benchmark::State& state, TFXVideoFormat format)
{
    TBenchFrame src(format), dst(format);
    const size_t dstBytes = src.Bytes * 4 / 9; // 1280x720 is 4/9 of the frame
    for (auto _ : state) {
        FXResizePixels(format, src.Planes, kWidth, kHeight, dst.Planes, 1280, 720);
        benchmark::ClobberMemory();
    }
    SetRate(state, src.Bytes + dstBytes);
}

std::string Name(const char* what, TFXVideoFormat from, TFXVideoFormat to)
{
    return std::string(what) + "/" + std::string(FXVideoFormatName(from)) + "->" +
           std::string(FXVideoFormatName(to)) + "/" + std::to_string(kWidth) + "x" +
           std::to_string(kHeight);
}

const bool kRegistered = [] {
    using namespace conv;
    for (const TFXFastPairInfo& pair : kFastPairs) {
        const std::string name = Name("FXConvertPixels", pair.Src, pair.Dst);
        benchmark::RegisterBenchmark(name.c_str(), RunConvert, pair.Src, pair.Dst, -1)
            ->Unit(benchmark::kMicrosecond);
        for (int level = 0; level < kConvertLevelCount; ++level)
            if (FXConvertLevelSupported(TFXConvertLevel(level)))
                benchmark::RegisterBenchmark(
                    (name + "/" + FXConvertLevelName(TFXConvertLevel(level))).c_str(), RunConvert,
                    pair.Src, pair.Dst, level)
                    ->Unit(benchmark::kMicrosecond);
        const size_t traffic = TBenchFrame(pair.Src).Bytes + TBenchFrame(pair.Dst).Bytes;
        benchmark::RegisterBenchmark(Name("memcpy", pair.Src, pair.Dst).c_str(), RunMemcpy, traffic)
            ->Unit(benchmark::kMicrosecond);
    }
    // The remaining pairs run the scalar reference; one row of the table per pair.
    for (int s = 0; s < kFXVideoFormatCount; ++s)
        for (int d = 0; d < kFXVideoFormatCount; ++d)
            if (s != d &&
                !FXFastKernel(TFXVideoFormat(s), TFXVideoFormat(d), TFXConvertLevel::Sse41))
                benchmark::RegisterBenchmark(
                    Name("FXConvertPixels", TFXVideoFormat(s), TFXVideoFormat(d)).c_str(),
                    RunConvert, TFXVideoFormat(s), TFXVideoFormat(d), -1)
                    ->Unit(benchmark::kMicrosecond);
    for (TFXVideoFormat f : {vfRGB24, vfRGB32, vfGray8, vfGray16, vfI420, vfYUY2})
        benchmark::RegisterBenchmark(
            ("FXResizePixels/" + std::string(FXVideoFormatName(f)) + "/1920x1080->1280x720")
                .c_str(),
            RunResize, f)
            ->Unit(benchmark::kMicrosecond);
    return true;
}();

} // namespace
} // namespace framix
