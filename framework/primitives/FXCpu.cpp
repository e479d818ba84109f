// SPDX-License-Identifier: MIT
// Processor detection for the primitive layer's levels and the FRAMIX_SIMD cap.
#include "framework/primitives/FXCpu.h"

#include <cpuid.h>
#include <cstdint>
#include <cstdlib>

namespace framix {
namespace {

constexpr std::array<std::string_view, kFXSimdLevelCount> kLevelNames = {"ref", "sse41", "avx2",
                                                                         "avx512"};

std::uint64_t ReadXcr0()
{
    std::uint32_t eax = 0, edx = 0;
    __asm__ volatile("xgetbv" : "=a"(eax), "=d"(edx) : "c"(0));
    return (std::uint64_t(edx) << 32) | eax;
}

TFXSimdLevel DetectLevel()
{
    unsigned eax = 0, ebx = 0, ecx = 0, edx = 0;
    if (!__get_cpuid(1, &eax, &ebx, &ecx, &edx))
        return TFXSimdLevel::Ref;
    const bool sse41 = (ecx & bit_SSE4_1) != 0;
    const bool osxsave = (ecx & bit_OSXSAVE) != 0;
    const bool avx = (ecx & bit_AVX) != 0;
    const bool fma = (ecx & bit_FMA) != 0;
    if (!sse41)
        return TFXSimdLevel::Ref;
    if (!osxsave || !avx || !fma)
        return TFXSimdLevel::Sse41;
    // The operating system must save the wider registers, or using them corrupts other threads.
    const std::uint64_t xcr0 = ReadXcr0();
    const bool ymmSaved = (xcr0 & 0x6) == 0x6;
    const bool zmmSaved = (xcr0 & 0xE6) == 0xE6;
    if (!ymmSaved || __get_cpuid_max(0, nullptr) < 7)
        return TFXSimdLevel::Sse41;
    __cpuid_count(7, 0, eax, ebx, ecx, edx);
    const bool avx2 = (ebx & bit_AVX2) != 0;
    if (!avx2)
        return TFXSimdLevel::Sse41;
    const bool avx512 =
        (ebx & bit_AVX512F) && (ebx & bit_AVX512BW) && (ebx & bit_AVX512VL) && (ebx & bit_AVX512DQ);
    return avx512 && zmmSaved ? TFXSimdLevel::Avx512 : TFXSimdLevel::Avx2;
}

} // namespace

std::string_view FXLevelName(TFXSimdLevel level)
{
    return kLevelNames[static_cast<int>(level)];
}

bool FXParseLevel(std::string_view name, TFXSimdLevel& level)
{
    for (TFXSimdLevel l : kFXAllSimdLevels)
        if (name == FXLevelName(l)) {
            level = l;
            return true;
        }
    return false;
}

TFXSimdLevel FXCpuLevel()
{
    static const TFXSimdLevel kLevel = DetectLevel();
    return kLevel;
}

bool FXCpuSupports(TFXSimdLevel level)
{
    return level <= FXCpuLevel();
}

TFXSimdLevel FXSelectableLevel()
{
    static const TFXSimdLevel kLevel = [] {
        TFXSimdLevel cap = TFXSimdLevel::Avx512;
        // An unknown FRAMIX_SIMD value is ignored rather than fatal, so a typo never stops a
        // program; the benchmarks print the level they ran.
        if (const char* env = std::getenv("FRAMIX_SIMD"))
            FXParseLevel(env, cap);
        return cap < FXCpuLevel() ? cap : FXCpuLevel();
    }();
    return kLevel;
}

} // namespace framix
