// SPDX-License-Identifier: MIT
// Argument shapes, channel layouts and sample types that classify every primitive of the layer.
#pragma once

#include "framework/primitives/FXIppTypes.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace framix::prim {

// Interleaved channel layouts. AC4 has four channels of which the fourth (alpha) is neither
// processed nor written.
enum class TFXLayout : std::uint8_t { C1, C3, C4, AC4 };

constexpr int FXChannels(TFXLayout layout)
{
    return layout == TFXLayout::C1 ? 1 : layout == TFXLayout::C3 ? 3 : 4;
}

// Channels a primitive computes: all of them except the alpha of AC4.
constexpr int FXProcessedChannels(TFXLayout layout)
{
    return layout == TFXLayout::AC4 ? 3 : FXChannels(layout);
}

std::string_view FXLayoutName(TFXLayout layout);

enum class TFXSample : std::uint8_t { U8, U16, S16, F32 };

template <class T> inline constexpr TFXSample kFXSampleOf = TFXSample::U8;
template <> inline constexpr TFXSample kFXSampleOf<Ipp16u> = TFXSample::U16;
template <> inline constexpr TFXSample kFXSampleOf<Ipp16s> = TFXSample::S16;
template <> inline constexpr TFXSample kFXSampleOf<Ipp32f> = TFXSample::F32;

