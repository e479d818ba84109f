// SPDX-License-Identifier: MIT
// Copy, set and channel operations, reference: the definitions the vector kernels are proved
// against.
#include "framework/primitives/families/CopySet.h"

#include "framework/primitives/FXImageRows.h"

#include <cstddef>

namespace framix::prim::ref {

// d[x][c] = s[x][c] for the copied channels; pixels are FXSrcChannels(L) and FXDstChannels(L)
// samples apart, so one loop covers every layout pair.
template <class T, TFXLayout L>
IppStatus Copy(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize)
{
    for (int y = 0; y < roiSize.height; ++y) {
        const T* in = FXRowAt(pSrc, srcStep, y);
        T* out = FXRowAt(pDst, dstStep, y);
        for (int x = 0; x < roiSize.width; ++x)
            for (int c = 0; c < FXCopiedChannels(L); ++c)
                out[std::ptrdiff_t(x) * FXDstChannels(L) + c] =
                    in[std::ptrdiff_t(x) * FXSrcChannels(L) + c];
    }
    return ippStsNoErr;
}

// pDst[c][x] = s[x][c].
template <class T, TFXLayout L>
IppStatus CopyToPlanes(const T* pSrc, int srcStep, T* const pDst[], int dstStep, IppiSize roiSize)
{
    constexpr int kCh = FXSrcChannels(L);
    for (int y = 0; y < roiSize.height; ++y) {
        const T* in = FXRowAt(pSrc, srcStep, y);
        for (int c = 0; c < kCh; ++c) {
            T* out = FXRowAt(pDst[c], dstStep, y);
            for (int x = 0; x < roiSize.width; ++x)
                out[x] = in[std::ptrdiff_t(x) * kCh + c];
        }
    }
    return ippStsNoErr;
}

template <class T, TFXLayout L> IppStatus Set(T value, T* pDst, int dstStep, IppiSize roiSize)
{
    for (int y = 0; y < roiSize.height; ++y) {
        T* out = FXRowAt(pDst, dstStep, y);
        for (int x = 0; x < roiSize.width; ++x)
            out[x] = value;
    }
    return ippStsNoErr;
}

// value[c] into channel c; AC4 leaves the fourth channel alone.
template <class T, TFXLayout L>
IppStatus SetChannels(const T value[], T* pDst, int dstStep, IppiSize roiSize)
{
    for (int y = 0; y < roiSize.height; ++y) {
        T* out = FXRowAt(pDst, dstStep, y);
        for (int x = 0; x < roiSize.width; ++x)
            for (int c = 0; c < FXProcessedChannels(L); ++c)
                out[std::ptrdiff_t(x) * FXChannels(L) + c] = value[c];
    }
    return ippStsNoErr;
}

// d[c] = s[dstOrder[c]] for the three colour channels.
template <class T, TFXLayout L>
IppStatus SwapChannels(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                       const int dstOrder[3])
{
    for (int y = 0; y < roiSize.height; ++y) {
        const T* in = FXRowAt(pSrc, srcStep, y);
        T* out = FXRowAt(pDst, dstStep, y);
        for (int x = 0; x < roiSize.width; ++x)
            for (int c = 0; c < 3; ++c)
                out[std::ptrdiff_t(x) * FXChannels(L) + c] =
                    in[std::ptrdiff_t(x) * FXChannels(L) + dstOrder[c]];
    }
    return ippStsNoErr;
}

// The same in place: each pixel is read whole before it is written.
template <class T, TFXLayout L>
IppStatus SwapChannelsInPlace(T* pSrcDst, int srcDstStep, IppiSize roiSize, const int dstOrder[3])
{
    for (int y = 0; y < roiSize.height; ++y) {
        T* row = FXRowAt(pSrcDst, srcDstStep, y);
        for (int x = 0; x < roiSize.width; ++x) {
            T* px = row + std::ptrdiff_t(x) * FXChannels(L);
            const T old[3] = {px[0], px[1], px[2]};
            for (int c = 0; c < 3; ++c)
                px[c] = old[dstOrder[c]];
        }
    }
    return ippStsNoErr;
}

namespace {

// A channel scaled to `bits` bits, rounded to nearest (never a tie: 255 is odd): the rule the
// format conversion uses for vfRGB555 and vfRGB565, so both give the same words.
template <int Bits> unsigned Reduce(unsigned v)
{
    constexpr unsigned kMax = (1u << Bits) - 1;
    return (v * kMax + 127) / 255;
}

// Channel 0 in the low bits, channel 2 in the high bits, alpha ignored: a vfRGB32 pixel (B, G,
// R, A in memory) becomes the vfRGB555 / vfRGB565 word of the same colour.
template <int GreenBits, class T>
IppStatus Pack(const T* pSrc, int srcStep, Ipp16u* pDst, int dstStep, IppiSize roiSize)
{
    for (int y = 0; y < roiSize.height; ++y) {
        const T* in = FXRowAt(pSrc, srcStep, y);
        Ipp16u* out = FXRowAt(pDst, dstStep, y);
        for (int x = 0; x < roiSize.width; ++x) {
            const T* px = in + std::ptrdiff_t(x) * 4;
            out[x] = Ipp16u(Reduce<5>(px[0]) | Reduce<GreenBits>(px[1]) << 5 |
                            Reduce<5>(px[2]) << (5 + GreenBits));
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

} // namespace framix::prim::ref
