// Time stamps: what they keep, their two texts, and what costs nothing. Also the stopwatch.

#include "core/time/nxTimeStamp.h"
#include "core/time/nxDateTime.h"
#include "core/time/nxElapsedTimeCounter.h"
#include "tests/time/nxTestZone.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <ctime>
#include <tuple>

static_assert(std::has_virtual_destructor_v<nxTimeStamp> &&
              std::has_virtual_destructor_v<nxElapsedTimeCounter>);

namespace
{

std::string Fast(nxTimeStamp const& stamp)
{
    char buffer[nxTimeStamp::fastStringSize + 1];
    std::memset(buffer, '#', sizeof(buffer));
    EXPECT_EQ(stamp.GetAsStringFast(buffer, 0), 25u) << "the size is not looked at";
    EXPECT_EQ(buffer[24], '\0');
    EXPECT_EQ(buffer[25], '#');
    return buffer;
}

} // namespace

TEST(nxTimeStamp, Parts)
{
    nxTimeStamp const stamp(10, 500000000);
    EXPECT_EQ(stamp.GetTotalSecondsAsDouble(), 10.5);
    EXPECT_EQ(nxTimeStamp(7, 123456789).GetMilliseconds(), 123u);
    EXPECT_EQ(nxTimeStamp(7, 123456789).GetMicroseconds(), 123456u);
    nxDateTime const moment = nxTimeStamp(1700000000, 999999999).GetAsDateTime();
    EXPECT_EQ(moment.GetAsTimeValue(), 1700000000);
    EXPECT_EQ(moment.GetMicroseconds(), 0u);
    EXPECT_TRUE(nxTimeStamp(1, 0).GetAsDateTime().IsNoChange());
}

TEST(nxTimeStamp, NowIsCutToTheMillisecond)
{
    std::time_t const before = std::time(nullptr);
    nxTimeStamp const now;
    EXPECT_GE(now.GetAsTimeValue() + 1, before); // time() may run some milliseconds behind the finer clock
    EXPECT_LE(now.GetAsTimeValue(), before + 60);
    EXPECT_EQ(now.GetNanoseconds() % 1000000, 0u);
    EXPECT_LT(now.GetNanoseconds(), 1000000000u);
    EXPECT_EQ(Fast(now).substr(20), ".000");
}

TEST(nxTimeStampText, BothForms)
{
    nxTestZone const zone("UTC");
    using Row = std::tuple<long long, unsigned int, char const*, char const*>;
    for (auto const& [seconds, nanoseconds, fast, slow] :
         {Row{1793869381, 42000000, "05Nov26 09:03:01.042.000", "05Nov26 09:03:01.042"},
          {1793869381, 123456789, "05Nov26 09:03:01.123.456", "05Nov26 09:03:01.123"},
          {0, 0, "01Jan70 00:00:00.000.000", "01Jan70 00:00:00.000"}, // no marks here
          {951868799, 999999999, "29Feb00 23:59:59.999.999", "29Feb00 23:59:59.999"},
          {4107542399, 1000, "28Feb00 23:59:59.000.001", "28Feb00 23:59:59.000"}, // 2100, no leap year
          {253402300800, 0, "01Jan00 00:00:00.000.000", "01Jan00 00:00:00.000"}}) // 10000
    {
        EXPECT_EQ(Fast(nxTimeStamp(seconds, nanoseconds)), fast);
        EXPECT_EQ(nxTimeStamp(seconds, nanoseconds).GetAsString(), slow);
    }
    // A fraction of more than a second is the caller's mistake: the fast form keeps its places.
    EXPECT_EQ(Fast(nxTimeStamp(0, 4294967295u)).substr(16), ".294.967");
    // Nothing is written without a calendar.
    for (long long const seconds : {-1LL, LLONG_MIN, LLONG_MAX})
    {
        char buffer[25] = "untouched";
        EXPECT_EQ(nxTimeStamp(seconds, 0).GetAsStringFast(buffer, sizeof(buffer)), 0u);
        EXPECT_STREQ(buffer, "untouched");
    }
}

// The offset is remembered by the hour, and these change theirs inside one: Newfoundland did at one past midnight.
TEST(nxTimeStampText, HoursInWhichTheClockChanges)
{
    nxTestZone const zone("America/St_Johns");
    constexpr long long change = 1162089060; // 29 October 2006, 00:01 becomes 23:01
    EXPECT_EQ(Fast(nxTimeStamp(change - 1, 0)), "29Oct06 00:00:59.000.000");
    EXPECT_EQ(Fast(nxTimeStamp(change, 0)), "28Oct06 23:01:00.000.000");
    EXPECT_EQ(Fast(nxTimeStamp(change - 1, 0)), "29Oct06 00:00:59.000.000");
    EXPECT_EQ(Fast(nxTimeStamp(change - 3600, 0)), "28Oct06 23:01:00.000.000");
}

TEST(nxTimeStampText, ARereadZoneReplacesWhatWasRemembered)
{
    nxTimeStamp const stamp(1700000000, 0);
    {
        nxTestZone const zone("Asia/Kolkata");
        EXPECT_EQ(Fast(stamp), "15Nov23 03:43:20.000.000");
    }
    nxTestZone const zone("America/New_York");
    EXPECT_EQ(Fast(stamp), "14Nov23 17:13:20.000.000");
    EXPECT_EQ(stamp.GetAsDateTime().GetHour(), 17);
}

TEST(nxElapsedTimeCounter, CountsForward)
{
    nxElapsedTimeCounter counter;
    nxElapsedTimeCounter const copy(counter);
    double const first = counter.GetElapsedTimeInSeconds();
    EXPECT_GE(first, 0.0);
    EXPECT_GE(copy.GetElapsedTimeInSeconds(), first);
    std::timespec const tenMilliseconds = {0, 10'000'000};
    nanosleep(&tenMilliseconds, nullptr);
    EXPECT_GE(copy.GetElapsedTimeInSeconds(), 0.01);
    counter.Reset();
    EXPECT_LT(counter.GetElapsedTimeInSeconds(), copy.GetElapsedTimeInSeconds());

    double const wholeCounter = nxElapsedTimeCounter::GetGlobalElapsedTimeInSeconds();
    nxElapsedTimeCounter::ResetGlobalTime(); // for the first time
    double const sinceReset = nxElapsedTimeCounter::GetGlobalElapsedTimeInSeconds();
    EXPECT_TRUE(sinceReset >= 0.0 && sinceReset < wholeCounter);
}
