// SPDX-License-Identifier: MIT
// Copy, set and channel operations, vector kernels: compiled once per level (see CMakeLists.txt).
// Same-layout copies are row copies; the others move 16-byte blocks through shuffles, or select
// bytes between source and destination at the level's width.
#include "framework/primitives/families/CopySet.h"

#include "framework/primitives/FXImageRows.h"
#include "framework/primitives/simd/FXVec.h"

#include <array>
#include <cstddef>
#include <cstring>

namespace framix::prim::FX_SIMD_NS {
namespace {

constexpr Ipp8u kZero = 0x80; // a shuffle index that gives 0

// Shuffle indices gathering channel `channel` of 3-byte pixels from the 48-byte run that block
// `block` (0..2) is part of: output byte j is run byte 3j + channel, where block holds it.
constexpr TFXBytes16 GatherPlane3(int channel, int block)
{
    TFXBytes16 t{};
    for (int j = 0; j < 16; ++j) {
        const int at = 3 * j + channel;
        t.B[j] = at / 16 == block ? Ipp8u(at % 16) : kZero;
    }
    return t;
}

// Bytes of 4-byte pixels whose channel is `channel` marked (top bit set).
constexpr TFXBytes16 ChannelMask4(int channel)
{
    TFXBytes16 t{};
    for (int j = 0; j < 16; ++j)
        t.B[j] = j % 4 == channel ? 0xFF : 0;
    return t;
}

// The other three channels marked.
constexpr TFXBytes16 OtherChannelsMask4(int channel)
{
    TFXBytes16 t{};
    for (int j = 0; j < 16; ++j)
        t.B[j] = j % 4 != channel ? 0xFF : 0;
    return t;
}

// The reference loop for pixels from x on (the tails the blocks leave).
template <TFXLayout L> void CopyPixels(const Ipp8u* in, Ipp8u* out, int x, int width)
{
    for (; x < width; ++x)
        for (int c = 0; c < FXCopiedChannels(L); ++c)
            out[std::ptrdiff_t(x) * FXDstChannels(L) + c] =
                in[std::ptrdiff_t(x) * FXSrcChannels(L) + c];
}

// Rows of rowBytes bytes; one run when both images are contiguous.
void CopyRows(const void* pSrc, int srcStep, void* pDst, int dstStep, std::size_t rowBytes,
              int rows)
{
    const auto* in = static_cast<const Ipp8u*>(pSrc);
    auto* out = static_cast<Ipp8u*>(pDst);
    if (std::size_t(srcStep) == rowBytes && std::size_t(dstStep) == rowBytes) {
        std::memcpy(out, in, rowBytes * std::size_t(rows));
        return;
    }
    for (int y = 0; y < rows; ++y)
        std::memcpy(FXRowAt(out, dstStep, y), FXRowAt(in, srcStep, y), rowBytes);
}

// n bytes where the mask's marked bytes keep the destination and the others come from src.
// n >= kVecBytes; the last vector moves back (rewriting the same bytes).
void SelectRow(const Ipp8u* in, Ipp8u* out, int n, VU8 keep)
{
    for (int i = 0; i < n; i += kVecBytes) {
        const int at = FXVectorStart(i, n, kVecBytes);
        Store(out + at, Select(keep, Load(out + at), Load(in + at)));
    }
}

} // namespace

template <class T, TFXLayout L>
IppStatus Copy(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize)
{
    const int w = roiSize.width;
    if constexpr (L == TFXLayout::C1 || L == TFXLayout::C3 || L == TFXLayout::C4) {
        CopyRows(pSrc, srcStep, pDst, dstStep, std::size_t(w) * FXChannels(L) * sizeof(T),
                 roiSize.height);
        return ippStsNoErr;
    } else if constexpr (L == TFXLayout::AC4) {
        if (4 * w < kVecBytes)
            return kFXDeclined;
        const VU8 alpha = Broadcast16(ChannelMask4(3).B);
        for (int y = 0; y < roiSize.height; ++y)
            SelectRow(FXRowAt(pSrc, srcStep, y), FXRowAt(pDst, dstStep, y), 4 * w, alpha);
        return ippStsNoErr;
    } else if constexpr (L == TFXLayout::C1C4 || L == TFXLayout::C4C) {
        // The pointers address one channel: the vectors stop before the last pixel, whose other
        // bytes may lie outside the image.
        const VU8 keep = Broadcast16(OtherChannelsMask4(0).B);
        for (int y = 0; y < roiSize.height; ++y) {
            const T* in = FXRowAt(pSrc, srcStep, y);
            T* out = FXRowAt(pDst, dstStep, y);
            int x = 0;
            for (; x + kLanes32 < w; x += kLanes32) {
                const VU8 v = L == TFXLayout::C1C4 ? AsU8(LoadWiden(in + x)) : Load(in + 4 * x);
                Store(out + 4 * x, Select(keep, Load(out + 4 * x), v));
            }
            CopyPixels<L>(in, out, x, w);
        }
        return ippStsNoErr;
    } else {
        // AC4C3, C3AC4, C3RAC4: four pixels per 16-byte block; the blocks stop six pixels before
        // the end so that no load or store passes the row.
        constexpr TFXBytes16 kIdx = [] {
            TFXBytes16 t{};
            for (int j = 0; j < 16; ++j)
                t.B[j] = kZero;
            for (int p = 0; p < 4; ++p)
                for (int c = 0; c < FXCopiedChannels(L); ++c)
                    t.B[FXDstChannels(L) * p + c] = Ipp8u(FXSrcChannels(L) * p + c);
            return t;
        }();
        const VB16 idx = B16(kIdx);
        // C3AC4 keeps the destination's alpha, C3RAC4 its other three channels
        const VB16 keep = B16(L == TFXLayout::C3AC4 ? ChannelMask4(3) : OtherChannelsMask4(0));
        for (int y = 0; y < roiSize.height; ++y) {
            const T* in = FXRowAt(pSrc, srcStep, y);
            T* out = FXRowAt(pDst, dstStep, y);
            int x = 0;
            for (; x + 6 <= w; x += 4) {
                const VB16 v = Shuffle(LoadB16(in + FXSrcChannels(L) * x), idx);
                Ipp8u* o = out + FXDstChannels(L) * x;
                if constexpr (L == TFXLayout::AC4C3)
                    StoreB16(o, v);
                else
                    StoreB16(o, Select(keep, LoadB16(o), v));
            }
            CopyPixels<L>(in, out, x, w);
        }
        return ippStsNoErr;
    }
}

template <class T, TFXLayout L>
IppStatus CopyToPlanes(const T* pSrc, int srcStep, T* const pDst[], int dstStep, IppiSize roiSize)
{
    constexpr int kCh = FXSrcChannels(L);
    const int w = roiSize.width;
    for (int y = 0; y < roiSize.height; ++y) {
        const T* in = FXRowAt(pSrc, srcStep, y);
        T* out[4] = {};
        for (int c = 0; c < kCh; ++c)
            out[c] = FXRowAt(pDst[c], dstStep, y);
        int x = 0;
        for (; x + 16 <= w; x += 16) { // sixteen pixels per step
            const T* p = in + std::ptrdiff_t(x) * kCh;
            if constexpr (kCh == 3) {
                const VB16 a = LoadB16(p), b = LoadB16(p + 16), c = LoadB16(p + 32);
                for (int k = 0; k < 3; ++k) {
                    const VB16 v = Or(Or(Shuffle(a, B16(GatherPlane3(k, 0))),
                                         Shuffle(b, B16(GatherPlane3(k, 1)))),
                                      Shuffle(c, B16(GatherPlane3(k, 2))));
                    StoreB16(out[k] + x, v);
                }
            } else {
                // channels grouped in each block, then a 4x4 transpose of 32-bit words
                const VB16 group = B16({{0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15}});
                const VB16 a = Shuffle(LoadB16(p), group), b = Shuffle(LoadB16(p + 16), group),
                           c = Shuffle(LoadB16(p + 32), group), d = Shuffle(LoadB16(p + 48), group);
                const VB16 t0 = UnpackLo32(a, b), t1 = UnpackLo32(c, d), t2 = UnpackHi32(a, b),
                           t3 = UnpackHi32(c, d);
                StoreB16(out[0] + x, UnpackLo64(t0, t1));
                StoreB16(out[1] + x, UnpackHi64(t0, t1));
                StoreB16(out[2] + x, UnpackLo64(t2, t3));
                StoreB16(out[3] + x, UnpackHi64(t2, t3));
            }
        }
        for (; x < w; ++x)
            for (int c = 0; c < kCh; ++c)
                out[c][x] = in[std::ptrdiff_t(x) * kCh + c];
    }
    return ippStsNoErr;
}

template <class T, TFXLayout L> IppStatus Set(T value, T* pDst, int dstStep, IppiSize roiSize)
{
    const int n = roiSize.width * int(sizeof(T));
    if constexpr (sizeof(T) == 1) {
        for (int y = 0; y < roiSize.height; ++y)
            std::memset(FXRowAt(pDst, dstStep, y), value, std::size_t(n));
        return ippStsNoErr;
    } else {
        if (n < kVecBytes)
            return kFXDeclined;
        std::uint16_t bits;
        std::memcpy(&bits, &value, 2);
        const VU8 v = AsU8(SplatI32(int(bits | std::uint32_t(bits) << 16)));
        for (int y = 0; y < roiSize.height; ++y) {
            auto* out = reinterpret_cast<Ipp8u*>(FXRowAt(pDst, dstStep, y));
            for (int i = 0; i < n; i += kVecBytes)
                Store(out + FXVectorStart(i, n, kVecBytes), v);
        }
        return ippStsNoErr;
    }
}

// A vector of the repeating channel values, starting at every phase of a pixel.
template <class T, TFXLayout L>
IppStatus SetChannels(const T value[], T* pDst, int dstStep, IppiSize roiSize)
{
    constexpr int kCh = FXChannels(L);
    const int n = roiSize.width * kCh;
    if (n < kVecBytes)
        return kFXDeclined;
    Ipp8u pattern[kCh][kVecBytes];
    for (int phase = 0; phase < kCh; ++phase)
        for (int j = 0; j < kVecBytes; ++j)
            pattern[phase][j] = value[(phase + j) % kCh % FXProcessedChannels(L)];
    const VU8 alpha = Broadcast16(ChannelMask4(3).B);
    for (int y = 0; y < roiSize.height; ++y) {
        T* out = FXRowAt(pDst, dstStep, y);
        for (int i = 0; i < n; i += kVecBytes) {
            const int at = FXVectorStart(i, n, kVecBytes);
            const VU8 v = Load(pattern[at % kCh]);
            Store(out + at, L == TFXLayout::AC4 ? Select(alpha, Load(out + at), v) : v);
        }
    }
    return ippStsNoErr;
}

template <class T, TFXLayout L>
IppStatus SwapChannels(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                       const int dstOrder[3])
{
    TFXBytes16 order{};
    for (int p = 0; p < 4; ++p)
        for (int c = 0; c < 4; ++c)
            order.B[4 * p + c] = Ipp8u(4 * p + (c < 3 ? dstOrder[c] : 3));
    const VU8 idx = Broadcast16(order.B), alpha = Broadcast16(ChannelMask4(3).B);
    const int n = roiSize.width * 4;
    for (int y = 0; y < roiSize.height; ++y) {
        const T* in = FXRowAt(pSrc, srcStep, y);
        T* out = FXRowAt(pDst, dstStep, y);
        int i = 0;
        for (; i + kVecBytes <= n; i += kVecBytes)
            Store(out + i, Select(alpha, Load(out + i), Shuffle(Load(in + i), idx)));
        for (; i < n; i += 4)
            for (int c = 0; c < 3; ++c)
                out[i + c] = in[i + dstOrder[c]];
    }
    return ippStsNoErr;
}

// Sixteen pixels (three blocks) per step: output block j gathers from source blocks j - 1, j and
// j + 1 (a pixel may straddle two blocks), and all three are loaded before anything is stored,
// so no load waits for a store it overlaps.
template <class T, TFXLayout L>
IppStatus SwapChannelsInPlace(T* pSrcDst, int srcDstStep, IppiSize roiSize, const int dstOrder[3])
{
    TFXBytes16 idx[3][3] = {}; // [output block][source block]
    for (int j = 0; j < 3; ++j)
        for (int b = 0; b < 3; ++b)
            for (int k = 0; k < 16; ++k) {
                const int out = 16 * j + k, from = out - out % 3 + dstOrder[out % 3];
                idx[j][b].B[k] = from / 16 == b ? Ipp8u(from % 16) : 0x80;
            }
    VB16 sel[3][3];
    for (int j = 0; j < 3; ++j)
        for (int b = 0; b < 3; ++b)
            sel[j][b] = B16(idx[j][b]);
    for (int y = 0; y < roiSize.height; ++y) {
        T* row = FXRowAt(pSrcDst, srcDstStep, y);
        int x = 0;
        for (; x + 16 <= roiSize.width; x += 16) {
            Ipp8u* p = row + 3 * x;
            const VB16 a = LoadB16(p), b = LoadB16(p + 16), c = LoadB16(p + 32);
            StoreB16(p, Or(Shuffle(a, sel[0][0]), Shuffle(b, sel[0][1])));
            StoreB16(p + 16,
                     Or(Or(Shuffle(a, sel[1][0]), Shuffle(b, sel[1][1])), Shuffle(c, sel[1][2])));
            StoreB16(p + 32, Or(Shuffle(b, sel[2][1]), Shuffle(c, sel[2][2])));
        }
        for (; x < roiSize.width; ++x) {
            T* px = row + std::ptrdiff_t(x) * 3;
            const T old[3] = {px[0], px[1], px[2]};
            for (int c = 0; c < 3; ++c)
                px[c] = old[dstOrder[c]];
        }
    }
    return ippStsNoErr;
}

namespace {

// (v * max + 127) / 255 for v <= 255 is (v * 249 + 1014) >> 11 for five bits and
// (v * 253 + 505) >> 10 for six (checked for every v); the products stay below 2^16, so channels
// 0 and 2 are reduced together in the two 16-bit halves of a 32-bit lane.
template <int GreenBits, class T>
IppStatus Pack(const T* pSrc, int srcStep, Ipp16u* pDst, int dstStep, IppiSize roiSize)
{
    const int n = roiSize.width;
    if (n < kLanes32)
        return kFXDeclined;
    constexpr int kGreenMul = GreenBits == 5 ? 249 : 253, kGreenAdd = GreenBits == 5 ? 1014 : 505;
    constexpr int kGreenShift = GreenBits == 5 ? 11 : 10;
    const VI32 outer = SplatI32(0x00FF00FF), byte = SplatI32(0xFF);
    const VI32 mul5 = SplatI32(249), add5 = SplatI32(1014 | 1014 << 16);
    const VI32 mulG = SplatI32(kGreenMul), addG = SplatI32(kGreenAdd);
    const VI32 low5 = SplatI32(0x1F), high5 = SplatI32(0x1F << (5 + GreenBits));
    for (int y = 0; y < roiSize.height; ++y) {
        const T* in = FXRowAt(pSrc, srcStep, y);
        Ipp16u* out = FXRowAt(pDst, dstStep, y);
        for (int i = 0; i < n; i += kLanes32) {
            const int at = FXVectorStart(i, n, kLanes32);
            const VI32 px = LoadI32(reinterpret_cast<const Ipp32s*>(in + std::ptrdiff_t(at) * 4));
            // channel 0 ends in bits 11..15, channel 2 in bits 27..31
            const VI32 t = Add(MulLo(And(px, outer), mul5), add5);
            const VI32 c0 = And(ShiftRight<11>(t), low5);
            const VI32 c2 = And(ShiftRight<27 - 5 - GreenBits>(t), high5);
            const VI32 g = And(ShiftRight<8>(px), byte);
            const VI32 c1 = ShiftRight<kGreenShift>(Add(MulLo(g, mulG), addG));
            StoreNarrow(out + at, Or(Or(c0, ShiftLeft<5>(c1)), c2));
        }
    }
    return ippStsNoErr;
}

} // namespace

template <class T, TFXLayout L>
IppStatus PackRgb555(const T* pSrc, int srcStep, Ipp16u* pDst, int dstStep, IppiSize roiSize)
{
    return Pack<5>(pSrc, srcStep, pDst, dstStep, roiSize);
}

template <class T, TFXLayout L>
IppStatus PackRgb565(const T* pSrc, int srcStep, Ipp16u* pDst, int dstStep, IppiSize roiSize)
{
    return Pack<6>(pSrc, srcStep, pDst, dstStep, roiSize);
}

FX_KERNEL_TABLE(CopySet, FX_COPY_SET_PRIMITIVES)

} // namespace framix::prim::FX_SIMD_NS
