// SPDX-License-Identifier: MIT
// PGM, PPM and PAM writer.
#include "bridges/FXPNMWriter.h"

#include "bridges/FXFrameLayout.h"
#include "bridges/detail/FXPNMRow.h"

namespace framix {

TFXPNMWriter::TFXPNMWriter(const std::string& fileName) : FStream(fileName, TFXFileMode::Write) {}

TFXPNMWriter::TFXPNMWriter(TFXFileStream stream) : FStream(std::move(stream)) {}

bool TFXPNMWriter::CanWrite(TFXVideoFormat format)
{
    return format == vfGray8 || format == vfGray16 || format == vfRGB24 || format == vfRGB48 ||
           format == vfRGB32 || format == vfRGBA64;
}

void TFXPNMWriter::WriteFrame(TFXVideoFormat format, int width, int height,
                              const TFXConstPlanes& planes)
{
    if (!CanWrite(format))
        FStream.Fail("PNM and PAM images cannot hold " + std::string(FXVideoFormatName(format)) +
                     " frames (they hold vfGray8, vfGray16, vfRGB24, vfRGB32, vfRGB48 and "
                     "vfRGBA64)");
    FXCheckPlanes(FStream.Name(), format, width, height, planes);
    const TFXFormatInfo& info = FXFormatInfo(format);
    const int wide = info.BytesPerSample; // 1 or 2 bytes per sample
    const int channels = info.BytesPerPixel / wide;
    const std::string size = std::to_string(width) + ' ' + std::to_string(height);
    const std::string maxVal = wide == 2 ? "65535" : "255";
    if (channels == 4)
        FStream.Write("P7\nWIDTH " + std::to_string(width) + "\nHEIGHT " + std::to_string(height) +
                      "\nDEPTH 4\nMAXVAL " + maxVal + "\nTUPLTYPE RGB_ALPHA\nENDHDR\n");
    else
        FStream.Write((channels == 1 ? "P5\n" : "P6\n") + size + '\n' + maxVal + '\n');

    if (format == vfGray8) {
        FStream.WriteRows(planes.Data[0], planes.Stride[0], std::size_t(width), height);
    } else {
        FRow.resize(std::size_t(width) * std::size_t(info.BytesPerPixel));
        for (int y = 0; y < height; ++y) {
            detail::FXReorderPNMRow(planes.Data[0] + std::ptrdiff_t(y) * planes.Stride[0],
                                    FRow.data(), width, channels, wide);
            FStream.Write(FRow.data(), FRow.size());
        }
    }
    FStream.Flush();
}

} // namespace framix
