// SPDX-License-Identifier: MIT
// The Jaehne test-image generator.
#include "filters/colour/FXJaehneGen.h"

#include "framework/primitives/dispatch/Fxjaehnedispatcher.h"
#include "framework/properties/FXPalette.h"

namespace framix {

TFXJaehneGen::TFXJaehneGen(TKTComponent* owner) : TFXCommonGen(owner) {}

const TFXClassInfo& TFXJaehneGen::ClassInfo()
{
    static const TFXClassInfo info{"TFXJaehneGen", &TFXCommonGen::ClassInfo(), {}};
    return info;
}

void TFXJaehneGen::GenerateFrame(IFXImageBuffer& buffer)
{
    const TFXImageSize size = buffer.GetSize();
    ipp::ippiImageJaehne_8u_C3R(buffer.GetWritePointer(), buffer.GetRowStride(),
                                {size.width, size.height});
}

void RegisterFXJaehneGen(TFXPalette& palette) { palette.Register<TFXJaehneGen>(kFXPalettePage); }

} // namespace framix
