#pragma once

#include "Result.h"

#include <string>
#include <string_view>
#include <vector>

/// @file
/// The vocabulary as one list of words, for the commands that search it.

namespace nxTool
{
/// A row of an enumeration or of a bit mask.
struct Word
{
    std::string_view className;
    bool isBit; ///< of a mask; such a row has no enumerator
    unsigned long long number;
    std::string_view enumerator;
    std::string_view token;
    std::string_view text;
    std::string foldedToken{}; ///< letters without their case, to be searched
    std::string foldedText{};
};

/// The rows common to all enumerations, those of each enumeration, and those of each mask.
std::vector<Word> const& AllWords();

/// The names of all enumerations and masks.
std::vector<std::string_view> ClassNames();

/// The class of this name, in either case; empty when there is none.
std::string_view FindClassName(std::string_view name);

/// A problem with a name that is none of the known ones, which suggests the most similar of them.
Problem UnknownName(std::string_view name, std::string_view reason,
                    std::vector<std::string_view> const& known);

/// Whether the texts are the same but for the case of their letters.
bool EqualInEitherCase(std::string_view left, std::string_view right);

/// "0x10".
std::string Hexadecimal(unsigned long long number);
} // namespace nxTool
