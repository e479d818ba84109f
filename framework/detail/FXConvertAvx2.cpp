// SPDX-License-Identifier: MIT
// AVX2 conversion kernels: the vector interface on two 16-byte lanes.
#include <algorithm>
#include <cstdint>
#include <cstring>

#include "framework/FXVideoFormat.h"
#include "framework/detail/FXConvertKernels.h"

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>

#pragma GCC push_options
#pragma GCC target("avx2")

namespace framix::conv {
namespace {

struct TVec {
    using T = __m256i;
    static constexpr int kLanes = 2;

    static T Load(const void* p) { return _mm256_loadu_si256(static_cast<const __m256i*>(p)); }
    static void Store(void* p, T v) { _mm256_storeu_si256(static_cast<__m256i*>(p), v); }
    static __m128i Load128(const void* p)
    {
        return _mm_loadu_si128(static_cast<const __m128i*>(p));
    }
    static T Lanes(const std::uint8_t* m) { return _mm256_broadcastsi128_si256(Load128(m)); }
    static T Zero() { return _mm256_setzero_si256(); }
    static T Set8(int v) { return _mm256_set1_epi8(char(v)); }
    static T Set16(int v) { return _mm256_set1_epi16(short(v)); }
    static T Set32(int v) { return _mm256_set1_epi32(v); }
    static T Pair16(int lo, int hi) { return Set32(int(std::uint32_t(hi) << 16 | (lo & 0xFFFF))); }

    static T Shuffle(T v, T m) { return _mm256_shuffle_epi8(v, m); }
    static T And(T a, T b) { return _mm256_and_si256(a, b); }
    static T Or(T a, T b) { return _mm256_or_si256(a, b); }
    static T Add16(T a, T b) { return _mm256_add_epi16(a, b); }
    static T Sub16(T a, T b) { return _mm256_sub_epi16(a, b); }
    static T Add32(T a, T b) { return _mm256_add_epi32(a, b); }
    static T AddsU8(T a, T b) { return _mm256_adds_epu8(a, b); }
    template <int N> static T Srai32(T v) { return _mm256_srai_epi32(v, N); }
    template <int N> static T Srli16(T v) { return _mm256_srli_epi16(v, N); }
    template <int N> static T Slli16(T v) { return _mm256_slli_epi16(v, N); }
    static T Madd(T a, T b) { return _mm256_madd_epi16(a, b); }
    static T Maddubs(T a, T b) { return _mm256_maddubs_epi16(a, b); }
    static T MulhiU16(T a, T b) { return _mm256_mulhi_epu16(a, b); }
    static T Packs32(T a, T b) { return _mm256_packs_epi32(a, b); }
    static T Packus16(T a, T b) { return _mm256_packus_epi16(a, b); }
    static T Unpacklo8(T a, T b) { return _mm256_unpacklo_epi8(a, b); }
    static T Unpackhi8(T a, T b) { return _mm256_unpackhi_epi8(a, b); }
    static T Unpacklo16(T a, T b) { return _mm256_unpacklo_epi16(a, b); }
    static T Unpackhi16(T a, T b) { return _mm256_unpackhi_epi16(a, b); }
    static T Unpacklo32(T a, T b) { return _mm256_unpacklo_epi32(a, b); }
    static T Unpackhi32(T a, T b) { return _mm256_unpackhi_epi32(a, b); }

    // Lane j <- bytes 12j..12j+15 (reads 28 bytes).
    static T LoadLanes12(const std::uint8_t* p)
    {
        return _mm256_inserti128_si256(_mm256_castsi128_si256(Load128(p)), Load128(p + 12), 1);
    }
    // The first 12 bytes of each lane -> 24 contiguous bytes.
    static void StoreLanes12(std::uint8_t* p, T v)
    {
        const T packed = _mm256_permutevar8x32_epi32(v, _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 7, 7));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(p), _mm256_castsi256_si128(packed));
        _mm_storel_epi64(reinterpret_cast<__m128i*>(p + 16), _mm256_extracti128_si256(packed, 1));
    }
    // Lane j, low half <- bytes 8j..8j+7.
    static T LoadLanes8(const std::uint8_t* p)
    {
        return _mm256_permute4x64_epi64(_mm256_castsi128_si256(Load128(p)), 0x50);
    }
    // Lane j holds 8 bytes for lo then 8 for hi.
    static void StoreLanes8Pair(std::uint8_t* lo, std::uint8_t* hi, T v)
    {
        const T q = _mm256_permute4x64_epi64(v, 0xD8);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(lo), _mm256_castsi256_si128(q));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(hi), _mm256_extracti128_si256(q, 1));
    }
    static T LoadWidenU8ToU32(const std::uint8_t* p)
    {
        return _mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)));
    }
    static T LoadWidenU8ToU16(const std::uint8_t* p) { return _mm256_cvtepu8_epi16(Load128(p)); }
    static T FixPack4(T v)
    {
        return _mm256_permutevar8x32_epi32(v, _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7));
    }
    static T FixPack2(T v) { return _mm256_permute4x64_epi64(v, 0xD8); }
    // Two loaded vectors -> a holds even 16-byte blocks, b odd ones.
    static void Deinterleave2(T& a, T& b)
    {
        const T even = _mm256_permute2x128_si256(a, b, 0x20),
                odd = _mm256_permute2x128_si256(a, b, 0x31);
        a = even;
        b = odd;
    }
    // 96 bytes -> lane j of x_k holds 16-byte chunk 3j + k.
    static void LoadInterleaved3(const std::uint8_t* p, T& x0, T& x1, T& x2)
    {
        const T in0 = Load(p), in1 = Load(p + 32), in2 = Load(p + 64);
        x0 = _mm256_permute2x128_si256(in0, in1, 0x30);
        x1 = _mm256_permute2x128_si256(in0, in2, 0x21);
        x2 = _mm256_permute2x128_si256(in1, in2, 0x30);
    }
    static void StoreInterleaved3(std::uint8_t* p, T x0, T x1, T x2)
    {
        Store(p, _mm256_permute2x128_si256(x0, x1, 0x20));
        Store(p + 32, _mm256_permute2x128_si256(x2, x0, 0x30));
        Store(p + 64, _mm256_permute2x128_si256(x1, x2, 0x31));
    }
};

} // namespace
} // namespace framix::conv

#include "framework/detail/FXConvertSimd.h"

#pragma GCC pop_options

namespace framix::conv {
const TFXFastKernelTable& FastKernelsAvx2()
{
    return kLevelKernels;
}
} // namespace framix::conv

#else

namespace framix::conv {
const TFXFastKernelTable& FastKernelsAvx2()
{
    static constexpr TFXFastKernelTable kNone{};
    return kNone;
}
} // namespace framix::conv

#endif
