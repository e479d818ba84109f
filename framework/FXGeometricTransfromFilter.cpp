// SPDX-License-Identifier: MIT
// Output size negotiation, interpolation and background of geometric filters.
#include "framework/FXGeometricTransfromFilter.h"

#include <algorithm>
#include <cstring>

namespace framix {

// ---------------------------------------------------------------- TFXCommonROISizeFilter

TFXCommonROISizeFilter::TFXCommonROISizeFilter(TKTComponent* owner) : TFXCommonROIFilter(owner) {}

const TFXClassInfo& TFXCommonROISizeFilter::ClassInfo()
{
    static const TFXClassInfo info{"TFXCommonROISizeFilter", &TFXCommonROIFilter::ClassInfo(), {}};
    return info;
}

int TFXCommonROISizeFilter::GetInputWidth() const
{
    auto guard = Lock().Read();
    return FInputWidth;
}

int TFXCommonROISizeFilter::GetInputHeight() const
{
    auto guard = Lock().Read();
    return FInputHeight;
}

int TFXCommonROISizeFilter::GetOutputWidth() const
{
    auto guard = Lock().Read();
    return FOutputWidth;
}

int TFXCommonROISizeFilter::GetOutputHeight() const
{
    auto guard = Lock().Read();
    return FOutputHeight;
}

void TFXCommonROISizeFilter::SetSizeRate(int& width, int& height, TFXVideoFormat& format,
                                         std::int64_t frameDelay, std::uint32_t reserved,
                                         std::uint32_t& aspectWidth, std::uint32_t& aspectHeight)
{
    FInputWidth = width;
    FInputHeight = height;
    FOutputWidth = width;
    FOutputHeight = height;
    if (IsEnabled()) {
        CalculateOutputSize(width, height, FOutputWidth, FOutputHeight);
        FOutputWidth = std::clamp(FOutputWidth, 1, kFXMaxImageSide);
        FOutputHeight = std::clamp(FOutputHeight, 1, kFXMaxImageSide);
    }
    width = FOutputWidth;
    height = FOutputHeight;
    TFXCommonROIFilter::SetSizeRate(width, height, format, frameDelay, reserved, aspectWidth,
                                    aspectHeight);
}

bool TFXCommonROISizeFilter::OutputSameAsInputSize()
{
    auto guard = Lock().Read();
    return FInputWidth == FOutputWidth && FInputHeight == FOutputHeight;
}

void TFXCommonROISizeFilter::CalculateOutputSize(int inWidth, int inHeight, int& outWidth,
                                                 int& outHeight)
{
    outWidth = inWidth;
    outHeight = inHeight;
}

// ---------------------------------------------------------------- TFXGeometricOutputSize

TFXGeometricOutputSize::TFXGeometricOutputSize(TKTPersistent* owner, IKTLock& lock,
                                               TChangeNotify onChange)
    : TKTPersistentNotify(owner, lock, std::move(onChange))
{
}

const TFXClassInfo& TFXGeometricOutputSize::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXProp<&TFXGeometricOutputSize::GetMode, &TFXGeometricOutputSize::SetMode>(kMode),
        FXProp<&TFXGeometricOutputSize::GetWidth, &TFXGeometricOutputSize::SetWidth>(kWidth),
        FXProp<&TFXGeometricOutputSize::GetHeight, &TFXGeometricOutputSize::SetHeight>(kHeight),
    };
    static const TFXClassInfo info{"TFXGeometricOutputSize", &TKTPersistentNotify::ClassInfo(),
                                   kProps};
    return info;
}

TFXOutputSizeMode TFXGeometricOutputSize::GetMode() const
{
    auto guard = Lock().Read();
    return FMode;
}

void TFXGeometricOutputSize::SetMode(TFXOutputSizeMode value) { StoreAndNotify(FMode, value); }

std::int32_t TFXGeometricOutputSize::GetWidth() const
{
    auto guard = Lock().Read();
    return FWidth;
}

void TFXGeometricOutputSize::SetWidth(std::int32_t value)
{
    StoreAndNotify(FWidth, std::int32_t(std::clamp<std::int64_t>(value, kWidth.Min, kWidth.Max)));
}

std::int32_t TFXGeometricOutputSize::GetHeight() const
{
    auto guard = Lock().Read();
    return FHeight;
}

