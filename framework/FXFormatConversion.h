// SPDX-License-Identifier: MIT
// Pixel conversion between any two of the sixteen video formats, on raw planes.
#pragma once

#include "framework/FXPlanes.h"
#include "framework/FXVideoFormat.h"

namespace framix {

// Converts a width x height image from srcFormat to dstFormat. Every pair of the sixteen formats
// is supported; a same-format conversion copies the rows. The rules (rounding, the YUV matrix,
// chroma siting, alpha) are listed in docs/formats.md; the result is identical on every machine,
// whichever vector path runs.
//
// Plane n of each side is Data[n] with Stride[n] bytes between rows (planes as FXPlaneGeometry
// lays them out; only plane 0 for packed formats). Strides may exceed the row; bytes past the
// row are neither read nor written. src and dst must not overlap.
//
// Throws EFXError for a non-positive or oversized width or height, an ordinal outside 0..15, a
// null plane pointer or a stride smaller than the plane's row.
void FXConvertPixels(TFXVideoFormat srcFormat, const TFXConstPlanes& src, TFXVideoFormat dstFormat,
                     const TFXPlanes& dst, int width, int height);

// Checks that planes describe a width x height image in format; throws EFXError naming what is
// wrong (`what` prefixes the message: "source", "destination"). Shared with resampling.
void FXCheckPlanes(TFXVideoFormat format, const TFXConstPlanes& planes, int width, int height,
                   const char* what);

} // namespace framix
