// The rules of dates, times of day and date-times: their marks, roll-over, the hours that clocks skip and
// repeat, texts, and what a failure leaves behind. More of calendars is held by zones.py and the fuzz target
// of moments.

#include "core/time/nxDateTime.h"
#include "core/text/nxStringHelper.h"
#include "core/time/nxDate.h"
#include "core/time/nxTime.h"
#include "core/vocabulary/nxException.h"
#include "tests/time/nxTestZone.h"

#include <gtest/gtest.h>

#include <climits>
#include <ctime>
#include <tuple>
#include <type_traits>

static_assert(sizeof(nxDate) == 4 && std::is_trivially_copyable_v<nxDate>);
static_assert(std::is_convertible_v<unsigned int, nxDate>);
static_assert(!std::is_polymorphic_v<nxTime> && !std::is_polymorphic_v<nxDateTime>);
static_assert(std::is_convertible_v<long long, nxDateTime> && std::is_convertible_v<nxDateTime, long long>);
static_assert(sizeof(nxDateTime) == sizeof(std::tm) + 3 * sizeof(long long)); // count, fraction and flag

namespace
{
constexpr char const* newYork = "America/New_York";
constexpr nxNullInitalizer null{};

nxTime FromHHMMSS(unsigned int value)
{
    nxTime time;
    time.SetFromHHMMSS(value);
    return time;
}

nxDateTime At(std::string const& text)
{
    nxDateTime moment;
    EXPECT_TRUE(nxDateTime::SetFromString(text, moment).IsOK()) << text;
    return moment;
}
} // namespace

class nxDateTimeInUTC : public testing::Test
{
    nxTestZone _zone{"UTC"};
};

TEST(nxDate, EveryNumberButTheMarksIsADay)
{
    EXPECT_EQ(nxDate(2024, 13, 45).GetAsISODate().GetValue(), 20241345u);
    EXPECT_TRUE(nxDate(0u).IsValid() && nxDate(4294967293u).IsValid() && nxDate(4294967294u).IsNoChange());
    nxDate date(null);
    EXPECT_TRUE(date.IsNull() && !date.IsValid() && !date.IsNoChange() && date == nxDate(4294967295u));
    date.SetNoChange();
    EXPECT_TRUE(date == nxDate::GetNoChangeInstance() && date > nxDate(99999999u));
    EXPECT_TRUE(date < nxDate::GetNullInstance() && !(date > date) && date != nxDate::GetNullInstance());
    date.SetFromISODate(nxValueWrapper<unsigned int, -1, -2>());
    EXPECT_TRUE(date == nxDate::GetNullInstance() && date.GetAsISODate().IsNull());
    date.SetFromISODate(20240131u);
    EXPECT_TRUE(date == nxDate(2024, 1, 31));
    date = 7u;
    EXPECT_EQ(date.GetAsISODate().GetValue(), 7u);

    int const before = nxDateTime().GetAsISODate();
    unsigned int const today = nxDate().GetAsISODate().GetValue();
    EXPECT_TRUE(today == static_cast<unsigned int>(before) || nxDateTime().GetAsISODate() != before);
}

TEST(nxDate, Texts)
{
    nxDate const day(20240305u);
    EXPECT_EQ(day.GetAsString("%d%b%Y %y/%m %H:%M:%S"), "05Mar2024 24/03 00:00:00");
    EXPECT_EQ(day.GetAsLogString() + day.GetAsLogString("/%d"), "20240305/05");
    EXPECT_EQ(day.GetAsString(std::string(1024, 'x')), "");
    EXPECT_EQ(nxDate(1900, 2, 29).GetAsString("%Y-%m-%d"), "1900-02-29");
    EXPECT_EQ(nxDate(2024, 13, 45).GetAsString("%d"), "45");
    for (auto const& [mark, word] :
         {std::pair(nxDate::GetNullInstance(), "NULL"), {nxDate::GetNoChangeInstance(), "NO_CHANGE"}})
    {
        EXPECT_EQ(mark.GetAsString() + mark.GetAsString("%Y") + nxStringHelper::GetAsString(mark), "");
        EXPECT_EQ(mark.GetAsLogString(), word);
        EXPECT_EQ(mark.GetAsLogString("%Y"), word);
    }
    std::string text = "on ";
    nxStringHelper::AppendAsString(text, day);
    day.AppendAsString(text, "/%d");
    nxDate::GetNullInstance().AppendAsString(text);
    EXPECT_EQ(text, "on 20240305/05");
    nxDate read;
    EXPECT_TRUE(nxStringHelper::SetFromString("20240229", read).IsOK() && read == nxDate(2024, 2, 29));
}

