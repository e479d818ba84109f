// SPDX-License-Identifier: MIT
// Formats stored-form errors as file:line:column: reason.
#include "storage/FXFormError.h"

namespace framix {

namespace {

std::string ComposeMessage(const std::string& fileName, TFXFormPosition position,
                           const std::string& reason)
{
    std::string text = fileName.empty() ? std::string("<form>") : fileName;
    if (position.Line > 0)
        text += ':' + std::to_string(position.Line) + ':' + std::to_string(position.Column);
    return text + ": " + reason;
}

} // namespace

EFXFormError::EFXFormError(const std::string& fileName, TFXFormPosition position,
                           const std::string& reason)
    : EFXError(ComposeMessage(fileName, position, reason)), FFileName(fileName),
      FPosition(position), FReason(reason)
{
}

} // namespace framix
