// SPDX-License-Identifier: MIT
// The container of a graph of components, and the operations that run it.
#pragma once

#include <cstdint>
#include <vector>

#include "framework/FXPumpSource.h"
#include "framework/KTComponent.h"

namespace framix {

// Owns the components of a graph (any root class name of a stored form creates one). Running:
// Start announces every active source's stream, Pump makes one frame on each source that has
// not ended, Stop ends every stream and waits until every worker thread has finished its
// queue. All three run on the calling thread.
class TFXGraph : public TKTComponent {
public:
    explicit TFXGraph(TKTComponent* owner = nullptr);
    ~TFXGraph() override;
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    // Every owned component (depth first) that currently produces frames of its own.
    std::vector<IFXPumpSource*> GetActiveSources() const;
    void Start();
    // One frame from every source still running; false once all have ended.
    bool Pump();
    void Stop();
    // Waits until no worker thread of any owned filter holds an operation; rethrows the first
    // error a worker met.
    void WaitIdle();
    bool IsRunning() const { return FRunning; }

private:
    // One frame from one source, timed for the frame statistics.
    static bool Pump(IFXPumpSource& source);

    std::vector<IFXPumpSource*> FSources;
    std::vector<bool> FEnded;
    bool FRunning = false;
};

} // namespace framix
