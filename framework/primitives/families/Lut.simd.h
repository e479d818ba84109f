// SPDX-License-Identifier: MIT
// Look-up tables, level kernels: compiled once per level (see CMakeLists.txt). Every kernel
// tabulates the mapping once per call (FXLutFill) and then maps the image through the tables.
#include "framework/primitives/families/Lut.h"

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/FXRound.h"
#include "framework/primitives/simd/FXVec.h"
#include "framework/primitives/simd/FXVecBytePermute.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <vector>

namespace framix::prim::FX_SIMD_NS {
namespace {

// One full table per processed channel (256 or 65536 entries).
template <class T> struct TTables {
    static constexpr std::size_t kSize = std::size_t(kFXSampleMax<T>) + 1;
    std::unique_ptr<T[]> Data;
    int Count = 0;     // processed channels
    bool Same = false; // every channel maps alike

    const T* operator[](int c) const { return Data.get() + std::size_t(c) * kSize; }
};

template <class T, TFXLayout L>
TTables<T> Tabulate(TFXLutKind kind, const std::array<TFXLutTable, 4>& tables)
{
    TTables<T> t;
    t.Count = FXProcessedChannels(L);
    t.Data.reset(new T[t.Count * TTables<T>::kSize]);
    t.Same = true;
    for (int c = 0; c < t.Count; ++c) {
        FXLutFill(kind, tables[c], t.Data.get() + std::size_t(c) * TTables<T>::kSize);
        t.Same = t.Same && std::memcmp(t[c], t[0], TTables<T>::kSize * sizeof(T)) == 0;
    }
    return t;
}

// A frame stream maps every frame through the same table, and a 16-bit table takes longer to
// build than a frame to map; each thread keeps the last one it built with its arguments.
struct TCachedTable {
    TFXLutKind Kind = TFXLutKind::Step;
    std::vector<Ipp32s> Levels, Values;
    std::unique_ptr<Ipp16u[]> Data;
};

const Ipp16u* CachedTable(TFXLutKind kind, const TFXLutTable& table)
{
    thread_local TCachedTable cache;
    const std::size_t n = std::size_t(table.Count);
    if (cache.Data == nullptr || cache.Kind != kind || cache.Levels.size() != n ||
        !std::equal(table.Levels, table.Levels + n, cache.Levels.begin()) ||
        !std::equal(table.Values, table.Values + n, cache.Values.begin())) {
        if (cache.Data == nullptr) // one spare entry for the 32-bit gathers of the last one
            cache.Data.reset(new Ipp16u[std::size_t(kFXSampleMax<Ipp16u>) + 2]());
        cache.Kind = kind;
        cache.Levels.assign(table.Levels, table.Levels + n);
        cache.Values.assign(table.Values, table.Values + n);
        FXLutFill(kind, table, cache.Data.get());
    }
    return cache.Data.get();
}

// ---------------------------------------------------------------- scalar rows

// Sample i of a row maps through tables[i % kCh]; with kSkipAlpha the fourth channel keeps
// the destination's bytes. At AVX2 and above, gathers from an L1-resident table; otherwise
// (and for the tail) eight samples are read and written as one word and the table loads decide
// the speed. (The compiler's own vectorisation of these loops is slower: it is switched off.)
template <int kCh, bool kSkipAlpha>
__attribute__((optimize("no-tree-vectorize"))) void MapBytes(const Ipp8u* in, Ipp8u* out, int n,
                                                             const Ipp8u* const* tables)
{
    constexpr int kBlock = kCh == 3 ? 24 : 8; // whole words of whole pixels
    constexpr std::uint64_t kAlphaBytes = 0xFF000000FF000000u;
    int i = 0;
#if defined(FX_SIMD_LEVEL_AVX2) || defined(FX_SIMD_LEVEL_AVX512)
    // Gathers from one 32-bit table of all channels, 32 samples (96 for C3) at a time: lane j of
    // a gather at sample o reads channel (o + j) % kCh's part.
    alignas(32) int wide[4 * 256];
    for (int c = 0; c < kCh; ++c)
        for (int v = 0; v < 256; ++v)
            wide[c * 256 + v] = tables[c][v];
    __m256i offsets[kCh];
    for (int phase = 0; phase < kCh; ++phase) {
        alignas(32) int lanes[8];
        for (int j = 0; j < 8; ++j)
            lanes[j] = 256 * ((phase + j) % kCh);
        offsets[phase] = _mm256_load_si256(reinterpret_cast<const __m256i*>(lanes));
    }
    const __m256i alpha = _mm256_set1_epi32(kSkipAlpha ? int(0xFF000000u) : 0);
    constexpr int kGatherBlock = kCh == 3 ? 96 : 32;
    for (; i + kGatherBlock <= n; i += kGatherBlock)
        for (int b = i; b < i + kGatherBlock; b += 32) {
            __m256i r[4];
            for (int q = 0; q < 4; ++q) {
                const int o = b + 8 * q;
                const __m256i v =
                    _mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(in + o)));
                r[q] = _mm256_i32gather_epi32(wide, _mm256_add_epi32(v, offsets[o % kCh]), 4);
            }
            const __m256i bytes =
                _mm256_permutevar8x32_epi32(_mm256_packus_epi16(_mm256_packus_epi32(r[0], r[1]),
                                                                _mm256_packus_epi32(r[2], r[3])),
                                            _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7));
            __m256i* to = reinterpret_cast<__m256i*>(out + b);
            _mm256_storeu_si256(
                to, kSkipAlpha ? _mm256_blendv_epi8(bytes, _mm256_loadu_si256(to), alpha) : bytes);
        }
