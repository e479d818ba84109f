// SPDX-License-Identifier: MIT
// run, list, props, save and demo.
#include "host/FXHostCommands.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <iostream>
#include <optional>
#include <unistd.h>

#include "bridges/FXFileLogger.h"
#include "bridges/FXPNGFile.h"
#include "framework/FXPins.h"
#include "framework/FXRandom.h"
#include "framework/KTCollection.h"
#include "framework/properties/FXPalette.h"
#include "framework/properties/FXPropertyAccess.h"
#include "host/FXDemoGraph.h"
#include "host/FXGraphRunner.h"
#include "storage/FXGraphLoader.h"
#include "storage/FXGraphSaver.h"

namespace framix {

namespace {

constexpr std::int64_t kDemoFrames = 75;

// Options shared by run and demo.
struct TFXCommandLine {
    std::vector<std::string> Positional;
    TFXRunOptions Run;
    std::optional<std::uint64_t> Seed;
};

std::uint64_t ParseNumber(const std::string& option, const std::string& text)
{
    std::uint64_t value = 0;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || ec != std::errc() || end != text.data() + text.size())
        throw TFXUsageError{option + " needs a whole number, got '" + text + "'"};
    return value;
}

TFXCommandLine ParseCommandLine(const std::vector<std::string>& args,
                                const std::vector<std::string>& allowed)
{
    TFXCommandLine line;
    for (std::size_t i = 0; i < args.size(); ++i) {
        std::string arg = args[i];
        if (arg.size() < 2 || arg.compare(0, 2, "--") != 0) {
            line.Positional.push_back(arg);
            continue;
        }
        std::string value;
        bool hasValue = false;
        if (const std::size_t eq = arg.find('='); eq != std::string::npos) {
            value = arg.substr(eq + 1);
            arg.resize(eq);
            hasValue = true;
        }
        if (std::find(allowed.begin(), allowed.end(), arg) == allowed.end())
            throw TFXUsageError{"unknown option '" + arg + "'"};
        auto take = [&]() -> std::string {
            if (hasValue)
                return value;
            if (i + 1 >= args.size())
                throw TFXUsageError{arg + " needs a value"};
            return args[++i];
        };
        if (arg == "--frames") {
            line.Run.MaxFrames = std::int64_t(
                std::min<std::uint64_t>(ParseNumber(arg, take()), std::uint64_t(INT64_MAX)));
        } else if (arg == "--seed") {
            line.Seed = ParseNumber(arg, take());
        } else if (hasValue) {
            throw TFXUsageError{arg + " takes no value"};
        } else if (arg == "--realtime") {
            line.Run.Realtime = true;
        } else if (arg == "--stats") {
            line.Run.Stats = true;
        }
    }
    line.Run.Progress = ::isatty(STDERR_FILENO) == 1;
    return line;
}

void ExpectPositional(const TFXCommandLine& line, std::size_t count, const char* what)
{
    if (line.Positional.size() != count)
        throw TFXUsageError{std::string("expected ") + what};
}

int Finish(const TFXRunResult& result)
{
    if (result.Interrupted) {
        std::cerr << "framix: interrupted after " << result.Frames << " frames; files closed\n";
        return kFXExitInterrupted;
    }
    return kFXExitOK;
}

// ---------------------------------------------------------------- props

struct TFXPropRow {
    std::string Path, Type, Default, Range, Help, Values;
};

std::string Bound(const TFXPropInfo& p, double v)
{
    if (p.Kind == TFXPropKind::Float || p.Kind == TFXPropKind::Double)
        return FXFormatPropertyValue(p, TFXValue(v));
    return std::to_string(std::int64_t(v));
}

std::string Range(const TFXPropInfo& p)
{
    if (p.Kind != TFXPropKind::Int && p.Kind != TFXPropKind::Float && p.Kind != TFXPropKind::Double)
        return {};
    // Bounds that only say what the field's type holds are no news to a user.
    const bool low = std::isfinite(p.Min) && p.Min > -2147483648.0;
    const bool high = std::isfinite(p.Max) && p.Max < 2147483647.0;
    if (low && high)
        return Bound(p, p.Min) + " .. " + Bound(p, p.Max);
    if (low)
        return ">= " + Bound(p, p.Min);
    if (high)
        return "<= " + Bound(p, p.Max);
    return {};
}

// Records the names a DefineProperties registers.
class TFXNameFiler final : public TFXFiler {
public:
    void DefineProperty(std::string_view name, const std::function<void(TFXReader&)>&,
                        const std::function<void(TFXWriter&)>& write, bool) override
    {
        Names.emplace_back(std::string(name), write == nullptr);
    }
    std::vector<std::pair<std::string, bool>> Names; // name, read-only (legacy)
};

void CollectRows(TKTPersistent& object, const std::string& prefix, std::vector<TFXPropRow>& rows)
{
    object.GetClassInfo().ForEach([&](const TFXPropInfo& p) {
        const std::string path = prefix + std::string(p.Name);
        TFXPropRow row{path, std::string(FXPropKindName(p.Kind)), "", Range(p), std::string(p.Help),
                       ""};
        switch (p.Kind) {
        case TFXPropKind::Group:
            CollectRows(*p.GetObject(object), path + ".", rows);
            return;
        case TFXPropKind::Collection:
            row.Help +=
                " (items: " +
                std::string(
                    dynamic_cast<TKTCollection&>(*p.GetObject(object)).GetClassInfo().Name()) +
                ")";
            break;
        case TFXPropKind::Pin:
            if (p.GetPinList)
                row.Type = "Pin list";
            else
                row.Type = p.GetPin(object)->IsSource() ? "Pin (output)" : "Pin (input)";
            break;
        case TFXPropKind::Event:
            row.Help += " (set in code, not stored)";
            break;
        default:
            row.Default = FXFormatPropertyValue(p, p.Default());
            if (p.Kind == TFXPropKind::String)
                row.Default = "'" + row.Default + "'";
            if (p.Kind == TFXPropKind::Enum)
                for (std::string_view name : p.EnumNames)
                    row.Values += (row.Values.empty() ? "" : " ") + std::string(name);
            break;
        }
        if (p.Flags & pfLegacy)
            row.Help += " (legacy: read, never written)";
        else if (p.Flags & pfReadOnly)
            row.Help += " (read-only)";
        else if (p.Flags & pfNoDefault)
            row.Help += " (always stored)";
        rows.push_back(std::move(row));
    });
    TFXNameFiler filer;
    object.DefineProperties(filer);
    for (const auto& [name, legacy] : filer.Names)
        rows.push_back({prefix + name, "Stored data", "", "",
                        legacy ? "legacy: read, never written" : "stored beside the table", ""});
}

} // namespace

