// F13: that the death of an owner is always reported to the next one, and never leaves anybody waiting.

#include "core/concurrency/nxMutex.h"
#include "core/concurrency/nxWindowsMutex.h"
#include "tests/faults/Figures.h"

#include <atomic>
#include <cstdio>
#include <new>
#include <thread>

#include <signal.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

using Clock = std::chrono::steady_clock;

struct Shared
{
    nxMutex mutex;
    std::atomic<unsigned int> turns;
};

struct Tally
{
    unsigned int clean = 0;
    unsigned int ownerDead = 0;
    unsigned int wrong = 0;
};

/// Locks and unlocks until it is killed. Repairs what a dead owner left, so that it may also die while it does so.
[[noreturn]] void LockForEver(Shared& shared)
{
    for (;;)
    {
        if (shared.mutex.Lock() == NX_ERR_THR_OWNER_DEAD)
        {
            (void)shared.mutex.Consistent();
        }
        ++shared.turns;
        (void)shared.mutex.Unlock();
    }
}

[[noreturn]] void LockByNameForEver(nxWindowsMutex& mutex, Shared& shared)
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

template <typename Work>
pid_t Start(Work work)
{
    pid_t const child = fork();
    if (child == 0)
    {
        work();
        _exit(1);
    }
    return child;
}

void KillWhenBusy(pid_t child, Shared const& shared, unsigned int turns)
{
    unsigned int const start = shared.turns;
    while (shared.turns - start < turns)
    {
        std::this_thread::yield();
    }
    (void)kill(child, SIGKILL);
    (void)waitpid(child, nullptr, 0);
}

/// A lock that never comes ends this process by the alarm.
void LockAfterDeath(Shared& shared, Tally& tally)
{
    nxErrorEnum const result = shared.mutex.Lock();
    tally.clean += result.IsOK();
    tally.ownerDead += result == NX_ERR_THR_OWNER_DEAD;
    if (result == NX_ERR_THR_OWNER_DEAD)
    {
        tally.wrong += !shared.mutex.Consistent().IsOK();
    }
    else
    {
        tally.wrong += !result.IsOK();
    }
    tally.wrong += !shared.mutex.Unlock().IsOK();
}

} // namespace

bool MutexFigure(Extent extent)
{
    unsigned int const kills = extent == Extent::full ? 50000 : 300;
    unsigned int const longest = 30 + kills / 50; // seconds
    auto const start = Clock::now();
    void* const region =
        mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    Shared& shared = *new (region) Shared;
    (void)shared.mutex.InitialiseAsShared(true);
    nxWindowsMutex named("nxfaults" + std::to_string(getpid()));
    (void)alarm(longest);

    Chance chance(13);
    Tally tally;
    for (unsigned int i = 0; i < kills; ++i)
    {
        bool const isNamed = i % 8 == 7;
        bool const areTwo = i % 4 == 1; // the second one meets what the first one left
        auto const work = [&] { isNamed ? LockByNameForEver(named, shared) : LockForEver(shared); };
        pid_t const first = Start(work);
        pid_t const second = areTwo ? Start(work) : 0;
        KillWhenBusy(first, shared, chance.Below(40));
        if (areTwo)
        {
            KillWhenBusy(second, shared, chance.Below(40));
        }
        if (isNamed)
        {
            (void)named.Lock();
            (void)named.Unlock();
        }
        else
        {
            LockAfterDeath(shared, tally);
        }
    }
    (void)alarm(0);
    char text[200];
    (void)std::snprintf(text, sizeof text,
                        "F13 robust and named mutex, %u kills: %u clean, %u owner dead, %u wrong, 0 hung",
                        kills, tally.clean, tally.ownerDead, tally.wrong);
    return Report(text, start, tally.wrong == 0 && tally.ownerDead != 0);
}