#endif
    for (; i + kBlock <= n; i += kBlock)
        for (int w = 0; w < kBlock; w += 8) {
            std::uint64_t s, r = 0;
            std::memcpy(&s, in + i + w, 8);
            for (int j = 0; j < 8; ++j) {
                const int c = (w + j) % kCh;
                if (!(kSkipAlpha && c == 3))
                    r |= std::uint64_t(tables[c][(s >> (8 * j)) & 0xFF]) << (8 * j);
            }
            if constexpr (kSkipAlpha) {
                std::uint64_t d;
                std::memcpy(&d, out + i + w, 8);
                r |= d & kAlphaBytes;
            }
            std::memcpy(out + i + w, &r, 8);
        }
    for (; i < n; ++i)
        if (!(kSkipAlpha && i % kCh == 3))
            out[i] = tables[i % kCh][in[i]];
}

__attribute__((optimize("no-tree-vectorize"))) void MapWords(const Ipp16u* in, Ipp16u* out, int n,
                                                             const Ipp16u* table)
{
    int i = 0;
#if defined(FX_SIMD_LEVEL_AVX512)
    // Gathers read 32 bits at table + 2 v: the table has one spare entry after 65535.
    const __m512i low = _mm512_set1_epi32(0xFFFF);
    for (; i + 16 <= n; i += 16) {
        const __m512i v =
            _mm512_cvtepu16_epi32(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(in + i)));
        const __m512i r = _mm512_and_si512(_mm512_i32gather_epi32(v, table, 2), low);
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i), _mm512_cvtepi32_epi16(r));
    }
#elif defined(FX_SIMD_LEVEL_AVX2)
    for (; i + 8 <= n; i += 8) {
        const __m256i v =
            _mm256_cvtepu16_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(in + i)));
        const __m256i r = _mm256_i32gather_epi32(reinterpret_cast<const int*>(table), v, 2);
        // The low halves of the eight lanes, in order.
        const __m256i packed = _mm256_shuffle_epi8(
            r, _mm256_setr_epi8(0, 1, 4, 5, 8, 9, 12, 13, -1, -1, -1, -1, -1, -1, -1, -1, 0, 1, 4,
                                5, 8, 9, 12, 13, -1, -1, -1, -1, -1, -1, -1, -1));
        const __m256i ordered = _mm256_permute4x64_epi64(packed, 0x08);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out + i), _mm256_castsi256_si128(ordered));
    }
#endif
    for (; i + 4 <= n; i += 4) {
        const Ipp16u a = table[in[i]], b = table[in[i + 1]];
        const Ipp16u c = table[in[i + 2]], d = table[in[i + 3]];
        out[i] = a, out[i + 1] = b, out[i + 2] = c, out[i + 3] = d;
    }
    for (; i < n; ++i)
        out[i] = table[in[i]];
}

