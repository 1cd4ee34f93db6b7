#include "core/concurrency/nxReaderWriterLock.h"

#include <cerrno>

nxReaderWriterLock::nxReaderWriterLock()
{
    (void)pthread_rwlock_init(&_lock, nullptr);
}

nxReaderWriterLock::~nxReaderWriterLock()
{
    (void)pthread_rwlock_destroy(&_lock);
}

nxErrorEnum nxReaderWriterLock::ReadLock()
{
    switch (pthread_rwlock_rdlock(&_lock))
    {
    case 0: return nxErrorEnum();
    case EDEADLK: return nxErrorEnum(NX_ERR_THR_LOCKED); // not NX_ERR_THR_DEADLOCK
    case EAGAIN: return nxErrorEnum(NX_ERR_THR_RESOURCE);
    default: return nxErrorEnum(NX_ERR_UNSPECIFIED);
    }
}

nxErrorEnum nxReaderWriterLock::TryReadLock()
{
    // Busy reports UNSPECIFIED here: callers learn only whether they got the lock.
    return pthread_rwlock_tryrdlock(&_lock) == 0 ? nxErrorEnum() : nxErrorEnum(NX_ERR_UNSPECIFIED);
}

nxErrorEnum nxReaderWriterLock::ReadUnlock()
{
    return WriteUnlock();
}

nxErrorEnum nxReaderWriterLock::WriteLock()
{
    switch (pthread_rwlock_wrlock(&_lock))
    {
    case 0: return nxErrorEnum();
    case EDEADLK: return nxErrorEnum(NX_ERR_THR_LOCKED); // not NX_ERR_THR_DEADLOCK
    default: return nxErrorEnum(NX_ERR_UNSPECIFIED);
    }
}

nxErrorEnum nxReaderWriterLock::TryWriteLock()
{
    // Busy reports UNSPECIFIED here, as in TryReadLock().
    return pthread_rwlock_trywrlock(&_lock) == 0 ? nxErrorEnum() : nxErrorEnum(NX_ERR_UNSPECIFIED);
}

nxErrorEnum nxReaderWriterLock::WriteUnlock()
{
    switch (pthread_rwlock_unlock(&_lock))
    {
    case 0: return nxErrorEnum();
    case EPERM: return nxErrorEnum(NX_ERR_THR_PERMISSION);
    default: return nxErrorEnum(NX_ERR_UNSPECIFIED);
    }
}
