#pragma once

#include "Command.h"

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace nxTool
{
/// The command line of one command, read by its table: `-name value` for a switch with a value, `-name` for a flag,
/// the rest are arguments in their order. A word that begins with "-" and a digit or a point, or with "--" and a digit,
/// is an argument, so that negative prices can be given; so is a dash alone.
class Arguments
{
public:
    /// @param words  what follows the command's name
    Arguments(Command const& command, std::span<char const* const> words);

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

    std::vector<std::string> _arguments;
    std::unordered_map<std::string, std::string> _options;
    std::string _fault;
};
} // namespace nxTool
