// SPDX-License-Identifier: MIT
// Baseline: memcpy of one 1080p RGB24 frame, the yardstick every table uses.
#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

static void BM_Memcpy1080pRGB24(benchmark::State& state)
{
    const size_t bytes = 1920u * 1080u * 3u;
    std::vector<unsigned char> src(bytes, 1), dst(bytes);
    for (auto _ : state) {
        std::memcpy(dst.data(), src.data(), bytes);
        benchmark::DoNotOptimize(dst.data());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(bytes) * 2);
}
BENCHMARK(BM_Memcpy1080pRGB24)->Name("memcpy/1920x1080x3");
