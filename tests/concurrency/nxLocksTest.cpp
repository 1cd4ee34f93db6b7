// What each system answer of a mutex, a spin lock and a reader-writer lock becomes, in one process and between two, and
// what the guards do.
#include "core/concurrency/nxConditionalMutexGuard.h"
#include "core/concurrency/nxMutexGuard.h"
#include "core/concurrency/nxReaderWriterLockGuard_Read.h"
#include "core/concurrency/nxReaderWriterLockGuard_Write.h"
#include "core/concurrency/nxSpinLockGuard.h"
#include "tests/concurrency/RunTogether.h"
#include "tests/concurrency/SharedMemory.h"

#include <gtest/gtest.h>

#include <csignal>
#include <type_traits>

static_assert(sizeof(nxMutex) == sizeof(pthread_mutex_t));
static_assert(!std::is_polymorphic_v<nxMutex> && !std::is_copy_constructible_v<nxMutex>);
static_assert(!std::is_copy_constructible_v<nxMutexGuard> && !std::is_default_constructible_v<nxMutexGuard>);
static_assert(sizeof(nxSpinLock) == sizeof(pthread_spinlock_t));
static_assert(!std::is_polymorphic_v<nxSpinLock> && !std::is_copy_constructible_v<nxSpinLock>);
static_assert(sizeof(nxReaderWriterLock) == sizeof(pthread_rwlock_t));
static_assert(!std::is_copy_constructible_v<nxReaderWriterLock>);

namespace
{
constinit nxMutex readyBeforeAnyCode;

// A child takes the mutex and is killed with it.
void KillAnOwner(nxMutex& mutex)
{
    auto const lockAndDie = [&] { return mutex.Lock().IsOK() && raise(SIGKILL) == 0; };
    ASSERT_EQ(RunInChild(lockAndDie), 128 + SIGKILL);
}

// Between two processes; the lock is free before and after.
template <typename Lock>
void ExpectExclusionOfAChild(Lock& lock)
{
    ASSERT_TRUE(lock.Lock().IsOK());
    EXPECT_EQ(RunInChild([&] { return lock.TryLock() == NX_ERR_THR_LOCKED; }), 1);
    ASSERT_TRUE(lock.Unlock().IsOK());
    EXPECT_EQ(RunInChild([&] { return lock.Lock().IsOK() && lock.Unlock().IsOK(); }), 1);
}
} // namespace

TEST(nxMutex, HeldElsewhereIsLockedAndOnlyTheRecursiveOneLocksAgain)
{
    nxMutex plain;
    nxMutex notRecursive(false);
    nxMutex recursive(true);
    for (nxMutex* mutex : {&readyBeforeAnyCode, &plain, &notRecursive, &recursive})
    {
        EXPECT_TRUE(mutex->Lock().IsOK());
        EXPECT_EQ(TryLockElsewhere(*mutex), NX_ERR_THR_LOCKED);
        EXPECT_EQ(mutex->TryLock(), mutex == &recursive ? NX_UNDEFINED : NX_ERR_THR_LOCKED);
        EXPECT_TRUE(mutex->Unlock().IsOK());
        if (mutex == &recursive)
        {
            EXPECT_EQ(TryLockElsewhere(*mutex), NX_ERR_THR_LOCKED);
            EXPECT_EQ(Elsewhere([&] { return mutex->Unlock(); }), NX_ERR_THR_MISMATCH);
            EXPECT_TRUE(mutex->Unlock().IsOK());
        }
        EXPECT_TRUE(TryLockElsewhere(*mutex).IsOK());
        EXPECT_EQ(mutex->Consistent(), NX_ERR_UNSPECIFIED); // nobody has died
    }
}

TEST(nxMutexShared, ExcludesAnotherProcessAndIsNotRecursiveWhateverItWas)
{
    for (bool robust : {false, true})
    {
        Shared<nxMutex> mutex(true);
        ASSERT_TRUE(mutex->InitialiseAsShared(robust).IsOK());
        ExpectExclusionOfAChild(*mutex);
        (void)mutex->Lock();
        EXPECT_EQ(mutex->TryLock(), NX_ERR_THR_LOCKED);
        (void)mutex->Unlock();
        if (robust)
        {
            EXPECT_EQ(mutex->Unlock(), NX_ERR_THR_MISMATCH);
        }
    }
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
    KillAnOwner(*mutex); // unlocked without repair it is lost for good
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
        nxConditionalMutexGuard(mutex, false); // neither locks nor unlocks
        EXPECT_EQ(TryLockElsewhere(mutex), NX_ERR_THR_LOCKED);
    }
    EXPECT_TRUE(TryLockElsewhere(mutex).IsOK());
    {
        nxConditionalMutexGuard guard(mutex, true);
        EXPECT_EQ(TryLockElsewhere(mutex), NX_ERR_THR_LOCKED);
    }
    EXPECT_TRUE(TryLockElsewhere(mutex).IsOK());
}

TEST(nxSpinLock, BusyIsLockedAndTheGuardGivesBack)
{
    Shared<nxSpinLock> lock;
    {
        nxSpinLockGuard guard(*lock);
        EXPECT_EQ(lock->TryLock(), NX_ERR_THR_LOCKED);
    }
    EXPECT_TRUE(lock->TryLock().IsOK());
    EXPECT_TRUE(lock->Unlock().IsOK());
    ASSERT_TRUE(lock->InitialiseAsShared().IsOK());
    ExpectExclusionOfAChild(*lock);
}

// Busy and deadlock have other codes than those of a mutex.
TEST(nxReaderWriterLock, BusyIsUnspecifiedAndDeadlockIsLocked)
{
    nxReaderWriterLock lock;
    ASSERT_TRUE(lock.WriteLock().IsOK());
    EXPECT_EQ(lock.TryReadLock(), NX_ERR_UNSPECIFIED);
    EXPECT_EQ(lock.TryWriteLock(), NX_ERR_UNSPECIFIED);
    EXPECT_EQ(lock.ReadLock(), NX_ERR_THR_LOCKED);
    EXPECT_EQ(lock.WriteLock(), NX_ERR_THR_LOCKED);
    ASSERT_TRUE(lock.WriteUnlock().IsOK());

    ASSERT_TRUE(lock.ReadLock().IsOK());
    EXPECT_TRUE(lock.TryReadLock().IsOK());
    EXPECT_EQ(lock.TryWriteLock(), NX_ERR_UNSPECIFIED);
    EXPECT_TRUE(lock.ReadUnlock().IsOK());
    EXPECT_TRUE(lock.ReadUnlock().IsOK());
    {
        nxReaderWriterLockGuard_Read first(lock);
        nxReaderWriterLockGuard_Read second(lock);
        EXPECT_EQ(lock.TryWriteLock(), NX_ERR_UNSPECIFIED);
    }
    {
        nxReaderWriterLockGuard_Write guard(lock);
        EXPECT_EQ(lock.TryReadLock(), NX_ERR_UNSPECIFIED);
    }
    EXPECT_TRUE(lock.TryWriteLock().IsOK());
    EXPECT_TRUE(lock.ReadUnlock().IsOK()); // one unlock under two names
}
