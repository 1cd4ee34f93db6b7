// The three conditions: who wakes, who holds which mutex afterwards, and what is left behind by a failure.
#include "core/concurrency/nxCondition.h"
#include "core/concurrency/nxConditionMutex.h"
#include "core/concurrency/nxConditionRaw.h"
#include "core/concurrency/nxMutexGuard.h"
#include "tests/concurrency/RunTogether.h"
#include "tests/concurrency/SharedMemory.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <limits>
#include <thread>
#include <type_traits>

static_assert(!std::is_copy_constructible_v<nxCondition> && !std::is_copy_assignable_v<nxCondition>);
static_assert(sizeof(nxCondition) == sizeof(pthread_cond_t) + sizeof(pthread_mutex_t));
static_assert(sizeof(nxConditionRaw) == sizeof(pthread_cond_t) && std::is_copy_assignable_v<nxConditionRaw>);
static_assert(std::is_base_of_v<nxMutex, nxConditionMutex>);

namespace
{
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

// A signal before the wait is lost, so it is repeated until the waiters say that they are through.
template <typename Signal>
void SignalUntil(std::atomic<int> const& woken, int waiters, Signal signal)
{
    while (woken < waiters)
    {
        EXPECT_TRUE(signal().IsOK());
        std::this_thread::yield();
    }
}
} // namespace

TEST(nxCondition, ASignalThatFindsNobodyIsForgotten)
{
    nxCondition condition;
    EXPECT_TRUE(condition.Signal().IsOK());
    EXPECT_TRUE(condition.SignalAll().IsOK());
    EXPECT_EQ(condition.TimedWait(0.0), NX_ERR_THR_TIMEDOUT);
    EXPECT_TRUE(condition.Signal().IsOK()); // the timeout left the own mutex open
    EXPECT_EQ(condition.TimedWait(noNumber), NX_ERR_UNSPECIFIED);
    EXPECT_TRUE(condition.Signal().IsOK()); // and so did the refused deadline
}

TEST(nxCondition, SignalsWakeWaiters)
{
    nxCondition condition;
    for (bool all : {false, true})
    {
        constexpr int waiters = 3;
        std::atomic<int> woken = 0;
        RunTogether(waiters + 1,
                    [&](int thread)
                    {
                        if (thread == waiters)
                        {
                            SignalUntil(woken, waiters,
                                        [&] { return all ? condition.SignalAll() : condition.Signal(); });
                            return;
                        }
                        EXPECT_TRUE((thread == 0 ? condition.TimedWait(60.0001) : condition.Wait()).IsOK());
                        ++woken;
                    });
    }
}

TEST(nxConditionRaw, WaitsReturnWithTheCallersMutexHeld)
{
    nxMutex mutex;
    nxConditionRaw condition;
    (void)mutex.Lock();
    EXPECT_EQ(condition.TimedWait(mutex, 0.001001), NX_ERR_THR_TIMEDOUT);
    EXPECT_EQ(TryLockElsewhere(mutex), NX_ERR_THR_LOCKED);
    EXPECT_EQ(condition.TimedWait(mutex, noNumber), NX_ERR_UNSPECIFIED);
    EXPECT_EQ(TryLockElsewhere(mutex), NX_ERR_THR_LOCKED);

    bool ready = false;
    std::thread other(
        [&]
        {
            nxMutexGuard guard(mutex);
            ready = true;
            EXPECT_TRUE(condition.Signal().IsOK());
        });
    while (!ready)
        EXPECT_TRUE(condition.Wait(mutex).IsOK());
    EXPECT_EQ(TryLockElsewhere(mutex), NX_ERR_THR_LOCKED);
    (void)mutex.Unlock();
    other.join();

    nxMutex recursive(true); // knows that the caller does not hold it, unlike a plain one
    EXPECT_EQ(condition.Wait(recursive), NX_ERR_UNSPECIFIED);
    EXPECT_EQ(condition.TimedWait(recursive, 1.0001), NX_ERR_UNSPECIFIED);
}

TEST(nxConditionRaw, ACopyCanBeDestroyedWhileSomebodyWaitsForTheOriginal)
{
    nxMutex mutex;
    nxConditionRaw condition;
    std::atomic<int> woken = 0;
    std::thread waiter(
        [&]
        {
            nxMutexGuard guard(mutex);
            EXPECT_TRUE(condition.Wait(mutex).IsOK());
            ++woken;
        });
    SignalUntil(woken, 1,
                [&]
                {
                    {
                        nxConditionRaw copy;
                        copy = condition;
                    }
                    return condition.SignalAll();
                });
    waiter.join();
}

TEST(nxConditionRawShared, WakesAnotherProcess)
{
    struct Region
    {
        nxMutex mutex;
        nxConditionRaw condition;
        bool isTold = false;
    };
    Shared<Region> region;
    ASSERT_TRUE(region->mutex.InitialiseAsShared(true).IsOK());
    ASSERT_TRUE(region->condition.InitialiseAsShared().IsOK());
    pid_t const child = StartChild(
        [&]
        {
            nxMutexGuard guard(region->mutex);
            nxErrorEnum waited;
            while (!region->isTold && waited.IsOK())
                waited = region->condition.TimedWait(region->mutex, 60.0001);
            return waited.IsOK();
        });
    std::this_thread::sleep_for(
        std::chrono::milliseconds(20)); // the child waits by now, or is told before it would
    {
        nxMutexGuard guard(region->mutex);
        region->isTold = true;
        EXPECT_TRUE(region->condition.SignalAll().IsOK());
    }
    EXPECT_EQ(WaitForChild(child), 1);
}

TEST(nxConditionMutex, LockAndWaitReturnsWithTheMutexHeld)
{
    nxConditionMutex condition;
    std::atomic<int> woken = 0;
    std::thread waiter(
        [&]
        {
            EXPECT_TRUE(condition.LockAndWait().IsOK());
            EXPECT_EQ(TryLockElsewhere(condition), NX_ERR_THR_LOCKED);
            EXPECT_TRUE(condition.Unlock().IsOK());
            ++woken;
        });
    SignalUntil(woken, 1, [&] { return condition.Signal(); });
    waiter.join();
    EXPECT_TRUE(TryLockElsewhere(condition).IsOK());
}

TEST(nxConditionMutex, AFailedWaitReturnsWithTheMutexReleased)
{
    Shared<nxConditionMutex> condition;
    ASSERT_TRUE(condition->InitialiseAsShared(true).IsOK());
    std::atomic<bool> held = false;
    nxErrorEnum waited;
    std::thread waiter(
        [&]
        {
            (void)condition->Lock();
            held = true;
            waited = condition->Wait();
        });
    while (!held)
        std::this_thread::yield();
    // Somebody wakes the waiter and dies with the mutex, so that the wait can't end well.
    std::thread([&] { EXPECT_TRUE(condition->Lock().IsOK() && condition->Signal().IsOK()); }).join();
    waiter.join();
    EXPECT_EQ(waited, NX_ERR_UNSPECIFIED);
    EXPECT_EQ(condition->TryLock(),
              NX_ERR_UNSPECIFIED); // given up by the waiter, not held: that would be LOCKED
}