// The nBitSize low bits of each sample index the palette.
__attribute__((optimize("no-tree-vectorize"))) void
MapPalette(const Ipp8u* in, Ipp32u* out, int width, const Ipp32u* table, unsigned mask)
{
    int x = 0;
#if defined(FX_SIMD_LEVEL_AVX2) || defined(FX_SIMD_LEVEL_AVX512)
    const __m256i bits = _mm256_set1_epi32(int(mask));
    for (; x + 8 <= width; x += 8) {
        const __m256i v = _mm256_and_si256(
            _mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(in + x))), bits);
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + x),
                            _mm256_i32gather_epi32(reinterpret_cast<const int*>(table), v, 4));
    }
#endif
    for (; x + 4 <= width; x += 4) {
        const Ipp32u a = table[in[x] & mask], b = table[in[x + 1] & mask];
        const Ipp32u c = table[in[x + 2] & mask], d = table[in[x + 3] & mask];
        out[x] = a, out[x + 1] = b, out[x + 2] = c, out[x + 3] = d;
    }
    for (; x < width; ++x)
        out[x] = table[in[x] & mask];
}

#if defined(FX_SIMD_LEVEL_AVX512)

// Byte permutes (simd/FXVecBytePermute.h) make 8-bit tables run at memory speed.

// The registers and lane masks of one image, prepared once.
struct TBytePermuteImage {
    TByteTable Table[4];
    int Tables = 1;
    std::uint64_t Lanes[4][4] = {}; // [phase][c]: lanes of channel c when i % channels == phase
};

template <TFXLayout L> TBytePermuteImage PrepareBytePermutes(const TTables<Ipp8u>& t)
{
    constexpr int kCh = FXChannels(L);
    TBytePermuteImage image;
    image.Tables = t.Same ? 1 : t.Count;
    for (int c = 0; c < image.Tables; ++c)
        image.Table[c] = LoadByteTable(t[c]);
    for (int phase = 0; phase < kCh; ++phase)
        for (int j = 0; j < 64; ++j)
            image.Lanes[phase][(phase + j) % kCh] |= std::uint64_t(1) << j;
    return image;
}

// One row of n samples through a table per channel; the tail is loaded and stored under a
// mask, alpha lanes (AC4) are never stored.
template <TFXLayout L>
__attribute__((target("avx512vbmi"))) void MapRowBytePermute(const Ipp8u* in, Ipp8u* out, int n,
                                                             const TBytePermuteImage& prepared)
{
    constexpr int kCh = FXChannels(L);
    // A copy the stores cannot alias, so the tables stay in registers.
    const TBytePermuteImage image = prepared;
    for (int i = 0; i < n; i += 64) {
        const int phase = 64 % kCh == 0 ? 0 : i % kCh;
        const __mmask64 live = FirstBytesMask(n - i);
        const __m512i idx = _mm512_maskz_loadu_epi8(live, in + i);
        __m512i r = LookUp(image.Table[0], idx);
        for (int c = 1; c < FXProcessedChannels(L); ++c)
            r = _mm512_mask_blend_epi8(image.Lanes[phase][c], r, LookUp(image.Table[c], idx));
        const __mmask64 store = L == TFXLayout::AC4 ? live & ~image.Lanes[phase][3] : live;
        _mm512_mask_storeu_epi8(out + i, store, r);
    }
}

template <TFXLayout L>
void MapImageBytePermute(const Ipp8u* pSrc, int srcStep, Ipp8u* pDst, int dstStep, IppiSize roi,
                         const TTables<Ipp8u>& t)
{
    const TBytePermuteImage image = PrepareBytePermutes<L>(t);
    const int n = roi.width * FXChannels(L);
    // One table for every channel: AC4's alpha lanes are the same in every vector (phase 0).
    const __mmask64 stored = L == TFXLayout::AC4 ? ~image.Lanes[0][3] : ~__mmask64(0);
    for (int y = 0; y < roi.height; ++y) {
        const Ipp8u* in = FXRowAt(pSrc, srcStep, y);
        Ipp8u* out = FXRowAt(pDst, dstStep, y);
        if (image.Tables == 1)
            MapRowThroughTable(in, out, n, image.Table[0], stored);
        else
            MapRowBytePermute<L>(in, out, n, image);
    }
}

