// SPDX-License-Identifier: MIT
// Starts the dispatcher modules once.
#include "framework/primitives/dispatch/FXPrimitiveLayer.h"

#include "framework/primitives/dispatch/Fxbasicdispatcher.h"
#include "framework/primitives/dispatch/Fxconvdispatcher.h"
#include "framework/primitives/dispatch/Fxdispatcher.h"
#include "framework/primitives/dispatch/Fxjaehnedispatcher.h"
#include "framework/primitives/dispatch/Fxsdispatcher.h"
#include "framework/primitives/dispatch/Qnbasicdispatcher.h"
#include "framework/primitives/dispatch/Qnresizedispatcher.h"
#include "framework/primitives/dispatch/Snbasicdispatcher.h"

#include <mutex>

namespace framix {

std::span<TFXDispatcherModule* const> FXDispatcherModules()
{
    static TFXDispatcherModule* const kModules[] = {
        &FxdispatcherModule(),       &FxbasicdispatcherModule(), &QnbasicdispatcherModule(),
        &QnresizedispatcherModule(), &SnbasicdispatcherModule(), &FxconvdispatcherModule(),
        &FxsdispatcherModule(),      &FxjaehnedispatcherModule()};
    return kModules;
}

void FXStartPrimitiveLayer()
{
    static std::once_flag started;
    std::call_once(started, [] {
        for (TFXDispatcherModule* module : FXDispatcherModules())
            module->Start();
    });
}

} // namespace framix
