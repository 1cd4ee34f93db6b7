#include "CompletionScripts.h"

#include <vector>

namespace nxTool
{
namespace
{
/// A word of a shell's script that stands for exactly this text.
std::string Quoted(std::string_view text)
{
    std::string result = "'";
    for (char const character : text)
    {
        if (character == '\'')
            result += "'\\'";
        result += character;
    }
    return result + "'";
}

/// The same for fish, where a backslash counts between quotes.
std::string QuotedForFish(std::string_view text)
{
    std::string result = "'";
    for (char const character : text)
    {
        if (character == '\'' || character == '\\')
            result += '\\';
        result += character;
    }
    return result + "'";
}

/// Text inside of an entry of zsh's _arguments or _describe.
std::string Escaped(std::string_view text)
{
    std::string result;
    for (char const character : text)
    {
        if (character == ':' || character == '[' || character == ']' || character == '\\')
            result += '\\';
        result += character;
    }
    return result;
}

std::vector<Option> SwitchesOf(Command const& command)
{
    std::vector<Option> switches(command.options.begin(), command.options.end());
    for (Option const& option : CommonOptions())
        switches.push_back(option);
    return switches;
}

std::string BashCase(Command const& command)
{
    std::string switches;
    std::string kinds;
    for (Option const& option : SwitchesOf(command))
    {
        switches.append(switches.empty() ? "-" : " -").append(option.name);
        if (!option.value.empty())
            kinds.append(" [-").append(option.name).append("]=").append(NameOf(option.completes));
    }
    if (command.completes != Completes::Nothing)
        kinds.append(" [")
            .append(std::to_string(command.completedArgument))
            .append("]=")
            .append(NameOf(command.completes));
    return "    " + std::string(command.name) + ")\n        switches='" + switches + "'\n        kindOf=(" +
           (kinds.empty() ? "" : kinds.substr(1)) + ")\n        ;;\n";
}

/// What zsh does to complete a word.
std::string ZshAction(Completes kind)
{
    switch (kind)
    {
    case Completes::Nothing: return " ";
    case Completes::File: return "_files";
    case Completes::Directory: return "_files -/";
    default: return "_nxcore_words " + std::string(NameOf(kind));
    }
}

std::string ZshCase(Command const& command)
{
    std::string text = "        " + std::string(command.name) + ")\n            _arguments";
    for (Option const& option : SwitchesOf(command))
    {
        std::string entry = "-" + std::string(option.name) + "[" + Escaped(option.help) + "]";
        if (!option.value.empty())
            entry.append(":").append(Escaped(option.value)).append(":").append(ZshAction(option.completes));
        text.append(" \\\n                ").append(Quoted(entry));
    }
    for (std::size_t index = 0; index < command.mostArguments && index <= command.completedArgument; ++index)
    {
        Completes const kind = index == command.completedArgument ? command.completes : Completes::Nothing;
        std::string const entry =
            std::to_string(index + 1) + ":" + std::string(NameOf(kind)) + ":" + ZshAction(kind);
        text.append(" \\\n                ").append(Quoted(entry));
    }
    return text + "\n            ;;\n";
}

/// What follows in fish where a word of a kind is meant; -x takes no files.
std::string FishAction(Completes kind)
{
    switch (kind)
    {
    case Completes::Nothing: return " -x";
    case Completes::File: return " -r -F";
    case Completes::Directory: return " -x -a '(__fish_complete_directories)'";
    default: return " -x -a '(__nxcore_words " + std::string(NameOf(kind)) + ")'";
    }
}

std::string FishLines(Command const& command)
{
    std::string const name(command.name);
    std::string text = "complete -c nxcore -n __fish_use_subcommand -a " + name + " -d " +
                       QuotedForFish(command.summary) + "\n";
    std::string const begin = "complete -c nxcore -n '__fish_seen_subcommand_from " + name + "'";
    for (Option const& option : SwitchesOf(command))
        text.append(begin)
            .append(" -o ")
            .append(option.name)
            .append(option.value.empty() ? "" : FishAction(option.completes))
            .append(" -d ")
            .append(QuotedForFish(option.help))
            .append("\n");
    if (command.completes == Completes::File)
        return text + begin + " -F\n";
    if (command.completes != Completes::Nothing)
        text.append(begin).append(FishAction(command.completes)).append("\n");
    return text;
}
} // namespace

std::string_view NameOf(Completes kind)
{
    switch (kind)
    {
    case Completes::Class: return "classes";
    case Completes::Command: return "commands";
    case Completes::Currency: return "currencies";
    case Completes::Directory: return "directories";
    case Completes::File: return "files";
    case Completes::Key: return "keys";
    case Completes::Ladder: return "ladders";
    case Completes::PriceFormat: return "formats";
    case Completes::RoundingMethod: return "methods";
    case Completes::Shell: return "shells";
    case Completes::Nothing: break;
    }
    return "nothing";
}

std::string BashCompletion()
{
    std::string names;
    std::string cases;
    for (Command const* const command : AllCommands())
    {
        names.append(command->name).append(" ");
        cases += BashCase(*command);
    }
    return R"shell(# Completion of nxcore for bash, as `nxcore completion bash` writes it.

_nxcore()
{
    local program=${COMP_WORDS[0]} current=${COMP_WORDS[COMP_CWORD]} switches='' word index
    local -A kindOf=() # of the value of a switch, and of an argument by its position
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        mapfile -t COMPREPLY < <(compgen -W ')shell" +
           names + R"shell(-help' -- "$current")
        return
    fi
    case ${COMP_WORDS[1]} in
)shell" + cases +
           R"shell(    esac

    local argument=0 expected=''
    for ((index = 2; index < COMP_CWORD; ++index)); do
        word=${COMP_WORDS[index]}
        expected=''
        if [[ $word != -* ]]; then
            ((++argument))
        elif [[ -n ${kindOf[$word]-} ]]; then
            expected=${kindOf[$word]}
            ((++index))
        fi
    done
    # The loop goes beyond the cursor only for a switch whose value is being typed.
    ((index > COMP_CWORD)) || expected=''

    if [[ -z $expected && $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$switches" -- "$current")
        return
    fi
    local kind=${expected:-${kindOf[$argument]-nothing}}
    case $kind in
    nothing) ;;
    files)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
        ;;
    directories)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -d -- "$current")
        ;;
    *)
        mapfile -t COMPREPLY < <(compgen -W "$("$program" completion -words "$kind" 2>/dev/null)" -- "$current")
        ;;
    esac
}

