// SPDX-License-Identifier: MIT
// YUV4MPEG2 header syntax, chroma tags and frame-rate arithmetic.
#include "bridges/FXY4MFormat.h"

#include <strings.h>

#include <charconv>
#include <climits>
#include <numeric>

#include "bridges/FXFrameLayout.h"
#include "framework/FXError.h"

namespace framix {

namespace {

struct TChromaTag {
    std::string_view Tag;
    TFXVideoFormat Format;
};

// The first tag of each format is the one the writer uses by default.
constexpr TChromaTag kChromaTags[] = {
    {"420jpeg", vfI420},     {"420mpeg2", vfI420}, {"420paldv", vfI420},
    {"420", vfI420},         {"422", vfI422},      {"444", vfI444},
    {"444alpha", vfYUVA444}, {"mono", vfGray8},    {"mono16", vfGray16},
};

constexpr std::string_view kSupportedTags =
    "420jpeg, 420mpeg2, 420paldv, 420, 422, 444, 444alpha, mono, mono16";

constexpr std::int64_t kTicksPerSecond = 10'000'000;

[[noreturn]] void Fail(const std::string& name, const std::string& problem)
{
    throw EFXError(name + ": " + problem);
}

std::optional<int> ParseCount(std::string_view text)
{
    int value = 0;
    if (text.empty() || text[0] < '0' || text[0] > '9')
        return std::nullopt;
    auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (ec != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

// num:den with both positive, or 0:0 (unknown).
TFXRatio ParseRatio(std::string_view token, const std::string& name)
{
    const std::size_t colon = token.find(':', 1);
    const auto num = ParseCount(token.substr(1, colon == std::string_view::npos ? 0 : colon - 1));
    const auto den =
        colon == std::string_view::npos ? std::nullopt : ParseCount(token.substr(colon + 1));
    if (!num || !den || (*num == 0) != (*den == 0))
        Fail(name, "invalid ratio '" + std::string(token) + "' in the stream header");
    return {*num, *den};
}

bool IsValidRatio(TFXRatio r)
{
    return (r.Num > 0 && r.Den > 0) || (r.Num == 0 && r.Den == 0);
}

} // namespace

std::int64_t FXFramePeriodFromRate(TFXRatio rate)
{
    if (rate.Num <= 0 || rate.Den <= 0)
        return 0;
    return (kTicksPerSecond * rate.Den + rate.Num / 2) / rate.Num;
}

TFXRatio FXFrameRateFromPeriod(std::int64_t period)
{
    if (period <= 0)
        return {0, 0};
    if (kTicksPerSecond % period == 0)
        return {int(kTicksPerSecond / period), 1};
    // Whole rates whose period was rounded to 100 ns (30 frames/s is 333333).
    const std::int64_t whole = (kTicksPerSecond + period / 2) / period;
    if (whole > 0 && FXFramePeriodFromRate({int(whole), 1}) == period)
        return {int(whole), 1};
    const std::int64_t ntsc = (kTicksPerSecond * 1001 + period / 2) / period;
    const std::int64_t rounded = (ntsc + 500) / 1000 * 1000;
    if (rounded > 0 && rounded <= INT_MAX && FXFramePeriodFromRate({int(rounded), 1001}) == period)
        return {int(rounded), 1001};
    const std::int64_t g = std::gcd(kTicksPerSecond, period);
    if (period / g > INT_MAX)
        return {1, int(std::min<std::int64_t>(INT_MAX,
                                              (period + kTicksPerSecond / 2) / kTicksPerSecond))};
    return {int(kTicksPerSecond / g), int(period / g)};
}

bool FXIsY4MFileName(const std::string& fileName)
{
    const std::size_t dot = fileName.rfind('.');
    return dot != std::string::npos && fileName.size() - dot == 4 &&
           strncasecmp(fileName.c_str() + dot, ".y4m", 4) == 0;
}

TFXY4MStreamInfo TFXY4MStreamInfo::For(TFXVideoFormat format, int width, int height, TFXRatio rate)
{
    TFXY4MStreamInfo info;
    info.Width = width;
    info.Height = height;
    info.Format = format;
    info.FrameRate = rate;
    info.Interlacing = 'p';
    return info;
}

bool FXY4MCarries(TFXVideoFormat format)
{
    for (const TChromaTag& t : kChromaTags)
        if (t.Format == format)
            return true;
    return false;
}

std::string_view FXY4MChromaTag(TFXVideoFormat format)
{
    for (const TChromaTag& t : kChromaTags)
        if (t.Format == format)
            return t.Tag;
    throw EFXError("YUV4MPEG2 cannot carry " + std::string(FXVideoFormatName(format)) +
                   " frames (it holds planar YUV 4:2:0, 4:2:2 and 4:4:4, 4:4:4 with alpha, and "
                   "8- or 16-bit mono)");
}

TFXVideoFormat FXY4MFormatFromChroma(std::string_view tag, const std::string& name)
{
    for (const TChromaTag& t : kChromaTags)
        if (t.Tag == tag)
            return t.Format;
    // 420p10, 444p16, mono12 ...: deeper samples than the frame formats hold.
    const std::size_t digits = tag.find_last_not_of("0123456789");
    if (digits != std::string_view::npos && digits + 1 < tag.size() &&
        (tag[digits] == 'p' || tag.substr(0, digits + 1) == "mono"))
        Fail(name, "chroma 'C" + std::string(tag) + "' has " + std::string(tag.substr(digits + 1)) +
                       "-bit samples; only 8-bit streams and mono16 are supported");
    Fail(name, "unsupported chroma 'C" + std::string(tag) +
                   "' (supported: " + std::string(kSupportedTags) + ")");
}

TFXY4MStreamInfo FXParseY4MHeader(std::string_view line, const std::string& name)
{
    constexpr std::string_view kMagic = "YUV4MPEG2";
    if (line.substr(0, kMagic.size()) != kMagic ||
        (line.size() > kMagic.size() && line[kMagic.size()] != ' '))
        Fail(name, "not a YUV4MPEG2 stream (it does not start with 'YUV4MPEG2 ')");
    TFXY4MStreamInfo info;
    std::optional<int> width, height;
    std::string_view rest = line.substr(kMagic.size());
    while (!rest.empty()) {
        const std::size_t space = rest.find(' ');
        const std::string_view token = rest.substr(0, space);
        rest = space == std::string_view::npos ? std::string_view() : rest.substr(space + 1);
        if (token.empty())
            continue;
        const std::string_view value = token.substr(1);
        switch (token[0]) {
        case 'W':
        case 'H': {
            const auto n = ParseCount(value);
            if (!n)
                Fail(name, "invalid size '" + std::string(token) + "' in the stream header");
            (token[0] == 'W' ? width : height) = n;
            break;
        }
        case 'F':
            info.FrameRate = ParseRatio(token, name);
            break;
        case 'A':
            info.PixelAspect = ParseRatio(token, name);
            break;
        case 'I':
            if (value.size() != 1 ||
                std::string_view("ptbm?").find(value[0]) == std::string_view::npos)
                Fail(name, "unknown interlacing '" + std::string(token) +
                               "' (expected Ip, It, Ib, Im or I?)");
            info.Interlacing = value[0];
            break;
        case 'C':
            info.Format = FXY4MFormatFromChroma(value, name);
            info.Chroma = std::string(value);
            break;
        case 'X':
            info.Comments.emplace_back(value);
            break;
        default:
            break; // other letters are reserved for future tags; readers skip them
        }
    }
    if (!width || !height)
        Fail(name, std::string("the stream header has no ") + (width ? "height (H)" : "width (W)"));
    FXCheckImageSize(name, *width, *height);
    info.Width = *width;
    info.Height = *height;
    return info;
}

std::string FXFormatY4MHeader(const TFXY4MStreamInfo& info, const std::string& name)
{
    FXCheckImageSize(name, info.Width, info.Height);
    std::string chroma = info.Chroma;
    if (chroma.empty())
        chroma = FXY4MChromaTag(info.Format);
    else if (FXY4MFormatFromChroma(chroma, name) != info.Format)
        Fail(name, "chroma 'C" + chroma + "' does not describe " +
                       std::string(FXVideoFormatName(info.Format)) + " frames");
    auto ratio = [](char tag, TFXRatio r) {
        return ' ' + std::string(1, tag) + std::to_string(r.Num) + ':' + std::to_string(r.Den);
    };
    std::string text =
        "YUV4MPEG2 W" + std::to_string(info.Width) + " H" + std::to_string(info.Height);
    if (info.FrameRate) {
        if (!IsValidRatio(*info.FrameRate))
            Fail(name, "invalid frame rate" + ratio('F', *info.FrameRate));
        text += ratio('F', *info.FrameRate);
    }
    if (info.Interlacing) {
        if (std::string_view("ptbm?").find(*info.Interlacing) == std::string_view::npos)
            Fail(name, "invalid interlacing mode '" + std::string(1, *info.Interlacing) + "'");
        text += " I" + std::string(1, *info.Interlacing);
    }
    if (info.PixelAspect) {
        if (!IsValidRatio(*info.PixelAspect))
            Fail(name, "invalid pixel aspect" + ratio('A', *info.PixelAspect));
        text += ratio('A', *info.PixelAspect);
    }
    text += " C" + chroma;
    for (const std::string& comment : info.Comments) {
        if (comment.find_first_of(" \n") != std::string::npos)
            Fail(name, "a header comment may not contain spaces or line breaks: '" + comment + "'");
        text += " X" + comment;
    }
    return text + '\n';
}

} // namespace framix
