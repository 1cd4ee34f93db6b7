// The life of a thread object, the numbers of threads, and the barrier.
#include "core/concurrency/nxThread.h"
#include "core/concurrency/nxBarrier.h"
#include "core/concurrency/nxMutexGuard.h"
#include "core/concurrency/nxSemaphore.h"
#include "core/concurrency/nxThreadIndex.h"
#include "tests/Sanitizer.h"
#include "tests/concurrency/RunTogether.h"
#include "tests/concurrency/SystemCalls.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>

namespace
{
using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

struct Thread : public nxThread
{
    std::function<void(Thread&)> body;

    explicit Thread(std::function<void(Thread&)> work) : body(std::move(work))
    {
    }

    nxErrorEnum Run() override
    {
        body(*this);
        return nxErrorEnum(NX_ERR_INTERNAL); // nobody ever sees it
    }
};
} // namespace

TEST(nxThread, IsCreatedAndWaitedForInTurn)
{
    nxSemaphore mayEnd(0);
    nxSemaphore ended(0);
    Thread thread([&](Thread&) { (void)(mayEnd.Wait().IsOK() && ended.Post().IsOK()); });
    EXPECT_EQ(thread.Wait(), NX_ERR_THR_NOT_RUNNING);
    for (int round = 1; round <= 2; ++round)
    {
        EXPECT_TRUE(thread.Create().IsOK());
        EXPECT_EQ(thread.Create(), NX_ERR_THR_ALREADY_STARTED);
        EXPECT_TRUE(mayEnd.Post().IsOK() && ended.Wait().IsOK());
        EXPECT_EQ(thread.Create(), NX_ERR_THR_ALREADY_STARTED); // also when its body has ended
        EXPECT_TRUE(thread.Wait().IsOK());
        EXPECT_EQ(thread.Wait(), NX_ERR_THR_NOT_RUNNING);
    }
}

TEST(nxThread, WaitingForItselfIsADeadlock)
{
    if (underThreadSanitizer)
        GTEST_SKIP() << "the sanitizer forgets a thread whose join failed and gives up at the next one";
    nxErrorEnum result;
    Thread thread([&](Thread& self) { result = self.Wait(); });
    ASSERT_TRUE(thread.Create().IsOK());
    EXPECT_TRUE(thread.Wait().IsOK()); // it still counted as started
    EXPECT_EQ(result, NX_ERR_THR_DEADLOCK);
}

TEST(nxThread, ASystemWithoutRoomIsAResourceError)
{
    pthread_attr_t usual;
    pthread_attr_t huge;
    ASSERT_EQ(pthread_getattr_default_np(&usual), 0);
    ASSERT_EQ(pthread_getattr_default_np(&huge), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&huge, std::size_t(1) << 46), 0);
    ASSERT_EQ(pthread_setattr_default_np(&huge), 0);
    Thread thread([](Thread&) {});
    EXPECT_EQ(thread.Create(), NX_ERR_THR_RESOURCE);
    EXPECT_EQ(thread.Wait(), NX_ERR_THR_NOT_RUNNING);
    ASSERT_EQ(pthread_setattr_default_np(&usual), 0);
    EXPECT_TRUE(thread.Create().IsOK());
    EXPECT_TRUE(thread.Wait().IsOK());
}

TEST(nxThread, SleepsWholeMillisecondsAndBelowOneMakesOneCall)
{
    auto const start = Clock::now();
    nxThread::Sleep(20999);
    EXPECT_GE(Clock::now() - start, milliseconds(20));
    auto const giveWay = []
    {
        nxThread::Sleep(999);
        return 0;
    };
    // The last one is a sanitizer's, at the end.
    EXPECT_TRUE(MakesNoSystemCallBut({SYS_sched_yield, SYS_sigaltstack}, giveWay));
}

TEST(nxThreadIndex, CountsInTheOrderOfAskingBesideTheSystemsNumbers)
{
    EXPECT_EQ(nxThread::GetThreadIDAsString(), std::to_string(getpid())); // the main thread
    EXPECT_NE(Elsewhere(nxThread::GetThreadIDAsString), nxThread::GetThreadIDAsString());
    unsigned int const main = nxThreadIndex::GetIndexOfCurrentThread();
    unsigned int const next = nxThreadIndex::_nextIndex;
    EXPECT_LT(main, next);
    for (unsigned int expected : {next, next + 1})
    {
        EXPECT_TRUE(Elsewhere([] { return true; })); // never asks, so has none
        EXPECT_EQ(Elsewhere(nxThreadIndex::GetIndexOfCurrentThread), expected);
    }
    EXPECT_EQ(nxThreadIndex::GetIndexOfCurrentThread(), main);
    EXPECT_EQ(nxThreadIndex::_nextIndex, next + 2);
}

// A fork waits for whoever is being numbered, so that the child does not wait for ever.
TEST(nxThreadIndex, CanBeAskedForInAForkedChild)
{
    static std::atomic<bool> isHeld = false;
    auto const hold = []
    {
        nxMutexGuard guard(nxThreadIndex::_nextIndexMutex);
        isHeld = true;
        std::this_thread::sleep_for(milliseconds(50));
    };
    std::thread(hold).detach(); // the child has nobody to join
    while (!isHeld)
        std::this_thread::yield();
    EXPECT_EQ(RunInChild([] { return nxThreadIndex::_nextIndexMutex.Lock().IsOK(); }), 1);
}

TEST(nxBarrier, HoldsBackUntilAllHaveArrived)
{
    constexpr int threads = 3;
    nxBarrier barrier(threads);
    std::atomic<int> arrived = 0;
    auto const meet = [&](int)
    {
        for (int round = 1; round <= 200; ++round)
        {
            ++arrived;
            EXPECT_TRUE(barrier.Wait().IsOK());
            EXPECT_EQ(arrived, round * threads);
            EXPECT_TRUE(barrier.Wait().IsOK());
        }
    };
    RunTogether(threads, meet);
    EXPECT_TRUE(nxBarrier(0).Wait().IsOK()); // a refused count holds nobody back
}
