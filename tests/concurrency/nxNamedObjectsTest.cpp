// Named mutexes and semaphores between processes that share nothing but a name: each process opens its own.
#include "core/concurrency/nxSemaphore.h"
#include "core/concurrency/nxWindowsMutex.h"
#include "core/concurrency/nxWindowsSemaphore.h"
#include "tests/Sanitizer.h"
#include "tests/concurrency/RunTogether.h"
#include "tests/concurrency/SharedMemory.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <limits>
#include <string>
#include <thread>

#include <sys/resource.h>

namespace
{
// What one process tells another, until it is told to.
nxSemaphore& MakeSignal()
{
    nxSemaphore& signal = MakeShared<nxSemaphore>(0u);
    EXPECT_TRUE(signal.InitialiseAsShared(0).IsOK());
    return signal;
}

int TakeAll(nxWindowsSemaphore& semaphore)
{
    int taken = 0;
    while (semaphore.TimedWait(0.0).IsOK())
        ++taken;
    return taken;
}

// Marks this run's names, in a form that is seen in the names of their files too.
std::string const mark = "-" + std::to_string(getpid()) + "-";

class nxNamedObjects : public testing::Test
{
protected:
    static void TearDownTestSuite()
    {
        for (auto const& file : std::filesystem::directory_iterator("/dev/shm"))
            if (file.path().string().find(mark) != std::string::npos)
                std::filesystem::remove(file.path());
    }
};
} // namespace

TEST_F(nxNamedObjects, AMutexExcludesOthersUntilItsOwnerHasUnlockedAsOftenAsLocked)
{
    std::string const name = "Global\\mutex/" + mark;
    nxSemaphore& isLocked = MakeSignal();
    nxSemaphore& isTaken = MakeSignal();
    auto const take = [&]
    {
        (void)isLocked.Wait();
        nxWindowsMutex other(name);
        (void)other.Lock();
        return isTaken.Post().IsOK() && other.Unlock().IsOK();
    };
    pid_t const child = StartChild(take);
    nxWindowsMutex mutex(name);
    EXPECT_TRUE(mutex.Unlock().IsOK()); // without effect, as that of another thread
    EXPECT_TRUE(mutex.Lock().IsOK());
    EXPECT_TRUE(Elsewhere([&] { return mutex.Unlock(); }).IsOK());
    EXPECT_TRUE(nxWindowsMutex(name).Lock().IsOK()); // the destructor does not release it
    (void)isLocked.Post();
    for (int unlocks = 0; unlocks < 2; ++unlocks)
    {
        EXPECT_EQ(isTaken.TimedWait(0.0501), NX_ERR_THR_TIMEDOUT);
        EXPECT_TRUE(mutex.Unlock().IsOK());
    }
    EXPECT_TRUE(isTaken.TimedWait(30.0).IsOK());
    EXPECT_EQ(WaitForChild(child), 1);
}

// None of them crashes or is the semaphore of another.
TEST_F(nxNamedObjects, NamesAreAnyBytes)
{
    std::string const longName = mark + std::string(10000000, 'x');
    for (std::string const& name :
         {mark + '\0', mark + "../x", mark + ".", mark + "%2E", longName, longName + 'y'})
    {
        nxWindowsSemaphore semaphore(name, 1, 1);
        EXPECT_TRUE(semaphore.TimedWait(0.0).IsOK());
        EXPECT_EQ(semaphore.TimedWait(0.0), NX_ERR_THR_TIMEDOUT);
    }
    nxWindowsMutex nameless("");
    EXPECT_TRUE(nameless.Lock().IsOK() && nameless.Unlock().IsOK());
}

TEST_F(nxNamedObjects, TheFirstCountsOfASemaphoreWinWhileAProcessHasItOpen)
{
    std::string const name = mark + "counts";
    nxSemaphore& isReady = MakeSignal();
    auto const open = [&]
    {
        nxWindowsSemaphore first(name, 2, 3);
        nxWindowsSemaphore second(name, 1, 100);
        bool isGood = TakeAll(second) == 2;
        for (int post = 0; post < 10; ++post)
            isGood &= second.Post().IsOK(); // at the maximum too
        return isGood && isReady.Post().IsOK() ? pause() : 0;
    };
    auto const take = [&]
    {
        nxWindowsSemaphore semaphore(name, 9, 9);
        return TakeAll(semaphore);
    };
    pid_t const opener = StartChild(open);
    EXPECT_TRUE(isReady.TimedWait(30.0).IsOK());
    EXPECT_EQ(RunInChild(take), 3);
    EXPECT_EQ(RunInChild(take), 0);
    kill(opener, SIGKILL);
    EXPECT_EQ(WaitForChild(opener), 128 + SIGKILL);
    EXPECT_EQ(RunInChild(take), 9); // a new semaphore
    EXPECT_EQ(RunInChild(take), 9);
}

TEST_F(nxNamedObjects, ASemaphoreTimesOut)
{
    nxWindowsSemaphore semaphore(mark + "time", 0, 1);
    for (double seconds : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN(), 0.0009, 0.03})
        EXPECT_EQ(semaphore.TimedWait(seconds), NX_ERR_THR_TIMEDOUT) << seconds;
    std::thread poster([&] { (void)semaphore.Post(); });
    EXPECT_TRUE(semaphore.TimedWait(1e300).IsOK());
    poster.join();
}

TEST_F(nxNamedObjects, CountsThatAreRefusedMakeASemaphoreThatDoesNothing)
{
    nxWindowsSemaphore noMaximum(mark + "refused", 0, 0);
    nxWindowsSemaphore tooMany(mark + "refused", 2, 1);
    for (nxWindowsSemaphore* semaphore : {&noMaximum, &tooMany})
        EXPECT_TRUE(semaphore->Wait().IsOK() && semaphore->TimedWait(100.0).IsOK() &&
                    semaphore->Post().IsOK());
    nxWindowsSemaphore usable(mark + "refused", 1, 1); // the name is still free
    EXPECT_EQ(TakeAll(usable), 1);
}

TEST_F(nxNamedObjects, OneThatCannotBeMappedIsGivenUp)
{
    if (underSanitizer)
        GTEST_SKIP() << "the sanitizer maps memory of its own";
    nxSemaphore& isOpen = MakeSignal();
    auto const openWithoutRoom = [&]
    {
        (void)isOpen.Wait();
        rlimit const none = {0, 0};
        (void)setrlimit(RLIMIT_AS, &none);
        return nxWindowsSemaphore(mark + "poor", 0, 1).TimedWait(0.0).IsOK();
    };
    pid_t const child = StartChild(openWithoutRoom);
    nxWindowsSemaphore const opened(mark + "poor", 0, 1);
    (void)isOpen.Post();
    EXPECT_EQ(WaitForChild(child), 1);
}
