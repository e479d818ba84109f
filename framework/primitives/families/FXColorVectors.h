// SPDX-License-Identifier: MIT
// Moves pixels between interleaved rows and one 32-bit vector per colour channel, for the colour
// families' vector kernels. Compiled once per level: include only from a level's kernel file.
#pragma once

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/FXPrimitiveShapes.h"
#include "framework/primitives/simd/FXVec.h"

namespace framix::prim::FX_SIMD_NS {

// Three colour channels of up to kLanes32 pixels.
struct TColorLanes {
    VI32 C0, C1, C2;
};

// Loads n <= kLanes32 pixels of kCh channels (lanes past n are zero). Through a small buffer,
// so a row's last pixels need no separate code and no byte outside the row is touched.
template <int kCh> inline TColorLanes LoadColorLanes(const Ipp8u* p, int n)
{
    alignas(64) Ipp32s t[3][kLanes32] = {};
    for (int i = 0; i < n; ++i, p += kCh) {
        t[0][i] = p[0];
        t[1][i] = p[1];
        t[2][i] = p[2];
    }
    return {LoadI32(t[0]), LoadI32(t[1]), LoadI32(t[2])};
}

// Stores channels 0 ... 2 of n pixels (alpha of four-channel pixels untouched); lanes hold
// samples already inside 0 ... 255.
template <int kCh> inline void StoreColorLanes(Ipp8u* p, int n, const TColorLanes& c)
{
    alignas(64) Ipp32s t[3][kLanes32];
    StoreI32(t[0], c.C0);
    StoreI32(t[1], c.C1);
    StoreI32(t[2], c.C2);
    for (int i = 0; i < n; ++i, p += kCh) {
        p[0] = Ipp8u(t[0][i]);
        p[1] = Ipp8u(t[1][i]);
        p[2] = Ipp8u(t[2][i]);
    }
}

// The same for three planes: pixels x ... x + n - 1 of each plane's row.
inline TColorLanes LoadColorPlanes(const Ipp8u* const* rows, int x, int n)
{
    alignas(64) Ipp32s t[3][kLanes32] = {};
    for (int i = 0; i < n; ++i) {
        t[0][i] = rows[0][x + i];
        t[1][i] = rows[1][x + i];
        t[2][i] = rows[2][x + i];
    }
    return {LoadI32(t[0]), LoadI32(t[1]), LoadI32(t[2])};
}

inline void StoreColorPlanes(Ipp8u* const* rows, int x, int n, const TColorLanes& c)
{
    alignas(64) Ipp32s t[3][kLanes32];
    StoreI32(t[0], c.C0);
    StoreI32(t[1], c.C1);
    StoreI32(t[2], c.C2);
    for (int i = 0; i < n; ++i) {
        rows[0][x + i] = Ipp8u(t[0][i]);
        rows[1][x + i] = Ipp8u(t[1][i]);
        rows[2][x + i] = Ipp8u(t[2][i]);
    }
}

// Runs convert (TColorLanes -> TColorLanes) over every pixel of an image of layout L.
template <TFXLayout L, class Convert>
inline IppStatus ConvertColorLanes(const Ipp8u* pSrc, int srcStep, Ipp8u* pDst, int dstStep,
                                   IppiSize roi, Convert convert)
{
    constexpr int kCh = FXChannels(L);
    for (int y = 0; y < roi.height; ++y) {
        const Ipp8u* in = FXRowAt(pSrc, srcStep, y);
        Ipp8u* out = FXRowAt(pDst, dstStep, y);
        for (int x = 0; x < roi.width; x += kLanes32) {
            const int n = roi.width - x < kLanes32 ? roi.width - x : kLanes32;
            StoreColorLanes<kCh>(out + x * kCh, n, convert(LoadColorLanes<kCh>(in + x * kCh, n)));
        }
    }
    return ippStsNoErr;
}

// Lane-wise helpers on 32-bit integers.
inline VI32 MaxI32(VI32 a, VI32 b)
{
    return Select(CmpGt(a, b), a, b);
}
inline VI32 MinI32(VI32 a, VI32 b)
{
    return Select(CmpGt(a, b), b, a);
}
// All ones where a == b, given a >= b.
inline VI32 EqualsAtMost(VI32 a, VI32 b)
{
    return Sub(SplatI32(-1), CmpGt(a, b));
}

} // namespace framix::prim::FX_SIMD_NS
