// SPDX-License-Identifier: MIT
// The gamma filter: the BT.709 video transfer curve, forward or inverse, on every colour byte.
#pragma once

#include "framework/FXCommonFilter.h"

namespace framix {

FX_ENUM(TFXGammaType, gtForward, gtInverse)

// Applies the BT.709 transfer function (forward: 4.5 v below 0.018, else 1.099 v^0.45 - 0.099,
// on v = byte / 255) or its exact inverse to every colour byte. Admits vfRGB24 and vfRGB32
// (alpha kept); every other format arrives as vfRGB24.
//
//   object Gamma1: TFXGammaFilter
//     GammaType = gtInverse
//   end
class TFXGammaFilter : public TFXCommonFilter {
public:
    static constexpr TFXEnumProp<TFXGammaType> kGammaType{
        .Name = "GammaType", .Help = "forward or inverse curve", .Default = gtForward};

    explicit TFXGammaFilter(TKTComponent* owner);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    TFXGammaType GetGammaType() const;
    void SetGammaType(TFXGammaType value);

protected:
    void SetVideoFormat(IFXImageBuffer& buffer) override;
    void FilterInternalOperation(IFXImageBuffer& input, IFXImageBuffer& output) override;

private:
    TFXGammaType FGammaType = kGammaType.Default;
};

} // namespace framix
