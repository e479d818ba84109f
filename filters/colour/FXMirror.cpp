// SPDX-License-Identifier: MIT
// The mirror filter.
#include "filters/colour/FXMirror.h"

#include <algorithm>

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

namespace {

// Rows per band of a four-channel frame: copied and mirrored while the band is in cache.
constexpr int kBandRows = 32;

// The four-channel mirror on a copy of the input, in bands of rows: each band of the output is
// first the input's same rows (so its alpha is in place), then receives the mirrored colours,
// while it is still in cache. The result is that of one copy followed by one whole-frame call.
void MirrorKeepingAlpha(const Ipp8u* source, int sourceStride, Ipp8u* destination,
                        int destinationStride, IppiSize size, IppiAxis axis)
{
    const bool flipRows = axis != ippAxsVertical;
    for (int top = 0; top < size.height; top += kBandRows) {
        const int rows = std::min(kBandRows, size.height - top);
        Ipp8u* band = destination + std::ptrdiff_t(top) * destinationStride;
        ipp::ippiCopy_8u_C4R(source + std::ptrdiff_t(top) * sourceStride, sourceStride, band,
                             destinationStride, {size.width, rows});
        // Reversing rows, output rows top.. come from input rows counted from the bottom.
        const int from = flipRows ? size.height - top - rows : top;
        ipp::ippiMirror_8u_AC4R(source + std::ptrdiff_t(from) * sourceStride, sourceStride, band,
                                destinationStride, {size.width, rows}, axis);
    }
}

} // namespace

void TFXMirror::FilterInternalOperation(IFXImageBuffer& input, IFXImageBuffer& output)
{
    output.CopyFrom(input);
    const std::uint8_t* source = input.GetReadPointer();
    std::uint8_t* destination = output.GetWritePointer();
    // The output's stride serves the source as well: after the copy both have the same layout.
    const int stride = output.GetRowStride();
    const IppiSize size{input.GetWidth(), input.GetHeight()};
    const auto axis = IppiAxis(FMirrorType);
    switch (input.GetFormat()) {
    case vfRGB32:
        // Intentional: the four-channel variant moves only the colour bytes of a copy of the
        // input, so the alpha channel is not mirrored.
        MirrorKeepingAlpha(source, stride, destination, stride, size, axis);
        break;
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
