// Texts taken apart at separators, with and without quotes, rows and whole files of them, against a plain state machine.

#include "fuzz/FuzzInput.h"

#include "core/text/nxCSVFileReader.h"
#include "core/text/nxStringParser.h"

#include <deque>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

namespace
{
using Fields = std::vector<std::string>;

Fields Split(std::string const& text, char separator)
{
    Fields fields(1);
    for (char const character : text)
        character == separator ? (void)fields.emplace_back() : fields.back().push_back(character);
    return fields;
}

enum class State
{
    Plain,
    Quoted,
    QuoteInQuoted,
    Closed
};

/// A separator at the end of the text gives an empty field only behind a plain one.
Fields Split(std::string const& text, char separator, char quote)
{
    Fields fields(1);
    State state = State::Plain;
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        char const character = text[i];
        bool const isLast = i + 1 == text.size();
        if (state == State::QuoteInQuoted && character == quote)
        {
            fields.back().push_back(quote);
            state = State::Quoted;
            continue;
        }
        if (state == State::QuoteInQuoted)
            state = State::Closed;
        if (state == State::Quoted)
        {
            if (character == quote)
                state = State::QuoteInQuoted;
            else
                fields.back().push_back(character);
        }
        else if (character == separator)
        {
            if (state == State::Plain || !isLast)
                fields.emplace_back();
            state = State::Plain;
        }
        else if (state == State::Plain && character == quote)
        {
            fields.back().clear();
            state = State::Quoted;
        }
        else if (state == State::Plain)
            fields.back().push_back(character);
    }
    return fields;
}

std::string Trim(std::string const& text)
{
    constexpr char const blanks[] = " \t\n\r";
    std::size_t const first = text.find_first_not_of(blanks);
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

void CheckSame(nxCSVFileRow const& row, Fields const& fields)
{
    FUZZ_EQUAL(row.GetColCount(), static_cast<unsigned int>(fields.size()));
    for (unsigned int i = 0; i < fields.size(); ++i)
        FUZZ_EQUAL(row.GetColValue(i), Trim(fields[i]));
    FUZZ_EQUAL(row.GetColValue(row.GetColCount()), std::string());
}

void CheckParser(std::string const& text, char separator, char quote)
{
    nxStringParser plain(text);
    for (std::string const& field : Split(text, separator))
    {
        FUZZ_CHECK(!plain.IsFullyParsed());
        FUZZ_EQUAL(plain.GetSubString(separator), field);
    }
    FUZZ_CHECK(plain.IsFullyParsed() && plain.GetSubString(separator).empty());

    Fields all = Split(text, separator);
    if (all.back().empty())
        all.pop_back(); // a separator at the end, or no text at all
    std::deque<std::string> parts{"first"};
    nxStringParser::ExtractAllSubstrings(text, parts, false, separator);
    parts.pop_front();
    FUZZ_CHECK(parts == std::deque<std::string>(all.begin(), all.end()));
    parts.clear();
    nxStringParser::ExtractAllSubstrings(text, parts, true, separator);
    FUZZ_CHECK(parts == std::deque<std::string>(all.rbegin(), all.rend()));

    nxCSVFileRow row;
    row.SetRowData(text, separator);
    CheckSame(row, Split(text, separator));
    if (separator == quote)
        return;
    nxStringParser quoted(text);
    for (std::string const& field : Split(text, separator, quote))
    {
        FUZZ_CHECK(!quoted.IsFullyParsed());
        FUZZ_EQUAL(quoted.GetSubString(separator, quote), field);
    }
    FUZZ_CHECK(quoted.IsFullyParsed());
    row.Clear();
    row.SetRowData(text, separator, quote);
    CheckSame(row, Split(text, separator, quote));
}

void CheckColumn(std::string const& text)
{
    bool const hasQuote = text.find('"') != std::string::npos;
    bool const needsQuotes = hasQuote || text.find(',') != std::string::npos;
    std::string const column = nxCSVFileReader::GetAsCSVColumn(text);
    if (!hasQuote)
    {
        FUZZ_EQUAL(column, needsQuotes ? '"' + text + '"' : text);
        FUZZ_EQUAL(nxStringParser(column).GetSubString(',', '"'), text);
        return;
    }
    // From the first quote on, every byte has a quote before it.
    std::string expected = '"' + text.substr(0, text.find('"'));
    for (std::size_t i = text.find('"'); i < text.size(); ++i)
        expected.append(1, '"').append(1, text[i]);
    FUZZ_EQUAL(column, expected + '"');
}

void CheckFile(std::string const& content, char separator, bool useQuotes)
{
    constexpr std::size_t longestLine = 8191;
    int const file = memfd_create("rows", MFD_CLOEXEC);
    FUZZ_EQUAL(write(file, content.data(), content.size()), static_cast<ssize_t>(content.size()));
    nxCSVFileReader reader(separator, useQuotes);
    bool const complete = reader.ReadFile("/proc/self/fd/" + std::to_string(file)).IsOK();
    close(file);

    Fields lines = Split(content, '\n');
    if (lines.back().empty())
        lines.pop_back(); // behind the last line feed
    unsigned int rows = 0;
    for (std::string const& line : lines)
    {
        if (line.size() > longestLine)
        {
            FUZZ_CHECK(!complete);
            break;
        }
        std::string const trimmed = Trim(line);
        if (trimmed.empty() || trimmed[0] == '#' || trimmed[0] == ';')
            continue;
        FUZZ_CHECK(rows < reader.GetRowCount());
        CheckSame(*reader.GetRow(rows++),
                  useQuotes ? Split(trimmed, separator, '"') : Split(trimmed, separator));
    }
    FUZZ_EQUAL(reader.GetRowCount(), rows);
    FUZZ_CHECK(reader.GetRow(rows) == nullptr);
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    FuzzInput input(data, size);
    constexpr char const separators[] = {',', ';', '.', '\t', ' ', '\0', '"', '\n'};
    char const separator = separators[input.Below(std::size(separators))];
    bool const useQuotes = input.Truth();
    // Long lines, which a fuzzer seldom finds by itself.
    std::string const padding(input.Truth() ? 8180 + input.Below(24) : 0, 'x');
    std::string const text = padding + input.Rest();
    CheckParser(text, separator, useQuotes ? '"' : '\'');
    CheckColumn(text);
    if (separator != '"' || !useQuotes)
        CheckFile(text, separator, useQuotes);
    return 0;
}
