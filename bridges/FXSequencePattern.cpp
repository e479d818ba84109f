// SPDX-License-Identifier: MIT
// printf-style numbered file names of image sequences.
#include "bridges/FXSequencePattern.h"

#include "framework/FXError.h"

namespace framix {

TFXSequencePattern::TFXSequencePattern(std::string pattern) : FText(std::move(pattern))
{
    std::string* out = &FPrefix;
    for (std::size_t i = 0; i < FText.size(); ++i) {
        if (FText[i] != '%') {
            *out += FText[i];
            continue;
        }
        const std::size_t start = i++;
        if (i < FText.size() && FText[i] == '%') {
            *out += '%';
            continue;
        }
        const bool zero = i < FText.size() && FText[i] == '0';
        if (zero)
            ++i;
        int width = 0;
        int digits = 0;
        for (; i < FText.size() && FText[i] >= '0' && FText[i] <= '9' && digits < 2; ++i, ++digits)
            width = width * 10 + (FText[i] - '0');
        if (i >= FText.size() || FText[i] != 'd')
            throw EFXError("unsupported '" + FText.substr(start, i - start + 1) +
                           "' in the file name pattern '" + FText +
                           "' (use %d or %04d for the number, %% for a percent sign)");
        if (FNumbered)
            throw EFXError("the file name pattern '" + FText + "' has more than one number");
        FNumbered = true;
        FZeroPad = zero;
        FWidth = width;
        out = &FSuffix;
    }
}

std::string TFXSequencePattern::FileName(int number) const
{
    if (!FNumbered)
        return FPrefix;
    std::string digits = std::to_string(number);
    if (int(digits.size()) < FWidth)
        digits.insert(0, std::size_t(FWidth) - digits.size(), FZeroPad ? '0' : ' ');
    return FPrefix + digits + FSuffix;
}

} // namespace framix
