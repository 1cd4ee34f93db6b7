#pragma once

#include <algorithm>
#include <string>

/// @file
/// Letters of the basic character set: words of exchanges and of keys mean the same in every locale of the host. For the
/// library's own sources.

namespace nxAsciiLetters
{

/// @return the capital of a letter a to z, and any other byte as it is.
constexpr char ToUpper(char letter)
{
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

inline void ToUpper(std::string& text)
{
    std::ranges::transform(text, text.begin(), [](char letter) { return ToUpper(letter); });
}

} // namespace nxAsciiLetters
