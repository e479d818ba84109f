// SPDX-License-Identifier: MIT
// The mirror filter.
#include "filters/colour/FXMirror.h"

#include "framework/primitives/dispatch/Fxbasicdispatcher.h"
#include "framework/properties/FXPalette.h"

namespace framix {

TFXMirror::TFXMirror(TKTComponent* owner) : TFXCommonFilter(owner) {}

const TFXClassInfo& TFXMirror::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXProp<&TFXMirror::GetMirrorType, &TFXMirror::SetMirrorType>(kMirrorType),
    };
    static const TFXClassInfo info{"TFXMirror", &TFXCommonFilter::ClassInfo(), kProps};
    return info;
}

TFXMirrorType TFXMirror::GetMirrorType() const
{
    auto guard = Lock().Read();
    return FMirrorType;
}

void TFXMirror::SetMirrorType(TFXMirrorType value)
{
    Lock().Store(FMirrorType, value <= mtBoth ? value : mtHorizontal);
}

void TFXMirror::SetVideoFormat(IFXImageBuffer& buffer) { AdmitFormats(buffer, kFXNativeFormats); }

void TFXMirror::FilterInternalOperation(IFXImageBuffer& input, IFXImageBuffer& output)
{
    // Intentional: the copy puts every alpha byte in place, and the four-channel variant below
    // moves only the colour bytes, so alpha is not mirrored. Only then must the copy's bytes be
    // real (a modify pointer); the other variants write every byte into fresh memory.
    output.CopyFrom(input);
    const std::uint8_t* source = input.GetReadPointer();
    std::uint8_t* destination =
        input.GetFormat() == vfRGB32 ? output.GetModifyPointer() : output.GetWritePointer();
    // The output's stride serves the source as well: after the copy both have the same layout.
    const int stride = output.GetRowStride();
    const IppiSize size{input.GetWidth(), input.GetHeight()};
    const auto axis = IppiAxis(FMirrorType);
    switch (input.GetFormat()) {
    case vfRGB32: ipp::ippiMirror_8u_AC4R(source, stride, destination, stride, size, axis); break;
    case vfGray8: ipp::ippiMirror_8u_C1R(source, stride, destination, stride, size, axis); break;
    case vfGray16:
        ipp::ippiMirror_16u_C1R(reinterpret_cast<const Ipp16u*>(source), stride,
                                reinterpret_cast<Ipp16u*>(destination), stride, size, axis);
        break;
    default: ipp::ippiMirror_8u_C3R(source, stride, destination, stride, size, axis); break;
    }
}

void RegisterFXMirror(TFXPalette& palette) { palette.Register<TFXMirror>(kFXPalettePage); }

} // namespace framix
