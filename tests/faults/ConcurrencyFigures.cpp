// F13: that the death of an owner is always reported to the next one, and never leaves anybody waiting.
// F14: that pools stop at once whatever they do, and that each functor runs once.

#include "core/concurrency/nxFunctor.h"
#include "core/concurrency/nxFunctorQueue.h"
#include "core/concurrency/nxFunctorThreadPool.h"
#include "core/concurrency/nxMutex.h"
#include "core/concurrency/nxWindowsMutex.h"
#include "tests/concurrency/SharedMemory.h"
#include "tests/faults/Faults.h"

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

#include <signal.h>
#include <unistd.h>

namespace
{

struct Region
{
    nxMutex mutex;
    std::atomic<unsigned int> turns;
};

/// Locks and unlocks until it is killed. Repairs what a dead owner left, so that it may also die while it does so.
[[noreturn]] void LockForEver(Region& shared)
{
    for (;;)
    {
        if (shared.mutex.Lock() == NX_ERR_THR_OWNER_DEAD)
            (void)shared.mutex.Consistent();
        ++shared.turns;
        (void)shared.mutex.Unlock();
    }
}

[[noreturn]] void LockByNameForEver(nxWindowsMutex& mutex, Region& shared)
{
    for (;;)
    {
        (void)mutex.Lock();
        (void)mutex.Lock(); // its owner may
        ++shared.turns;
        (void)mutex.Unlock();
        (void)mutex.Unlock();
    }
}

void KillWhenBusy(pid_t child, Region const& shared, unsigned int turns)
{
    unsigned int const start = shared.turns;
    while (shared.turns - start < turns)
        std::this_thread::yield();
    (void)kill(child, SIGKILL);
    (void)WaitForChild(child);
}

bool ShowDeaths()
{
    unsigned int const kills = Trials(300, 50000);
    auto const start = Clock::now();
    Region& shared = MakeShared<Region>();
    (void)shared.mutex.InitialiseAsShared(true);
    nxWindowsMutex named("nxfaults" + std::to_string(getpid()));
    (void)alarm(30 + kills / 50); // a lock that never comes ends this process
    Chance chance(13);
    unsigned int clean = 0;
    unsigned int ownerDead = 0;
    unsigned int wrong = 0;
    for (unsigned int i = 0; i < kills; ++i)
    {
        bool const isNamed = i % 8 == 7;
        auto const work = [&]
        {
            isNamed ? LockByNameForEver(named, shared) : LockForEver(shared);
            return 0;
        };
        std::vector<pid_t> owners = {StartChild(work)};
        if (i % 4 == 1) // the second one meets what the first one left
            owners.push_back(StartChild(work));
        for (pid_t const owner : owners)
            KillWhenBusy(owner, shared, chance.Below(40));
        if (isNamed)
        {
            (void)named.Lock();
            (void)named.Unlock();
            continue;
        }
        nxErrorEnum const result = shared.mutex.Lock();
        bool const isDead = result == NX_ERR_THR_OWNER_DEAD;
        ++(isDead ? ownerDead : clean);
        wrong += isDead ? !shared.mutex.Consistent().IsOK() : !result.IsOK();
        wrong += !shared.mutex.Unlock().IsOK();
    }
    (void)alarm(0);
    return Report(start, wrong == 0 && ownerDead != 0,
                  "F13 robust and named mutex, %u kills: %u clean, %u owner dead, %u wrong, 0 hung", kills,
                  clean, ownerDead, wrong);
}

Figure const mutexFigure("mutex", ShowDeaths);

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

bool ShowPools()
{
    // Beside other tests, the quick one looks for hangs only.
    bool const isPrompt = Stops(Trials(300, 100000), isFull ? 0.5 : 10.0);
    bool const isComplete = EachOnce(Trials(100000, 10000000), 4, false);
    return EachOnce(Trials(50000, 1000000), 1, true) && isComplete && isPrompt;
}

Figure const poolFigure("pool", ShowPools);

} // namespace
