// SPDX-License-Identifier: MIT
// The exception type every Framix error is reported with.
#pragma once

#include <stdexcept>
#include <string>

namespace framix {

// All errors raised by the library derive from EFXError; what() is the message shown to users.
class EFXError : public std::runtime_error {
public:
    explicit EFXError(const std::string& message) : std::runtime_error(message) {}
};

} // namespace framix
