// SPDX-License-Identifier: MIT
// IPP's argument validation, shared by every family: null pointers, sizes, steps, then the
// shape's own parameters; only the first failing check is reported.
#pragma once

#include "framework/primitives/FXIppTypes.h"
#include "framework/primitives/FXPrimitiveShapes.h"

#include <initializer_list>

namespace framix::prim {

inline bool FXNonPositive(IppiSize size)
{
    return size.width <= 0 || size.height <= 0;
}

// Bytes one ROI row of `width` pixels occupies, in 64 bits so huge widths cannot overflow.
inline long long FXRowBytes(int width, int channels, int sampleBytes)
{
    return static_cast<long long>(width) * channels * sampleBytes;
}

// Common prefix of every image primitive: null pointers, then a non-positive ROI, then steps
// smaller than the row they must hold (IPP reports a non-positive step the same way), then
// steps of 16-bit, 32-bit and float images that are not whole samples (ippStsNotEvenStepErr:
// IPP reports it for many such functions; we report it for all, so no sample is ever read or
// written at a misaligned address).
inline IppStatus FXCheckImages(const void* pSrc, int srcStep, long long srcRowBytes,
                               const void* pDst, int dstStep, long long dstRowBytes,
                               IppiSize roiSize, int srcSampleBytes, int dstSampleBytes)
{
    if (pSrc == nullptr || pDst == nullptr)
        return ippStsNullPtrErr;
    if (FXNonPositive(roiSize))
        return ippStsSizeErr;
    if (srcStep <= 0 || dstStep <= 0 || srcStep < srcRowBytes || dstStep < dstRowBytes)
        return ippStsStepErr;
    if (srcStep % srcSampleBytes != 0 || dstStep % dstSampleBytes != 0)
        return ippStsNotEvenStepErr;
    return ippStsNoErr;
}

// Box, min, max: any positive mask, anchor inside the mask.
template <class T, TFXLayout L>
IppStatus FXCheckMaskFilter(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize dstRoiSize,
                            IppiSize maskSize, IppiPoint anchor)
{
    const long long row = FXRowBytes(dstRoiSize.width, FXChannels(L), sizeof(T));
    if (IppStatus s =
            FXCheckImages(pSrc, srcStep, row, pDst, dstStep, row, dstRoiSize, sizeof(T), sizeof(T));
        s != ippStsNoErr)
        return s;
    if (FXNonPositive(maskSize))
        return ippStsMaskSizeErr;
    if (anchor.x < 0 || anchor.x >= maskSize.width || anchor.y < 0 || anchor.y >= maskSize.height)
        return ippStsAnchorErr;
    return ippStsNoErr;
}

// Median: as above, and both mask dimensions odd (IPP 8.2 reports an even one as an error).
template <class T, TFXLayout L>
IppStatus FXCheckOddMaskFilter(const T* pSrc, int srcStep, T* pDst, int dstStep,
                               IppiSize dstRoiSize, IppiSize maskSize, IppiPoint anchor)
{
    const long long row = FXRowBytes(dstRoiSize.width, FXChannels(L), sizeof(T));
    if (IppStatus s =
            FXCheckImages(pSrc, srcStep, row, pDst, dstStep, row, dstRoiSize, sizeof(T), sizeof(T));
        s != ippStsNoErr)
        return s;
    if (FXNonPositive(maskSize) || maskSize.width % 2 == 0 || maskSize.height % 2 == 0)
        return ippStsMaskSizeErr;
    if (anchor.x < 0 || anchor.x >= maskSize.width || anchor.y < 0 || anchor.y >= maskSize.height)
        return ippStsAnchorErr;
    return ippStsNoErr;
}

// One-dimensional float kernels. The row filter's source rows must also hold the kernel's
// reach (roi width + kernelSize - 1 pixels), as IPP checks.
template <class T, TFXLayout L, bool Row>
IppStatus FXCheckKernel1D(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize dstRoiSize,
                          const Ipp32f* pKernel, int kernelSize, int anchor)
{
    if (pSrc == nullptr || pDst == nullptr || pKernel == nullptr)
        return ippStsNullPtrErr;
    if (FXNonPositive(dstRoiSize) || kernelSize <= 0)
        return ippStsSizeErr;
    const long long dstRow = FXRowBytes(dstRoiSize.width, FXChannels(L), sizeof(T));
    const long long srcRow =
        Row ? FXRowBytes(dstRoiSize.width + kernelSize - 1, FXChannels(L), sizeof(T)) : dstRow;
    if (IppStatus s = FXCheckImages(pSrc, srcStep, srcRow, pDst, dstStep, dstRow, dstRoiSize,
                                    sizeof(T), sizeof(T));
        s != ippStsNoErr)
        return s;
    // Intel's headers list no anchor error here; we reject an anchor outside the kernel because
    // it would move every read outside the neighbourhood the caller reserved.
    if (anchor < 0 || anchor >= kernelSize)
        return ippStsAnchorErr;
    return ippStsNoErr;
}

// One image argument of a point operation: its pointer, step, and the bytes of one ROI row.
struct TFXImageArg {
    const void* Ptr;
    int Step;
    long long RowBytes;
    int SampleBytes;
};

template <class T> TFXImageArg FXImageArg(const T* p, int step, int width, TFXLayout layout)
{
    return {p, step, FXRowBytes(width, FXChannels(layout), sizeof(T)), int(sizeof(T))};
}

// Point operations (arithmetic, logic, blending): null pointers (images first, then others
// such as a value array or a result), a non-positive ROI, steps that are not positive or
// smaller than a row, then steps of 16-bit and float images that are not whole samples
// (ippStsNotEvenStepErr, which IPP reports for some of them; we report it for all, so no
// sample is ever read misaligned).
inline IppStatus FXCheckPointArgs(IppiSize roiSize, std::initializer_list<TFXImageArg> images,
                                  std::initializer_list<const void*> others = {})
{
    for (const TFXImageArg& image : images)
        if (image.Ptr == nullptr)
            return ippStsNullPtrErr;
    for (const void* p : others)
        if (p == nullptr)
            return ippStsNullPtrErr;
    if (FXNonPositive(roiSize))
        return ippStsSizeErr;
    for (const TFXImageArg& image : images)
        if (image.Step <= 0 || image.Step < image.RowBytes)
            return ippStsStepErr;
    for (const TFXImageArg& image : images)
        if (image.Step % image.SampleBytes != 0)
            return ippStsNotEvenStepErr;
    return ippStsNoErr;
}

// Two sources and a destination of one layout; Extra are the operation's own scalars (a scale
// factor), which accept any value.
template <class T, TFXLayout L, class... Extra>
IppStatus FXCheckBinary(const T* pSrc1, int src1Step, const T* pSrc2, int src2Step, T* pDst,
                        int dstStep, IppiSize roiSize, Extra...)
{
    const int w = roiSize.width;
    return FXCheckPointArgs(roiSize,
                            {FXImageArg(pSrc1, src1Step, w, L), FXImageArg(pSrc2, src2Step, w, L),
                             FXImageArg(pDst, dstStep, w, L)});
}

// A source and an in-place destination.
template <class T, TFXLayout L, class... Extra>
IppStatus FXCheckBinaryInPlace(const T* pSrc, int srcStep, T* pSrcDst, int srcDstStep,
                               IppiSize roiSize, Extra...)
{
    const int w = roiSize.width;
    return FXCheckPointArgs(
        roiSize, {FXImageArg(pSrc, srcStep, w, L), FXImageArg(pSrcDst, srcDstStep, w, L)});
}

template <class T, TFXLayout L>
IppStatus FXCheckUnaryInPlace(T* pSrcDst, int srcDstStep, IppiSize roiSize)
{
    return FXCheckPointArgs(roiSize, {FXImageArg(pSrcDst, srcDstStep, roiSize.width, L)});
}

template <class T, TFXLayout L>
inline constexpr auto FXCheckRowFilter = &FXCheckKernel1D<T, L, true>;
template <class T, TFXLayout L>
inline constexpr auto FXCheckColumnFilter = &FXCheckKernel1D<T, L, false>;

// General integer kernel: null pointers (the kernel too), sizes (ROI, then kernel), steps, the
// divisor, then the anchor.
template <class T, TFXLayout L>
IppStatus FXCheckKernelFilter(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize dstRoiSize,
                              const Ipp32s* pKernel, IppiSize kernelSize, IppiPoint anchor,
                              int divisor)
{
    if (pSrc == nullptr || pDst == nullptr || pKernel == nullptr)
        return ippStsNullPtrErr;
    if (FXNonPositive(dstRoiSize) || FXNonPositive(kernelSize))
        return ippStsSizeErr;
    const long long row = FXRowBytes(dstRoiSize.width, FXChannels(L), sizeof(T));
    if (IppStatus s =
            FXCheckImages(pSrc, srcStep, row, pDst, dstStep, row, dstRoiSize, sizeof(T), sizeof(T));
        s != ippStsNoErr)
        return s;
    if (divisor == 0)
        return ippStsDivisorErr;
    // As for the row and column filters: an anchor outside the kernel would move every read
    // outside the neighbourhood the caller reserved, so we reject it.
    if (anchor.x < 0 || anchor.x >= kernelSize.width || anchor.y < 0 ||
        anchor.y >= kernelSize.height)
        return ippStsAnchorErr;
    return ippStsNoErr;
}

// Fixed 3x3 kernels: only the images to check.
template <class T, TFXLayout L>
IppStatus FXCheckFixedFilter(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize)
{
    const long long row = FXRowBytes(roiSize.width, FXChannels(L), sizeof(T));
    return FXCheckImages(pSrc, srcStep, row, pDst, dstStep, row, roiSize, sizeof(T), sizeof(T));
}

// Fixed kernels chosen by mask code: 3x3 or 5x5, anything else is a mask size error.
template <class T, TFXLayout L>
IppStatus FXCheckFixedMaskFilter(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                                 IppiMaskSize mask)
{
    if (IppStatus s = FXCheckFixedFilter<T, L>(pSrc, srcStep, pDst, dstStep, roiSize);
        s != ippStsNoErr)
        return s;
    if (mask != ippMskSize3x3 && mask != ippMskSize5x5)
        return ippStsMaskSizeErr;
    return ippStsNoErr;
}

// Source and destination rows of a point operation whose layout may name two layouts.
template <class TSrc, class TDst, TFXLayout L>
IppStatus FXCheckPointImages(const void* pSrc, int srcStep, const void* pDst, int dstStep,
                             IppiSize roiSize)
{
    return FXCheckImages(pSrc, srcStep, FXRowBytes(roiSize.width, FXSrcChannels(L), sizeof(TSrc)),
                         pDst, dstStep, FXRowBytes(roiSize.width, FXDstChannels(L), sizeof(TDst)),
                         roiSize, sizeof(TSrc), sizeof(TDst));
}

// Pixel-wise maps (colour conversions, copies, also between layouts); a channel-of-interest
// pointer still needs whole pixels per row.
template <class T, TFXLayout L>
IppStatus FXCheckPixelMap(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize)
{
    return FXCheckPointImages<T, T, L>(pSrc, srcStep, pDst, dstStep, roiSize);
}

// A null plane counts as a null pointer; the shared step must hold one plane row.
template <class T> bool FXAnyNullPlane(T* const* planes, int count = kFXPlanes)
{
    if (planes == nullptr)
        return true;
    for (int k = 0; k < count; ++k)
        if (planes[k] == nullptr)
            return true;
    return false;
}

template <class T, TFXLayout L>
IppStatus FXCheckColorConvertC3P3(const T* pSrc, int srcStep, T* pDst[3], int dstStep,
                                  IppiSize roiSize)
{
    if (FXAnyNullPlane(pDst))
        return ippStsNullPtrErr;
    return FXCheckImages(pSrc, srcStep, FXRowBytes(roiSize.width, FXChannels(L), sizeof(T)),
                         pDst[0], dstStep, FXRowBytes(roiSize.width, 1, sizeof(T)), roiSize,
                         sizeof(T), sizeof(T));
}

template <class T, TFXLayout L>
IppStatus FXCheckColorConvertP3C3(const T* pSrc[3], int srcStep, T* pDst, int dstStep,
                                  IppiSize roiSize)
{
    if (FXAnyNullPlane(pSrc))
        return ippStsNullPtrErr;
    return FXCheckImages(pSrc[0], srcStep, FXRowBytes(roiSize.width, 1, sizeof(T)), pDst, dstStep,
                         FXRowBytes(roiSize.width, FXChannels(L), sizeof(T)), roiSize, sizeof(T),
                         sizeof(T));
}

template <class T, TFXLayout L>
IppStatus FXCheckColorTwist(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                            const Ipp32f twist[3][4])
{
    if (twist == nullptr)
        return ippStsNullPtrErr;
    return FXCheckPixelMap<T, L>(pSrc, srcStep, pDst, dstStep, roiSize);
}

// One image, no source (set, in-place and generated images): null pointer, size, step, whole
// samples per step.
inline IppStatus FXCheckImage(const void* pDst, int dstStep, long long dstRowBytes,
                              IppiSize roiSize, int sampleBytes)
{
    if (pDst == nullptr)
        return ippStsNullPtrErr;
    if (FXNonPositive(roiSize))
        return ippStsSizeErr;
    if (dstStep <= 0 || dstStep < dstRowBytes)
        return ippStsStepErr;
    if (dstStep % sampleBytes != 0)
        return ippStsNotEvenStepErr;
    return ippStsNoErr;
}

template <class T, TFXLayout L>
IppStatus FXCheckCopyToPlanes(const T* pSrc, int srcStep, T* const pDst[], int dstStep,
                              IppiSize roiSize)
{
    if (FXAnyNullPlane(pDst, FXSrcChannels(L)))
        return ippStsNullPtrErr;
    return FXCheckPointImages<T, T, L>(pSrc, srcStep, pDst[0], dstStep, roiSize);
}

template <class T, TFXLayout L>
IppStatus FXCheckSetScalar(T, T* pDst, int dstStep, IppiSize roiSize)
{
    return FXCheckImage(pDst, dstStep, FXRowBytes(roiSize.width, FXChannels(L), sizeof(T)),
                        roiSize, sizeof(T));
}

template <class T, TFXLayout L>
IppStatus FXCheckSetChannels(const T value[], T* pDst, int dstStep, IppiSize roiSize)
{
    if (value == nullptr)
        return ippStsNullPtrErr;
    return FXCheckSetScalar<T, L>(T(0), pDst, dstStep, roiSize);
}

// Channel orders name source channels 0 to 2; anything else is ippStsChannelOrderErr.
inline IppStatus FXCheckChannelOrder(const int dstOrder[3])
{
    for (int c = 0; c < 3; ++c)
        if (dstOrder[c] < 0 || dstOrder[c] > 2)
            return ippStsChannelOrderErr;
    return ippStsNoErr;
}

template <class T, TFXLayout L>
IppStatus FXCheckSwapChannels(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                              const int dstOrder[3])
{
    if (dstOrder == nullptr)
        return ippStsNullPtrErr;
    if (IppStatus s = FXCheckPixelMap<T, L>(pSrc, srcStep, pDst, dstStep, roiSize);
        s != ippStsNoErr)
        return s;
    return FXCheckChannelOrder(dstOrder);
}

template <class T, TFXLayout L>
IppStatus FXCheckSwapChannelsInPlace(T* pSrcDst, int srcDstStep, IppiSize roiSize,
                                     const int dstOrder[3])
{
    if (dstOrder == nullptr)
        return ippStsNullPtrErr;
    if (IppStatus s = FXCheckSetScalar<T, L>(T(0), pSrcDst, srcDstStep, roiSize); s != ippStsNoErr)
        return s;
    return FXCheckChannelOrder(dstOrder);
}

// Legacy IPP knows three axes; the diagonal ones came later and are rejected here.
inline bool FXValidAxis(IppiAxis flip)
{
    return flip == ippAxsHorizontal || flip == ippAxsVertical || flip == ippAxsBoth;
}

template <class T, TFXLayout L>
IppStatus FXCheckMirror(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                        IppiAxis flip)
{
    if (IppStatus s = FXCheckPixelMap<T, L>(pSrc, srcStep, pDst, dstStep, roiSize);
        s != ippStsNoErr)
        return s;
    return FXValidAxis(flip) ? ippStsNoErr : ippStsMirrorFlipErr;
}

template <class T, TFXLayout L>
IppStatus FXCheckMirrorInPlace(T* pSrcDst, int srcDstStep, IppiSize roiSize, IppiAxis flip)
{
    if (IppStatus s = FXCheckSetScalar<T, L>(T(0), pSrcDst, srcDstStep, roiSize); s != ippStsNoErr)
        return s;
    return FXValidAxis(flip) ? ippStsNoErr : ippStsMirrorFlipErr;
}

template <class T, TFXLayout L>
IppStatus FXCheckConvertToFloat(const T* pSrc, int srcStep, Ipp32f* pDst, int dstStep,
                                IppiSize roiSize)
{
    return FXCheckPointImages<T, Ipp32f, L>(pSrc, srcStep, pDst, dstStep, roiSize);
}

// Zero, nearest and financial rounding; IPP 8.2 documented the first two, later versions added
// the third. Other values are refused rather than guessed.
template <class T, TFXLayout L>
IppStatus FXCheckConvertFromFloat(const Ipp32f* pSrc, int srcStep, T* pDst, int dstStep,
                                  IppiSize roiSize, IppRoundMode roundMode)
{
    if (IppStatus s = FXCheckPointImages<Ipp32f, T, L>(pSrc, srcStep, pDst, dstStep, roiSize);
        s != ippStsNoErr)
        return s;
    const bool known =
        roundMode == ippRndZero || roundMode == ippRndNear || roundMode == ippRndFinancial;
    return known ? ippStsNoErr : ippStsRoundModeNotSupportedErr;
}

template <class T, TFXLayout L>
IppStatus FXCheckPackRgb16(const T* pSrc, int srcStep, Ipp16u* pDst, int dstStep, IppiSize roiSize)
{
    return FXCheckImages(pSrc, srcStep, FXRowBytes(roiSize.width, FXChannels(L), sizeof(T)), pDst,
                         dstStep, FXRowBytes(roiSize.width, 1, sizeof(Ipp16u)), roiSize, sizeof(T),
                         sizeof(Ipp16u));
}

template <class T, TFXLayout L>
IppStatus FXCheckAddNoise(T* pSrcDst, int srcDstStep, IppiSize roiSize, T, T, unsigned int* pSeed)
{
    if (pSeed == nullptr)
        return ippStsNullPtrErr;
    return FXCheckSetScalar<T, L>(T(0), pSrcDst, srcDstStep, roiSize);
}

// IPP's header reports a bad step of the test image as a size error.
template <class T, TFXLayout L> IppStatus FXCheckTestImage(T* pDst, int dstStep, IppiSize roiSize)
{
    const IppStatus s = FXCheckSetScalar<T, L>(T(0), pDst, dstStep, roiSize);
    return s == ippStsStepErr ? ippStsSizeErr : s;
}

// Signal (one-dimensional) primitives: null pointers, then a non-positive length.
inline IppStatus FXCheckSignal(int len, std::initializer_list<const void*> pointers)
{
    for (const void* p : pointers)
        if (p == nullptr)
            return ippStsNullPtrErr;
    return len <= 0 ? ippStsSizeErr : ippStsNoErr;
}

template <class T, TFXLayout L> IppStatus FXCheckSignalSet(T, T* pDst, int len)
{
    return FXCheckSignal(len, {pDst});
}

template <class T, TFXLayout L> IppStatus FXCheckSignalCopy(const T* pSrc, T* pDst, int len)
{
    return FXCheckSignal(len, {pSrc, pDst});
}

template <class T, TFXLayout L>
IppStatus FXCheckSignalAddScaled(const T* pSrc, T* pSrcDst, int len, int)
{
    return FXCheckSignal(len, {pSrc, pSrcDst});
}

template <class T, TFXLayout L> IppStatus FXCheckSignalMulCScaled(T, T* pSrcDst, int len, int)
{
    return FXCheckSignal(len, {pSrcDst});
}

template <class T, TFXLayout L> IppStatus FXCheckSignalShiftC(int val, T* pSrcDst, int len)
{
    if (IppStatus s = FXCheckSignal(len, {pSrcDst}); s != ippStsNoErr)
        return s;
    return val < 0 ? ippStsShiftErr : ippStsNoErr;
}

template <class T, TFXLayout L>
IppStatus FXCheckSignalPolarToCart(const T* pSrcMagn, const T* pSrcPhase, T* pDstRe, T* pDstIm,
                                   int len)
{
    return FXCheckSignal(len, {pSrcMagn, pSrcPhase, pDstRe, pDstIm});
}

} // namespace framix::prim
