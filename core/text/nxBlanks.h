#pragma once

#include <cstddef>
#include <string_view>

/// @file
/// What trimming takes away. For the library's own sources.

/// Space, tab, line feed and carriage return, whatever the locale calls a blank.
inline constexpr std::string_view nxBlanks = " \t\n\r";

/// Most texts have no blank at either end, so that the usual case is one comparison: all blanks are small bytes.
constexpr bool nxIsBlank(char byte)
{
    return static_cast<unsigned char>(byte) <= ' ' && nxBlanks.find(byte) != std::string_view::npos;
}

/// @return the text between two positions without the blanks around it.
constexpr std::string_view nxTrimBlanks(char const* begin, char const* end)
{
    while (begin != end && nxIsBlank(*begin))
        ++begin;
    while (begin != end && nxIsBlank(end[-1]))
        --end;
    return std::string_view(begin, static_cast<std::size_t>(end - begin));
}
