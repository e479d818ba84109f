// SPDX-License-Identifier: MIT
// What the first frame through a new table pays: building the full 8- or 16-bit table from a
// 257-level curve (later frames with the same 16-bit table reuse it).
#include "framework/primitives/families/Lut.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

namespace framix::bench {
namespace {

using prim::TFXLutKind;

template <class T> void RunFill(benchmark::State& state, TFXLutKind kind)
{
    constexpr int kMax = T(~T(0));
    std::vector<Ipp32s> levels, values;
    for (int i = 0; i <= 256; ++i) {
        levels.push_back(i * (kMax + 1) / 256);
        const double x = i / 256.0;
        values.push_back(Ipp32s(kMax * x * x * (3 - 2 * x)));
    }
    const prim::TFXLutTable table{values.data(), levels.data(), int(levels.size())};
    std::unique_ptr<T[]> out(new T[std::size_t(kMax) + 1]);
    for (auto _ : state) {
        prim::FXLutFill(kind, table, out.get());
        benchmark::DoNotOptimize(out.get());
        benchmark::ClobberMemory();
    }
}

void Fill8(benchmark::State& state, TFXLutKind kind)
{
    RunFill<Ipp8u>(state, kind);
}

void Fill16(benchmark::State& state, TFXLutKind kind)
{
    RunFill<Ipp16u>(state, kind);
}

BENCHMARK_CAPTURE(Fill8, step, TFXLutKind::Step)->Name("LutFill/8u/step");
BENCHMARK_CAPTURE(Fill8, linear, TFXLutKind::Linear)->Name("LutFill/8u/linear");
BENCHMARK_CAPTURE(Fill8, cubic, TFXLutKind::Cubic)->Name("LutFill/8u/cubic");
BENCHMARK_CAPTURE(Fill16, step, TFXLutKind::Step)->Name("LutFill/16u/step");
BENCHMARK_CAPTURE(Fill16, linear, TFXLutKind::Linear)->Name("LutFill/16u/linear");
BENCHMARK_CAPTURE(Fill16, cubic, TFXLutKind::Cubic)->Name("LutFill/16u/cubic");

} // namespace
} // namespace framix::bench
