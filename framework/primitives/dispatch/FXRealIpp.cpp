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

// Names whose legacy argument list the real IPP still exports unchanged (checked against its
// headers). One name a line, in any order: the list is sorted at compile time, so each family
// adds its own lines. The look-up tables (ippiLUT*) must never be here: modern IPP kept their
// names but takes a prepared table instead of the level arrays. The colour conversions, twist and
// gamma are here in their C3 forms only: modern IPP writes the alpha channel that their legacy
// AC4R forms leave alone. The point operations (arithmetic, logic, compositing, weighted
// accumulation), copies, sets, mirrors, sample conversions and the signal primitives kept their
// legacy signatures, AC4 forms included. Not here: the noise functions (9.0 dropped "_Direct"
// from their names) and our own extra functions (ippiCopyChannel_8u_C3RAC4R, the RGBA packers).
// clang-format off
constexpr auto kVerifiedNames = [] {
    auto names = std::to_array<std::string_view>({
        "ippiFilterMedianColor_8u_AC4R",
        "ippiFilterMedianColor_8u_C3R",
        "ippiFilterMedianCross_16u_C1R",
        "ippiFilterMedianCross_8u_AC4R",
        "ippiFilterMedianCross_8u_C1R",
        "ippiFilterMedianCross_8u_C3R",
        "ippiLUTPalette_8u32u_C1R",
        "ippiThreshold_GTVal_8u_AC4R",
        "ippiThreshold_GTVal_8u_C3R",
        "ippiThreshold_LTValGTVal_8u_AC4R",
        "ippiThreshold_LTValGTVal_8u_C3R",
        "ippiThreshold_LTVal_8u_AC4R",
        "ippiThreshold_LTVal_8u_C3R",
        "ippiBGRToHLS_8u_C3P3R",
        "ippiBGRToLab_8u_C3R",
        "ippiColorTwist32f_8u_C3R",
        "ippiGammaFwd_8u_C3R",
        "ippiGammaInv_8u_C3R",
        "ippiHLSToBGR_8u_P3C3R",
        "ippiHLSToRGB_8u_C3R",
        "ippiHSVToRGB_8u_C3R",
        "ippiLUVToRGB_8u_C3R",
        "ippiLabToBGR_8u_C3R",
        "ippiRGBToHLS_8u_C3R",
        "ippiRGBToHSV_8u_C3R",
        "ippiRGBToLUV_8u_C3R",
        "ippiRGBToXYZ_8u_C3R",
        "ippiRGBToYCC_8u_C3R",
        "ippiRGBToYCbCr_8u_C3R",
        "ippiRGBToYUV_8u_C3R",
        "ippiXYZToRGB_8u_C3R",
        "ippiYCCToRGB_8u_C3R",
        "ippiYCbCrToRGB_8u_C3R",
        "ippiYUVToRGB_8u_C3R",
        "ippiAbsDiff_16u_C1R",
        "ippiAbsDiff_8u_C1R",
        "ippiAddWeighted_16u32f_C1IR",
        "ippiAddWeighted_8u32f_C1IR",
        "ippiAdd_16u_C1RSfs",
        "ippiAdd_8u_AC4IRSfs",
        "ippiAdd_8u_AC4RSfs",
        "ippiAdd_8u_C1RSfs",
        "ippiAdd_8u_C3RSfs",
        "ippiAlphaCompC_16u_C1R",
        "ippiAlphaCompC_8u_C1R",
        "ippiAlphaCompC_8u_C3R",
        "ippiAlphaCompC_8u_C4R",
        "ippiAlphaComp_8u_AC4R",
        "ippiAnd_16u_C1R",
        "ippiAnd_8u_AC4IR",
        "ippiAnd_8u_AC4R",
        "ippiAnd_8u_C1IR",
        "ippiAnd_8u_C1R",
        "ippiAnd_8u_C3IR",
        "ippiAnd_8u_C3R",
        "ippiDiv_16u_C1RSfs",
        "ippiDiv_8u_AC4IRSfs",
        "ippiDiv_8u_AC4RSfs",
        "ippiDiv_8u_C1RSfs",
        "ippiDiv_8u_C3RSfs",
        "ippiMax_8u_C1R",
        "ippiMulCScale_16u_C1IR",
        "ippiMulCScale_16u_C1R",
        "ippiMulCScale_16u_C3IR",
        "ippiMulCScale_16u_C3R",
        "ippiMulCScale_16u_C4IR",
        "ippiMulCScale_16u_C4R",
        "ippiMulCScale_8u_C1IR",
        "ippiMulCScale_8u_C1R",
        "ippiMulCScale_8u_C3IR",
        "ippiMulCScale_8u_C3R",
        "ippiMulCScale_8u_C4IR",
        "ippiMulCScale_8u_C4R",
        "ippiMul_16u_C1RSfs",
        "ippiMul_8u_AC4IRSfs",
        "ippiMul_8u_AC4RSfs",
        "ippiMul_8u_C1RSfs",
        "ippiMul_8u_C3RSfs",
        "ippiNot_8u_AC4IR",
        "ippiOr_16u_C1R",
        "ippiOr_8u_AC4IR",
        "ippiOr_8u_AC4R",
        "ippiOr_8u_C1IR",
        "ippiOr_8u_C1R",
        "ippiOr_8u_C3IR",
        "ippiOr_8u_C3R",
        "ippiSub_16u_C1RSfs",
        "ippiSub_8u_AC4IRSfs",
        "ippiSub_8u_AC4RSfs",
        "ippiSub_8u_C1RSfs",
        "ippiSub_8u_C3RSfs",
        "ippiXor_16u_C1R",
        "ippiXor_8u_AC4IR",
        "ippiXor_8u_AC4R",
        "ippiXor_8u_C1IR",
        "ippiXor_8u_C1R",
        "ippiXor_8u_C3IR",
        "ippiXor_8u_C3R",
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
    });
    std::ranges::sort(names);
    return names;
}();
// clang-format on

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