TEST(nxTime, HasThreeStates)
{
    EXPECT_EQ(nxTime().GetAsString(), "00:00:00"); // the default is midnight and not null
    EXPECT_TRUE(nxTime(null).IsNull() && nxTime::GetNullInstance().IsNull() && !nxTime().IsNull());
    nxTime const noChange(nxNoChangeInitalizer{});
    EXPECT_FALSE(noChange.IsNull());
    EXPECT_EQ(nxTime(null).GetAsString() + ' ' + nxTime(null).GetAsLogString(), "INVALID NULL");
    EXPECT_EQ(noChange.GetAsString() + ' ' + noChange.GetAsLogString(), "INVALID INVALID");
    EXPECT_EQ(nxTime::GetSecondsInADay(), 86400u);

    nxTime read;
    EXPECT_TRUE(nxStringHelper::SetFromString("17:05", read).IsOK());
    EXPECT_EQ(nxStringHelper::SetFromString("17h05", read), NX_ERR_INVALID_PARAMETER);
    std::string text = "at ";
    nxStringHelper::AppendAsString(text, read);
    EXPECT_EQ(text + ' ' + nxStringHelper::GetAsString(read) + ' ' + read.GetAsLogString(),
              "at 17:05:00 17:05:00 17:05:00");

    // Only a null on the left is special in a comparison.
    nxTime const midnight, noon = FromHHMMSS(120000);
    EXPECT_TRUE(nxTime(null) == nxTime(null) && midnight == nxTime(null) && noChange == nxTime(null));
    EXPECT_TRUE(noChange == midnight && nxTime(null) != midnight);
    EXPECT_FALSE(nxTime(null) == midnight || midnight != nxTime(null));
    EXPECT_TRUE(midnight >= nxTime(null) && noChange < noon && noon > nxTime(null));
    EXPECT_FALSE(nxTime(null) >= nxTime(null) || nxTime(null) < noon || nxTime(null) > midnight);
    EXPECT_TRUE(FromHHMMSS(95959) < noon && noon > FromHHMMSS(115959) && noon >= FromHHMMSS(120000));
    EXPECT_FALSE(noon >= FromHHMMSS(120001) || noon > FromHHMMSS(120000) || noon < FromHHMMSS(120000));
}

