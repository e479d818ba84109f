// SPDX-License-Identifier: MIT
// Whole pixels in 32-bit lanes, for the colour kernels: loads and stores of three- and
// four-channel rows without a scalar loop, and the integer steps of fixed-point conversions
// (included after simd/FXVec.h, once per level).
#pragma once

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/FXIppTypes.h"
#include "framework/primitives/simd/FXVec.h"

#include <cstring>

namespace framix::prim::FX_SIMD_NS {

// A pixel lane holds channel 0 in its low byte, channels 1 and 2 above it and 0 on top.
// LoadPixels<kCh> reads exactly kCh * kLanes32 bytes; StorePixels<3> writes 3 * kLanes32 bytes,
// StorePixels<4> the colour bytes of kLanes32 pixels (alpha kept).
//
// LoadBlocks3 reads the same bytes as LoadPixels3 but leaves each 128-bit block's four pixels
// packed, from byte Block3Start(block) of the block on. HighWordsOf(a, b) takes the high 16 bits of
// a's lanes to the low words and b's to the high words.
//
// Within each 128-bit block: four pixels of 3 bytes to four lanes.
#define FX_PIXELS3_SPREAD 0, 1, 2, -1, 3, 4, 5, -1, 6, 7, 8, -1, 9, 10, 11, -1

// Converted pixels before their store: in each 128-bit block the bytes of channel 0 of its
// four pixels, then of channel 1, then of channel 2, then four unused bytes.
struct TChannelBytes {
    VI32 Bytes;
};

#if defined(FX_SIMD_LEVEL_AVX512)

constexpr int Block3Start(int)
{
    return 0;
}
inline VI32 LoadBlocks3(const Ipp8u* p)
{
    const __m512i v = _mm512_maskz_loadu_epi8(__mmask64(0xFFFFFFFFFFFFull), p);
    return {_mm512_permutexvar_epi32(
        _mm512_setr_epi32(0, 1, 2, 2, 3, 4, 5, 5, 6, 7, 8, 8, 9, 10, 11, 11), v)};
}
inline VI32 LoadPixels3(const Ipp8u* p)
{
    return {_mm512_shuffle_epi8(LoadBlocks3(p).V,
                                _mm512_broadcast_i32x4(_mm_setr_epi8(FX_PIXELS3_SPREAD)))};
}
inline void StoreBlocks3(Ipp8u* p, VI32 packed)
{
    const __m512i ordered = _mm512_permutexvar_epi32(
        _mm512_setr_epi32(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, 15, 15, 15, 15), packed.V);
    _mm512_mask_storeu_epi8(p, __mmask64(0xFFFFFFFFFFFFull), ordered);
}
inline VI32 LoadPixels4(const Ipp8u* p)
{
    return {_mm512_maskz_loadu_epi8(__mmask64(0x7777777777777777ull), p)};
}
inline void StorePixels4(Ipp8u* p, VI32 v)
{
    _mm512_mask_storeu_epi8(p, __mmask64(0x7777777777777777ull), v.V);
}
inline VI32 ShuffleBytes(VI32 v, __m128i pattern)
{
    return {_mm512_shuffle_epi8(v.V, _mm512_broadcast_i32x4(pattern))};
}
inline VI32 OrI32(VI32 a, VI32 b)
{
    return {_mm512_or_si512(a.V, b.V)};
}
inline VI32 ShiftRightI32(VI32 a, int bits) // arithmetic
{
    return {_mm512_srai_epi32(a.V, unsigned(bits))};
}
inline VI32 ShiftLeftI32(VI32 a, int bits)
{
    return {_mm512_slli_epi32(a.V, unsigned(bits))};
}
inline VI32 HighWordsOf(VI32 a, VI32 b)
{
    return {_mm512_mask_blend_epi16(__mmask32(0xAAAAAAAAu), _mm512_srli_epi32(a.V, 16), b.V)};
}
// Three channel lanes saturated to 0 ... 255 (any 32-bit value), as channel bytes.
inline TChannelBytes PixelsOf(VI32 c0, VI32 c1, VI32 c2)
{
    const __m512i bytes =
        _mm512_packus_epi16(_mm512_packs_epi32(c0.V, c1.V), _mm512_packs_epi32(c2.V, c2.V));
    return {{bytes}};
}
inline VF32 FloorF32(VF32 v)
{
    return {_mm512_roundscale_ps(v.V, _MM_FROUND_TO_NEG_INF | _MM_FROUND_NO_EXC)};
}

inline VI32 BitsOf(VF32 v)
{
    return {_mm512_castps_si512(v.V)};
}
inline VF32 FloatOfBits(VI32 v)
{
    return {_mm512_castsi512_ps(v.V)};
}

#elif defined(FX_SIMD_LEVEL_AVX2)

// The upper block starts 4 bytes early, so no byte past the 24 pixels' bytes is read.
constexpr int Block3Start(int block)
{
    return 4 * block;
}
inline VI32 LoadBlocks3(const Ipp8u* p)
{
    const __m128i lo = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    const __m128i hi = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 8));
    return {_mm256_set_m128i(hi, lo)};
}
inline VI32 LoadPixels3(const Ipp8u* p)
{
    return {_mm256_shuffle_epi8(LoadBlocks3(p).V,
                                _mm256_setr_epi8(FX_PIXELS3_SPREAD, 4, 5, 6, -1, 7, 8, 9, -1, 10,
                                                 11, 12, -1, 13, 14, 15, -1))};
}
inline void StoreBlocks3(Ipp8u* p, VI32 packed)
{
    const __m256i ordered =
        _mm256_permutevar8x32_epi32(packed.V, _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 7, 7));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p), _mm256_castsi256_si128(ordered));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p + 16), _mm256_extracti128_si256(ordered, 1));
}
inline VI32 LoadPixels4(const Ipp8u* p)
{
    return {_mm256_and_si256(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(p)),
                             _mm256_set1_epi32(0x00FFFFFF))};
}
inline void StorePixels4(Ipp8u* p, VI32 v)
{
    __m256i* at = reinterpret_cast<__m256i*>(p);
    _mm256_storeu_si256(
        at, _mm256_blendv_epi8(v.V, _mm256_loadu_si256(at), _mm256_set1_epi32(int(0xFF000000u))));
}
inline VI32 ShuffleBytes(VI32 v, __m128i pattern)
{
    return {_mm256_shuffle_epi8(v.V, _mm256_broadcastsi128_si256(pattern))};
}
inline VI32 OrI32(VI32 a, VI32 b)
{
    return {_mm256_or_si256(a.V, b.V)};
}
inline VI32 ShiftRightI32(VI32 a, int bits) // arithmetic
{
    return {_mm256_srai_epi32(a.V, bits)};
}
inline VI32 ShiftLeftI32(VI32 a, int bits)
{
    return {_mm256_slli_epi32(a.V, bits)};
}
inline VI32 HighWordsOf(VI32 a, VI32 b)
{
    return {_mm256_blend_epi16(_mm256_srli_epi32(a.V, 16), b.V, 0xAA)};
}
inline TChannelBytes PixelsOf(VI32 c0, VI32 c1, VI32 c2)
{
    const __m256i bytes =
        _mm256_packus_epi16(_mm256_packs_epi32(c0.V, c1.V), _mm256_packs_epi32(c2.V, c2.V));
    return {{bytes}};
}
inline VF32 FloorF32(VF32 v)
{
    return {_mm256_floor_ps(v.V)};
}

