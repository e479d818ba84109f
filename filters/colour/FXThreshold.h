// SPDX-License-Identifier: MIT
// Threshold: colour bytes above an upper or below a lower limit replaced by fixed values.
#pragma once

#include <cstdint>

#include "framework/FXCommonFilter.h"

namespace framix {

// One threshold rule: a per-channel limit and a per-channel replacement, both colours (red in the
// lowest byte), and the inherited Enabled switch (on by default).
class TFXThresholdValue : public TKTOptionalEnabledPersistent {
public:
    static constexpr TFXBoolProp kEnabled{
        .Name = "Enabled", .Help = "applies the rule", .Default = true};
    static constexpr TFXColourProp kThreshold{.Name = "Threshold", .Help = "per-channel limit"};
    static constexpr TFXColourProp kValue{.Name = "Value", .Help = "per-channel replacement"};

    TFXThresholdValue(TKTPersistent* owner, IKTLock& lock);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    std::uint32_t GetThreshold() const;
    void SetThreshold(std::uint32_t value);
    std::uint32_t GetValue() const;
    void SetValue(std::uint32_t value);

protected:
    std::uint32_t FThreshold = kThreshold.Default;
    std::uint32_t FValue = kValue.Default;
};

// The upper rule: bytes greater than the limit (mid grey by default) are replaced.
class TFXThresholdValueTop : public TFXThresholdValue {
public:
    static constexpr TFXColourProp kThreshold{
        .Name = "Threshold", .Help = "per-channel upper limit", .Default = 0x808080};

    TFXThresholdValueTop(TKTPersistent* owner, IKTLock& lock);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }
};

// The lower rule: bytes less than the limit are replaced; with its default black limit it
// changes nothing.
class TFXThresholdValueBottom : public TFXThresholdValue {
public:
    using TFXThresholdValue::TFXThresholdValue;
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }
};

// Replaces, channel by channel, bytes greater than ThresholdTop.Threshold by ThresholdTop.Value
// and bytes less than ThresholdBottom.Threshold by ThresholdBottom.Value (strict comparisons;
// each rule only while enabled). The colours' bytes are used in storage order, so a colour's red
// applies to a pixel's blue byte and its blue to the red byte. Admits vfRGB24 and vfRGB32 (alpha
// kept); every other format arrives as vfRGB24.
//
//   object Threshold1: TFXThreshold
//     ThresholdTop.Threshold = 12632256
//     ThresholdBottom.Threshold = 4210752
//     ThresholdBottom.Value = 16777215
//   end
class TFXThreshold : public TFXCommonFilter {
public:
    explicit TFXThreshold(TKTComponent* owner);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    TFXThresholdValueTop& GetThresholdTop() { return FThresholdTop; }
    void SetThresholdTop(const TFXThresholdValueTop& value) { FThresholdTop.Assign(value); }
    TFXThresholdValueBottom& GetThresholdBottom() { return FThresholdBottom; }
    void SetThresholdBottom(const TFXThresholdValueBottom& value)
    {
        FThresholdBottom.Assign(value);
    }

protected:
    void SetVideoFormat(IFXImageBuffer& buffer) override;
    void FilterInternalOperation(IFXImageBuffer& input, IFXImageBuffer& output) override;

private:
    TFXThresholdValueTop FThresholdTop;
    TFXThresholdValueBottom FThresholdBottom;
};

} // namespace framix
