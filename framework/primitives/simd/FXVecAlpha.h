// SPDX-License-Identifier: MIT
// Writing AC4 rows: a row computed on all four channels goes to the destination with the
// destination's alpha bytes kept (included after simd/FXVec.h, once per level).
#pragma once

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/simd/FXVec.h"

namespace framix::prim::FX_SIMD_NS {

// Bytes whose top bit is set in every fourth place: the alpha samples of AC4 pixels.
inline VU8 AlphaMask()
{
    alignas(64) static constexpr Ipp8u kAlpha[64] = {
        0, 0, 0, 0xFF, 0, 0, 0, 0xFF, 0, 0, 0, 0xFF, 0, 0, 0, 0xFF, 0, 0, 0, 0xFF, 0, 0, 0, 0xFF,
        0, 0, 0, 0xFF, 0, 0, 0, 0xFF, 0, 0, 0, 0xFF, 0, 0, 0, 0xFF, 0, 0, 0, 0xFF, 0, 0, 0, 0xFF,
        0, 0, 0, 0xFF, 0, 0, 0, 0xFF, 0, 0, 0, 0xFF, 0, 0, 0, 0xFF};
    return Load(kAlpha);
}

// Stores v at p (a whole number of AC4 pixels) keeping the alpha bytes p holds.
inline void StoreKeepingAlpha(Ipp8u* p, VU8 v, VU8 alphaMask)
{
    Store(p, Select(alphaMask, Load(p), v));
}

// Copies n bytes (whole pixels, n >= kLanes<Ipp8u>) of row into dst, except every fourth.
inline void StoreKeepingAlpha(Ipp8u* dst, const Ipp8u* row, int n)
{
    const VU8 alpha = AlphaMask();
    for (int i = 0; i < n; i += kLanes<Ipp8u>) {
        const int at = FXVectorStart(i, n, kLanes<Ipp8u>); // n and the lanes are whole pixels
        StoreKeepingAlpha(dst + at, Load(row + at), alpha);
    }
}

} // namespace framix::prim::FX_SIMD_NS
