#pragma once

#include "core/concurrency/nxReaderWriterLock.h"

/// @file
/// Holds an nxReaderWriterLock for reading for the length of a scope.

/// Locks in its constructor, unlocks in its destructor and drops both results, as nxMutexGuard does.
class NX_CORE_API [[nodiscard]] nxReaderWriterLockGuard_Read
{
public:
    explicit nxReaderWriterLockGuard_Read(nxReaderWriterLock& lock) : _lock(lock)
    {
        (void)_lock.ReadLock();
    }

    ~nxReaderWriterLockGuard_Read()
    {
        (void)_lock.ReadUnlock();
    }

private:
    nxReaderWriterLockGuard_Read() = delete;
    nxReaderWriterLockGuard_Read(nxReaderWriterLockGuard_Read const&) = delete;
    nxReaderWriterLockGuard_Read& operator=(nxReaderWriterLockGuard_Read const&) = delete;

    nxReaderWriterLock& _lock;
};
