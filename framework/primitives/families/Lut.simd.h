// SPDX-License-Identifier: MIT
// Look-up tables, level kernels: compiled once per level (see CMakeLists.txt). Every kernel
// tabulates the mapping once per call (FXLutFill) and then maps the image through the tables.
#include "framework/primitives/families/Lut.h"

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/FXRound.h"
#include "framework/primitives/simd/FXVec.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

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

// ---------------------------------------------------------------- scalar rows

// C1, or every channel alike: one table for all samples of the row.
template <class T> void MapSamples(const T* in, T* out, int n, const T* table)
{
    for (int i = 0; i < n; ++i)
        out[i] = table[in[i]];
}

template <class T, TFXLayout L> void MapPixels(const T* in, T* out, int width, const TTables<T>& t)
{
    constexpr int kCh = FXChannels(L);
    const T* t0 = t[0];
    const T* t1 = t[1];
    const T* t2 = t[2];
    for (int x = 0; x < width; ++x, in += kCh, out += kCh) {
        out[0] = t0[in[0]];
        out[1] = t1[in[1]];
        out[2] = t2[in[2]];
        if constexpr (L == TFXLayout::C4)
            out[3] = t[3][in[3]];
    }
}

#if defined(FX_SIMD_LEVEL_AVX512)

// Byte permutes (AVX-512 VBMI) look a whole 256-entry table up in three instructions, which
// makes 8-bit tables run at memory speed. Not part of the level's baseline (Skylake-X lacks
// it), so it is checked once at run time; without it the scalar rows run.
bool HasBytePermutes()
{
    static const bool kHas = __builtin_cpu_supports("avx512vbmi");
    return kHas;
}

struct TByteTable {
    __m512i Q[4];
};

__attribute__((target("avx512vbmi"))) inline __m512i LookUp(const TByteTable& t, __m512i idx)
{
    const __m512i low = _mm512_permutex2var_epi8(t.Q[0], idx, t.Q[1]);
    const __m512i high = _mm512_permutex2var_epi8(t.Q[2], idx, t.Q[3]);
    return _mm512_mask_blend_epi8(_mm512_movepi8_mask(idx), low, high);
}

// Lanes of a 64-byte vector that hold channel c, for vectors starting at a multiple of
// `channels` plus `phase`.
std::uint64_t ChannelLanes(int channels, int phase, int c)
{
    std::uint64_t m = 0;
    for (int j = 0; j < 64; ++j)
        if ((phase + j) % channels == c)
            m |= std::uint64_t(1) << j;
    return m;
}

// One row of n samples; tables[c] for the lanes of channel c, alpha lanes (AC4) untouched.
template <TFXLayout L>
__attribute__((target("avx512vbmi"))) void MapRowBytePermute(const Ipp8u* in, Ipp8u* out, int n,
                                                             const TTables<Ipp8u>& t)
{
    constexpr int kCh = FXChannels(L);
    const int tables = t.Same ? 1 : t.Count;
    TByteTable table[4];
    for (int c = 0; c < tables; ++c)
        for (int q = 0; q < 4; ++q)
            table[c].Q[q] = _mm512_loadu_si512(t[c] + 64 * q);
    // lanes[phase][c]; the vector at offset i has phase i % kCh.
    std::uint64_t lanes[4][4] = {};
    for (int phase = 0; phase < kCh; ++phase)
        for (int c = 0; c < kCh; ++c)
            lanes[phase][c] = ChannelLanes(kCh, phase, c);
    for (int i = 0; i < n; i += 64) {
        const int phase = i % kCh;
        const __mmask64 live = n - i >= 64 ? ~__mmask64(0) : (__mmask64(1) << (n - i)) - 1;
        const __m512i idx = _mm512_maskz_loadu_epi8(live, in + i);
        __m512i r = LookUp(table[0], idx);
        for (int c = 1; c < tables; ++c)
            r = _mm512_mask_blend_epi8(lanes[phase][c], r, LookUp(table[c], idx));
        const __mmask64 store = L == TFXLayout::AC4 ? live & ~lanes[phase][3] : live;
        _mm512_mask_storeu_epi8(out + i, store, r);
    }
}

#endif

template <class T, TFXLayout L>
IppStatus MapImage(TFXLutKind kind, const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roi,
                   const std::array<TFXLutTable, 4>& tables)
{
    const TTables<T> t = Tabulate<T, L>(kind, tables);
    const int n = roi.width * FXChannels(L);
    for (int y = 0; y < roi.height; ++y) {
        const T* in = FXRowAt(pSrc, srcStep, y);
        T* out = FXRowAt(pDst, dstStep, y);
#if defined(FX_SIMD_LEVEL_AVX512)
        if constexpr (sizeof(T) == 1)
            if (HasBytePermutes()) {
                MapRowBytePermute<L>(in, out, n, t);
                continue;
            }
#endif
        if (L == TFXLayout::C1 || (L != TFXLayout::AC4 && t.Same))
            MapSamples(in, out, n, t[0]);
        else
            MapPixels<T, L>(in, out, roi.width, t);
    }
    return ippStsNoErr;
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
    const unsigned mask = (1u << nBitSize) - 1;
    for (int y = 0; y < roiSize.height; ++y) {
        const T* in = FXRowAt(pSrc, srcStep, y);
        Ipp32u* out = FXRowAt(pDst, dstStep, y);
        for (int x = 0; x < roiSize.width; ++x)
            out[x] = pTable[in[x] & mask];
    }
    return ippStsNoErr;
}

FX_KERNEL_TABLE(Lut, FX_LUT_PRIMITIVES)

} // namespace framix::prim::FX_SIMD_NS
