// SPDX-License-Identifier: MIT
// A dispatcher module: a list of IPP-named primitive variables bound by name when the module
// first starts.
#pragma once

#include <cstddef>
#include <mutex>
#include <span>

namespace framix {

// Loaders that resolve an IPP name to a function address, or null (Ktippiloader, Ktippsloader).
using TFXProcLoader = void* (*)(const wchar_t* name);

// One variable of a module: its IPP name, the loader that resolves it and how to store the
// address into the typed variable.
struct TFXBinding {
    const wchar_t* Name;
    TFXProcLoader Loader;
    void (*Store)(void* address);
};

class TFXDispatcherModule {
public:
    TFXDispatcherModule(const char* name, std::span<const TFXBinding> bindings)
        : FName(name), FBindings(bindings)
    {
    }

    // Binds every variable, one lookup each, in declaration order, on the first start; later
    // starts only count. A name no loader provides is an EFXError naming it; then nothing is
    // bound and the start does not count, so a later start tries again.
    void Start();
    // Counts down; the variables keep their values.
    void Stop();

    const char* Name() const { return FName; }
    std::span<const TFXBinding> Bindings() const { return FBindings; }
    int StartCount() const;
    // How many times the variables were bound: 1 after any number of successful starts.
    int BindCount() const;

private:
    const char* FName;
    std::span<const TFXBinding> FBindings;
    mutable std::mutex FLock;
    int FStarts = 0;
    int FBinds = 0;
};

} // namespace framix

// Module lists are X-lists V(name, ...): a whole family list can be spliced in, or single
// names given. The loader follows the name: ipps* through GetIPPSProcAddress, the rest
// through GetIPPIProcAddress.
#define FX_DECLARE_IPP_VARIABLE(name, ...) extern TPtr_##name name;
#define FX_DEFINE_IPP_VARIABLE(name, ...) TPtr_##name name = nullptr;
#define FX_IPP_BINDING(name, ...)                                                                  \
    {L## #name, ::framix::FXLoaderFor(#name), [](void* address) {                                  \
         ::framix::ipp::name = reinterpret_cast<::framix::ipp::TPtr_##name>(address);              \
     }},

// Defines `TFXDispatcherModule& <Module>Module()` from the module's list.
#define FX_DEFINE_DISPATCHER_MODULE(Mod, LIST)                                                     \
    TFXDispatcherModule& Mod##Module()                                                             \
    {                                                                                              \
        static const TFXBinding kBindings[] = {LIST(FX_IPP_BINDING){nullptr, nullptr, nullptr}};   \
        static TFXDispatcherModule kModule(#Mod, std::span(kBindings, std::size(kBindings) - 1));  \
        return kModule;                                                                            \
    }

namespace framix {
// GetIPPSProcAddress for names starting with "ipps", GetIPPIProcAddress otherwise.
TFXProcLoader FXLoaderFor(const char* name);
} // namespace framix
