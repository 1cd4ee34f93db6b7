#pragma once

#include "core/platform/nxExport.h"
#include "core/platform/nxPThread.h"
#include "core/vocabulary/nxErrorEnum.h"

#include <cerrno>
#include <type_traits>

/// @file
/// A POSIX mutex whose results speak the platform's error vocabulary.

/// Mutual exclusion between threads or, after InitialiseAsShared(), between processes.
///
/// Holds one `pthread_mutex_t` and nothing else, so it may lie in a mapped region. Nothing here throws or
/// allocates; only InitialiseAsShared() logs. Every operation may be called from any thread.
///
/// @code
/// nxMutexGuard guard(mutex); // unlocked when the scope ends
/// ++count;
/// @endcode
class NX_CORE_API nxMutex
{
public:
    /// A mutex of the system's default type. Constant-initialised, so a static mutex is ready before any code
    /// runs.
    constexpr nxMutex() = default;

    /// @param recursive  true lets the owner lock again; each Lock() then needs its own Unlock(). With false
    ///                   the same as the default constructor.
    explicit nxMutex(bool recursive);

    /// A mutex that somebody still holds must not be destroyed.
    ~nxMutex()
    {
        (void)pthread_mutex_destroy(&_mutex);
    }

    /// Waits until the mutex is free.
    /// @return OK; NX_ERR_THR_OWNER_DEAD when the last owner of a robust mutex died (the caller now holds the
    ///         mutex and must call Consistent()); else NX_ERR_UNSPECIFIED.
    nxErrorEnum Lock()
    {
        switch (pthread_mutex_lock(&_mutex))
        {
        case 0: return nxErrorEnum();
        case EOWNERDEAD: return nxErrorEnum(NX_ERR_THR_OWNER_DEAD);
        default: return nxErrorEnum(NX_ERR_UNSPECIFIED);
        }
    }

    /// Never waits.
    /// @return OK; NX_ERR_THR_LOCKED when somebody else holds it; NX_ERR_THR_OWNER_DEAD when the last owner
    ///         died (the caller now holds the mutex and must call Consistent()); else NX_ERR_UNSPECIFIED.
    nxErrorEnum TryLock()
    {
        switch (pthread_mutex_trylock(&_mutex))
        {
        case 0: return nxErrorEnum();
        case EBUSY: return nxErrorEnum(NX_ERR_THR_LOCKED);
        case EOWNERDEAD: return nxErrorEnum(NX_ERR_THR_OWNER_DEAD);
        default: return nxErrorEnum(NX_ERR_UNSPECIFIED);
        }
    }

    /// @return OK; NX_ERR_THR_MISMATCH when the mutex knows its owner (recursive or robust) and that is not
    ///         the caller; else NX_ERR_UNSPECIFIED.
    nxErrorEnum Unlock()
    {
        switch (pthread_mutex_unlock(&_mutex))
        {
        case 0: return nxErrorEnum();
        case EPERM: return nxErrorEnum(NX_ERR_THR_MISMATCH);
        default: return nxErrorEnum(NX_ERR_UNSPECIFIED);
        }
    }

    /// Makes a mutex that lies in a shared region usable from every process that maps the region. Called
    /// once, by the process that made the region, before anybody else uses the mutex. What the constructor
    /// made is replaced, not destroyed; the shared mutex is never recursive.
    /// @param robust  true reports an owner's death to the next one who locks, instead of blocking him for
    ///                ever.
    /// @return OK or NX_ERR_UNSPECIFIED; a failure is logged, and so is the outcome of making the mutex
    ///         robust.
    nxErrorEnum InitialiseAsShared(bool robust);

    /// Declares what a robust mutex protects to be repaired. The owner calls it after NX_ERR_THR_OWNER_DEAD
    /// and before Unlock(); a mutex that is unlocked without it can never be locked again.
    /// @return OK, else NX_ERR_UNSPECIFIED.
    nxErrorEnum Consistent();

private:
    friend class nxConditionMutex;
    friend class nxConditionRaw;

    nxMutex(nxMutex const&) = delete;
    nxMutex& operator=(nxMutex const&) = delete;

    int _CreateShared(bool robust);

    pthread_mutex_t _mutex = PTHREAD_MUTEX_INITIALIZER;
};

// Processes that share one may have been built apart, so its size and layout are agreed for ever.
static_assert(std::is_standard_layout_v<nxMutex> && sizeof(nxMutex) == sizeof(pthread_mutex_t));
