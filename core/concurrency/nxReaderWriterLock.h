#pragma once

#include "core/platform/nxExport.h"
#include "core/platform/nxPThread.h"
#include "core/vocabulary/nxErrorEnum.h"

/// @file
/// A POSIX reader-writer lock whose results speak the platform's error vocabulary.

/// Any number of readers or one writer, between the threads of one process. Who goes first when both wait is
/// the system's choice.
///
/// Holds one `pthread_rwlock_t` and nothing else. Nothing here throws, allocates or logs. Every operation may
/// be called from any thread.
class NX_CORE_API nxReaderWriterLock
{
public:
    nxReaderWriterLock();
    ~nxReaderWriterLock();

    /// Waits while a writer holds the lock.
    /// @return OK; NX_ERR_THR_LOCKED when the caller is itself that writer; NX_ERR_THR_RESOURCE when there
    ///         are too many readers; else NX_ERR_UNSPECIFIED.
    nxErrorEnum ReadLock();

    /// Never waits.
    /// @return OK, or NX_ERR_UNSPECIFIED for whatever reason the lock was not obtained, a busy lock included.
    nxErrorEnum TryReadLock();

    /// The same as WriteUnlock().
    nxErrorEnum ReadUnlock();

    /// Waits while anybody holds the lock.
    /// @return OK; NX_ERR_THR_LOCKED when the caller is itself the writer; else NX_ERR_UNSPECIFIED.
    nxErrorEnum WriteLock();

    /// Never waits.
    /// @return OK, or NX_ERR_UNSPECIFIED for whatever reason the lock was not obtained, a busy lock included.
    nxErrorEnum TryWriteLock();

    /// Gives back what the caller holds, for reading or for writing.
    /// @return OK; NX_ERR_THR_PERMISSION where the system finds that the caller holds nothing; else
    ///         NX_ERR_UNSPECIFIED.
    nxErrorEnum WriteUnlock();

private:
    nxReaderWriterLock(nxReaderWriterLock const&) = delete;
    nxReaderWriterLock& operator=(nxReaderWriterLock const&) = delete;

    pthread_rwlock_t _lock;
};
