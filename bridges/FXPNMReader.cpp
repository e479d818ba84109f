// SPDX-License-Identifier: MIT
// PGM, PPM and PAM reader.
#include "bridges/FXPNMReader.h"

#include <algorithm>
#include <cstdio>

#include "bridges/FXFrameLayout.h"
#include "bridges/detail/FXPNMRow.h"

namespace framix {

namespace {

constexpr std::size_t kMaxPamLine = 4096;
// Larger values are refused as absurd before any size arithmetic uses them.
constexpr std::int64_t kMaxHeaderValue = 1'000'000'000;

bool IsSpace(int c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
}
bool IsDigit(int c)
{
    return c >= '0' && c <= '9';
}

std::string Shown(int c)
{
    if (c < 0)
        return "the end of the file";
    if (c >= 32 && c < 127)
        return std::string("'") + char(c) + "'";
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "byte 0x%02X", unsigned(c));
    return buffer;
}

// Where each output channel takes its sample from, per file depth: the file holds R,G,B(,A)
// or gray(,alpha); memory holds B,G,R(,A) or gray.
struct TChannelMap {
    int Count;
    int Source[4];
};
constexpr TChannelMap kChannelMaps[5] = {
    {0, {}}, {1, {0}}, {4, {0, 0, 0, 1}}, {3, {2, 1, 0}}, {4, {2, 1, 0, 3}},
};

} // namespace

TFXPNMReader::TFXPNMReader(const std::string& fileName)
    : TFXPNMReader(TFXFileStream(fileName, TFXFileMode::Read))
{
}

TFXPNMReader::TFXPNMReader(TFXFileStream stream) : FStream(std::move(stream))
{
    if (!ReadHeader())
        FStream.Fail("empty file, expected a PNM or PAM image");
}

int TFXPNMReader::ReadHeaderNumber(const char* what)
{
    int c;
    for (;;) {
        c = FStream.GetChar();
        if (c == '#') {
            while (c >= 0 && c != '\n')
                c = FStream.GetChar();
        }
        if (c < 0)
            FStream.Fail(std::string("truncated header (the file ends before the ") + what + ")");
        if (!IsSpace(c))
            break;
    }
    if (!IsDigit(c))
        FStream.Fail(std::string("invalid ") + what + " in the header (found " + Shown(c) + ")");
    std::int64_t value = 0;
    for (; IsDigit(c); c = FStream.GetChar())
        value = std::min(value * 10 + (c - '0'), kMaxHeaderValue + 1);
    if (c == '#') { // a comment straight after the number; its line end separates
        while (c >= 0 && c != '\n')
            c = FStream.GetChar();
    } else if (c >= 0 && !IsSpace(c)) {
        FStream.Fail(std::string("invalid ") + what + " in the header (found " + Shown(c) + ")");
    }
    if (value > kMaxHeaderValue)
        FStream.Fail(std::string(what) + " in the header is absurdly large");
    return int(value);
}

bool TFXPNMReader::ReadHeader()
{
    FPixelsPending = false;
    int c = FStream.GetChar();
    while (IsSpace(c)) // images in one stream may be separated by line ends
        c = FStream.GetChar();
    if (c < 0)
        return false;
    const int type = c == 'P' ? FStream.GetChar() : -1;
    if (type == '1' || type == '4')
        FStream.Fail("PBM bitmaps (P1, P4) are not supported; convert them to PGM");
    if (type != '2' && type != '3' && type != '5' && type != '6' && type != '7') {
        std::string start = Shown(c);
        if (c == 'P')
            start.append(" ").append(Shown(type));
        FStream.Fail("not a PNM or PAM image (it starts with " + start + ")");
    }
    FInfo = TFXPNMInfo{};
    FInfo.Type = type - '0';
    if (FInfo.Type == 7) {
        ReadPamHeader();
    } else {
        FInfo.Width = ReadHeaderNumber("width");
        FInfo.Height = ReadHeaderNumber("height");
        FInfo.MaxVal = ReadHeaderNumber("maxval");
        FInfo.Depth = (FInfo.Type == 3 || FInfo.Type == 6) ? 3 : 1;
    }
    FXCheckImageSize(FStream.Name(), FInfo.Width, FInfo.Height);
    if (FInfo.MaxVal < 1 || FInfo.MaxVal > 65535)
        FStream.Fail("maxval " + std::to_string(FInfo.MaxVal) + " is out of range (1 to 65535)");
    ChooseFormat();
    FPixelsPending = true;
    return true;
}

