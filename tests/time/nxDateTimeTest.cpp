// The rules of date-times: their marks, roll-over, the hours that clocks skip and repeat, texts, and what a failure
// leaves behind.

#include "core/time/nxDateTime.h"
#include "core/text/nxStringHelper.h"
#include "core/vocabulary/nxException.h"
#include "tests/time/nxTestZone.h"

#include <gtest/gtest.h>

#include <climits>
#include <ctime>
#include <tuple>
#include <type_traits>

static_assert(!std::is_polymorphic_v<nxDateTime>);
static_assert(std::is_convertible_v<long long, nxDateTime> && std::is_convertible_v<nxDateTime, long long>);
static_assert(sizeof(nxDateTime) == sizeof(std::tm) + 3 * sizeof(long long)); // count, fraction and flag

namespace
{

constexpr char const* newYork = "America/New_York";

nxDateTime AtSecond(int year, int month, int day, int hour, int minute, int second)
{
    return nxDateTime(year, month, day, hour, minute, second, 0);
}

} // namespace

class nxDateTimeInUTC : public testing::Test
{
    nxTestZone _zone{"UTC"};
};

class nxDateTimeInNewYork : public testing::Test
{
    nxTestZone _zone{newYork};
};

TEST_F(nxDateTimeInUTC, MarksAreNumbers)
{
    nxDateTime moment(1234LL);
    moment.SetMicroseconds(5);
    EXPECT_TRUE(moment.IsValid());
    moment.SetNull();
    EXPECT_TRUE(moment.IsNull() && !moment.IsValid() && moment.GetMicroseconds() == 0);
    EXPECT_TRUE(moment == nxDateTime::GetNullDateTime() && moment == nxDateTime(nxNullInitalizer{}));
    moment.SetNoChange();
    EXPECT_TRUE(moment.IsNoChange() && !moment.IsValid());
    EXPECT_TRUE(moment == nxDateTime::GetNoChangeDateTime() && moment == nxDateTime(nxNoChangeInitalizer{}));
    EXPECT_TRUE(nxDateTime::GetNullDateTime() < moment && nxDateTime(2LL).IsValid());
    nxDateTime const before(-1LL);
    EXPECT_FALSE(before.IsNull() || before.IsNoChange() || before.IsValid());
}

TEST_F(nxDateTimeInUTC, MarksHaveTheFieldsOfTheEpoch)
{
    nxDateTime null(nxNullInitalizer{});
    EXPECT_EQ(null.GetYear(), 1970);
    EXPECT_EQ(null.GetAsISODate(), 0);
    EXPECT_TRUE(null.GetTime().IsNull());
    EXPECT_TRUE(null.GetQuarter().IsNull());
    EXPECT_EQ(null.GetAsString(), "01 Jan 1970 00:00:00.000");
    EXPECT_EQ(null.GetAsString("%Y", true, true), "1970") << "no fraction on a mark in this form";
    EXPECT_EQ(null.GetAsLogString(), "NULL");
    EXPECT_EQ(nxDateTime(nxNoChangeInitalizer{}).GetAsLogString_Microseconds(), "NO_CHANGE");
    EXPECT_TRUE((null + nxDateTimeSpan(0, 0, 0, 0, 0, 1)).IsNoChange());
    null.SetYear(1971);
    EXPECT_EQ(null.GetAsISODate(), 19710101);

    nxTestZone const zone(newYork); // where the fields are the local ones
    null.SetNull();
    EXPECT_EQ(null.GetAsString_Seconds(), "31 Dec 1969 19:00:00");
    null.SetHour(20);
    EXPECT_EQ(null.GetAsTimeValue(), 3600);
}

TEST_F(nxDateTimeInUTC, ReadersOfAMoment)
{
    nxDateTime const moment(2024, 2, 29, 9, 30, 5, 123456);
    EXPECT_EQ(static_cast<long long>(moment), 1709199005);
    EXPECT_EQ(moment.GetMilliseconds(), 123u);
    nxDayOfWeekEnum day;
    moment.GetDayOfWeek(day);
    EXPECT_EQ(day, NX_DAY_OF_WEEK_THURSDAY);
    EXPECT_EQ(moment.GetAsISODate(), 20240229);
    EXPECT_EQ(moment.GetQuarter().GetValue(), 0u) << "counted from zero";
    EXPECT_EQ(AtSecond(2024, 12, 31, 0, 0, 0).GetQuarter().GetValue(), 3u);
    EXPECT_EQ(moment.GetTime().GetAsHHMMSS(), 93005u);
}