// The palette as four byte tables (byte k of every entry), indexed by the whole sample: the
// bits above nBitSize are folded in when the planes are built.
struct TPalettePlanes {
    TByteTable Plane[4];
};

TPalettePlanes PreparePalette(const Ipp32u* table, int nBitSize)
{
    alignas(64) Ipp8u bytes[4][256];
    const unsigned mask = (1u << nBitSize) - 1;
    for (int v = 0; v < 256; ++v)
        for (int k = 0; k < 4; ++k)
            bytes[k][v] = Ipp8u(table[unsigned(v) & mask] >> (8 * k));
    TPalettePlanes planes;
    for (int k = 0; k < 4; ++k)
        planes.Plane[k] = LoadByteTable(bytes[k]);
    return planes;
}

// 64 pixels at a time: four byte lookups, then the bytes interleaved into 32-bit pixels.
// The unpacks work inside 128-bit lanes, so lane l of w[i] holds pixels 16 l + 4 i ... + 3;
// a 4 x 4 transpose of lanes puts them in memory order.
__attribute__((target("avx512vbmi"))) void MapRowPalette(const Ipp8u* in, Ipp32u* out, int width,
                                                         const TPalettePlanes& planes)
{
    for (int x = 0; x < width; x += 64) {
        const int left = width - x;
        const __mmask64 live = FirstBytesMask(left);
        const __m512i idx = _mm512_maskz_loadu_epi8(live, in + x);
        __m512i b[4];
        for (int k = 0; k < 4; ++k)
            b[k] = LookUp(planes.Plane[k], idx);
        const __m512i lo01 = _mm512_unpacklo_epi8(b[0], b[1]);
        const __m512i hi01 = _mm512_unpackhi_epi8(b[0], b[1]);
        const __m512i lo23 = _mm512_unpacklo_epi8(b[2], b[3]);
        const __m512i hi23 = _mm512_unpackhi_epi8(b[2], b[3]);
        const __m512i w0 = _mm512_unpacklo_epi16(lo01, lo23);
        const __m512i w1 = _mm512_unpackhi_epi16(lo01, lo23);
        const __m512i w2 = _mm512_unpacklo_epi16(hi01, hi23);
        const __m512i w3 = _mm512_unpackhi_epi16(hi01, hi23);
        const __m512i t0 = _mm512_shuffle_i64x2(w0, w1, 0x44);
        const __m512i t1 = _mm512_shuffle_i64x2(w2, w3, 0x44);
        const __m512i t2 = _mm512_shuffle_i64x2(w0, w1, 0xEE);
        const __m512i t3 = _mm512_shuffle_i64x2(w2, w3, 0xEE);
        const __m512i o[4] = {
            _mm512_shuffle_i64x2(t0, t1, 0x88), _mm512_shuffle_i64x2(t0, t1, 0xDD),
            _mm512_shuffle_i64x2(t2, t3, 0x88), _mm512_shuffle_i64x2(t2, t3, 0xDD)};
        if (left >= 64) {
            for (int q = 0; q < 4; ++q)
                _mm512_storeu_si512(out + x + 16 * q, o[q]);
            continue;
        }
        for (int q = 0; q < 4; ++q) {
            const int n = std::clamp(left - 16 * q, 0, 16);
            _mm512_mask_storeu_epi32(out + x + 16 * q, __mmask16((1u << n) - 1), o[q]);
        }
    }
}

#endif

template <class T, TFXLayout L>
IppStatus MapImage(TFXLutKind kind, const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roi,
                   const std::array<TFXLutTable, 4>& tables)
{
    const int n = roi.width * FXChannels(L);
    if constexpr (sizeof(T) == 2) { // 16-bit tables come one channel at a time
        const Ipp16u* table = CachedTable(kind, tables[0]);
        for (int y = 0; y < roi.height; ++y)
            MapWords(FXRowAt(pSrc, srcStep, y), FXRowAt(pDst, dstStep, y), n, table);
        return ippStsNoErr;
    } else {
        const TTables<T> t = Tabulate<T, L>(kind, tables);
#if defined(FX_SIMD_LEVEL_AVX512)
        if (HasBytePermutes()) {
            MapImageBytePermute<L>(pSrc, srcStep, pDst, dstStep, roi, t);
            return ippStsNoErr;
        }
#endif
        const Ipp8u* rows[4] = {t[0], t[0], t[0], t[0]};
        if (!t.Same)
            for (int c = 0; c < t.Count; ++c)
                rows[c] = t[c];
        constexpr bool kAlpha = L == TFXLayout::AC4;
        constexpr int kCh = kAlpha ? 4 : FXChannels(L);
        for (int y = 0; y < roi.height; ++y) {
            const T* in = FXRowAt(pSrc, srcStep, y);
            T* out = FXRowAt(pDst, dstStep, y);
            if (t.Same && !kAlpha)
                MapBytes<1, false>(in, out, n, rows);
            else
                MapBytes<kCh, kAlpha>(in, out, n, rows);
        }
        return ippStsNoErr;
    }
}

