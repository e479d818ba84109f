// SPDX-License-Identifier: MIT
// Writes YUV4MPEG2 streams (files, pipes, standard output) from plane memory.
#pragma once

#include <cstdint>
#include <string>

#include "bridges/FXFileStream.h"
#include "bridges/FXY4MFormat.h"
#include "framework/FXPlanes.h"

namespace framix {

// The header is written (and flushed) on construction; every frame is flushed as it is
// written, so a program reading the other end of a pipe sees whole frames at once.
class TFXY4MWriter {
public:
    // "-" writes standard output. Throws EFXError for a header Y4M cannot express.
    TFXY4MWriter(const std::string& fileName, TFXY4MStreamInfo info);
    TFXY4MWriter(TFXFileStream stream, TFXY4MStreamInfo info);

    const TFXY4MStreamInfo& Info() const { return FInfo; }

    // Writes one frame in the header's format and size.
    void WriteFrame(const TFXConstPlanes& planes);
    // The same, after checking the frame is what the header announced; a mismatch is an
    // EFXError and nothing is written, so the file stays readable.
    void WriteFrame(TFXVideoFormat format, int width, int height, const TFXConstPlanes& planes);

    std::int64_t FrameCount() const { return FFrameCount; }

private:
    void WriteHeader();

    TFXFileStream FStream;
    TFXY4MStreamInfo FInfo;
    std::int64_t FFrameCount = 0;
};

} // namespace framix
