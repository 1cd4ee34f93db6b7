#include "KeyWords.h"

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
} // namespace

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
} // namespace nxTool
