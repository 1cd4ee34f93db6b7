// Functor queues: misuse and overrides. The fuzz target of functors holds order, ownership and what is left at a stop,
// the figure of pools that each functor runs once and that stops never hang.
#include "core/concurrency/nxFunctor.h"
#include "core/concurrency/nxFunctorQueue.h"
#include "core/concurrency/nxFunctorThread.h"
#include "core/concurrency/nxFunctorThreadPool.h"
#include "core/concurrency/nxManuallyDispatchedFunctorQueue.h"

#include <gtest/gtest.h>

#include <ctime>
#include <functional>
#include <latch>
#include <memory>
#include <stdexcept>
#include <utility>

#include <unistd.h>

namespace
{
struct Functor : public nxFunctor
{
    std::function<void()> work;

    explicit Functor(std::function<void()> aWork) : work(std::move(aWork))
    {
    }

    void _Invoke() override
    {
        work();
    }
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
} // namespace

TEST(nxManuallyDispatchedFunctorQueue, RunsNothingForANullFunctorAndPassesExceptionsOn)
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
    EXPECT_TRUE(manual.Push(nullptr).IsOK());
    EXPECT_TRUE(manual.Dispatch().IsOK());
    auto const isAlive = std::make_shared<bool>(true);
    Push(manual, [isAlive] { throw std::runtime_error("work"); });
    EXPECT_THROW((void)manual.Dispatch(), std::runtime_error);
    EXPECT_EQ(isAlive.use_count(), 1); // the functor is gone with its copy
    Functor marker([] {});             // a worker's queue leaves the argument, where a manual one nulls it
    nxFunctor* popped = &marker;
    EXPECT_EQ(Queue()._Pop(&popped), NX_ERR_NOT_FOUND);
    EXPECT_EQ(popped, &marker);
    EXPECT_EQ(manual.Pop(&popped), NX_ERR_NOT_FOUND);
    EXPECT_EQ(manual.DispatchAll(), NX_ERR_NOT_FOUND);
    EXPECT_EQ(manual.pops, 4); // each asks the derived class
}

TEST(nxFunctorThread, SleepsUntilItIsStoppedAndHasNothingToDoWithoutAQueue)
{
    struct Worker : public nxFunctorThread
    {
        int waits = 0;

        nxErrorEnum Run() override
        {
            Sleep(50000);
            return nxFunctorThread::Run();
        }

        nxErrorEnum Wait() override
        {
            ++waits;
            return nxFunctorThread::Wait();
        }
    } worker, queueless;
    EXPECT_EQ(queueless.Run(), NX_ERR_THR_UNSUPPORTED);
    EXPECT_EQ(queueless._Stop(), NX_ERR_THR_NOT_RUNNING);
    EXPECT_TRUE(queueless._Start().IsOK());
    EXPECT_EQ(queueless._Start(), NX_ERR_THR_ALREADY_STARTED);
    EXPECT_TRUE(queueless._Stop().IsOK()); // while it runs
    EXPECT_EQ(queueless.waits, 2);         // a stop asks the derived class

    Queue queue;
    worker._SetFunctorQueueBase(&queue);
    std::clock_t const before = std::clock(); // of the process, whatever else the machine does
    ASSERT_TRUE(worker._Start().IsOK());
    usleep(200000);
    EXPECT_LT(std::clock() - before, CLOCKS_PER_SEC / 20); // it sleeps
    EXPECT_TRUE(worker._Stop().IsOK());
    Push(queue, [] { FAIL(); });
    EXPECT_TRUE(worker._Start().IsOK()); // stopped once it stays stopped
    EXPECT_TRUE(worker.Wait().IsOK());
    EXPECT_EQ(queue.Size(), 1u);
}

TEST(nxFunctorThreadPool, RunsAsManyFunctorsAtOnceAsItHasWorkers)
{
    constexpr int workers = 3;
    std::latch allInside(workers + 1);
    std::latch released(1);
    std::latch isStopped(1);
    nxFunctorThreadPool const neverConnected(workers);
    Queue queue;
    EXPECT_TRUE(queue.Stop().IsOK()); // it has no workers yet
    {
        nxFunctorThreadPool stopsWhenDestroyed(workers);
        stopsWhenDestroyed._SetFunctorQueueBase(&queue);
        EXPECT_TRUE(stopsWhenDestroyed._Start().IsOK());
    }
    queue.Create(new nxFunctorThreadPool(workers));
    auto const work = [&]
    {
        allInside.arrive_and_wait();
        released.wait();
    };
    for (int functor = 0; functor < workers; ++functor)
        Push(queue, work);
    allInside.arrive_and_wait();
    auto const stopFromWithin = [&]
    {
        EXPECT_TRUE(queue.Stop().IsOK());
        isStopped.count_down();
    };
    Push(queue, stopFromWithin);
    EXPECT_EQ(queue.Size(), 1u);
    released.count_down();
    isStopped.wait();
    EXPECT_TRUE(queue.Stop().IsOK());
    Push(queue, [] { FAIL(); });
    EXPECT_TRUE(queue.Stop().IsOK()); // once more is harmless
    EXPECT_EQ(queue.Size(), 1u);
}
