// SPDX-License-Identifier: MIT
// Argument shapes, channel layouts and sample types that classify every primitive of the layer.
#pragma once

#include "framework/primitives/FXIppTypes.h"

#include <cstdint>
#include <string_view>

namespace framix::prim {

// Interleaved channel layouts. AC4 has four channels of which the fourth (alpha) is neither
// processed nor written. The layouts after AC4 name a source and a destination layout of the
// primitives that move samples between layouts (IPP's name suffixes): AC4C3 (four channels to
// three), C3AC4 (three into the colour of four), C1C4 (one into the channel the destination
// pointer addresses in four), C4C (the addressed channel of four to the same of four), C3RAC4
// (the addressed channel of three to the addressed channel of four), C3P3 and C4P4 (interleaved
// to planes).
enum class TFXLayout : std::uint8_t {
    C1,
    C3,
    C4,
    AC4,
    AC4C3,
    C3AC4,
    C1C4,
    C4C,
    C3RAC4,
    C3P3,
    C4P4
};

// Channels of one source pixel.
constexpr int FXSrcChannels(TFXLayout layout)
{
    switch (layout) {
    case TFXLayout::C1:
    case TFXLayout::C1C4:
        return 1;
    case TFXLayout::C3:
    case TFXLayout::C3AC4:
    case TFXLayout::C3RAC4:
    case TFXLayout::C3P3:
        return 3;
    default:
        return 4;
    }
}

// Channels of one destination pixel (of each plane for the planar layouts).
constexpr int FXDstChannels(TFXLayout layout)
{
    switch (layout) {
    case TFXLayout::C1:
    case TFXLayout::C3P3:
    case TFXLayout::C4P4:
        return 1;
    case TFXLayout::C3:
    case TFXLayout::AC4C3:
        return 3;
    default:
        return 4;
    }
}

// Destination planes: 3 or 4 for the planar layouts, else 1.
constexpr int FXDstPlanes(TFXLayout layout)
{
    return layout == TFXLayout::C3P3 ? 3 : layout == TFXLayout::C4P4 ? 4 : 1;
}

// Channels of a pixel where source and destination share a layout (C1, C3, C4, AC4); the source's
// for the others.
constexpr int FXChannels(TFXLayout layout)
{
    return FXSrcChannels(layout);
}

// Channels a primitive computes: all of them except the alpha of AC4.
constexpr int FXProcessedChannels(TFXLayout layout)
{
    return layout == TFXLayout::AC4 ? 3 : FXChannels(layout);
}

std::string_view FXLayoutName(TFXLayout layout);

enum class TFXSample : std::uint8_t { U8, U16, S16, F32, S32, F64 };

template <class T> inline constexpr TFXSample kFXSampleOf = TFXSample::U8;
template <> inline constexpr TFXSample kFXSampleOf<Ipp16u> = TFXSample::U16;
template <> inline constexpr TFXSample kFXSampleOf<Ipp16s> = TFXSample::S16;
template <> inline constexpr TFXSample kFXSampleOf<Ipp32f> = TFXSample::F32;
template <> inline constexpr TFXSample kFXSampleOf<Ipp32s> = TFXSample::S32;
template <> inline constexpr TFXSample kFXSampleOf<Ipp64f> = TFXSample::F64;

constexpr int FXSampleBytes(TFXSample sample)
{
    switch (sample) {
    case TFXSample::U8:
        return 1;
    case TFXSample::U16:
    case TFXSample::S16:
        return 2;
    case TFXSample::F64:
        return 8;
    default:
        return 4;
    }
}

std::string_view FXSampleName(TFXSample sample);

// An argument shape: one IPP parameter list shared by many primitives. Generic code (checks,
// tests, benchmarks, the real-IPP comparison) is written once per shape.
enum class TFXShape : std::uint8_t {
    // (pSrc, srcStep, pDst, dstStep, dstRoiSize, maskSize, anchor)
    MaskFilter,
    // (pSrc, srcStep, pDst, dstStep, dstRoiSize, pKernel, kernelSize, xAnchor)
    RowFilter,
    // (pSrc, srcStep, pDst, dstStep, dstRoiSize, pKernel, kernelSize, yAnchor)
    ColumnFilter,
    // (pSrc, srcStep, pDst, dstStep, roiSize); the layout may name two layouts (AC4C3 ...)
    Copy,
    // (pSrc, srcStep, pDst[planes], dstStep, roiSize)
    CopyToPlanes,
    // (value, pDst, dstStep, roiSize)
    SetScalar,
    // (value[channels], pDst, dstStep, roiSize)
    SetChannels,
    // (pSrc, srcStep, pDst, dstStep, roiSize, dstOrder[3])
    SwapChannels,
    // (pSrcDst, srcDstStep, roiSize, dstOrder[3])
    SwapChannelsInPlace,
    // (pSrc, srcStep, pDst, dstStep, roiSize, flip)
    Mirror,
    // (pSrcDst, srcDstStep, roiSize, flip)
    MirrorInPlace,
    // (pSrc, srcStep, Ipp32f* pDst, dstStep, roiSize): T is the source sample
    ConvertToFloat,
    // (const Ipp32f* pSrc, srcStep, pDst, dstStep, roiSize, roundMode): T is the destination's
    ConvertFromFloat,
    // (pSrc, srcStep, Ipp16u* pDst, dstStep, roiSize): colour packed into 16-bit pixels
    PackRgb16,
    // (pSrcDst, srcDstStep, roiSize, a, b, unsigned* pSeed): a, b are low/high or mean/stdev
    AddNoise,
    // (pDst, dstStep, roiSize)
    TestImage,
    // (val, pDst, len)
    SignalSet,
    // (pSrc, pDst, len)
    SignalCopy,
    // (pSrc, pSrcDst, len, scaleFactor)
    SignalAddScaled,
    // (val, pSrcDst, len, scaleFactor)
    SignalMulCScaled,
    // (int val, pSrcDst, len)
    SignalShiftC,
    // (pSrcMagn, pSrcPhase, pDstRe, pDstIm, len)
    SignalPolarToCart,
};

std::string_view FXShapeName(TFXShape shape);

template <TFXShape S, class T> struct TFXShapeSignature;

template <class T> struct TFXShapeSignature<TFXShape::MaskFilter, T> {
    using Fn = IppStatus(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize dstRoiSize,
                         IppiSize maskSize, IppiPoint anchor);
};

template <class T> struct TFXShapeSignature<TFXShape::RowFilter, T> {
    using Fn = IppStatus(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize dstRoiSize,
                         const Ipp32f* pKernel, int kernelSize, int xAnchor);
};

template <class T> struct TFXShapeSignature<TFXShape::ColumnFilter, T> {
    using Fn = IppStatus(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize dstRoiSize,
                         const Ipp32f* pKernel, int kernelSize, int yAnchor);
};

template <class T> struct TFXShapeSignature<TFXShape::Copy, T> {
    using Fn = IppStatus(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize);
};

template <class T> struct TFXShapeSignature<TFXShape::CopyToPlanes, T> {
    using Fn = IppStatus(const T* pSrc, int srcStep, T* const pDst[], int dstStep,
                         IppiSize roiSize);
};

template <class T> struct TFXShapeSignature<TFXShape::SetScalar, T> {
    using Fn = IppStatus(T value, T* pDst, int dstStep, IppiSize roiSize);
};

template <class T> struct TFXShapeSignature<TFXShape::SetChannels, T> {
    using Fn = IppStatus(const T value[], T* pDst, int dstStep, IppiSize roiSize);
};

template <class T> struct TFXShapeSignature<TFXShape::SwapChannels, T> {
    using Fn = IppStatus(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                         const int dstOrder[3]);
};

template <class T> struct TFXShapeSignature<TFXShape::SwapChannelsInPlace, T> {
    using Fn = IppStatus(T* pSrcDst, int srcDstStep, IppiSize roiSize, const int dstOrder[3]);
};

template <class T> struct TFXShapeSignature<TFXShape::Mirror, T> {
    using Fn = IppStatus(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                         IppiAxis flip);
};

template <class T> struct TFXShapeSignature<TFXShape::MirrorInPlace, T> {
    using Fn = IppStatus(T* pSrcDst, int srcDstStep, IppiSize roiSize, IppiAxis flip);
};

template <class T> struct TFXShapeSignature<TFXShape::ConvertToFloat, T> {
    using Fn = IppStatus(const T* pSrc, int srcStep, Ipp32f* pDst, int dstStep, IppiSize roiSize);
};

template <class T> struct TFXShapeSignature<TFXShape::ConvertFromFloat, T> {
    using Fn = IppStatus(const Ipp32f* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                         IppRoundMode roundMode);
};

template <class T> struct TFXShapeSignature<TFXShape::PackRgb16, T> {
    using Fn = IppStatus(const T* pSrc, int srcStep, Ipp16u* pDst, int dstStep, IppiSize roiSize);
};

template <class T> struct TFXShapeSignature<TFXShape::AddNoise, T> {
    using Fn = IppStatus(T* pSrcDst, int srcDstStep, IppiSize roiSize, T a, T b,
                         unsigned int* pSeed);
};

template <class T> struct TFXShapeSignature<TFXShape::TestImage, T> {
    using Fn = IppStatus(T* pDst, int dstStep, IppiSize roiSize);
};

template <class T> struct TFXShapeSignature<TFXShape::SignalSet, T> {
    using Fn = IppStatus(T val, T* pDst, int len);
};

template <class T> struct TFXShapeSignature<TFXShape::SignalCopy, T> {
    using Fn = IppStatus(const T* pSrc, T* pDst, int len);
};

template <class T> struct TFXShapeSignature<TFXShape::SignalAddScaled, T> {
    using Fn = IppStatus(const T* pSrc, T* pSrcDst, int len, int scaleFactor);
};

template <class T> struct TFXShapeSignature<TFXShape::SignalMulCScaled, T> {
    using Fn = IppStatus(T val, T* pSrcDst, int len, int scaleFactor);
};

template <class T> struct TFXShapeSignature<TFXShape::SignalShiftC, T> {
    using Fn = IppStatus(int val, T* pSrcDst, int len);
};

template <class T> struct TFXShapeSignature<TFXShape::SignalPolarToCart, T> {
    using Fn = IppStatus(const T* pSrcMagn, const T* pSrcPhase, T* pDstRe, T* pDstIm, int len);
};

// The exact function type of a primitive of shape S on samples T (IPP's argument list).
template <TFXShape S, class T> using FXShapeFn = typename TFXShapeSignature<S, T>::Fn;

// Registry entries store every function as this type and cast it back through the shape.
using TFXAnyFn = void (*)();

// A level kernel returns this when it has no fast path for an argument set (an image narrower
// than one vector, a mask beyond its limits); the caller then runs the reference. It is never
// returned to users.
inline constexpr IppStatus kFXDeclined = 0x46580001;

// The union of all shapes' arguments, so generic code can describe and run any primitive.
struct TFXShapeArgs {
    const void* Src = nullptr;
    int SrcStep = 0;
    void* Dst = nullptr;
    int DstStep = 0;
    IppiSize Roi{0, 0};
    IppiSize Mask{0, 0};            // MaskFilter
    IppiPoint Anchor{0, 0};         // MaskFilter
    const Ipp32f* Kernel = nullptr; // RowFilter, ColumnFilter
    int KernelSize = 0;
    int KernelAnchor = 0;
    // Set values, channel orders, noise bounds, signal constants (as int; each shape converts).
    int Values[4] = {0, 0, 0, 0};
    int Param = 0;                // flip, round mode, scale factor
    unsigned int* Seed = nullptr; // AddNoise
};

// How a shape lays out its images, for generic code that allocates and compares them. Sizes
// are in bytes per pixel (per sample for the signal shapes, whose length is Roi.width and whose
// Roi.height is 1). Planar arguments are planes of Roi.height rows each, the step apart row to
// row and Roi.height * step apart plane to plane: the planes of C3P3, the magnitude and phase
// (and real and imaginary) arrays of PolarToCart.
struct TFXShapeGeometry {
    TFXSample SrcSample = TFXSample::U8;
    TFXSample DstSample = TFXSample::U8;
    int SrcPixelBytes = 0; // 0: no source image
    int SrcPlanes = 1;
    int DstPixelBytes = 0;
    int DstPlanes = 1;
    bool InPlace = false; // the destination is read too
    bool Signal = false;  // one-dimensional: no steps
};

TFXShapeGeometry FXShapeGeometry(TFXShape shape, TFXSample sample, TFXLayout layout);

// How many pixels a primitive reads beyond each edge of its ROI (legacy neighbourhood
// primitives read outside the ROI and do no border handling).
struct TFXMargins {
    int Left = 0;
    int Top = 0;
    int Right = 0;
    int Bottom = 0;
};

TFXMargins FXShapeMargins(TFXShape shape, const TFXShapeArgs& args);

// Calls fn, a function of the given shape and sample type, with args.
IppStatus FXCallShape(TFXShape shape, TFXSample sample, TFXAnyFn fn, const TFXShapeArgs& args);

} // namespace framix::prim
