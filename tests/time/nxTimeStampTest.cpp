// Time stamps: what they keep and their two texts. Also the stopwatch.

#include "core/time/nxTimeStamp.h"
#include "core/time/nxDateTime.h"
#include "core/time/nxElapsedTimeCounter.h"
#include "tests/time/nxTestZone.h"

#include <gtest/gtest.h>

#include <climits>
#include <ctime>
#include <tuple>

#include <unistd.h>

static_assert(std::has_virtual_destructor_v<nxTimeStamp> &&
              std::has_virtual_destructor_v<nxElapsedTimeCounter>);

namespace
{
std::string Fast(nxTimeStamp const& stamp)
{
    std::string buffer(nxTimeStamp::fastStringSize + 1, '#');
    EXPECT_EQ(stamp.GetAsStringFast(buffer.data(), 0), 25u) << "the size is not looked at";
    EXPECT_EQ(buffer.substr(24), std::string("\0#", 2));
    return buffer.c_str();
}
} // namespace

TEST(nxTimeStamp, Parts)
{
    nxTimeStamp const stamp(10, 500000000);
    EXPECT_EQ(stamp.GetTotalSecondsAsDouble(), 10.5);
    nxTimeStamp const odd(1700000000, 123456789);
    EXPECT_TRUE(odd.GetMilliseconds() == 123 && odd.GetMicroseconds() == 123456);
    EXPECT_TRUE(odd.GetAsDateTime() == nxDateTime(1700000000LL)); // without the fraction
    EXPECT_TRUE(nxTimeStamp(1, 0).GetAsDateTime().IsNoChange());

    std::time_t const before = std::time(nullptr); // may run some milliseconds behind the finer clock
    nxTimeStamp const now;
    EXPECT_TRUE(now.GetAsTimeValue() + 1 >= before && now.GetAsTimeValue() <= before + 60);
    EXPECT_TRUE(now.GetNanoseconds() % 1000000 == 0 && now.GetNanoseconds() < 1000000000);
}

TEST(nxTimeStampText, BothForms)
{
    nxTestZone const zone("UTC");
    using Row = std::tuple<long long, unsigned int, char const*>;
    for (auto const& [seconds, nanoseconds, fast] :
         {Row{1793869381, 123456789, "05Nov26 09:03:01.123.456"},
          {0, 42000000, "01Jan70 00:00:00.042.000"}, // no marks here
          {951868799, 999999999, "29Feb00 23:59:59.999.999"},
          {4107542399, 1000, "28Feb00 23:59:59.000.001"}, // 2100, no leap year
          {253402300800, 0, "01Jan00 00:00:00.000.000"}}) // 10000
    {
        EXPECT_EQ(Fast(nxTimeStamp(seconds, nanoseconds)), fast);
        EXPECT_EQ(nxTimeStamp(seconds, nanoseconds).GetAsString() + (fast + 20), fast);
    }
    // A fraction of more than a second is the caller's mistake: the fast form keeps its places.
    EXPECT_EQ(Fast(nxTimeStamp(0, 4294967295u)).substr(16), ".294.967");
    for (long long const seconds : {-1LL, LLONG_MIN, LLONG_MAX}) // nothing is written without a calendar
    {
        char buffer[25] = "untouched";
        EXPECT_EQ(nxTimeStamp(seconds, 0).GetAsStringFast(buffer, sizeof(buffer)), 0u);
        EXPECT_STREQ(buffer, "untouched");
    }
}

TEST(nxTimeStampText, FollowsTheZone)
{
    constexpr long long change = 1162089060; // 29 October 2006, 00:01 becomes 23:01 in Newfoundland
    nxTestZone const east("Asia/Kolkata");
    EXPECT_EQ(Fast(nxTimeStamp(change, 0)), "29Oct06 08:01:00.000.000");
    nxTestZone const zone("America/St_Johns"); // replaces the offset, which is remembered by the hour
    for (auto const& [seconds, text] : {std::pair(-1, "29Oct06 00:00:59.000.000"),
                                        {0, "28Oct06 23:01:00.000.000"},
                                        {-1, "29Oct06 00:00:59.000.000"},
                                        {-3600, "28Oct06 23:01:00.000.000"}})
        EXPECT_EQ(Fast(nxTimeStamp(change + seconds, 0)), text);
}

TEST(nxElapsedTimeCounter, CountsForward)
{
    nxElapsedTimeCounter counter;
    nxElapsedTimeCounter const copy(counter);
    double const first = counter.GetElapsedTimeInSeconds();
    EXPECT_TRUE(first >= 0.0 && copy.GetElapsedTimeInSeconds() >= first);
    usleep(10'000);
    EXPECT_GE(copy.GetElapsedTimeInSeconds(), 0.01);
    counter.Reset();
    EXPECT_LT(counter.GetElapsedTimeInSeconds(), copy.GetElapsedTimeInSeconds());

    double const wholeCounter = nxElapsedTimeCounter::GetGlobalElapsedTimeInSeconds();
    nxElapsedTimeCounter::ResetGlobalTime(); // for the first time
    double const sinceReset = nxElapsedTimeCounter::GetGlobalElapsedTimeInSeconds();
    EXPECT_TRUE(sinceReset >= 0.0 && sinceReset < wholeCounter);
}
