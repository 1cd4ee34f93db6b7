// F14: that pools stop at once whatever they do, and that each functor runs once.

#include "core/concurrency/nxFunctor.h"
#include "core/concurrency/nxFunctorQueue.h"
#include "core/concurrency/nxFunctorThreadPool.h"
#include "tests/faults/Faults.h"

#include <algorithm>
#include <atomic>
#include <thread>

namespace
{

/// Counts, and may push one more of its kind.
class Counting : public nxFunctor
{
public:
    Counting(std::atomic<unsigned int>& count, nxFunctorQueue* next) : _count(count), _next(next)
    {
    }

private:
    void _Invoke() override
    {
        ++_count;
        if (_next != nullptr)
        {
            (void)_next->Push(new Counting(_count, nullptr));
        }
    }

    std::atomic<unsigned int>& _count;
    nxFunctorQueue* _next;
};

/// Takes out and deletes what a stopped queue has left.
class DrainedQueue : public nxFunctorQueue
{
public:
    ~DrainedQueue() override
    {
        nxFunctor* functor = nullptr;
        while (_Pop(&functor).IsOK())
        {
            delete functor;
        }
    }
};

/// @return how long the stop took, in seconds.
double StopOnce(unsigned int workers, bool isBusy)
{
    std::atomic<unsigned int> count = 0;
    DrainedQueue queue;
    queue.Create(new nxFunctorThreadPool(workers));
    for (unsigned int i = 0; isBusy && i < 50; ++i)
    {
        (void)queue.Push(new Counting(count, i % 5 == 0 ? &queue : nullptr));
    }
    auto const start = Clock::now();
    (void)queue.Stop();
    return SecondsSince(start);
}

/// @param slowestAllowed  in seconds.
bool Stops(unsigned int stops, double slowestAllowed)
{
    constexpr unsigned int workers[] = {0, 1, 2, 8, 64};
    auto const start = Clock::now();
    double slowest = 0.0;
    for (unsigned int i = 0; i < stops; ++i)
    {
        // 64 workers are a twentieth of the trials: starting them is what takes the time.
        unsigned int const kind = i % 20 == 19 ? 4 : i % 4;
        slowest = std::max(slowest, StopOnce(workers[kind], i % 8 < 4));
    }
    return Report(start, slowest < slowestAllowed,
                  "F14 stops of pools of 0 to 64 workers, idle and busy, %u stops: slowest %.0f ms", stops,
                  slowest * 1000.0);
}

bool EachOnce(unsigned int functors, unsigned int workers)
{
    constexpr unsigned int mostWaiting = 100000;
    auto const start = Clock::now();
    std::atomic<unsigned int> count = 0;
    DrainedQueue queue;
    queue.Create(new nxFunctorThreadPool(workers));
    for (unsigned int i = 0; i < functors / 2; ++i)
    {
        (void)queue.Push(new Counting(count, &queue));
        while (queue.Size() > mostWaiting)
        {
            std::this_thread::yield();
        }
    }
    while (count < functors && SecondsSince(start) < 300.0)
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    (void)queue.Stop();
    return Report(start, count == functors,
                  "F14 functors on %u workers, half of them pushed by others: %u of %u run", workers,
                  count.load(), functors);
}

bool Show()
{
    // Beside other tests, the quick one looks for hangs only.
    bool const isPrompt = Stops(Trials(300, 100000), isFull ? 0.5 : 10.0);
    return EachOnce(Trials(100000, 10000000), 4) && isPrompt;
}

Figure const figure("pool", Show);

} // namespace
