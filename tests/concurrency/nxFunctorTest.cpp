// Functor queues: misuse and overrides. The fuzz target of functors holds order, ownership and what is left at a stop,
// the figure of pools that each functor runs once and that stops never hang.
#include "core/concurrency/nxFunctor.h"
#include "core/concurrency/nxFunctorQueue.h"
#include "core/concurrency/nxFunctorThread.h"
#include "core/concurrency/nxFunctorThreadPool.h"
#include "core/concurrency/nxManuallyDispatchedFunctorQueue.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <ctime>
#include <functional>
#include <stdexcept>
#include <thread>
#include <type_traits>
#include <utility>

#include <signal.h>
#include <unistd.h>

static_assert(!std::is_copy_constructible_v<nxFunctorThread>);
static_assert(!std::is_copy_constructible_v<nxFunctorQueue>);
static_assert(!std::is_copy_constructible_v<nxManuallyDispatchedFunctorQueue>);
static_assert(!std::is_constructible_v<nxManuallyDispatchedFunctorQueue, nxFunctorQueueBase const&>);
static_assert(!std::is_default_constructible_v<nxFunctorThreadPool>);
static_assert(std::is_copy_assignable_v<nxFunctor>);

namespace
{
std::atomic<int> alive = 0;

class Functor : public nxFunctor
{
public:
    explicit Functor(std::function<void()> work) : _work(std::move(work))
    {
        ++alive;
    }
    ~Functor() override
    {
        --alive;
    }

protected:
    void _Invoke() override
    {
        _work();
    }

private:
    std::function<void()> _work;
};

void Push(nxFunctorQueueBase& queue, std::function<void()> work)
{
    EXPECT_TRUE(queue.Push(new Functor(std::move(work))).IsOK());
}

// Lets a test take what a stopped queue still holds.
class Queue : public nxFunctorQueue
{
public:
    using nxFunctorQueue::_Pop;

    ~Queue() override
    {
        nxFunctor* left = nullptr;
        while (_Pop(&left).IsOK())
            delete left;
    }
};

template <typename Condition>
void WaitUntil(Condition condition)
{
    while (!condition())
        std::this_thread::yield();
}
} // namespace

TEST(nxManuallyDispatchedFunctorQueue, RunsNothingForANullFunctorAndPassesExceptionsOn)
{
    nxManuallyDispatchedFunctorQueue manual;
    EXPECT_TRUE(manual.Push(nullptr).IsOK());
    EXPECT_TRUE(manual.Dispatch().IsOK());
    Push(manual, [] { throw std::runtime_error("work"); });
    EXPECT_THROW((void)manual.Dispatch(), std::runtime_error);
    EXPECT_EQ(alive, 0);
    EXPECT_EQ(manual.Size(), 0u);

    Functor marker([] {}); // a worker's queue leaves the argument, where a manual one nulls it
    nxFunctor* popped = &marker;
    Queue queue;
    EXPECT_EQ(queue._Pop(&popped), NX_ERR_NOT_FOUND);
    EXPECT_EQ(popped, &marker);
}

TEST(nxFunctorThread, WithoutAQueueThereIsNothingToRunOrToWake)
{
    nxFunctorThread worker;
    EXPECT_EQ(worker.Run(), NX_ERR_THR_UNSUPPORTED);
    EXPECT_EQ(worker._Stop(), NX_ERR_THR_NOT_RUNNING);
    {
        nxFunctorThread started;
        EXPECT_TRUE(started._Start().IsOK());
        EXPECT_EQ(started._Start(), NX_ERR_THR_ALREADY_STARTED);
        EXPECT_TRUE(started.Wait().IsOK()); // it ended by itself
    }
    nxFunctorThreadPool neverConnected(3);
    nxFunctorThreadPool nobody(0);
    EXPECT_TRUE(nobody._Start().IsOK());
    EXPECT_TRUE(nobody._Stop().IsOK());
    nxFunctorQueue queue;
    EXPECT_TRUE(queue.Stop().IsOK());
}

