// SPDX-License-Identifier: MIT
// Source positions in a stored form and the error that points at one.
#pragma once

#include <string>

#include "framework/FXError.h"

namespace framix {

// 1-based line and column of an item in the text; columns count characters, not bytes.
// A zero line means "not from a file" (a tree built in code).
struct TFXFormPosition {
    int Line = 0;
    int Column = 0;
};

// A syntax (or later, semantic) error in a stored form. what() reads
// "graph.dfm:12:7: expected '=' after property name 'Kernel.Width'", the shape editors and
// compilers use, so an IDE can jump to the place.
class EFXFormError : public EFXError {
public:
    EFXFormError(const std::string& fileName, TFXFormPosition position, const std::string& reason);

    const std::string& FileName() const { return FFileName; }
    TFXFormPosition Position() const { return FPosition; }
    int Line() const { return FPosition.Line; }
    int Column() const { return FPosition.Column; }
    // The message without the file and position prefix.
    const std::string& Reason() const { return FReason; }

private:
    std::string FFileName;
    TFXFormPosition FPosition;
    std::string FReason;
};

} // namespace framix
