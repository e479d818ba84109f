// SPDX-License-Identifier: MIT
// Tokenizer of the stored-form text: names, numbers, quoted strings with #codes, symbols.
#include "storage/FXFormLexer.h"

#include <charconv>
#include <cstdio>

namespace framix {

namespace {

bool IsNameStart(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}
bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}
bool IsNameChar(char c)
{
    return IsNameStart(c) || IsDigit(c);
}

int HexDigit(char c)
{
    if (IsDigit(c))
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

bool IsSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
}

void AppendUtf8(std::string& out, std::uint32_t code)
{
    if (code < 0x80) {
        out += char(code);
    } else if (code < 0x800) {
        out += char(0xC0 | (code >> 6));
        out += char(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        out += char(0xE0 | (code >> 12));
        out += char(0x80 | ((code >> 6) & 0x3F));
        out += char(0x80 | (code & 0x3F));
    } else {
        out += char(0xF0 | (code >> 18));
        out += char(0x80 | ((code >> 12) & 0x3F));
        out += char(0x80 | ((code >> 6) & 0x3F));
        out += char(0x80 | (code & 0x3F));
    }
}

std::string DescribeChar(char c)
{
    if (c >= 32 && c < 127)
        return std::string("character '") + c + '\'';
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "byte 0x%02X", unsigned(std::uint8_t(c)));
    return buffer;
}

} // namespace

TFXFormLexer::TFXFormLexer(std::string_view text, std::string fileName, std::size_t maxValueBytes)
    : FText(text), FFileName(std::move(fileName)), FMaxValueBytes(maxValueBytes)
{
    if (FText.substr(0, 3) == "\xEF\xBB\xBF") // a UTF-8 byte order mark is not a character
        FOffset = 3;
    Advance();
}

void TFXFormLexer::Fail(TFXFormPosition position, const std::string& reason) const
{
    throw EFXFormError(FFileName, position, reason);
}

void TFXFormLexer::Bump()
{
    const char c = FText[FOffset++];
    if (c == '\n' || (c == '\r' && Peek() != '\n')) {
        ++FPosition.Line;
        FPosition.Column = 1;
    } else if (c != '\r' && (std::uint8_t(c) & 0xC0) != 0x80) {
        ++FPosition.Column; // UTF-8 continuation bytes belong to the character before them
    }
}

void TFXFormLexer::SkipSpace()
{
    while (!AtEnd() && IsSpace(Peek()))
        Bump();
}

void TFXFormLexer::CheckValueSize(std::size_t bytes, TFXFormPosition start) const
{
    if (bytes > FMaxValueBytes)
        Fail(start, "value longer than the limit of " + std::to_string(FMaxValueBytes) + " bytes");
}

void TFXFormLexer::Advance()
{
    SkipSpace();
    FCurrent = TFXFormToken{};
    FCurrent.Position = FPosition;
    if (AtEnd())
        return;
    const char c = Peek();
    if (IsNameStart(c)) {
        ScanName();
    } else if (IsDigit(c) || c == '$' || (c == '-' && (IsDigit(Peek(1)) || Peek(1) == '$'))) {
        ScanNumber();
    } else if (c == '\'' || c == '#') {
        ScanString();
    } else if (std::string_view("=:,[](){}<>+").find(c) != std::string_view::npos) {
        FCurrent.Kind = TFXFormTokenKind::Symbol;
        FCurrent.Symbol = c;
        Bump();
    } else {
        Fail(FPosition, "unexpected " + DescribeChar(c));
    }
}

void TFXFormLexer::ScanName()
{
    const std::size_t begin = FOffset;
    for (;;) {
        while (!AtEnd() && IsNameChar(Peek()))
            Bump();
        if (Peek() != '.')
            break;
        if (!IsNameStart(Peek(1))) {
            Fail(FPosition, "expected a name after '" +
                                std::string(FText.substr(begin, FOffset - begin + 1)) + "'");
        }
        Bump();
    }
    FCurrent.Kind = TFXFormTokenKind::Name;
    FCurrent.Text.assign(FText.substr(begin, FOffset - begin));
    CheckValueSize(FCurrent.Text.size(), FCurrent.Position);
}

