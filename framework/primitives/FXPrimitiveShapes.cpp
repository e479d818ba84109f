// SPDX-License-Identifier: MIT
// Names, margins and the generic call of the primitive layer's argument shapes.
#include "framework/primitives/FXPrimitiveShapes.h"

#include <array>

namespace framix::prim {
namespace {

template <TFXShape S, class T> IppStatus CallAs(TFXAnyFn fn, const TFXShapeArgs& a)
{
    auto* typed = reinterpret_cast<FXShapeFn<S, T>*>(fn);
    const T* src = static_cast<const T*>(a.Src);
    const T* src2 = static_cast<const T*>(a.Src2);
    T* dst = static_cast<T*>(a.Dst);
    const T values[4] = {T(a.Values[0]), T(a.Values[1]), T(a.Values[2]), T(a.Values[3])};
    const auto alphaType = static_cast<IppiAlphaType>(a.AlphaType);
    if constexpr (S == TFXShape::MaskFilter)
        return typed(src, a.SrcStep, dst, a.DstStep, a.Roi, a.Mask, a.Anchor);
    else if constexpr (S == TFXShape::RowFilter || S == TFXShape::ColumnFilter)
        return typed(src, a.SrcStep, dst, a.DstStep, a.Roi, a.Kernel, a.KernelSize, a.KernelAnchor);
    else if constexpr (S == TFXShape::BinarySfs)
        return typed(src, a.SrcStep, src2, a.Src2Step, dst, a.DstStep, a.Roi, a.ScaleFactor);
    else if constexpr (S == TFXShape::BinaryInPlaceSfs)
        return typed(src, a.SrcStep, dst, a.DstStep, a.Roi, a.ScaleFactor);
    else if constexpr (S == TFXShape::Binary)
        return typed(src, a.SrcStep, src2, a.Src2Step, dst, a.DstStep, a.Roi);
    else if constexpr (S == TFXShape::BinaryInPlace)
        return typed(src, a.SrcStep, dst, a.DstStep, a.Roi);
    else if constexpr (S == TFXShape::UnaryInPlace)
        return typed(dst, a.DstStep, a.Roi);
    else if constexpr (S == TFXShape::ConstScalar)
        return typed(src, a.SrcStep, values[0], dst, a.DstStep, a.Roi);
    else if constexpr (S == TFXShape::ConstVector)
        return typed(src, a.SrcStep, values, dst, a.DstStep, a.Roi);
    else if constexpr (S == TFXShape::ConstScalarInPlace)
        return typed(values[0], dst, a.DstStep, a.Roi);
    else if constexpr (S == TFXShape::ConstVectorInPlace)
        return typed(values, dst, a.DstStep, a.Roi);
    else if constexpr (S == TFXShape::Reduce)
        return typed(src, a.SrcStep, a.Roi, dst);
    else if constexpr (S == TFXShape::AlphaConst)
        return typed(src, a.SrcStep, values[0], src2, a.Src2Step, values[1], dst, a.DstStep, a.Roi,
                     alphaType);
    else if constexpr (S == TFXShape::AlphaPixel)
        return typed(src, a.SrcStep, src2, a.Src2Step, dst, a.DstStep, a.Roi, alphaType);
    else
        return typed(src, a.SrcStep, static_cast<Ipp32f*>(a.Dst), a.DstStep, a.Roi, a.Weight);
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
    }
    return ippStsDataTypeErr;
}

} // namespace

std::string_view FXLayoutName(TFXLayout layout)
{
    constexpr std::array<std::string_view, 4> kNames = {"C1", "C3", "C4", "AC4"};
    return kNames[static_cast<int>(layout)];
}

std::string_view FXSampleName(TFXSample sample)
{
    constexpr std::array<std::string_view, 4> kNames = {"8u", "16u", "16s", "32f"};
    return kNames[static_cast<int>(sample)];
}

std::string_view FXShapeName(TFXShape shape)
{
    constexpr std::array<std::string_view, 16> kNames = {
        "MaskFilter",       "RowFilter",   "ColumnFilter",       "BinarySfs",
        "BinaryInPlaceSfs", "Binary",      "BinaryInPlace",      "UnaryInPlace",
        "ConstScalar",      "ConstVector", "ConstScalarInPlace", "ConstVectorInPlace",
        "Reduce",           "AlphaConst",  "AlphaPixel",         "AccumulateWeighted"};
    return kNames[static_cast<int>(shape)];
}

TFXShapeTraits FXShapeTraits(TFXShape shape, TFXSample sample)
{
    TFXShapeTraits t;
    t.DstSampleBytes = FXSampleBytes(sample);
    switch (shape) {
    case TFXShape::BinarySfs:
    case TFXShape::Binary:
    case TFXShape::AlphaConst:
    case TFXShape::AlphaPixel:
        t.Sources = 2;
        break;
    case TFXShape::BinaryInPlaceSfs:
    case TFXShape::BinaryInPlace:
        t.InPlace = true;
        break;
    case TFXShape::UnaryInPlace:
    case TFXShape::ConstScalarInPlace:
    case TFXShape::ConstVectorInPlace:
        t.Sources = 0;
        t.InPlace = true;
        break;
    case TFXShape::Reduce:
        t.Reduces = true;
        break;
    case TFXShape::AccumulateWeighted:
        t.InPlace = true;
        t.DstSampleBytes = sizeof(Ipp32f);
        break;
    default:
        break;
    }
    return t;
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
    default: // point operations read only their ROI
        return {};
    }
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
#define FX_CALL_POINT_SHAPE(S)                                                                     \
    case TFXShape::S:                                                                              \
        return CallShape<TFXShape::S>(sample, fn, args);
        FX_CALL_POINT_SHAPE(BinarySfs)
        FX_CALL_POINT_SHAPE(BinaryInPlaceSfs)
        FX_CALL_POINT_SHAPE(Binary)
        FX_CALL_POINT_SHAPE(BinaryInPlace)
        FX_CALL_POINT_SHAPE(UnaryInPlace)
        FX_CALL_POINT_SHAPE(ConstScalar)
        FX_CALL_POINT_SHAPE(ConstVector)
        FX_CALL_POINT_SHAPE(ConstScalarInPlace)
        FX_CALL_POINT_SHAPE(ConstVectorInPlace)
        FX_CALL_POINT_SHAPE(Reduce)
        FX_CALL_POINT_SHAPE(AlphaConst)
        FX_CALL_POINT_SHAPE(AlphaPixel)
        FX_CALL_POINT_SHAPE(AccumulateWeighted)
#undef FX_CALL_POINT_SHAPE
    }
    return ippStsBadArgErr;
}

} // namespace framix::prim
