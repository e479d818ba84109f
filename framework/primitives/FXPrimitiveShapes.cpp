// SPDX-License-Identifier: MIT
// Names, margins and the generic call of the primitive layer's argument shapes.
#include "framework/primitives/FXPrimitiveShapes.h"

#include <array>
#include <cstddef>
#include <type_traits>

namespace framix::prim {
namespace {

// Plane k of a planar argument: Roi.height rows of `step` bytes after plane k - 1.
template <class T> T* PlaneAt(T* base, int step, int rows, int k)
{
    using TByte = std::conditional_t<std::is_const_v<T>, const Ipp8u, Ipp8u>;
    return base == nullptr ? nullptr
                           : reinterpret_cast<T*>(reinterpret_cast<TByte*>(base) +
                                                  std::ptrdiff_t(k) * rows * step);
}

template <TFXShape S, class T> IppStatus CallAs(TFXAnyFn fn, const TFXShapeArgs& a)
{
    auto* typed = reinterpret_cast<FXShapeFn<S, T>*>(fn);
    const T* src = static_cast<const T*>(a.Src);
    T* dst = static_cast<T*>(a.Dst);
    const T values[4] = {T(a.Values[0]), T(a.Values[1]), T(a.Values[2]), T(a.Values[3])};
    const int len = a.Roi.width;
    if constexpr (S == TFXShape::MaskFilter)
        return typed(src, a.SrcStep, dst, a.DstStep, a.Roi, a.Mask, a.Anchor);
    else if constexpr (S == TFXShape::RowFilter || S == TFXShape::ColumnFilter)
        return typed(src, a.SrcStep, dst, a.DstStep, a.Roi, a.Kernel, a.KernelSize, a.KernelAnchor);
    else if constexpr (S == TFXShape::Copy)
        return typed(src, a.SrcStep, dst, a.DstStep, a.Roi);
    else if constexpr (S == TFXShape::PackRgb16)
        return typed(src, a.SrcStep, static_cast<Ipp16u*>(a.Dst), a.DstStep, a.Roi);
    else if constexpr (S == TFXShape::CopyToPlanes) {
        T* const planes[4] = {
            PlaneAt(dst, a.DstStep, a.Roi.height, 0), PlaneAt(dst, a.DstStep, a.Roi.height, 1),
            PlaneAt(dst, a.DstStep, a.Roi.height, 2), PlaneAt(dst, a.DstStep, a.Roi.height, 3)};
        return typed(src, a.SrcStep, a.Dst == nullptr ? nullptr : planes, a.DstStep, a.Roi);
    } else if constexpr (S == TFXShape::SetScalar)
        return typed(values[0], dst, a.DstStep, a.Roi);
    else if constexpr (S == TFXShape::SetChannels)
        return typed(values, dst, a.DstStep, a.Roi);
    else if constexpr (S == TFXShape::SwapChannels)
        return typed(src, a.SrcStep, dst, a.DstStep, a.Roi, a.Values);
    else if constexpr (S == TFXShape::SwapChannelsInPlace)
        return typed(dst, a.DstStep, a.Roi, a.Values);
    else if constexpr (S == TFXShape::Mirror)
        return typed(src, a.SrcStep, dst, a.DstStep, a.Roi, IppiAxis(a.Param));
    else if constexpr (S == TFXShape::MirrorInPlace)
        return typed(dst, a.DstStep, a.Roi, IppiAxis(a.Param));
    else if constexpr (S == TFXShape::ConvertToFloat)
        return typed(src, a.SrcStep, static_cast<Ipp32f*>(a.Dst), a.DstStep, a.Roi);
    else if constexpr (S == TFXShape::ConvertFromFloat)
        return typed(static_cast<const Ipp32f*>(a.Src), a.SrcStep, dst, a.DstStep, a.Roi,
                     IppRoundMode(a.Param));
    else if constexpr (S == TFXShape::AddNoise)
        return typed(dst, a.DstStep, a.Roi, values[0], values[1], a.Seed);
    else if constexpr (S == TFXShape::TestImage)
        return typed(dst, a.DstStep, a.Roi);
    else if constexpr (S == TFXShape::SignalSet)
        return typed(values[0], dst, len);
    else if constexpr (S == TFXShape::SignalCopy)
        return typed(src, dst, len);
    else if constexpr (S == TFXShape::SignalAddScaled)
        return typed(src, dst, len, a.Param);
    else if constexpr (S == TFXShape::SignalMulCScaled)
        return typed(values[0], dst, len, a.Param);
    else if constexpr (S == TFXShape::SignalShiftC)
        return typed(a.Values[0], dst, len);
    else
        return typed(src, PlaneAt(src, a.SrcStep, 1, 1), dst, PlaneAt(dst, a.DstStep, 1, 1), len);
}

template <TFXShape S> IppStatus CallShape(TFXSample sample, TFXAnyFn fn, const TFXShapeArgs& a)
{
    switch (sample) {
    case TFXSample::U8:
        return CallAs<S, Ipp8u>(fn, a);
    case TFXSample::U16:
        return CallAs<S, Ipp16u>(fn, a);
    case TFXSample::S16:
        return CallAs<S, Ipp16s>(fn, a);
    case TFXSample::F32:
        return CallAs<S, Ipp32f>(fn, a);
    case TFXSample::S32:
        return CallAs<S, Ipp32s>(fn, a);
    case TFXSample::F64:
        return CallAs<S, Ipp64f>(fn, a);
    }
    return ippStsDataTypeErr;
}

} // namespace

std::string_view FXLayoutName(TFXLayout layout)
{
    constexpr std::array<std::string_view, 11> kNames = {
        "C1", "C3", "C4", "AC4", "AC4C3", "C3AC4", "C1C4", "C4C", "C3RAC4", "C3P3", "C4P4"};
    return kNames[static_cast<int>(layout)];
}

std::string_view FXSampleName(TFXSample sample)
{
    constexpr std::array<std::string_view, 6> kNames = {"8u", "16u", "16s", "32f", "32s", "64f"};
    return kNames[static_cast<int>(sample)];
}

std::string_view FXShapeName(TFXShape shape)
{
    constexpr std::array<std::string_view, 22> kNames = {
        "MaskFilter",          "RowFilter",        "ColumnFilter",    "Copy",
        "CopyToPlanes",        "SetScalar",        "SetChannels",     "SwapChannels",
        "SwapChannelsInPlace", "Mirror",           "MirrorInPlace",   "ConvertToFloat",
        "ConvertFromFloat",    "PackRgb16",        "AddNoise",        "TestImage",
        "SignalSet",           "SignalCopy",       "SignalAddScaled", "SignalMulCScaled",
        "SignalShiftC",        "SignalPolarToCart"};
    return kNames[static_cast<int>(shape)];
}

TFXMargins FXShapeMargins(TFXShape shape, const TFXShapeArgs& a)
{
    switch (shape) {
    case TFXShape::MaskFilter:
        return {a.Anchor.x, a.Anchor.y, a.Mask.width - 1 - a.Anchor.x,
                a.Mask.height - 1 - a.Anchor.y};
    case TFXShape::RowFilter: // the kernel runs in inverse order: pKernel[0] is the rightmost tap
        return {a.KernelSize - 1 - a.KernelAnchor, 0, a.KernelAnchor, 0};
    case TFXShape::ColumnFilter:
        return {0, a.KernelSize - 1 - a.KernelAnchor, 0, a.KernelAnchor};
    default: // point operations read their ROI only
        return {};
    }
}

TFXShapeGeometry FXShapeGeometry(TFXShape shape, TFXSample sample, TFXLayout layout)
{
    const int bytes = FXSampleBytes(sample);
    TFXShapeGeometry g;
    g.SrcSample = g.DstSample = sample;
    g.SrcPixelBytes = FXSrcChannels(layout) * bytes;
    g.DstPixelBytes = FXDstChannels(layout) * bytes;
    g.DstPlanes = FXDstPlanes(layout);
    switch (shape) {
    case TFXShape::SetScalar:
    case TFXShape::SetChannels:
    case TFXShape::TestImage:
        g.SrcPixelBytes = 0;
        break;
    case TFXShape::SwapChannelsInPlace:
    case TFXShape::MirrorInPlace:
    case TFXShape::AddNoise:
        g.SrcPixelBytes = 0;
        g.InPlace = true;
        break;
    case TFXShape::ConvertToFloat:
        g.DstSample = TFXSample::F32;
        g.DstPixelBytes = FXDstChannels(layout) * int(sizeof(Ipp32f));
        break;
    case TFXShape::ConvertFromFloat:
        g.SrcSample = TFXSample::F32;
        g.SrcPixelBytes = FXSrcChannels(layout) * int(sizeof(Ipp32f));
        break;
    case TFXShape::PackRgb16:
        g.DstSample = TFXSample::U16;
        g.DstPixelBytes = int(sizeof(Ipp16u));
        break;
    case TFXShape::SignalSet:
    case TFXShape::SignalMulCScaled:
    case TFXShape::SignalShiftC:
        g.SrcPixelBytes = 0;
        g.InPlace = shape != TFXShape::SignalSet;
        g.Signal = true;
        break;
    case TFXShape::SignalCopy:
        g.Signal = true;
        break;
    case TFXShape::SignalAddScaled:
        g.InPlace = true;
        g.Signal = true;
        break;
    case TFXShape::SignalPolarToCart:
        g.SrcPlanes = 2;
        g.DstPlanes = 2;
        g.Signal = true;
        break;
    default:
        break;
    }
    return g;
}

IppStatus FXCallShape(TFXShape shape, TFXSample sample, TFXAnyFn fn, const TFXShapeArgs& args)
{
    switch (shape) {
    case TFXShape::MaskFilter:
        return CallShape<TFXShape::MaskFilter>(sample, fn, args);
    case TFXShape::RowFilter:
        return CallShape<TFXShape::RowFilter>(sample, fn, args);
    case TFXShape::ColumnFilter:
        return CallShape<TFXShape::ColumnFilter>(sample, fn, args);
    case TFXShape::Copy:
        return CallShape<TFXShape::Copy>(sample, fn, args);
    case TFXShape::CopyToPlanes:
        return CallShape<TFXShape::CopyToPlanes>(sample, fn, args);
    case TFXShape::SetScalar:
        return CallShape<TFXShape::SetScalar>(sample, fn, args);
    case TFXShape::SetChannels:
        return CallShape<TFXShape::SetChannels>(sample, fn, args);
    case TFXShape::SwapChannels:
        return CallShape<TFXShape::SwapChannels>(sample, fn, args);
    case TFXShape::SwapChannelsInPlace:
        return CallShape<TFXShape::SwapChannelsInPlace>(sample, fn, args);
    case TFXShape::Mirror:
        return CallShape<TFXShape::Mirror>(sample, fn, args);
    case TFXShape::MirrorInPlace:
        return CallShape<TFXShape::MirrorInPlace>(sample, fn, args);
    case TFXShape::ConvertToFloat:
        return CallShape<TFXShape::ConvertToFloat>(sample, fn, args);
    case TFXShape::ConvertFromFloat:
        return CallShape<TFXShape::ConvertFromFloat>(sample, fn, args);
    case TFXShape::PackRgb16:
        return CallShape<TFXShape::PackRgb16>(sample, fn, args);
    case TFXShape::AddNoise:
        return CallShape<TFXShape::AddNoise>(sample, fn, args);
    case TFXShape::TestImage:
        return CallShape<TFXShape::TestImage>(sample, fn, args);
    case TFXShape::SignalSet:
        return CallShape<TFXShape::SignalSet>(sample, fn, args);
    case TFXShape::SignalCopy:
        return CallShape<TFXShape::SignalCopy>(sample, fn, args);
    case TFXShape::SignalAddScaled:
        return CallShape<TFXShape::SignalAddScaled>(sample, fn, args);
    case TFXShape::SignalMulCScaled:
        return CallShape<TFXShape::SignalMulCScaled>(sample, fn, args);
    case TFXShape::SignalShiftC:
        return CallShape<TFXShape::SignalShiftC>(sample, fn, args);
    case TFXShape::SignalPolarToCart:
        return CallShape<TFXShape::SignalPolarToCart>(sample, fn, args);
    }
    return ippStsBadArgErr;
}

} // namespace framix::prim
