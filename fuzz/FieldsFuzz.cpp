// Texts, rows and files taken apart at separators, with and without quotes, against a plain state machine.

#include "fuzz/FuzzInput.h"

#include "core/text/nxCSVFileReader.h"
#include "core/text/nxStringParser.h"

namespace
{
using Fields = std::vector<std::string>;

/// A separator at the end of the text gives an empty field only behind a plain one.
Fields Split(std::string const& text, char separator, char quote)
{
    Fields fields(1);
    bool isPlain = true;
    bool isOpen = false;
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        bool const isLast = i + 1 == text.size();
        if (isOpen && text[i] == quote && (isLast || text[i + 1] != quote))
            isOpen = false;
        else if (isOpen)
            fields.back() += text[text[i] == quote ? ++i : i];
        else if (text[i] == separator)
            fields.resize(fields.size() + (isPlain || !isLast)), isPlain = true;
        else if (isPlain && text[i] == quote)
            fields.back().clear(), isPlain = false, isOpen = true;
        else if (isPlain)
            fields.back() += text[i];
    }
    return fields;
}

void CheckSame(nxCSVFileRow const& row, Fields const& fields)
{
    FUZZ_EQUAL(row.GetColCount(), static_cast<unsigned int>(fields.size()));
    for (unsigned int i = 0; i < fields.size(); ++i)
        FUZZ_EQUAL(row.GetColValue(i), FuzzTrim(fields[i]));
    FUZZ_EQUAL(row.GetColValue(row.GetColCount()), std::string());
}

/// @param characters  a separator, or a separator and a quote
template <class... CharacterT>
void CheckParser(std::string const& text, Fields const& fields, CharacterT... characters)
{
    nxStringParser parser(text);
    for (std::string const& field : fields)
    {
        FUZZ_CHECK(!parser.IsFullyParsed());
        FUZZ_EQUAL(parser.GetSubString(characters...), field);
    }
    FUZZ_CHECK(parser.IsFullyParsed() && parser.GetSubString(characters...).empty());
    nxCSVFileRow row;
    row.SetRowData(text, characters...);
    CheckSame(row, fields);
}

void CheckExtraction(std::string const& text, Fields all, char separator)
{
    if (all.back().empty())
        all.pop_back(); // a separator at the end, or no text at all
    std::deque<std::string> parts;
    nxStringParser::ExtractAllSubstrings(text, parts, false, separator);
    FUZZ_CHECK(parts == std::deque<std::string>(all.begin(), all.end()));
    nxStringParser::ExtractAllSubstrings(text, parts, true, separator); // in front of what is there
    FUZZ_CHECK(std::equal(all.rbegin(), all.rend(), parts.begin()) && parts.size() == 2 * all.size());
}

void CheckColumn(std::string const& text)
{
    std::size_t const quote = std::min(text.find('"'), text.size());
    std::string expected = text.substr(0, quote);
    for (char const character :
         text.substr(quote)) // from the first quote on, every byte has a quote before it
        expected.append(1, '"').append(1, character);
    bool const isQuoted = quote != text.size() || text.find(',') != std::string::npos;
    std::string const column = nxCSVFileReader::GetAsCSVColumn(text);
    FUZZ_EQUAL(column, isQuoted ? '"' + expected + '"' : text);
    if (quote == text.size())
        FUZZ_EQUAL(nxStringParser(column).GetSubString(',', '"'), text);
}

void CheckFile(std::string const& content, char separator, bool useQuotes)
{
    constexpr std::size_t longestLine = 8191;
    nxCSVFileReader reader(separator, useQuotes);
    bool const isRead = reader.ReadFile(FuzzFile(content)).IsOK();
    bool isExpected = true;
    unsigned int rows = 0;
    for (std::string const& line : FuzzSplit(content, '\n'))
    {
        std::string const trimmed = FuzzTrim(line);
        isExpected = isExpected && line.size() <= longestLine;
        if (!isExpected || trimmed.empty() || trimmed[0] == '#' || trimmed[0] == ';')
            continue;
        FUZZ_CHECK(rows < reader.GetRowCount());
        CheckSame(*reader.GetRow(rows++),
                  useQuotes ? Split(trimmed, separator, '"') : FuzzSplit(trimmed, separator));
    }
    FUZZ_EQUAL(isRead, isExpected);
    FUZZ_CHECK(reader.GetRowCount() == rows && reader.GetRow(rows) == nullptr);
}
} // namespace

void FuzzOne(FuzzInput& input)
{
    constexpr char const separators[] = {',', ';', '.', '\t', ' ', '\0', '"', '\n'};
    char const separator = separators[input.Below(std::size(separators))];
    bool const useQuotes = input.Truth();
    // Long lines, which a fuzzer seldom finds by itself, in some of the inputs: they take long.
    unsigned int const padding = input.Take<std::uint8_t>();
    std::string const text = std::string(padding >= 232 ? 8180 + padding - 232 : 0, 'x') + input.Rest();
    char const quote = useQuotes ? '"' : '\'';
    CheckParser(text, FuzzSplit(text, separator), separator);
    CheckExtraction(text, FuzzSplit(text, separator), separator);
    if (separator != quote)
        CheckParser(text, Split(text, separator, quote), separator, quote);
    CheckColumn(text);
    if (separator != '"' || !useQuotes)
        CheckFile(text, separator, useQuotes);
}