inline VI32 BitsOf(VF32 v)
{
    return {_mm256_castps_si256(v.V)};
}
inline VF32 FloatOfBits(VI32 v)
{
    return {_mm256_castsi256_ps(v.V)};
}

#else // SSE4.1

constexpr int Block3Start(int)
{
    return 0;
}
inline VI32 LoadBlocks3(const Ipp8u* p)
{
    Ipp32s last;
    std::memcpy(&last, p + 8, 4);
    return {_mm_insert_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)), last, 2)};
}
inline VI32 LoadPixels3(const Ipp8u* p)
{
    return {_mm_shuffle_epi8(LoadBlocks3(p).V, _mm_setr_epi8(FX_PIXELS3_SPREAD))};
}
inline void StoreBlocks3(Ipp8u* p, VI32 packed)
{
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p), packed.V);
    const Ipp32s last = _mm_extract_epi32(packed.V, 2);
    std::memcpy(p + 8, &last, 4);
}
inline VI32 LoadPixels4(const Ipp8u* p)
{
    return {_mm_and_si128(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)),
                          _mm_set1_epi32(0x00FFFFFF))};
}
inline void StorePixels4(Ipp8u* p, VI32 v)
{
    __m128i* at = reinterpret_cast<__m128i*>(p);
    _mm_storeu_si128(at,
                     _mm_blendv_epi8(v.V, _mm_loadu_si128(at), _mm_set1_epi32(int(0xFF000000u))));
}
inline VI32 ShuffleBytes(VI32 v, __m128i pattern)
{
    return {_mm_shuffle_epi8(v.V, pattern)};
}
inline VI32 OrI32(VI32 a, VI32 b)
{
    return {_mm_or_si128(a.V, b.V)};
}
inline VI32 ShiftRightI32(VI32 a, int bits) // arithmetic
{
    return {_mm_srai_epi32(a.V, bits)};
}
inline VI32 ShiftLeftI32(VI32 a, int bits)
{
    return {_mm_slli_epi32(a.V, bits)};
}
inline VI32 HighWordsOf(VI32 a, VI32 b)
{
    return {_mm_blend_epi16(_mm_srli_epi32(a.V, 16), b.V, 0xAA)};
}
inline TChannelBytes PixelsOf(VI32 c0, VI32 c1, VI32 c2)
{
    const __m128i bytes =
        _mm_packus_epi16(_mm_packs_epi32(c0.V, c1.V), _mm_packs_epi32(c2.V, c2.V));
    return {{bytes}};
}
inline VF32 FloorF32(VF32 v)
{
    return {_mm_floor_ps(v.V)};
}

