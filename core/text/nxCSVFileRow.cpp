#include "core/text/nxCSVFileRow.h"

#include "core/text/nxBlanks.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace
{

// Longest stretch of a row that is searched at once.
constexpr std::size_t windowSize = 1024;

// Stores where the separators of a window stand and returns their number. There is no branch on what a byte is: a branch
// would be guessed wrong at the end of nearly every field.
std::size_t FindSeparators(char const* window, std::size_t size, char separator, unsigned short* positions)
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < size; ++i)
    {
        positions[count] = static_cast<unsigned short>(i);
        count += window[i] == separator ? 1 : 0;
    }
    return count;
}

/// Takes columns back that were added when memory ran out for the next one.
template <typename Columns>
class AddedColumns
{
public:
    explicit AddedColumns(Columns& columns) : _columns(columns), _before(columns.size())
    {
    }
    ~AddedColumns()
    {
        if (!_areKept)
            _columns.resize(_before);
    }
    AddedColumns(AddedColumns const&) = delete;
    AddedColumns& operator=(AddedColumns const&) = delete;

    void Keep()
    {
        _areKept = true;
    }

private:
    Columns& _columns;
    std::size_t const _before;
    bool _areKept = false;
};

} // namespace

nxCSVFileRow::~nxCSVFileRow() = default;

void nxCSVFileRow::_ReserveFor(std::string const& row, char separator)
{
    auto const separators = std::count(row.begin(), row.end(), separator);
    _columns.reserve(_columns.size() + static_cast<std::size_t>(separators) + 1);
}

// `textEnd` is where the text ends that the column is a part of. Columns are short as a rule: a piece of constant size is
// copied in line, where one of any size would take a call for each.
void nxCSVFileRow::_AddTrimmed(char const* begin, char const* end, char const* textEnd)
{
    constexpr std::size_t pieceSize = 15; // what a text holds without memory from the heap
    std::string_view const column = nxTrimBlanks(begin, end);
    if (column.size() <= pieceSize && textEnd - column.data() >= static_cast<std::ptrdiff_t>(pieceSize))
    {
        _columns.emplace_back(column.data(), pieceSize).resize(column.size());
        return;
    }
    _columns.emplace_back(column.data(), column.size());
}

// The fields are those of nxStringParser, walked in place: a text for each field and another for its trimmed form would
// be most of the time that a large file takes. Rows are kept by the million, so they get the room that they need at
// once: growing by doubling would leave a third of it unused.
void nxCSVFileRow::SetRowData(std::string const& row, char separator)
{
    AddedColumns added(_columns);
    unsigned short positions[windowSize];
    char const* field = row.data();
    char const* const end = field + row.size();
    for (char const* window = field; window != end;)
    {
        std::size_t const size = std::min(windowSize, static_cast<std::size_t>(end - window));
        std::size_t const count = FindSeparators(window, size, separator, positions);
        if (_columns.empty())
            _columns.reserve(count + 1);
        for (std::size_t i = 0; i < count; ++i)
        {
            char const* const fieldEnd = window + positions[i];
            _AddTrimmed(field, fieldEnd, end);
            field = fieldEnd + 1;
        }
        window += size;
    }
    _AddTrimmed(field, end, end);
    added.Keep();
}

void nxCSVFileRow::SetRowData(std::string const& row, char separator, char quote)
{
    AddedColumns added(_columns);
    _ReserveFor(row, separator);
    char const* field = row.data();
    char const* const end = field + row.size();
    do
    {
        char const* const found =
            std::find_if(field, end, [=](char byte) { return byte == separator || byte == quote; });
        if (found == end)
        {
            _AddTrimmed(field, end, end);
            field = nullptr;
        }
        else if (*found == separator)
        {
            _AddTrimmed(field, found, end);
            field = found + 1; // at the end of the row one more field follows, an empty one
        }
        else
        {
            field = _AddQuoted(found, end, separator, quote);
        }
    } while (field != nullptr);
    added.Keep();
}

// Adds the column that begins at `openingQuote`; the result is where the next one begins, null if there is none.
char const* nxCSVFileRow::_AddQuoted(char const* openingQuote, char const* end, char separator, char quote)
{
    std::string text;
    char const* position = openingQuote + 1;
    for (;;)
    {
        char const* const nextQuote = std::find(position, end, quote);
        text.append(position, nextQuote);
        if (end - nextQuote < 2)
        {
            position = end; // no closing quote, or the row's last byte is it
            break;
        }
        position = nextQuote + 1;
        if (*position != quote)
            break;
        text.push_back(quote);
        ++position;
    }
    char const* const textEnd = text.data() + text.size();
    _AddTrimmed(text.data(), textEnd, textEnd);

    char const* const nextSeparator = std::find(position, end, separator);
    return end - nextSeparator < 2 ? nullptr : nextSeparator + 1;
}

void nxCSVFileRow::GetRowData(std::string& row, char separator) const
{
    row.clear();
    for (std::string const& column : _columns)
    {
        if (&column != &_columns.front())
            row.push_back(separator);
        row.append(column);
    }
}

void nxCSVFileRow::AddColumn(std::string const& column)
{
    _columns.push_back(column);
}

void nxCSVFileRow::Clear()
{
    _columns.clear();
}

unsigned int nxCSVFileRow::GetColCount() const
{
    return static_cast<unsigned int>(_columns.size());
}

std::string nxCSVFileRow::GetColValue(unsigned int index) const
{
    return index < _columns.size() ? _columns[index] : std::string();
}
