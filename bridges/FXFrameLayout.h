// SPDX-License-Identifier: MIT
// Size limits and plane checks shared by the file readers and writers.
#pragma once

#include <cstdint>
#include <string>

#include "framework/FXImageBuffer.h"
#include "framework/FXPlanes.h"
#include "framework/FXVideoFormat.h"

namespace framix {

// Image sizes a file may declare: sides up to kFXMaxImageSide (the frames' own limit), and at
// most kFXMaxImagePixels in all. A header is untrusted input: these bounds keep every size
// computation far from overflow and refuse absurd allocations before they happen.
inline constexpr std::int64_t kFXMaxImagePixels = std::int64_t(16384) * 16384;

// Throws EFXError("<name>: ...") unless 1 <= width, height <= kFXMaxImageSide and
// width * height <= kFXMaxImagePixels.
void FXCheckImageSize(const std::string& name, std::int64_t width, std::int64_t height);

// The interleaved format of `channels` samples per pixel (1 gray, 3 RGB, 2 or 4 with alpha:
// gray with alpha is delivered as RGB with alpha) of 1 or 2 bytes each; throws EFXError
// naming `name` for other channel counts.
TFXVideoFormat FXInterleavedFormat(const std::string& name, int channels, int bytesPerSample);

// Bytes of all planes of one image without row padding (what a Y4M frame holds).
std::int64_t FXImageBytes(TFXVideoFormat format, int width, int height);

// Throws EFXError("<name>: ...") unless every plane the format uses has memory and a stride
// of at least its row bytes, so a caller's mistake is reported instead of overrunning memory.
void FXCheckPlanes(const std::string& name, TFXVideoFormat format, int width, int height,
                   const TFXConstPlanes& planes);

} // namespace framix
