// SPDX-License-Identifier: MIT
// Numbered image sequences and single image files as a frame sink.
#include "bridges/FXImageSequenceWriter.h"

#include "bridges/FXPNGFile.h"
#include "framework/FXError.h"

namespace framix {

TFXImageSequenceWriter::TFXImageSequenceWriter(const std::string& fileNameOrPattern,
                                               int firstNumber)
    : FName(fileNameOrPattern), FFirstNumber(firstNumber)
{
    if (fileNameOrPattern != "-") {
        TFXSequencePattern pattern(fileNameOrPattern);
        if (pattern.IsNumbered())
            FPattern = std::move(pattern);
        else
            FName = pattern.FileName(0);
    }
    FPNG = FXIsPNGFileName(FName);
    if (FPNG && !FXPNGAvailable())
        throw EFXError(FName + ": PNG support was not built into this library (libpng missing)");
}

void TFXImageSequenceWriter::WriteFrame(TFXVideoFormat format, int width, int height,
                                        const TFXConstPlanes& planes)
{
    if (!FPNG && !TFXPNMWriter::CanWrite(format))
        throw EFXError(FName + ": PNM and PAM images cannot hold " +
                       std::string(FXVideoFormatName(format)) +
                       " frames (they hold vfGray8, vfGray16, vfRGB24, vfRGB32, vfRGB48 and "
                       "vfRGBA64)");
    FFile = FPattern ? FPattern->FileName(FFirstNumber + int(FFrameCount)) : FName;
    if (FPNG) {
        FXWritePNG(FFile, format, width, height, planes);
    } else if (FPattern) {
        TFXPNMWriter(FFile).WriteFrame(format, width, height, planes);
    } else {
        if (!FStream)
            FStream.emplace(FFile);
        FStream->WriteFrame(format, width, height, planes);
    }
    ++FFrameCount;
}

} // namespace framix
