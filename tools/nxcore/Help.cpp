#include "Help.h"

#include "NearMiss.h"

#include <algorithm>

namespace nxTool
{
namespace
{
std::string SwitchOf(Option const& option)
{
    std::string text = "-" + std::string(option.name);
    if (!option.value.empty())
        text.append(" ").append(option.value);
    return text;
}

void AppendOptions(std::string& text, std::span<Option const> options, std::size_t width)
{
    for (Option const& option : options)
    {
        std::string const name = SwitchOf(option);
        text.append("  ").append(name).append(width - name.size() + 2, ' ').append(option.help).append("\n");
    }
}

std::size_t WidestSwitch(std::span<Option const> options)
{
    std::size_t width = 0;
    for (Option const& option : options)
        width = std::max(width, SwitchOf(option).size());
    return width;
}
} // namespace

std::string GeneralHelp()
{
    std::size_t width = 0;
    for (Command const* command : AllCommands())
        width = std::max(width, command->name.size());

    std::string text = "nxcore shows the platform's foundation library at work.\n\n"
                       "Usage: nxcore COMMAND [ARGUMENT...] [-SWITCH [VALUE]...]\n\nCommands:\n";
    for (Command const* command : AllCommands())
        text.append("  ")
            .append(command->name)
            .append(width - command->name.size() + 2, ' ')
            .append(command->summary)
            .append("\n");
    text += "\nExamples:\n";
    for (Command const* command : AllCommands())
        text.append("  ").append(command->example).append("\n");
    text += "\nEvery command knows -json (one document on standard output), -log DIRECTORY and -help.\n"
            "Exit status: 0 all good, 1 some input was at fault and the rest was shown, 2 wrong use or "
            "nothing read.\n";
    return text;
}

std::string HelpOf(Command const& command)
{
    std::string text = "Usage: nxcore " + std::string(command.name);
    if (!command.arguments.empty())
        text.append(" ").append(command.arguments);
    for (Option const& option : command.options)
        text.append(" [").append(SwitchOf(option)).append("]");
    text.append("\n\n").append(command.details).append("\n\nSwitches:\n");
    std::size_t const width = std::max(WidestSwitch(command.options), WidestSwitch(CommonOptions()));
    AppendOptions(text, command.options, width);
    AppendOptions(text, CommonOptions(), width);
    text.append("\nExample:\n  ").append(command.example).append("\n");
    return text;
}

std::string DidYouMeanCommand(std::string_view word)
{
    std::vector<std::string_view> names;
    for (Command const* command : AllCommands())
        names.push_back(command->name);
    return DidYouMean(word, names);
}
} // namespace nxTool
