// SPDX-License-Identifier: MIT
// Small frame helpers the colour filters share: the alpha copy and the wrapping byte rounding.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstring>

#include "framework/FXImageBuffer.h"
#include "framework/primitives/FXIppTypes.h"

namespace framix::detail {

// Copies byte 3 of every four-byte pixel from `source` to `destination` (the alpha channel of
// vfRGB32 frames), row by row with each side's stride.
inline void FXCopyAlpha(const std::uint8_t* source, int sourceStride, std::uint8_t* destination,
                        int destinationStride, IppiSize size)
{
    for (int y = 0; y < size.height; ++y) {
        const std::uint8_t* in = source + std::ptrdiff_t(y) * sourceStride + 3;
        std::uint8_t* out = destination + std::ptrdiff_t(y) * destinationStride + 3;
        for (int x = 0; x < size.width; ++x)
            out[4 * x] = in[4 * x];
    }
}

// Round to nearest (halves to even) with an upper limit of 255 only: a result below 0 keeps its
// low eight bits, as a byte store of the rounded integer does.
inline std::uint8_t FXRoundCapWrap(double v)
{
    if (!(v < 1.0e18))  // also NaN, which finite settings cannot produce
        return 255;
    if (v < -1.0e18)    // beyond 2^53 every low bit of a double is zero
        return 0;
    const std::int64_t r = std::int64_t(std::nearbyint(v));
    return r > 255 ? 255 : std::uint8_t(r & 0xFF);
}

// A frame's whole size as primitives take it.
inline IppiSize FXRoiOf(const IFXImageBuffer& buffer)
{
    return {buffer.GetWidth(), buffer.GetHeight()};
}

// The four-entry format switch of the colour filters: vfRGB32 or (everything else) vfRGB24.
inline bool FXIsRGB32(const IFXImageBuffer& buffer) { return buffer.GetFormat() == vfRGB32; }

} // namespace framix::detail