// A setter leaves the status, so a null keeps a number that nobody reads back but GetAsHHMMSS() and
// comparisons.
TEST(nxTime, FieldsHaveEndsAndANullHidesThem)
{
    nxTime time = FromHHMMSS(123456);
    EXPECT_EQ(time.SetHour(24), NX_ERR_INVALID_PARAMETER);
    EXPECT_EQ(time.SetMinute(60), NX_ERR_INVALID_PARAMETER);
    EXPECT_EQ(time.SetSecond(60), NX_ERR_INVALID_PARAMETER);
    EXPECT_EQ(time.GetAsHHMMSS(), 123456u);
    EXPECT_TRUE(time.SetHour(23).IsOK() && time.SetMinute(59).IsOK() && time.SetSecond(0).IsOK());
    EXPECT_EQ(time.GetAsString(), "23:59:00");
    EXPECT_EQ(FromHHMMSS(4294967295u).GetAsString(), "429496:72:95"); // any number is taken

    time.SetNull();
    EXPECT_TRUE(time.SetHour(9).IsOK() && time.IsNull() && time.GetHour() == 0);
    EXPECT_EQ(time.GetAsString(), "INVALID");
    EXPECT_EQ(time.SetMinute(60), NX_ERR_INVALID_PARAMETER);
    EXPECT_EQ(time.GetAsHHMMSS(), 90000u) << "a refused value clears nothing";
    EXPECT_TRUE(time.SetMinute(30).IsOK());
    EXPECT_EQ(time.GetAsHHMMSS(), 3000u) << "the other two are cleared";
    EXPECT_EQ(time.SetFromString("9:30"), NX_ERR_INVALID_PARAMETER);
    EXPECT_EQ(time.GetAsHHMMSS(), 3000u);
    nxTime const copy(time);
    nxTime assigned = FromHHMMSS(111111);
    assigned = time;
    EXPECT_TRUE(copy.IsNull() && assigned.IsNull());
    EXPECT_EQ(copy.GetAsHHMMSS(), 0u) << "numbers come with a valid status only";
    EXPECT_EQ(assigned.GetAsHHMMSS(), 111111u);
    time.SetNull();
    EXPECT_EQ(time.GetAsHHMMSS(), 0u);
    time.SetFromHHMMSS(0);
    EXPECT_FALSE(time.IsNull());
}

TEST_F(nxDateTimeInUTC, MarksAreNumbersWithTheFieldsOfTheEpoch)
{
    nxDateTime moment(2024, 1, 1, 0, 0, 0, 5);
    moment.SetNull();
    EXPECT_TRUE(moment.IsNull() && !moment.IsValid() && moment.GetMicroseconds() == 0);
    EXPECT_TRUE(moment == nxDateTime::GetNullDateTime() && moment == nxDateTime(null));
    moment.SetNoChange();
    EXPECT_TRUE(moment.IsNoChange() && !moment.IsValid() && moment == nxDateTime::GetNoChangeDateTime());
    EXPECT_TRUE(nxDateTime(null) < moment && nxDateTime(2LL).IsValid() &&
                nxDateTime(-5LL) < nxDateTime(null));
    nxDateTime const before(-1LL);
    EXPECT_FALSE(before.IsNull() || before.IsNoChange() || before.IsValid());
    EXPECT_EQ(nxDateTime(nxNoChangeInitalizer{}).GetAsLogString_Microseconds(), "NO_CHANGE");

    nxDateTime mark(null);
    EXPECT_EQ(mark.GetAsISODate(), 0);
    EXPECT_TRUE(mark.GetTime().IsNull() && mark.GetQuarter().IsNull());
    EXPECT_EQ(mark.GetAsString(), "01 Jan 1970 00:00:00.000");
    EXPECT_EQ(mark.GetAsString("%Y", true, true), "1970") << "no fraction on a mark in this form";
    EXPECT_EQ(mark.GetAsLogString(), "NULL");
    EXPECT_TRUE((mark + nxDateTimeSpan(0, 0, 0, 0, 0, 1)).IsNoChange());
    mark.SetYear(1971);
    EXPECT_EQ(mark.GetAsISODate(), 19710101);
    nxTestZone const zone(newYork); // where the fields are the local ones
    mark.SetNull();
    EXPECT_EQ(mark.GetAsString_Seconds(), "31 Dec 1969 19:00:00");
    mark.SetHour(20);
    EXPECT_EQ(mark.GetAsTimeValue(), 3600);
}

