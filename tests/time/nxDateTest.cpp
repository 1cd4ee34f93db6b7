// A date is a number: what it takes, how its two marks sort and print, and how it reaches the calendar.

#include "core/time/nxDate.h"
#include "core/text/nxStringHelper.h"
#include "core/time/nxDateTime.h"

#include <gtest/gtest.h>

#include <type_traits>

static_assert(sizeof(nxDate) == 4 && std::is_trivially_copyable_v<nxDate>);
static_assert(std::is_convertible_v<unsigned int, nxDate>);

TEST(nxDate, EveryNumberButTheMarksIsADay)
{
    EXPECT_EQ(nxDate(2024, 13, 45).GetAsISODate().GetValue(), 20241345u);
    EXPECT_TRUE(nxDate(0u).IsValid() && nxDate(4294967293u).IsValid());
    EXPECT_TRUE(nxDate(4294967294u).IsNoChange());
    EXPECT_TRUE(nxDate(4294967295u).IsNull());
    nxDate date(nxNullInitalizer{});
    EXPECT_TRUE(date.IsNull() && !date.IsValid() && !date.IsNoChange());
    date.SetNoChange();
    EXPECT_TRUE(date == nxDate::GetNoChangeInstance());
    date.SetFromISODate(nxValueWrapper<unsigned int, -1, -2>());
    EXPECT_TRUE(date == nxDate::GetNullInstance());
    EXPECT_TRUE(date.GetAsISODate().IsNull());
    date.SetFromISODate(20240131u);
    EXPECT_TRUE(date == nxDate(2024, 1, 31));
    date = 7u;
    EXPECT_EQ(date.GetAsISODate().GetValue(), 7u);
}

TEST(nxDate, DefaultIsTodayAndMarksComeAfterAllDays)
{
    int const before = nxDateTime().GetAsISODate();
    nxDate const today;
    int const after = nxDateTime().GetAsISODate();
    EXPECT_TRUE(today == nxDate(static_cast<unsigned int>(before)) ||
                today == nxDate(static_cast<unsigned int>(after)));
    EXPECT_TRUE(nxDate::GetNullInstance() > nxDate(20240101u));
    EXPECT_TRUE(nxDate::GetNoChangeInstance() > nxDate(99999999u));
    EXPECT_TRUE(nxDate::GetNoChangeInstance() < nxDate::GetNullInstance());
    EXPECT_TRUE(nxDate(20231231u) < nxDate(20240101u) && nxDate(20231231u) != nxDate(20240101u));
}

TEST(nxDate, Texts)
{
    nxDate const day(20240305u);
    EXPECT_EQ(day.GetAsString(), "20240305");
    EXPECT_EQ(day.GetAsLogString(), "20240305");
    EXPECT_EQ(day.GetAsString("%d%b%Y %y/%m"), "05Mar2024 24/03");
    EXPECT_EQ(day.GetAsLogString("%d%b%Y"), "05Mar2024");
    EXPECT_EQ(day.GetAsString("%H:%M:%S"), "00:00:00") << "no time of day";
    EXPECT_EQ(day.GetAsString(std::string(1024, 'x')), "");
    EXPECT_EQ(nxDate(1900, 2, 29).GetAsString("%Y-%m-%d"), "1900-02-29");
    EXPECT_EQ(nxDate(2024, 13, 45).GetAsString("%d"), "45");

    for (auto const& [mark, logText] :
         {std::pair(nxDate::GetNullInstance(), "NULL"), {nxDate::GetNoChangeInstance(), "NO_CHANGE"}})
    {
        EXPECT_EQ(mark.GetAsString(), "");
        EXPECT_EQ(mark.GetAsString("%Y"), "");
        EXPECT_EQ(mark.GetAsLogString(), logText);
        EXPECT_EQ(mark.GetAsLogString("%Y"), logText);
        EXPECT_EQ(nxStringHelper::GetAsString(mark), "");
    }
    std::string text = "on ";
    nxStringHelper::AppendAsString(text, day);
    day.AppendAsString(text, "/%d");
    nxDate::GetNullInstance().AppendAsString(text);
    EXPECT_EQ(text, "on 20240305/05");
    nxDate read;
    EXPECT_TRUE(nxStringHelper::SetFromString("20240229", read).IsOK() && read == nxDate(2024, 2, 29));
}
