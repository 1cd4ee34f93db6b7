// Every number, token and text is what stored data and other programs know it by.

#include "core/vocabulary/nxVocabulary.h"
#include "tests/vocabulary/nxAnyEnum.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <concepts>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace
{
using Range = std::pair<unsigned int, unsigned int>; // both ends included

// Rows whose wording may change: their texts count as empty in the checksums.
constexpr Range freeTexts[] = {
#define NX_RECORDED_ENUM(Class, lower, upper, rows, ordered, checksum)
#define NX_RECORDED_MASK(Class, bits, rows, checksum)
#define NX_FREE_TEXTS(first, last) {first, last},
#include "tests/vocabulary/nxVocabularyRecord.def"
};

// Rights for packaged strategies, whose names belong to whoever packages them.
constexpr Range freeTokens = {102901, 102904};
constexpr std::size_t recordedRowCount = 1989;

bool Contains(Range const& range, unsigned int number)
{
    return number >= range.first && number <= range.second;
}

constexpr std::uint64_t emptyChecksum = 0xcbf29ce484222325;

void AddRow(std::uint64_t& sum, std::string const& number, std::string const& token, std::string const& text)
{
    for (char const letter : number + '\t' + token + '\t' + text + '\n')
        sum = (sum ^ static_cast<unsigned char>(letter)) * 0x100000001b3;
}

template <typename Enumeration>
concept Ordered = requires(Enumeration const& value)
{
    value < value;
};

template <typename Enumeration>
std::vector<unsigned int> RowsOf(unsigned int lower, unsigned int upper, std::size_t count)
{
    std::vector<nxEnumValue> listed;
    Enumeration().GetRegisteredEnumValuesForInstance(listed);
    std::vector<unsigned int> rows(listed.begin(), listed.end());
    if (lower > upper)
    {
        // The class whose bounds are crossed lists nothing; its rows follow the lower one.
        EXPECT_TRUE(rows.empty());
        for (unsigned int row = lower + 1; row <= lower + count; ++row)
            rows.push_back(row);
    }
    std::erase_if(rows, [](unsigned int number) { return Contains(freeTokens, number); });
    return rows;
}

template <typename Enumeration>
void ExpectRecorded(char const* name, unsigned int lower, unsigned int upper, std::size_t count, bool ordered,
                    std::uint64_t checksum)
{
    SCOPED_TRACE(name);
    EXPECT_EQ(Enumeration().GetClassNameA(), name);
    EXPECT_EQ(nxOpenEnum<Enumeration>()._MinValue(), lower);
    EXPECT_EQ(nxOpenEnum<Enumeration>()._MaxValue(), upper);
    EXPECT_EQ(Ordered<Enumeration>, ordered);
    if constexpr (std::same_as<Enumeration, nxGenericEnum>)
        return; // no rows of its own: it lists those of others

    std::vector<unsigned int> const rows = RowsOf<Enumeration>(lower, upper, count);
    EXPECT_EQ(rows.size(), count);
    std::uint64_t sum = emptyChecksum;
    for (unsigned int const number : rows)
    {
        nxAnyEnum const row(number);
        EXPECT_FALSE(row.GetLongDescription().empty()) << number;
        bool const isFree =
            std::ranges::any_of(freeTexts, [number](Range const& range) { return Contains(range, number); });
        AddRow(sum, std::to_string(number), row.GetShortDescription(),
               isFree ? std::string() : row.GetLongDescription());

        Enumeration back;
        EXPECT_EQ(back.SetFromString(row.GetShortDescription()), lower < upper) << number;
        EXPECT_EQ(back.GetValue(), lower < upper ? number : 0);
        EXPECT_EQ(Enumeration(static_cast<nxEnumValue>(number)), back);
    }
    EXPECT_EQ(sum, checksum);
}

template <typename Mask>
struct OpenMask : public Mask
{
    using Mask::_GetDescriptionMap;
};

template <typename Mask>
void ExpectRecordedMask(char const* name, std::size_t bits, std::size_t count, std::uint64_t checksum)
{
    SCOPED_TRACE(name);
    EXPECT_EQ(Mask().GetClassNameA(), name);
    EXPECT_EQ(sizeof(Mask().GetValue()) * 8, bits);
    auto const& rows = OpenMask<Mask>::_GetDescriptionMap()[name];
    EXPECT_EQ(rows.size(), count);
    std::uint64_t sum = emptyChecksum;
    for (auto const& [value, words] : rows)
        AddRow(sum, std::to_string(value), words.first, words.second);
    EXPECT_EQ(sum, checksum);
}

// One function a class: a single one with all of them takes the compiler long.
constexpr void (*expectEnum[])() = {
#define NX_RECORDED_ENUM(Class, lower, upper, rows, ordered, checksum)                                       \
    [] { ExpectRecorded<Class>(#Class, lower, upper, rows, ordered, checksum); },
#define NX_RECORDED_MASK(Class, bits, rows, checksum)
#define NX_FREE_TEXTS(first, last)
#include "tests/vocabulary/nxVocabularyRecord.def"
};

constexpr void (*expectMask[])() = {
#define NX_RECORDED_ENUM(Class, lower, upper, rows, ordered, checksum)
#define NX_RECORDED_MASK(Class, bits, rows, checksum)                                                        \
    [] { ExpectRecordedMask<Class>(#Class, bits, rows, checksum); },
#define NX_FREE_TEXTS(first, last)
#include "tests/vocabulary/nxVocabularyRecord.def"
};
} // namespace

TEST(nxVocabularyRecord, HoldsForEveryEnumerationAndMask)
{
    EXPECT_EQ(std::size(expectEnum), 149u);
    for (auto const expect : expectEnum)
        expect();
    EXPECT_EQ(std::size(expectMask), 32u);
    for (auto const expect : expectMask)
        expect();
    EXPECT_EQ(OpenMask<nxBitMask>::_GetDescriptionMap().size() +
                  OpenMask<nxBitMask64>::_GetDescriptionMap().size(),
              32u);
}

TEST(nxVocabularyRecord, HasNoRowOutsideOfTheClasses)
{
    std::vector<nxEnumValue> rows;
    nxAnyEnum().GetRegisteredEnumValuesForInstance(rows);
    constexpr std::size_t commonRowCount = 3;
    EXPECT_EQ(rows.size(), commonRowCount + recordedRowCount + freeTokens.second - freeTokens.first + 1);
    EXPECT_TRUE(std::is_sorted(rows.begin(), rows.end()));
    for (unsigned int number = freeTokens.first; number <= freeTokens.second; ++number)
        EXPECT_TRUE(nxAnyEnum(number).GetShortDescription().starts_with("NX_FUNCTION_TALVEX_PRODUCT_"));
}
