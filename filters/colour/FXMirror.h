// SPDX-License-Identifier: MIT
// Mirror: flips frames top to bottom, left to right, or both.
#pragma once

#include "framework/FXCommonFilter.h"

namespace framix {

// The flip axis, as the mirror primitives number it: mtHorizontal reverses the rows (top to
// bottom), mtVertical reverses each row (left to right), mtBoth does both (a half turn).
FX_ENUM(TFXMirrorType, mtHorizontal, mtVertical, mtBoth)

// Works on vfRGB24, vfRGB32, vfGray8 and vfGray16. In vfRGB32 only the colour bytes move: the
// alpha channel stays where it was.
//
//   object Mirror1: TFXMirror
//     MirrorType = mtVertical
//   end
class TFXMirror : public TFXCommonFilter {
public:
    static constexpr TFXEnumProp<TFXMirrorType> kMirrorType{
        .Name = "MirrorType", .Help = "the flip axis", .Default = mtHorizontal};

    explicit TFXMirror(TKTComponent* owner);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    TFXMirrorType GetMirrorType() const;
    void SetMirrorType(TFXMirrorType value);

protected:
    void SetVideoFormat(IFXImageBuffer& buffer) override;
    void FilterInternalOperation(IFXImageBuffer& input, IFXImageBuffer& output) override;

private:
    TFXMirrorType FMirrorType = kMirrorType.Default;
};

} // namespace framix
