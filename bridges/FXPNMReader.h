// SPDX-License-Identifier: MIT
// Reads PGM, PPM and PAM images (binary and plain forms) into plane memory.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "bridges/FXFileStream.h"
#include "framework/FXPlanes.h"
#include "framework/FXVideoFormat.h"

namespace framix {

// What the current image's header says, and the frame format its pixels are delivered in.
struct TFXPNMInfo {
    int Type = 0; // the digit after 'P': 2 and 5 gray, 3 and 6 RGB, 7 PAM
    int Width = 0;
    int Height = 0;
    int Depth = 0;         // samples per pixel in the file (1 to 4)
    int MaxVal = 0;        // 1 to 65535
    std::string TupleType; // PAM TUPLTYPE as written, empty for the other types
    TFXVideoFormat Format = vfGray8;
};

// Formats delivered:
//   P2/P5 gray            -> vfGray8 (maxval <= 255) or vfGray16
//   P3/P6 RGB             -> vfRGB24 or vfRGB48 (samples reordered to B,G,R)
//   PAM GRAYSCALE, BLACKANDWHITE            -> vfGray8 / vfGray16
//   PAM RGB                                 -> vfRGB24 / vfRGB48
//   PAM RGB_ALPHA                           -> vfRGB32 / vfRGBA64 (B,G,R,A)
//   PAM GRAYSCALE_ALPHA, BLACKANDWHITE_ALPHA -> vfRGB32 / vfRGBA64, gray copied to B, G and R
// 16-bit samples (big-endian in the file) become little-endian. A maxval other than 255 or
// 65535 is rescaled to the full 8- or 16-bit range, rounding to nearest; a sample above the
// maxval counts as the maxval.
//
// A stream may hold several images one after another (as netpbm tools and ffmpeg's image
// pipe write them): NextImage() moves to the next one.
class TFXPNMReader {
public:
    // Opens the file ("-" = standard input) and reads the first image's header.
    explicit TFXPNMReader(const std::string& fileName);
    explicit TFXPNMReader(TFXFileStream stream);

    const TFXPNMInfo& Info() const { return FInfo; }
    const std::string& Name() const { return FStream.Name(); }

    // Reads the current image's pixels. Throws EFXIncompleteFrame when the stream ends early.
    void ReadPixels(const TFXPlanes& planes);
    // Skips what is left of the current image and reads the next header; false at the end.
    bool NextImage();

    // Images whose pixels were read so far.
    std::int64_t ImageCount() const { return FImageCount; }

private:
    bool ReadHeader();
    void ReadPamHeader();
    int ReadHeaderNumber(const char* what);
    void ChooseFormat();
    int ReadPlainSample();
    void ReadSamples(int row);
    [[noreturn]] void Incomplete(std::int64_t done, std::int64_t total, const char* unit);

    TFXFileStream FStream;
    TFXPNMInfo FInfo;
    bool FPixelsPending = false;
    std::int64_t FImageCount = 0;
    std::vector<std::uint8_t> FRow;
    std::vector<std::uint16_t> FSamples;
};

} // namespace framix
