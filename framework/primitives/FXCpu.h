// SPDX-License-Identifier: MIT
// Instruction-set levels of the primitive layer and what this processor (and FRAMIX_SIMD) allows.
#pragma once

#include <array>
#include <string_view>

namespace framix {

// Ordered: a level includes everything below it.
enum class TFXSimdLevel : int { Ref = 0, Sse41 = 1, Avx2 = 2, Avx512 = 3 };

inline constexpr int kFXSimdLevelCount = 4;
inline constexpr std::array<TFXSimdLevel, kFXSimdLevelCount> kFXAllSimdLevels = {
    TFXSimdLevel::Ref, TFXSimdLevel::Sse41, TFXSimdLevel::Avx2, TFXSimdLevel::Avx512};

// "ref", "sse41", "avx2", "avx512": the names FRAMIX_SIMD takes and tests and benchmarks print.
std::string_view FXLevelName(TFXSimdLevel level);

// The best level this processor and operating system support (cpuid + xgetbv).
TFXSimdLevel FXCpuLevel();

// The best level the primitive layer may select: FXCpuLevel() capped by the FRAMIX_SIMD
// environment variable (ref|sse41|avx2|avx512), read once.
TFXSimdLevel FXSelectableLevel();

// True when this processor can execute code of the level (ignores FRAMIX_SIMD).
bool FXCpuSupports(TFXSimdLevel level);

// Parses a level name; false for an unknown one.
bool FXParseLevel(std::string_view name, TFXSimdLevel& level);

} // namespace framix
