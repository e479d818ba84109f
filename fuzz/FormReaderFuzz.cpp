// SPDX-License-Identifier: MIT
// Fuzz target: the stored-form reader, and the writer on every tree the reader accepts.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "storage/FXFormFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace framix;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    TFXFormObject tree;
    try {
        tree = FXReadFormText(text, "fuzz.dfm");
    } catch (const EFXFormError&) {
        return 0; // rejected with a position: the expected outcome for garbage
    }
    // Whatever the reader accepts, the writer must write, and reading that back must give the
    // same tree and the same text again. Any exception or mismatch here is a bug.
    const std::string written = FXWriteFormText(tree);
    const TFXFormObject back = FXReadFormText(written, "written.dfm");
    if (!(back == tree) || FXWriteFormText(back) != written)
        std::abort();
    return 0;
}
