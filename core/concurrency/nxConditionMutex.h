#pragma once

#include "core/concurrency/nxMutex.h"

/// @file
/// A mutex and a condition in one object.

/// An nxMutex with a condition that belongs to it, for the style: lock, look at the state, Wait(). It carries
/// no state: a signal that finds nobody waiting is lost, and a wait may end without a signal and then reports
/// OK.
///
/// Nothing here throws, allocates or logs. Every operation may be called from any thread.
class NX_CORE_API nxConditionMutex : public nxMutex
{
public:
    nxConditionMutex();
    ~nxConditionMutex();

    /// Waits without limit. Called with this mutex held.
    /// @return OK, and the mutex is held; else NX_ERR_UNSPECIFIED, and it is not.
    nxErrorEnum Wait();

    /// Locks the mutex, drops what that gave, and waits.
    /// @return as Wait(): on OK the caller holds the mutex and has to unlock it.
    nxErrorEnum LockAndWait();

    /// Wakes one waiting thread. Takes no lock; a caller that holds the mutex misses nobody who is about to
    /// wait.
    /// @return OK, else NX_ERR_UNSPECIFIED.
    nxErrorEnum Signal();

private:
    nxConditionMutex(nxConditionMutex const&) = delete;
    nxConditionMutex& operator=(nxConditionMutex const&) = delete;

    pthread_cond_t _condition;
};
