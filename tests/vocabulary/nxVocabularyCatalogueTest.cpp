// The catalogue shows the same vocabulary that the registry holds, and all of it is sound.

#include "core/vocabulary/nxVocabularyCatalogue.h"
#include "core/vocabulary/nxErrorEnum.h"
#include "core/vocabulary/nxGenericEnum.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace
{
using Catalogue = nxVocabularyCatalogue;

/// The words of a number, whatever its class.
nxEnum const& WordsOf(unsigned int number)
{
    static nxErrorEnum error;
    static nxGenericEnum generic;
    error = static_cast<nxEnumValue>(number);
    generic = static_cast<nxEnumValue>(number);
    return number > 1000000 ? static_cast<nxEnum const&>(error) : generic;
}
} // namespace

TEST(nxVocabularyCatalogue, RowsAreThoseOfTheRegistry)
{
    std::set<unsigned int> numbers;
    std::set<std::string> tokens;
    for (Catalogue::Enumeration const& enumeration : Catalogue::GetEnumerations())
        for (nxEnumRow const& row : enumeration.rows)
        {
            SCOPED_TRACE(row.enumerator);
            EXPECT_TRUE(numbers.insert(row.number).second);
            EXPECT_TRUE(tokens.insert(row.token).second);
            EXPECT_TRUE(nxEnum::IsRegisteredEnumValue(row.number));
            EXPECT_EQ(WordsOf(row.number).GetShortDescription(), row.token);
            EXPECT_EQ(WordsOf(row.number).GetLongDescription(), row.text);
        }
}

TEST(nxVocabularyCatalogue, WordsAreFitForUse)
{
    for (Catalogue::Enumeration const& enumeration : Catalogue::GetEnumerations())
        for (nxEnumRow const& row : enumeration.rows)
        {
            std::string const text = row.text;
            std::string const enumerator = row.enumerator;
            ASSERT_FALSE(text.empty()) << enumerator;
            EXPECT_NE(text.back(), '.') << enumerator;
            EXPECT_TRUE(enumerator.starts_with("NX_")) << enumerator;
            EXPECT_NE(
                enumerator.find(std::string(row.token, std::string(row.token).find_last_not_of('\t') + 1)),
                std::string::npos)
                << enumerator;
            EXPECT_LE(std::string(row.token).size(), 64u) << enumerator;
        }
}

TEST(nxVocabularyCatalogue, RowsLieInsideTheBoundsOfTheirClass)
{
    for (Catalogue::Enumeration const& enumeration : Catalogue::GetEnumerations())
    {
        bool const crossed = std::string(enumeration.className) == "nxSyntheticLegCalculationTypeEnum";
        for (nxEnumRow const& row : enumeration.rows)
        {
            EXPECT_EQ(enumeration.Owns(row.number), !crossed) << row.enumerator;
            EXPECT_EQ(Catalogue::FindOwner(row.number), &enumeration) << row.enumerator;
        }
    }
}

TEST(nxVocabularyCatalogue, FindsTheOwnerOfANumberWithoutARow)
{
    constexpr struct
    {
        unsigned int number;
        char const* owner;
    } rows[] = {{139, "nxFieldTypeEnum"}, {1000030, "nxErrorEnum"}, {199998, "nxFunctionEnum"}};
    for (auto const& row : rows)
    {
        ASSERT_NE(Catalogue::FindOwner(row.number), nullptr) << row.number;
        EXPECT_STREQ(Catalogue::FindOwner(row.number)->className, row.owner);
    }
    for (unsigned int const ownerless : {0u, 1u, 2u, 10u, 13u, 1999999u, 4294967295u})
        EXPECT_EQ(Catalogue::FindOwner(ownerless), nullptr) << ownerless;
}

TEST(nxVocabularyCatalogue, FindsClassesByName)
{
    Catalogue::Enumeration const* const errors = Catalogue::FindEnumeration("nxErrorEnum");
    ASSERT_NE(errors, nullptr);
    EXPECT_EQ(errors->lowerBound, 1000000u);
    EXPECT_EQ(errors->upperBound, 1999999u);
    EXPECT_EQ(errors->rows.size(), 581u);
    EXPECT_EQ(Catalogue::FindEnumeration("nxAccountNodeFlagBitMask"), nullptr);

    Catalogue::BitMask const* const flags = Catalogue::FindBitMask("nxAccountNodeFlagBitMask");
    ASSERT_NE(flags, nullptr);
    EXPECT_EQ(flags->width, 64u);
    EXPECT_EQ(Catalogue::FindBitMask("nxErrorEnum"), nullptr);
    EXPECT_EQ(Catalogue::FindBitMask(""), nullptr);
}
