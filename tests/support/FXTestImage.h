// SPDX-License-Identifier: MIT
// Test images in any pixel format, with sentinel-filled row padding and exact-size planes.
#pragma once

#include <initializer_list>
#include <random>
#include <vector>

#include "framework/FXPlanes.h"
#include "framework/FXVideoFormat.h"

namespace framix::test {

inline constexpr std::uint8_t kSentinel = 0xA5;

// An image in any format with its own planes; rows may carry padding filled with sentinel bytes.
// Each plane is allocated to the exact byte so a read past the last row is caught by ASan.
class TTestImage {
public:
    TTestImage(TFXVideoFormat format, int width, int height, int pad = 0)
        : FFormat(format), FWidth(width), FHeight(height)
    {
        Allocate(pad);
    }

    // Random pixels from `seed`; seed 0 gives a black image.
    TTestImage(TFXVideoFormat format, int width, int height, int pad, std::uint32_t seed)
        : TTestImage(format, width, height, pad)
    {
        if (seed)
            Randomize(seed);
        else
            Fill({0});
    }

    std::uint8_t* Row(int plane, int y) { return Pixel(plane, 0, y); }

private:
    void Allocate(int pad)
    {
        for (int p = 0; p < FXFormatInfo(FFormat).PlaneCount; ++p) {
            const TFXPlaneGeometry g = FXPlaneGeometry(FFormat, FWidth, FHeight, p);
            FStride[p] = g.RowBytes + pad;
            FMem[p].assign(size_t(FStride[p]) * size_t(g.Rows - 1) + size_t(g.RowBytes), kSentinel);
        }
    }

public:

    // Random pixels, made canonical: RGB555's unused bit clear, and the spare luma of an odd-width
    // packed 4:2:2 row equal to the last pixel's (what every conversion writes).
    TTestImage& Randomize(unsigned seed)
    {
        std::mt19937 rng(seed);
        ForEachRow([&](std::uint8_t* row, int bytes, int) {
            for (int i = 0; i < bytes; ++i)
                row[i] = std::uint8_t(rng());
        });
        if (FFormat == vfRGB555)
            ForEachRow([](std::uint8_t* row, int bytes, int) {
                for (int i = 1; i < bytes; i += 2)
                    row[i] &= 0x7F;
            });
        if ((FFormat == vfYUY2 || FFormat == vfUYVY) && FWidth % 2) {
            const int y0 = FFormat == vfYUY2 ? 0 : 1;
            ForEachRow([&](std::uint8_t* row, int, int) {
                row[2 * FWidth + y0] = row[2 * (FWidth - 1) + y0];
            });
        }
        return *this;
    }

    // Fills every pixel with one value: the bytes of a packed pixel, or one sample per plane
    // (Y, U, V, A) for planar formats.
    TTestImage& Fill(const std::vector<std::uint8_t>& v)
    {
        const bool planar = FXFormatInfo(FFormat).PlaneCount > 1;
        ForEachRow([&](std::uint8_t* row, int bytes, int plane) {
            for (int i = 0; i < bytes; ++i)
                row[i] = !planar                           ? v[size_t(i) % v.size()]
                         : FFormat == vfNV12 && plane == 1 ? v[1 + size_t(i % 2)]
                                                           : v[size_t(plane) % v.size()];
        });
        return *this;
    }

    TFXPlanes Planes()
    {
        TFXPlanes p;
        for (int i = 0; i < 4; ++i) {
            p.Data[i] = FMem[i].empty() ? nullptr : FMem[i].data();
            p.Stride[i] = FStride[i];
        }
        return p;
    }
    TFXConstPlanes ConstPlanes() const { return const_cast<TTestImage*>(this)->Planes(); }

    std::uint8_t* Pixel(int plane, int x, int y)
    {
        return FMem[plane].data() + size_t(y) * size_t(FStride[plane]) + size_t(x);
    }

    bool PaddingIntact() const
    {
        for (int p = 0; p < 4; ++p) {
            if (FMem[p].empty())
                continue;
            const TFXPlaneGeometry g = FXPlaneGeometry(FFormat, FWidth, FHeight, p);
            for (int y = 0; y + 1 < g.Rows; ++y)
                for (int i = g.RowBytes; i < FStride[p]; ++i)
                    if (FMem[p][size_t(y) * size_t(FStride[p]) + size_t(i)] != kSentinel)
                        return false;
        }
        return true;
    }

    // The pixel bytes of every plane, row after row, without padding.
    std::vector<std::uint8_t> Bytes() const
    {
        std::vector<std::uint8_t> out;
        const_cast<TTestImage*>(this)->ForEachRow(
            [&](std::uint8_t* row, int bytes, int) { out.insert(out.end(), row, row + bytes); });
        return out;
    }

    TFXVideoFormat Format() const { return FFormat; }
    int Width() const { return FWidth; }
    int Height() const { return FHeight; }

private:
    template <class F> void ForEachRow(F&& fn)
    {
        for (int p = 0; p < FXFormatInfo(FFormat).PlaneCount; ++p) {
            const TFXPlaneGeometry g = FXPlaneGeometry(FFormat, FWidth, FHeight, p);
            for (int y = 0; y < g.Rows; ++y)
                fn(FMem[p].data() + size_t(y) * size_t(FStride[p]), g.RowBytes, p);
        }
    }

    TFXVideoFormat FFormat;
    int FWidth, FHeight;
    std::vector<std::uint8_t> FMem[4];
    int FStride[4]{};
};

} // namespace framix::test
