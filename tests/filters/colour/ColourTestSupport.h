// SPDX-License-Identifier: MIT
// Small frames in and out of one colour filter, byte for byte.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <vector>

#include "tests/support/FXTestHarness.h"

namespace framix::test {

using TBytes = std::vector<std::uint8_t>;

// A frame of `format` from its pixel bytes, row after row; `pad` bytes of 0xA5 end each row.
inline FXImageBufferPtr FXFrameOf(int width, int height, TFXVideoFormat format, const TBytes& bytes,
                                  int pad = 0)
{
    const int row = width * FXFormatInfo(format).BytesPerPixel;
    FXImageBufferPtr frame = new TFXImageBuffer(width, height, format, pad ? row + pad : 0);
    std::uint8_t* p = frame->GetWritePointer();
    for (int y = 0; y < height; ++y) {
        std::memset(p + std::ptrdiff_t(y) * frame->GetRowStride(), 0xA5,
                    std::size_t(frame->GetRowStride()));
        std::memcpy(p + std::ptrdiff_t(y) * frame->GetRowStride(), bytes.data() + y * row,
                    std::size_t(row));
    }
    return frame;
}

// The pixel bytes of a frame, row after row, without padding.
inline TBytes FXBytesOf(const IFXImageBuffer& frame)
{
    const int row = frame.GetWidth() * frame.GetBytesPerPixel();
    TBytes bytes;
    for (int y = 0; y < frame.GetHeight(); ++y) {
        const std::uint8_t* p = frame.GetReadPointer() + std::ptrdiff_t(y) * frame.GetRowStride();
        bytes.insert(bytes.end(), p, p + row);
    }
    return bytes;
}

// One component between a test source and a capture.
template <class T> class TColourRig {
public:
    TColourRig() : Filter(FHarness.template Wire<T>()) {}

    // Sends one frame (announcing its stream) and returns what came out.
    FXImageBufferPtr Run(const FXImageBufferPtr& frame)
    {
        FHarness.Source().Announce(frame->GetWidth(), frame->GetHeight(), frame->GetFormat());
        FHarness.Source().Send(frame);
        EXPECT_FALSE(FHarness.Captured.Frames.empty());
        return FHarness.Captured.Frames.empty() ? frame : FHarness.Captured.Frames.back();
    }
    TBytes Run(int width, int height, TFXVideoFormat format, const TBytes& bytes)
    {
        return FXBytesOf(*Run(FXFrameOf(width, height, format, bytes)));
    }
    TFXTestHarness& Harness() { return FHarness; }

private:
    TFXTestHarness FHarness;

public:
    T& Filter;
};

// The alpha bytes (every fourth) of vfRGB32 pixel bytes.
inline TBytes FXAlphaOf(const TBytes& bytes)
{
    TBytes alpha;
    for (std::size_t i = 3; i < bytes.size(); i += 4)
        alpha.push_back(bytes[i]);
    return alpha;
}

// True when every padding byte (0xA5 from FXFrameOf) of every row but the last is intact.
inline bool FXPaddingIntact(const IFXImageBuffer& frame)
{
    const int row = frame.GetWidth() * frame.GetBytesPerPixel();
    for (int y = 0; y + 1 < frame.GetHeight(); ++y)
        for (int i = row; i < frame.GetRowStride(); ++i)
            if (frame.GetReadPointer()[std::ptrdiff_t(y) * frame.GetRowStride() + i] != 0xA5)
                return false;
    return true;
}

} // namespace framix::test
