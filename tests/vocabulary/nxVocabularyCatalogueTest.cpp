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

TEST(nxVocabularyCatalogue, RowsAreThoseOfTheRegistryAndFitForUse)
{
    std::set<unsigned int> numbers;
    std::set<std::string> tokens;
    for (Catalogue::Enumeration const& enumeration : Catalogue::GetEnumerations())
    {
        bool const crossed = std::string(enumeration.className) == "nxSyntheticLegCalculationTypeEnum";
        for (nxEnumRow const& row : enumeration.rows)
        {
            SCOPED_TRACE(row.enumerator);
            std::string const token = row.token;
            std::string const text = row.text;
            EXPECT_TRUE(numbers.insert(row.number).second && tokens.insert(token).second);
            EXPECT_TRUE(nxEnum::IsRegisteredEnumValue(row.number));
            EXPECT_EQ(WordsOf(row.number).GetShortDescription(), token);
            EXPECT_EQ(WordsOf(row.number).GetLongDescription(), text);
            EXPECT_EQ(enumeration.Owns(row.number), !crossed);
            EXPECT_EQ(Catalogue::FindOwner(row.number), &enumeration);

            ASSERT_FALSE(text.empty());
            EXPECT_NE(text.back(), '.');
            EXPECT_LE(token.size(), 64u);
            std::string const enumerator = row.enumerator;
            EXPECT_TRUE(enumerator.starts_with("NX_"));
            EXPECT_NE(enumerator.find(token.substr(0, token.find_last_not_of('\t') + 1)), std::string::npos);
        }
    }
}

TEST(nxVocabularyCatalogue, FindsTheOwnerOfANumberWithoutARow)
{
    EXPECT_STREQ(Catalogue::FindOwner(139)->className, "nxFieldTypeEnum");
    EXPECT_STREQ(Catalogue::FindOwner(1000030)->className, "nxErrorEnum");
    EXPECT_STREQ(Catalogue::FindOwner(199998)->className, "nxFunctionEnum");
    for (unsigned int const ownerless : {0u, 1u, 2u, 10u, 13u, 1999999u, 4294967295u})
        EXPECT_EQ(Catalogue::FindOwner(ownerless), nullptr) << ownerless;
}

TEST(nxVocabularyCatalogue, FindsClassesByName)
{
    Catalogue::Enumeration const* const errors = Catalogue::FindEnumeration("nxErrorEnum");
    ASSERT_NE(errors, nullptr);
    EXPECT_TRUE(errors->lowerBound == 1000000 && errors->upperBound == 1999999 && errors->rows.size() == 581);
    EXPECT_EQ(Catalogue::FindEnumeration("nxAccountNodeFlagBitMask"), nullptr);

    Catalogue::BitMask const* const flags = Catalogue::FindBitMask("nxAccountNodeFlagBitMask");
    ASSERT_NE(flags, nullptr);
    EXPECT_EQ(flags->width, 64u);
    EXPECT_EQ(Catalogue::FindBitMask("nxErrorEnum"), nullptr);
    EXPECT_EQ(Catalogue::FindBitMask(""), nullptr);
}
