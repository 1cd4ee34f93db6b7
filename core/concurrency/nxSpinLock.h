#pragma once

#include "core/platform/nxExport.h"
#include "core/platform/nxPThread.h"
#include "core/vocabulary/nxErrorEnum.h"

#include <cerrno>
#include <type_traits>

/// @file
/// A POSIX spin lock whose results speak the platform's error vocabulary.

/// Mutual exclusion by spinning, for sections of a few instructions that call nothing that may wait. Not
/// recursive: an owner that locks again spins for ever.
///
/// Holds one `pthread_spinlock_t` and nothing else, so it may lie in a mapped region. Nothing here throws or
/// allocates; only InitialiseAsShared() logs. Every operation may be called from any thread.
class NX_CORE_API nxSpinLock
{
public:
    nxSpinLock()
    {
        (void)pthread_spin_init(&_lock, PTHREAD_PROCESS_PRIVATE);
    }

    ~nxSpinLock()
    {
        (void)pthread_spin_destroy(&_lock);
    }

    /// Spins until the lock is free.
    /// @return OK, else NX_ERR_UNSPECIFIED.
    nxErrorEnum Lock()
    {
        return pthread_spin_lock(&_lock) == 0 ? nxErrorEnum() : nxErrorEnum(NX_ERR_UNSPECIFIED);
    }

    /// Never spins.
    /// @return OK; NX_ERR_THR_DEADLOCK where the system finds one; NX_ERR_THR_LOCKED when the lock is held;
    ///         else NX_ERR_UNSPECIFIED.
    nxErrorEnum TryLock()
    {
        switch (pthread_spin_trylock(&_lock))
        {
        case 0: return nxErrorEnum();
        case EDEADLK: return nxErrorEnum(NX_ERR_THR_DEADLOCK);
        case EBUSY: return nxErrorEnum(NX_ERR_THR_LOCKED);
        default: return nxErrorEnum(NX_ERR_UNSPECIFIED);
        }
    }

    /// @return NX_ERR_THR_MISMATCH when the system says that the caller is not the owner. Every other answer
    ///         is OK, failures included.
    nxErrorEnum Unlock()
    {
        return pthread_spin_unlock(&_lock) == EPERM ? nxErrorEnum(NX_ERR_THR_MISMATCH) : nxErrorEnum();
    }

    /// Makes a lock that lies in a shared region usable from every process that maps the region. Called once,
    /// by the process that made the region, before anybody else uses the lock. What the constructor made is
    /// replaced, not destroyed.
    /// @return OK or, with a log line, NX_ERR_INTERNAL.
    nxErrorEnum InitialiseAsShared();

private:
    friend class nxSpinLockGuard;

    nxSpinLock(nxSpinLock const&) = delete;
    nxSpinLock& operator=(nxSpinLock const&) = delete;

    pthread_spinlock_t _lock;
};

// Processes that share one may have been built apart, so its size and layout are agreed for ever.
static_assert(std::is_standard_layout_v<nxSpinLock> && sizeof(nxSpinLock) == sizeof(pthread_spinlock_t));
