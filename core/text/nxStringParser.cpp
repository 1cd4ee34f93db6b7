#include "core/text/nxStringParser.h"

nxStringParser::nxStringParser(std::string const& text) : _text(text), _position(0)
{
}

std::string nxStringParser::GetSubString(char separator)
{
    if (IsFullyParsed())
        return std::string();
    return _TakeUpTo(_text.find(separator, _position));
}

std::string nxStringParser::GetSubString(char separator, char quote)
{
    if (IsFullyParsed())
        return std::string();
    std::size_t end = _position;
    while (end < _text.size() && _text[end] != separator && _text[end] != quote)
        ++end;
    if (end >= _text.size())
        return _TakeUpTo(std::string::npos);
    return _text[end] == separator ? _TakeUpTo(end) : _TakeQuoted(end, separator, quote);
}

bool nxStringParser::IsFullyParsed() const
{
    return _position == std::string::npos;
}

std::string nxStringParser::_TakeUpTo(std::size_t end)
{
    std::size_t const begin = _position;
    if (end == std::string::npos)
    {
        _position = end;
        return _text.substr(begin);
    }
    _position = end + 1;
    return _text.substr(begin, end - begin);
}

std::string nxStringParser::_TakeQuoted(std::size_t openingQuote, char separator, char quote)
{
    std::string field;
    _position = std::string::npos;
    std::size_t begin = openingQuote + 1;
    for (;;)
    {
        std::size_t const end = _text.find(quote, begin);
        if (end == std::string::npos)
        {
            field.append(_text, begin, std::string::npos);
            return field;
        }
        field.append(_text, begin, end - begin);
        begin = end + 1;
        if (begin >= _text.size() || _text[begin] != quote)
            break;
        field.push_back(quote);
        ++begin;
    }
    // A separator that is the text's last byte ends the parse here, unlike behind a plain field.
    std::size_t const next = _text.find(separator, begin);
    if (next != std::string::npos && next + 1 < _text.size())
        _position = next + 1;
    return field;
}

void nxStringParser::ExtractAllSubstrings(std::string const& text, std::deque<std::string>& parts,
                                          bool reverse, char separator)
{
    std::size_t begin = 0;
    while (begin < text.size())
    {
        std::size_t const found = text.find(separator, begin);
        std::size_t const end = found == std::string::npos ? text.size() : found;
        if (reverse)
            parts.emplace_front(text, begin, end - begin);
        else
            parts.emplace_back(text, begin, end - begin);
        begin = end + 1;
    }
}

bool nxStringParser::operator==(nxStringParser const&) const
{
    return false;
}
