// SPDX-License-Identifier: MIT
// Pixel formats: the sixteen ordinals, their memory layout and the conversions to platform codes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <array>
#include <span>
#include <string_view>

namespace framix {

// One byte per format. Components process ordinals 0, 1, 8 and 9 natively; the others exist so
// that the bridges can exchange the layouts cameras, codecs and Y4M files deliver, and the base
// converts them to vfRGB24 before a filter sees them.
//
// RGB layouts store blue first (vfRGB24 is B,G,R in memory; vfRGB32 is B,G,R,A). 16-bit samples
// are little-endian in memory (native on every platform we build for). Planar formats keep their
// planes one after another in a single block: luma first, then the chroma planes in the order
// the name gives (I420: Y,U,V; YV12: Y,V,U), then alpha. Subsampled chroma planes have
// ceil(width / 2) columns and, for 4:2:0, ceil(height / 2) rows, as Y4M and ffmpeg lay them out.
enum TFXVideoFormat : std::uint8_t {
    vfRGB24 = 0,    // 3 bytes: B, G, R
    vfRGB32 = 1,    // 4 bytes: B, G, R, A
    vfRGB555 = 2,   // 16-bit little-endian word: x rrrrr ggggg bbbbb
    vfYUY2 = 3,     // 4:2:2 packed: Y0 U Y1 V
    vfUYVY = 4,     // 4:2:2 packed: U Y0 V Y1
    vfI420 = 5,     // 4:2:0 planar: Y, U, V
    vfRGB565 = 6,   // 16-bit little-endian word: rrrrr gggggg bbbbb
    vfYV12 = 7,     // 4:2:0 planar: Y, V, U
    vfGray8 = 8,    // 1 byte intensity
    vfGray16 = 9,   // 16-bit unsigned intensity
    vfNV12 = 10,    // 4:2:0: Y plane, then one plane of interleaved U, V
    vfI422 = 11,    // 4:2:2 planar: Y, U, V (chroma full height)
    vfI444 = 12,    // 4:4:4 planar: Y, U, V
    vfYUVA444 = 13, // 4:4:4 planar with alpha: Y, U, V, A
    vfRGB48 = 14,   // 3 x 16-bit: B, G, R
    vfRGBA64 = 15,  // 4 x 16-bit: B, G, R, A
};

inline constexpr int kFXVideoFormatCount = 16;

// Everything the library needs to know about a format's layout.
struct TFXFormatInfo {
    int BitsPerPixel;       // average over the image (12 for 4:2:0)
    int BytesPerPixel;      // of the first plane; 1 for the planar YUV formats
    int PlaneCount;         // 1 for packed formats
    int ChromaShiftX;       // log2 of the horizontal chroma subsampling (planar and packed YUV)
    int ChromaShiftY;       // log2 of the vertical chroma subsampling
    int BytesPerSample;     // 1 or 2
    bool HasAlpha;
    bool IsYUV;
    std::uint32_t FourCC;
};

// The layout of one plane of a width x height image.
struct TFXPlaneGeometry {
    int RowBytes;  // bytes of pixel data in one row
    int Rows;
};

constexpr std::uint32_t FXMakeFourCC(char a, char b, char c, char d)
{
    return std::uint32_t(std::uint8_t(a)) | std::uint32_t(std::uint8_t(b)) << 8 |
           std::uint32_t(std::uint8_t(c)) << 16 | std::uint32_t(std::uint8_t(d)) << 24;
}

// True for ordinals 0..15.
constexpr bool FXIsValidVideoFormat(int ordinal) { return ordinal >= 0 && ordinal < kFXVideoFormatCount; }

// Layout facts of a format; throws EFXError for an ordinal outside 0..15.
const TFXFormatInfo& FXFormatInfo(TFXVideoFormat format);
std::string_view FXVideoFormatName(TFXVideoFormat format);
// Parses "vfRGB24" (or the ordinal as a number); throws EFXError naming the text when unknown.
TFXVideoFormat FXVideoFormatFromName(std::string_view name);
// Throws EFXError unless the ordinal names a format.
TFXVideoFormat FXCheckedVideoFormat(int ordinal);

// Geometry of plane `plane` of a width x height image in `format`.
TFXPlaneGeometry FXPlaneGeometry(TFXVideoFormat format, int width, int height, int plane);

// Bits per pixel of an uncompressed bitmap <-> format (8 gray, 16 RGB555, 24, 32, 48, 64).
TFXVideoFormat FXBitCountToVideoFormat(int bitCount);
int FXVideoFormatToBitCount(TFXVideoFormat format);

// FourCC codes in place of the platform's media-subtype identifiers.
TFXVideoFormat FXGetFormatFromFourCC(std::uint32_t fourCC);
std::uint32_t FXGetFourCCFromFormat(TFXVideoFormat format);

// A set of formats, as a 16-bit mask of ordinals (bit n = ordinal n).
class TFXFormatSet {
public:
    constexpr TFXFormatSet() = default;
    constexpr TFXFormatSet(std::initializer_list<TFXVideoFormat> formats)
    {
        for (TFXVideoFormat f : formats)
            FBits |= std::uint16_t(1u << f);
    }
    static constexpr TFXFormatSet FromMask(std::uint16_t bits)
    {
        TFXFormatSet s;
        s.FBits = bits;
        return s;
    }
    constexpr bool Contains(TFXVideoFormat f) const { return f < 16 && (FBits >> f) & 1u; }
    constexpr std::uint16_t Mask() const { return FBits; }

private:
    std::uint16_t FBits = 0;
};

// The formats every pixel filter processes natively besides vfRGB24 (the 16-bit set 0x0302).
inline constexpr TFXFormatSet kFXNativeFormats{vfRGB32, vfGray8, vfGray16};
static_assert(kFXNativeFormats.Mask() == 0x0302);

} // namespace framix

namespace framix {

inline constexpr std::array<std::string_view, kFXVideoFormatCount> kFXVideoFormatNames{
    "vfRGB24", "vfRGB32", "vfRGB555", "vfYUY2",  "vfUYVY", "vfI420", "vfRGB565",  "vfYV12",
    "vfGray8", "vfGray16", "vfNV12",  "vfI422",  "vfI444", "vfYUVA444", "vfRGB48", "vfRGBA64"};

// Lets the property system treat TFXVideoFormat like every FX_ENUM enumeration.
constexpr std::span<const std::string_view> FXEnumNames(TFXVideoFormat)
{
    return kFXVideoFormatNames;
}

} // namespace framix
