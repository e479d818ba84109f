// SPDX-License-Identifier: MIT
// Scalar reference conversion between every pair of pixel formats: the definition of each result.
#include <algorithm>
#include <cstring>

#include "framework/FXVideoFormat.h"
#include "framework/detail/FXConvertKernels.h"

namespace framix::conv {

namespace {

// ---------------------------------------------------------------- packed pixel codecs
// A pixel on its way between two packed formats, at 8 or 16 bits per channel.
struct TPx {
    std::uint32_t B, G, R, A;
};

TPx Widen(TPx p)
{
    return {FXWiden8(p.B), FXWiden8(p.G), FXWiden8(p.R), FXWiden8(p.A)};
}
TPx Narrow(TPx p)
{
    return {FXNarrow16(p.B), FXNarrow16(p.G), FXNarrow16(p.R), FXNarrow16(p.A)};
}

std::uint32_t Load16(const std::uint8_t* p)
{
    return std::uint32_t(p[0]) | std::uint32_t(p[1]) << 8;
}
void Store16(std::uint8_t* p, std::uint32_t v)
{
    p[0] = std::uint8_t(v);
    p[1] = std::uint8_t(v >> 8);
}

// Each codec reads a pixel at depth D (8 or 16, never below its own) and writes one given at
// depth D; conversions run at the deeper of the two formats' depths, so 16-bit sources keep
// their precision until the final rounding.
// B, G, R (and A) bytes: vfRGB24 and vfRGB32.
template <bool Alpha> struct CRgb8 {
    static constexpr int kDepth = 8, kBytes = Alpha ? 4 : 3;
    template <int D> static TPx Read(const std::uint8_t* p)
    {
        const TPx px{p[0], p[1], p[2], Alpha ? p[3] : 255u};
        return D == 16 ? Widen(px) : px;
    }
    template <int D> static void Write(std::uint8_t* p, TPx px)
    {
        if (D == 16)
            px = Narrow(px);
        p[0] = std::uint8_t(px.B);
        p[1] = std::uint8_t(px.G);
        p[2] = std::uint8_t(px.R);
        if (Alpha)
            p[3] = std::uint8_t(px.A);
    }
};
using CRgb24 = CRgb8<false>;
using CRgb32 = CRgb8<true>;

// RGB555 / RGB565 words: blue in bits 0-4, green above it (5 or 6 bits), red above green.
// Fields are expanded by bit replication and reduced by rounding to nearest; RGB555's top bit is
// ignored when read and written as 0.
constexpr std::uint32_t Expand(std::uint32_t v, int bits)
{
    return (v << (8 - bits)) | (v >> (2 * bits - 8));
}
constexpr std::uint32_t Reduce(std::uint32_t v, int bits)
{
    return (v * ((1u << bits) - 1) + 127) / 255;
}

template <int GreenBits> struct CRgb16 {
    static constexpr int kDepth = 8, kBytes = 2, kRedShift = 5 + GreenBits;
    template <int D> static TPx Read(const std::uint8_t* p)
    {
        const std::uint32_t v = Load16(p);
        const TPx px{Expand(v & 31, 5), Expand((v >> 5) & ((1u << GreenBits) - 1), GreenBits),
                     Expand((v >> kRedShift) & 31, 5), 255};
        return D == 16 ? Widen(px) : px;
    }
    template <int D> static void Write(std::uint8_t* p, TPx px)
    {
        if (D == 16)
            px = Narrow(px);
        Store16(p, Reduce(px.B, 5) | Reduce(px.G, GreenBits) << 5 | Reduce(px.R, 5) << kRedShift);
    }
};
using CRgb555 = CRgb16<5>;
using CRgb565 = CRgb16<6>;

struct CGray8 {
    static constexpr int kDepth = 8, kBytes = 1;
    template <int D> static TPx Read(const std::uint8_t* p)
    {
        const TPx px{p[0], p[0], p[0], 255};
        return D == 16 ? Widen(px) : px;
    }
    template <int D> static void Write(std::uint8_t* p, TPx px)
    {
        const std::uint32_t y = FXLuma(px.B, px.G, px.R);
        p[0] = std::uint8_t(D == 16 ? FXNarrow16(y) : y);
    }
};

struct CGray16 {
    static constexpr int kDepth = 16, kBytes = 2;
    template <int D> static TPx Read(const std::uint8_t* p)
    {
        static_assert(D == 16);
        const std::uint32_t v = Load16(p);
        return {v, v, v, 65535};
    }
    template <int D> static void Write(std::uint8_t* p, TPx px)
    {
        static_assert(D == 16);
        Store16(p, FXLuma(px.B, px.G, px.R));
    }
};

// 16-bit B, G, R (and A): vfRGB48 and vfRGBA64.
template <bool Alpha> struct CRgbWide {
    static constexpr int kDepth = 16, kBytes = Alpha ? 8 : 6;
    template <int D> static TPx Read(const std::uint8_t* p)
    {
        static_assert(D == 16);
        return {Load16(p), Load16(p + 2), Load16(p + 4), Alpha ? Load16(p + 6) : 65535u};
    }
    template <int D> static void Write(std::uint8_t* p, TPx px)
    {
        static_assert(D == 16);
        Store16(p, px.B);
        Store16(p + 2, px.G);
        Store16(p + 4, px.R);
        if (Alpha)
            Store16(p + 6, px.A);
    }
};
using CRgb48 = CRgbWide<false>;
using CRgba64 = CRgbWide<true>;

// Calls fn with the codec of a packed non-YUV format; returns false for the YUV formats.
template <class F> bool WithCodec(TFXVideoFormat format, F&& fn)
{
    switch (format) {
    case vfRGB24:
        fn(CRgb24{});
        return true;
    case vfRGB32:
        fn(CRgb32{});
        return true;
    case vfRGB555:
        fn(CRgb555{});
        return true;
    case vfRGB565:
        fn(CRgb565{});
        return true;
    case vfGray8:
        fn(CGray8{});
        return true;
    case vfGray16:
        fn(CGray16{});
        return true;
    case vfRGB48:
        fn(CRgb48{});
        return true;
    case vfRGBA64:
        fn(CRgba64{});
        return true;
    default:
        return false;
    }
}

// Reads a packed pixel as 8-bit B, G, R, A.
template <class S> TPx Read8(const std::uint8_t* p)
{
    const TPx px = S::template Read<S::kDepth>(p);
    return S::kDepth == 16 ? Narrow(px) : px;
}

// ---------------------------------------------------------------- YUV layouts
// Where the samples of a YUV format lie: plane, byte offset in the row, bytes between samples.
struct TYuvLayout {
    int YPlane, YOffset, YStep;
    int UPlane, UOffset, UStep;
    int VPlane, VOffset, VStep;
    int APlane; // -1 without alpha
    int ShiftX, ShiftY;
    bool Packed422; // pixel pairs share a macropixel: an odd width leaves one spare Y
};

TYuvLayout YuvLayout(TFXVideoFormat format)
{
    switch (format) {
    case vfYUY2:
        return {0, 0, 2, 0, 1, 4, 0, 3, 4, -1, 1, 0, true};
    case vfUYVY:
        return {0, 1, 2, 0, 0, 4, 0, 2, 4, -1, 1, 0, true};
    case vfI420:
        return {0, 0, 1, 1, 0, 1, 2, 0, 1, -1, 1, 1, false};
    case vfYV12:
        return {0, 0, 1, 2, 0, 1, 1, 0, 1, -1, 1, 1, false};
    case vfNV12:
        return {0, 0, 1, 1, 0, 2, 1, 1, 2, -1, 1, 1, false};
    case vfI422:
        return {0, 0, 1, 1, 0, 1, 2, 0, 1, -1, 1, 0, false};
    case vfI444:
        return {0, 0, 1, 1, 0, 1, 2, 0, 1, -1, 0, 0, false};
    default:
        return {0, 0, 1, 1, 0, 1, 2, 0, 1, 3, 0, 0, false}; // vfYUVA444
    }
}

template <class Planes> auto* Sample(const Planes& p, int plane, int offset, int step, int x, int y)
{
    return p.Data[plane] + std::ptrdiff_t(y) * p.Stride[plane] + offset + std::ptrdiff_t(x) * step;
}

// The spare Y of an odd-width packed 4:2:2 row repeats the last pixel's.
void FillSpareLuma(const TYuvLayout& l, const TFXPlanes& dst, int width, int height)
{
    if (!l.Packed422 || width % 2 == 0)
        return;
    for (int y = 0; y < height; ++y)
        *Sample(dst, 0, l.YOffset, l.YStep, width, y) =
            *Sample(dst, 0, l.YOffset, l.YStep, width - 1, y);
}

template <class D>
void YuvToPacked(const TYuvLayout& l, const TFXConstPlanes& src, const TFXPlanes& dst, int width,
                 int height)
{
    for (int y = 0; y < height; ++y) {
        std::uint8_t* out = dst.Data[0] + std::ptrdiff_t(y) * dst.Stride[0];
        const int cy = y >> l.ShiftY;
        for (int x = 0; x < width; ++x) {
            const int cx = x >> l.ShiftX;
            const int yy = *Sample(src, l.YPlane, l.YOffset, l.YStep, x, y);
            const int u = *Sample(src, l.UPlane, l.UOffset, l.UStep, cx, cy);
            const int v = *Sample(src, l.VPlane, l.VOffset, l.VStep, cx, cy);
            const std::uint32_t a = l.APlane >= 0 ? *Sample(src, l.APlane, 0, 1, x, y) : 255;
            TPx px{std::uint32_t(FXYuvToB(yy, u, v)), std::uint32_t(FXYuvToG(yy, u, v)),
                   std::uint32_t(FXYuvToR(yy, u, v)), a};
            if (D::kDepth == 16)
                px = Widen(px);
            D::template Write<D::kDepth>(out + std::ptrdiff_t(x) * D::kBytes, px);
        }
    }
}

template <class S>
void PackedToYuv(const TFXConstPlanes& src, const TYuvLayout& l, const TFXPlanes& dst, int width,
                 int height)
{
    auto pixel = [&](int x, int y) {
        return Read8<S>(src.Data[0] + std::ptrdiff_t(y) * src.Stride[0] +
                        std::ptrdiff_t(x) * S::kBytes);
    };
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const TPx px = pixel(x, y);
            *Sample(dst, l.YPlane, l.YOffset, l.YStep, x, y) =
                std::uint8_t(FXRgbToY(int(px.B), int(px.G), int(px.R)));
            if (l.APlane >= 0)
                *Sample(dst, l.APlane, 0, 1, x, y) = std::uint8_t(px.A);
        }
    // Each chroma sample is the mean over the pixels it covers (fewer at odd right/bottom edges).
    const int chromaW = (width + (1 << l.ShiftX) - 1) >> l.ShiftX;
    const int chromaH = (height + (1 << l.ShiftY) - 1) >> l.ShiftY;
    for (int cy = 0; cy < chromaH; ++cy)
        for (int cx = 0; cx < chromaW; ++cx) {
            int sb = 0, sg = 0, sr = 0, n = 0;
            for (int y = cy << l.ShiftY; y < height && y < (cy + 1) << l.ShiftY; ++y)
                for (int x = cx << l.ShiftX; x < width && x < (cx + 1) << l.ShiftX; ++x) {
                    const TPx px = pixel(x, y);
                    sb += int(px.B);
                    sg += int(px.G);
                    sr += int(px.R);
                    ++n;
                }
            *Sample(dst, l.UPlane, l.UOffset, l.UStep, cx, cy) =
                std::uint8_t(FXSumsToU(sb, sg, sr, n));
            *Sample(dst, l.VPlane, l.VOffset, l.VStep, cx, cy) =
                std::uint8_t(FXSumsToV(sb, sg, sr, n));
        }
    FillSpareLuma(l, dst, width, height);
}

void YuvToYuv(const TYuvLayout& s, const TFXConstPlanes& src, const TYuvLayout& d,
              const TFXPlanes& dst, int width, int height)
{
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            *Sample(dst, d.YPlane, d.YOffset, d.YStep, x, y) =
                *Sample(src, s.YPlane, s.YOffset, s.YStep, x, y);
            if (d.APlane >= 0)
                *Sample(dst, d.APlane, 0, 1, x, y) =
                    s.APlane >= 0 ? *Sample(src, s.APlane, 0, 1, x, y) : 255;
        }
    // A destination chroma sample is the rounded mean of the distinct source chroma samples over
    // the pixels it covers: a copy when the source is as fine or coarser, an average of 2 or 4
    // when it is finer.
    const int chromaW = (width + (1 << d.ShiftX) - 1) >> d.ShiftX;
    const int chromaH = (height + (1 << d.ShiftY) - 1) >> d.ShiftY;
    for (int cy = 0; cy < chromaH; ++cy) {
        const int y0 = (cy << d.ShiftY) >> s.ShiftY;
        const int y1 = (std::min(height, (cy + 1) << d.ShiftY) - 1) >> s.ShiftY;
        for (int cx = 0; cx < chromaW; ++cx) {
            const int x0 = (cx << d.ShiftX) >> s.ShiftX;
            const int x1 = (std::min(width, (cx + 1) << d.ShiftX) - 1) >> s.ShiftX;
            int su = 0, sv = 0;
            for (int sy = y0; sy <= y1; ++sy)
                for (int sx = x0; sx <= x1; ++sx) {
                    su += *Sample(src, s.UPlane, s.UOffset, s.UStep, sx, sy);
                    sv += *Sample(src, s.VPlane, s.VOffset, s.VStep, sx, sy);
                }
            const int n = (y1 - y0 + 1) * (x1 - x0 + 1);
            *Sample(dst, d.UPlane, d.UOffset, d.UStep, cx, cy) = std::uint8_t((su + n / 2) / n);
            *Sample(dst, d.VPlane, d.VOffset, d.VStep, cx, cy) = std::uint8_t((sv + n / 2) / n);
        }
    }
    FillSpareLuma(d, dst, width, height);
}

