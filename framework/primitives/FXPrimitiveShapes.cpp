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
    T* dst = static_cast<T*>(a.Dst);
    if constexpr (S == TFXShape::MaskFilter) {
        return typed(src, a.SrcStep, dst, a.DstStep, a.Roi, a.Mask, a.Anchor);
    } else if constexpr (S == TFXShape::RowFilter || S == TFXShape::ColumnFilter) {
        return typed(src, a.SrcStep, dst, a.DstStep, a.Roi, a.Kernel, a.KernelSize, a.KernelAnchor);
    } else if constexpr (S == TFXShape::ColorConvert) {
        return typed(src, a.SrcStep, dst, a.DstStep, a.Roi);
    } else if constexpr (S == TFXShape::ColorConvertC3P3) {
        T* planes[kFXPlanes];
        for (int p = 0; p < kFXPlanes; ++p)
            planes[p] = static_cast<T*>(a.Planes[p]);
        return typed(src, a.SrcStep, dst != nullptr ? planes : nullptr, a.DstStep, a.Roi);
    } else if constexpr (S == TFXShape::ColorConvertP3C3) {
        const T* planes[kFXPlanes];
        for (int p = 0; p < kFXPlanes; ++p)
            planes[p] = static_cast<const T*>(a.Planes[p]);
        return typed(src != nullptr ? planes : nullptr, a.SrcStep, dst, a.DstStep, a.Roi);
    } else {
        return typed(src, a.SrcStep, dst, a.DstStep, a.Roi, a.Twist);
    }
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
    constexpr std::array<std::string_view, 7> kNames = {
        "MaskFilter",   "RowFilter",        "ColumnFilter",    "ColorConvert",
        "ColorConvertC3P3", "ColorConvertP3C3", "ColorTwist"};
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
    case TFXShape::ColorConvert:
    case TFXShape::ColorConvertC3P3:
    case TFXShape::ColorConvertP3C3:
    case TFXShape::ColorTwist:
        return {}; // point operations
    }
    return {};
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
    case TFXShape::ColorConvert:
        return CallShape<TFXShape::ColorConvert>(sample, fn, args);
    case TFXShape::ColorConvertC3P3:
        return CallShape<TFXShape::ColorConvertC3P3>(sample, fn, args);
    case TFXShape::ColorConvertP3C3:
        return CallShape<TFXShape::ColorConvertP3C3>(sample, fn, args);
    case TFXShape::ColorTwist:
        return CallShape<TFXShape::ColorTwist>(sample, fn, args);
    }
    return ippStsBadArgErr;
}

} // namespace framix::prim
