#include "Commands.h"

#include <algorithm>

namespace nxTool
{
std::span<Command const* const> AllCommands()
{
    // clang-format off
    static constexpr Command const* commands[] = {
        &boardCommand,
        &priceCommand,
        &ladderCommand,
        &convertCommand,
        &describeCommand,
        &listCommand,
        &maskCommand,
        &keysCommand,
        &referenceCommand,
        &csvCommand,
        &identityCommand,
        &versionCommand,
        &whenCommand,
        &addressCommand,
        &listenCommand,
        &sendCommand,
        &logLoadCommand,
        &checkCommand,
        &completionCommand,
        &manualCommand,
    };
    // clang-format on
    return commands;
}

Command const* FindCommand(std::string_view name)
{
    auto const commands = AllCommands();
    auto const found =
        std::ranges::find(commands, name, [](Command const* command) { return command->name; });
    return found == commands.end() ? nullptr : *found;
}

std::span<Option const> CommonOptions()
{
    static constexpr Option options[] = {
        {"json", "", "print one JSON document in place of text"},
        {"log", "DIRECTORY", "write the program's own log to a file in a directory of the day there",
         Completes::Directory},
        {"help", "", "say what the command does"},
    };
    return options;
}
} // namespace nxTool
