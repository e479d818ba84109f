// SPDX-License-Identifier: MIT
// The callback generator.
#include "framework/FXGenericGen.h"

#include <cstring>

#include "framework/properties/FXPalette.h"

namespace framix {

TFXGenericGen::TFXGenericGen(TKTComponent* owner) : TFXCommonGen(owner) {}

const TFXClassInfo& TFXGenericGen::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXProp<&TFXGenericGen::GetFormat, &TFXGenericGen::SetFormat>(kFormat),
        FXEvent({.Name = "OnGenerateFrame", .Help = "draws each frame"}),
    };
    static const TFXClassInfo info{"TFXGenericGen", &TFXCommonGen::ClassInfo(), kProps};
    return info;
}

TFXVideoFormat TFXGenericGen::GetFormat() const
{
    auto guard = Lock().Read();
    return FFormat;
}

void TFXGenericGen::SetFormat(TFXVideoFormat value) { Lock().Store(FFormat, FXCheckedVideoFormat(value)); }

void TFXGenericGen::GenerateFrame(IFXImageBuffer& buffer)
{
    if (OnGenerateFrame) {
        OnGenerateFrame(*this, buffer);
        return;
    }
    const TFXPlanes planes = buffer.GetWritePlanes();
    for (int p = 0; p < FXFormatInfo(buffer.GetFormat()).PlaneCount; ++p) {
        const TFXPlaneGeometry g = FXPlaneGeometry(buffer.GetFormat(), buffer.GetWidth(),
                                                   buffer.GetHeight(), p);
        for (int y = 0; y < g.Rows; ++y)
            std::memset(planes.Data[p] + std::ptrdiff_t(y) * planes.Stride[p], 0,
                        std::size_t(g.RowBytes));
    }
}

void RegisterFXGenericGen(TFXPalette& palette) { palette.Register<TFXGenericGen>(kFXPalettePage); }

} // namespace framix