TEST_F(nxDateTimeInUTC, ReadersAndFraction)
{
    nxDateTime moment(2024, 2, 29, 9, 30, 5, 1234567); // the constructor takes any fraction
    EXPECT_EQ(moment.GetAsString(), "29 Feb 2024 09:30:05.1234");
    EXPECT_EQ(moment.GetAsString_Microseconds(), "29 Feb 2024 09:30:05.1234567");
    EXPECT_EQ(static_cast<long long>(moment), 1709199005);
    nxDayOfWeekEnum day;
    moment.GetDayOfWeek(day);
    EXPECT_EQ(day, NX_DAY_OF_WEEK_THURSDAY);
    EXPECT_EQ(moment.GetAsISODate(), 20240229);
    EXPECT_EQ(moment.GetQuarter().GetValue(), 0u) << "counted from zero";
    EXPECT_EQ(At("20241231 00:00:00").GetQuarter().GetValue(), 3u);
    EXPECT_EQ(moment.GetTime().GetAsHHMMSS(), 93005u);
    moment.SetMicroseconds(999999);
    EXPECT_TRUE(moment.GetMicroseconds() == 999999 && moment.GetMilliseconds() == 999);
    moment.SetDay(2);
    EXPECT_EQ(moment.GetMicroseconds(), 999999u) << "setters of the calendar leave the fraction";
    moment.SetMicroseconds(1000000);
    EXPECT_EQ(moment.GetMicroseconds(), 0u);
    moment.SetMicroseconds(7);
    moment.SetFromTimeValue(5);
    EXPECT_EQ(moment.GetMicroseconds(), 0u);
    for (unsigned int const date : {0u, 9999999u, 100000000u, 0x80000000u, 0xFFFFFFFFu, 0xFFFFFFFEu})
    {
        moment.SetFromISODate(date);
        EXPECT_TRUE(moment.IsNull()) << date;
        moment.SetFromTimeValue(5);
    }
}

TEST_F(nxDateTimeInUTC, BeforeTheEpochThrowsAndLeavesTheValue)
{
    nxDateTime moment(2024, 5, 6, 7, 8, 9, 10);
    try
    {
        moment -= nxDateTimeSpan(100, 0, 0, 0, 0, 0);
        ADD_FAILURE() << moment.GetAsTimeValue();
    }
    catch (nxException const& exception)
    {
        EXPECT_EQ(exception.GetError(), NX_ERR_INVALID_PARAMETER);
        EXPECT_EQ(exception.GetDescription(), "");
    }
    EXPECT_EQ(moment.GetAsString_Microseconds(), "06 May 2024 07:08:09.000010");
    EXPECT_EQ(nxDateTime(1000000, 1, 1, 0, 0, 0, 0).GetAsString_Seconds(), "01 Jan 1000000 00:00:00");
    EXPECT_EQ(nxDateTime(INT_MAX, 12, 31, 0, 0, 0, 0).GetYear(), INT_MAX);
    EXPECT_THROW(nxDateTime(INT_MAX, INT_MAX, 1, 0, 0, 0, 0), nxException);
}

// A reader of a moment without a calendar turns it null; the next one meets an ordinary null.
TEST_F(nxDateTimeInUTC, AFailedConversionTurnsTheValueNull)
{
    for (long long const value : {LLONG_MAX, LLONG_MIN, -1LL})
    {
        nxDateTime const moment(value);
        nxDateTime const copy(moment);
        EXPECT_EQ(copy.GetAsTimeValue(), value) << "a copy converts nothing";
        EXPECT_EQ(moment.GetAsLogString(), ".000") << "no text, but the fraction";
        EXPECT_TRUE(moment.IsNull());
        EXPECT_EQ(moment.GetAsLogString(), "NULL");
        EXPECT_EQ(moment.GetAsString(), "01 Jan 1970 00:00:00.000");

        EXPECT_EQ(nxDateTime(value).GetAsISODate(), 0);
        EXPECT_TRUE(nxDateTime(value).GetTime().IsNull() && nxDateTime(value).GetQuarter().IsNull());
        EXPECT_TRUE(nxDateTime(value).GetAsGMT().IsNull());
        nxDayOfWeekEnum day(NX_DAY_OF_WEEK_MONDAY);
        nxDateTime(value).GetDayOfWeek(day);
        EXPECT_TRUE(day.IsUndefined());
        nxDateTime set(value);
        set.SetHour(5);
        EXPECT_TRUE(set.IsNull()) << "the calendar is filled anew from the null, over the hour";
    }
}

