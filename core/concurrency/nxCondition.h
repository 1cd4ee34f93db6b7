#pragma once

#include "core/platform/nxExport.h"
#include "core/platform/nxPThread.h"
#include "core/vocabulary/nxErrorEnum.h"

/// @file
/// A condition variable with a mutex of its own.

/// Wakes threads of this process that wait for it. It carries no state: a signal that finds nobody waiting is
/// lost, a wait may end without a signal and then reports OK, and as the mutex is not in the caller's hands,
/// a signal between the look at his own state and the wait is missed. Waits that must not miss anything have
/// a time limit, or use nxConditionRaw.
///
/// Nothing here throws, allocates or logs. Every operation may be called from any thread; each takes the own
/// mutex.
class NX_CORE_API nxCondition
{
public:
    nxCondition();
    ~nxCondition();

    /// Wakes one waiting thread.
    /// @return OK, else NX_ERR_UNSPECIFIED. If it was the signal that failed, the own mutex stays locked.
    nxErrorEnum Signal();

    /// Wakes all waiting threads.
    /// @return as Signal().
    nxErrorEnum SignalAll();

    /// Waits without limit.
    /// @return OK, else NX_ERR_UNSPECIFIED. If it was the wait that failed, the own mutex stays locked.
    nxErrorEnum Wait();

    /// Waits for at most that long, on the wall clock, as nxSemaphore::TimedWait() does. Leaves the own mutex
    /// unlocked whatever happens.
    /// @return OK; NX_ERR_THR_TIMEDOUT; else NX_ERR_UNSPECIFIED, a deadline that the system refuses included.
    nxErrorEnum TimedWait(double seconds);

private:
    nxCondition(nxCondition const&) = delete;
    nxCondition& operator=(nxCondition const&) = delete;

    nxErrorEnum _Unlock();

    pthread_cond_t _condition;
    pthread_mutex_t _mutex;
};
