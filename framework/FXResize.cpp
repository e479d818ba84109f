// SPDX-License-Identifier: MIT
// Bilinear resampling: per-plane views of each format and one fixed-point kernel over them.
#include "framework/FXResize.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "framework/FXFormatConversion.h"

namespace framix {

namespace {

constexpr int kFracBits = 10;
constexpr int kOne = 1 << kFracBits;

// Where one output column (or row) samples the source: two neighbours and the second's weight.
struct TTap {
    int I0, I1, Frac;
};

std::vector<TTap> Taps(int srcSize, int dstSize)
{
    std::vector<TTap> taps(static_cast<size_t>(dstSize));
    for (int i = 0; i < dstSize; ++i) {
        // (i + 0.5) * src / dst - 0.5 in units of 1/kOne, clamped at the first pixel.
        const long long num = (2LL * i + 1) * srcSize - dstSize;
        const long long pos = num <= 0 ? 0 : num * kOne / (2LL * dstSize);
        TTap t{int(pos >> kFracBits), 0, int(pos & (kOne - 1))};
        if (t.I0 >= srcSize - 1)
            t = {srcSize - 1, srcSize - 1, 0};
        t.I1 = std::min(t.I0 + 1, srcSize - 1);
        taps[size_t(i)] = t;
    }
    return taps;
}

// Samples of one grid: `Channels` 8- or 16-bit samples every `Step` bytes, read into and
// written from rows of 32-bit values.
template <class T> struct TSampleCodec {
    int Channels, Step;
    static constexpr bool kWide = sizeof(T) == 2;
    void GetRow(const std::uint8_t* row, int width, std::uint32_t* v) const
    {
        if (Step == Channels * int(sizeof(T))) { // contiguous samples: one flat widening loop
            const int count = width * Channels;
            for (int i = 0; i < count; ++i) {
                T s;
                std::memcpy(&s, row + i * int(sizeof(T)), sizeof(T));
                v[i] = s;
            }
            return;
        }
        for (int x = 0; x < width; ++x, row += Step)
            for (int c = 0; c < Channels; ++c) {
                T s;
                std::memcpy(&s, row + c * int(sizeof(T)), sizeof(T));
                *v++ = s;
            }
    }
    void PutRow(std::uint8_t* row, int width, const std::uint32_t* v) const
    {
        if (Step == Channels * int(sizeof(T))) {
            const int count = width * Channels;
            for (int i = 0; i < count; ++i) {
                const T s = T(v[i]);
                std::memcpy(row + i * int(sizeof(T)), &s, sizeof(T));
            }
            return;
        }
        for (int x = 0; x < width; ++x, row += Step)
            for (int c = 0; c < Channels; ++c) {
                const T s = T(*v++);
                std::memcpy(row + c * int(sizeof(T)), &s, sizeof(T));
            }
    }
};

// RGB555 / RGB565 words: each field resampled in its own units; RGB555's top bit written 0.
struct TFieldCodec {
    int Shift[3], Bits[3];
    static constexpr int Channels = 3;
    static constexpr bool kWide = false;
    void GetRow(const std::uint8_t* row, int width, std::uint32_t* v) const
    {
        for (int x = 0; x < width; ++x) {
            const std::uint32_t w = std::uint32_t(row[2 * x]) | std::uint32_t(row[2 * x + 1]) << 8;
            for (int c = 0; c < 3; ++c)
                *v++ = (w >> Shift[c]) & ((1u << Bits[c]) - 1);
        }
    }
    void PutRow(std::uint8_t* row, int width, const std::uint32_t* v) const
    {
        for (int x = 0; x < width; ++x, v += 3) {
            const std::uint32_t w = v[0] << Shift[0] | v[1] << Shift[1] | v[2] << Shift[2];
            row[2 * x] = std::uint8_t(w);
            row[2 * x + 1] = std::uint8_t(w >> 8);
        }
    }
};

// One independently resampled grid of samples: a plane, or the samples of one kind in a plane.
struct TView {
    int Plane, Offset, ShiftX, ShiftY;
};

template <int Channels>
void HorizontalPass(const std::vector<TTap>& taps, const std::uint32_t* line, std::uint32_t* out)
{
    for (const TTap& t : taps) {
        const std::uint32_t* a = line + size_t(t.I0) * Channels;
        const std::uint32_t* b = line + size_t(t.I1) * Channels;
        const std::uint32_t w0 = std::uint32_t(kOne - t.Frac), w1 = std::uint32_t(t.Frac);
        for (int c = 0; c < Channels; ++c)
            *out++ = a[c] * w0 + b[c] * w1;
    }
}

// Separable in its arithmetic but not in its rounding: the horizontal pass keeps exact sums
// (sample * weight, at most 2^26), so the result is the four-tap bilinear sum rounded once.
template <class Codec>
void ResizeView(const Codec& codec, const std::uint8_t* src, int srcStride, int srcW, int srcH,
                std::uint8_t* dst, int dstStride, int dstW, int dstH)
{
    // 8-bit vertical sums fit 32 bits (255 << 20); 16-bit ones need 64.
    using Acc = std::conditional_t<Codec::kWide, std::uint64_t, std::uint32_t>;
    const int channels = codec.Channels;
    const std::vector<TTap> xs = Taps(srcW, dstW), ys = Taps(srcH, dstH);
    std::vector<std::uint32_t> line(size_t(srcW) * size_t(channels)),
        out(size_t(dstW) * size_t(channels));
    // Horizontally resampled source rows, and which source row each holds.
    std::vector<std::uint32_t> rows[2] = {out, out};
    int held[2] = {-1, -1};
    auto horizontal = [&](int sy, std::vector<std::uint32_t>& h) {
        codec.GetRow(src + std::ptrdiff_t(sy) * srcStride, srcW, line.data());
        switch (channels) { // a fixed channel count lets the compiler unroll the taps
        case 1:
            return HorizontalPass<1>(xs, line.data(), h.data());
        case 2:
            return HorizontalPass<2>(xs, line.data(), h.data());
        case 3:
            return HorizontalPass<3>(xs, line.data(), h.data());
        default:
            return HorizontalPass<4>(xs, line.data(), h.data());
        }
    };
    auto fetch = [&](int sy) -> const std::vector<std::uint32_t>& {
        for (int i = 0; i < 2; ++i)
            if (held[i] == sy)
                return rows[i];
        const int slot =
            held[0] == -1 || (held[1] != -1 && held[0] < held[1]) ? 0 : 1; // the older row
        horizontal(sy, rows[slot]);
        held[slot] = sy;
        return rows[slot];
    };
    for (int y = 0; y < dstH; ++y) {
        const TTap& ty = ys[size_t(y)];
        const std::vector<std::uint32_t>& r0 = fetch(ty.I0);
        const std::vector<std::uint32_t>& r1 = fetch(ty.I1);
        const Acc w0 = Acc(kOne - ty.Frac), w1 = Acc(ty.Frac);
        for (size_t i = 0; i < out.size(); ++i)
            out[i] = std::uint32_t((r0[i] * w0 + r1[i] * w1 + (Acc(1) << (2 * kFracBits - 1))) >>
                                   (2 * kFracBits));
        codec.PutRow(dst + std::ptrdiff_t(y) * dstStride, dstW, out.data());
    }
}

int Scaled(int size, int shift)
{
    return (size + (1 << shift) - 1) >> shift;
}

} // namespace

void FXResizePixels(TFXVideoFormat format, const TFXConstPlanes& src, int srcWidth, int srcHeight,
                    const TFXPlanes& dst, int dstWidth, int dstHeight)
{
    FXCheckPlanes(format, src, srcWidth, srcHeight, "source");
    FXCheckPlanes(format, dst, dstWidth, dstHeight, "destination");
    const TFXFormatInfo& info = FXFormatInfo(format);
    if (srcWidth == dstWidth && srcHeight == dstHeight) {
        for (int p = 0; p < info.PlaneCount; ++p) {
            const TFXPlaneGeometry g = FXPlaneGeometry(format, srcWidth, srcHeight, p);
            for (int y = 0; y < g.Rows; ++y)
                std::memcpy(dst.Data[p] + std::ptrdiff_t(y) * dst.Stride[p],
                            src.Data[p] + std::ptrdiff_t(y) * src.Stride[p], size_t(g.RowBytes));
        }
        return;
    }
    auto run = [&](const auto& codec, const TView& v) {
        ResizeView(codec, src.Data[v.Plane] + v.Offset, src.Stride[v.Plane],
                   Scaled(srcWidth, v.ShiftX), Scaled(srcHeight, v.ShiftY),
                   dst.Data[v.Plane] + v.Offset, dst.Stride[v.Plane], Scaled(dstWidth, v.ShiftX),
                   Scaled(dstHeight, v.ShiftY));
    };
    switch (format) {
    case vfRGB555:
        return run(TFieldCodec{{0, 5, 10}, {5, 5, 5}}, TView{0, 0, 0, 0});
    case vfRGB565:
        return run(TFieldCodec{{0, 5, 11}, {5, 6, 5}}, TView{0, 0, 0, 0});
    case vfYUY2:
    case vfUYVY: {
        // Luma every 2 bytes, U and V every 4, on a grid half as wide.
        const int yOffset = format == vfYUY2 ? 0 : 1, uOffset = format == vfYUY2 ? 1 : 0;
        run(TSampleCodec<std::uint8_t>{1, 2}, TView{0, yOffset, 0, 0});
        run(TSampleCodec<std::uint8_t>{1, 4}, TView{0, uOffset, 1, 0});
        run(TSampleCodec<std::uint8_t>{1, 4}, TView{0, uOffset + 2, 1, 0});
        if (dstWidth %
            2) // the spare luma of the last pair repeats the last pixel, as conversion writes it
            for (int y = 0; y < dstHeight; ++y) {
                std::uint8_t* row = dst.Data[0] + std::ptrdiff_t(y) * dst.Stride[0] + yOffset;
                row[2 * dstWidth] = row[2 * (dstWidth - 1)];
            }
        return;
    }
    default:
        break;
    }
    if (!info.IsYUV) {
        const int channels = info.BytesPerPixel / info.BytesPerSample;
        if (info.BytesPerSample == 2)
            return run(TSampleCodec<std::uint16_t>{channels, info.BytesPerPixel},
                       TView{0, 0, 0, 0});
        return run(TSampleCodec<std::uint8_t>{channels, info.BytesPerPixel}, TView{0, 0, 0, 0});
    }
    for (int p = 0; p < info.PlaneCount; ++p) {
        const bool chroma = p > 0 && !(info.HasAlpha && p == info.PlaneCount - 1);
        const TView view{p, 0, chroma ? info.ChromaShiftX : 0, chroma ? info.ChromaShiftY : 0};
        const int channels = format == vfNV12 && chroma ? 2 : 1;
        run(TSampleCodec<std::uint8_t>{channels, channels}, view);
    }
}

} // namespace framix