void TFXFormLexer::ScanNumber()
{
    const std::size_t begin = FOffset;
    const bool negative = Peek() == '-';
    if (negative)
        Bump();
    bool isFloat = false;
    bool isHex = false;
    if (Peek() == '$') {
        isHex = true;
        Bump();
        while (HexDigit(Peek()) >= 0)
            Bump();
    } else {
        while (IsDigit(Peek()))
            Bump();
        if (Peek() == '.' && IsDigit(Peek(1))) {
            isFloat = true;
            Bump();
            while (IsDigit(Peek()))
                Bump();
        }
        const char e = Peek();
        if ((e == 'e' || e == 'E') &&
            (IsDigit(Peek(1)) || ((Peek(1) == '+' || Peek(1) == '-') && IsDigit(Peek(2))))) {
            isFloat = true;
            Bump();
            Bump();
            while (IsDigit(Peek()))
                Bump();
        }
    }
    const std::string_view text = FText.substr(begin, FOffset - begin);
    FCurrent.Text.assign(text);
    if (IsNameChar(Peek()) || Peek() == '.' || Peek() == '$')
        Fail(FCurrent.Position, "malformed number starting '" + FCurrent.Text + Peek() + "'");

    const char* first = text.data();
    const char* last = text.data() + text.size();
    if (isHex) {
        const std::size_t digits = text.size() - (negative ? 2 : 1);
        if (digits == 0)
            Fail(FCurrent.Position, "expected hex digits after '$'");
        if (digits > 16)
            Fail(FCurrent.Position, "hex number '" + FCurrent.Text + "' has more than 16 digits");
        std::uint64_t bits = 0;
        std::from_chars(first + (negative ? 2 : 1), last, bits, 16);
        // Intentional: 16 hex digits are the two's-complement bits, so $FFFFFFFFFFFFFFFF is -1,
        // the way 64-bit values are usually written in hex.
        FCurrent.Kind = TFXFormTokenKind::Integer;
        FCurrent.Integer = std::int64_t(negative ? (~bits + 1) : bits);
        return;
    }
    if (isFloat) {
        auto [end, ec] = std::from_chars(first, last, FCurrent.Float);
        if (ec != std::errc() || end != last)
            Fail(FCurrent.Position, "float '" + FCurrent.Text + "' is out of range");
        FCurrent.Kind = TFXFormTokenKind::Float;
        return;
    }
    auto [end, ec] = std::from_chars(first, last, FCurrent.Integer);
    if (ec != std::errc() || end != last)
        Fail(FCurrent.Position, "integer '" + FCurrent.Text + "' is out of range");
    FCurrent.Kind = TFXFormTokenKind::Integer;
}

void TFXFormLexer::AppendCharacterCode(std::string& out, TFXFormPosition start)
{
    auto readCode = [&]() -> std::uint32_t {
        const TFXFormPosition at = FPosition;
        Bump(); // '#'
        const bool hex = Peek() == '$';
        if (hex)
            Bump();
        const int base = hex ? 16 : 10;
        std::uint32_t code = 0;
        int digits = 0;
        for (int d; (d = HexDigit(Peek())) >= 0 && d < base; ++digits) {
            code = code * base + d;
            if (code > 0x10FFFF)
                Fail(at, "character code above 0x10FFFF");
            Bump();
        }
        if (digits == 0)
            Fail(at, "expected a character code after '#'");
        return code;
    };
    const TFXFormPosition at = FPosition;
    std::uint32_t code = readCode();
    if (code >= 0xDC00 && code <= 0xDFFF)
        Fail(at, "character code " + std::to_string(code) + " is half of a surrogate pair");
    if (code >= 0xD800 && code <= 0xDBFF) {
        // Editors that think in UTF-16 write a character outside the basic plane as two codes.
        if (Peek() != '#')
            Fail(at, "character code " + std::to_string(code) + " is half of a surrogate pair");
        const std::uint32_t low = readCode();
        if (low < 0xDC00 || low > 0xDFFF)
            Fail(at, "character code " + std::to_string(code) + " is half of a surrogate pair");
        code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
    }
    AppendUtf8(out, code);
    CheckValueSize(out.size(), start);
}

void TFXFormLexer::ScanString()
{
    const TFXFormPosition start = FPosition;
    std::string& out = FCurrent.Text;
    for (;;) {
        if (Peek() == '#') {
            AppendCharacterCode(out, start);
        } else if (Peek() == '\'') {
            const TFXFormPosition quote = FPosition;
            Bump();
            for (;;) {
                if (AtEnd() || Peek() == '\n' || Peek() == '\r')
                    Fail(quote, "unterminated string (a quoted run must close on its line)");
                const char c = Peek();
                Bump();
                if (c == '\'') {
                    if (Peek() != '\'')
                        break;
                    Bump();
                }
                out += c;
            }
            CheckValueSize(out.size(), start);
        } else {
            break;
        }
    }
    FCurrent.Kind = TFXFormTokenKind::String;
}

std::vector<std::uint8_t> TFXFormLexer::ReadBinaryBlock()
{
    const TFXFormPosition open = FCurrent.Position;
    std::vector<std::uint8_t> bytes;
    int pending = -1;
    for (;;) {
        SkipSpace();
        if (AtEnd())
            Fail(open, "unterminated binary block (missing '}')");
        const char c = Peek();
        if (c == '}') {
            Bump();
            break;
        }
        const int digit = HexDigit(c);
        if (digit < 0)
            Fail(FPosition, "unexpected " + DescribeChar(c) + " in binary block");
        Bump();
        if (pending < 0) {
            pending = digit;
        } else {
            bytes.push_back(std::uint8_t(pending << 4 | digit));
            pending = -1;
            CheckValueSize(bytes.size(), open);
        }
    }
    if (pending >= 0)
        Fail(open, "binary block has an odd number of hex digits");
    Advance();
    return bytes;
}

} // namespace framix
