#pragma once

#include "core/concurrency/nxReaderWriterLock.h"

/// @file
/// Holds an nxReaderWriterLock for writing for the length of a scope.

/// Locks in its constructor, unlocks in its destructor and drops both results, as nxMutexGuard does.
class NX_CORE_API [[nodiscard]] nxReaderWriterLockGuard_Write
{
public:
    explicit nxReaderWriterLockGuard_Write(nxReaderWriterLock& lock) : _lock(lock)
    {
        (void)_lock.WriteLock();
    }

    ~nxReaderWriterLockGuard_Write()
    {
        (void)_lock.WriteUnlock();
    }

private:
    nxReaderWriterLockGuard_Write() = delete;
    nxReaderWriterLockGuard_Write(nxReaderWriterLockGuard_Write const&) = delete;
    nxReaderWriterLockGuard_Write& operator=(nxReaderWriterLockGuard_Write const&) = delete;

    nxReaderWriterLock& _lock;
};
