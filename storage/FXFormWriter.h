// SPDX-License-Identifier: MIT
// Writes a TFXFormObject tree as normalised stored-form text.
#pragma once

#include <string>
#include <string_view>

#include "storage/FXFormObject.h"

namespace framix {

// The normal form: two spaces of indentation per nesting level, one assignment per line,
// properties before child objects, floats with 18 decimals (the shortest digits that read
// back exactly, padded; exponent form from 1e15 up and where 18 decimals are too few),
// strings quoted with #codes for control characters and
// split with `+` beyond kStringChunk bytes or after a line feed, binary blocks in lines of
// kBinaryBytesPerLine bytes. Reading the text back gives an equal tree; writing that tree
// again gives the same text.
class TFXFormWriter {
public:
    static constexpr std::size_t kStringChunk = 64;
    static constexpr std::size_t kBinaryBytesPerLine = 32;

    // Throws EFXError when the tree cannot be written faithfully: a name that is not an
    // identifier, a property named like a keyword, a non-finite float.
    std::string Write(const TFXFormObject& root);

    // The single-token text of a float as the writer renders it ("1.500000000000000000").
    static std::string FormatFloat(double value);

private:
    void WriteObject(const TFXFormObject& object, int indent);
    void WriteProperty(const TFXFormProperty& property, int indent, bool inItem);
    void WriteValue(const TFXFormValue& value, int indent);
    void WriteString(const std::string& text, int indent, bool breakFirst);
    void NewLine(int indent);

    std::string FOut;
};

} // namespace framix
