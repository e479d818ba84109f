// SPDX-License-Identifier: MIT
// YUV4MPEG2 stream reader.
#include "bridges/FXY4MReader.h"

#include "bridges/FXFrameLayout.h"

namespace framix {

namespace {

// Far above any real header (ffmpeg writes under 100 bytes) but bounded against garbage.
constexpr std::size_t kMaxHeaderBytes = 64 * 1024;

std::string Excerpt(const std::string& text)
{
    std::string out;
    for (char c : text.substr(0, 20))
        out += (c >= 32 && c < 127) ? c : '?';
    return out + (text.size() > 20 ? "..." : "");
}

} // namespace

TFXY4MReader::TFXY4MReader(const std::string& fileName) : FStream(fileName, TFXFileMode::Read)
{
    ReadHeader();
}

TFXY4MReader::TFXY4MReader(TFXFileStream stream) : FStream(std::move(stream))
{
    ReadHeader();
}

void TFXY4MReader::ReadHeader()
{
    switch (FStream.ReadLine(FLine, kMaxHeaderBytes)) {
    case TFXLineResult::End:
        FStream.Fail("empty stream, expected a YUV4MPEG2 header");
    case TFXLineResult::Partial:
        if (FLine.rfind("YUV4MPEG2", 0) == 0)
            FStream.Fail("truncated stream header (no line end)");
        break; // the magic check below gives the clearer message
    case TFXLineResult::Line:
        break;
    }
    FInfo = FXParseY4MHeader(FLine, FStream.Name());
}

bool TFXY4MReader::ReadFrame(const TFXPlanes& planes)
{
    FXCheckPlanes(FStream.Name(), FInfo.Format, FInfo.Width, FInfo.Height, planes);
    const std::string frame = "frame " + std::to_string(FFrameCount + 1);
    const std::int64_t expected = FXImageBytes(FInfo.Format, FInfo.Width, FInfo.Height);
    switch (FStream.ReadLine(FLine, kMaxHeaderBytes)) {
    case TFXLineResult::End:
        return false;
    case TFXLineResult::Partial:
        throw EFXIncompleteFrame(FStream.Name() + ": " + frame +
                                     " is incomplete: the stream ends inside its FRAME line",
                                 0, expected);
    case TFXLineResult::Line:
        break;
    }
    // FRAME may carry parameters after a space; none change how the planes are laid out.
    if (FLine.rfind("FRAME", 0) != 0 || (FLine.size() > 5 && FLine[5] != ' '))
        FStream.Fail("expected 'FRAME' before " + frame + ", found '" + Excerpt(FLine) + "'");

    std::int64_t got = 0;
    for (int p = 0; p < FXFormatInfo(FInfo.Format).PlaneCount; ++p) {
        const TFXPlaneGeometry g = FXPlaneGeometry(FInfo.Format, FInfo.Width, FInfo.Height, p);
        const std::int64_t n =
            FStream.ReadRows(planes.Data[p], planes.Stride[p], std::size_t(g.RowBytes), g.Rows);
        got += n;
        if (n < std::int64_t(g.RowBytes) * g.Rows)
            throw EFXIncompleteFrame(
                FStream.Name() + ": " + frame + " is incomplete: the stream ends after " +
                    std::to_string(got) + " of its " + std::to_string(expected) + " bytes",
                got, expected);
    }
    ++FFrameCount;
    return true;
}

} // namespace framix
