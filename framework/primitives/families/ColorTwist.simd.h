// SPDX-License-Identifier: MIT
// Colour twist, vector kernel: compiled once per level (see CMakeLists.txt). Sixteen pixels at a
// time are split into blue, green and red byte vectors, each output channel is summed in single
// precision in the reference's order (t0 c0 + t1 c1, + t2 c2, + t3; no fused multiply-add),
// rounded to nearest (halves to even, the processors' default) and saturated. Bytes move with
// 128-bit shuffles (every level has them); the sums use the level's widest float vectors.
// Gamma maps samples through the shared tables.
#include "framework/primitives/families/ColorTwist.h"

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/simd/FXVec.h"
#include "framework/primitives/simd/FXVecBytePermute.h"

#include <immintrin.h>

#include <algorithm>

namespace framix::prim::FX_SIMD_NS {
namespace {

constexpr int kBlock = 16; // pixels per step

// Byte shuffles that gather channel c of five or six three-byte pixels from 16 bytes, and the
// inverse ones that place them back; -1 (0x80) leaves a zero.
struct TSplit3 {
    __m128i Gather[3][3];  // [source block][channel]
    __m128i Scatter[3][3]; // [destination block][channel]
    TSplit3()
    {
        for (int block = 0; block < 3; ++block)
            for (int c = 0; c < 3; ++c) {
                alignas(16) signed char gather[16], scatter[16];
                for (int i = 0; i < 16; ++i) {
                    gather[i] = scatter[i] = -1;
                    // Output lane i of channel c is pixel i, byte 3 i + c of the 48.
                    const int from = 3 * i + c;
                    if (from / 16 == block)
                        gather[i] = static_cast<signed char>(from % 16);
                }
                for (int j = 0; j < 16; ++j) {
                    const int byte = 16 * block + j;
                    if (byte % 3 == c)
                        scatter[j] = static_cast<signed char>(byte / 3);
                }
                Gather[block][c] = _mm_load_si128(reinterpret_cast<const __m128i*>(gather));
                Scatter[block][c] = _mm_load_si128(reinterpret_cast<const __m128i*>(scatter));
            }
    }
};

const TSplit3& Split3()
{
    static const TSplit3 kSplit;
    return kSplit;
}

// Channel c of four-byte pixels: 4 pixels per 16 bytes.
inline __m128i Gather4(int c)
{
    return _mm_setr_epi8(char(c), char(4 + c), char(8 + c), char(12 + c), -1, -1, -1, -1, -1, -1,
                         -1, -1, -1, -1, -1, -1);
}

// Sixteen pixels of one channel as floats: one vector of sixteen where the level has 512-bit
// registers, two of eight with 256-bit ones, else four of four.
constexpr int kParts = kBlock / kLanes32;

// Saturated to 0 ... 255; a NaN sum becomes 255, as in the reference (Min answers its second
// operand for a NaN).
inline VF32 ClampF(VF32 v)
{
    return Max(Min(v, SplatF32(255.0f)), SplatF32(0.0f));
}

#if defined(FX_SIMD_LEVEL_AVX512)
inline void ToFloats(__m128i bytes, VF32 (&out)[kParts])
{
    out[0] = {_mm512_cvtepi32_ps(_mm512_cvtepu8_epi32(bytes))};
}
inline __m128i ToBytes(const VF32 (&v)[kParts])
{
    // The sums are already within 0 ... 255: the narrowing only drops the zero bytes.
    return _mm512_cvtepi32_epi8(_mm512_cvtps_epi32(v[0].V));
}
#elif defined(FX_SIMD_LEVEL_AVX2)
inline void ToFloats(__m128i bytes, VF32 (&out)[kParts])
{
    out[0] = {_mm256_cvtepi32_ps(_mm256_cvtepu8_epi32(bytes))};
    out[1] = {_mm256_cvtepi32_ps(_mm256_cvtepu8_epi32(_mm_srli_si128(bytes, 8)))};
}
inline __m128i ToBytes(const VF32 (&v)[kParts])
{
    __m128i half[kParts];
    for (int k = 0; k < kParts; ++k) {
        const __m256i q = _mm256_cvtps_epi32(v[k].V);
        half[k] = _mm_packs_epi32(_mm256_castsi256_si128(q), _mm256_extracti128_si256(q, 1));
    }
    return _mm_packus_epi16(half[0], half[1]);
}
#else
inline void ToFloats(__m128i bytes, VF32 (&out)[kParts])
{
    out[0] = {_mm_cvtepi32_ps(_mm_cvtepu8_epi32(bytes))};
    out[1] = {_mm_cvtepi32_ps(_mm_cvtepu8_epi32(_mm_srli_si128(bytes, 4)))};
    out[2] = {_mm_cvtepi32_ps(_mm_cvtepu8_epi32(_mm_srli_si128(bytes, 8)))};
    out[3] = {_mm_cvtepi32_ps(_mm_cvtepu8_epi32(_mm_srli_si128(bytes, 12)))};
}
inline __m128i ToBytes(const VF32 (&v)[kParts])
{
    const __m128i q[4] = {_mm_cvtps_epi32(v[0].V), _mm_cvtps_epi32(v[1].V), _mm_cvtps_epi32(v[2].V),
                          _mm_cvtps_epi32(v[3].V)};
    return _mm_packus_epi16(_mm_packs_epi32(q[0], q[1]), _mm_packs_epi32(q[2], q[3]));
}
#endif

// The reference's sum, in its order: t0 c0 + t1 c1, + t2 c2, + t3, each step rounded.
inline VF32 TwistSum(const VF32 (&t)[4], VF32 c0, VF32 c1, VF32 c2)
{
    return Add(Add(Add(Mul(t[0], c0), Mul(t[1], c1)), Mul(t[2], c2)), t[3]);
}

// One output channel for 16 pixels, saturated to bytes.
inline __m128i TwistChannel(const VF32 (&b)[kParts], const VF32 (&g)[kParts],
                            const VF32 (&r)[kParts], const float* t)
{
    const VF32 weights[4] = {SplatF32(t[0]), SplatF32(t[1]), SplatF32(t[2]), SplatF32(t[3])};
    VF32 v[kParts];
    for (int k = 0; k < kParts; ++k)
        v[k] = ClampF(TwistSum(weights, b[k], g[k], r[k]));
    return ToBytes(v);
}

#if defined(FX_SIMD_LEVEL_AVX512)

// Sixteen pixels as one vector of 32-bit lanes per channel: the channel bytes land in the low byte
// of each lane, so they convert to floats directly, and the three result channels merge back into
// lanes (b | g << 8 | r << 16) that a byte permute or a masked store puts in place. Rows end under
// masks, so there is no scalar tail.
struct TWideTwist {
    VF32 T[3][4];
    explicit TWideTwist(const Ipp32f twist[3][4])
    {
        for (int k = 0; k < 3; ++k)
            for (int i = 0; i < 4; ++i)
                T[k][i] = SplatF32(twist[k][i]);
    }
    // Lanes b | g << 8 | r << 16 of the twisted pixels.
    __m512i operator()(__m512i b, __m512i g, __m512i r) const
    {
        const VF32 fb = ToF32(VI32{b}), fg = ToF32(VI32{g}), fr = ToF32(VI32{r});
        __m512i q[3];
        for (int k = 0; k < 3; ++k)
            q[k] = RoundToI32(ClampF(TwistSum(T[k], fb, fg, fr))).V;
        return _mm512_ternarylogic_epi32(q[0], _mm512_slli_epi32(q[1], 8),
                                         _mm512_slli_epi32(q[2], 16), 0xFE); // a | b | c
    }
};

// Four-byte pixels: the channels are shifts of the pixel lanes; the store skips the alpha bytes.
IppStatus TwistFourBytePixels(const Ipp8u* pSrc, int srcStep, Ipp8u* pDst, int dstStep,
                              IppiSize roi, const Ipp32f twist[3][4])
{
    const TWideTwist apply(twist);
    const __m512i low = _mm512_set1_epi32(0xFF);
    constexpr __mmask64 kColours = 0x7777777777777777ull;
    for (int y = 0; y < roi.height; ++y) {
        const Ipp8u* in = FXRowAt(pSrc, srcStep, y);
        Ipp8u* out = FXRowAt(pDst, dstStep, y);
        for (int x = 0; x < roi.width; x += kBlock) {
            const __mmask64 live = FirstBytesMask(4 * (roi.width - x));
            const __m512i px = _mm512_maskz_loadu_epi8(live, in + 4 * x);
            const __m512i b = _mm512_and_si512(px, low);
            const __m512i g = _mm512_and_si512(_mm512_srli_epi32(px, 8), low);
            const __m512i r = _mm512_and_si512(_mm512_srli_epi32(px, 16), low);
            _mm512_mask_storeu_epi8(out + 4 * x, live & kColours, apply(b, g, r));
        }
    }
    return ippStsNoErr;
}

// Byte indices: lane byte 4 i of channel c's vector is byte 3 i + c of sixteen three-byte pixels
// (the zero-masked permute clears the other three bytes of each lane); the inverse takes byte
// 3 i + c of the output from byte 4 i + c of the merged lanes.
struct TThreeByteIndices {
    __m512i Channel[3];
    __m512i Merge;
    TThreeByteIndices()
    {
        alignas(64) Ipp8u channel[3][64] = {}, merge[64] = {};
        for (int i = 0; i < kBlock; ++i)
            for (int c = 0; c < 3; ++c) {
                channel[c][4 * i] = Ipp8u(3 * i + c);
                merge[3 * i + c] = Ipp8u(4 * i + c);
            }
        for (int c = 0; c < 3; ++c)
            Channel[c] = _mm512_load_si512(channel[c]);
        Merge = _mm512_load_si512(merge);
    }
};

__attribute__((target("avx512vbmi"))) IppStatus TwistThreeBytePixels(const Ipp8u* pSrc, int srcStep,
                                                                     Ipp8u* pDst, int dstStep,
                                                                     IppiSize roi,
                                                                     const Ipp32f twist[3][4])
{
    const TWideTwist apply(twist);
    static const TThreeByteIndices kIndices;
    const TThreeByteIndices idx = kIndices; // kept in registers across the stores
    constexpr __mmask64 kLaneLowBytes = 0x1111111111111111ull;
    for (int y = 0; y < roi.height; ++y) {
        const Ipp8u* in = FXRowAt(pSrc, srcStep, y);
        Ipp8u* out = FXRowAt(pDst, dstStep, y);
        for (int x = 0; x < roi.width; x += kBlock) {
            const __mmask64 live = FirstBytesMask(3 * std::min(kBlock, roi.width - x));
            const __m512i px = _mm512_maskz_loadu_epi8(live, in + 3 * x);
            __m512i channel[3];
            for (int c = 0; c < 3; ++c)
                channel[c] = _mm512_maskz_permutexvar_epi8(kLaneLowBytes, idx.Channel[c], px);
            const __m512i merged = apply(channel[0], channel[1], channel[2]);
            _mm512_mask_storeu_epi8(out + 3 * x, live, _mm512_permutexvar_epi8(idx.Merge, merged));
        }
    }
    return ippStsNoErr;
}

// Gamma through the byte table: every colour byte looked up, alpha bytes (AC4) never stored.
template <TFXLayout L>
__attribute__((target("avx512vbmi"))) IppStatus
MapThroughByteTable(const Ipp8u* pSrc, int srcStep, Ipp8u* pDst, int dstStep, IppiSize roi,
                    const Ipp8u* table)
{
    const TByteTable t = LoadByteTable(table);
    const int n = roi.width * FXChannels(L);
    constexpr __mmask64 kStored = FXChannels(L) == 4 ? 0x7777777777777777ull : ~0ull;
    for (int y = 0; y < roi.height; ++y)
        MapRowThroughTable(FXRowAt(pSrc, srcStep, y), FXRowAt(pDst, dstStep, y), n, t, kStored);
    return ippStsNoErr;
}

#endif

} // namespace

template <class T, TFXLayout L>
IppStatus ColorTwist32f(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                        const Ipp32f twist[3][4])
{
    constexpr int kCh = FXChannels(L);
#if defined(FX_SIMD_LEVEL_AVX512)
    if constexpr (kCh == 4)
        return TwistFourBytePixels(pSrc, srcStep, pDst, dstStep, roiSize, twist);
    else if (HasBytePermutes())
        return TwistThreeBytePixels(pSrc, srcStep, pDst, dstStep, roiSize, twist);
#endif
    const TSplit3& split = Split3();
    const __m128i alphaMask = _mm_set1_epi32(int(0xFF000000u));
    for (int y = 0; y < roiSize.height; ++y) {
        const Ipp8u* in = FXRowAt(pSrc, srcStep, y);
        Ipp8u* out = FXRowAt(pDst, dstStep, y);
        int x = 0;
        for (; x + kBlock <= roiSize.width; x += kBlock) {
            const Ipp8u* s = in + x * kCh;
            __m128i channel[3];
            if constexpr (kCh == 3) {
                const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s));
                const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + 16));
                const __m128i c = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + 32));
                for (int k = 0; k < 3; ++k)
                    channel[k] = _mm_or_si128(_mm_or_si128(_mm_shuffle_epi8(a, split.Gather[0][k]),
                                                           _mm_shuffle_epi8(b, split.Gather[1][k])),
                                              _mm_shuffle_epi8(c, split.Gather[2][k]));
            } else {
                __m128i p[4];
                for (int j = 0; j < 4; ++j)
                    p[j] = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + 16 * j));
                for (int k = 0; k < 3; ++k) {
                    const __m128i g = Gather4(k);
                    const __m128i lo =
                        _mm_unpacklo_epi32(_mm_shuffle_epi8(p[0], g), _mm_shuffle_epi8(p[1], g));
                    const __m128i hi =
                        _mm_unpacklo_epi32(_mm_shuffle_epi8(p[2], g), _mm_shuffle_epi8(p[3], g));
                    channel[k] = _mm_unpacklo_epi64(lo, hi);
                }
            }
            VF32 fb[kParts], fg[kParts], fr[kParts];
            ToFloats(channel[0], fb);
            ToFloats(channel[1], fg);
            ToFloats(channel[2], fr);
            __m128i result[3];
            for (int k = 0; k < 3; ++k)
                result[k] = TwistChannel(fb, fg, fr, twist[k]);
            Ipp8u* d = out + x * kCh;
            if constexpr (kCh == 3) {
                for (int block = 0; block < 3; ++block) {
                    const __m128i v = _mm_or_si128(
                        _mm_or_si128(_mm_shuffle_epi8(result[0], split.Scatter[block][0]),
                                     _mm_shuffle_epi8(result[1], split.Scatter[block][1])),
                        _mm_shuffle_epi8(result[2], split.Scatter[block][2]));
                    _mm_storeu_si128(reinterpret_cast<__m128i*>(d + 16 * block), v);
                }
            } else {
                // Pixels b, g, r, 0 from the three byte vectors; alpha from the destination.
                const __m128i bg0 = _mm_unpacklo_epi8(result[0], result[1]);
                const __m128i bg1 = _mm_unpackhi_epi8(result[0], result[1]);
                const __m128i r0 = _mm_unpacklo_epi8(result[2], _mm_setzero_si128());
                const __m128i r1 = _mm_unpackhi_epi8(result[2], _mm_setzero_si128());
                const __m128i px[4] = {_mm_unpacklo_epi16(bg0, r0), _mm_unpackhi_epi16(bg0, r0),
                                       _mm_unpacklo_epi16(bg1, r1), _mm_unpackhi_epi16(bg1, r1)};
                for (int j = 0; j < 4; ++j) {
                    __m128i* at = reinterpret_cast<__m128i*>(d + 16 * j);
                    const __m128i old = _mm_loadu_si128(at);
                    _mm_storeu_si128(at, _mm_or_si128(_mm_and_si128(old, alphaMask), px[j]));
                }
            }
        }
        for (; x < roiSize.width; ++x) {
            const Ipp8u* s = in + x * kCh;
            const int b = s[0], g = s[1], r = s[2];
            Ipp8u* d = out + x * kCh;
            for (int k = 0; k < 3; ++k)
                d[k] = FXTwistSample(twist[k], b, g, r);
        }
    }
    return ippStsNoErr;
}

