// SPDX-License-Identifier: MIT
// Runs a loaded graph for the host: pumping, pacing, Ctrl-C, progress and statistics.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

#include "framework/FXGraph.h"

namespace framix {

struct TFXRunOptions {
    std::int64_t MaxFrames = -1; // pumps of every source; -1 until the sources end
    bool Realtime = false;       // paced to the fastest source's frame rate
    bool Stats = false;          // per-component frames and time per frame, on stderr
    bool Progress = false;       // a progress line on stderr (the host sets it for terminals)
};

struct TFXRunResult {
    std::int64_t Frames = 0;  // pumps done
    bool Interrupted = false; // stopped by Ctrl-C (SIGINT) or SIGTERM
    double Seconds = 0;
};

// Starts the graph, pumps every source once per step until they end, MaxFrames steps were
// made, or a SIGINT/SIGTERM arrives, then stops it: the stop operation reaches every
// component, so loggers close their files complete, also when a step failed (the error is
// rethrown after the stop). The first Ctrl-C asks for this clean stop; a second one ends the
// process at once.
class TFXGraphRunner {
public:
    explicit TFXGraphRunner(TFXGraph& graph, TFXRunOptions options);
    TFXRunResult Run();
    // The statistics table (component, class, frames in, frames out, ms per frame).
    void WriteStats(std::ostream& out) const;

    // Installs the interrupt handlers (SIGINT, SIGTERM) and ignores SIGPIPE, so that writing
    // into a closed pipe is an error the logger reports instead of a silent death.
    static void InstallSignalHandlers();
    static bool Interrupted();

private:
    void ShowProgress(std::int64_t frames, double seconds, bool final) const;

    TFXGraph& FGraph;
    TFXRunOptions FOptions;
};

} // namespace framix