inline VI32 BitsOf(VF32 v)
{
    return {_mm_castps_si128(v.V)};
}
inline VF32 FloatOfBits(VI32 v)
{
    return {_mm_castsi128_ps(v.V)};
}

#endif

template <int kCh> inline VI32 LoadPixels(const Ipp8u* p)
{
    if constexpr (kCh == 3)
        return LoadPixels3(p);
    else
        return LoadPixels4(p);
}

// One byte shuffle takes channel bytes to the stored order: twelve packed bytes per block for
// three channels, pixel lanes for four.
template <int kCh> inline void StorePixels(Ipp8u* p, TChannelBytes v)
{
    if constexpr (kCh == 3)
        StoreBlocks3(p, ShuffleBytes(v.Bytes, _mm_setr_epi8(0, 4, 8, 1, 5, 9, 2, 6, 10, 3, 7, 11,
                                                            -1, -1, -1, -1)));
    else
        StorePixels4(p, ShuffleBytes(v.Bytes, _mm_setr_epi8(0, 4, 8, -1, 1, 5, 9, -1, 2, 6, 10, -1,
                                                            3, 7, 11, -1)));
}

// Channel c (0 ... 2) of pixel lanes.
inline VI32 ChannelOf(VI32 pixels, int c)
{
    return And(ShiftRightI32(pixels, 8 * c), SplatI32(0xFF));
}

#undef FX_PIXELS3_SPREAD

// Runs step(in, out), which converts kLanes32 pixels of kCh channels (3, or 4 with alpha kept),
// over every pixel of an image. Full vectors go straight between the rows; a row's last pixels
// through a small buffer, so no byte outside the row is read or written.
template <int kCh, class Step>
inline IppStatus ForEachPixelVector(const Ipp8u* pSrc, int srcStep, Ipp8u* pDst, int dstStep,
                                    IppiSize roi, Step step)
{
    for (int y = 0; y < roi.height; ++y) {
        const Ipp8u* in = FXRowAt(pSrc, srcStep, y);
        Ipp8u* out = FXRowAt(pDst, dstStep, y);
        int x = 0;
        for (; x + kLanes32 <= roi.width; x += kLanes32)
            step(in + x * kCh, out + x * kCh);
        if (x < roi.width) {
            const std::size_t bytes = std::size_t(roi.width - x) * kCh;
            alignas(64) Ipp8u inBuf[4 * kLanes32] = {}, outBuf[4 * kLanes32] = {};
            std::memcpy(inBuf, in + x * kCh, bytes);
            std::memcpy(outBuf, out + x * kCh, bytes);
            step(inBuf, outBuf);
            std::memcpy(out + x * kCh, outBuf, bytes);
        }
    }
    return ippStsNoErr;
}

// Runs convert (pixel lanes -> PixelsOf's channel bytes) over every pixel of an image.
template <int kCh, class Convert>
inline IppStatus ConvertPixelLanes(const Ipp8u* pSrc, int srcStep, Ipp8u* pDst, int dstStep,
                                   IppiSize roi, Convert convert)
{
    return ForEachPixelVector<kCh>(
        pSrc, srcStep, pDst, dstStep, roi,
        [&](const Ipp8u* in, Ipp8u* out) { StorePixels<kCh>(out, convert(LoadPixels<kCh>(in))); });
}

} // namespace framix::prim::FX_SIMD_NS
