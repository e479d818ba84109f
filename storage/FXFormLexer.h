// SPDX-License-Identifier: MIT
// Splits stored-form text into tokens, tracking line and column for error messages.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "storage/FXFormError.h"

namespace framix {

enum class TFXFormTokenKind : std::uint8_t {
    EndOfText,
    Name,    // an identifier, possibly dotted: Kernel.Width, Graph1.Blur1.OutputPin
    Integer, // decimal or $hex, with an optional leading minus
    Float,
    String, // quoted runs and #codes already joined and decoded to UTF-8
    Symbol, // one of = : , [ ] ( ) { } < > +
};

struct TFXFormToken {
    TFXFormTokenKind Kind = TFXFormTokenKind::EndOfText;
    TFXFormPosition Position;
    std::string Text; // the name, the decoded string, or the number as written
    std::int64_t Integer = 0;
    double Float = 0;
    char Symbol = 0;
};

// A one-token window over the text. The parser drives it; binary blocks are read raw
// (ReadBinaryBlock) because their hex digits would otherwise lex as numbers and names.
class TFXFormLexer {
public:
    TFXFormLexer(std::string_view text, std::string fileName, std::size_t maxValueBytes);

    const TFXFormToken& Current() const { return FCurrent; }
    void Advance();
    bool IsSymbol(char symbol) const
    {
        return FCurrent.Kind == TFXFormTokenKind::Symbol && FCurrent.Symbol == symbol;
    }

    // The current token must be '{' and nothing past it scanned yet (Advance() was not called).
    // Returns the bytes up to the matching '}' and makes the token after it current.
    std::vector<std::uint8_t> ReadBinaryBlock();

    [[noreturn]] void Fail(TFXFormPosition position, const std::string& reason) const;
    const std::string& FileName() const { return FFileName; }

private:
    bool AtEnd() const { return FOffset >= FText.size(); }
    char Peek(std::size_t ahead = 0) const
    {
        return FOffset + ahead < FText.size() ? FText[FOffset + ahead] : '\0';
    }
    void Bump();
    void SkipSpace();
    void ScanName();
    void ScanNumber();
    void ScanString();
    void AppendCharacterCode(std::string& out, TFXFormPosition start);
    void CheckValueSize(std::size_t bytes, TFXFormPosition start) const;

    std::string_view FText;
    std::string FFileName;
    std::size_t FMaxValueBytes;
    std::size_t FOffset = 0;
    TFXFormPosition FPosition{1, 1};
    TFXFormToken FCurrent;
};

} // namespace framix
