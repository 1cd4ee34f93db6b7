// Semaphores and conditions: how a wait ends, who wakes, who holds which mutex afterwards, and what a failure leaves; and
// how long a wait lasts.
#include "core/concurrency/nxCondition.h"
#include "core/concurrency/nxConditionMutex.h"
#include "core/concurrency/nxConditionRaw.h"
#include "core/concurrency/nxMutexGuard.h"
#include "core/concurrency/nxSemaphore.h"
#include "core/concurrency/nxWaitTime.h"
#include "tests/concurrency/RunTogether.h"
#include "tests/concurrency/SharedMemory.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <climits>
#include <csignal>
#include <limits>

namespace
{
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

// A signal before the wait is lost, so it is repeated until all waiters are through.
template <typename Wait, typename Signal>
void WakeWaiters(int waiters, Wait wait, Signal signal)
{
    std::atomic<int> woken = 0;
    auto const waitOnce = [&](int thread)
    {
        EXPECT_TRUE(wait(thread).IsOK());
        ++woken;
    };
    std::jthread const others([&] { RunTogether(waiters, waitOnce); });
    while (woken < waiters)
    {
        EXPECT_TRUE(signal().IsOK());
        std::this_thread::yield();
    }
}
} // namespace

TEST(nxSemaphore, EachWaitTakesOneOfTheCountAndTimedOnesEndInTime)
{
    using Clock = std::chrono::steady_clock;
    nxSemaphore semaphore(3);
    EXPECT_TRUE(semaphore.Post().IsOK());
    EXPECT_EQ(semaphore.GetValue(), 4);
    EXPECT_TRUE(semaphore.TryWait().IsOK() && semaphore.Wait().IsOK());
    EXPECT_TRUE(semaphore.TimedWait(0.0).IsOK() && semaphore.TimedWait_Microseconds(0).IsOK());
    EXPECT_EQ(semaphore.GetValue(), 0);
    EXPECT_EQ(semaphore.TryWait(), NX_ERR_THR_LOCKED);
    for (double seconds : {0.0, -0.4999, -1e9, 4294967296.0})
        EXPECT_EQ(semaphore.TimedWait(seconds), NX_ERR_THR_TIMEDOUT) << seconds;
    auto const start = Clock::now();
    EXPECT_EQ(semaphore.TimedWait(0.0501), NX_ERR_THR_TIMEDOUT);
    EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(48));
    EXPECT_EQ(semaphore.TimedWait_Microseconds(50100), NX_ERR_THR_TIMEDOUT);
    EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(97));
    // A deadline that the system refuses; one at exactly a whole second is another.
    EXPECT_EQ(semaphore.TimedWait(noNumber), NX_ERR_INVALID_PARAMETER);
}

TEST(nxSemaphore, ASignalInterruptsAWait)
{
    struct sigaction handled = {};
    handled.sa_handler = [](int) {}; // and the system's call is not restarted
    sigaction(SIGUSR1, &handled, nullptr);
    nxSemaphore semaphore(0);
    std::atomic<bool> ended = false;
    std::thread waiter(
        [&]
        {
            EXPECT_EQ(semaphore.Wait(), NX_ERR_THR_INTERRUPTED);
            EXPECT_EQ(semaphore.TimedWait(100.0), NX_ERR_THR_INTERRUPTED);
            EXPECT_EQ(semaphore.TimedWait_Microseconds(100000000), NX_ERR_THR_INTERRUPTED);
            ended = true;
        });
    while (!ended)
    {
        pthread_kill(waiter.native_handle(), SIGUSR1);
        usleep(1000);
    }
    waiter.join();
}

