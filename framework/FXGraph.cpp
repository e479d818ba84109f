// SPDX-License-Identifier: MIT
// Starting, pumping and stopping a graph.
#include "framework/FXGraph.h"

#include <functional>

#include "framework/QNBasicThreadedFilter.h"

namespace framix {

namespace {

void ForEachComponent(const TKTComponent& root, const std::function<void(TKTComponent&)>& visit)
{
    for (TKTComponent* child : root.GetComponents()) {
        visit(*child);
        ForEachComponent(*child, visit);
    }
}

} // namespace

TFXGraph::TFXGraph(TKTComponent* owner) : TKTComponent(owner) {}

TFXGraph::~TFXGraph()
{
    if (FRunning) {
        try {
            Stop();
        } catch (...) {
            // A destructor must not throw; the error was the stream's, and it has ended.
        }
    }
}

const TFXClassInfo& TFXGraph::ClassInfo()
{
    static const TFXClassInfo info{"TFXGraph", &TKTComponent::ClassInfo(), {}};
    return info;
}

std::vector<IFXPumpSource*> TFXGraph::GetActiveSources() const
{
    std::vector<IFXPumpSource*> sources;
    ForEachComponent(*this, [&](TKTComponent& c) {
        if (auto* source = dynamic_cast<IFXPumpSource*>(&c); source && source->IsActiveSource())
            sources.push_back(source);
    });
    return sources;
}

void TFXGraph::Start()
{
    if (FRunning)
        Stop();
    FSources = GetActiveSources();
    FEnded.assign(FSources.size(), false);
    FRunning = true;
    for (IFXPumpSource* source : FSources)
        source->StartSource();
}

bool TFXGraph::Pump()
{
    if (!FRunning)
        Start();
    bool any = false;
    for (std::size_t i = 0; i < FSources.size(); ++i) {
        if (FEnded[i])
            continue;
        if (Pump(*FSources[i]))
            any = true;
        else
            FEnded[i] = true;
    }
    return any;
}

bool TFXGraph::Pump(IFXPumpSource& source)
{
    if (!FXFrameStatsEnabled())
        return source.PumpFrame();
    auto* component = dynamic_cast<TKTComponent*>(&source);
    TFXFrameTimer timer(component ? &component->GetFrameStats() : nullptr);
    return source.PumpFrame();
}

void TFXGraph::Stop()
{
    if (!FRunning)
        return;
    FRunning = false;
    for (IFXPumpSource* source : FSources)
        source->StopSource();
    FSources.clear();
    WaitIdle();
}

void TFXGraph::WaitIdle()
{
    // Draining one worker can fill another further down, so repeat until a whole pass found
    // every queue empty.
    bool busy = true;
    while (busy) {
        busy = false;
        ForEachComponent(*this, [&](TKTComponent& c) {
            if (auto* filter = dynamic_cast<TQNBasicThreadedFilter*>(&c); filter &&
                                                                         filter->HasWorker()) {
                filter->WaitIdle();
                busy = busy || !filter->IsIdle();
            }
        });
    }
}

} // namespace framix