complete -F _nxcore nxcore
)shell";
}

std::string ZshCompletion()
{
    std::string names;
    std::string cases;
    for (Command const* const command : AllCommands())
    {
        std::string const described = std::string(command->name) + ":" + Escaped(command->summary);
        names.append("        ").append(Quoted(described)).append("\n");
        cases += ZshCase(*command);
    }
    return R"shell(#compdef nxcore
# Completion of nxcore for zsh, as `nxcore completion zsh` writes it.

_nxcore_words()
{
    local -a known
    # _arguments puts what compadd needs in front of the kind.
    known=(${(f)"$($program completion -words ${@[-1]} 2>/dev/null)"})
    compadd "${@[1,-2]}" -a known
}

_nxcore()
{
    local program=$words[1] state line
    local -a commands
    commands=(
)shell" + names +
           R"shell(    )
    _arguments -C '-help[say what there is]' '1: :->command' '*:: :->argument'
    case $state in
    command)
        _describe command commands
        ;;
    argument)
        case $words[1] in
)shell" + cases +
           R"shell(        esac
        ;;
    esac
}

if [[ $funcstack[1] == _nxcore ]]; then
    _nxcore "$@"
else
    compdef _nxcore nxcore
fi
)shell";
}

std::string FishCompletion()
{
    std::string text = R"shell(# Completion of nxcore for fish, as `nxcore completion fish` writes it.

function __nxcore_words
    set -l line (commandline -opc)
    $line[1] completion -words $argv[1] 2>/dev/null
end

complete -c nxcore -f
complete -c nxcore -n __fish_use_subcommand -o help -d 'say what there is'
)shell";
    for (Command const* const command : AllCommands())
        text += FishLines(*command);
    return text;
}
} // namespace nxTool