// Gamma: every colour sample through the curve's table; a three-channel row is one run of
// samples.
template <TFXLayout L>
IppStatus MapThroughTable(const Ipp8u* pSrc, int srcStep, Ipp8u* pDst, int dstStep, IppiSize roi,
                          const Ipp8u* table)
{
#if defined(FX_SIMD_LEVEL_AVX512)
    if (HasBytePermutes())
        return MapThroughByteTable<L>(pSrc, srcStep, pDst, dstStep, roi, table);
#endif
    for (int y = 0; y < roi.height; ++y) {
        const Ipp8u* in = FXRowAt(pSrc, srcStep, y);
        Ipp8u* out = FXRowAt(pDst, dstStep, y);
        if constexpr (FXChannels(L) == 3) {
            for (int i = 0; i < roi.width * 3; ++i)
                out[i] = table[in[i]];
        } else {
            for (int x = 0; x < roi.width * 4; x += 4) {
                out[x] = table[in[x]];
                out[x + 1] = table[in[x + 1]];
                out[x + 2] = table[in[x + 2]];
            }
        }
    }
    return ippStsNoErr;
}

template <class T, TFXLayout L>
IppStatus GammaFwd(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize)
{
    return MapThroughTable<L>(pSrc, srcStep, pDst, dstStep, roiSize, FXGammaTable(true).data());
}

template <class T, TFXLayout L>
IppStatus GammaInv(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize)
{
    return MapThroughTable<L>(pSrc, srcStep, pDst, dstStep, roiSize, FXGammaTable(false).data());
}

FX_KERNEL_TABLE(ColorTwist, FX_COLOR_TWIST_PRIMITIVES)

} // namespace framix::prim::FX_SIMD_NS
