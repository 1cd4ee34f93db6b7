#pragma once

#include "Command.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

class nxCmdLineArgs;

namespace nxTool
{
/// A command's line in the order that nxCmdLineArgs reads as it is meant.
///
/// nxCmdLineArgs has no table of switches: to it the word behind any switch is that switch's value, a word that begins with
/// a dash is a switch, and one without a value has an empty one. People write `-quotes FILE`, where `-quotes` is a flag,
/// negative prices such as `-101-16`, and `-search ""`. So the command's table is consulted here: the arguments go first,
/// the switches behind them, each with its value if it takes one, and an argument or a value that is empty or begins with
/// a dash gets a backslash in front, as one that begins with a backslash does. A switch may have two dashes. What begins
/// with dashes and a digit or a point is no switch, and neither is a dash alone.
class OrderedWords
{
public:
    /// @param words  what follows the command's name
    OrderedWords(Command const& command, std::string_view program, std::span<char const* const> words);

    /// For nxCmdLineArgs::Initialise(); valid as long as this object.
    char** GetArgv()
    {
        return _pointers.data();
    }

private:
    std::vector<std::string> _words;
    std::vector<char*> _pointers;
};

/// The arguments and switches of one command, as nxCmdLineArgs has read them, checked against the command's table.
class Arguments
{
public:
    /// @param commandLine  has been given the OrderedWords of this command; stays the caller's
    Arguments(Command const& command, nxCmdLineArgs const& commandLine);

    /// What is wrong with the line; empty when nothing is.
    std::string const& GetFault() const
    {
        return _fault;
    }

    std::vector<std::string> const& GetAll() const
    {
        return _arguments;
    }

    /// The argument at an index, or an empty text.
    std::string Get(std::size_t index) const;

    bool Has(std::string_view option) const;

    /// The value of a switch, or nothing when it was not given.
    std::optional<std::string> GetOption(std::string_view option) const;
    std::string GetOption(std::string_view option, std::string_view otherwise) const;

    /// The value of a switch as a whole number of the range; nothing when it is not one.
    std::optional<long long> GetNumber(std::string_view option, long long least, long long most) const;

private:
    void _CheckCount(Command const& command);

    nxCmdLineArgs const& _commandLine;
    std::vector<std::string> _arguments;
    std::string _fault;
};
} // namespace nxTool
