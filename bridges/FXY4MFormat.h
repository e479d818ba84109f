// SPDX-License-Identifier: MIT
// YUV4MPEG2 stream parameters: header parsing and writing, chroma tags, frame rates.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "framework/FXVideoFormat.h"

namespace framix {

// A ratio as Y4M writes it (num:den). 0:0 means "unknown" in a Y4M header.
struct TFXRatio {
    int Num = 0;
    int Den = 0;
    friend bool operator==(const TFXRatio&, const TFXRatio&) = default;
};

// The frame period in 100-ns units, the framework's time base: round(10,000,000 * den / num).
// 0 when the rate is unknown (0:0) or not positive.
std::int64_t FXFramePeriodFromRate(TFXRatio rate);
// The rate a period stands for: n:1 when exact, the n*1000:1001 family (29.97, 23.976...) when
// that rounds back to the same period, else 10,000,000:period reduced.
TFXRatio FXFrameRateFromPeriod(std::int64_t period);

// Everything a Y4M stream header says. Optional tags stay absent when the header lacks them,
// so a writer given this structure writes back what was read.
struct TFXY4MStreamInfo {
    int Width = 0;
    int Height = 0;
    TFXVideoFormat Format = vfI420;
    // The C tag as read ("420mpeg2", "mono16"); empty means the usual tag for Format.
    std::string Chroma;
    std::optional<TFXRatio> FrameRate;   // F
    std::optional<char> Interlacing;     // I: p, t, b, m or ?
    std::optional<TFXRatio> PixelAspect; // A
    std::vector<std::string> Comments;   // X tags in order, without the X

    // 100-ns frame period; 0 when the stream gives no rate.
    std::int64_t FramePeriod() const { return FrameRate ? FXFramePeriodFromRate(*FrameRate) : 0; }

    // A progressive stream of `format` at `rate`.
    static TFXY4MStreamInfo For(TFXVideoFormat format, int width, int height, TFXRatio rate);
};

// True for names ending in .y4m (any case): the file bridges choose Y4M by the name.
bool FXIsY4MFileName(const std::string& fileName);

// The usual C tag of a format; throws EFXError for formats Y4M cannot carry.
std::string_view FXY4MChromaTag(TFXVideoFormat format);
// True for vfI420, vfI422, vfI444, vfYUVA444, vfGray8 and vfGray16.
bool FXY4MCarries(TFXVideoFormat format);
// The format of a C tag; `name` labels the error for tags we cannot read.
TFXVideoFormat FXY4MFormatFromChroma(std::string_view tag, const std::string& name);

// Parses a stream header line (without its '\n'); errors name `name` and the bad tag.
TFXY4MStreamInfo FXParseY4MHeader(std::string_view line, const std::string& name);
// The header line with its '\n'; checks the structure first (EFXError naming `name`).
std::string FXFormatY4MHeader(const TFXY4MStreamInfo& info, const std::string& name);

} // namespace framix
