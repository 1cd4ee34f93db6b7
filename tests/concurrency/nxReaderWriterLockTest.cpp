// What each system answer of a reader-writer lock becomes: busy and deadlock have other codes than those of a
// mutex.
#include "core/concurrency/nxReaderWriterLock.h"
#include "core/concurrency/nxReaderWriterLockGuard_Read.h"
#include "core/concurrency/nxReaderWriterLockGuard_Write.h"

#include <gtest/gtest.h>

#include <thread>
#include <type_traits>

static_assert(sizeof(nxReaderWriterLock) == sizeof(pthread_rwlock_t));
static_assert(!std::is_copy_constructible_v<nxReaderWriterLock>);

namespace
{
bool ReadableElsewhere(nxReaderWriterLock& lock)
{
    bool readable = false;
    std::thread([&] { readable = lock.TryReadLock().IsOK() && lock.ReadUnlock().IsOK(); }).join();
    return readable;
}

bool WritableElsewhere(nxReaderWriterLock& lock)
{
    bool writable = false;
    std::thread([&] { writable = lock.TryWriteLock().IsOK() && lock.WriteUnlock().IsOK(); }).join();
    return writable;
}
} // namespace

TEST(nxReaderWriterLock, BusyIsUnspecified)
{
    nxReaderWriterLock lock;
    ASSERT_TRUE(lock.WriteLock().IsOK());
    EXPECT_EQ(lock.TryReadLock(), NX_ERR_UNSPECIFIED);
    EXPECT_EQ(lock.TryWriteLock(), NX_ERR_UNSPECIFIED);
    ASSERT_TRUE(lock.WriteUnlock().IsOK());

    ASSERT_TRUE(lock.ReadLock().IsOK());
    EXPECT_TRUE(lock.TryReadLock().IsOK());
    EXPECT_EQ(lock.TryWriteLock(), NX_ERR_UNSPECIFIED);
    EXPECT_TRUE(lock.ReadUnlock().IsOK());
    EXPECT_TRUE(lock.ReadUnlock().IsOK());
    EXPECT_TRUE(lock.TryWriteLock().IsOK());
    EXPECT_TRUE(lock.ReadUnlock().IsOK()); // one unlock under two names
}

TEST(nxReaderWriterLock, DeadlockIsLocked)
{
    nxReaderWriterLock lock;
    ASSERT_TRUE(lock.WriteLock().IsOK());
    EXPECT_EQ(lock.ReadLock(), NX_ERR_THR_LOCKED);
    EXPECT_EQ(lock.WriteLock(), NX_ERR_THR_LOCKED);
    EXPECT_TRUE(lock.WriteUnlock().IsOK());
}

TEST(nxReaderWriterLock, GuardsHoldForTheScope)
{
    nxReaderWriterLock lock;
    {
        nxReaderWriterLockGuard_Read first(lock);
        nxReaderWriterLockGuard_Read second(lock);
        EXPECT_TRUE(ReadableElsewhere(lock));
        EXPECT_FALSE(WritableElsewhere(lock));
    }
    {
        nxReaderWriterLockGuard_Write guard(lock);
        EXPECT_FALSE(ReadableElsewhere(lock));
        EXPECT_FALSE(WritableElsewhere(lock));
    }
    EXPECT_TRUE(WritableElsewhere(lock));
}