TEST_F(nxDateTimeInUTC, MicrosecondsComeAsTheyAreIntoTheConstructorOnly)
{
    nxDateTime moment(2024, 1, 1, 0, 0, 0, 1234567);
    EXPECT_EQ(moment.GetAsString(), "01 Jan 2024 00:00:00.1234");
    EXPECT_EQ(moment.GetAsString_Microseconds(), "01 Jan 2024 00:00:00.1234567");
    moment.SetMicroseconds(999999);
    EXPECT_EQ(moment.GetMicroseconds(), 999999u);
    moment.SetMicroseconds(1000000);
    EXPECT_EQ(moment.GetMicroseconds(), 0u);
    moment.SetMicroseconds(7);
    moment.SetDay(2);
    EXPECT_EQ(moment.GetMicroseconds(), 7u) << "setters of the calendar leave the fraction";
    moment.SetFromTimeValue(5);
    EXPECT_EQ(moment.GetMicroseconds(), 0u);
}

TEST_F(nxDateTimeInUTC, ISODatesHaveEightDigits)
{
    for (unsigned int const date : {0u, 9999999u, 100000000u, 0x80000000u, 0xFFFFFFFFu, 0xFFFFFFFEu})
    {
        nxDateTime moment;
        moment.SetFromISODate(date);
        EXPECT_TRUE(moment.IsNull()) << date;
    }
}

// All six fields go by the wall clock; elapsed time would make the two sums differ by an hour.
TEST_F(nxDateTimeInNewYork, ADayOfSecondsIsADay)
{
    nxDateTime const noon = AtSecond(2024, 3, 9, 12, 0, 0);
    nxDateTime const byDay = noon + nxDateTimeSpan(0, 0, 1, 0, 0, 0);
    nxDateTime const bySeconds = noon + nxDateTimeSpan(0, 0, 0, 0, 0, 86400);
    EXPECT_EQ(byDay.GetAsTimeValue() - noon.GetAsTimeValue(), 82800);
    EXPECT_TRUE(byDay == bySeconds);
    EXPECT_TRUE(byDay - nxDateTimeSpan(0, 0, 1, 0, 0, 0) == noon);

    nxDateTime season = AtSecond(2024, 7, 1, 12, 0, 0);
    season.SetMonth(1);
    EXPECT_EQ(season.GetHour(), 12); // another season keeps the hour
}

// Zones whose offset changes without the daylight flag, or with another meaning of it; more are held by zones.py.
TEST(nxDateTimeInOddZones, SkippedAndRepeatedTimes)
{
    struct Row
    {
        char const* zone;
        int year, month, day, hour, minute;
        long long moment;
        char const* back;
    };
    for (Row const& row : {
             Row{"Europe/Moscow", 2014, 10, 26, 1, 30, 1414272600, "26 Oct 2014 01:30:00"},
             {"Europe/Dublin", 2024, 3, 31, 1, 30, 1711848600,
              "31 Mar 2024 02:30:00"}, // summer is the standard there
             {"XYZ-24:59:59", 2024, 1, 1, 0, 0, 1703977201, "01 Jan 2024 00:00:00"},
         })
    {
        nxTestZone const zone(row.zone);
        nxDateTime const moment = AtSecond(row.year, row.month, row.day, row.hour, row.minute, 0);
        EXPECT_EQ(moment.GetAsTimeValue(), row.moment) << row.zone;
        EXPECT_EQ(moment.GetAsString_Seconds(), row.back) << row.zone;
    }
}

TEST_F(nxDateTimeInUTC, BeforeTheEpochThrowsAndLeavesTheValue)
{
    nxDateTime moment(2024, 5, 6, 7, 8, 9, 10);
    nxDateTime const before(moment);
    try
    {
        moment.SetYear(1900);
        ADD_FAILURE() << moment.GetAsTimeValue();
    }
    catch (nxException const& exception)
    {
        EXPECT_EQ(exception.GetError(), NX_ERR_INVALID_PARAMETER);
        EXPECT_EQ(exception.GetDescription(), "");
    }
    EXPECT_THROW(moment.SetFromISODate(19691231), nxException);
    EXPECT_THROW(moment -= nxDateTimeSpan(100, 0, 0, 0, 0, 0), nxException);
    EXPECT_TRUE(moment == before);
    EXPECT_EQ(moment.GetAsString_Microseconds(), "06 May 2024 07:08:09.000010");
}