void TFXPNMReader::ReadPamHeader()
{
    std::string line;
    if (FStream.ReadLine(line, kMaxPamLine) != TFXLineResult::Line ||
        line.find_first_not_of(" \t\r") != std::string::npos)
        FStream.Fail("invalid PAM header (expected a line end after P7)");
    int* fields[] = {&FInfo.Width, &FInfo.Height, &FInfo.Depth, &FInfo.MaxVal};
    const char* names[] = {"WIDTH", "HEIGHT", "DEPTH", "MAXVAL"};
    bool seen[4] = {};
    for (;;) {
        if (FStream.ReadLine(line, kMaxPamLine) != TFXLineResult::Line)
            FStream.Fail("truncated PAM header (no ENDHDR line)");
        const std::size_t begin = line.find_first_not_of(" \t\r");
        if (begin == std::string::npos || line[begin] == '#')
            continue;
        const std::size_t keyEnd = line.find_first_of(" \t\r", begin);
        const std::string key = line.substr(begin, keyEnd - begin);
        const std::size_t valueBegin =
            keyEnd == std::string::npos ? std::string::npos : line.find_first_not_of(" \t", keyEnd);
        std::string value = valueBegin == std::string::npos ? "" : line.substr(valueBegin);
        while (!value.empty() &&
               (value.back() == ' ' || value.back() == '\t' || value.back() == '\r'))
            value.pop_back();
        if (key == "ENDHDR")
            break;
        if (key == "TUPLTYPE") { // may be given on several lines; they join with spaces
            FInfo.TupleType += (FInfo.TupleType.empty() ? "" : " ") + value;
            continue;
        }
        const auto field = std::find(std::begin(names), std::end(names), key);
        if (field == std::end(names))
            FStream.Fail("unknown PAM header line '" + line.substr(0, 40) + "'");
        const int i = int(field - std::begin(names));
        if (value.empty() || value.size() > 10 || !std::all_of(value.begin(), value.end(), IsDigit))
            FStream.Fail("invalid " + key + " '" + value.substr(0, 20) + "' in the PAM header");
        const std::int64_t number = std::stoll(value);
        if (number > kMaxHeaderValue)
            FStream.Fail(key + " in the PAM header is absurdly large");
        *fields[i] = int(number);
        seen[i] = true;
    }
    for (int i = 0; i < 4; ++i)
        if (!seen[i])
            FStream.Fail(std::string("the PAM header has no ") + names[i] + " line");
}

void TFXPNMReader::ChooseFormat()
{
    int depth = FInfo.Depth;
    if (FInfo.Type == 7) {
        struct TTuple {
            const char* Name;
            int Depth;
        };
        static constexpr TTuple kTuples[] = {
            {"GRAYSCALE", 1}, {"BLACKANDWHITE", 1},       {"GRAYSCALE_ALPHA", 2},
            {"RGB", 3},       {"BLACKANDWHITE_ALPHA", 2}, {"RGB_ALPHA", 4},
        };
        if (!FInfo.TupleType.empty()) {
            const TTuple* tuple = nullptr;
            for (const TTuple& t : kTuples)
                if (FInfo.TupleType == t.Name)
                    tuple = &t;
            if (!tuple)
                FStream.Fail("unsupported TUPLTYPE '" + FInfo.TupleType.substr(0, 40) +
                             "' (supported: GRAYSCALE, GRAYSCALE_ALPHA, RGB, RGB_ALPHA, "
                             "BLACKANDWHITE, BLACKANDWHITE_ALPHA)");
            if (tuple->Depth != depth)
                FStream.Fail("TUPLTYPE " + FInfo.TupleType + " needs DEPTH " +
                             std::to_string(tuple->Depth) + ", the header says " +
                             std::to_string(depth));
        } else if (depth < 1 || depth > 4) {
            FStream.Fail("DEPTH " + std::to_string(depth) + " is not supported (1 to 4)");
        }
    }
    FInfo.Format = FXInterleavedFormat(FStream.Name(), depth, FInfo.MaxVal > 255 ? 2 : 1);
}

void TFXPNMReader::Incomplete(std::int64_t done, std::int64_t total, const char* unit)
{
    throw EFXIncompleteFrame(FStream.Name() + ": image " + std::to_string(FImageCount + 1) +
                                 " is incomplete: the file ends after " + std::to_string(done) +
                                 " of its " + std::to_string(total) + " " + unit,
                             done, total);
}

int TFXPNMReader::ReadPlainSample()
{
    int c = FStream.GetChar();
    for (;;) {
        if (c == '#') {
            while (c >= 0 && c != '\n')
                c = FStream.GetChar();
        } else if (!IsSpace(c)) {
            break;
        }
        c = FStream.GetChar();
    }
    if (c < 0)
        return -1;
    if (!IsDigit(c))
        FStream.Fail("invalid " + Shown(c) + " in the image data of image " +
                     std::to_string(FImageCount + 1));
    int value = 0;
    for (; IsDigit(c); c = FStream.GetChar())
        value = std::min(value * 10 + (c - '0'), 1 << 20);
    if (c >= 0 && !IsSpace(c) && c != '#')
        FStream.Fail("invalid " + Shown(c) + " in the image data of image " +
                     std::to_string(FImageCount + 1));
    if (c == '#')
        while (c >= 0 && c != '\n')
            c = FStream.GetChar();
    return value;
}

