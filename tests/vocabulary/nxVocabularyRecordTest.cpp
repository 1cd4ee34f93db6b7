// Every number, token and text is what stored data and other programs know it by; the catalogue knows whose a
// number is.

#include "core/vocabulary/nxVocabulary.h"
#include "core/vocabulary/nxVocabularyCatalogue.h"
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
using Catalogue = nxVocabularyCatalogue;

/// First and last numbers of rows whose wording may change: such a text counts as empty in the checksums.
constexpr std::pair<unsigned int, unsigned int> freeTexts[] = {
    {100001, 100005},   {100009, 100014},   {100016, 100039},   {100043, 100074},   {100076, 100085},
    {100087, 100089},   {100100, 100119},   {100121, 100200},   {100202, 100222},   {100224, 100226},
    {100228, 100230},   {100232, 100232},   {100234, 100242},   {100244, 100252},   {100254, 100261},
    {100263, 100263},   {100265, 100283},   {100300, 100337},   {100401, 101006},   {101008, 101011},
    {101201, 101201},   {101203, 101409},   {101500, 102101},   {102203, 103000},   {1010700, 1010811},
    {1011000, 1012007}, {1012013, 1012019}, {1013000, 1015002}, {1022000, 1022000}, {1022002, 1022002},
    {1022004, 1022004}, {1022006, 1022006}, {1022009, 1022013}, {1022015, 1023000}, {1023002, 1023002},
    {1023004, 1023004}, {1023006, 1023006}, {1023009, 1023013}, {1023015, 1023027}, {1025000, 1025003}};

bool IsFree(unsigned int number)
{
    return std::ranges::any_of(freeTexts, [number](auto const& span)
                               { return number >= span.first && number <= span.second; });
}

// Rights for packaged strategies, whose names belong to whoever packages them.
constexpr unsigned int firstFreeToken = 102901;
constexpr unsigned int lastFreeToken = 102904;

constexpr std::uint64_t emptyChecksum = 0xcbf29ce484222325;

void AddRow(std::uint64_t& sum, std::string const& number, std::string const& token, std::string const& text)
{
    for (char const letter : number + '\t' + token + '\t' + text + '\n')
        sum = (sum ^ static_cast<unsigned char>(letter)) * 0x100000001b3;
}

template <typename Enumeration>
void ExpectEnum(char const* name, unsigned int lower, unsigned int upper, std::size_t count, bool isOrdered,
                std::uint64_t checksum)
{
    SCOPED_TRACE(name);
    EXPECT_EQ(Enumeration().GetClassNameA(), name);
    EXPECT_EQ(nxOpenEnum<Enumeration>()._MinValue(), lower);
    EXPECT_EQ(nxOpenEnum<Enumeration>()._MaxValue(), upper);
    EXPECT_EQ(
        requires(Enumeration const& value) { value < value; }, isOrdered);
    if constexpr (std::same_as<Enumeration, nxGenericEnum>)
        return; // no rows of its own: it lists those of others

    std::vector<nxEnumValue> rows;
    Enumeration().GetRegisteredEnumValuesForInstance(rows);
    // The class whose bounds are crossed lists nothing; its rows follow the lower one.
    for (unsigned int row = lower + 1; lower > upper && row <= lower + count; ++row)
        rows.push_back(static_cast<nxEnumValue>(row));
    std::erase_if(rows,
                  [](unsigned int number) { return number >= firstFreeToken && number <= lastFreeToken; });
    EXPECT_EQ(rows.size(), count);
    std::uint64_t sum = emptyChecksum;
    for (nxEnumValue const number : rows)
    {
        nxAnyEnum const row(number);
        AddRow(sum, std::to_string(number), row.GetShortDescription(),
               IsFree(number) ? "" : row.GetLongDescription());
        Enumeration back;
        EXPECT_EQ(back.SetFromString(row.GetShortDescription()), lower < upper) << number;
        EXPECT_EQ(back, lower < upper ? number : NX_UNDEFINED);
        EXPECT_EQ(Enumeration(number), back);
    }
    EXPECT_EQ(sum, checksum);
}

