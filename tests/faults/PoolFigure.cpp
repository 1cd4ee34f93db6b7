// F14: that pools stop at once whatever they do, and that each functor runs once.

#include "core/concurrency/nxFunctor.h"
#include "core/concurrency/nxFunctorQueue.h"
#include "core/concurrency/nxFunctorThread.h"
#include "core/concurrency/nxFunctorThreadPool.h"
#include "tests/faults/Figures.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <memory>
#include <thread>

namespace
{

using Clock = std::chrono::steady_clock;

double SecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

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

/// Notes whether its number follows on the last one's. @see InOrder
class Numbered : public nxFunctor
{
public:
    Numbered(unsigned int number, unsigned int& next, unsigned int& disordered)
        : _number(number), _next(next), _disordered(disordered)
    {
    }

private:
    void _Invoke() override
    {
        _disordered += _number != _next;
        _next = _number + 1;
    }

    unsigned int _number;
    unsigned int& _next;
    unsigned int& _disordered;
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
    char text[200];
    (void)std::snprintf(text, sizeof text,
                        "F14 stops of pools of 0 to 64 workers, idle and busy, %u stops: slowest %.0f ms",
                        stops, slowest * 1000.0);
    return Report(text, start, slowest < slowestAllowed);
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
    char text[200];
    (void)std::snprintf(text, sizeof text,
                        "F14 functors on %u workers, half of them pushed by others: %u of %u run", workers,
                        count.load(), functors);
    return Report(text, start, count == functors);
}

bool InOrder(unsigned int functors)
{
    auto const start = Clock::now();
    unsigned int next = 0;
    unsigned int disordered = 0;
    DrainedQueue queue;
    queue.Create(new nxFunctorThread);
    for (unsigned int i = 0; i < functors; ++i)
    {
        (void)queue.Push(new Numbered(i, next, disordered));
    }
    while (queue.Size() != 0)
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    (void)queue.Stop(); // what runs is ended first
    char text[200];
    (void)std::snprintf(text, sizeof text, "F14 functors on one worker: %u of %u run, %u out of order", next,
                        functors, disordered);
    return Report(text, start, next == functors && disordered == 0);
}

} // namespace

bool PoolFigure(Extent extent)
{
    bool const isFull = extent == Extent::full;
    // Beside other tests, the fast one looks for hangs only.
    bool isKept = Stops(isFull ? 100000 : 300, isFull ? 0.5 : 10.0);
    isKept = EachOnce(isFull ? 10000000 : 100000, 4) && isKept;
    return InOrder(isFull ? 1000000 : 50000) && isKept;
}
