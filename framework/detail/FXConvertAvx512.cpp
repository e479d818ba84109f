// SPDX-License-Identifier: MIT
// AVX-512 (F, BW, VL) conversion kernels: the vector interface on four 16-byte lanes.
#include <algorithm>
#include <cstdint>
#include <cstring>

#include "framework/FXVideoFormat.h"
#include "framework/detail/FXConvertKernels.h"

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>

#pragma GCC push_options
#pragma GCC target("avx512f,avx512bw,avx512vl")
// GCC 12 reports the deliberately undefined source vectors inside its own AVX-512 intrinsics.
#pragma GCC diagnostic ignored "-Wuninitialized"
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"

namespace framix::conv {
namespace {

struct TVec {
    using T = __m512i;
    static constexpr int kLanes = 4;

    static T Load(const void* p) { return _mm512_loadu_si512(p); }
    static void Store(void* p, T v) { _mm512_storeu_si512(p, v); }
    static T Lanes(const std::uint8_t* m)
    {
        return _mm512_broadcast_i32x4(_mm_loadu_si128(reinterpret_cast<const __m128i*>(m)));
    }
    static T Zero() { return _mm512_setzero_si512(); }
    static T Set8(int v) { return _mm512_set1_epi8(char(v)); }
    static T Set16(int v) { return _mm512_set1_epi16(short(v)); }
    static T Set32(int v) { return _mm512_set1_epi32(v); }
    static T Pair16(int lo, int hi) { return Set32(int(std::uint32_t(hi) << 16 | (lo & 0xFFFF))); }

    static T Shuffle(T v, T m) { return _mm512_shuffle_epi8(v, m); }
    static T And(T a, T b) { return _mm512_and_si512(a, b); }
    static T Or(T a, T b) { return _mm512_or_si512(a, b); }
    static T Add16(T a, T b) { return _mm512_add_epi16(a, b); }
    static T Sub16(T a, T b) { return _mm512_sub_epi16(a, b); }
    static T Add32(T a, T b) { return _mm512_add_epi32(a, b); }
    static T AddsU8(T a, T b) { return _mm512_adds_epu8(a, b); }
    template <int N> static T Srai32(T v) { return _mm512_srai_epi32(v, N); }
    template <int N> static T Srli16(T v) { return _mm512_srli_epi16(v, N); }
    template <int N> static T Slli16(T v) { return _mm512_slli_epi16(v, N); }
    static T Madd(T a, T b) { return _mm512_madd_epi16(a, b); }
    static T Maddubs(T a, T b) { return _mm512_maddubs_epi16(a, b); }
    static T MulhiU16(T a, T b) { return _mm512_mulhi_epu16(a, b); }
    static T Packs32(T a, T b) { return _mm512_packs_epi32(a, b); }
    static T Packus16(T a, T b) { return _mm512_packus_epi16(a, b); }
    static T Unpacklo8(T a, T b) { return _mm512_unpacklo_epi8(a, b); }
    static T Unpackhi8(T a, T b) { return _mm512_unpackhi_epi8(a, b); }
    static T Unpacklo16(T a, T b) { return _mm512_unpacklo_epi16(a, b); }
    static T Unpackhi16(T a, T b) { return _mm512_unpackhi_epi16(a, b); }
    static T Unpacklo32(T a, T b) { return _mm512_unpacklo_epi32(a, b); }
    static T Unpackhi32(T a, T b) { return _mm512_unpackhi_epi32(a, b); }

