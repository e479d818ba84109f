// SPDX-License-Identifier: MIT
// Pixel formats: layout table, names, bit counts and FourCC codes.
#include "framework/FXVideoFormat.h"

#include <array>
#include <charconv>
#include <string>

#include "framework/FXError.h"

namespace framix {

namespace {

constexpr std::array<TFXFormatInfo, kFXVideoFormatCount> kFormats{{
    // bpp Bpp planes sx sy sample alpha  yuv    FourCC
    {24, 3, 1, 0, 0, 1, false, false, FXMakeFourCC('B', 'G', 'R', '3')},
    {32, 4, 1, 0, 0, 1, true,  false, FXMakeFourCC('B', 'G', 'R', 'A')},
    {16, 2, 1, 0, 0, 1, false, false, FXMakeFourCC('R', 'G', 'B', 'O')},
    {16, 2, 1, 1, 0, 1, false, true,  FXMakeFourCC('Y', 'U', 'Y', '2')},
    {16, 2, 1, 1, 0, 1, false, true,  FXMakeFourCC('U', 'Y', 'V', 'Y')},
    {12, 1, 3, 1, 1, 1, false, true,  FXMakeFourCC('I', '4', '2', '0')},
    {16, 2, 1, 0, 0, 1, false, false, FXMakeFourCC('R', 'G', 'B', 'P')},
    {12, 1, 3, 1, 1, 1, false, true,  FXMakeFourCC('Y', 'V', '1', '2')},
    {8, 1, 1, 0, 0, 1, false, false, FXMakeFourCC('Y', '8', '0', '0')},
    {16, 2, 1, 0, 0, 2, false, false, FXMakeFourCC('Y', '1', '6', ' ')},
    {12, 1, 2, 1, 1, 1, false, true,  FXMakeFourCC('N', 'V', '1', '2')},
    {16, 1, 3, 1, 0, 1, false, true,  FXMakeFourCC('Y', '4', '2', 'B')},
    {24, 1, 3, 0, 0, 1, false, true,  FXMakeFourCC('4', '4', '4', 'P')},
    {32, 1, 4, 0, 0, 1, true,  true,  FXMakeFourCC('Y', '4', 'A', 'P')},
    {48, 6, 1, 0, 0, 2, false, false, FXMakeFourCC('B', 'G', 'R', '6')},
    {64, 8, 1, 0, 0, 2, true,  false, FXMakeFourCC('B', 'R', 'A', '6')},
}};

} // namespace

TFXVideoFormat FXCheckedVideoFormat(int ordinal)
{
    if (!FXIsValidVideoFormat(ordinal))
        throw EFXError("Unknown video format ordinal " + std::to_string(ordinal) +
                       " (valid ordinals are 0 to 15)");
    return TFXVideoFormat(ordinal);
}

const TFXFormatInfo& FXFormatInfo(TFXVideoFormat format)
{
    return kFormats[FXCheckedVideoFormat(format)];
}

std::string_view FXVideoFormatName(TFXVideoFormat format)
{
    return kFXVideoFormatNames[FXCheckedVideoFormat(format)];
}

TFXVideoFormat FXVideoFormatFromName(std::string_view name)
{
    for (int i = 0; i < kFXVideoFormatCount; ++i)
        if (kFXVideoFormatNames[i] == name)
            return TFXVideoFormat(i);
    int ordinal = -1;
    auto [end, ec] = std::from_chars(name.data(), name.data() + name.size(), ordinal);
    if (ec == std::errc() && end == name.data() + name.size())
        return FXCheckedVideoFormat(ordinal);
    throw EFXError("Unknown video format '" + std::string(name) + "'");
}

TFXPlaneGeometry FXPlaneGeometry(TFXVideoFormat format, int width, int height, int plane)
{
    const TFXFormatInfo& info = FXFormatInfo(format);
    if (plane < 0 || plane >= info.PlaneCount)
        return {0, 0};
    if (info.PlaneCount == 1) {
        if (format == vfYUY2 || format == vfUYVY)  // pixel pairs share one U and one V
            return {((width + 1) / 2) * 4, height};
        return {width * info.BytesPerPixel, height};
    }
    if (plane == 0 || (info.HasAlpha && plane == info.PlaneCount - 1))
        return {width, height};
    const int chromaWidth = (width + (1 << info.ChromaShiftX) - 1) >> info.ChromaShiftX;
    const int chromaRows = (height + (1 << info.ChromaShiftY) - 1) >> info.ChromaShiftY;
    if (format == vfNV12)
        return {chromaWidth * 2, chromaRows};
    return {chromaWidth, chromaRows};
}

TFXVideoFormat FXBitCountToVideoFormat(int bitCount)
{
    switch (bitCount) {
    case 8: return vfGray8;
    case 16: return vfRGB555;
    case 24: return vfRGB24;
    case 32: return vfRGB32;
    case 48: return vfRGB48;
    case 64: return vfRGBA64;
    default:
        throw EFXError("No video format has " + std::to_string(bitCount) + " bits per pixel");
    }
}

int FXVideoFormatToBitCount(TFXVideoFormat format) { return FXFormatInfo(format).BitsPerPixel; }

TFXVideoFormat FXGetFormatFromFourCC(std::uint32_t fourCC)
{
    for (int i = 0; i < kFXVideoFormatCount; ++i)
        if (kFormats[i].FourCC == fourCC)
            return TFXVideoFormat(i);
    // Common aliases delivered by cameras and codecs.
    if (fourCC == FXMakeFourCC('Y', 'U', 'Y', 'V'))
        return vfYUY2;
    if (fourCC == FXMakeFourCC('I', 'Y', 'U', 'V'))
        return vfI420;
    if (fourCC == FXMakeFourCC('G', 'R', 'E', 'Y') || fourCC == FXMakeFourCC('Y', '8', ' ', ' '))
        return vfGray8;
    std::string text;
    for (int i = 0; i < 4; ++i) {
        const char c = char((fourCC >> (8 * i)) & 0xFF);
        text += (c >= 32 && c < 127) ? c : '?';
    }
    throw EFXError("No video format has the FourCC '" + text + "'");
}

std::uint32_t FXGetFourCCFromFormat(TFXVideoFormat format) { return FXFormatInfo(format).FourCC; }

} // namespace framix
