// SPDX-License-Identifier: MIT
// PNG still images through libpng, when the library was built with it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "framework/FXPlanes.h"
#include "framework/FXVideoFormat.h"

namespace framix {

// True when libpng was found at build time; otherwise the functions below throw EFXError.
bool FXPNGAvailable();

// True for names ending in .png (any case): the file bridges choose PNG by the name.
bool FXIsPNGFileName(const std::string& fileName);

// Writes one frame as a PNG file ("-" = standard output): vfGray8 and vfGray16 as gray,
// vfRGB24 and vfRGB48 as RGB, vfRGB32 and vfRGBA64 as RGB with alpha. Samples are stored
// unchanged (no gamma or colour-space conversion), 16-bit ones big-endian as PNG wants.
void FXWritePNG(const std::string& fileName, TFXVideoFormat format, int width, int height,
                const TFXConstPlanes& planes);

// A decoded PNG in its own memory.
struct TFXPNGImage {
    TFXVideoFormat Format = vfGray8;
    int Width = 0;
    int Height = 0;
    int Stride = 0;
    std::vector<std::uint8_t> Pixels;

    TFXConstPlanes Planes() const;
};

// Reads a PNG file into the format of the same list: palettes expand to RGB, transparency
// becomes alpha (gray with alpha is delivered as RGB with alpha), low bit depths widen to 8.
TFXPNGImage FXReadPNG(const std::string& fileName);

} // namespace framix
