// SPDX-License-Identifier: MIT
// Threshold.
#include "filters/colour/FXThreshold.h"

#include "filters/colour/detail/FXColourFrames.h"
#include "framework/primitives/dispatch/Fxdispatcher.h"
#include "framework/properties/FXPalette.h"

namespace framix {
namespace {

// A colour's three low bytes in storage order (red first).
struct TColourBytes {
    Ipp8u Bytes[3];
};

// Intentional: the colour's bytes go to the primitive as stored, red first, while a pixel
// starts with blue: a limit's red applies to the blue byte and its blue to the red byte.
TColourBytes StorageBytes(std::uint32_t colour)
{
    return {{Ipp8u(colour), Ipp8u(colour >> 8), Ipp8u(colour >> 16)}};
}

} // namespace

// ---------------------------------------------------------------- rules

TFXThresholdValue::TFXThresholdValue(TKTPersistent* owner, IKTLock& lock)
    : TKTOptionalEnabledPersistent(owner, lock, nullptr)
{
    SetEnabled(kEnabled.Default);
}

const TFXClassInfo& TFXThresholdValue::ClassInfo()
{
    using T = TFXThresholdValue;
    static constexpr TFXPropInfo kProps[] = {
        FXProp<&TKTOptionalEnabledPersistent::GetEnabled,
               &TKTOptionalEnabledPersistent::SetEnabled>(kEnabled),
        FXProp<&T::GetThreshold, &T::SetThreshold>(kThreshold),
        FXProp<&T::GetValue, &T::SetValue>(kValue),
    };
    static const TFXClassInfo info{"TFXThresholdValue", &TKTOptionalEnabledPersistent::ClassInfo(),
                                   kProps};
    return info;
}

std::uint32_t TFXThresholdValue::GetThreshold() const
{
    auto guard = Lock().Read();
    return FThreshold;
}

void TFXThresholdValue::SetThreshold(std::uint32_t value)
{
    Lock().Store(FThreshold, value);
}

std::uint32_t TFXThresholdValue::GetValue() const
{
    auto guard = Lock().Read();
    return FValue;
}

void TFXThresholdValue::SetValue(std::uint32_t value)
{
    Lock().Store(FValue, value);
}

TFXThresholdValueTop::TFXThresholdValueTop(TKTPersistent* owner, IKTLock& lock)
    : TFXThresholdValue(owner, lock)
{
    FThreshold = kThreshold.Default;
}

const TFXClassInfo& TFXThresholdValueTop::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXProp<&TFXThresholdValue::GetThreshold, &TFXThresholdValue::SetThreshold>(kThreshold),
    };
    static const TFXClassInfo info{"TFXThresholdValueTop", &TFXThresholdValue::ClassInfo(), kProps};
    return info;
}

const TFXClassInfo& TFXThresholdValueBottom::ClassInfo()
{
    static const TFXClassInfo info{"TFXThresholdValueBottom", &TFXThresholdValue::ClassInfo(), {}};
    return info;
}

// ---------------------------------------------------------------- the component

TFXThreshold::TFXThreshold(TKTComponent* owner)
    : TFXCommonFilter(owner), FThresholdTop(this, Lock()), FThresholdBottom(this, Lock())
{
}

const TFXClassInfo& TFXThreshold::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXGroup<&TFXThreshold::GetThresholdTop>(
            {.Name = "ThresholdTop", .Help = "bytes greater than the limit are replaced"}),
        FXGroup<&TFXThreshold::GetThresholdBottom>(
            {.Name = "ThresholdBottom", .Help = "bytes less than the limit are replaced"}),
    };
    static const TFXClassInfo info{"TFXThreshold", &TFXCommonFilter::ClassInfo(), kProps};
    return info;
}

void TFXThreshold::SetVideoFormat(IFXImageBuffer& buffer)
{
    AdmitFormats(buffer, {vfRGB32});
}

void TFXThreshold::FilterInternalOperation(IFXImageBuffer& input, IFXImageBuffer& output)
{
    output.CopyFrom(input);
    const bool top = FThresholdTop.GetEnabled(), bottom = FThresholdBottom.GetEnabled();
    if (!top && !bottom)
        return;
    const bool rgb32 = detail::FXIsRGB32(input);
    const TColourBytes upper = StorageBytes(FThresholdTop.GetThreshold());
    const TColourBytes upperValue = StorageBytes(FThresholdTop.GetValue());
    const TColourBytes lower = StorageBytes(FThresholdBottom.GetThreshold());
    const TColourBytes lowerValue = StorageBytes(FThresholdBottom.GetValue());

    const Ipp8u* source = input.GetReadPointer();
    Ipp8u* destination = output.GetWritePointer();
    const int sourceStride = input.GetRowStride(), destinationStride = output.GetRowStride();
    const IppiSize roi = detail::FXRoiOf(input);
    const IppStatus status = detail::FXRunKeepingAlpha(
        rgb32, source, sourceStride, destination, destinationStride, roi,
        [&](const Ipp8u* s, int ss, Ipp8u* d, int ds, IppiSize r) {
            if (top && bottom)
                return (rgb32 ? ipp::ippiThreshold_LTValGTVal_8u_AC4R
                              : ipp::ippiThreshold_LTValGTVal_8u_C3R)(
                    s, ss, d, ds, r, lower.Bytes, lowerValue.Bytes, upper.Bytes, upperValue.Bytes);
            if (top)
                return (rgb32 ? ipp::ippiThreshold_GTVal_8u_AC4R : ipp::ippiThreshold_GTVal_8u_C3R)(
                    s, ss, d, ds, r, upper.Bytes, upperValue.Bytes);
            return (rgb32 ? ipp::ippiThreshold_LTVal_8u_AC4R : ipp::ippiThreshold_LTVal_8u_C3R)(
                s, ss, d, ds, r, lower.Bytes, lowerValue.Bytes);
        });
    // A refused call (a lower limit above its upper one) writes nothing: the output stays the
    // input, as it was before the call.
    if (status != ippStsNoErr)
        output.CopyFrom(input);
}

void RegisterFXThreshold(TFXPalette& palette)
{
    palette.Register<TFXThreshold>(kFXPalettePage);
}

} // namespace framix
