// How a relative time is split and cut, and where a deadline carries over.
#include "core/concurrency/nxWaitTime.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <limits>
#include <tuple>

namespace
{
constexpr std::int32_t smallest = std::numeric_limits<std::int32_t>::min();
constexpr double infinity = std::numeric_limits<double>::infinity();

std::int64_t Milliseconds(std::timespec const& time)
{
    return time.tv_sec * 1000 + time.tv_nsec / 1000000;
}
} // namespace

TEST(nxWaitTime, SecondsAreSplitAndCut)
{
    using Row = std::tuple<double, std::int64_t, long>;
    for (auto const& [seconds, wholeSeconds, nanoseconds] :
         {Row{0.0, 0, 0}, Row{1.5, 1, 500000000},
          Row{2.3, 2, 299999999},      // the double lies below 2.3, and nothing is rounded
          Row{-0.5, -1, 500000000},    //
          Row{-1e-20, -1, 1000000000}, // the difference itself rounds to 1
          Row{2147483648.0, smallest, 0}, Row{4294967296.0, 0, 0}, Row{4294967297.25, 1, 250000000},
          Row{1e300, smallest, 0}, Row{-1e300, smallest, 0}, Row{infinity, smallest, smallest},
          Row{std::numeric_limits<double>::quiet_NaN(), smallest, smallest}})
    {
        std::timespec const relative = nxWaitTime::FromSeconds(seconds);
        EXPECT_EQ(relative.tv_sec, wholeSeconds) << seconds;
        EXPECT_EQ(relative.tv_nsec, nanoseconds) << seconds;
    }
}

TEST(nxWaitTime, MicrosecondsAreSplit)
{
    using Row = std::tuple<unsigned long long, std::int64_t, long>;
    constexpr unsigned long long second = 1000000;
    for (auto const& [microseconds, wholeSeconds, nanoseconds] :
         {Row{999999, 0, 999999000}, Row{1500000, 1, 500000000}, Row{(1ULL << 31) * second, smallest, 0},
          Row{(1ULL << 32) * second + 7, 0, 7000}, // whole seconds beyond 32 bits are lost
          Row{~0ULL, -140462611, 551615000}})
    {
        std::timespec const relative = nxWaitTime::FromMicroseconds(microseconds);
        EXPECT_EQ(relative.tv_sec, wholeSeconds) << microseconds;
        EXPECT_EQ(relative.tv_nsec, nanoseconds) << microseconds;
    }
}

TEST(nxWaitTime, DeadlineStandsOnWholeMillisecondsOfTheWallClock)
{
    using namespace std::chrono;
    auto const now = [] { return floor<milliseconds>(system_clock::now().time_since_epoch()).count(); };
    for (std::timespec relative :
         {std::timespec{0, 0}, std::timespec{1, 999000000}, std::timespec{-2, 500000000}})
    {
        std::int64_t const before = now();
        std::timespec const deadline = nxWaitTime::Deadline(relative);
        std::int64_t const after = now();
        EXPECT_GE(Milliseconds(deadline), before + Milliseconds(relative));
        EXPECT_LE(Milliseconds(deadline), after + Milliseconds(relative));
        EXPECT_EQ(deadline.tv_nsec % 1000000, 0);
        EXPECT_LE(deadline.tv_nsec, 1000000000);
    }
}

TEST(nxWaitTime, ExactlyOneSecondOfNanosecondsDoesNotCarryOver)
{
    // A thousand waits of every length in milliseconds: whatever the clock says, one of them meets the sum.
    int met = 0;
    for (int attempt = 0; attempt < 100 && met == 0; ++attempt)
    {
        for (long milliseconds = 0; milliseconds < 1000; ++milliseconds)
        {
            met += nxWaitTime::Deadline({0, milliseconds * 1000000}).tv_nsec == 1000000000 ? 1 : 0;
        }
    }
    EXPECT_GT(met, 0);
}
