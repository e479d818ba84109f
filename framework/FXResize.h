// SPDX-License-Identifier: MIT
// Bilinear resampling of an image in any of the sixteen video formats, on raw planes.
#pragma once

#include "framework/FXPlanes.h"
#include "framework/FXVideoFormat.h"

namespace framix {

// Resamples src (srcWidth x srcHeight) into dst (dstWidth x dstHeight), both in `format`.
//
// Bilinear, per channel, with pixel centres aligned: destination pixel x samples the source at
// (x + 0.5) * srcWidth / dstWidth - 0.5, clamped to the first and last pixel (the same
// vertically); positions are truncated to 1/1024 pixel and the weighted sum is rounded to
// nearest. Equal sizes copy; a constant image stays constant at every size.
//
// Packed formats resample each channel in place (5/6-bit fields of RGB555/RGB565 in their own
// units, 16-bit samples at 16 bits). YUV formats resample luma, each chroma plane (or the
// interleaved chroma of NV12, YUY2 and UYVY) and alpha separately, each on its own grid: a
// 4:2:0 chroma plane of a 5x3 image is 3x2, and it is scaled from 3x2 to the destination's
// chroma size. src and dst must not overlap.
//
// Throws EFXError for a non-positive size, an ordinal outside 0..15, a null plane or a stride
// smaller than the plane's row (of either image).
void FXResizePixels(TFXVideoFormat format, const TFXConstPlanes& src, int srcWidth, int srcHeight,
                    const TFXPlanes& dst, int dstWidth, int dstHeight);

} // namespace framix