template <class S, class D>
void PackedToPacked(const TFXConstPlanes& src, const TFXPlanes& dst, int width, int height)
{
    constexpr int kD = S::kDepth > D::kDepth ? S::kDepth : D::kDepth;
    for (int y = 0; y < height; ++y) {
        const std::uint8_t* in = src.Data[0] + std::ptrdiff_t(y) * src.Stride[0];
        std::uint8_t* out = dst.Data[0] + std::ptrdiff_t(y) * dst.Stride[0];
        for (int x = 0; x < width; ++x, in += S::kBytes, out += D::kBytes)
            D::template Write<kD>(out, S::template Read<kD>(in));
    }
}

void CopyPlanes(TFXVideoFormat format, const TFXConstPlanes& src, const TFXPlanes& dst, int width,
                int height)
{
    for (int plane = 0; plane < FXFormatInfo(format).PlaneCount; ++plane) {
        const TFXPlaneGeometry g = FXPlaneGeometry(format, width, height, plane);
        for (int y = 0; y < g.Rows; ++y)
            std::memcpy(dst.Data[plane] + std::ptrdiff_t(y) * dst.Stride[plane],
                        src.Data[plane] + std::ptrdiff_t(y) * src.Stride[plane],
                        size_t(g.RowBytes));
    }
}

} // namespace

void ConvertReference(TFXVideoFormat srcFormat, const TFXConstPlanes& src, TFXVideoFormat dstFormat,
                      const TFXPlanes& dst, int width, int height)
{
    if (srcFormat == dstFormat)
        return CopyPlanes(srcFormat, src, dst, width, height);
    const bool srcYuv = FXFormatInfo(srcFormat).IsYUV;
    const bool dstYuv = FXFormatInfo(dstFormat).IsYUV;
    if (srcYuv && dstYuv)
        return YuvToYuv(YuvLayout(srcFormat), src, YuvLayout(dstFormat), dst, width, height);
    if (srcYuv) {
        WithCodec(dstFormat, [&](auto d) {
            YuvToPacked<decltype(d)>(YuvLayout(srcFormat), src, dst, width, height);
        });
        return;
    }
    if (dstYuv) {
        WithCodec(srcFormat, [&](auto s) {
            PackedToYuv<decltype(s)>(src, YuvLayout(dstFormat), dst, width, height);
        });
        return;
    }
    WithCodec(srcFormat, [&](auto s) {
        WithCodec(dstFormat, [&](auto d) {
            PackedToPacked<decltype(s), decltype(d)>(src, dst, width, height);
        });
    });
}

} // namespace framix::conv
