// `nxcore keys`: the configuration keys of the platform, and what the environment holds of them.

#include "Arguments.h"
#include "Commands.h"
#include "KeyWords.h"
#include "NearMiss.h"
#include "Result.h"

#include "core/process/nxCmdLineArgs.h"
#include "core/text/nxStringHelper.h"

#include <algorithm>

namespace nxTool
{
namespace
{
constexpr Option options[] = {
    {"set", "", "only keys that the environment holds, with their values"},
};

std::string Joined(std::vector<std::string_view> const& words)
{
    std::string text;
    for (std::string_view const word : words)
        text.append(text.empty() ? "" : " ").append(word);
    return text;
}

/// Passwords are not shown, nor is their length.
std::string Shown(std::string_view key, std::string const& value)
{
    return key.ends_with("PASSWORD") && !value.empty() ? "........" : value;
}

void ComplainAbout(std::string const& fragment, Result& result)
{
    std::vector<std::string_view> names;
    for (Key const& key : AllKeys())
        names.push_back(key.name);
    result.AddProblem("", "no key holds " + fragment + DidYouMean(fragment, names));
}

Status Run(Arguments const& arguments, Result& result)
{
    std::string fragment = arguments.Get(0);
    nxStringHelper::ToUpper(fragment);
    bool const onlySet = arguments.Has("set");
    std::map<std::string, std::string> environment;
    nxCmdLineArgs::GetInstance().GetEnvs(environment);

    std::vector<Column> columns = {{"key", "Key"}};
    if (onlySet)
        columns.push_back({"value", "Value"});
    for (Column const& column : {Column{"group", "Group"}, Column{"type", "Read as"},
                                 Column{"default", "Default"}, Column{"words", "Words"}})
        columns.push_back(column);
    Table& table = result.AddTable("keys", columns);

    bool isKnown = false;
    for (Key const& key : AllKeys())
    {
        auto const value = environment.find(std::string(key.name));
        bool const isMeant = key.name.find(fragment) != std::string_view::npos;
        isKnown = isKnown || isMeant;
        if (!isMeant || (onlySet && value == environment.end()))
            continue;
        std::vector<Cell> cells = {key.name};
        if (onlySet)
            cells.push_back(Shown(key.name, value->second));
        for (Cell const& cell :
             {Cell(key.group), Cell(key.type), Cell(key.otherwise), Cell(Joined(key.words), key.words)})
            cells.push_back(cell);
        table.Add(cells);
    }
    result.AddLine(std::to_string(table.GetRowCount()) + " keys");
    if (!isKnown)
        ComplainAbout(fragment, result);
    return isKnown ? Status::Good : Status::Faulty;
}
} // namespace

Command const keysCommand = {
    .name = "keys",
    .arguments = "[FRAGMENT]",
    .summary = "list the configuration keys, or those that are set",
    .details =
        "Lists the keys of all programs of the platform in the order of their declaration, or those that\n"
        "hold FRAGMENT. Keys that the library itself reads show how, and what holds without them; keys\n"
        "with a closed set of words show these. With -set only keys that the environment holds now are\n"
        "listed, with their values; passwords are shown as dots.",
    .example = "nxcore keys LOG -set",
    .options = options,
    .mostArguments = 1,
    .completes = Completes::Key,
    .run = Run,
};
} // namespace nxTool
