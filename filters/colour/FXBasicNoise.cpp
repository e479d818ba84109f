// SPDX-License-Identifier: MIT
// The noise base: filter and generator modes, and the shared seed word.
#include "filters/colour/FXBasicNoise.h"

#include "framework/primitives/dispatch/Fxbasicdispatcher.h"


namespace framix {

TFXBasicNoise::TFXBasicNoise(TKTComponent* owner) : TFXCommonROIGenFilter(owner) {}

const TFXClassInfo& TFXBasicNoise::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXProp<&TFXBasicNoise::GetBackgroundColor, &TFXBasicNoise::SetBackgroundColor>(
            kBackgroundColor),
    };
    static const TFXClassInfo info{"TFXBasicNoise", &TFXCommonROIGenFilter::ClassInfo(), kProps};
    return info;
}

std::uint32_t TFXBasicNoise::GetBackgroundColor() const
{
    auto guard = Lock().Read();
    return FBackgroundColor;
}

void TFXBasicNoise::SetBackgroundColor(std::uint32_t value) { Lock().Store(FBackgroundColor, value); }

std::uint16_t TFXBasicNoise::GetSeed() const
{
    auto guard = Lock().Read();
    return FSeed;
}

void TFXBasicNoise::SetSeed(std::uint16_t value) { Lock().Store(FSeed, value); }

void TFXBasicNoise::LoadRunningSeed()
{
    auto guard = Lock().Write();
    FRunningSeed = FSeed;
}

void TFXBasicNoise::StreamStart()
{
    TFXCommonROIGenFilter::StreamStart();
    LoadRunningSeed();
}

void TFXBasicNoise::IntStart() { LoadRunningSeed(); }

void TFXBasicNoise::SetVideoFormat(IFXImageBuffer& buffer)
{
    AdmitFormats(buffer, kFXNativeFormats);
}

void TFXBasicNoise::AddNoiseAndAdvance(std::uint8_t* pixels, int stride, TFXImageSize size,
                                       TFXVideoFormat format, bool allChannels)
{
    // Intentional: the property shares the word with the running seed, so the generator's
    // state shows in `Seed` (and seeds the next stream).
    unsigned int word = (unsigned int)FSeed << 16 | FRunningSeed;
    const TFXNoiseParams p = GetNoiseParams();
    const TFXNoisePrimitives add = GetNoisePrimitives();
    const IppiSize roi{size.width, size.height};
    if (allChannels)
        add.C4(pixels, stride, roi, p.A, p.B, &word);
    else if (format == vfGray16)  // the parameters on the 16-bit scale
        add.C1_16u(reinterpret_cast<Ipp16u*>(pixels), stride, roi, Ipp16u(p.A << 8),
                   Ipp16u(p.B << 8), &word);
    else if (format == vfGray8)
        add.C1(pixels, stride, roi, p.A, p.B, &word);
    else if (format == vfRGB32)  // alpha left alone
        add.AC4(pixels, stride, roi, p.A, p.B, &word);
    else
        add.C3(pixels, stride, roi, p.A, p.B, &word);
    FRunningSeed = std::uint16_t(word);
    FSeed = std::uint16_t(word >> 16);
}

void TFXBasicNoise::FilterInternalOperation(IFXImageBuffer& input, IFXImageBuffer& output)
{
    output.CopyFrom(input);
    TFXImageSize size = input.GetSize();
    std::uint8_t* pixels = output.GetModifyPointer();
    const std::uint8_t* unused = pixels;
    ReclaculateRoiAndOffset(size, unused, output.GetRowStride(), output, pixels,
                            input.GetFormat());
    if (size.width <= 0 || size.height <= 0)
        return;
    AddNoiseAndAdvance(pixels, output.GetRowStride(), size, input.GetFormat());
}

void TFXBasicNoise::GenerateFrame(IFXImageBuffer& buffer)
{
    buffer.ConvertFormat(vfRGB32);
    // A colour holds red in its low byte; a pixel starts with blue.
    const Ipp8u fill[4] = {Ipp8u(FBackgroundColor >> 16), Ipp8u(FBackgroundColor >> 8),
                           Ipp8u(FBackgroundColor), Ipp8u(FBackgroundColor >> 24)};
    std::uint8_t* pixels = buffer.GetModifyPointer();
    const TFXImageSize size = buffer.GetSize();
    ipp::ippiSet_8u_C4R(fill, pixels, buffer.GetRowStride(), {size.width, size.height});
    // Four channels, alpha included.
    AddNoiseAndAdvance(pixels, buffer.GetRowStride(), size, vfRGB32, true);
}

} // namespace framix