TEST(nxFunctorOverrides, OfPopAndWaitAreTheOnesThatAreCalled)
{
    struct CountingQueue : public nxManuallyDispatchedFunctorQueue
    {
        int pops = 0;

        nxErrorEnum _Pop(nxFunctor** functor) override
        {
            ++pops;
            return nxManuallyDispatchedFunctorQueue::_Pop(functor);
        }
    } manual;
    nxFunctor* popped = nullptr;
    (void)manual.Pop(&popped);
    (void)manual.Dispatch();
    (void)manual.DispatchAll();
    EXPECT_EQ(manual.pops, 3);

    struct CountingThread : public nxFunctorThread
    {
        int waits = 0;

        nxErrorEnum Wait() override
        {
            ++waits;
            return nxFunctorThread::Wait();
        }
    } worker;
    Queue queue;
    worker._SetFunctorQueueBase(&queue);
    ASSERT_TRUE(worker._Start().IsOK());
    EXPECT_TRUE(worker._Stop().IsOK());
    EXPECT_EQ(worker.waits, 1);
    Push(queue, [] { FAIL(); });
    EXPECT_TRUE(worker._Start().IsOK()); // stopped once it stays stopped
    EXPECT_TRUE(worker.Wait().IsOK());
    EXPECT_EQ(queue.Size(), 1u);
}

TEST(nxFunctorThreadPool, RunsAsManyFunctorsAtOnceAsItHasWorkers)
{
    constexpr int WORKERS = 3;
    std::atomic<int> inside = 0;
    std::atomic<bool> released = false;
    Queue queue;
    queue.Create(new nxFunctorThreadPool(WORKERS));
    for (int functor = 0; functor < WORKERS + 1; ++functor)
    {
        Push(queue,
             [&]
             {
                 ++inside;
                 WaitUntil([&] { return released.load(); });
             });
    }
    WaitUntil([&] { return inside == WORKERS; });
    EXPECT_EQ(queue.Size(), 1u);
    released = true;
    WaitUntil([&] { return inside == WORKERS + 1; });
    EXPECT_TRUE(queue.Stop().IsOK());
    Push(queue, [] { FAIL(); });
    EXPECT_TRUE(queue.Stop().IsOK()); // once more is harmless
    EXPECT_EQ(queue.Size(), 1u);
}

TEST(nxFunctorThread, SleepsWhenThereIsNothingToRun)
{
    Queue queue;
    queue.Create(new nxFunctorThread);
    std::clock_t const before = std::clock(); // of the process, whatever else the machine does
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_LT(std::clock() - before, CLOCKS_PER_SEC / 20);
    EXPECT_TRUE(queue.Stop().IsOK());
}

TEST(nxFunctorThread, AStopFromWithinItsOwnWorkDoesNotHang)
{
    std::atomic<bool> stopped = false;
    Queue queue;
    queue.Create(new nxFunctorThreadPool(3));
    Push(queue,
         [&]
         {
             EXPECT_TRUE(queue.Stop().IsOK());
             stopped = true;
         });
    WaitUntil([&] { return stopped.load(); });
    EXPECT_TRUE(queue.Stop().IsOK());
}

TEST(nxFunctorThread, LeavesTheProcessesSignalsToTheHost)
{
    static std::atomic<int> handled;
    handled = 0;
    struct sigaction action = {};
    action.sa_handler = [](int) { ++handled; };
    sigaction(SIGUSR2, &action, nullptr);
    nxFunctorQueue queue;
    queue.Create(new nxFunctorThreadPool(2)); // while the host still takes its signals

    sigset_t heldOff;
    sigemptyset(&heldOff);
    sigaddset(&heldOff, SIGUSR2);
    pthread_sigmask(SIG_BLOCK, &heldOff, nullptr);
    kill(getpid(), SIGUSR2);
    std::atomic<bool> ran = false;
    Push(queue, [&] { ran = true; });
    WaitUntil([&] { return ran.load(); });
    EXPECT_EQ(handled, 0);
    pthread_sigmask(SIG_UNBLOCK, &heldOff, nullptr);
    EXPECT_EQ(handled, 1);
    EXPECT_TRUE(queue.Stop().IsOK());
}
