// SPDX-License-Identifier: MIT
// Stored form: parsing and writing a generated tree of 1,000 objects, and loading and saving a
// live graph of 1,000 components.
#include <benchmark/benchmark.h>

#include <string>

#include "storage/FXFormFile.h"
#include "storage/FXGraphLoader.h"
#include "storage/FXGraphSaver.h"

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

// A pattern generator feeding a chain of format changes into a logger: real palette classes,
// values of several kinds (groups, enumerations, booleans, strings) and links at both ends.
std::string GraphForm(int components)
{
    TFXFormObject graph;
    graph.Name = "Graph1";
    graph.ClassName = "TFXGraph";
    auto name = [](int i) { return "C" + std::to_string(i); };
    auto link = [&](TFXFormObject& o, int i) {
        if (i > 0)
            o.Add("InputPin.SourcePin",
                  TFXFormValue::Identifier("Graph1." + name(i - 1) + ".OutputPin"));
        if (i + 1 < components)
            o.Add("OutputPin.SinkPins",
                  TFXFormValue::List(
                      {TFXFormValue::Identifier("Graph1." + name(i + 1) + ".InputPin")}));
    };
    TFXFormObject& gen = graph.AddChild(name(0), "TFXTestPatternGen");
    gen.Add("ImageSize.Width", TFXFormValue::Integer(640));
    gen.Add("FrameRate", TFXFormValue::Float(30));
    link(gen, 0);
    for (int i = 1; i + 1 < components; ++i) {
        TFXFormObject& o = graph.AddChild(name(i), "TFXChangeFormat");
        o.Add("Enabled", TFXFormValue::Boolean(i % 3 != 0));
        o.Add("Threading.QueueSize", TFXFormValue::Integer(2 + i % 8));
        o.Add("Format", TFXFormValue::Identifier(i % 2 ? "vfGray8" : "vfRGB32"));
        link(o, i);
    }
    TFXFormObject& logger = graph.AddChild(name(components - 1), "TFXFileLogger");
    logger.Add("FileName", TFXFormValue::String("out.y4m"));
    link(logger, components - 1);
    return FXWriteFormText(graph);
}

// Text to a wired graph: parsing, creating from the palette, setting values, wiring, Loaded.
void GraphLoad(benchmark::State& state)
{
    const std::string text = GraphForm(int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(FXLoadGraphText(text, "bench.dfm"));
    state.counters["components"] = double(state.range(0));
}

void GraphSave(benchmark::State& state)
{
    const auto graph = FXLoadGraphText(GraphForm(int(state.range(0))), "bench.dfm");
    for (auto _ : state)
        benchmark::DoNotOptimize(FXSaveGraphText(*graph));
}

BENCHMARK(GraphLoad)->Name("FXLoadGraphText/components")->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(GraphSave)->Name("FXSaveGraphText/components")->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(FormParse)->Name("FXFormReader/objects")->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(FormWrite)->Name("FXFormWriter/objects")->Arg(1000)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace framix
