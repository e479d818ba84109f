// SPDX-License-Identifier: MIT
// Argument shapes, channel layouts and sample types that classify every primitive of the layer.
#pragma once

#include "framework/primitives/FXIppTypes.h"

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
    const void* Src2 = nullptr; // the second source of two-source shapes
    int Src2Step = 0;
    int ScaleFactor = 0;          // *Sfs
    int Values[4] = {0, 0, 0, 0}; // Const* (value or value[]); AlphaConst (alpha1, alpha2)
    int AlphaType = 0;            // AlphaConst, AlphaPixel
    Ipp32f Weight = 0.0f;         // AccumulateWeighted
    // Point shapes with no source (UnaryInPlace, Const*InPlace) leave Src null; in-place shapes
    // read and write Dst; Reduce writes its one result per channel to Dst.
};

// What a shape reads and writes, for generic code that prepares images.
struct TFXShapeTraits {
    int Sources = 1;        // images read besides the destination: 0, 1 or 2 (Src, Src2)
    bool InPlace = false;   // the destination is read as an operand
    bool Reduces = false;   // the destination is one value per channel, not an image
    int DstSampleBytes = 0; // bytes per destination sample
};

TFXShapeTraits FXShapeTraits(TFXShape shape, TFXSample sample);

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