void TFXGeometricOutputSize::SetHeight(std::int32_t value)
{
    StoreAndNotify(FHeight,
                   std::int32_t(std::clamp<std::int64_t>(value, kHeight.Min, kHeight.Max)));
}

// ---------------------------------------------------------------- TFXGeometricTransfromFilter

TFXGeometricTransfromFilter::TFXGeometricTransfromFilter(TKTComponent* owner)
    : TFXCommonROISizeFilter(owner),
      FOutputSize(this, Lock(), [this](TKTPersistent&) { RequestReannounce(); })
{
}

const TFXClassInfo& TFXGeometricTransfromFilter::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXGroup<&TFXGeometricTransfromFilter::GetOutputSize>(
            {.Name = "OutputSize", .Help = "size of the output frames"}),
        FXProp<&TFXGeometricTransfromFilter::GetInterpolationType,
               &TFXGeometricTransfromFilter::SetInterpolationType>(kInterpolationType),
        FXProp<&TFXGeometricTransfromFilter::GetBackgroundColor,
               &TFXGeometricTransfromFilter::SetBackgroundColor>(kBackgroundColor),
    };
    static const TFXClassInfo info{"TFXGeometricTransfromFilter",
                                   &TFXCommonROISizeFilter::ClassInfo(), kProps};
    return info;
}

TFXInterpolationType TFXGeometricTransfromFilter::GetInterpolationType() const
{
    auto guard = Lock().Read();
    return FInterpolationType;
}

void TFXGeometricTransfromFilter::SetInterpolationType(TFXInterpolationType value)
{
    SetInterpolationTypeInt(value);
}

void TFXGeometricTransfromFilter::SetInterpolationTypeInt(TFXInterpolationType type)
{
    Lock().Store(FInterpolationType, type);
}

std::uint32_t TFXGeometricTransfromFilter::GetBackgroundColor() const
{
    auto guard = Lock().Read();
    return FBackgroundColor;
}

void TFXGeometricTransfromFilter::SetBackgroundColor(std::uint32_t value)
{
    Lock().Store(FBackgroundColor, value);
}

void TFXGeometricTransfromFilter::CalculateOutputSize(int inWidth, int inHeight, int& outWidth,
                                                      int& outHeight)
{
    outWidth = inWidth;
    outHeight = inHeight;
    switch (FOutputSize.GetMode()) {
    case osmInputSize: break;
    case osmBoundingRect: GetBoundingRect(outWidth, outHeight); break;
    case osmMaxBoundingRect: GetMaxBoundingRect(outWidth, outHeight); break;
    case osmCustom:
        outWidth = FOutputSize.GetWidth();
        outHeight = FOutputSize.GetHeight();
        break;
    }
}

void TFXGeometricTransfromFilter::FillBackground(IFXImageBuffer& buffer) const
{
    const std::uint32_t colour = GetBackgroundColor();
    const std::uint8_t red = colour & 0xFF;
    const std::uint8_t green = (colour >> 8) & 0xFF;
    const std::uint8_t blue = (colour >> 16) & 0xFF;
    // Pixels store blue first; alpha of a filled pixel is 0 (nothing was mapped there).
    const std::uint8_t bgra[4] = {blue, green, red, 0};
    const std::uint8_t luma = std::uint8_t((299 * red + 587 * green + 114 * blue + 500) / 1000);
    const int width = buffer.GetWidth();
    const int height = buffer.GetHeight();
    const int stride = buffer.GetRowStride();
    std::uint8_t* row = buffer.GetWritePointer();
    for (int y = 0; y < height; ++y, row += stride) {
        switch (buffer.GetFormat()) {
        case vfGray8: std::memset(row, luma, std::size_t(width)); break;
        case vfGray16: {
            const std::uint16_t sample = std::uint16_t(luma * 257);
            for (int x = 0; x < width; ++x)
                std::memcpy(row + 2 * x, &sample, 2);
            break;
        }
        case vfRGB32:
            for (int x = 0; x < width; ++x)
                std::memcpy(row + 4 * x, bgra, 4);
            break;
        default:
            for (int x = 0; x < width; ++x)
                std::memcpy(row + 3 * x, bgra, 3);
            break;
        }
    }
}

} // namespace framix