std::string FXHostUsage()
{
    return "Usage: framix COMMAND [ARGUMENTS]\n"
           "\n"
           "  run GRAPH.dfm [--frames N] [--seed N] [--realtime] [--stats]\n"
           "        load a stored graph and run it until its sources end (or N frames);\n"
           "        --seed seeds the random generator, --realtime paces to the frame rate,\n"
           "        --stats prints frames in and out and time per frame of each component\n"
           "  list  the component classes on the palette\n"
           "  props CLASS\n"
           "        the published properties of a class, with types, defaults and ranges\n"
           "  save IN.dfm OUT.dfm\n"
           "        load a graph and write it back in normal form\n"
           "  demo [--frames N]\n"
           "        run the built-in demo graph: writes framix-demo.y4m and framix-demo.png\n"
           "        into the current folder\n"
           "\n"
           "A file name '-' in a graph is standard input (TFXFilePlayer) or standard output\n"
           "(TFXFileLogger), so ffmpeg can feed and take Y4M through pipes:\n"
           "  ffmpeg -i in.mp4 -f yuv4mpegpipe - | framix run graph.dfm | ffmpeg -i - out.mp4\n"
           "Exit status: 0 done, 1 failed (one line on stderr says why), 2 bad command line,\n"
           "130 interrupted (files are closed complete).\n";
}

int FXRunCommand(const std::vector<std::string>& args)
{
    const TFXCommandLine line =
        ParseCommandLine(args, {"--frames", "--seed", "--realtime", "--stats"});
    ExpectPositional(line, 1, "one stored graph: framix run GRAPH.dfm");
    if (line.Seed)
        FXRandomSeed(*line.Seed);
    const auto graph = FXLoadGraphFile(line.Positional[0]);
    if (graph->GetActiveSources().empty())
        throw EFXError(line.Positional[0] +
                       ": the graph has no source to run (a TFXFilePlayer or a generator)");
    TFXGraphRunner runner(*graph, line.Run);
    const TFXRunResult result = runner.Run();
    if (line.Run.Stats)
        runner.WriteStats(std::cerr);
    return Finish(result);
}

int FXListCommand(const std::vector<std::string>& args, std::ostream& out)
{
    if (!args.empty())
        throw TFXUsageError{"list takes no arguments"};
    std::vector<const TFXPaletteEntry*> entries;
    for (const TFXPaletteEntry& e : TFXPalette::Global().Entries())
        entries.push_back(&e);
    std::sort(entries.begin(), entries.end(),
              [](auto* a, auto* b) { return a->ClassName < b->ClassName; });
    for (const TFXPaletteEntry* e : entries) {
        std::string ancestry;
        for (const TFXClassInfo* c = e->Info->Parent(); c && c->Parent(); c = c->Parent())
            if (ancestry.empty())
                ancestry = std::string(c->Name());
        out << e->ClassName << "  (" << e->Page << ", from " << ancestry << ")\n";
    }
    return kFXExitOK;
}

