// SPDX-License-Identifier: MIT
// PNG still images through libpng.
#include "bridges/FXPNGFile.h"

#include "bridges/FXFileStream.h"
#include "bridges/FXFrameLayout.h"
#include "framework/FXError.h"

#include <strings.h>

#ifdef FRAMIX_HAVE_PNG
#include <csetjmp>
#include <cstdio>
#include <png.h>
#endif

namespace framix {

bool FXIsPNGFileName(const std::string& fileName)
{
    const std::size_t dot = fileName.rfind('.');
    return dot != std::string::npos && fileName.size() - dot == 4 &&
           strncasecmp(fileName.c_str() + dot, ".png", 4) == 0;
}

TFXConstPlanes TFXPNGImage::Planes() const
{
    TFXConstPlanes planes;
    planes.Data[0] = Pixels.data();
    planes.Stride[0] = Stride;
    return planes;
}

#ifndef FRAMIX_HAVE_PNG

bool FXPNGAvailable()
{
    return false;
}

void FXWritePNG(const std::string& fileName, TFXVideoFormat, int, int, const TFXConstPlanes&)
{
    throw EFXError(fileName + ": PNG support was not built into this library (libpng missing)");
}

TFXPNGImage FXReadPNG(const std::string& fileName)
{
    throw EFXError(fileName + ": PNG support was not built into this library (libpng missing)");
}

#else

namespace {

// libpng reports errors by longjmp. Everything between a setjmp and the libpng calls it
// guards is plain C state, so the jump never skips a C++ destructor.
struct TPngState {
    png_structp Png = nullptr;
    png_infop Info = nullptr;
    char Message[200] = "";
};

void OnPngError(png_structp png, png_const_charp message)
{
    auto* state = static_cast<TPngState*>(png_get_error_ptr(png));
    std::snprintf(state->Message, sizeof state->Message, "%s", message);
    png_longjmp(png, 1);
}

void OnPngWarning(png_structp, png_const_charp) {} // a warning does not stop an image

bool WritePngImage(TPngState* s, std::FILE* file, png_uint_32 width, png_uint_32 height,
                   int bitDepth, int colorType, png_bytepp rows)
{
    if (setjmp(png_jmpbuf(s->Png)))
        return false;
    png_init_io(s->Png, file);
    png_set_IHDR(s->Png, s->Info, width, height, bitDepth, colorType, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    // A logger writes many frames: fast compression, still far smaller than raw pixels.
    png_set_compression_level(s->Png, 2);
    png_write_info(s->Png, s->Info);
    if (colorType != PNG_COLOR_TYPE_GRAY)
        png_set_bgr(s->Png);
    if (bitDepth == 16)
        png_set_swap(s->Png); // memory is little-endian
    png_write_image(s->Png, rows);
    png_write_end(s->Png, nullptr);
    return true;
}

// Reads the header and sets the transforms; returns channels and bit depth after them.
bool ReadPngHeader(TPngState* s, std::FILE* file, png_uint_32* width, png_uint_32* height,
                   int* channels, int* bitDepth)
{
    if (setjmp(png_jmpbuf(s->Png)))
        return false;
    png_init_io(s->Png, file);
    png_set_sig_bytes(s->Png, 8);
    png_read_info(s->Png, s->Info);
    const int colorType = png_get_color_type(s->Png, s->Info);
    const int depth = png_get_bit_depth(s->Png, s->Info);
    const bool transparency = png_get_valid(s->Png, s->Info, PNG_INFO_tRNS) != 0;
    if (colorType == PNG_COLOR_TYPE_PALETTE)
        png_set_palette_to_rgb(s->Png);
    if (colorType == PNG_COLOR_TYPE_GRAY && depth < 8)
        png_set_expand_gray_1_2_4_to_8(s->Png);
    if (transparency)
        png_set_tRNS_to_alpha(s->Png);
    if ((colorType & PNG_COLOR_MASK_COLOR) == 0 &&
        ((colorType & PNG_COLOR_MASK_ALPHA) != 0 || transparency))
        png_set_gray_to_rgb(s->Png);
    if (depth == 16)
        png_set_swap(s->Png);
    png_set_bgr(s->Png);
    png_set_interlace_handling(s->Png);
    png_read_update_info(s->Png, s->Info);
    *width = png_get_image_width(s->Png, s->Info);
    *height = png_get_image_height(s->Png, s->Info);
    *channels = png_get_channels(s->Png, s->Info);
    *bitDepth = png_get_bit_depth(s->Png, s->Info);
    return true;
}

bool ReadPngRows(TPngState* s, png_bytepp rows)
{
    if (setjmp(png_jmpbuf(s->Png)))
        return false;
    png_read_image(s->Png, rows);
    png_read_end(s->Png, nullptr);
    return true;
}

} // namespace

bool FXPNGAvailable()
{
    return true;
}

void FXWritePNG(const std::string& fileName, TFXVideoFormat format, int width, int height,
                const TFXConstPlanes& planes)
{
    int colorType;
    switch (format) {
    case vfGray8:
    case vfGray16:
        colorType = PNG_COLOR_TYPE_GRAY;
        break;
    case vfRGB24:
    case vfRGB48:
        colorType = PNG_COLOR_TYPE_RGB;
        break;
    case vfRGB32:
    case vfRGBA64:
        colorType = PNG_COLOR_TYPE_RGB_ALPHA;
        break;
    default:
        throw EFXError(fileName + ": PNG cannot hold " + std::string(FXVideoFormatName(format)) +
                       " frames (it holds vfGray8, vfGray16, vfRGB24, vfRGB32, vfRGB48 and "
                       "vfRGBA64)");
    }
    FXCheckPlanes(fileName, format, width, height, planes);
    std::vector<png_bytep> rows(static_cast<std::size_t>(height));
    for (int y = 0; y < height; ++y)
        rows[std::size_t(y)] =
            const_cast<png_bytep>(planes.Data[0] + std::ptrdiff_t(y) * planes.Stride[0]);

    TFXFileStream stream(fileName, TFXFileMode::Write);
    TPngState s;
    s.Png = png_create_write_struct(PNG_LIBPNG_VER_STRING, &s, OnPngError, OnPngWarning);
    s.Info = s.Png ? png_create_info_struct(s.Png) : nullptr;
    const bool ok =
        s.Info && WritePngImage(&s, stream.Handle(), png_uint_32(width), png_uint_32(height),
                                FXFormatInfo(format).BytesPerSample * 8, colorType, rows.data());
    png_destroy_write_struct(&s.Png, &s.Info);
    if (!ok)
        stream.Fail(std::string("cannot write PNG (") +
                    (s.Message[0] ? s.Message : "out of memory") + ")");
    stream.Flush();
}

TFXPNGImage FXReadPNG(const std::string& fileName)
{
    TFXFileStream stream(fileName, TFXFileMode::Read);
    png_byte signature[8] = {};
    if (stream.Read(signature, 8) != 8 || png_sig_cmp(signature, 0, 8) != 0)
        stream.Fail("not a PNG image");
    TPngState s;
    s.Png = png_create_read_struct(PNG_LIBPNG_VER_STRING, &s, OnPngError, OnPngWarning);
    s.Info = s.Png ? png_create_info_struct(s.Png) : nullptr;
    struct TCleanup {
        TPngState* S;
        ~TCleanup() { png_destroy_read_struct(&S->Png, &S->Info, nullptr); }
    } cleanup{&s};
    auto fail = [&] {
        stream.Fail(std::string("cannot read PNG (") +
                    (s.Message[0] ? s.Message : "out of memory") + ")");
    };
    png_uint_32 width = 0, height = 0;
    int channels = 0, bitDepth = 0;
    if (!s.Info || !ReadPngHeader(&s, stream.Handle(), &width, &height, &channels, &bitDepth))
        fail();
    FXCheckImageSize(stream.Name(), width, height);
    TFXPNGImage image;
    image.Format = FXInterleavedFormat(stream.Name(), channels, bitDepth / 8);
    image.Width = int(width);
    image.Height = int(height);
    image.Stride = FXPlaneGeometry(image.Format, image.Width, image.Height, 0).RowBytes;
    if (png_get_rowbytes(s.Png, s.Info) != std::size_t(image.Stride))
        stream.Fail("unexpected PNG row size");
    image.Pixels.resize(std::size_t(image.Stride) * height);
    std::vector<png_bytep> rows(height);
    for (png_uint_32 y = 0; y < height; ++y)
        rows[y] = image.Pixels.data() + std::size_t(y) * std::size_t(image.Stride);
    if (!ReadPngRows(&s, rows.data()))
        fail();
    return image;
}

#endif

} // namespace framix
