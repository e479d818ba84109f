// SPDX-License-Identifier: MIT
// Runs the `framix` program from tests: shell scripts in a temporary folder, output captured.
#pragma once

#include <sys/wait.h>

#include <string>

#include "tests/bridges/BridgeTestSupport.h"

namespace framix::test {

struct TShellResult {
    int Status; // the exit status; 128 + signal when killed
    std::string Out;
    std::string Err;
};

// The program built beside these tests.
inline std::string Framix()
{
    return std::string(FRAMIX_BINARY_DIR) + "/framix";
}

inline bool HaveFfmpeg()
{
    return std::system("command -v ffmpeg >/dev/null 2>&1") == 0;
}

// Runs `script` with bash in `dir` (with pipefail, so a pipeline fails with its first failing
// command) and captures what it writes to standard output and error.
inline TShellResult RunShell(const TTempDir& dir, const std::string& script)
{
    WriteBytes(dir / "run.sh", "set -o pipefail\ncd '" + (dir / "") + "'\n" + script + "\n");
    const int raw = std::system(("bash '" + (dir / "run.sh") + "' >'" + (dir / "run.out") +
                                 "' 2>'" + (dir / "run.err") + "'")
                                    .c_str());
    const int status = WIFEXITED(raw) ? WEXITSTATUS(raw) : 128 + WTERMSIG(raw);
    return {status, ReadBytes(dir / "run.out"), ReadBytes(dir / "run.err")};
}

} // namespace framix::test
