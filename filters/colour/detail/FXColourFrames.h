// SPDX-License-Identifier: MIT
// Small frame helpers the colour filters share: the alpha copy and the wrapping byte rounding.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "framework/FXImageBuffer.h"
#include "framework/primitives/FXIppTypes.h"

namespace framix::detail {

// Copies byte 3 of every four-byte pixel from `source` to `destination` (the alpha channel of
// vfRGB32 frames), row by row with each side's stride. Whole pixels are merged as words so the
// loop vectorises.
inline void FXCopyAlpha(const std::uint8_t* source, int sourceStride, std::uint8_t* destination,
                        int destinationStride, IppiSize size)
{
    for (int y = 0; y < size.height; ++y) {
        const std::uint8_t* in = source + std::ptrdiff_t(y) * sourceStride;
        std::uint8_t* out = destination + std::ptrdiff_t(y) * destinationStride;
        int x = 0;
#if defined(__SSE2__)
        const __m128i alpha = _mm_set1_epi32(int(0xFF000000u));
        for (; x + 4 <= size.width; x += 4) {
            const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + 4 * x));
            __m128i* at = reinterpret_cast<__m128i*>(out + 4 * x);
            const __m128i b = _mm_loadu_si128(at);
            _mm_storeu_si128(at, _mm_or_si128(_mm_andnot_si128(alpha, b), _mm_and_si128(alpha, a)));
        }
#endif
        for (; x < size.width; ++x) {
            std::uint32_t a, b;
            std::memcpy(&a, in + 4 * x, 4);
            std::memcpy(&b, out + 4 * x, 4);
            b = (b & 0x00FFFFFFu) | (a & 0xFF000000u);
            std::memcpy(out + 4 * x, &b, 4);
        }
    }
}

// Runs `call(source, sourceStride, destination, destinationStride, roi)` (an AC4 primitive)
// strip by strip and copies each strip's alpha from the source while it is still in cache; a
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
        FXCopyAlpha(s, sourceStride, d, destinationStride, strip);
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
