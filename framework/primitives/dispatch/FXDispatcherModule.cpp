// SPDX-License-Identifier: MIT
// Binding of dispatcher modules' variables at start.
#include "framework/primitives/dispatch/FXDispatcherModule.h"

#include "framework/FXError.h"
#include "framework/primitives/dispatch/Ktippiloader.h"
#include "framework/primitives/dispatch/Ktippsloader.h"

#include <string>
#include <string_view>
#include <vector>

namespace framix {

TFXProcLoader FXLoaderFor(const char* name)
{
    return std::string_view(name).starts_with("ipps") ? &GetIPPSProcAddress : &GetIPPIProcAddress;
}

void TFXDispatcherModule::Start()
{
    std::lock_guard<std::mutex> lock(FLock);
    if (FBinds > 0) { // not the first start: bind nothing
        ++FStarts;
        return;
    }
    // One lookup per variable, in declaration order; nothing is stored unless all resolve.
    std::vector<void*> addresses;
    addresses.reserve(FBindings.size());
    std::string missing;
    for (const TFXBinding& b : FBindings) {
        addresses.push_back(b.Loader(b.Name));
        if (addresses.back() == nullptr) {
            std::string name;
            for (const wchar_t* c = b.Name; *c; ++c)
                name += static_cast<char>(*c);
            missing += (missing.empty() ? "" : ", ") + name;
        }
    }
    if (!missing.empty())
        throw EFXError(std::string("dispatcher module ") + FName +
                       ": no implementation of primitive " + missing);
    for (std::size_t i = 0; i < FBindings.size(); ++i)
        FBindings[i].Store(addresses[i]);
    ++FBinds;
    ++FStarts;
}

void TFXDispatcherModule::Stop()
{
    std::lock_guard<std::mutex> lock(FLock);
    if (FStarts > 0)
        --FStarts;
}

int TFXDispatcherModule::StartCount() const
{
    std::lock_guard<std::mutex> lock(FLock);
    return FStarts;
}

int TFXDispatcherModule::BindCount() const
{
    std::lock_guard<std::mutex> lock(FLock);
    return FBinds;
}

} // namespace framix