TEST_F(nxDateTimeInUTC, YearsGoFarBeyondFourDigits)
{
    nxDateTime const moment = AtSecond(1000000, 1, 1, 0, 0, 0);
    EXPECT_EQ(moment.GetYear(), 1000000);
    EXPECT_EQ(moment.GetAsString_Seconds(), "01 Jan 1000000 00:00:00");
    EXPECT_EQ(AtSecond(INT_MAX, 12, 31, 0, 0, 0).GetYear(), INT_MAX);
    EXPECT_THROW(AtSecond(INT_MAX, INT_MAX, 1, 0, 0, 0), nxException);
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
        EXPECT_TRUE(nxDateTime(value).GetTime().IsNull());
        EXPECT_TRUE(nxDateTime(value).GetQuarter().IsNull());
        EXPECT_TRUE(nxDateTime(value).GetAsGMT().IsNull());
        nxDayOfWeekEnum day(NX_DAY_OF_WEEK_MONDAY);
        nxDateTime(value).GetDayOfWeek(day);
        EXPECT_TRUE(day.IsUndefined());
        nxDateTime set(value);
        set.SetHour(5);
        EXPECT_TRUE(set.IsNull()) << "the calendar is filled anew from the null, over the hour";
    }
}

TEST_F(nxDateTimeInNewYork, GMTFieldsStayWithTheValueThatHasThem)
{
    nxDateTime const moment(1720000000LL); // 3 July 2024 05:46:40 local
    nxDateTime const gmt = moment.GetAsGMT();
    EXPECT_EQ(moment.GetHour(), 5);
    EXPECT_EQ(gmt.GetHour(), 9);
    EXPECT_TRUE(gmt == moment);
    nxDateTime copy(gmt);
    EXPECT_EQ(copy.GetAsString(std::string("%H %Z")), "09 GMT") << "a copy keeps the fields";
    nxDateTime assigned;
    assigned = gmt;
    EXPECT_EQ(assigned.GetHour(), 9);
    copy.SetMinute(46); // the fields are taken for local ones
    EXPECT_EQ(copy.GetAsTimeValue() - moment.GetAsTimeValue(), 4 * 3600);
    EXPECT_EQ(copy.GetHour(), 9);
}

TEST_F(nxDateTimeInNewYork, OffsetAndGMT)
{
    std::time_t const now = std::time(nullptr);
    std::tm fields = {};
    localtime_r(&now, &fields);
    int const offset = nxDateTime::GetTimezoneOffsetFromGMT();
    // On a day when the clocks change, the algorithm may already be on the other side.
    EXPECT_TRUE(offset == fields.tm_gmtoff || offset == -4 * 3600 || offset == -5 * 3600) << offset;

    // The present offset holds for all moments, also those of the other season.
    nxDateTime moment;
    moment.SetFromGMT(2024, 1, 15, 12, 0, 0, 42);
    EXPECT_EQ(moment.GetAsTimeValue(), nxDateTime(2024, 1, 15, 12, 0, offset, 0).GetAsTimeValue());
    EXPECT_EQ(moment.GetMicroseconds(), 42u);
    moment.SetFromGMT(2024, 7, 15, 12, 0, 0, 0);
    EXPECT_EQ(moment.GetAsTimeValue(), nxDateTime(2024, 7, 15, 12, 0, offset, 0).GetAsTimeValue());
}

TEST(nxDateTimeInFixedZones, OffsetAndGMTAreExact)
{
    for (auto const& [zone, offset] : {std::pair("UTC", 0), {"Asia/Kolkata", 19800}, {"XYZ8", -28800}})
    {
        nxTestZone const testZone(zone);
        EXPECT_EQ(nxDateTime::GetTimezoneOffsetFromGMT(), offset);
        nxDateTime moment;
        moment.SetFromGMT(2024, 2, 29, 23, 59, 60, 0);
        EXPECT_EQ(moment.GetAsTimeValue(), 1709251200) << zone;
        EXPECT_EQ(moment.GetAsGMT().GetAsISODate(), 20240301) << zone;
    }
}

TEST_F(nxDateTimeInNewYork, NowAgreesWithTheClock)
{
    std::time_t const before = std::time(nullptr);
    nxDateTime const now;
    nxDateTime const gmt = nxDateTime::GetCurrentTimeAsGMT();
    nxDateTime const start = nxDateTime::GetStartOfDay();
    nxDateTime const end = nxDateTime::GetEndOfDay();
    std::time_t const after = std::time(nullptr);
    EXPECT_GE(now.GetAsTimeValue() + 1, before); // time() may run some milliseconds behind the finer clock
    EXPECT_LE(now.GetAsTimeValue(), after + 1);
    EXPECT_EQ(now.GetMicroseconds() % 1000, 0u) << "cut to the millisecond";
    EXPECT_LE(now, gmt);
    EXPECT_NE(now.GetHour(), gmt.GetHour());
    EXPECT_LE(start, now);
    EXPECT_EQ(start.GetAsString(std::string("%H:%M:%S"), false, true), "00:00:00.000000");
    EXPECT_EQ(end.GetAsString(std::string("%H:%M:%S"), false, true), "23:59:59.999999");
    EXPECT_GE(end, now);
}

