// SPDX-License-Identifier: MIT
// Entry point of the `framix` program: dispatches to a command, turns failures into one line.
#include <iostream>
#include <string>
#include <vector>

#include "framework/FXError.h"
#include "host/FXGraphRunner.h"
#include "host/FXHostCommands.h"

namespace {

// One line, whatever the message holds: scripts read the last line of stderr.
std::string OneLine(std::string text)
{
    for (char& c : text)
        if (c == '\n' || c == '\r')
            c = ' ';
    return text;
}

int Dispatch(const std::vector<std::string>& args)
{
    using namespace framix;
    if (args.empty())
        throw TFXUsageError{"no command given"};
    const std::string& command = args[0];
    const std::vector<std::string> rest(args.begin() + 1, args.end());
    if (command == "run")
        return FXRunCommand(rest);
    if (command == "list")
        return FXListCommand(rest, std::cout);
    if (command == "props")
        return FXPropsCommand(rest, std::cout);
    if (command == "save")
        return FXSaveCommand(rest);
    if (command == "demo")
        return FXDemoCommand(rest, std::cout);
    if (command == "help" || command == "--help" || command == "-h") {
        std::cout << FXHostUsage();
        return kFXExitOK;
    }
    if (command == "--version") {
        std::cout << "framix " FRAMIX_VERSION "\n";
        return kFXExitOK;
    }
    throw TFXUsageError{"unknown command '" + command + "'"};
}

} // namespace

int main(int argc, char** argv)
{
    using namespace framix;
    TFXGraphRunner::InstallSignalHandlers();
    try {
        return Dispatch(std::vector<std::string>(argv + 1, argv + argc));
    } catch (const TFXUsageError& e) {
        std::cerr << "framix: " << OneLine(e.Message) << " (see framix --help)\n";
        return kFXExitUsage;
    } catch (const std::exception& e) {
        std::cerr << "framix: " << OneLine(e.what()) << "\n";
        return kFXExitError;
    }
}
