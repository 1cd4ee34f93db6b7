#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace nxTool
{
/// A letter without its case; the words of the platform are ASCII.
constexpr char Folded(char character)
{
    constexpr int fromUpperToLower = 'a' - 'A';
    bool const isUpper = character >= 'A' && character <= 'Z';
    return static_cast<char>(character + isUpper * fromUpperToLower);
}

std::string Folded(std::string_view text);

/// The candidate that takes the fewest changes of single characters (case aside) to become the word, where that is at
/// most a third of the word's length; empty when none is so near.
std::string NearestOf(std::string_view word, std::span<std::string_view const> candidates);

/// ", did you mean X?" for the nearest candidate, or nothing.
/// @param dash  what stands in front of a candidate on the command line
std::string DidYouMean(std::string_view word, std::span<std::string_view const> candidates,
                       std::string_view dash = {});
} // namespace nxTool
