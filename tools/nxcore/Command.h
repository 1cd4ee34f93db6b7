#pragma once

#include <span>
#include <string_view>

/// @file
/// What a command of the companion is. One table says everything about it: the dispatcher, -help, the manual page and
/// the completion of the shells are all made from it.

namespace nxTool
{
class Arguments;
class Result;

/// What an argument names, for the completion of the shells.
enum class Completes
{
    Nothing,
    Class,
    Currency,
    File,
    Directory,
    Key,
    Ladder,
    PriceFormat,
    RoundingMethod,
    Command,
    Shell,
};

/// A switch: `-name` or `-name VALUE`.
struct Option
{
    std::string_view name;
    std::string_view value; ///< the word for the value in the help; empty for a flag
    std::string_view help;
    Completes completes = Completes::Nothing;
};

/// How the program ends.
enum class Status
{
    Good = 0,    ///< everything asked for was shown
    Faulty = 1,  ///< some input was at fault; the sound part was shown
    Unusable = 2 ///< wrong use, or nothing could be read
};

struct Command
{
    std::string_view name;
    std::string_view arguments = {}; ///< as the help shows them, such as "FORMAT TEXT"
    std::string_view summary;        ///< half a line, no full stop
    std::string_view details;        ///< sentences, lines of at most 100 characters
    std::string_view example;        ///< a whole command line
    std::span<Option const> options = {};
    std::size_t fewestArguments = 0;
    std::size_t mostArguments = 0;
    Completes completes = Completes::Nothing;
    std::size_t completedArgument = 0; ///< the position of the argument that `completes` means
    Status (*run)(Arguments const& arguments, Result& result);
};

/// All commands in the order of the help.
std::span<Command const* const> AllCommands();

/// Null when there is no such command.
Command const* FindCommand(std::string_view name);

/// Switches that every command knows.
std::span<Option const> CommonOptions();
} // namespace nxTool
