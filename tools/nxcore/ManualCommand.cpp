// `nxcore manual`: the manual page, made from the table of commands.

#include "Arguments.h"
#include "Commands.h"
#include "Result.h"

#include <sstream>

namespace nxTool
{
namespace
{
/// Text for roff: backslashes, leading dots and dashes keep their meaning as characters.
std::string Roff(std::string_view text)
{
    std::string result;
    bool atLineStart = true;
    for (char const character : text)
    {
        if (atLineStart && (character == '.' || character == '\''))
            result += "\\&";
        if (character == '\\')
            result += "\\e";
        else if (character == '-')
            result += "\\-";
        else
            result += character;
        atLineStart = character == '\n';
    }
    return result;
}

void WriteOption(std::ostream& page, Option const& option)
{
    page << ".TP\n.B \\-" << Roff(option.name);
    if (!option.value.empty())
        page << "\n.I " << Roff(option.value);
    page << "\n" << Roff(option.help) << "\n";
}

void WriteCommand(std::ostream& page, Command const& command)
{
    page << ".SS \"" << Roff(command.name);
    if (!command.arguments.empty())
        page << " " << Roff(command.arguments);
    page << "\"\n" << Roff(command.details) << "\n";
    for (Option const& option : command.options)
        WriteOption(page, option);
    page << ".PP\n.nf\n" << Roff(command.example) << "\n.fi\n";
}

std::string ManualPage()
{
    std::ostringstream page;
    page << ".TH NXCORE 1 \"\" \"nxcore\" \"User Commands\"\n"
            ".SH NAME\nnxcore \\- shows the foundation library of the platform at work\n"
            ".SH SYNOPSIS\n.B nxcore\n.I COMMAND\n[\\fIARGUMENT\\fR...] [\\-\\fISWITCH\\fR "
            "[\\fIVALUE\\fR]...]\n"
            ".SH COMMANDS\n";
    for (Command const* command : AllCommands())
        WriteCommand(page, *command);
    page << ".SH \"SWITCHES OF ALL COMMANDS\"\n";
    for (Option const& option : CommonOptions())
        WriteOption(page, option);
    page << ".SH \"EXIT STATUS\"\n"
            ".TP\n.B 0\nEverything asked for was shown.\n"
            ".TP\n.B 1\nSome input was at fault; the sound part was shown.\n"
            ".TP\n.B 2\nThe command line was wrong, or nothing could be read.\n"
            ".SH ENVIRONMENT\n.TP\n.B NO_COLOR\nWhen set and not empty, nothing is coloured.\n";
    return page.str();
}

Status Run(Arguments const&, Result& result)
{
    result.AddText("manual", ManualPage());
    return Status::Good;
}
} // namespace

Command const manualCommand = {
    .name = "manual",
    .summary = "print the manual page",
    .details = "Prints nxcore(1) in the language of man.",
    .example = "nxcore manual | man -l -",
    .run = Run,
};
} // namespace nxTool