TEST(nxSemaphore, ACountBeyondTheSystemsLimitIsRefused)
{
    constexpr unsigned int largestCount = SEM_VALUE_MAX;
    nxSemaphore full(largestCount);
    EXPECT_EQ(full.Post(), NX_ERR_UNSPECIFIED);
    EXPECT_EQ(full.GetValue(), INT_MAX);

    testing::internal::CaptureStdout();
    nxSemaphore unusable(largestCount + 1);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "sem_init err -1, 22\n"); // 22 is EINVAL
    EXPECT_EQ(unusable.GetValue(), 0);
    EXPECT_EQ(unusable.InitialiseAsShared(largestCount + 1), NX_ERR_THR_UNSUPPORTED);
}

TEST(nxCondition, SignalsWakeWaitersAndAreForgottenWhenThereAreNone)
{
    nxCondition condition;
    auto const wait = [&](int waiter)
    { return waiter == 0 ? condition.TimedWait(60.0001) : condition.Wait(); };
    WakeWaiters(3, wait, [&] { return condition.Signal(); });
    WakeWaiters(3, wait, [&] { return condition.SignalAll(); });
    EXPECT_EQ(condition.TimedWait(0.0), NX_ERR_THR_TIMEDOUT);
    EXPECT_TRUE(condition.Signal().IsOK()); // the timeout left the own mutex open
    EXPECT_EQ(condition.TimedWait(noNumber), NX_ERR_UNSPECIFIED);
    EXPECT_TRUE(condition.Signal().IsOK()); // and so did the refused deadline
}

TEST(nxConditionRaw, WaitsReturnWithTheCallersMutexHeld)
{
    nxMutex mutex;
    nxConditionRaw condition;
    bool ready = false;
    nxMutexGuard guard(mutex);
    std::thread other(
        [&]
        {
            nxMutexGuard otherGuard(mutex); // which the waiting one has released
            ready = true;
            nxConditionRaw() = condition; // a copy that is gone at once
            EXPECT_TRUE(condition.Signal().IsOK());
        });
    while (!ready)
        EXPECT_TRUE(condition.Wait(mutex).IsOK());
    EXPECT_EQ(TryLockElsewhere(mutex), NX_ERR_THR_LOCKED);
    other.join();
    EXPECT_EQ(condition.TimedWait(mutex, 0.001001), NX_ERR_THR_TIMEDOUT);
    EXPECT_EQ(TryLockElsewhere(mutex), NX_ERR_THR_LOCKED);
    EXPECT_EQ(condition.TimedWait(mutex, noNumber), NX_ERR_UNSPECIFIED);
    EXPECT_EQ(TryLockElsewhere(mutex), NX_ERR_THR_LOCKED);

    nxMutex recursive(true); // knows that the caller does not hold it, unlike a plain one
    EXPECT_EQ(condition.Wait(recursive), NX_ERR_UNSPECIFIED);
    EXPECT_EQ(condition.TimedWait(recursive, 1.0001), NX_ERR_UNSPECIFIED);
}

TEST(nxConditionShared, ItAndASemaphoreWakeAnotherProcess)
{
    struct Region
    {
        nxMutex mutex;
        nxConditionRaw condition;
        nxSemaphore waits{5};
    };
    Region& region = MakeShared<Region>();
    ASSERT_TRUE(region.mutex.InitialiseAsShared(true).IsOK());
    ASSERT_TRUE(region.condition.InitialiseAsShared().IsOK());
    ASSERT_TRUE(region.waits.InitialiseAsShared(0).IsOK());
    EXPECT_EQ(region.waits.TryWait(), NX_ERR_THR_LOCKED);
    auto const wait = [&]
    {
        nxMutexGuard guard(region.mutex);
        usleep(20000); // so that the parent is asleep
        return region.waits.Post().IsOK() && region.condition.TimedWait(region.mutex, 10.0001).IsOK();
    };
    pid_t const child = StartChild(wait);
    EXPECT_TRUE(region.waits.TimedWait(10.0).IsOK());
    EXPECT_TRUE(region.mutex.Lock().IsOK()); // which the waiting child has released
    EXPECT_TRUE(region.condition.SignalAll().IsOK());
    EXPECT_TRUE(region.mutex.Unlock().IsOK());
    EXPECT_EQ(WaitForChild(child), 1);
}

