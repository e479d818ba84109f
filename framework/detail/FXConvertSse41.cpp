// SPDX-License-Identifier: MIT
// SSE4.1 conversion kernels: the vector interface on one 16-byte lane.
#include <algorithm>
#include <cstdint>
#include <cstring>

#include "framework/FXVideoFormat.h"
#include "framework/detail/FXConvertKernels.h"

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>

#pragma GCC push_options
#pragma GCC target("sse4.1")

namespace framix::conv {
namespace {

struct TVec {
    using T = __m128i;
    static constexpr int kLanes = 1;

    static T Load(const void* p) { return _mm_loadu_si128(static_cast<const __m128i*>(p)); }
    static void Store(void* p, T v) { _mm_storeu_si128(static_cast<__m128i*>(p), v); }
    static T Lanes(const std::uint8_t* m) { return Load(m); }
    static T Zero() { return _mm_setzero_si128(); }
    static T Set8(int v) { return _mm_set1_epi8(char(v)); }
    static T Set16(int v) { return _mm_set1_epi16(short(v)); }
    static T Set32(int v) { return _mm_set1_epi32(v); }
    static T Pair16(int lo, int hi) { return Set32(int(std::uint32_t(hi) << 16 | (lo & 0xFFFF))); }

    static T Shuffle(T v, T m) { return _mm_shuffle_epi8(v, m); }
    static T And(T a, T b) { return _mm_and_si128(a, b); }
    static T Or(T a, T b) { return _mm_or_si128(a, b); }
    static T Add16(T a, T b) { return _mm_add_epi16(a, b); }
    static T Sub16(T a, T b) { return _mm_sub_epi16(a, b); }
    static T Add32(T a, T b) { return _mm_add_epi32(a, b); }
    static T AddsU8(T a, T b) { return _mm_adds_epu8(a, b); }
    template <int N> static T Srai32(T v) { return _mm_srai_epi32(v, N); }
    template <int N> static T Srli16(T v) { return _mm_srli_epi16(v, N); }
    template <int N> static T Slli16(T v) { return _mm_slli_epi16(v, N); }
    static T Madd(T a, T b) { return _mm_madd_epi16(a, b); }
    static T Maddubs(T a, T b) { return _mm_maddubs_epi16(a, b); }
    static T MulhiU16(T a, T b) { return _mm_mulhi_epu16(a, b); }
    static T Packs32(T a, T b) { return _mm_packs_epi32(a, b); }
    static T Packus16(T a, T b) { return _mm_packus_epi16(a, b); }
    static T Unpacklo8(T a, T b) { return _mm_unpacklo_epi8(a, b); }
    static T Unpackhi8(T a, T b) { return _mm_unpackhi_epi8(a, b); }
    static T Unpacklo16(T a, T b) { return _mm_unpacklo_epi16(a, b); }
    static T Unpackhi16(T a, T b) { return _mm_unpackhi_epi16(a, b); }
    static T Unpacklo32(T a, T b) { return _mm_unpacklo_epi32(a, b); }
    static T Unpackhi32(T a, T b) { return _mm_unpackhi_epi32(a, b); }

    // With one lane the cross-lane moves are plain loads and stores.
    static T LoadLanes12(const std::uint8_t* p) { return Load(p); }
    static void StoreLanes12(std::uint8_t* p, T v)
    {
        _mm_storel_epi64(reinterpret_cast<__m128i*>(p), v);
        const int last = _mm_extract_epi32(v, 2);
        std::memcpy(p + 8, &last, 4);
    }
    static T LoadLanes8(const std::uint8_t* p)
    {
        return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(p));
    }
    static void StoreLanes8Pair(std::uint8_t* lo, std::uint8_t* hi, T v)
    {
        _mm_storel_epi64(reinterpret_cast<__m128i*>(lo), v);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(hi), _mm_srli_si128(v, 8));
    }
    static T LoadWidenU8ToU32(const std::uint8_t* p)
    {
        int v;
        std::memcpy(&v, p, 4);
        return _mm_cvtepu8_epi32(_mm_cvtsi32_si128(v));
    }
    static T LoadWidenU8ToU16(const std::uint8_t* p) { return _mm_cvtepu8_epi16(LoadLanes8(p)); }
    static T FixPack4(T v) { return v; }
    static T FixPack2(T v) { return v; }
    static void Deinterleave2(T&, T&) {}
    static void LoadInterleaved3(const std::uint8_t* p, T& x0, T& x1, T& x2)
    {
        x0 = Load(p);
        x1 = Load(p + 16);
        x2 = Load(p + 32);
    }
    static void StoreInterleaved3(std::uint8_t* p, T x0, T x1, T x2)
    {
        Store(p, x0);
        Store(p + 16, x1);
        Store(p + 32, x2);
    }
};

} // namespace
} // namespace framix::conv

#include "framework/detail/FXConvertSimd.h"

#pragma GCC pop_options

namespace framix::conv {
const TFXFastKernelTable& FastKernelsSse41()
{
    return kLevelKernels;
}
} // namespace framix::conv

#else

namespace framix::conv {
const TFXFastKernelTable& FastKernelsSse41()
{
    static constexpr TFXFastKernelTable kNone{};
    return kNone;
}
} // namespace framix::conv

#endif