constexpr int FXSampleBytes(TFXSample sample)
{
    return sample == TFXSample::U8 ? 1 : sample == TFXSample::F32 ? 4 : 2;
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
    // (pSrc, srcStep, pDst, dstStep, dstRoiSize, pKernel (Ipp32s), kernelSize, anchor, divisor)
    KernelFilter,
    // (pSrc, srcStep, pDst, dstStep, roiSize): a fixed 3x3 kernel
    FixedFilter,
    // (pSrc, srcStep, pDst, dstStep, roiSize, mask): a fixed kernel chosen by its mask code
    FixedMaskFilter,
    // (pSrc, srcStep, pDst, dstStep, roiSize, pValues, pLevels, nLevels): one table
    Lut,
    // (pSrc, srcStep, pDst, dstStep, roiSize, pValues[], pLevels[], nLevels[]): one per channel
    LutChannels,
    // (pSrc, srcStep, pDst (Ipp32u), dstStep, roiSize, pTable, nBitSize)
    LutPalette,
    // (pSrc, srcStep, pDst, dstStep, roiSize, threshold[3], value[3])
    Threshold,
    // (pSrc, srcStep, pDst, dstStep, roiSize, thresholdLT[3], valueLT[3], thresholdGT[3],
    //  valueGT[3])
    ThresholdBoth,
    // (pSrc, srcStep, roiSize, pHist, pLevels, nLevels, lowerLevel, upperLevel): no image out
    Histogram,
    // (pSrc, srcStep, roiSize, pHist[], pLevels[], nLevels[], lowerLevel[], upperLevel[])
    HistogramChannels,
    // (pSrc, srcStep, pDst, dstStep, roiSize): a pixel-wise conversion between two images of
    // the same layout
    ColorConvert,
    // (pSrc, srcStep, pDst[3], dstStep, roiSize): interleaved source, three destination planes
    ColorConvertC3P3,
    // (pSrc[3], srcStep, pDst, dstStep, roiSize): three source planes, interleaved destination
    ColorConvertP3C3,
    // (pSrc, srcStep, pDst, dstStep, roiSize, twist[3][4])
    ColorTwist,
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

template <class T> struct TFXShapeSignature<TFXShape::KernelFilter, T> {
    using Fn = IppStatus(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize dstRoiSize,
                         const Ipp32s* pKernel, IppiSize kernelSize, IppiPoint anchor, int divisor);
};

template <class T> struct TFXShapeSignature<TFXShape::FixedFilter, T> {
    using Fn = IppStatus(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize);
};

template <class T> struct TFXShapeSignature<TFXShape::FixedMaskFilter, T> {
    using Fn = IppStatus(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                         IppiMaskSize mask);
};

template <class T> struct TFXShapeSignature<TFXShape::Lut, T> {
    using Fn = IppStatus(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                         const Ipp32s* pValues, const Ipp32s* pLevels, int nLevels);
};

template <class T> struct TFXShapeSignature<TFXShape::LutChannels, T> {
    using Fn = IppStatus(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                         const Ipp32s* pValues[], const Ipp32s* pLevels[], int nLevels[]);
};

template <class T> struct TFXShapeSignature<TFXShape::LutPalette, T> {
    using Fn = IppStatus(const T* pSrc, int srcStep, Ipp32u* pDst, int dstStep, IppiSize roiSize,
                         const Ipp32u* pTable, int nBitSize);
};

template <class T> struct TFXShapeSignature<TFXShape::Threshold, T> {
    using Fn = IppStatus(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                         const T threshold[3], const T value[3]);
};

template <class T> struct TFXShapeSignature<TFXShape::ThresholdBoth, T> {
    using Fn = IppStatus(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                         const T thresholdLT[3], const T valueLT[3], const T thresholdGT[3],
                         const T valueGT[3]);
};

template <class T> struct TFXShapeSignature<TFXShape::Histogram, T> {
    using Fn = IppStatus(const T* pSrc, int srcStep, IppiSize roiSize, Ipp32s* pHist,
                         Ipp32s* pLevels, int nLevels, Ipp32s lowerLevel, Ipp32s upperLevel);
};

template <class T> struct TFXShapeSignature<TFXShape::HistogramChannels, T> {
    using Fn = IppStatus(const T* pSrc, int srcStep, IppiSize roiSize, Ipp32s* pHist[],
                         Ipp32s* pLevels[], int nLevels[], Ipp32s lowerLevel[],
                         Ipp32s upperLevel[]);
};

template <class T> struct TFXShapeSignature<TFXShape::ColorConvert, T> {
    using Fn = IppStatus(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize);
};

template <class T> struct TFXShapeSignature<TFXShape::ColorConvertC3P3, T> {
    using Fn = IppStatus(const T* pSrc, int srcStep, T* pDst[3], int dstStep, IppiSize roiSize);
};

template <class T> struct TFXShapeSignature<TFXShape::ColorConvertP3C3, T> {
    using Fn = IppStatus(const T* pSrc[3], int srcStep, T* pDst, int dstStep, IppiSize roiSize);
};

template <class T> struct TFXShapeSignature<TFXShape::ColorTwist, T> {
    using Fn = IppStatus(const T* pSrc, int srcStep, T* pDst, int dstStep, IppiSize roiSize,
                         const Ipp32f twist[3][4]);
};

// Planes of a planar image side (ColorConvertC3P3, ColorConvertP3C3), one step shared by all.
inline constexpr int kFXPlanes = 3;
constexpr int FXSrcPlanes(TFXShape shape)
{
    return shape == TFXShape::ColorConvertP3C3 ? kFXPlanes : 1;
}
constexpr int FXDstPlanes(TFXShape shape)
{
    return shape == TFXShape::ColorConvertC3P3 ? kFXPlanes : 1;
}

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
    IppiSize Mask{0, 0};            // MaskFilter; KernelFilter: kernelSize
    IppiPoint Anchor{0, 0};         // MaskFilter, KernelFilter
    const Ipp32f* Kernel = nullptr; // RowFilter, ColumnFilter
    int KernelSize = 0;
    int KernelAnchor = 0;
    const Ipp32s* IntKernel = nullptr; // KernelFilter
    int Divisor = 1;
    IppiMaskSize MaskCode = ippMskSize3x3; // FixedMaskFilter
    // Lut (channel 0), LutChannels: channel c maps through Values[c], Levels[c], LevelCounts[c].
    // Histogram (channel 0), HistogramChannels: LevelCounts, Lower and Upper describe the bins;
    // the counts go to Hist[c], the levels to HistLevels[c].
    std::array<const Ipp32s*, 4> Values{};
    std::array<const Ipp32s*, 4> Levels{};
    std::array<int, 4> LevelCounts{};
    std::array<Ipp32s*, 4> Hist{};
    std::array<Ipp32s*, 4> HistLevels{};
    std::array<Ipp32s, 4> Lower{};
    std::array<Ipp32s, 4> Upper{};
    const Ipp32u* Palette = nullptr; // LutPalette
    int BitSize = 0;
    // Threshold (Limit, LimitValue) and ThresholdBoth (Limit and LimitValue below, UpperLimit
    // and UpperValue above): three samples each, in storage order.
    const void* Limit = nullptr;
    const void* LimitValue = nullptr;
    const void* UpperLimit = nullptr;
    const void* UpperValue = nullptr;
    // ColorConvertC3P3 (destination) and ColorConvertP3C3 (source): the planes. The plane array
    // is passed only while Dst (Src) is not null, so a null Dst (Src) passes a null array.
    std::array<void*, kFXPlanes> Planes{};
    const Ipp32f (*Twist)[4] = nullptr; // ColorTwist
};

// How many pixels a primitive reads beyond each edge of its ROI (legacy neighbourhood
// primitives read outside the ROI and do no border handling).
struct TFXMargins {
    int Left = 0;
    int Top = 0;
    int Right = 0;
    int Bottom = 0;
};

TFXMargins FXShapeMargins(TFXShape shape, const TFXShapeArgs& args);

// Bytes of one destination pixel: 0 for the histograms (they write counts, not an image),
// 4 for the palette (32-bit pixels), else the source pixel's size.
int FXDstPixelBytes(TFXShape shape, TFXSample sample, TFXLayout layout);

// Calls fn, a function of the given shape and sample type, with args.
IppStatus FXCallShape(TFXShape shape, TFXSample sample, TFXAnyFn fn, const TFXShapeArgs& args);

} // namespace framix::prim