TEST(nxConditionMutex, LockAndWaitReturnsWithTheMutexHeld)
{
    nxConditionMutex condition;
    auto const wait = [&](int)
    {
        EXPECT_TRUE(condition.LockAndWait().IsOK());
        EXPECT_EQ(TryLockElsewhere(condition), NX_ERR_THR_LOCKED);
        return condition.Unlock();
    };
    WakeWaiters(1, wait, [&] { return condition.Signal(); });
    EXPECT_TRUE(TryLockElsewhere(condition).IsOK());
}

TEST(nxConditionMutex, AFailedWaitReturnsWithTheMutexReleased)
{
    nxConditionMutex& condition = MakeShared<nxConditionMutex>();
    ASSERT_TRUE(condition.InitialiseAsShared(true).IsOK());
    std::atomic<bool> held = false;
    auto const wait = [&]
    {
        held = condition.Lock().IsOK();
        EXPECT_EQ(condition.Wait(), NX_ERR_UNSPECIFIED);
    };
    std::thread waiter(wait);
    while (!held)
        std::this_thread::yield();
    // Somebody wakes the waiter and dies with the mutex, so that the wait can't end well.
    EXPECT_TRUE(Elsewhere([&] { return condition.Lock().IsOK() && condition.Signal().IsOK(); }));
    waiter.join();
    EXPECT_EQ(condition.TryLock(), NX_ERR_UNSPECIFIED); // given up by the waiter; if held, it would be LOCKED
}

TEST(nxWaitTime, RelativeTimesAreSplitAndCut)
{
    using nxWaitTime::FromMicroseconds, nxWaitTime::FromSeconds;
    constexpr int smallest = INT_MIN;
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr unsigned long long second = 1000000;
    std::pair<std::timespec, std::pair<long, long>> const rows[] = {
        {FromSeconds(2.3), {2, 299999999}},      // the double lies below 2.3, and nothing is rounded
        {FromSeconds(-1e-20), {-1, 1000000000}}, // the difference itself rounds to 1
        {FromSeconds(2147483648.0), {smallest, 0}},
        {FromSeconds(4294967297.25), {1, 250000000}},
        {FromSeconds(-1e300), {smallest, 0}},
        {FromSeconds(infinity), {smallest, smallest}},
        {FromSeconds(noNumber), {smallest, smallest}},
        {FromMicroseconds(1500000), {1, 500000000}},
        {FromMicroseconds((1ULL << 32) * second + 7), {0, 7000}}, // whole seconds beyond 32 bits are lost
        {FromMicroseconds(~0ULL), {-140462611, 551615000}},
    };
    for (auto const& [relative, expected] : rows)
        EXPECT_EQ(std::pair(relative.tv_sec, relative.tv_nsec), expected);
}

TEST(nxWaitTime, DeadlinesAreWholeMillisecondsOfTheWallClockAndExactlyOneSecondDoesNotCarryOver)
{
    using namespace std::chrono;
    auto const now = [] { return floor<milliseconds>(system_clock::now().time_since_epoch()).count(); };
    // A thousand waits of every length in milliseconds: whatever the clock says, one of them meets the second.
    bool isMet = false;
    for (long wait = 0; wait < 100000 && !isMet; ++wait)
    {
        long const before = now();
        std::timespec const deadline = nxWaitTime::Deadline({wait % 5 - 2, wait % 1000 * 1000000});
        long const after = now();
        long const from =
            deadline.tv_sec * 1000 + deadline.tv_nsec / 1000000 - (wait % 5 - 2) * 1000 - wait % 1000;
        EXPECT_TRUE(before <= from && from <= after) << wait;
        EXPECT_TRUE(deadline.tv_nsec % 1000000 == 0 && deadline.tv_nsec <= 1000000000) << wait;
        isMet = deadline.tv_nsec == 1000000000;
    }
    EXPECT_TRUE(isMet);
}
