// SPDX-License-Identifier: MIT
// A generator of the Jaehne test image: concentric rings whose frequency rises outwards.
#pragma once

#include "framework/FXCommonGen.h"

namespace framix {

// Each frame is the Jaehne image of `ImageSize` in vfRGB24 (grey: the three channels equal). It
// is a standard picture for judging filters and resampling: aliasing shows as extra rings.
//
//   object Rings1: TFXJaehneGen
//     ImageSize.Width = 640
//     ImageSize.Height = 480
//   end
class TFXJaehneGen : public TFXCommonGen {
public:
    explicit TFXJaehneGen(TKTComponent* owner);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

protected:
    void GenerateFrame(IFXImageBuffer& buffer) override;
};

} // namespace framix
