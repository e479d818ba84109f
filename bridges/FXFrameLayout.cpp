// SPDX-License-Identifier: MIT
// Size limits and plane checks shared by the file readers and writers.
#include "bridges/FXFrameLayout.h"

#include "framework/FXError.h"

namespace framix {

void FXCheckImageSize(const std::string& name, std::int64_t width, std::int64_t height)
{
    const std::string size = std::to_string(width) + "x" + std::to_string(height);
    if (width <= 0 || height <= 0)
        throw EFXError(name + ": invalid image size " + size);
    if (width > kFXMaxImageSide || height > kFXMaxImageSide || width * height > kFXMaxImagePixels)
        throw EFXError(name + ": image size " + size + " is beyond the supported " +
                       std::to_string(kFXMaxImageSide) + " pixels a side and " +
                       std::to_string(kFXMaxImagePixels) + " pixels in all");
}

TFXVideoFormat FXInterleavedFormat(const std::string& name, int channels, int bytesPerSample)
{
    const bool wide = bytesPerSample == 2;
    switch (channels) {
    case 1:
        return wide ? vfGray16 : vfGray8;
    case 3:
        return wide ? vfRGB48 : vfRGB24;
    case 2:
    case 4:
        return wide ? vfRGBA64 : vfRGB32;
    default:
        throw EFXError(name + ": " + std::to_string(channels) +
                       " samples per pixel are not supported (1 to 4)");
    }
}

std::int64_t FXImageBytes(TFXVideoFormat format, int width, int height)
{
    std::int64_t bytes = 0;
    for (int p = 0; p < FXFormatInfo(format).PlaneCount; ++p) {
        const TFXPlaneGeometry g = FXPlaneGeometry(format, width, height, p);
        bytes += std::int64_t(g.RowBytes) * g.Rows;
    }
    return bytes;
}

void FXCheckPlanes(const std::string& name, TFXVideoFormat format, int width, int height,
                   const TFXConstPlanes& planes)
{
    FXCheckImageSize(name, width, height);
    for (int p = 0; p < FXFormatInfo(format).PlaneCount; ++p) {
        const TFXPlaneGeometry g = FXPlaneGeometry(format, width, height, p);
        if (!planes.Data[p])
            throw EFXError(name + ": plane " + std::to_string(p) + " of the " +
                           std::string(FXVideoFormatName(format)) + " image has no memory");
        if (planes.Stride[p] < g.RowBytes)
            throw EFXError(name + ": plane " + std::to_string(p) + " has a stride of " +
                           std::to_string(planes.Stride[p]) + " bytes, less than its " +
                           std::to_string(g.RowBytes) + " bytes per row");
    }
}

} // namespace framix