    // Lane j <- bytes 12j..12j+15 (reads 52 bytes).
    static T LoadLanes12(const std::uint8_t* p)
    {
        const T v = _mm512_maskz_loadu_epi8((__mmask64(1) << 52) - 1, p);
        return _mm512_permutexvar_epi32(
            _mm512_setr_epi32(0, 1, 2, 3, 3, 4, 5, 6, 6, 7, 8, 9, 9, 10, 11, 12), v);
    }
    // The first 12 bytes of each lane -> 48 contiguous bytes.
    static void StoreLanes12(std::uint8_t* p, T v)
    {
        const T packed = _mm512_permutexvar_epi32(
            _mm512_setr_epi32(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, 15, 15, 15, 15), v);
        _mm512_mask_storeu_epi8(p, (__mmask64(1) << 48) - 1, packed);
    }
    // Lane j, low half <- bytes 8j..8j+7.
    static T LoadLanes8(const std::uint8_t* p)
    {
        const T v = _mm512_castsi256_si512(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(p)));
        return _mm512_permutexvar_epi64(_mm512_setr_epi64(0, 0, 1, 1, 2, 2, 3, 3), v);
    }
    // Lane j holds 8 bytes for lo then 8 for hi.
    static void StoreLanes8Pair(std::uint8_t* lo, std::uint8_t* hi, T v)
    {
        const T q = _mm512_permutexvar_epi64(_mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7), v);
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(lo), _mm512_castsi512_si256(q));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(hi), _mm512_extracti64x4_epi64(q, 1));
    }
    static T LoadWidenU8ToU32(const std::uint8_t* p)
    {
        return _mm512_cvtepu8_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
    }
    static T LoadWidenU8ToU16(const std::uint8_t* p)
    {
        return _mm512_cvtepu8_epi16(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(p)));
    }
    static T FixPack4(T v)
    {
        return _mm512_permutexvar_epi32(
            _mm512_setr_epi32(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15), v);
    }
    static T FixPack2(T v)
    {
        return _mm512_permutexvar_epi64(_mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7), v);
    }
    // Two loaded vectors -> a holds even 16-byte blocks, b odd ones.
    static void Deinterleave2(T& a, T& b)
    {
        const T even = _mm512_permutex2var_epi64(a, _mm512_setr_epi64(0, 1, 4, 5, 8, 9, 12, 13), b);
        const T odd =
            _mm512_permutex2var_epi64(a, _mm512_setr_epi64(2, 3, 6, 7, 10, 11, 14, 15), b);
        a = even;
        b = odd;
    }
    // 192 bytes -> lane j of x_k holds 16-byte chunk 3j + k.
    static void LoadInterleaved3(const std::uint8_t* p, T& x0, T& x1, T& x2)
    {
        const T in0 = Load(p), in1 = Load(p + 64), in2 = Load(p + 128);
        // x0 = chunks 0, 3, 6, 9; x1 = 1, 4, 7, 10; x2 = 2, 5, 8, 11.
        x0 = _mm512_inserti32x4(
            _mm512_permutex2var_epi64(in0, _mm512_setr_epi64(0, 1, 6, 7, 12, 13, 0, 0), in1),
            _mm512_extracti32x4_epi32(in2, 1), 3);
        x1 = _mm512_inserti32x4(
            _mm512_permutex2var_epi64(in0, _mm512_setr_epi64(2, 3, 8, 9, 14, 15, 0, 0), in1),
            _mm512_extracti32x4_epi32(in2, 2), 3);
        const T t =
            _mm512_permutex2var_epi64(in0, _mm512_setr_epi64(4, 5, 10, 11, 0, 0, 0, 0), in1);
        x2 = _mm512_permutex2var_epi64(t, _mm512_setr_epi64(0, 1, 2, 3, 8, 9, 14, 15), in2);
    }
    static void StoreInterleaved3(std::uint8_t* p, T x0, T x1, T x2)
    {
        // Output chunk c = 4m + n is lane c / 3 of x_(c % 3).
        const T out0 = _mm512_inserti32x4(
            _mm512_permutex2var_epi64(x0, _mm512_setr_epi64(0, 1, 8, 9, 0, 0, 2, 3), x1),
            _mm512_castsi512_si128(x2), 2);
        const T out1 = _mm512_inserti32x4(
            _mm512_permutex2var_epi64(x1, _mm512_setr_epi64(2, 3, 10, 11, 0, 0, 4, 5), x2),
            _mm512_extracti32x4_epi32(x0, 2), 2);
        const T out2 = _mm512_inserti32x4(
            _mm512_permutex2var_epi64(x2, _mm512_setr_epi64(4, 5, 14, 15, 0, 0, 6, 7), x0),
            _mm512_extracti32x4_epi32(x1, 3), 2);
        Store(p, out0);
        Store(p + 64, out1);
        Store(p + 128, out2);
    }
};

} // namespace
} // namespace framix::conv

#include "framework/detail/FXConvertSimd.h"

#pragma GCC pop_options

namespace framix::conv {
const TFXFastKernelTable& FastKernelsAvx512()
{
    return kLevelKernels;
}
} // namespace framix::conv

#else

namespace framix::conv {
const TFXFastKernelTable& FastKernelsAvx512()
{
    static constexpr TFXFastKernelTable kNone{};
    return kNone;
}
} // namespace framix::conv

#endif
