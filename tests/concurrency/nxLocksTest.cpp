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

namespace
{
constinit nxMutex readyBeforeAnyCode;

// Between two processes; the lock is free before and after.
template <typename Lock>
void ExpectExclusionOfAChild(Lock& lock)
{
    EXPECT_TRUE(lock.Lock().IsOK());
    EXPECT_EQ(RunInChild([&] { return lock.TryLock() == NX_ERR_THR_LOCKED; }), 1);
    pid_t const child = StartChild([&] { return lock.Lock().IsOK() && lock.Unlock().IsOK(); });
    usleep(20000); // it waits by now
    EXPECT_TRUE(lock.Unlock().IsOK());
    EXPECT_EQ(WaitForChild(child), 1);
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

TEST(nxMutex, SharedItExcludesAnotherProcessAndIsNotRecursiveWhateverItWas)
{
    for (bool robust : {false, true})
    {
        nxMutex& mutex = MakeShared<nxMutex>(true);
        ASSERT_TRUE(mutex.InitialiseAsShared(robust).IsOK());
        ExpectExclusionOfAChild(mutex);
        (void)mutex.Lock();
        EXPECT_EQ(mutex.TryLock(), NX_ERR_THR_LOCKED);
        (void)mutex.Unlock();
        EXPECT_TRUE(!robust || mutex.Unlock() == NX_ERR_THR_MISMATCH);
    }
}

// That killed processes are owners too is among the figures in tests/faults/.
TEST(nxMutex, ARobustOneReportsADeadOwnerAndCanBeRepaired)
{
    nxMutex mutex;
    ASSERT_TRUE(mutex.InitialiseAsShared(true).IsOK());
    auto const dieAsOwner = [&] { EXPECT_TRUE(Elsewhere([&] { return mutex.Lock(); }).IsOK()); };
    dieAsOwner();
    EXPECT_EQ(mutex.TryLock(), NX_ERR_THR_OWNER_DEAD);
    EXPECT_TRUE(mutex.Consistent().IsOK() && mutex.Unlock().IsOK());
    dieAsOwner();
    EXPECT_EQ(mutex.Lock(), NX_ERR_THR_OWNER_DEAD);
    ASSERT_TRUE(mutex.Unlock().IsOK()); // without repair it is lost for good
    EXPECT_EQ(mutex.Lock(), NX_ERR_UNSPECIFIED);
    EXPECT_EQ(mutex.TryLock(), NX_ERR_UNSPECIFIED);
}

TEST(nxMutex, GuardsHoldItForTheScopeIfToldTo)
{
    nxMutex mutexes[2];
    {
        nxMutexGuard guard(mutexes[0]);
        {
            nxConditionalMutexGuard idleGuard(mutexes[0], false); // neither locks nor unlocks
        }
        nxConditionalMutexGuard otherGuard(mutexes[1], true);
        for (nxMutex& mutex : mutexes)
            EXPECT_EQ(TryLockElsewhere(mutex), NX_ERR_THR_LOCKED);
    }
    for (nxMutex& mutex : mutexes)
        EXPECT_TRUE(TryLockElsewhere(mutex).IsOK());
}

TEST(nxSpinLock, BusyIsLockedAndTheGuardGivesBack)
{
    nxSpinLock& lock = MakeShared<nxSpinLock>();
    {
        nxSpinLockGuard guard(lock);
        EXPECT_EQ(lock.TryLock(), NX_ERR_THR_LOCKED);
    }
    EXPECT_TRUE(lock.TryLock().IsOK());
    EXPECT_TRUE(lock.Unlock().IsOK());
    ASSERT_TRUE(lock.InitialiseAsShared().IsOK());
    ExpectExclusionOfAChild(lock);
}

// Busy and deadlock have other codes than those of a mutex.
TEST(nxReaderWriterLock, BusyIsUnspecifiedAndDeadlockIsLocked)
{
    nxReaderWriterLock lock;
    {
        nxReaderWriterLockGuard_Write guard(lock);
        EXPECT_EQ(lock.TryReadLock(), NX_ERR_UNSPECIFIED);
        EXPECT_EQ(lock.TryWriteLock(), NX_ERR_UNSPECIFIED);
        EXPECT_EQ(lock.ReadLock(), NX_ERR_THR_LOCKED);
        EXPECT_EQ(lock.WriteLock(), NX_ERR_THR_LOCKED);
    }
    {
        nxReaderWriterLockGuard_Read guard(lock);
        EXPECT_TRUE(lock.TryReadLock().IsOK() && lock.ReadUnlock().IsOK());
        EXPECT_TRUE(lock.ReadLock().IsOK() && lock.ReadUnlock().IsOK());
        EXPECT_EQ(lock.TryWriteLock(), NX_ERR_UNSPECIFIED);
    }
    EXPECT_TRUE(lock.TryWriteLock().IsOK() && lock.WriteUnlock().IsOK());
    EXPECT_TRUE(lock.WriteLock().IsOK() && lock.ReadUnlock().IsOK()); // one unlock under two names
}
