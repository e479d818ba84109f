// SPDX-License-Identifier: MIT
// Finds built-in primitives by name, and loads a real Intel IPP at run time when asked.
#include "framework/primitives/dispatch/FXRealIpp.h"

#include "framework/primitives/FXPrimitiveRegistry.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <dlfcn.h>
#include <string>

namespace framix {
namespace {

// Keep sorted: FXRealIppVerified searches it. Each name's argument list is the legacy one in
// IPP 2021 and later (IppDifferentialTest compares it with the installed headers). Not here:
// the noise functions (9.0 dropped "_Direct" from their names) and our own extra functions.
constexpr std::array<std::string_view, 36> kVerifiedNames = {
    "ippiConvert_16u32f_C1R",
    "ippiConvert_32f16u_C1R",
    "ippiConvert_32f8u_C1R",
    "ippiConvert_8u32f_C1R",
    "ippiCopy_16s_C1R",
    "ippiCopy_8u_AC4C3R",
    "ippiCopy_8u_AC4R",
    "ippiCopy_8u_C1C4R",
    "ippiCopy_8u_C1R",
    "ippiCopy_8u_C3AC4R",
    "ippiCopy_8u_C3P3R",
    "ippiCopy_8u_C3R",
    "ippiCopy_8u_C4CR",
    "ippiCopy_8u_C4P4R",
    "ippiCopy_8u_C4R",
    "ippiImageJaehne_8u_C3R",
    "ippiMirror_16u_C1R",
    "ippiMirror_8u_AC4R",
    "ippiMirror_8u_C1R",
    "ippiMirror_8u_C3R",
    "ippiMirror_8u_C4IR",
    "ippiMirror_8u_C4R",
    "ippiSet_16s_C1R",
    "ippiSet_8u_AC4R",
    "ippiSet_8u_C1R",
    "ippiSet_8u_C3R",
    "ippiSet_8u_C4R",
    "ippiSwapChannels_8u_AC4R",
    "ippiSwapChannels_8u_C3IR",
    "ippsAdd_32s_ISfs",
    "ippsCopy_8u",
    "ippsMulC_32s_ISfs",
    "ippsPolarToCart_64f",
    "ippsRShiftC_32s_I",
    "ippsSet_32s",
    "ippsSet_8u",
};

std::string Narrow(const wchar_t* name)
{
    std::string out;
    for (; name != nullptr && *name != 0; ++name)
        out += *name < 128 ? static_cast<char>(*name) : '?';
    return out;
}

// The IPP libraries, opened once; null handles where one is missing.
struct TRealIpp {
    void* Core = nullptr;
    std::array<void*, 3> Image{}; // ippi, ippcc, ippcv
    void* Signal = nullptr;

    bool Loaded() const { return Core != nullptr && Image[0] != nullptr; }
};

void* OpenLibrary(const std::string& dir, const char* base)
{
    // The unversioned name comes with ipp-devel; the wheels' runtime names carry the
    // interface's major version.
    for (const char* suffix : {".so", ".so.11", ".so.10", ".so.12"}) {
        std::string file = std::string(base) + suffix;
        if (!dir.empty())
            file = dir + "/" + file;
        if (void* handle = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL))
            return handle;
    }
    return nullptr;
}

const TRealIpp& RealIpp()
{
    static const TRealIpp kIpp = [] {
        TRealIpp ipp;
#ifdef FRAMIX_WITH_IPP
        const char* env = std::getenv("FRAMIX_IPP_DIR");
        const std::string dir = env != nullptr ? env : "";
        // Global, so the processor-specific libraries the dispatchers open find the core.
        ipp.Core = dlopen(
            (dir.empty() ? std::string("libippcore.so.11") : dir + "/libippcore.so.11").c_str(),
            RTLD_NOW | RTLD_GLOBAL);
        if (ipp.Core == nullptr)
            ipp.Core = OpenLibrary(dir, "libippcore");
        if (ipp.Core == nullptr)
            return ipp;
        ipp.Image = {OpenLibrary(dir, "libippi"), OpenLibrary(dir, "libippcc"),
                     OpenLibrary(dir, "libippcv")};
        ipp.Signal = OpenLibrary(dir, "libipps");
        if (auto init = reinterpret_cast<int (*)()>(dlsym(ipp.Core, "ippInit")))
            init();
#endif
        return ipp;
    }();
    return kIpp;
}

bool Verified(std::string_view name)
{
    return std::binary_search(kVerifiedNames.begin(), kVerifiedNames.end(), name);
}

} // namespace

std::span<const std::string_view> FXRealIppVerifiedNames()
{
    return kVerifiedNames;
}

bool FXRealIppActive()
{
    static const bool kActive = [] {
        const char* use = std::getenv("FRAMIX_USE_IPP");
        return use != nullptr && std::string_view(use) == "1" && RealIpp().Loaded();
    }();
    return kActive;
}

void* FXRealIppSymbol(std::string_view name)
{
    const TRealIpp& ipp = RealIpp();
    const std::string symbol(name);
    if (name.starts_with("ipps"))
        return ipp.Signal != nullptr ? dlsym(ipp.Signal, symbol.c_str()) : nullptr;
    if (name.starts_with("ipp") && !name.starts_with("ippi") && ipp.Core != nullptr)
        return dlsym(ipp.Core, symbol.c_str());
    for (void* lib : ipp.Image)
        if (lib != nullptr)
            if (void* address = dlsym(lib, symbol.c_str()))
                return address;
    return nullptr;
}

void* FXResolvePrimitive(const wchar_t* name, TFXIppDomain domain)
{
    const std::string narrow = Narrow(name);
    const bool signal = std::string_view(narrow).starts_with("ipps");
    if (signal != (domain == TFXIppDomain::Signal))
        return nullptr; // each loader answers for its own library only
    if (Verified(narrow) && FXRealIppActive())
        if (void* address = FXRealIppSymbol(narrow))
            return address;
    if (const prim::TFXPrimitiveInfo* info = prim::FXFindPrimitive(narrow))
        return reinterpret_cast<void*>(info->Entry);
    return nullptr;
}

} // namespace framix
