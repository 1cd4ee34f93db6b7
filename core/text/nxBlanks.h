#pragma once

#include <string_view>

/// @file
/// What trimming takes away. For the library's own sources.

/// Space, tab, line feed and carriage return, whatever the locale calls a blank.
inline constexpr std::string_view nxBlanks = " \t\n\r";

/// @return the text without the blanks around it.
constexpr std::string_view nxTrimBlanks(std::string_view text)
{
    // Most texts have no blank at either end, so that the usual case is two comparisons: all blanks are small bytes.
    auto const isBlank = [](char byte)
    { return static_cast<unsigned char>(byte) <= ' ' && nxBlanks.find(byte) != std::string_view::npos; };
    while (!text.empty() && isBlank(text.front()))
    {
        text.remove_prefix(1);
    }
    while (!text.empty() && isBlank(text.back()))
    {
        text.remove_suffix(1);
    }
    return text;
}
