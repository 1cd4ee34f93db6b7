// F13: that the death of an owner is always reported to the next one, and never leaves anybody waiting.

#include "core/concurrency/nxMutex.h"
#include "core/concurrency/nxWindowsMutex.h"
#include "tests/concurrency/SharedMemory.h"
#include "tests/faults/Faults.h"

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

bool Show()
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

Figure const figure("mutex", Show);

} // namespace