TEST(nxDateTimeInNewYork, FieldsOfGMTStayWithTheValueThatHasThem)
{
    nxTestZone const zone(newYork);
    nxDateTime const moment(1720000000LL); // 3 July 2024 05:46:40 local
    nxDateTime const gmt = moment.GetAsGMT();
    EXPECT_TRUE(gmt == moment && gmt.GetHour() == 9 && moment.GetHour() == 5);
    nxDateTime copy(gmt);
    nxDateTime assigned;
    assigned = gmt;
    EXPECT_EQ(copy.GetAsString(std::string("%H %Z")), "09 GMT") << "a copy keeps the fields";
    EXPECT_EQ(assigned.GetHour(), 9);
    copy.SetMinute(46); // the fields are taken for local ones
    EXPECT_EQ(copy.GetAsTimeValue() - moment.GetAsTimeValue(), 4 * 3600);
    EXPECT_EQ(copy.GetHour(), 9);
    nxDateTime season = At("20240701 12:00:00");
    season.SetMonth(1);
    EXPECT_EQ(season.GetHour(), 12); // another season keeps the hour
}

// The present offset holds for all moments, also those of the other season.
TEST(nxDateTimeInSomeZones, OffsetAndGMT)
{
    for (auto const& [name, fixedOffset] :
         {std::pair("UTC", 0), {"XYZ-24:59:59", 89999}, {"XYZ8", -28800}, {newYork, -18000}})
    {
        nxTestZone const zone(name);
        int const offset = nxDateTime::GetTimezoneOffsetFromGMT();
        bool const isSummerTime = name == newYork && offset == fixedOffset + 3600;
        EXPECT_TRUE(offset == fixedOffset || isSummerTime) << name << ' ' << offset;
        for (int const month : {1, 7})
        {
            nxDateTime moment;
            moment.SetFromGMT(2024, month, 28, 23, 59, 60, 42);
            EXPECT_TRUE(moment == nxDateTime(2024, month, 28, 23, 59, 60 + offset, 42))
                << name << ' ' << month;
            EXPECT_TRUE(name == newYork || moment.GetAsGMT().GetAsString("%d %H:%M:%S") == "29 00:00:00")
                << name;
        }
    }
}

TEST(nxDateTimeInNewYork, NowAgreesWithTheClock)
{
    nxTestZone const zone(newYork);
    std::time_t const before = std::time(nullptr);
    nxDateTime const now;
    nxDateTime const gmt = nxDateTime::GetCurrentTimeAsGMT();
    nxDateTime const start = nxDateTime::GetStartOfDay();
    nxDateTime const end = nxDateTime::GetEndOfDay();
    EXPECT_GE(now.GetAsTimeValue() + 1, before); // time() may run some milliseconds behind the finer clock
    EXPECT_LE(now.GetAsTimeValue(), std::time(nullptr) + 1);
    EXPECT_EQ(now.GetMicroseconds() % 1000, 0u) << "cut to the millisecond";
    EXPECT_TRUE(now <= gmt && now.GetHour() != gmt.GetHour() && start <= now && end >= now);
    EXPECT_EQ(start.GetAsString(std::string("%H:%M:%S"), false, true), "00:00:00.000000");
    EXPECT_EQ(end.GetAsString(std::string("%H:%M:%S"), false, true), "23:59:59.999999");
}

TEST_F(nxDateTimeInUTC, ComparisonIsBySecondsThenMicroseconds)
{
    nxDateTime const early(2024, 1, 1, 0, 0, 0, 1);
    nxDateTime const late(2024, 1, 1, 0, 0, 0, 2);
    EXPECT_TRUE(early < late && early <= late && late > early && late >= early && early != late);
    EXPECT_FALSE(early == late || early > late || late <= early || late > At("20240101 00:00:01"));
}

