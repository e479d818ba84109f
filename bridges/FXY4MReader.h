// SPDX-License-Identifier: MIT
// Reads YUV4MPEG2 streams (files, pipes, standard input) frame by frame into plane memory.
#pragma once

#include <cstdint>
#include <string>

#include "bridges/FXFileStream.h"
#include "bridges/FXY4MFormat.h"
#include "framework/FXPlanes.h"

namespace framix {

// The stream header is read on construction, so Info() tells the caller what to allocate.
// Frames are read straight into the caller's planes (any stride at least the row size), with
// no intermediate copy. Samples of mono16 streams are little-endian, as in memory.
//
//   TFXY4MReader reader("-");                      // e.g. ffmpeg ... -f yuv4mpegpipe - |
//   while (reader.ReadFrame(planesOf(buffer))) ...
class TFXY4MReader {
public:
    // "-" reads standard input.
    explicit TFXY4MReader(const std::string& fileName);
    explicit TFXY4MReader(TFXFileStream stream);

    const TFXY4MStreamInfo& Info() const { return FInfo; }

    // Reads the next frame in Info().Format at Info().Width x Info().Height. Returns false at
    // the end of the stream. Throws EFXIncompleteFrame when the stream ends inside a frame
    // (all earlier frames were delivered), EFXError for anything malformed.
    bool ReadFrame(const TFXPlanes& planes);

    // Frames delivered so far.
    std::int64_t FrameCount() const { return FFrameCount; }

private:
    void ReadHeader();

    TFXFileStream FStream;
    TFXY4MStreamInfo FInfo;
    std::int64_t FFrameCount = 0;
    std::string FLine;
};

} // namespace framix
