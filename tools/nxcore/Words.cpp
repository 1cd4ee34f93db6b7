#include "Words.h"

#include "NearMiss.h"

#include "core/vocabulary/nxGenericEnum.h"
#include "core/vocabulary/nxVocabularyCatalogue.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace nxTool
{
namespace
{
/// The rows that are common to all classes stand in no class's table.
void AppendCommonWords(std::vector<Word>& words)
{
    struct CommonRow
    {
        nxEnumValue number;
        std::string_view enumerator;
    };
    static constexpr CommonRow rows[] = {
        {NX_UNDEFINED, "NX_UNDEFINED"},
        {NX_NOT_REGISTERED, "NX_NOT_REGISTERED"},
        {NX_NO_CHANGE, "NX_NO_CHANGE"},
    };
    for (CommonRow const& row : rows)
    {
        nxGenericEnum const value(row.number);
        words.push_back({"nxEnum", false, row.number, row.enumerator, value.GetShortDescription(),
                         value.GetLongDescription()});
    }
}

std::vector<Word> CollectWords()
{
    std::vector<Word> words;
    AppendCommonWords(words);
    for (auto const& enumeration : nxVocabularyCatalogue::GetEnumerations())
        for (nxEnumRow const& row : enumeration.rows)
            words.push_back({enumeration.className, false, row.number, row.enumerator, row.token, row.text});
    for (auto const& mask : nxVocabularyCatalogue::GetBitMasks())
        for (nxBitMaskRow const& row : mask.rows)
            words.push_back({mask.className, true, row.bits, {}, row.token, row.text});
    for (Word& word : words)
    {
        word.foldedToken = Folded(word.token);
        word.foldedText = Folded(word.text);
    }
    return words;
}
} // namespace

std::vector<Word> const& AllWords()
{
    static std::vector<Word> const words = CollectWords();
    return words;
}

std::vector<std::string_view> ClassNames()
{
    std::vector<std::string_view> names;
    for (auto const& enumeration : nxVocabularyCatalogue::GetEnumerations())
        names.push_back(enumeration.className);
    for (auto const& mask : nxVocabularyCatalogue::GetBitMasks())
        names.push_back(mask.className);
    return names;
}

std::string_view FindClassName(std::string_view name)
{
    for (std::string_view const known : ClassNames())
        if (EqualInEitherCase(known, name))
            return known;
    return {};
}

Problem UnknownName(std::string_view name, std::string_view reason,
                    std::vector<std::string_view> const& known)
{
    return {{}, 0, std::string(name), std::string(reason) + DidYouMean(name, known)};
}

bool EqualInEitherCase(std::string_view left, std::string_view right)
{
    auto const fold = [](char character) { return Folded(character); };
    return std::ranges::equal(left, right, {}, fold, fold);
}

std::string Hexadecimal(unsigned long long number)
{
    constexpr int base = 16;
    std::array<char, 2 * sizeof number> digits{};
    auto const written = std::to_chars(digits.data(), digits.data() + digits.size(), number, base);
    return "0x" + std::string(digits.data(), written.ptr);
}
} // namespace nxTool
