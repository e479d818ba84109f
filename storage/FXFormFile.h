// SPDX-License-Identifier: MIT
// Reading and writing stored forms: the entry points over the syntax tree.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "storage/FXFormError.h"
#include "storage/FXFormObject.h"
#include "storage/FXFormReader.h"
#include "storage/FXFormValue.h"
#include "storage/FXFormWriter.h"

namespace framix {

// Parses form text. `fileName` only labels error messages.
TFXFormObject FXReadFormText(std::string_view text, const std::string& fileName = "<form>",
                             const TFXFormLimits& limits = {});

// Reads and parses a form file; a missing or unreadable file is an EFXError naming it.
TFXFormObject FXReadFormFile(const std::filesystem::path& path, const TFXFormLimits& limits = {});

// The normalised text of a tree (see TFXFormWriter).
std::string FXWriteFormText(const TFXFormObject& root);

// Writes the normalised text to a file, replacing it; errors name the file.
void FXWriteFormFile(const TFXFormObject& root, const std::filesystem::path& path);

} // namespace framix