template <typename Mask>
void ExpectMask(char const* name, std::size_t bits, std::size_t count, std::uint64_t checksum)
{
    SCOPED_TRACE(name);
    EXPECT_EQ(Mask().GetClassNameA(), name);
    EXPECT_EQ(sizeof(Mask().GetValue()) * 8, bits);
    auto const& rows = nxOpenMask<Mask>::_GetDescriptionMap()[name];
    EXPECT_EQ(rows.size(), count);
    std::uint64_t sum = emptyChecksum;
    for (auto const& [value, words] : rows)
        AddRow(sum, std::to_string(value), words.first, words.second);
    EXPECT_EQ(sum, checksum);
}

// One function a class: a single one with all of them takes the compiler long.
constexpr void (*expectations[])() = {
#define NX_RECORDED_ENUM(Class, ...) [] { ExpectEnum<Class>(#Class, __VA_ARGS__); },
#define NX_RECORDED_MASK(Class, ...) [] { ExpectMask<Class>(#Class, __VA_ARGS__); },
#include "tests/vocabulary/nxVocabularyRecord.def"
};
} // namespace

TEST(nxVocabularyRecord, HoldsForEveryEnumerationAndMaskAndThereIsNoMore)
{
    EXPECT_EQ(std::size(expectations), 149u + 32);
    for (auto const expect : expectations)
        expect();
    EXPECT_EQ(nxOpenMask<nxBitMask>::_GetDescriptionMap().size() +
                  nxOpenMask<nxBitMask64>::_GetDescriptionMap().size(),
              32u);
    std::vector<nxEnumValue> rows;
    nxAnyEnum().GetRegisteredEnumValuesForInstance(rows);
    EXPECT_EQ(rows.size(), 3u + 1989 + 4); // the common ones, the recorded ones, those of free tokens
    EXPECT_TRUE(std::ranges::is_sorted(rows));
    for (unsigned int number = firstFreeToken; number <= lastFreeToken; ++number)
        EXPECT_TRUE(nxAnyEnum(number).GetShortDescription().starts_with("NX_FUNCTION_TALVEX_PRODUCT_"));
}

// That the catalogue shows what the registry holds is seen before main.
TEST(nxVocabularyCatalogue, RowsHaveTheirOwnerAndAreFitForUse)
{
    for (Catalogue::Enumeration const& enumeration : Catalogue::GetEnumerations())
    {
        EXPECT_EQ(Catalogue::FindEnumeration(enumeration.className), &enumeration);
        EXPECT_EQ(Catalogue::FindBitMask(enumeration.className), nullptr);
        for (nxEnumRow const& row : enumeration.rows)
        {
            std::string const token = row.token;
            EXPECT_EQ(Catalogue::FindOwner(row.number), &enumeration) << token;
            EXPECT_TRUE(*row.text != '\0' && !std::string(row.text).ends_with('.') && token.size() <= 64);
            EXPECT_NE(std::string(row.enumerator).find(token.substr(0, token.find('\t'))), std::string::npos);
        }
    }
    EXPECT_STREQ(Catalogue::FindOwner(139)->className, "nxFieldTypeEnum"); // without a row
    EXPECT_STREQ(Catalogue::FindOwner(199998)->className, "nxFunctionEnum");
    for (unsigned int const ownerless : {0u, 1u, 2u, 10u, 13u, 1999999u, 4294967295u})
        EXPECT_EQ(Catalogue::FindOwner(ownerless), nullptr) << ownerless;
    EXPECT_EQ(Catalogue::FindBitMask("nxAccountNodeFlagBitMask")->width, 64u);
    EXPECT_EQ(Catalogue::FindBitMask(""), nullptr);
}