template <TFXLayout L>
std::array<TFXLutTable, 4> OneTable(const Ipp32s* pValues, const Ipp32s* pLevels, int nLevels)
{
    return {TFXLutTable{pValues, pLevels, nLevels}};
}

} // namespace

template <class T, TFXLayout L>
IppStatus Lut(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
              const Ipp32s* pValues, const Ipp32s* pLevels, int nLevels)
{
    return MapImage<T, L>(TFXLutKind::Step, pSrc, srcStep, pDst, dstStep, roiSize,
                          OneTable<L>(pValues, pLevels, nLevels));
}

template <class T, TFXLayout L>
IppStatus LutLinear(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                    const Ipp32s* pValues, const Ipp32s* pLevels, int nLevels)
{
    return MapImage<T, L>(TFXLutKind::Linear, pSrc, srcStep, pDst, dstStep, roiSize,
                          OneTable<L>(pValues, pLevels, nLevels));
}

template <class T, TFXLayout L>
IppStatus LutCubic(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                   const Ipp32s* pValues, const Ipp32s* pLevels, int nLevels)
{
    return MapImage<T, L>(TFXLutKind::Cubic, pSrc, srcStep, pDst, dstStep, roiSize,
                          OneTable<L>(pValues, pLevels, nLevels));
}

template <class T, TFXLayout L>
IppStatus LutChannels(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                      const Ipp32s* pValues[], const Ipp32s* pLevels[], int nLevels[])
{
    return MapImage<T, L>(TFXLutKind::Step, pSrc, srcStep, pDst, dstStep, roiSize,
                          FXLutTables<L>(pValues, pLevels, nLevels));
}

template <class T, TFXLayout L>
IppStatus LutLinearChannels(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                            const Ipp32s* pValues[], const Ipp32s* pLevels[], int nLevels[])
{
    return MapImage<T, L>(TFXLutKind::Linear, pSrc, srcStep, pDst, dstStep, roiSize,
                          FXLutTables<L>(pValues, pLevels, nLevels));
}

template <class T, TFXLayout L>
IppStatus LutCubicChannels(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                           const Ipp32s* pValues[], const Ipp32s* pLevels[], int nLevels[])
{
    return MapImage<T, L>(TFXLutKind::Cubic, pSrc, srcStep, pDst, dstStep, roiSize,
                          FXLutTables<L>(pValues, pLevels, nLevels));
}

template <class T, TFXLayout L>
IppStatus LutPalette(const T* pSrc, int srcStep, Ipp32u* pDst, int dstStep, IppiSize roiSize,
                     const Ipp32u* pTable, int nBitSize)
{
#if defined(FX_SIMD_LEVEL_AVX512)
    if (HasBytePermutes()) {
        const TPalettePlanes planes = PreparePalette(pTable, nBitSize);
        for (int y = 0; y < roiSize.height; ++y)
            MapRowPalette(FXRowAt(pSrc, srcStep, y), FXRowAt(pDst, dstStep, y), roiSize.width,
                          planes);
        return ippStsNoErr;
    }
#endif
    for (int y = 0; y < roiSize.height; ++y)
        MapPalette(FXRowAt(pSrc, srcStep, y), FXRowAt(pDst, dstStep, y), roiSize.width, pTable,
                   (1u << nBitSize) - 1);
    return ippStsNoErr;
}

FX_KERNEL_TABLE(Lut, FX_LUT_PRIMITIVES)

} // namespace framix::prim::FX_SIMD_NS
