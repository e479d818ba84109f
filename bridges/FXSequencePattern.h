// SPDX-License-Identifier: MIT
// printf-style numbered file names of image sequences: in_%04d.ppm.
#pragma once

#include <string>

namespace framix {

// One number directive (%d, %4d or %04d) with `%%` for a literal percent sign, the subset
// of printf that ffmpeg and shell loops use for frame files.
class TFXSequencePattern {
public:
    // Throws EFXError for any other '%' use and for a second number.
    explicit TFXSequencePattern(std::string pattern);

    bool IsNumbered() const { return FNumbered; }
    const std::string& Text() const { return FText; }
    // The name of image `number`; without a number directive, the name with %% unescaped.
    std::string FileName(int number) const;

private:
    std::string FText;
    std::string FPrefix;
    std::string FSuffix;
    bool FNumbered = false;
    bool FZeroPad = false;
    int FWidth = 0;
};

} // namespace framix
