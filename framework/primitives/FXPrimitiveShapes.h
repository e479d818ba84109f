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
    IppiSize Mask{0, 0};            // MaskFilter
    IppiPoint Anchor{0, 0};         // MaskFilter
    const Ipp32f* Kernel = nullptr; // RowFilter, ColumnFilter
    int KernelSize = 0;
    int KernelAnchor = 0;
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

// Calls fn, a function of the given shape and sample type, with args.
IppStatus FXCallShape(TFXShape shape, TFXSample sample, TFXAnyFn fn, const TFXShapeArgs& args);

} // namespace framix::prim
