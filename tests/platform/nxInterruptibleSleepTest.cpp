// When a sleep that another thread can end is over.

#include "core/platform/nxInterruptibleSleep.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace
{

using Clock = std::chrono::steady_clock;

double SecondsOf(nxPlatform::InterruptibleSleep& sleep, double seconds)
{
    auto const start = Clock::now();
    sleep.Sleep(seconds);
    return std::chrono::duration<double>(Clock::now() - start).count();
}

TEST(InterruptibleSleep, LastsItsTime)
{
    nxPlatform::InterruptibleSleep sleep;
    EXPECT_EQ(sleep.GetError(), 0);
    EXPECT_GE(SecondsOf(sleep, 0.05), 0.05);
    EXPECT_LT(SecondsOf(sleep, -5.0), 5.0);
}

TEST(InterruptibleSleep, EndsWhenWoken)
{
    nxPlatform::InterruptibleSleep sleep;
    sleep.Wake(); // before the sleep
    EXPECT_LT(SecondsOf(sleep, 60), 30);
    std::thread waker([&sleep] { sleep.Wake(); });
    EXPECT_LT(SecondsOf(sleep, 1e300), 30);
    waker.join();
}

} // namespace
