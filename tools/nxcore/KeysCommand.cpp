// `nxcore keys`: the configuration keys of the platform, and what the environment holds of them.

#include "Arguments.h"
#include "Commands.h"
#include "NearMiss.h"
#include "Result.h"

#include "core/process/nxCmdLineArgs.h"

#include <algorithm>

namespace nxTool
{
namespace
{
enum class RowKind
{
    Group,
    Key,
    Word,
    WordsOf,
    Default
};

/// A row of the catalogue; what `name` and `text` are depends on its kind.
struct Row
{
    RowKind kind;
    std::string_view name;
    std::string_view text;
};

constexpr Row rows[] = {
#define NX_KEY_GROUP(title) {RowKind::Group, title, ""},
#define NX_KEY(key) {RowKind::Key, #key, ""},
#define NX_KEY_WORD(scope, word) {RowKind::Word, #scope, #word},
#define NX_KEY_WORDS_OF(key, scope) {RowKind::WordsOf, #key, #scope},
#define NX_KEY_DEFAULT(key, value) {RowKind::Default, #key, value},
#include "core/process/tables/keys.def"
};

/// What the library itself reads a key as, and what holds when it is missing.
struct Reading
{
    std::string_view key;
    std::string_view type;
    std::string_view otherwise;
};

constexpr Reading readings[] = {
    {"KVT_LOG_LEVEL", "integer", "1, meaning Info"},
    {"KVT_LOG_FORCE_FLUSH", "bool", "false"},
    {"KVT_LOG_BUFF_RESERVE_ENTRIES", "unsigned 64-bit", "no reservation"},
    {"KVT_LOG_TIME_BETWEEN_FLUSHES", "double, seconds", "0.1"},
    {"KVT_LOG_THREAD_INDEX", "bool", "false"},
    {"KVT_LOG_TO_CONSOLE", "text", "verbose console"},
    {"KVT_LOG_DIRECTORY", "text", "/var/log/korvane"},
    {"KVT_LOG_FILE_BUFF_SIZE_MB", "unsigned 64-bit, MiB", "1"},
    {"KVT_DAEMON", "text, searched for \"ssl:\"", "empty, not secure"},
    {"KVT_INBOUND_BUFFER_SIZE", "unsigned 64-bit, bytes", "1048576"},
    {"KVT_OUTBOUND_BUFFER_SIZE", "unsigned 64-bit, bytes", "1048576"},
};

constexpr Option options[] = {
    {"set", "", "only keys that the environment holds, with their values"},
};

struct Key
{
    std::string_view name;
    std::string_view group;
    std::string_view type;
    std::string_view otherwise;
    std::vector<std::string_view> words;
};

std::vector<std::string_view> WordsOf(std::string_view scope)
{
    std::vector<std::string_view> words;
    for (Row const& row : rows)
        if (row.kind == RowKind::Word && row.name == scope)
            words.push_back(row.text);
    return words;
}

void Complete(Key& key)
{
    key.words = WordsOf(key.name);
    for (Row const& row : rows)
    {
        if (row.kind == RowKind::WordsOf && row.name == key.name)
            key.words = WordsOf(row.text);
        if (row.kind == RowKind::Default && row.name == key.name)
            key.otherwise = row.text;
    }
    for (Reading const& reading : readings)
    {
        if (reading.key == key.name)
        {
            key.type = reading.type;
            key.otherwise = reading.otherwise;
        }
    }
}

std::vector<Key> AllKeys()
{
    std::vector<Key> keys;
    std::string_view group;
    for (Row const& row : rows)
    {
        if (row.kind == RowKind::Group)
            group = row.name;
        if (row.kind == RowKind::Key)
        {
            keys.push_back({row.name, group, {}, {}, {}});
            Complete(keys.back());
        }
    }
    return keys;
}

std::string InCapitals(std::string_view text)
{
    std::string result(text);
    for (char& character : result)
        if (character >= 'a' && character <= 'z')
            character = static_cast<char>(character - 'a' + 'A');
    return result;
}

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
    for (Row const& row : rows)
        if (row.kind == RowKind::Key)
            names.push_back(row.name);
    std::string const nearest = NearestOf(fragment, names);
    result.AddProblem(
        {"", 0, "", "no key holds " + fragment + (nearest.empty() ? "" : ", did you mean " + nearest + "?")});
}

Status Run(Arguments const& arguments, Result& result)
{
    std::string const fragment = InCapitals(arguments.Get(0));
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
    .fewestArguments = 0,
    .mostArguments = 1,
    .completes = Completes::Key,
    .run = Run,
};
} // namespace nxTool
