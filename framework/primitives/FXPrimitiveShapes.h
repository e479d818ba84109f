// SPDX-License-Identifier: MIT
// Argument shapes, channel layouts and sample types that classify every primitive of the layer.
#pragma once

#include "framework/primitives/FXIppTypes.h"

#include <array>
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
    // (pSrc, srcStep, pDst, dstStep, roiSize): a pixel-wise map of the source (colour conversions,
    // copies); the layout may name two layouts (AC4C3 ...)
    PixelMap,
    // (pSrc, srcStep, pDst[3], dstStep, roiSize): interleaved source, three destination planes
    ColorConvertC3P3,
    // (pSrc[3], srcStep, pDst, dstStep, roiSize): three source planes, interleaved destination
    ColorConvertP3C3,
    // (pSrc, srcStep, pDst, dstStep, roiSize, twist[3][4])
    ColorTwist,
    // (pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roiSize, scaleFactor)
    BinarySfs,
    // (pSrc, srcStep, pSrcDst, srcDstStep, roiSize, scaleFactor)
    BinaryInPlaceSfs,
    // (pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roiSize)
    Binary,
    // (pSrc, srcStep, pSrcDst, srcDstStep, roiSize)
    BinaryInPlace,
    // (pSrcDst, srcDstStep, roiSize)
    UnaryInPlace,
    // (pSrc, srcStep, value, pDst, dstStep, roiSize): one constant (C1)
    ConstScalar,
    // (pSrc, srcStep, const value[channels], pDst, dstStep, roiSize)
    ConstVector,
    // (value, pSrcDst, srcDstStep, roiSize)
    ConstScalarInPlace,
    // (const value[channels], pSrcDst, srcDstStep, roiSize)
    ConstVectorInPlace,
    // (pSrc, srcStep, roiSize, pResult): one value per image
    Reduce,
    // (pSrc1, src1Step, alpha1, pSrc2, src2Step, alpha2, pDst, dstStep, roiSize, alphaType)
    AlphaConst,
    // (pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roiSize, alphaType)
    AlphaPixel,
    // (pSrc, srcStep, Ipp32f* pSrcDst, srcDstStep, roiSize, Ipp32f alpha): T is the source's
    AccumulateWeighted,
    // (pSrc, srcStep, T* const pDst[planes], dstStep, roiSize): interleaved source, a plane per
    // channel (C3P3, C4P4)
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
    // (pSrcMagn, pSrcPhase, pDstRe, pDstIm, len): two sources, two destination planes
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

