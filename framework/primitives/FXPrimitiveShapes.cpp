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
    T* const planes[kFXMaxPlanes] = {static_cast<T*>(a.Planes[0]), static_cast<T*>(a.Planes[1]),
                                     static_cast<T*>(a.Planes[2]), static_cast<T*>(a.Planes[3])};
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
    else if constexpr (S == TFXShape::PixelMap)
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
    else if constexpr (S == TFXShape::AccumulateWeighted)
        return typed(src, a.SrcStep, static_cast<Ipp32f*>(a.Dst), a.DstStep, a.Roi, a.Weight);
    else if constexpr (S == TFXShape::CopyToPlanes)
        return typed(src, a.SrcStep, dst != nullptr ? planes : nullptr, a.DstStep, a.Roi);
    else if constexpr (S == TFXShape::PackRgb16)
        return typed(src, a.SrcStep, static_cast<Ipp16u*>(a.Dst), a.DstStep, a.Roi);
    else if constexpr (S == TFXShape::SetScalar)
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
        return typed(values[0], dst, a.Roi.width);
    else if constexpr (S == TFXShape::SignalCopy)
        return typed(src, dst, a.Roi.width);
    else if constexpr (S == TFXShape::SignalAddScaled)
        return typed(src, dst, a.Roi.width, a.ScaleFactor);
    else if constexpr (S == TFXShape::SignalMulCScaled)
        return typed(values[0], dst, a.Roi.width, a.ScaleFactor);
    else if constexpr (S == TFXShape::SignalShiftC)
        return typed(a.Values[0], dst, a.Roi.width);
    else // SignalPolarToCart: magnitude and phase as the two sources, the planes re and im
        return typed(src, src2, dst != nullptr ? planes[0] : nullptr,
                     dst != nullptr ? planes[1] : nullptr, a.Roi.width);
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
    constexpr auto kNames = std::to_array<std::string_view>({
        "MaskFilter",
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
        "PixelMap",
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
        "AccumulateWeighted",
        "CopyToPlanes",
        "SetScalar",
        "SetChannels",
        "SwapChannels",
        "SwapChannelsInPlace",
        "Mirror",
        "MirrorInPlace",
        "ConvertToFloat",
        "ConvertFromFloat",
        "PackRgb16",
        "AddNoise",
        "TestImage",
        "SignalSet",
        "SignalCopy",
        "SignalAddScaled",
        "SignalMulCScaled",
        "SignalShiftC",
        "SignalPolarToCart",
    });
    static_assert(kNames.size() == std::size_t(TFXShape::SignalPolarToCart) + 1);
    return kNames[static_cast<int>(shape)];
}

TFXShapeGeometry FXShapeGeometry(TFXShape shape, TFXSample sample, TFXLayout layout)
{
    const int sampleBytes = FXSampleBytes(sample);
    TFXShapeGeometry g;
    g.SrcSample = g.DstSample = sample;
    g.SrcPixelBytes = FXSrcChannels(layout) * sampleBytes;
    g.DstPixelBytes = FXDstChannels(layout) * sampleBytes;
    switch (shape) {
    case TFXShape::Histogram:
    case TFXShape::HistogramChannels:
        g.DstPixelBytes = 0;
        break;
    case TFXShape::LutPalette:
        g.DstSample = TFXSample::S32;
        g.DstPixelBytes = int(sizeof(Ipp32u));
        break;
    case TFXShape::ColorConvertP3C3:
        g.SrcPixelBytes = sampleBytes;
        g.SrcPlanes = kFXPlanes;
        break;
    case TFXShape::ColorConvertC3P3:
        g.DstPixelBytes = sampleBytes;
        g.DstPlanes = kFXPlanes;
        break;
    case TFXShape::CopyToPlanes:
        g.DstPixelBytes = sampleBytes;
        g.DstPlanes = FXSrcChannels(layout);
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
    case TFXShape::SwapChannelsInPlace:
    case TFXShape::MirrorInPlace:
    case TFXShape::AddNoise:
        g.SrcPixelBytes = 0;
        g.InPlace = true;
        break;
    case TFXShape::SetScalar:
    case TFXShape::SetChannels:
    case TFXShape::TestImage:
        g.SrcPixelBytes = 0;
        break;
    case TFXShape::Reduce:
        g.Reduces = true;
        break;
    case TFXShape::AccumulateWeighted:
        g.InPlace = true;
        g.DstSample = TFXSample::F32;
        g.DstPixelBytes = FXDstChannels(layout) * int(sizeof(Ipp32f));
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
        g.SrcPixelBytes = 0;
        g.Signal = true;
        break;
    case TFXShape::SignalMulCScaled:
    case TFXShape::SignalShiftC:
        g.SrcPixelBytes = 0;
        g.InPlace = true;
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
        g.SecondSource = true;
        g.DstPlanes = 2;
        g.Signal = true;
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
        FX_CALL_SHAPE(PixelMap)
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
        FX_CALL_SHAPE(CopyToPlanes)
        FX_CALL_SHAPE(SetScalar)
        FX_CALL_SHAPE(SetChannels)
        FX_CALL_SHAPE(SwapChannels)
        FX_CALL_SHAPE(SwapChannelsInPlace)
        FX_CALL_SHAPE(Mirror)
        FX_CALL_SHAPE(MirrorInPlace)
        FX_CALL_SHAPE(ConvertToFloat)
        FX_CALL_SHAPE(ConvertFromFloat)
        FX_CALL_SHAPE(PackRgb16)
        FX_CALL_SHAPE(AddNoise)
        FX_CALL_SHAPE(TestImage)
        FX_CALL_SHAPE(SignalSet)
        FX_CALL_SHAPE(SignalCopy)
        FX_CALL_SHAPE(SignalAddScaled)
        FX_CALL_SHAPE(SignalMulCScaled)
        FX_CALL_SHAPE(SignalShiftC)
        FX_CALL_SHAPE(SignalPolarToCart)
#undef FX_CALL_SHAPE
    }
    return ippStsBadArgErr;
}

} // namespace framix::prim