int FXPropsCommand(const std::vector<std::string>& args, std::ostream& out)
{
    if (args.size() != 1)
        throw TFXUsageError{"expected one class name: framix props TFXChangeFormat"};
    const TFXPaletteEntry& entry = TFXPalette::Global().Get(args[0]);
    TFXGraph graph; // an instance shows what the tables hold: groups, pins' directions
    TKTComponent* instance = entry.Create(&graph);
    std::vector<TFXPropRow> rows;
    CollectRows(*instance, "", rows);
    std::size_t widths[4] = {8, 4, 7, 5};
    for (const TFXPropRow& r : rows) {
        widths[0] = std::max(widths[0], r.Path.size());
        widths[1] = std::max(widths[1], r.Type.size());
        widths[2] = std::max(widths[2], std::min<std::size_t>(r.Default.size(), 24));
        widths[3] = std::max(widths[3], r.Range.size());
    }
    auto pad = [](const std::string& s, std::size_t w) {
        return s + std::string(w > s.size() ? w - s.size() : 0, ' ');
    };
    out << entry.ClassName << " (page " << entry.Page << ")\n\n";
    out << pad("Property", widths[0]) << "  " << pad("Type", widths[1]) << "  "
        << pad("Default", widths[2]) << "  " << pad("Range", widths[3]) << "  Description\n";
    for (const TFXPropRow& r : rows) {
        out << pad(r.Path, widths[0]) << "  " << pad(r.Type, widths[1]) << "  "
            << pad(r.Default, widths[2]) << "  " << pad(r.Range, widths[3]) << "  " << r.Help
            << "\n";
        if (!r.Values.empty())
            out << std::string(widths[0] + 2, ' ') << "values: " << r.Values << "\n";
    }
    return kFXExitOK;
}

int FXSaveCommand(const std::vector<std::string>& args)
{
    if (args.size() != 2)
        throw TFXUsageError{"expected two files: framix save IN.dfm OUT.dfm"};
    const auto graph = FXLoadGraphFile(args[0]);
    FXSaveGraphFile(*graph, args[1]);
    return kFXExitOK;
}

int FXDemoCommand(const std::vector<std::string>& args, std::ostream& out)
{
    TFXCommandLine line = ParseCommandLine(args, {"--frames"});
    if (!line.Positional.empty())
        throw TFXUsageError{"demo takes no file names: it writes into the current folder"};
    if (line.Run.MaxFrames < 0)
        line.Run.MaxFrames = kDemoFrames;
    const auto graph = FXLoadGraphText(kFXDemoGraph, "demo.dfm");
    auto* video = dynamic_cast<TFXFileLogger*>(graph->FindComponent("Video"));
    auto* still = dynamic_cast<TFXFileLogger*>(graph->FindComponent("Still"));
    const TKTComponent* source = graph->FindComponent("Pattern");
    if (!video || !still || !source)
        throw EFXError("the built-in demo graph lacks its Pattern, Video or Still component");
    if (!FXPNGAvailable())  // built without libpng: the stills as PPM
        for (TKTComponent* c : graph->GetComponents())
            if (auto* logger = dynamic_cast<TFXFileLogger*>(c))
                if (const std::string name = logger->GetFileName(); name.ends_with(".png"))
                    logger->SetFileName(name.substr(0, name.size() - 4) + ".ppm");
    const TFXRunResult result = TFXGraphRunner(*graph, line.Run).Run();

    const std::string size = source->GetPropertyByPath("ImageSize.Width") + "x" +
                             source->GetPropertyByPath("ImageSize.Height");
    namespace fs = std::filesystem;
    out << "framix demo: ran the built-in graph for " << result.Frames << " frames (" << size
        << ", moving colour bars)\n";
    out << "  wrote " << fs::absolute(video->GetFileName()).string() << ": "
        << video->GetFramesWritten() << " frames of 4:2:0 YUV4MPEG2 at "
        << source->GetPropertyByPath("FrameRate") << " frames/s (play it: ffplay "
        << video->GetFileName() << ")\n";
    out << "  wrote " << fs::absolute(still->GetFileName()).string() << ": frame "
        << still->GetFramesWritten() << ", the last one\n";
    for (const TKTComponent* c : graph->GetComponents())  // the filtered stills
        if (auto* logger = dynamic_cast<TFXFileLogger*>(const_cast<TKTComponent*>(c));
            logger && logger != video && logger != still && logger->GetImageInputPin().GetSourcePin())
            out << "  wrote " << fs::absolute(logger->GetFileName()).string() << ": frame "
                << logger->GetFramesWritten() << ", the last one, from "
                << logger->GetImageInputPin().GetSourcePin()->GetOwner().GetName() << "\n";
    return Finish(result);
}

} // namespace framix
