// The catalogue knows whose a number is. That it shows what the registry holds is seen before main.

#include "core/vocabulary/nxVocabularyCatalogue.h"

#include <gtest/gtest.h>

#include <string>

using Catalogue = nxVocabularyCatalogue;

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
