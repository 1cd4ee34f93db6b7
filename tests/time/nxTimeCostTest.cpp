// What a log line's stamp must not cost: memory and system calls.

#include "core/time/nxDateTime.h"
#include "core/time/nxTimeStamp.h"
#include "tests/concurrency/SystemCalls.h"
#include "tests/prices/nxAllocationCount.h"
#include "tests/time/nxTestZone.h"

#include <gtest/gtest.h>

#include <ctime>

namespace
{
int TakeStampsAndWriteThem()
{
    char text[nxTimeStamp::fastStringSize];
    for (int i = 0; i != 100; ++i)
    {
        (void)nxTimeStamp().GetAsStringFast(text, sizeof(text));
        (void)nxTimeStamp(1720000000 + i, 0).GetAsStringFast(text, sizeof(text));
        (void)nxDateTime();
    }
    return 0;
}
} // namespace

TEST(nxTimeStampCost, NoAllocation)
{
    nxAllocationCount const count;
    TakeStampsAndWriteThem();
    EXPECT_EQ(count.Get(), 0u);
    operator delete(operator new(1));
    EXPECT_EQ(count.Get(), 1u) << "allocations are counted";
}

TEST(nxTimeStampCost, NoSystemCallWithAZoneOrWithout)
{
    EXPECT_FALSE(MakesNoSystemCallBut({}, [] { return getppid() < 0 ? 1 : 0; }))
        << "system calls are noticed";
    auto const readTheClock = []
    {
        std::timespec now;
        return clock_gettime(CLOCK_REALTIME, &now);
    };
    if (!MakesNoSystemCallBut({}, readTheClock))
        GTEST_SKIP() << "this machine's clock is read by a system call";
    for (char const* name : {static_cast<char const*>(nullptr), "America/New_York"})
    {
        nxTestZone const zone(name);
        TakeStampsAndWriteThem(); // the hours are asked for once
        EXPECT_TRUE(MakesNoSystemCallBut({}, TakeStampsAndWriteThem)) << (name == nullptr ? "no zone" : name);
    }
}