TEST_F(nxDateTimeInUTC, SpansKeepTheirNumbersAndDifferencesAreFieldByField)
{
    nxDateTimeSpan const span = At("20230331 10:30:00").GetDifference(At("20240501 09:45:59"));
    EXPECT_TRUE(span.GetYears() == 1 && span.GetMonths() == 2 && span.GetDays() == -30);
    EXPECT_TRUE(span.GetHours() == -1 && span.GetMinutes() == 15 && span.GetSeconds() == 59);
    EXPECT_EQ(span.GetTotalSeconds(), 397 * 86400 - 2641);
    EXPECT_EQ(span.GetTotalDays(), 396);
    nxDateTimeSpan const back = nxDateTime(1090LL).GetDifference(nxDateTime(1000LL));
    EXPECT_TRUE(back.GetTotalSeconds() == -90 && back.GetTotalHours() == 0);
    EXPECT_EQ(back.GetTotalMinutes(), -1) << "cut toward zero";
    EXPECT_EQ(nxDateTime(0LL).GetDifference(nxDateTime(2147483647LL)).GetTotalSeconds(), INT_MAX);
    EXPECT_EQ(nxDateTime(0LL).GetDifference(nxDateTime(2147483648LL)).GetTotalSeconds(), INT_MIN);

    nxDateTimeSpan set(1, -2, 3, 40, 90, 100);
    EXPECT_TRUE(set.GetTotalSeconds() == 0 && set.GetMinutes() == 90);
    set.SetMinutes(1);
    set.SetHours(0);
    nxDateTime moment(2024, 1, 31, 12, 0, 0, 77);
    moment += set;
    EXPECT_EQ(moment.GetAsString_Microseconds(), "04 Dec 2024 12:02:40.000077");
    EXPECT_EQ((At("20240310 12:00:00") - nxDateTimeSpan(0, 1, 1, 1, 0, 0)).GetAsString_Seconds(),
              "09 Feb 2024 11:00:00");

    using Row = std::tuple<int, int, int>;
    for (auto const& [month, year, day] :
         {Row{2, 2000, 29}, Row{2, 1900, 28}, Row{2, 2024, 29}, Row{2, 2023, 28}, Row{9, 2023, 30},
          Row{12, 2023, 31}, Row{13, 2023, 31}, Row{INT_MIN, INT_MIN, 31}})
        EXPECT_EQ(nxDateTime::GetLastDayOfMonth(month, year), day) << month << ' ' << year;
}

TEST_F(nxDateTimeInUTC, TextsOfAMoment)
{
    nxDateTime const moment(2026, 11, 5, 9, 3, 1, 42007);
    EXPECT_EQ(moment.GetAsString(), "05 Nov 2026 09:03:01.042");
    EXPECT_EQ(moment.GetAsString_Microseconds(), "05 Nov 2026 09:03:01.042007");
    EXPECT_EQ(moment.GetAsLogString(), moment.GetAsString());
    EXPECT_EQ(moment.GetAsLogString_Microseconds() + ' ' + moment.GetAsLogString_Seconds(),
              "05 Nov 2026 09:03:01.042007 05 Nov 2026 09:03:01");
    EXPECT_EQ(moment.GetAsString("%a %j", true, true), "Thu 309.042") << "milliseconds come first";
    EXPECT_EQ(moment.GetAsString("%y", false, true), "26.042007");
    EXPECT_EQ(nxStringHelper::GetAsString(moment), "05 Nov 2026 09:03:01");
    std::string text = "on ";
    moment.AppendAsString(text, "%d");
    moment.AppendAsLogString(text, std::string("/%m"));
    moment.AppendAsLogString(text, "/%y");
    nxStringHelper::AppendAsString(text, nxDateTime(null));
    EXPECT_EQ(text, "on 05/11/2601 Jan 1970 00:00:00");

    // A format gives up to 1023 bytes, and stops at a zero byte.
    for (std::string const& format : {std::string(), std::string(1024, 'x'), std::string(1022, 'x') + "%H"})
        EXPECT_EQ(moment.GetAsString(format), "");
    EXPECT_EQ(moment.GetAsString(std::string(1023, 'x')), std::string(1023, 'x'));
    EXPECT_EQ(moment.GetAsString(std::string("%H\0%M", 5)), "09");
}
