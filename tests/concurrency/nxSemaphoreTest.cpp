// How the waits of a semaphore end: a timeout, a signal, a refusal.
#include "core/concurrency/nxSemaphore.h"
#include "tests/concurrency/SharedMemory.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <climits>
#include <csignal>
#include <functional>
#include <limits>
#include <thread>
#include <type_traits>

#include <time.h>

static_assert(sizeof(nxSemaphore) == sizeof(sem_t));
static_assert(!std::is_copy_constructible_v<nxSemaphore>);

namespace
{
using Clock = std::chrono::steady_clock;

constexpr unsigned int largestCount = SEM_VALUE_MAX;

// Runs the wait on a thread that gets signals until it returns.
nxErrorEnum WaitUnderSignals(std::function<nxErrorEnum()> const& wait)
{
    struct sigaction handled = {};
    handled.sa_handler = [](int) {}; // and the system's call is not restarted
    sigaction(SIGUSR1, &handled, nullptr);

    nxErrorEnum result;
    std::atomic<bool> ended = false;
    std::thread waiter(
        [&]
        {
            result = wait();
            ended = true;
        });
    while (!ended)
    {
        pthread_kill(waiter.native_handle(), SIGUSR1);
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    waiter.join();
    return result;
}
} // namespace

TEST(nxSemaphore, EachWaitTakesOneOfTheCount)
{
    nxSemaphore semaphore(3);
    EXPECT_TRUE(semaphore.Post().IsOK());
    EXPECT_EQ(semaphore.GetValue(), 4);
    EXPECT_TRUE(semaphore.TryWait().IsOK() && semaphore.Wait().IsOK());
    EXPECT_TRUE(semaphore.TimedWait(0.0).IsOK() && semaphore.TimedWait_Microseconds(0).IsOK());
    EXPECT_EQ(semaphore.GetValue(), 0);
    EXPECT_EQ(semaphore.TryWait(), NX_ERR_THR_LOCKED);
}

TEST(nxSemaphore, TimedWaitsEndInTime)
{
    nxSemaphore semaphore(0);
    for (double seconds : {0.0, -0.4999, -1e9, 4294967296.0})
        EXPECT_EQ(semaphore.TimedWait(seconds), NX_ERR_THR_TIMEDOUT) << seconds;
    auto const start = Clock::now();
    nxErrorEnum result = semaphore.TimedWait(0.0501);
    EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(48));
    EXPECT_EQ(result, NX_ERR_THR_TIMEDOUT);
    result = semaphore.TimedWait_Microseconds(50100);
    EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(97));
    EXPECT_EQ(result, NX_ERR_THR_TIMEDOUT);
}

TEST(nxSemaphore, ADeadlineThatTheSystemRefusesIsAnInvalidParameter)
{
    nxSemaphore semaphore(0);
    EXPECT_EQ(semaphore.TimedWait(std::numeric_limits<double>::quiet_NaN()), NX_ERR_INVALID_PARAMETER);

    // A wait until exactly the next whole second has too many nanoseconds. The clock may tick in between,
    // then the wait ends in a timeout; late in a second that takes no time.
    nxErrorEnum result;
    for (int attempt = 0; attempt < 1000 && result != NX_ERR_INVALID_PARAMETER; ++attempt)
    {
        timespec now = {};
        clock_gettime(CLOCK_REALTIME, &now);
        unsigned long long const millisecond = static_cast<unsigned long long>(now.tv_nsec / 1000000);
        if (millisecond < 980)
        {
            std::this_thread::sleep_for(std::chrono::milliseconds(980 - millisecond));
            continue;
        }
        result = semaphore.TimedWait_Microseconds((1000 - millisecond) * 1000);
    }
    EXPECT_EQ(result, NX_ERR_INVALID_PARAMETER);
}

TEST(nxSemaphore, ASignalInterruptsAWait)
{
    nxSemaphore semaphore(0);
    EXPECT_EQ(WaitUnderSignals([&] { return semaphore.Wait(); }), NX_ERR_THR_INTERRUPTED);
    EXPECT_EQ(WaitUnderSignals([&] { return semaphore.TimedWait(100.0); }), NX_ERR_THR_INTERRUPTED);
    EXPECT_EQ(WaitUnderSignals([&] { return semaphore.TimedWait_Microseconds(100000000); }),
              NX_ERR_THR_INTERRUPTED);
}

TEST(nxSemaphore, ACountBeyondTheSystemsLimitIsRefused)
{
    nxSemaphore full(largestCount);
    EXPECT_EQ(full.Post(), NX_ERR_UNSPECIFIED);
    EXPECT_EQ(full.GetValue(), INT_MAX);

    testing::internal::CaptureStdout();
    nxSemaphore unusable(largestCount + 1);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "sem_init err -1, 22\n"); // 22 is EINVAL
    EXPECT_EQ(unusable.GetValue(), 0);

    Shared<nxSemaphore> shared(1u);
    EXPECT_EQ(shared->InitialiseAsShared(largestCount + 1), NX_ERR_THR_UNSUPPORTED);
}

TEST(nxSemaphoreShared, WakesAnotherProcess)
{
    Shared<nxSemaphore> toChild(5u);
    Shared<nxSemaphore> toParent(5u);
    ASSERT_TRUE(toChild->InitialiseAsShared(0).IsOK());
    ASSERT_TRUE(toParent->InitialiseAsShared(0).IsOK());
    pid_t const child = StartChild([&] { return toChild->Wait().IsOK() && toParent->Post().IsOK(); });
    EXPECT_EQ(toParent->TryWait(), NX_ERR_THR_LOCKED);
    EXPECT_TRUE(toChild->Post().IsOK());
    EXPECT_TRUE(toParent->TimedWait(60.0).IsOK());
    EXPECT_EQ(WaitForChild(child), 1);
}
