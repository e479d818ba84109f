// SPDX-License-Identifier: MIT
// YUV4MPEG2 stream writer.
#include "bridges/FXY4MWriter.h"

#include "bridges/FXFrameLayout.h"

namespace framix {

namespace {

// Checks the header before the file is opened, so a header Y4M cannot express does not
// truncate an existing file.
const std::string& CheckedFileName(const TFXY4MStreamInfo& info, const std::string& fileName)
{
    FXFormatY4MHeader(info, fileName == "-" ? "standard output" : fileName);
    return fileName;
}

} // namespace

TFXY4MWriter::TFXY4MWriter(const std::string& fileName, TFXY4MStreamInfo info)
    : FStream(CheckedFileName(info, fileName), TFXFileMode::Write), FInfo(std::move(info))
{
    WriteHeader();
}

TFXY4MWriter::TFXY4MWriter(TFXFileStream stream, TFXY4MStreamInfo info)
    : FStream(std::move(stream)), FInfo(std::move(info))
{
    WriteHeader();
}

void TFXY4MWriter::WriteHeader()
{
    FStream.Write(FXFormatY4MHeader(FInfo, FStream.Name()));
    FStream.Flush();
}

void TFXY4MWriter::WriteFrame(TFXVideoFormat format, int width, int height,
                              const TFXConstPlanes& planes)
{
    if (format != FInfo.Format || width != FInfo.Width || height != FInfo.Height)
        FStream.Fail("cannot write a " + std::to_string(width) + "x" + std::to_string(height) +
                     " " + std::string(FXVideoFormatName(format)) + " frame into a stream of " +
                     std::to_string(FInfo.Width) + "x" + std::to_string(FInfo.Height) + " " +
                     std::string(FXVideoFormatName(FInfo.Format)) + " frames");
    WriteFrame(planes);
}

void TFXY4MWriter::WriteFrame(const TFXConstPlanes& planes)
{
    FXCheckPlanes(FStream.Name(), FInfo.Format, FInfo.Width, FInfo.Height, planes);
    FStream.Write("FRAME\n");
    for (int p = 0; p < FXFormatInfo(FInfo.Format).PlaneCount; ++p) {
        const TFXPlaneGeometry g = FXPlaneGeometry(FInfo.Format, FInfo.Width, FInfo.Height, p);
        FStream.WriteRows(planes.Data[p], planes.Stride[p], std::size_t(g.RowBytes), g.Rows);
    }
    FStream.Flush();
    ++FFrameCount;
}

} // namespace framix
