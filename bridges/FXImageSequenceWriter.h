// SPDX-License-Identifier: MIT
// Writes frames as a numbered image sequence (out_%04d.ppm) or into one image file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "bridges/FXPNMWriter.h"
#include "bridges/FXSequencePattern.h"

namespace framix {

// The image side of a file logger.
//  - A pattern with a number writes one file per frame, numbered from firstNumber (1 by
//    default, as ffmpeg numbers).
//  - A plain name (or "-", standard output) receives every frame: PNM images one after
//    another in the one file, which netpbm tools and ffmpeg's image pipe read back as a
//    sequence; a .png file can hold one image only and keeps the latest frame.
// Names ending in .png are written as PNG (when libpng is available), all others as PGM, PPM
// or PAM chosen by the frame format (see TFXPNMWriter).
class TFXImageSequenceWriter {
public:
    explicit TFXImageSequenceWriter(const std::string& fileNameOrPattern, int firstNumber = 1);

    void WriteFrame(TFXVideoFormat format, int width, int height, const TFXConstPlanes& planes);

    std::int64_t FrameCount() const { return FFrameCount; }
    // The file the latest frame went to.
    const std::string& CurrentFile() const { return FFile; }

private:
    std::string FName;
    std::optional<TFXSequencePattern> FPattern;
    std::optional<TFXPNMWriter> FStream; // the open file of a plain PNM name
    bool FPNG = false;
    int FFirstNumber;
    std::string FFile;
    std::int64_t FFrameCount = 0;
};

} // namespace framix
