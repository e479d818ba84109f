// SPDX-License-Identifier: MIT
// Small helpers shared by the neighbourhood filter tests: one frame through a component, sample
// access in any of the four processed formats.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>

#include "tests/support/FXTestHarness.h"

namespace framix::test {

inline constexpr TFXVideoFormat kNeighbourhoodFormats[] = {vfRGB24, vfRGB32, vfGray8, vfGray16};

inline std::string FormatTestName(const testing::TestParamInfo<TFXVideoFormat>& info)
{
    return std::string(FXVideoFormatName(info.param));
}

inline int Channels(TFXVideoFormat f)
{
    return f == vfGray16 ? 1 : FXFormatInfo(f).BytesPerPixel;
}

// A row stride `pad` bytes or so beyond the row, kept a whole number of samples (16-bit rows
// start on even addresses, as the primitives require).
inline int PaddedStride(int width, TFXVideoFormat f, int pad)
{
    const int sample = FXFormatInfo(f).BytesPerSample;
    return (width * FXFormatInfo(f).BytesPerPixel + pad + sample - 1) / sample * sample;
}

// Sample c of pixel (x, y): a byte, or a 16-bit value for vfGray16.
inline int Sample(const IFXImageBuffer& frame, int x, int y, int c = 0)
{
    const std::uint8_t* p = frame.GetReadPointer() + std::ptrdiff_t(y) * frame.GetRowStride();
    if (frame.GetFormat() == vfGray16) {
        std::uint16_t v;
        std::memcpy(&v, p + 2 * x, 2);
        return v;
    }
    return p[x * frame.GetBytesPerPixel() + c];
}

inline void SetSample(IFXImageBuffer& frame, int x, int y, int c, int value)
{
    std::uint8_t* p = frame.GetModifyPointer() + std::ptrdiff_t(y) * frame.GetRowStride();
    if (frame.GetFormat() == vfGray16) {
        const auto v = std::uint16_t(value);
        std::memcpy(p + 2 * x, &v, 2);
    } else {
        p[x * frame.GetBytesPerPixel() + c] = std::uint8_t(value);
    }
}

// A frame of one value in every sample.
inline FXImageBufferPtr FlatFrame(int width, int height, TFXVideoFormat format, int value,
                                  int stride = 0)
{
    FXImageBufferPtr frame = new TFXImageBuffer(width, height, format, stride);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            for (int c = 0; c < Channels(format); ++c)
                SetSample(*frame, x, y, c, value);
    return frame;
}

// Sends `frame` through the harness's component and returns what came out.
inline const IFXImageBuffer& Filter(TFXTestHarness& h, const FXImageBufferPtr& frame)
{
    h.Source().Send(frame);
    return *h.Captured.Frames.back();
}

} // namespace framix::test
