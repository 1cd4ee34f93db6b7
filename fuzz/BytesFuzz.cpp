// Hexadecimal text, and the most specific pattern for a key, each against the plainest way to do it.

#include "fuzz/FuzzInput.h"

#include "core/text/nxAlgorithm.h"

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
}

std::vector<std::string> Split(std::string const& text, char separator)
{
    std::vector<std::string> fields = FuzzSplit(text, separator);
    if (fields.back().empty())
        fields.pop_back();
    return fields;
}

void CheckBestMatch(FuzzInput& input)
{
    bool const firstFieldFirst = input.Truth();
    char const separator = input.Truth() ? '.' : input.Take<char>();
    std::string const wildcard = input.Truth() ? "*" : input.Text();
    std::string const key = input.Text();
    std::set<std::string> patterns;
    for (unsigned int count = 0; count < 12 && input.HasStep(); ++count)
        patterns.insert(input.Text());

    std::vector<std::string> const wanted = Split(key, separator);
    std::string expected = "none";
    std::string bestRank;
    for (std::string const& pattern : patterns)
    {
        std::vector<std::string> const fields = Split(pattern, separator);
        bool fits = fields.size() == wanted.size() && fields.size() <= 32;
        std::string rank; // '1' for the same and '0' for a wildcard, in the order they are looked at
        for (std::size_t i = 0; fits && i < fields.size(); ++i)
        {
            fits = fields[i] == wanted[i] || fields[i] == wildcard;
            rank.insert(firstFieldFirst ? rank.size() : 0, 1, fields[i] == wanted[i] ? '1' : '0');
        }
        if (fits && rank > bestRank)
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
