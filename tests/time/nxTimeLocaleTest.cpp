// Texts of times in a host that has set a German locale: month names and digits stay those of the "C" locale.

#include "core/time/nxDate.h"
#include "core/time/nxDateTime.h"
#include "core/time/nxTimeStamp.h"
#include "tests/time/nxTestZone.h"

#include <gtest/gtest.h>

#include <clocale>
#include <ctime>

TEST(nxTimeInAGermanLocale, TextsStayEnglish)
{
    ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr);
    nxTestZone const zone("UTC");
    nxDateTime const moment(2026, 3, 5, 9, 3, 1, 42000);
    std::time_t const time = moment.GetAsTimeValue();
    std::tm fields = {};
    gmtime_r(&time, &fields);
    char german[20];
    ASSERT_EQ(std::string(german, std::strftime(german, sizeof(german), "%d%b%Y", &fields)), "05Mär2026");

    EXPECT_EQ(moment.GetAsString(), "05 Mar 2026 09:03:01.042");
    EXPECT_EQ(moment.GetAsString(std::string("%d%b%Y %A %B %p %x"), false, true),
              "05Mar2026 Thursday March AM 03/05/26.042000");
    EXPECT_EQ(nxDate(20260305u).GetAsString("%d%b%Y"), "05Mar2026");
    EXPECT_EQ(nxTimeStamp(time, 42000000).GetAsString(), "05Mar26 09:03:01.042");
    char fast[nxTimeStamp::fastStringSize];
    nxTimeStamp(time, 42000000).GetAsStringFast(fast, sizeof(fast));
    EXPECT_STREQ(fast, "05Mar26 09:03:01.042.000");
    nxDateTime back;
    EXPECT_TRUE(nxDateTime::SetFromString("20260305 09:03:01.042000", back).IsOK());
    EXPECT_TRUE(back == moment);
}
