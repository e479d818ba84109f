// SPDX-License-Identifier: MIT
// Mirroring, vector kernels: compiled once per level (see CMakeLists.txt). Rows are copied (or
// swapped) whole; reversed rows go through 16-byte blocks whose pixels a shuffle reverses.
#include "framework/primitives/families/Mirror.h"

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/simd/FXVec.h"

#include <cstddef>
#include <cstring>
#include <utility>

namespace framix::prim::FX_SIMD_NS {
namespace {

// Shuffle indices reversing the order of the u-byte units of a block.
constexpr TFXBytes16 ReverseUnits(int u)
{
    TFXBytes16 t{};
    for (int j = 0; j < 16; ++j)
        t.B[j] = Ipp8u(16 - u * (j / u + 1) + j % u);
    return t;
}

constexpr TFXBytes16 kAlpha = [] {
    TFXBytes16 t{};
    for (int j = 0; j < 16; ++j)
        t.B[j] = j % 4 == 3 ? 0xFF : 0;
    return t;
}();

// One pixel of `bytes` bytes; AC4 leaves the alpha byte.
template <TFXLayout L> void CopyPixel(const Ipp8u* from, Ipp8u* to, int bytes)
{
    std::memcpy(to, from, std::size_t(L == TFXLayout::AC4 ? 3 : bytes));
}

// out = in with its w pixels of `bytes` bytes in reverse order (bytes 1, 2, 3 or 4).
template <TFXLayout L> void ReverseRow(const Ipp8u* in, Ipp8u* out, int w, int bytes)
{
    const int n = w * bytes;
    int x = 0; // pixels done
    if (bytes == 3) {
        // five pixels per block, loaded from one byte before them so the load ends inside the
        // row; the sixteenth byte stored is the next block's first, rewritten after
        constexpr TFXBytes16 kIdx = [] {
            TFXBytes16 t{};
            for (int p = 0; p < 5; ++p)
                for (int c = 0; c < 3; ++c)
                    t.B[3 * p + c] = Ipp8u(1 + 3 * (4 - p) + c);
            t.B[15] = 0x80;
            return t;
        }();
        const VB16 idx = B16(kIdx);
        for (; x + 6 <= w; x += 5)
            StoreB16(out + 3 * x, Shuffle(LoadB16(in + 3 * (w - 5 - x) - 1), idx));
    } else if (n >= 16) {
        // the last block moves back to the row's start: the same bytes again
        const VB16 idx = B16(ReverseUnits(bytes));
        const VB16 alpha = B16(kAlpha);
        for (int i = 0; i < n; i += 16) {
            const int at = FXVectorStart(i, n, 16);
            const VB16 v = Shuffle(LoadB16(in + n - 16 - at), idx);
            StoreB16(out + at, L == TFXLayout::AC4 ? Select(alpha, LoadB16(out + at), v) : v);
        }
        return;
    }
    for (; x < w; ++x)
        CopyPixel<L>(in + std::ptrdiff_t(w - 1 - x) * bytes, out + std::ptrdiff_t(x) * bytes,
                     bytes);
}

// A row copied as it is (AC4 keeps the destination's alpha).
template <TFXLayout L> void CopyRow(const Ipp8u* in, Ipp8u* out, int n)
{
    if (L != TFXLayout::AC4) {
        std::memcpy(out, in, std::size_t(n));
        return;
    }
    int i = 0;
    if (n >= kVecBytes) {
        const VU8 alpha = Broadcast16(kAlpha.B);
        for (; i < n; i += kVecBytes) {
            const int at = FXVectorStart(i, n, kVecBytes);
            Store(out + at, Select(alpha, Load(out + at), Load(in + at)));
        }
        return;
    }
    for (; i < n; i += 4)
        CopyPixel<L>(in + i, out + i, 4);
}

} // namespace

template <class T, TFXLayout L>
IppStatus Mirror(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize, IppiAxis flip)
{
    const bool rows = flip != ippAxsVertical, columns = flip != ippAxsHorizontal;
    const int w = roiSize.width, h = roiSize.height;
    const int bytes = FXChannels(L) * int(sizeof(T));
    for (int y = 0; y < h; ++y) {
        const auto* in =
            reinterpret_cast<const Ipp8u*>(FXRowAt(pSrc, srcStep, rows ? h - 1 - y : y));
        auto* out = reinterpret_cast<Ipp8u*>(FXRowAt(pDst, dstStep, y));
        if (columns)
            ReverseRow<L>(in, out, w, bytes);
        else
            CopyRow<L>(in, out, w * bytes);
    }
    return ippStsNoErr;
}

namespace {

// Rows a and b (distinct) exchanged, b reversed into a and a reversed into b when `reverse`.
void ExchangeRows(Ipp8u* a, Ipp8u* b, int w, bool reverse)
{
    const int n = 4 * w;
    const VB16 idx = B16(ReverseUnits(4));
    int i = 0;
    for (; i + 16 <= n; i += 16) {
        Ipp8u* pb = reverse ? b + n - 16 - i : b + i;
        const VB16 va = LoadB16(a + i), vb = LoadB16(pb);
        StoreB16(a + i, reverse ? Shuffle(vb, idx) : vb);
        StoreB16(pb, reverse ? Shuffle(va, idx) : va);
    }
    for (int x = i / 4; x < w; ++x)
        for (int c = 0; c < 4; ++c)
            std::swap(a[4 * x + c], b[4 * (reverse ? w - 1 - x : x) + c]);
}

// One row reversed in place: blocks from both ends, the middle pixel by pixel.
void ReverseInPlace(Ipp8u* row, int w)
{
    const int n = 4 * w;
    const VB16 idx = B16(ReverseUnits(4));
    int i = 0;
    for (; i + 16 <= n - 16 - i; i += 16) {
        const VB16 va = LoadB16(row + i), vb = LoadB16(row + n - 16 - i);
        StoreB16(row + i, Shuffle(vb, idx));
        StoreB16(row + n - 16 - i, Shuffle(va, idx));
    }
    for (int x = i / 4, m = w - 1 - i / 4; x < m; ++x, --m)
        for (int c = 0; c < 4; ++c)
            std::swap(row[4 * x + c], row[4 * m + c]);
}

} // namespace

template <class T, TFXLayout L>
IppStatus MirrorInPlace(T* pSrcDst, int srcDstStep, IppiSize roiSize, IppiAxis flip)
{
    const bool rows = flip != ippAxsVertical, columns = flip != ippAxsHorizontal;
    const int w = roiSize.width, h = roiSize.height;
    auto row = [&](int y) { return reinterpret_cast<Ipp8u*>(FXRowAt(pSrcDst, srcDstStep, y)); };
    if (!rows) {
        for (int y = 0; y < h; ++y)
            ReverseInPlace(row(y), w);
        return ippStsNoErr;
    }
    for (int y = 0; y < h / 2; ++y)
        ExchangeRows(row(y), row(h - 1 - y), w, columns);
    if (columns && h % 2 == 1)
        ReverseInPlace(row(h / 2), w);
    return ippStsNoErr;
}

FX_KERNEL_TABLE(Mirror, FX_MIRROR_PRIMITIVES)

} // namespace framix::prim::FX_SIMD_NS
