// SPDX-License-Identifier: MIT
// Stored form: parsing and writing a generated graph of 1,000 objects.
#include <benchmark/benchmark.h>

#include <string>

#include "storage/FXFormFile.h"

namespace framix {
namespace {

// A chain of 1,000 filters under one graph, each with the kinds of values real graphs carry:
// sizes, a float, an enumeration, a file name, and pin links at both ends.
std::string GeneratedForm(int objects)
{
    TFXFormObject graph;
    graph.Name = "Graph1";
    graph.ClassName = "TFXGraph";
    for (int i = 0; i < objects; ++i) {
        const std::string name = "Filter" + std::to_string(i);
        TFXFormObject& o = graph.AddChild(name, "TFXGaussianBlur");
        o.Add("Kernel.Width", TFXFormValue::Integer(3 + i % 9));
        o.Add("Kernel.Height", TFXFormValue::Integer(3 + i % 7));
        o.Add("Kernel.SigmaX", TFXFormValue::Float(0.5 + i * 0.001));
        o.Add("BorderMode", TFXFormValue::Identifier("bmReplicate"));
        o.Add("Threading.Enabled", TFXFormValue::Boolean(i % 2 == 0));
        o.Add("Caption", TFXFormValue::String("Stage " + std::to_string(i) + " of the chain"));
        if (i > 0)
            o.Add("InputPin.SourcePin",
                  TFXFormValue::Identifier("Graph1.Filter" + std::to_string(i - 1) + ".OutputPin"));
        if (i + 1 < objects)
            o.Add("OutputPin.SinkPins",
                  TFXFormValue::List({TFXFormValue::Identifier(
                      "Graph1.Filter" + std::to_string(i + 1) + ".InputPin")}));
    }
    return FXWriteFormText(graph);
}

void FormParse(benchmark::State& state)
{
    const std::string text = GeneratedForm(int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(FXReadFormText(text, "bench.dfm"));
    state.SetBytesProcessed(std::int64_t(state.iterations()) * std::int64_t(text.size()));
}

void FormWrite(benchmark::State& state)
{
    const TFXFormObject tree = FXReadFormText(GeneratedForm(int(state.range(0))), "bench.dfm");
    for (auto _ : state)
        benchmark::DoNotOptimize(FXWriteFormText(tree));
}

BENCHMARK(FormParse)->Name("FXFormReader/objects")->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(FormWrite)->Name("FXFormWriter/objects")->Arg(1000)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace framix
