#pragma once

#include "core/platform/nxExport.h"

#include <cstddef>
#include <deque>
#include <string>

/// @file
/// Walks the fields of a text.

/// A cursor over a text that it does not own: version numbers, dotted addresses and CSV rows are read with it.
///
/// The text must outlive the parser and stay as it is. Nothing fails: past the end every field is empty, so a
/// caller that must tell an empty last field from the end asks IsFullyParsed() before it reads.
///
/// The three ways to split differ in what a separator at the very end of the text means:
/// | text `a,` | fields |
/// |---|---|
/// | GetSubString(',') | `a`, then an empty one |
/// | GetSubString(',', '"') of `"a",` | `a` alone; an unquoted `a,` still gives the empty one |
/// | ExtractAllSubstrings() | `a` alone |
///
/// @code
/// nxStringParser parser(line);
/// while (!parser.IsFullyParsed())
///     fields.push_back(parser.GetSubString(',', '"'));
/// @endcode
class NX_CORE_API nxStringParser
{
public:
    explicit nxStringParser(std::string const& text);
    explicit nxStringParser(std::string&& text) = delete; // would be gone before the first field is read
    nxStringParser(nxStringParser const&) = default;
    ~nxStringParser() = default;

    /// The next field, up to the separator or the end. An empty text has one field, which is empty.
    std::string GetSubString(char separator);

    /// The next field, which may be quoted: between quotes a separator is text and a doubled quote is one quote.
    /// What stands before the opening quote and between the closing one and the separator is dropped. A missing
    /// closing quote is taken as if it stood at the end.
    std::string GetSubString(char separator, char quote);

    /// Whether the last field has been read. False for a fresh parser, also over an empty text.
    bool IsFullyParsed() const;

    /// Adds all fields of `text` to what `parts` holds already; an empty text adds none.
    /// @param reverse  true adds each field at the front, so that the last one comes first.
    static void ExtractAllSubstrings(std::string const& text, std::deque<std::string>& parts, bool reverse,
                                     char separator);

private:
    nxStringParser& operator=(nxStringParser const&) = delete;
    bool operator==(nxStringParser const&) const;

    /// The text from the position up to `end`; npos stands for the end of the text, and ends the parse.
    std::string _TakeUpTo(std::size_t end);
    std::string _TakeQuoted(std::size_t openingQuote, char separator, char quote);

    std::string const& _text;
    std::size_t _position; // of the next unread byte; npos when all fields have been read
};
