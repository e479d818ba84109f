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
    // The per-channel shapes take arrays of pointers and counts that they may not change.
    std::array<const Ipp32s*, 4> lutValues = a.LutValues, lutLevels = a.LutLevels;
    std::array<Ipp32s*, 4> hist = a.Hist, histLevels = a.HistLevels;
    std::array<int, 4> counts = a.LevelCounts;
    std::array<Ipp32s, 4> lower = a.Lower, upper = a.Upper;
    const T* limit = static_cast<const T*>(a.Limit);
    const T* limitValue = static_cast<const T*>(a.LimitValue);
    const T values[4] = {T(a.Values[0]), T(a.Values[1]), T(a.Values[2]), T(a.Values[3])};
    const auto alphaType = static_cast<IppiAlphaType>(a.AlphaType);
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
        return typed(src, a.SrcStep, dst, a.DstStep, a.Roi, lutValues[0], lutLevels[0], counts[0]);
    else if constexpr (S == TFXShape::LutChannels)
        return typed(src, a.SrcStep, dst, a.DstStep, a.Roi, lutValues.data(), lutLevels.data(),
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
    } else if constexpr (S == TFXShape::ColorTwist)
        return typed(src, a.SrcStep, dst, a.DstStep, a.Roi, a.Twist);
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
    constexpr auto kNames = std::to_array<std::string_view>({"MaskFilter",
                                                             "RowFilter",
                                                             "ColumnFilter",
                                                             "KernelFilter",
                                                             "FixedFilter",
                                                             "FixedMaskFilter",
                                                             "Lut",
                                                             "LutChannels",
                                                             "LutPalette",
                                                             "Threshold",
                                                             "ThresholdBoth",
                                                             "Histogram",
                                                             "HistogramChannels",
                                                             "ColorConvert",
                                                             "ColorConvertC3P3",
                                                             "ColorConvertP3C3",
                                                             "ColorTwist",
                                                             "BinarySfs",
                                                             "BinaryInPlaceSfs",
                                                             "Binary",
                                                             "BinaryInPlace",
                                                             "UnaryInPlace",
                                                             "ConstScalar",
                                                             "ConstVector",
                                                             "ConstScalarInPlace",
                                                             "ConstVectorInPlace",
                                                             "Reduce",
                                                             "AlphaConst",
                                                             "AlphaPixel",
                                                             "AccumulateWeighted"});
    static_assert(kNames.size() == std::size_t(TFXShape::AccumulateWeighted) + 1);
    return kNames[static_cast<int>(shape)];
}

TFXShapeGeometry FXShapeGeometry(TFXShape shape, TFXSample sample, TFXLayout layout)
{
    const int sampleBytes = FXSampleBytes(sample);
    TFXShapeGeometry g;
    g.SrcPixelBytes = g.DstPixelBytes = FXChannels(layout) * sampleBytes;
    g.DstSampleBytes = sampleBytes;
    switch (shape) {
    case TFXShape::Histogram:
    case TFXShape::HistogramChannels:
        g.DstPixelBytes = 0;
        break;
    case TFXShape::LutPalette:
        g.DstPixelBytes = g.DstSampleBytes = int(sizeof(Ipp32u));
        break;
    case TFXShape::ColorConvertP3C3:
        g.SrcPixelBytes = sampleBytes;
        g.SrcPlanes = kFXPlanes;
        break;
    case TFXShape::ColorConvertC3P3:
        g.DstPixelBytes = sampleBytes;
        g.DstPlanes = kFXPlanes;
        break;
    case TFXShape::BinarySfs:
    case TFXShape::Binary:
    case TFXShape::AlphaConst:
    case TFXShape::AlphaPixel:
        g.SecondSource = true;
        break;
    case TFXShape::BinaryInPlaceSfs:
    case TFXShape::BinaryInPlace:
        g.InPlace = true;
        break;
    case TFXShape::UnaryInPlace:
    case TFXShape::ConstScalarInPlace:
    case TFXShape::ConstVectorInPlace:
        g.SrcPixelBytes = 0;
        g.InPlace = true;
        break;
    case TFXShape::Reduce:
        g.Reduces = true;
        break;
    case TFXShape::AccumulateWeighted:
        g.InPlace = true;
        g.DstSampleBytes = int(sizeof(Ipp32f));
        g.DstPixelBytes = FXChannels(layout) * g.DstSampleBytes;
        break;
    default:
        break;
    }
    return g;
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

IppStatus FXCallShape(TFXShape shape, TFXSample sample, TFXAnyFn fn, const TFXShapeArgs& args)
{
    switch (shape) {
#define FX_CALL_SHAPE(S)                                                                           \
    case TFXShape::S:                                                                              \
        return CallShape<TFXShape::S>(sample, fn, args);
        FX_CALL_SHAPE(MaskFilter)
        FX_CALL_SHAPE(RowFilter)
        FX_CALL_SHAPE(ColumnFilter)
        FX_CALL_SHAPE(KernelFilter)
        FX_CALL_SHAPE(FixedFilter)
        FX_CALL_SHAPE(FixedMaskFilter)
        FX_CALL_SHAPE(Lut)
        FX_CALL_SHAPE(LutChannels)
        FX_CALL_SHAPE(LutPalette)
        FX_CALL_SHAPE(Threshold)
        FX_CALL_SHAPE(ThresholdBoth)
        FX_CALL_SHAPE(Histogram)
        FX_CALL_SHAPE(HistogramChannels)
        FX_CALL_SHAPE(ColorConvert)
        FX_CALL_SHAPE(ColorConvertC3P3)
        FX_CALL_SHAPE(ColorConvertP3C3)
        FX_CALL_SHAPE(ColorTwist)
        FX_CALL_SHAPE(BinarySfs)
        FX_CALL_SHAPE(BinaryInPlaceSfs)
        FX_CALL_SHAPE(Binary)
        FX_CALL_SHAPE(BinaryInPlace)
        FX_CALL_SHAPE(UnaryInPlace)
        FX_CALL_SHAPE(ConstScalar)
        FX_CALL_SHAPE(ConstVector)
        FX_CALL_SHAPE(ConstScalarInPlace)
        FX_CALL_SHAPE(ConstVectorInPlace)
        FX_CALL_SHAPE(Reduce)
        FX_CALL_SHAPE(AlphaConst)
        FX_CALL_SHAPE(AlphaPixel)
        FX_CALL_SHAPE(AccumulateWeighted)
#undef FX_CALL_SHAPE
    }
    return ippStsBadArgErr;
}

} // namespace framix::prim
