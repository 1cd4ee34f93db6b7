#include "Arguments.h"

#include "NearMiss.h"

#include "core/process/nxCmdLineArgs.h"

#include <algorithm>
#include <charconv>

namespace nxTool
{
namespace
{
constexpr char guard = '\\';

bool IsSwitch(std::string_view word)
{
    if (word.size() < 2 || word.front() != '-')
        return false;
    std::size_t const first = word.find_first_not_of('-');
    if (first == std::string_view::npos)
        return false;
    char const character = word[first];
    return !(character >= '0' && character <= '9') && character != '.';
}

std::string_view NameOf(std::string_view word)
{
    return word.substr(word.starts_with("--") ? 2 : 1);
}

bool IsGuarded(std::string_view word)
{
    return word.starts_with(guard);
}

std::string Guarded(std::string_view word)
{
    bool const isMistakable = word.empty() || word.starts_with('-') || IsGuarded(word);
    return (isMistakable ? std::string(1, guard) : std::string()).append(word);
}

std::string Unguarded(std::string_view word)
{
    return std::string(IsGuarded(word) ? word.substr(1) : word);
}

Option const* FindOption(Command const& command, std::string_view name)
{
    for (auto const options : {command.options, CommonOptions()})
        for (Option const& option : options)
            if (option.name == name)
                return &option;
    return nullptr;
}

std::string UnknownSwitch(Command const& command, std::string_view name)
{
    std::vector<std::string_view> names;
    for (auto const options : {command.options, CommonOptions()})
        for (Option const& option : options)
            names.push_back(option.name);
    return "unknown switch -" + std::string(name) + DidYouMean(name, names, "-");
}
} // namespace

OrderedWords::OrderedWords(Command const& command, std::string_view program,
                           std::span<char const* const> words)
{
    std::vector<std::string> switches;
    _words = {std::string(program), std::string(command.name)};
    for (std::size_t index = 0; index < words.size(); ++index)
    {
        std::string_view const word = words[index];
        if (!IsSwitch(word))
        {
            _words.push_back(Guarded(word));
            continue;
        }
        Option const* const option = FindOption(command, NameOf(word));
        switches.push_back("-" + std::string(NameOf(word)));
        bool const takesValue = option != nullptr && !option->value.empty();
        if (takesValue && index + 1 < words.size() && !IsSwitch(words[index + 1]))
            switches.push_back(Guarded(words[++index]));
    }
    std::ranges::move(switches, std::back_inserter(_words));

    for (std::string& word : _words)
        _pointers.push_back(word.data());
    _pointers.push_back(nullptr);
}

Arguments::Arguments(Command const& command, nxCmdLineArgs const& commandLine) : _commandLine(commandLine)
{
    commandLine.GetUnprocessedArgs(_arguments);
    _arguments.erase(_arguments.begin()); // the command itself
    std::ranges::transform(_arguments, _arguments.begin(), Unguarded);

    std::map<std::string, std::string> switches;
    commandLine.GetArgs(switches);
    for (auto const& [name, value] : switches)
    {
        Option const* const option = FindOption(command, name);
        if (option == nullptr)
            _fault = UnknownSwitch(command, name);
        else if (!option->value.empty() && value.empty())
            _fault = "-" + name + " needs a value: " + std::string(option->value);
        if (!_fault.empty())
            return;
    }
    if (!Has("help"))
        _CheckCount(command);
}

void Arguments::_CheckCount(Command const& command)
{
    if (_arguments.size() < command.fewestArguments)
        _fault = "too few arguments, expected " + std::string(command.arguments);
    else if (_arguments.size() > command.mostArguments)
        _fault = "unexpected argument " + _arguments[command.mostArguments];
}

std::string Arguments::Get(std::size_t index) const
{
    return index < _arguments.size() ? _arguments[index] : std::string();
}

bool Arguments::Has(std::string_view option) const
{
    return _commandLine.IsArgDefined(std::string(option));
}

std::optional<std::string> Arguments::GetOption(std::string_view option) const
{
    if (!Has(option))
        return std::nullopt;
    return Unguarded(_commandLine.GetArgValue(std::string(option)));
}

std::string Arguments::GetOption(std::string_view option, std::string_view otherwise) const
{
    return GetOption(option).value_or(std::string(otherwise));
}

std::optional<long long> Arguments::GetNumber(std::string_view option, long long least, long long most) const
{
    auto const text = GetOption(option);
    if (!text)
        return std::nullopt;
    std::string_view digits = *text;
    if (digits.starts_with('+') && !digits.starts_with("+-"))
        digits.remove_prefix(1); // as the commands print steps
    long long number = 0;
    auto const [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc() || end != digits.data() + digits.size() || number < least || number > most)
        return std::nullopt;
    return number;
}
} // namespace nxTool
