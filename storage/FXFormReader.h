// SPDX-License-Identifier: MIT
// Recursive-descent parser from stored-form text to a TFXFormObject tree.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "storage/FXFormLexer.h"
#include "storage/FXFormObject.h"

namespace framix {

// Bounds that keep hostile or broken input from exhausting the stack or memory. The defaults
// are far above any form a designer writes.
struct TFXFormLimits {
    int MaxDepth = 200;                    // objects, lists and collections nested together
    std::size_t MaxValueBytes = 64u << 20; // one name, string or binary block
    std::size_t MaxTextBytes = 256u << 20; // the whole form
};

// Reads one form: exactly one top-level object block, optionally after a UTF-8 byte order
// mark. Errors are EFXFormError with the file name, line and column of the offending text.
class TFXFormReader {
public:
    TFXFormReader(std::string_view text, std::string fileName, TFXFormLimits limits = {});

    TFXFormObject Read();

private:
    TFXFormObject ParseObject(int depth);
    TFXFormProperty ParseProperty(int depth);
    TFXFormValue ParseValue(int depth);
    TFXFormValue ParseString();
    TFXFormValue ParseSet();
    TFXFormValue ParseList(int depth);
    TFXFormValue ParseCollection(int depth);
    void CheckDepth(int depth) const;
    [[noreturn]] void FailHere(const std::string& reason) const;

    std::string_view FText;
    TFXFormLimits FLimits;
    TFXFormLexer* FLexer = nullptr;
    std::string FFileName;
};

} // namespace framix
