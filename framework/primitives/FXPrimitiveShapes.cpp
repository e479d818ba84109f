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
    // The per-channel shapes take arrays of pointers and counts that they may not change.
    std::array<const Ipp32s*, 4> values = a.Values, levels = a.Levels;
    std::array<Ipp32s*, 4> hist = a.Hist, histLevels = a.HistLevels;
    std::array<int, 4> counts = a.LevelCounts;
    std::array<Ipp32s, 4> lower = a.Lower, upper = a.Upper;
    const T* limit = static_cast<const T*>(a.Limit);
    const T* limitValue = static_cast<const T*>(a.LimitValue);
    if constexpr (S == TFXShape::MaskFilter)
        return typed(src, a.SrcStep, dst, a.DstStep, a.Roi, a.Mask, a.Anchor);
    else if constexpr (S == TFXShape::KernelFilter)
        return typed(src, a.SrcStep, dst, a.DstStep, a.Roi, a.IntKernel, a.Mask, a.Anchor,
                     a.Divisor);
    else if constexpr (S == TFXShape::FixedFilter)
        return typed(src, a.SrcStep, dst, a.DstStep, a.Roi);
    else if constexpr (S == TFXShape::FixedMaskFilter)
        return typed(src, a.SrcStep, dst, a.DstStep, a.Roi, a.MaskCode);
    else if constexpr (S == TFXShape::RowFilter || S == TFXShape::ColumnFilter)
        return typed(src, a.SrcStep, dst, a.DstStep, a.Roi, a.Kernel, a.KernelSize, a.KernelAnchor);
    else if constexpr (S == TFXShape::Lut)
        return typed(src, a.SrcStep, dst, a.DstStep, a.Roi, values[0], levels[0], counts[0]);
    else if constexpr (S == TFXShape::LutChannels)
        return typed(src, a.SrcStep, dst, a.DstStep, a.Roi, values.data(), levels.data(),
                     counts.data());
    else if constexpr (S == TFXShape::LutPalette)
        return typed(src, a.SrcStep, static_cast<Ipp32u*>(a.Dst), a.DstStep, a.Roi, a.Palette,
                     a.BitSize);
    else if constexpr (S == TFXShape::Threshold)
        return typed(src, a.SrcStep, dst, a.DstStep, a.Roi, limit, limitValue);
    else if constexpr (S == TFXShape::ThresholdBoth)
        return typed(src, a.SrcStep, dst, a.DstStep, a.Roi, limit, limitValue,
                     static_cast<const T*>(a.UpperLimit), static_cast<const T*>(a.UpperValue));
    else if constexpr (S == TFXShape::Histogram)
        return typed(src, a.SrcStep, a.Roi, hist[0], histLevels[0], counts[0], lower[0], upper[0]);
    else if constexpr (S == TFXShape::HistogramChannels)
        return typed(src, a.SrcStep, a.Roi, hist.data(), histLevels.data(), counts.data(),
                     lower.data(), upper.data());
    else if constexpr (S == TFXShape::ColorConvert)
        return typed(src, a.SrcStep, dst, a.DstStep, a.Roi);
    else if constexpr (S == TFXShape::ColorConvertC3P3) {
        T* planes[kFXPlanes];
        for (int p = 0; p < kFXPlanes; ++p)
            planes[p] = static_cast<T*>(a.Planes[p]);
        return typed(src, a.SrcStep, dst != nullptr ? planes : nullptr, a.DstStep, a.Roi);
    } else if constexpr (S == TFXShape::ColorConvertP3C3) {
        const T* planes[kFXPlanes];
        for (int p = 0; p < kFXPlanes; ++p)
            planes[p] = static_cast<const T*>(a.Planes[p]);
        return typed(src != nullptr ? planes : nullptr, a.SrcStep, dst, a.DstStep, a.Roi);
    } else
        return typed(src, a.SrcStep, dst, a.DstStep, a.Roi, a.Twist);
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
    constexpr std::array<std::string_view, 17> kNames = {
        "MaskFilter",       "RowFilter", "ColumnFilter",      "KernelFilter", "FixedFilter",
        "FixedMaskFilter",  "Lut",       "LutChannels",       "LutPalette",   "Threshold",
        "ThresholdBoth",    "Histogram", "HistogramChannels", "ColorConvert", "ColorConvertC3P3",
        "ColorConvertP3C3", "ColorTwist"};
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
    case TFXShape::KernelFilter: // inverse order too: the anchor counts from the bottom-right
        return {a.Mask.width - 1 - a.Anchor.x, a.Mask.height - 1 - a.Anchor.y, a.Anchor.x,
                a.Anchor.y};
    case TFXShape::FixedFilter:
        return {1, 1, 1, 1};
    case TFXShape::FixedMaskFilter: {
        const int r = a.MaskCode == ippMskSize5x5 ? 2 : a.MaskCode == ippMskSize3x3 ? 1 : 0;
        return {r, r, r, r};
    }
    default: // point operations read only their own pixel
        return {};
    }
}

int FXDstPixelBytes(TFXShape shape, TFXSample sample, TFXLayout layout)
{
    if (shape == TFXShape::Histogram || shape == TFXShape::HistogramChannels)
        return 0;
    if (shape == TFXShape::LutPalette)
        return int(sizeof(Ipp32u));
    return FXChannels(layout) * FXSampleBytes(sample);
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
    case TFXShape::KernelFilter:
        return CallShape<TFXShape::KernelFilter>(sample, fn, args);
    case TFXShape::FixedFilter:
        return CallShape<TFXShape::FixedFilter>(sample, fn, args);
    case TFXShape::FixedMaskFilter:
        return CallShape<TFXShape::FixedMaskFilter>(sample, fn, args);
    case TFXShape::Lut:
        return CallShape<TFXShape::Lut>(sample, fn, args);
    case TFXShape::LutChannels:
        return CallShape<TFXShape::LutChannels>(sample, fn, args);
    case TFXShape::LutPalette:
        return CallShape<TFXShape::LutPalette>(sample, fn, args);
    case TFXShape::Threshold:
        return CallShape<TFXShape::Threshold>(sample, fn, args);
    case TFXShape::ThresholdBoth:
        return CallShape<TFXShape::ThresholdBoth>(sample, fn, args);
    case TFXShape::Histogram:
        return CallShape<TFXShape::Histogram>(sample, fn, args);
    case TFXShape::HistogramChannels:
        return CallShape<TFXShape::HistogramChannels>(sample, fn, args);
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