TEST_F(nxDateTimeInUTC, ComparisonIsBySecondsThenMicroseconds)
{
    nxDateTime const early(2024, 1, 1, 0, 0, 0, 1);
    nxDateTime const late(2024, 1, 1, 0, 0, 0, 2);
    EXPECT_TRUE(early < late && early <= late && late > early && late >= early && early != late);
    EXPECT_FALSE(early == late || early > late || late <= early);
    EXPECT_TRUE(nxDateTime(2024, 1, 1, 0, 0, 1, 0) > late);
    EXPECT_TRUE(nxDateTime(nxNullInitalizer{}) < early);
    EXPECT_TRUE(nxDateTime(-5LL) < nxDateTime(nxNullInitalizer{}));
}

TEST_F(nxDateTimeInUTC, DifferenceIsFieldByField)
{
    nxDateTimeSpan const span =
        AtSecond(2023, 1, 31, 10, 30, 0).GetDifference(AtSecond(2024, 2, 1, 9, 45, 59));
    EXPECT_TRUE(span.GetYears() == 1 && span.GetMonths() == 1 && span.GetDays() == -30);
    EXPECT_TRUE(span.GetHours() == -1 && span.GetMinutes() == 15 && span.GetSeconds() == 59);
    EXPECT_EQ(span.GetTotalSeconds(), 366 * 86400 - 2641);
    EXPECT_EQ(span.GetTotalDays(), 365);

    nxDateTimeSpan const back = nxDateTime(1090LL).GetDifference(nxDateTime(1000LL));
    EXPECT_EQ(back.GetTotalSeconds(), -90);
    EXPECT_EQ(back.GetTotalMinutes(), -1) << "cut toward zero";
    EXPECT_EQ(back.GetTotalHours(), 0);

    EXPECT_EQ(nxDateTime(0LL).GetDifference(nxDateTime(2147483647LL)).GetTotalSeconds(), INT_MAX);
    EXPECT_EQ(nxDateTime(0LL).GetDifference(nxDateTime(2147483648LL)).GetTotalSeconds(), INT_MIN);
}

TEST_F(nxDateTimeInUTC, SpansKeepTheirNumbers)
{
    nxDateTimeSpan span(1, -2, 3, 40, 90, 100);
    EXPECT_TRUE(span.GetTotalSeconds() == 0 && span.GetMinutes() == 90);
    span.SetMinutes(1);
    span.SetHours(0);
    nxDateTime moment(2024, 1, 31, 12, 0, 0, 77);
    moment += span;
    EXPECT_EQ(moment.GetAsString_Microseconds(), "04 Dec 2024 12:02:40.000077");
}

TEST(nxDateTimeCalendar, LastDayOfMonth)
{
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
    EXPECT_EQ(moment.GetAsString_Seconds(), "05 Nov 2026 09:03:01");
    EXPECT_EQ(moment.GetAsLogString(), moment.GetAsString());
    EXPECT_EQ(moment.GetAsLogString_Seconds(), moment.GetAsString_Seconds());
    EXPECT_EQ(moment.GetAsString(std::string("%a %j"), true, true), "Thu 309.042")
        << "milliseconds come first";
    EXPECT_EQ(moment.GetAsString(std::string("%y"), false, true), "26.042007");
    EXPECT_EQ(nxStringHelper::GetAsString(moment), "05 Nov 2026 09:03:01");
    std::string text = "on ";
    moment.AppendAsString(text, "%d");
    moment.AppendAsLogString(text, std::string("/%m"));
    nxStringHelper::AppendAsString(text, nxDateTime(nxNullInitalizer{}));
    EXPECT_EQ(text, "on 05/1101 Jan 1970 00:00:00");

    // A format gives up to 1023 bytes, and stops at a zero byte.
    for (std::string const& format : {std::string(), std::string(1024, 'x'), std::string(1022, 'x') + "%H"})
        EXPECT_EQ(moment.GetAsString(format), "");
    EXPECT_EQ(moment.GetAsString(std::string(1023, 'x')), std::string(1023, 'x'));
    EXPECT_EQ(moment.GetAsString(std::string(1021, 'x') + "%H"), std::string(1021, 'x') + "09");
    EXPECT_EQ(moment.GetAsString(std::string("%H\0%M", 5)), "09");
}
