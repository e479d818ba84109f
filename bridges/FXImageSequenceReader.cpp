// SPDX-License-Identifier: MIT
// Numbered image sequences and still images as a frame source.
#include "bridges/FXImageSequenceReader.h"

#include <cstring>
#include <filesystem>

#include "bridges/FXFrameLayout.h"

namespace framix {

namespace {

bool Exists(const std::string& fileName)
{
    std::error_code error;
    return std::filesystem::is_regular_file(fileName, error) ||
           std::filesystem::is_fifo(fileName, error);
}

std::string Describe(TFXVideoFormat format, int width, int height)
{
    return std::to_string(width) + "x" + std::to_string(height) + " " +
           std::string(FXVideoFormatName(format));
}

} // namespace

TFXImageSequenceReader::TFXImageSequenceReader(const std::string& fileNameOrPattern)
{
    if (fileNameOrPattern != "-" && !Exists(fileNameOrPattern)) {
        TFXSequencePattern pattern(fileNameOrPattern);
        if (pattern.IsNumbered()) {
            FNumber = Exists(pattern.FileName(0)) ? 0 : 1;
            if (!Exists(pattern.FileName(FNumber)))
                throw EFXError(fileNameOrPattern + ": no image of the sequence found (looked for " +
                               pattern.FileName(0) + " and " + pattern.FileName(1) + ")");
            Open(pattern.FileName(FNumber));
            FPattern = std::move(pattern);
        } else {
            Open(pattern.FileName(0)); // reports the missing file
        }
    } else {
        Open(fileNameOrPattern);
    }
    if (FPNM) {
        FFormat = FPNM->Info().Format;
        FWidth = FPNM->Info().Width;
        FHeight = FPNM->Info().Height;
    } else {
        FFormat = FPNG->Format;
        FWidth = FPNG->Width;
        FHeight = FPNG->Height;
    }
}

void TFXImageSequenceReader::Open(const std::string& fileName)
{
    FFile = fileName;
    FPNM.reset();
    FPNG.reset();
    if (FXIsPNGFileName(fileName))
        FPNG = FXReadPNG(fileName);
    else
        FPNM.emplace(fileName);
}

bool TFXImageSequenceReader::Advance()
{
    if (FPattern) {
        const std::string next = FPattern->FileName(FNumber + 1);
        if (!Exists(next))
            return false;
        ++FNumber;
        Open(next);
        return true;
    }
    return FPNM && FPNM->NextImage();
}

bool TFXImageSequenceReader::ReadFrame(const TFXPlanes& planes)
{
    // The next image is opened only now, so its errors never cost the frame before it.
    if (FAdvance) {
        FAdvance = false;
        FEnded = !Advance();
    }
    if (FEnded)
        return false;
    const TFXVideoFormat format = FPNM ? FPNM->Info().Format : FPNG->Format;
    const int width = FPNM ? FPNM->Info().Width : FPNG->Width;
    const int height = FPNM ? FPNM->Info().Height : FPNG->Height;
    if (format != FFormat || width != FWidth || height != FHeight)
        throw EFXError(FFile + ": the image is " + Describe(format, width, height) +
                       ", but the sequence began with " + Describe(FFormat, FWidth, FHeight));
    if (FPNM) {
        FPNM->ReadPixels(planes);
    } else {
        FXCheckPlanes(FFile, FFormat, FWidth, FHeight, planes);
        const TFXConstPlanes source = FPNG->Planes();
        const std::size_t rowBytes =
            std::size_t(FXPlaneGeometry(FFormat, FWidth, FHeight, 0).RowBytes);
        for (int y = 0; y < FHeight; ++y)
            std::memcpy(planes.Data[0] + std::ptrdiff_t(y) * planes.Stride[0],
                        source.Data[0] + std::ptrdiff_t(y) * source.Stride[0], rowBytes);
    }
    ++FFrameCount;
    FAdvance = true;
    return true;
}

} // namespace framix
