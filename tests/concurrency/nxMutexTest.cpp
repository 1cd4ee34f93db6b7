// What each system answer of a mutex becomes, in one process and between two, and what the guards do.
#include "core/concurrency/nxMutex.h"
#include "core/concurrency/nxConditionalMutexGuard.h"
#include "core/concurrency/nxMutexGuard.h"
#include "tests/concurrency/SharedMemory.h"

#include <gtest/gtest.h>

#include <csignal>
#include <thread>
#include <type_traits>

static_assert(sizeof(nxMutex) == sizeof(pthread_mutex_t));
static_assert(!std::is_polymorphic_v<nxMutex> && !std::is_copy_constructible_v<nxMutex>);
static_assert(!std::is_copy_constructible_v<nxMutexGuard> && !std::is_default_constructible_v<nxMutexGuard>);

namespace
{
constinit nxMutex readyBeforeAnyCode;

nxErrorEnum TryLockElsewhere(nxMutex& mutex)
{
    nxErrorEnum result;
    std::thread other(
        [&]
        {
            result = mutex.TryLock();
            if (result.IsOK())
                (void)mutex.Unlock();
        });
    other.join();
    return result;
}

nxErrorEnum UnlockElsewhere(nxMutex& mutex)
{
    nxErrorEnum result;
    std::thread other([&] { result = mutex.Unlock(); });
    other.join();
    return result;
}

// A child takes the mutex and is killed with it.
void KillAnOwner(nxMutex& mutex)
{
    int const ended = RunInChild(
        [&]
        {
            (void)mutex.Lock();
            (void)raise(SIGKILL);
            return 0;
        });
    ASSERT_EQ(ended, 128 + SIGKILL);
}
} // namespace

TEST(nxMutex, HeldElsewhereIsLocked)
{
    nxMutex plain;
    nxMutex notRecursive(false);
    nxMutex recursive(true);
    for (nxMutex* mutex : {&readyBeforeAnyCode, &plain, &notRecursive, &recursive})
    {
        EXPECT_TRUE(mutex->Lock().IsOK());
        EXPECT_EQ(TryLockElsewhere(*mutex), NX_ERR_THR_LOCKED);
        EXPECT_TRUE(mutex->Unlock().IsOK());
        EXPECT_TRUE(TryLockElsewhere(*mutex).IsOK());
    }
}

TEST(nxMutex, OnlyTheRecursiveOneLocksAgain)
{
    nxMutex plain(false);
    (void)plain.Lock();
    EXPECT_EQ(plain.TryLock(), NX_ERR_THR_LOCKED);
    (void)plain.Unlock();

    nxMutex recursive(true);
    EXPECT_TRUE(recursive.Lock().IsOK());
    EXPECT_TRUE(recursive.TryLock().IsOK());
    EXPECT_TRUE(recursive.Unlock().IsOK());
    EXPECT_EQ(TryLockElsewhere(recursive), NX_ERR_THR_LOCKED);
    EXPECT_TRUE(recursive.Unlock().IsOK());
    EXPECT_TRUE(TryLockElsewhere(recursive).IsOK());
}

TEST(nxMutex, UnlockByAnotherThreadIsAMismatch)
{
    nxMutex recursive(true);
    (void)recursive.Lock();
    EXPECT_EQ(UnlockElsewhere(recursive), NX_ERR_THR_MISMATCH);
    EXPECT_TRUE(recursive.Unlock().IsOK());

    Shared<nxMutex> robust;
    ASSERT_TRUE(robust->InitialiseAsShared(true).IsOK());
    EXPECT_EQ(robust->Unlock(), NX_ERR_THR_MISMATCH);
}

TEST(nxMutex, ConsistentIsRefusedWhileNobodyDied)
{
    nxMutex mutex;
    EXPECT_EQ(mutex.Consistent(), NX_ERR_UNSPECIFIED);
}

TEST(nxMutexShared, ExcludesAnotherProcess)
{
    for (bool robust : {false, true})
    {
        Shared<nxMutex> mutex;
        ASSERT_TRUE(mutex->InitialiseAsShared(robust).IsOK());
        ASSERT_TRUE(mutex->Lock().IsOK());
        EXPECT_EQ(RunInChild([&] { return mutex->TryLock() == NX_ERR_THR_LOCKED; }), 1);
        ASSERT_TRUE(mutex->Unlock().IsOK());
        EXPECT_EQ(RunInChild([&] { return mutex->Lock().IsOK() && mutex->Unlock().IsOK(); }), 1);
    }
}

TEST(nxMutexShared, IsNotRecursiveWhateverItWas)
{
    Shared<nxMutex> mutex(true);
    ASSERT_TRUE(mutex->InitialiseAsShared(false).IsOK());
    (void)mutex->Lock();
    EXPECT_EQ(mutex->TryLock(), NX_ERR_THR_LOCKED);
    (void)mutex->Unlock();
}

TEST(nxMutexShared, ReportsAKilledOwnerAndCanBeRepaired)
{
    Shared<nxMutex> mutex;
    ASSERT_TRUE(mutex->InitialiseAsShared(true).IsOK());
    for (bool tryLock : {false, true})
    {
        KillAnOwner(*mutex);
        EXPECT_EQ(tryLock ? mutex->TryLock() : mutex->Lock(), NX_ERR_THR_OWNER_DEAD);
        EXPECT_TRUE(mutex->Consistent().IsOK());
        EXPECT_TRUE(mutex->Unlock().IsOK());
        EXPECT_TRUE(TryLockElsewhere(*mutex).IsOK());
    }
}

TEST(nxMutexShared, UnlockedWithoutRepairIsLostForGood)
{
    Shared<nxMutex> mutex;
    ASSERT_TRUE(mutex->InitialiseAsShared(true).IsOK());
    KillAnOwner(*mutex);
    ASSERT_EQ(mutex->Lock(), NX_ERR_THR_OWNER_DEAD);
    ASSERT_TRUE(mutex->Unlock().IsOK());
    EXPECT_EQ(mutex->Lock(), NX_ERR_UNSPECIFIED);
    EXPECT_EQ(mutex->TryLock(), NX_ERR_UNSPECIFIED);
}

TEST(nxMutexGuards, HoldTheMutexForTheScopeIfToldTo)
{
    nxMutex mutex;
    {
        nxMutexGuard guard(mutex);
        EXPECT_EQ(TryLockElsewhere(mutex), NX_ERR_THR_LOCKED);
        nxConditionalMutexGuard leavesItAlone(mutex, false);
    }
    EXPECT_TRUE(TryLockElsewhere(mutex).IsOK());
    {
        nxConditionalMutexGuard guard(mutex, true);
        EXPECT_EQ(TryLockElsewhere(mutex), NX_ERR_THR_LOCKED);
    }
    EXPECT_TRUE(TryLockElsewhere(mutex).IsOK());

    (void)mutex.Lock();
    {
        nxConditionalMutexGuard neitherLocksNorUnlocks(mutex, false);
    }
    EXPECT_EQ(TryLockElsewhere(mutex), NX_ERR_THR_LOCKED);
    (void)mutex.Unlock();
}
