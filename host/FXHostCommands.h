// SPDX-License-Identifier: MIT
// The commands of the `framix` program.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace framix {

// Exit codes of the program.
inline constexpr int kFXExitOK = 0;
inline constexpr int kFXExitError = 1;         // the command failed; one line on stderr says why
inline constexpr int kFXExitUsage = 2;         // the command line was wrong
inline constexpr int kFXExitInterrupted = 130; // stopped by Ctrl-C, after a clean stop

// A wrong command line: reported with a pointer to --help, exit code 2.
struct TFXUsageError {
    std::string Message;
};

// Each command takes the arguments after its name; output goes to `out`, progress and
// statistics to stderr. Failures are thrown (EFXError or TFXUsageError).
int FXRunCommand(const std::vector<std::string>& args);
int FXListCommand(const std::vector<std::string>& args, std::ostream& out);
int FXPropsCommand(const std::vector<std::string>& args, std::ostream& out);
int FXSaveCommand(const std::vector<std::string>& args);
int FXDemoCommand(const std::vector<std::string>& args, std::ostream& out);

std::string FXHostUsage();

} // namespace framix