template <class T> struct TFXShapeSignature<TFXShape::PixelMap, T> {
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

template <class T> struct TFXShapeSignature<TFXShape::BinarySfs, T> {
    using Fn = IppStatus(const T* pSrc1, int src1Step, const T* pSrc2, int src2Step, T* pDst,
                         int dstStep, IppiSize roiSize, int scaleFactor);
};

template <class T> struct TFXShapeSignature<TFXShape::BinaryInPlaceSfs, T> {
    using Fn = IppStatus(const T* pSrc, int srcStep, T* pSrcDst, int srcDstStep, IppiSize roiSize,
                         int scaleFactor);
};

template <class T> struct TFXShapeSignature<TFXShape::Binary, T> {
    using Fn = IppStatus(const T* pSrc1, int src1Step, const T* pSrc2, int src2Step, T* pDst,
                         int dstStep, IppiSize roiSize);
};

template <class T> struct TFXShapeSignature<TFXShape::BinaryInPlace, T> {
    using Fn = IppStatus(const T* pSrc, int srcStep, T* pSrcDst, int srcDstStep, IppiSize roiSize);
};

template <class T> struct TFXShapeSignature<TFXShape::UnaryInPlace, T> {
    using Fn = IppStatus(T* pSrcDst, int srcDstStep, IppiSize roiSize);
};

template <class T> struct TFXShapeSignature<TFXShape::ConstScalar, T> {
    using Fn = IppStatus(const T* pSrc, int srcStep, T value, T* pDst, int dstStep,
                         IppiSize roiSize);
};

template <class T> struct TFXShapeSignature<TFXShape::ConstVector, T> {
    using Fn = IppStatus(const T* pSrc, int srcStep, const T* value, T* pDst, int dstStep,
                         IppiSize roiSize);
};

template <class T> struct TFXShapeSignature<TFXShape::ConstScalarInPlace, T> {
    using Fn = IppStatus(T value, T* pSrcDst, int srcDstStep, IppiSize roiSize);
};

template <class T> struct TFXShapeSignature<TFXShape::ConstVectorInPlace, T> {
    using Fn = IppStatus(const T* value, T* pSrcDst, int srcDstStep, IppiSize roiSize);
};

template <class T> struct TFXShapeSignature<TFXShape::Reduce, T> {
    using Fn = IppStatus(const T* pSrc, int srcStep, IppiSize roiSize, T* pResult);
};

template <class T> struct TFXShapeSignature<TFXShape::AlphaConst, T> {
    using Fn = IppStatus(const T* pSrc1, int src1Step, T alpha1, const T* pSrc2, int src2Step,
                         T alpha2, T* pDst, int dstStep, IppiSize roiSize, IppiAlphaType alphaType);
};

template <class T> struct TFXShapeSignature<TFXShape::AlphaPixel, T> {
    using Fn = IppStatus(const T* pSrc1, int src1Step, const T* pSrc2, int src2Step, T* pDst,
                         int dstStep, IppiSize roiSize, IppiAlphaType alphaType);
};

template <class T> struct TFXShapeSignature<TFXShape::AccumulateWeighted, T> {
    using Fn = IppStatus(const T* pSrc, int srcStep, Ipp32f* pSrcDst, int srcDstStep,
                         IppiSize roiSize, Ipp32f alpha);
};

// Planes of a planar image side, one step shared by all: three for the colour shapes
// (ColorConvertC3P3, ColorConvertP3C3), up to four for CopyToPlanes, two for PolarToCart.
inline constexpr int kFXPlanes = 3;
inline constexpr int kFXMaxPlanes = 4;

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
    IppiSize Mask{0, 0};            // MaskFilter; KernelFilter: kernelSize
    IppiPoint Anchor{0, 0};         // MaskFilter, KernelFilter
    const Ipp32f* Kernel = nullptr; // RowFilter, ColumnFilter
    int KernelSize = 0;
    int KernelAnchor = 0;
    const Ipp32s* IntKernel = nullptr; // KernelFilter
    int Divisor = 1;
    IppiMaskSize MaskCode = ippMskSize3x3; // FixedMaskFilter
    // Lut (channel 0), LutChannels: channel c maps through LutValues[c], LutLevels[c],
    // LevelCounts[c].
    // Histogram (channel 0), HistogramChannels: LevelCounts, Lower and Upper describe the bins;
    // the counts go to Hist[c], the levels to HistLevels[c].
    std::array<const Ipp32s*, 4> LutValues{};
    std::array<const Ipp32s*, 4> LutLevels{};
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
    // The planes of a planar side: the destination's (ColorConvertC3P3, CopyToPlanes,
    // SignalPolarToCart) or the source's (ColorConvertP3C3). They are passed only while Dst
    // (Src) is not null, so a null Dst (Src) passes null planes.
    std::array<void*, kFXMaxPlanes> Planes{};
    const Ipp32f (*Twist)[4] = nullptr; // ColorTwist
    const void* Src2 = nullptr;         // the second source of two-source shapes
    int Src2Step = 0;
    int ScaleFactor = 0; // *Sfs, SignalAddScaled, SignalMulCScaled
    // Constants, alphas, set values, channel orders, noise bounds, signal constants (as int;
    // each shape converts): Const* (value or value[]), AlphaConst (alpha1, alpha2), Set*,
    // SwapChannels* (dstOrder), AddNoise (a, b), Signal* (val).
    int Values[4] = {0, 0, 0, 0};
    int AlphaType = 0;            // AlphaConst, AlphaPixel
    Ipp32f Weight = 0.0f;         // AccumulateWeighted
    int Param = 0;                // Mirror* (flip), ConvertFromFloat (round mode)
    unsigned int* Seed = nullptr; // AddNoise
    // Point shapes with no source (UnaryInPlace, Const*InPlace, Set*, TestImage) leave Src null;
    // in-place shapes read and write Dst; Reduce writes its one result per channel to Dst.
};

// How a shape lays out its images, for generic code that allocates, fills and compares them.
// Sizes are in bytes per pixel (per sample for the signal shapes, whose length is Roi.width
// and whose Roi.height is 1); a planar side holds one sample per pixel in each plane.
struct TFXShapeGeometry {
    TFXSample SrcSample = TFXSample::U8;
    TFXSample DstSample = TFXSample::U8; // the palette's 32-bit pixels count as S32
    int SrcPixelBytes = 0;               // 0: no source image
    int SrcPlanes = 1;
    bool SecondSource = false; // Src2, laid out like the source (with a step of its own)
    int DstPixelBytes = 0;     // 0: no destination image (the histograms write counts)
    int DstPlanes = 1;
    bool InPlace = false; // the destination is read as an operand too
    bool Reduces = false; // the destination is one pixel: one result per channel
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
