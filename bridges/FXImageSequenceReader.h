// SPDX-License-Identifier: MIT
// Reads a numbered image sequence (in_%04d.ppm) or one still image file as frames.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "bridges/FXPNGFile.h"
#include "bridges/FXPNMReader.h"
#include "bridges/FXSequencePattern.h"

namespace framix {

// The source of a file player's image frames.
//  - A name that exists as a file (or "-", standard input) is one still image, or several
//    PNM images one after another in that stream.
//  - Otherwise the name is a pattern: numbering starts at 1, as ffmpeg writes sequences, or
//    at 0 when that file exists; the sequence ends at the first missing number.
// PGM/PPM/PAM files are read as TFXPNMReader describes; .png files through libpng when the
// library has it. Every image must have the size and format of the first one. The sequence
// has no frame rate of its own; the player supplies it.
class TFXImageSequenceReader {
public:
    // Opens the first image, so the format is known; throws EFXError when there is none.
    explicit TFXImageSequenceReader(const std::string& fileNameOrPattern);

    TFXVideoFormat Format() const { return FFormat; }
    int Width() const { return FWidth; }
    int Height() const { return FHeight; }
    bool IsNumbered() const { return FPattern.has_value(); }

    // Reads the next image into planes laid out for Format(); false after the last one.
    // An unreadable or different image throws, after every earlier frame was delivered.
    bool ReadFrame(const TFXPlanes& planes);

    std::int64_t FrameCount() const { return FFrameCount; }
    // The file the latest frame came from.
    const std::string& CurrentFile() const { return FFile; }

private:
    void Open(const std::string& fileName);
    bool Advance();

    std::optional<TFXSequencePattern> FPattern;
    int FNumber = 0;
    std::string FFile;
    std::optional<TFXPNMReader> FPNM;
    std::optional<TFXPNGImage> FPNG;
    TFXVideoFormat FFormat = vfGray8;
    int FWidth = 0;
    int FHeight = 0;
    bool FAdvance = false;
    bool FEnded = false;
    std::int64_t FFrameCount = 0;
};

} // namespace framix