// Reads one file row into FSamples, clamped to the maxval and rescaled to 8 or 16 bits.
void TFXPNMReader::ReadSamples(int row)
{
    const std::size_t count = std::size_t(FInfo.Width) * std::size_t(FInfo.Depth);
    FSamples.resize(count);
    const bool plain = FInfo.Type == 2 || FInfo.Type == 3;
    const int bytes = FInfo.MaxVal > 255 ? 2 : 1;
    if (plain) {
        for (std::size_t i = 0; i < count; ++i) {
            const int v = ReadPlainSample();
            if (v < 0)
                Incomplete(std::int64_t(count) * row + std::int64_t(i),
                           std::int64_t(count) * FInfo.Height, "samples");
            FSamples[i] = std::uint16_t(std::min(v, FInfo.MaxVal));
        }
    } else {
        FRow.resize(count * std::size_t(bytes));
        const std::size_t n = FStream.Read(FRow.data(), FRow.size());
        if (n < FRow.size())
            Incomplete(std::int64_t(FRow.size()) * row + std::int64_t(n),
                       std::int64_t(FRow.size()) * FInfo.Height, "bytes");
        for (std::size_t i = 0; i < count; ++i) {
            const int v = bytes == 2 ? FRow[2 * i] << 8 | FRow[2 * i + 1] : FRow[i];
            FSamples[i] = std::uint16_t(std::min(v, FInfo.MaxVal));
        }
    }
    if (FInfo.MaxVal != 255 && FInfo.MaxVal != 65535) {
        const std::uint32_t full = bytes == 2 ? 65535 : 255;
        const std::uint32_t maxVal = std::uint32_t(FInfo.MaxVal);
        for (std::uint16_t& s : FSamples)
            s = std::uint16_t((s * full + maxVal / 2) / maxVal);
    }
}

void TFXPNMReader::ReadPixels(const TFXPlanes& planes)
{
    if (!FPixelsPending)
        FStream.Fail("no image is waiting to be read");
    FXCheckPlanes(FStream.Name(), FInfo.Format, FInfo.Width, FInfo.Height, planes);
    const TFXPlaneGeometry g = FXPlaneGeometry(FInfo.Format, FInfo.Width, FInfo.Height, 0);
    const bool binary = FInfo.Type >= 5;
    const bool fullRange = FInfo.MaxVal == 255 || FInfo.MaxVal == 65535;
    if (binary && FInfo.MaxVal == 255 && FInfo.Depth == 1) { // the file layout is the memory's
        const std::int64_t n =
            FStream.ReadRows(planes.Data[0], planes.Stride[0], std::size_t(g.RowBytes), g.Rows);
        if (n < std::int64_t(g.RowBytes) * g.Rows)
            Incomplete(n, std::int64_t(g.RowBytes) * g.Rows, "bytes");
    } else if (binary && fullRange && FInfo.Depth != 2) { // reorder only: no rescaling
        FRow.resize(std::size_t(g.RowBytes));
        for (int y = 0; y < FInfo.Height; ++y) {
            const std::size_t n = FStream.Read(FRow.data(), FRow.size());
            if (n < FRow.size())
                Incomplete(std::int64_t(FRow.size()) * y + std::int64_t(n),
                           std::int64_t(FRow.size()) * FInfo.Height, "bytes");
            detail::FXReorderPNMRow(FRow.data(),
                                    planes.Data[0] + std::ptrdiff_t(y) * planes.Stride[0],
                                    FInfo.Width, FInfo.Depth, FInfo.MaxVal > 255 ? 2 : 1);
        }
    } else {
        const TChannelMap& map = kChannelMaps[FInfo.Depth];
        const bool wide = FInfo.MaxVal > 255;
        for (int y = 0; y < FInfo.Height; ++y) {
            ReadSamples(y);
            std::uint8_t* out = planes.Data[0] + std::ptrdiff_t(y) * planes.Stride[0];
            const std::uint16_t* in = FSamples.data();
            for (int x = 0; x < FInfo.Width; ++x, in += FInfo.Depth) {
                for (int k = 0; k < map.Count; ++k) {
                    const std::uint16_t s = in[map.Source[k]];
                    if (wide) {
                        *out++ = std::uint8_t(s);
                        *out++ = std::uint8_t(s >> 8);
                    } else {
                        *out++ = std::uint8_t(s);
                    }
                }
            }
        }
    }
    FPixelsPending = false;
    ++FImageCount;
}

bool TFXPNMReader::NextImage()
{
    if (FPixelsPending)
        for (int y = 0; y < FInfo.Height; ++y)
            ReadSamples(y);
    return ReadHeader();
}

} // namespace framix
