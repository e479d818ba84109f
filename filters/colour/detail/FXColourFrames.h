// SPDX-License-Identifier: MIT
// Small frame helpers the colour filters share: the alpha-keeping strip run and the wrapping byte
// rounding.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>

#include "framework/FXImageBuffer.h"
#include "framework/primitives/FXIppTypes.h"
#include "framework/primitives/dispatch/Fxbasicdispatcher.h"

namespace framix::detail {

// Runs `call(source, sourceStride, destination, destinationStride, roi)` (an AC4 primitive)
// strip by strip and copies each strip's alpha from the source while it is still in cache (which
// measured faster than copying each strip first and letting `call` overwrite the colours); a
// three-channel frame goes to `call` whole. Returns the first status that is not ippStsNoErr.
template <class Call>
IppStatus FXRunKeepingAlpha(bool rgb32, const std::uint8_t* source, int sourceStride,
                            std::uint8_t* destination, int destinationStride, IppiSize roi,
                            Call&& call)
{
    if (!rgb32)
        return call(source, sourceStride, destination, destinationStride, roi);
    constexpr int kStripRows = 32;
    for (int y = 0; y < roi.height; y += kStripRows) {
        const IppiSize strip{roi.width, roi.height - y < kStripRows ? roi.height - y : kStripRows};
        const std::uint8_t* s = source + std::ptrdiff_t(y) * sourceStride;
        std::uint8_t* d = destination + std::ptrdiff_t(y) * destinationStride;
        if (const IppStatus status = call(s, sourceStride, d, destinationStride, strip);
            status != ippStsNoErr)
            return status;
        ipp::ippiCopy_8u_C4CR(s + 3, sourceStride, d + 3, destinationStride, strip);
    }
    return ippStsNoErr;
}

// Round to nearest (halves to even) with an upper limit of 255 only: a result below 0 keeps its
// low eight bits, as a byte store of the rounded integer does.
inline std::uint8_t FXRoundCapWrap(double v)
{
    if (!(v < 1.0e18)) // also NaN, which finite settings cannot produce
        return 255;
    if (v < -1.0e18) // beyond 2^53 every low bit of a double is zero
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
inline bool FXIsRGB32(const IFXImageBuffer& buffer)
{
    return buffer.GetFormat() == vfRGB32;
}

} // namespace framix::detail
