// What each system answer of a spin lock becomes, in one process and between two.
#include "core/concurrency/nxSpinLock.h"
#include "core/concurrency/nxSpinLockGuard.h"
#include "tests/concurrency/SharedMemory.h"

#include <gtest/gtest.h>

#include <thread>
#include <type_traits>
#include <vector>

static_assert(sizeof(nxSpinLock) == sizeof(pthread_spinlock_t));
static_assert(!std::is_polymorphic_v<nxSpinLock> && !std::is_copy_constructible_v<nxSpinLock>);

TEST(nxSpinLock, BusyIsLockedAndTheGuardGivesBack)
{
    nxSpinLock lock;
    EXPECT_TRUE(lock.Lock().IsOK());
    EXPECT_EQ(lock.TryLock(), NX_ERR_THR_LOCKED);
    EXPECT_TRUE(lock.Unlock().IsOK());
    {
        nxSpinLockGuard guard(lock);
        EXPECT_EQ(lock.TryLock(), NX_ERR_THR_LOCKED);
    }
    EXPECT_TRUE(lock.TryLock().IsOK());
    EXPECT_TRUE(lock.Unlock().IsOK());
}

TEST(nxSpinLock, GuardsACounter)
{
    constexpr int threads = 4;
    constexpr int rounds = 10000;
    nxSpinLock lock;
    int count = 0;
    std::vector<std::thread> workers;
    for (int thread = 0; thread < threads; ++thread)
    {
        workers.emplace_back(
            [&]
            {
                for (int round = 0; round < rounds; ++round)
                {
                    nxSpinLockGuard guard(lock);
                    ++count;
                }
            });
    }
    for (std::thread& worker : workers)
        worker.join();
    EXPECT_EQ(count, threads * rounds);
}

TEST(nxSpinLockShared, ExcludesAnotherProcess)
{
    Shared<nxSpinLock> lock;
    ASSERT_TRUE(lock->InitialiseAsShared().IsOK());
    ASSERT_TRUE(lock->Lock().IsOK());
    EXPECT_EQ(RunInChild([&] { return lock->TryLock() == NX_ERR_THR_LOCKED; }), 1);
    ASSERT_TRUE(lock->Unlock().IsOK());
    EXPECT_EQ(RunInChild([&] { return lock->Lock().IsOK() && lock->Unlock().IsOK(); }), 1);
}
