#include "Arguments.h"

#include <charconv>

namespace nxTool
{
namespace
{
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

Option const* FindOption(Command const& command, std::string_view name)
{
    for (auto const options : {command.options, CommonOptions()})
        for (Option const& option : options)
            if (option.name == name)
                return &option;
    return nullptr;
}
} // namespace

Arguments::Arguments(Command const& command, std::span<char const* const> words)
{
    for (std::size_t index = 0; index < words.size(); ++index)
    {
        std::string_view const word = words[index];
        if (!IsSwitch(word))
        {
            _arguments.emplace_back(word);
            continue;
        }
        std::string_view const name = word.substr(word.starts_with("--") ? 2 : 1);
        Option const* const option = FindOption(command, name);
        if (option == nullptr)
        {
            _fault = "unknown switch " + std::string(word);
            return;
        }
        bool const takesValue = !option->value.empty();
        if (takesValue && index + 1 == words.size())
        {
            _fault = "-" + std::string(name) + " needs a value: " + std::string(option->value);
            return;
        }
        _options[std::string(name)] = takesValue ? words[++index] : "";
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
    return _options.contains(std::string(option));
}

std::optional<std::string> Arguments::GetOption(std::string_view option) const
{
    auto const found = _options.find(std::string(option));
    if (found == _options.end())
        return std::nullopt;
    return found->second;
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
    long long number = 0;
    auto const [end, error] = std::from_chars(text->data(), text->data() + text->size(), number);
    if (error != std::errc() || end != text->data() + text->size() || number < least || number > most)
        return std::nullopt;
    return number;
}
} // namespace nxTool
