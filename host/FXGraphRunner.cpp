// SPDX-License-Identifier: MIT
// The host's pump loop.
#include "host/FXGraphRunner.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <functional>
#include <iomanip>
#include <ostream>
#include <sstream>
#include <thread>

#include "framework/FXPumpSource.h"

namespace framix {

namespace {

volatile std::sig_atomic_t GInterrupted = 0;

extern "C" void OnInterrupt(int signal)
{
    if (GInterrupted) {
        // A second Ctrl-C: the user does not want to wait for the clean stop.
        std::signal(signal, SIG_DFL);
        std::raise(signal);
        return;
    }
    GInterrupted = 1;
}

void ForEachComponent(const TKTComponent& root, const std::function<void(TKTComponent&)>& visit)
{
    for (TKTComponent* child : root.GetComponents()) {
        visit(*child);
        ForEachComponent(*child, visit);
    }
}

using TClock = std::chrono::steady_clock;

double SecondsSince(TClock::time_point start)
{
    return std::chrono::duration<double>(TClock::now() - start).count();
}

} // namespace

TFXGraphRunner::TFXGraphRunner(TFXGraph& graph, TFXRunOptions options)
    : FGraph(graph), FOptions(options)
{
}

void TFXGraphRunner::InstallSignalHandlers()
{
    struct sigaction action {};
    action.sa_handler = OnInterrupt;
    sigemptyset(&action.sa_mask);
    // Restarted system calls: a frame being read or written when Ctrl-C arrives is finished,
    // and the loop stops between frames, so no file is left with half a frame.
    action.sa_flags = SA_RESTART;
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
}

bool TFXGraphRunner::Interrupted()
{
    return GInterrupted != 0;
}

void TFXGraphRunner::ShowProgress(std::int64_t frames, double seconds, bool final) const
{
    if (!FOptions.Progress)
        return;
    if (final) {
        std::fputs("\r\033[K", stderr);
    } else {
        std::fprintf(stderr, "\rframix: %lld frames, %.1f frames/s\033[K", (long long)frames,
                     seconds > 0 ? double(frames) / seconds : 0.0);
    }
    std::fflush(stderr);
}

TFXRunResult TFXGraphRunner::Run()
{
    TFXRunResult result;
    if (FOptions.Stats) {
        ForEachComponent(FGraph, [](TKTComponent& c) { c.GetFrameStats().Reset(); });
        FXEnableFrameStats(true);
    }
    const TClock::time_point start = TClock::now();
    double lastShown = 0;
    try {
        FGraph.Start();
        double rate = 0;
        for (IFXPumpSource* source : FGraph.GetActiveSources())
            rate = std::max(rate, source->GetSourceFrameRate());
        while (!GInterrupted && (FOptions.MaxFrames < 0 || result.Frames < FOptions.MaxFrames)) {
            if (FOptions.Realtime && rate > 0)
                std::this_thread::sleep_until(
                    start + std::chrono::duration_cast<TClock::duration>(
                                std::chrono::duration<double>(double(result.Frames) / rate)));
            if (!FGraph.Pump())
                break;
            ++result.Frames;
            if (const double now = SecondsSince(start); now - lastShown >= 0.25) {
                ShowProgress(result.Frames, now, false);
                lastShown = now;
            }
        }
        FGraph.Stop();
    } catch (...) {
        try {
            FGraph.Stop();
        } catch (...) {
            // The first error is the one to report.
        }
        FXEnableFrameStats(false);
        ShowProgress(result.Frames, 0, true);
        // A read or write cut short by the interrupt is the interrupt, not a fault.
        if (!GInterrupted)
            throw;
    }
    FXEnableFrameStats(false);
    ShowProgress(result.Frames, 0, true);
    result.Interrupted = GInterrupted != 0;
    result.Seconds = SecondsSince(start);
    return result;
}

void TFXGraphRunner::WriteStats(std::ostream& out) const
{
    std::size_t nameWidth = 9;
    std::size_t classWidth = 5;
    ForEachComponent(FGraph, [&](TKTComponent& c) {
        nameWidth = std::max(nameWidth, c.GetPathName().size());
        classWidth = std::max(classWidth, c.GetClassInfo().Name().size());
    });
    std::ostringstream text;
    text << std::left << std::setw(int(nameWidth)) << "component"
         << "  " << std::setw(int(classWidth)) << "class" << std::right << "  " << std::setw(10)
         << "frames in"
         << "  " << std::setw(10) << "frames out"
         << "  " << std::setw(10) << "ms/frame"
         << "\n";
    ForEachComponent(FGraph, [&](TKTComponent& c) {
        const TFXFrameStats& s = c.GetFrameStats();
        text << std::left << std::setw(int(nameWidth)) << c.GetPathName() << "  "
             << std::setw(int(classWidth)) << c.GetClassInfo().Name() << std::right << "  "
             << std::setw(10) << s.FramesIn.load() << "  " << std::setw(10) << s.FramesOut.load()
             << "  " << std::setw(10) << std::fixed << std::setprecision(3) << s.NsPerFrame() / 1e6
             << "\n";
    });
    out << text.str();
}

} // namespace framix
