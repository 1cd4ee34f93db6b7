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

std::atomic<unsigned int> ran = 0;        // functors
std::atomic<unsigned int> disordered = 0; // those whose number is not how many ran before

/// Notes that it was run, and may push one more of its kind.
class Noting : public nxFunctor
{
public:
    Noting(unsigned int number, nxFunctorQueue* next) : _number(number), _next(next)
    {
    }

private:
    void _Invoke() override
    {
        disordered += _number != ran++;
        if (_next != nullptr)
            (void)_next->Push(new Noting(0, nullptr));
    }

    unsigned int _number;
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
            delete functor;
    }
};

/// @return how long the stop took, in seconds.
double StopOnce(unsigned int workers, bool isBusy)
{
    DrainedQueue queue;
    queue.Create(new nxFunctorThreadPool(workers));
    for (unsigned int i = 0; isBusy && i < 50; ++i)
        (void)queue.Push(new Noting(i, i % 5 == 0 ? &queue : nullptr));
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

/// Half of the functors are pushed by others, where order is not looked at.
bool EachOnce(unsigned int functors, unsigned int workers, bool isOrdered)
{
    constexpr unsigned int mostWaiting = 100000;
    auto const start = Clock::now();
    ran = disordered = 0;
    DrainedQueue queue;
    queue.Create(new nxFunctorThreadPool(workers));
    for (unsigned int i = 0; i < (isOrdered ? functors : functors / 2); ++i)
    {
        (void)queue.Push(new Noting(i, isOrdered ? nullptr : &queue));
        while (queue.Size() > mostWaiting)
            std::this_thread::yield();
    }
    while (ran < functors && SecondsSince(start) < 300.0)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    (void)queue.Stop();
    bool const isKept = ran == functors && (!isOrdered || disordered == 0);
    return Report(start, isKept, "F14 functors, %u worker(s), %s: %u of %u run", workers,
                  isOrdered ? "in order" : "half of them pushed by others", ran.load(), functors);
}

bool Show()
{
    // Beside other tests, the quick one looks for hangs only.
    bool const isPrompt = Stops(Trials(300, 100000), isFull ? 0.5 : 10.0);
    bool const isComplete = EachOnce(Trials(100000, 10000000), 4, false);
    return EachOnce(Trials(50000, 1000000), 1, true) && isComplete && isPrompt;
}

Figure const figure("pool", Show);

} // namespace
