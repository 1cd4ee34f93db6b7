// Numbers in a host that has set a German locale, which has a decimal comma.
#include "core/numbers/nxDecimal.h"
#include "core/text/nxStringHelper.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>

TEST(nxStringHelperInAGermanLocale, NumbersKeepTheirPoint)
{
    ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr);
    char german[16];
    std::snprintf(german, sizeof(german), "%.1f", 1.5);
    ASSERT_STREQ(german, "1,5");

    EXPECT_EQ(nxStringHelper::GetAsString(1234.5), "1234.5");
    EXPECT_EQ(nxStringHelper::GetAsString(3e9), "3.000000e+09");
    EXPECT_EQ(nxDecimal("1234.50").GetAsString(), "1234.50");
    double value = 0.0;
    EXPECT_TRUE(nxStringHelper::SetFromString("1.5", value).IsOK());
    EXPECT_EQ(value, 1.5);
    EXPECT_FALSE(nxStringHelper::IsUppercase('\xC4'));
    std::setlocale(LC_ALL, "C");
}
