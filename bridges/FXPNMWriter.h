// SPDX-License-Identifier: MIT
// Writes frames as PGM, PPM or PAM images, the type following the frame format.
#pragma once

#include <string>
#include <vector>

#include "bridges/FXFileStream.h"
#include "framework/FXPlanes.h"
#include "framework/FXVideoFormat.h"

namespace framix {

// vfGray8 -> P5 (maxval 255), vfGray16 -> P5 (maxval 65535), vfRGB24 -> P6, vfRGB48 -> P6
// (maxval 65535), vfRGB32 -> P7 RGB_ALPHA, vfRGBA64 -> P7 RGB_ALPHA (maxval 65535). Reading
// the result with TFXPNMReader gives the same format and bytes back. Each image is flushed
// when written; several frames written to one stream follow one another, which netpbm tools
// and ffmpeg's image pipe read as a sequence.
class TFXPNMWriter {
public:
    // "-" writes standard output.
    explicit TFXPNMWriter(const std::string& fileName);
    explicit TFXPNMWriter(TFXFileStream stream);

    static bool CanWrite(TFXVideoFormat format);

    void WriteFrame(TFXVideoFormat format, int width, int height, const TFXConstPlanes& planes);

    const std::string& Name() const { return FStream.Name(); }

private:
    TFXFileStream FStream;
    std::vector<std::uint8_t> FRow;
};

} // namespace framix
