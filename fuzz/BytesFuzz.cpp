// Hexadecimal text, and the most specific pattern for a key, each against the plainest way to do it.

#include "fuzz/FuzzInput.h"

#include "core/text/nxAlgorithm.h"
#include "core/text/nxByteArray.h"

namespace
{
void CheckHex(std::string const& text, unsigned short number)
{
    std::string const digits = text.substr(text.size() > 2 && text.starts_with("0x") ? 2 : 0);
    bool const sound = !digits.empty() && digits.size() <= 2 &&
                       digits.find_first_not_of("0123456789ABCDEFabcdef") == std::string::npos;
    unsigned char byte = 77;
    FUZZ_EQUAL(nxAlgorithm::SetFromHex(text, byte).IsOK(), sound);
    FUZZ_EQUAL(byte, sound ? static_cast<unsigned char>(std::stoul(digits, nullptr, 16)) : 77);
    FUZZ_EQUAL(nxAlgorithm::GetAsHex(number), FUZZ_FORMAT("%04X", number));

    std::vector<unsigned char> const bytes(text.begin(), text.end());
    std::string hex = "x";
    std::string expected;
    nxAlgorithm::GetAsHex(bytes, hex);
    for (unsigned char const each : bytes)
        expected += FuzzHex(each);
    FUZZ_EQUAL(hex, expected);
}

std::vector<std::string> Split(std::string const& text, char separator)
{
    std::vector<std::string> fields = FuzzSplit(text, separator);
    if (fields.back().empty())
        fields.pop_back();
    return fields;
}

/// How well a pattern fits: for each field, in the order they are looked at, '1' for the same and '0' for a wildcard.
/// @return nothing for a pattern that doesn't fit.
std::string Rank(std::vector<std::string> const& pattern, std::vector<std::string> const& key,
                 std::string const& wildcard, bool firstFieldFirst)
{
    std::string rank;
    for (std::size_t i = 0; pattern.size() == key.size() && i < key.size(); ++i)
    {
        if (pattern[i] != key[i] && pattern[i] != wildcard)
            return "";
        rank.insert(firstFieldFirst ? rank.size() : 0, 1, pattern[i] == key[i] ? '1' : '0');
    }
    return rank;
}

void CheckBestMatch(FuzzInput& input)
{
    bool const firstFieldFirst = input.Truth();
    char const separator = input.Truth() ? '.' : input.Take<char>();
    std::string const wildcard = input.Truth() ? "*" : input.Text();
    std::string const key = input.Text();
    std::set<std::string> patterns;
    while (input.HasStep())
        patterns.insert(input.Text());

    std::vector<std::string> const fields = Split(key, separator);
    std::string expected = "none";
    std::string bestRank;
    for (std::string const& pattern : patterns)
    {
        std::string const rank = Rank(Split(pattern, separator), fields, wildcard, firstFieldFirst);
        if (fields.size() <= 32 && rank > bestRank)
            expected = pattern, bestRank = rank;
    }
    std::string best = "none";
    bool const found = nxAlgorithm::GetBestMatch(patterns, key, best, firstFieldFirst, separator, wildcard);
    FUZZ_EQUAL(best, expected);
    FUZZ_EQUAL(found, !bestRank.empty());
}
} // namespace

void FuzzOne(FuzzInput& input)
{
    auto const number = input.Take<unsigned short>();
    CheckHex(input.Text(), number);
    CheckBestMatch(input);
}
