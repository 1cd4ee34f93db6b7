#pragma once

#include "core/platform/nxExport.h"
#include "core/platform/nxPThread.h"
#include "core/vocabulary/nxErrorEnum.h"

#include <type_traits>

class nxMutex;

/// @file
/// A condition variable for use with the caller's mutex.

/// Wakes threads that wait for it with the caller's mutex held, so that no signal falls between the look at
/// the caller's state and the wait. It carries no state: a signal that finds nobody waiting is lost, and a
/// wait may end without a signal and then reports OK. Callers look at their state again after each wait.
///
/// Holds one `pthread_cond_t` and nothing else, so it may lie in a mapped region and, after
/// InitialiseAsShared(), wake other processes. Nothing here throws; only InitialiseAsShared() logs. Every
/// operation may be called from any thread.
class NX_CORE_API nxConditionRaw
{
public:
    nxConditionRaw();

    /// Does nothing to a copy made by assignment: that is not the condition but only looks like it.
    ~nxConditionRaw();

    /// Copies the bytes. A condition is the place in memory that its waiters know, so the copy is only to be
    /// looked at: nobody must wait for it or signal it.
    nxConditionRaw& operator=(nxConditionRaw const& other);

    /// Wakes one waiting thread.
    /// @return OK, else NX_ERR_UNSPECIFIED.
    nxErrorEnum Signal();

    /// Wakes all waiting threads.
    /// @return OK, else NX_ERR_UNSPECIFIED.
    nxErrorEnum SignalAll();

    /// Waits without limit. Called with the mutex held and returns with it held.
    /// @return OK, else NX_ERR_UNSPECIFIED, for instance for a robust or recursive mutex that the caller does
    ///         not hold.
    nxErrorEnum Wait(nxMutex& mutex);

    /// Waits for at most that long, on the wall clock, as nxSemaphore::TimedWait() does. Called with the
    /// mutex held and returns with it held, after a timeout too.
    /// @return OK; NX_ERR_THR_TIMEDOUT; else NX_ERR_UNSPECIFIED, a deadline that the system refuses included.
    nxErrorEnum TimedWait(nxMutex& mutex, double seconds);

    /// Makes a condition that lies in a shared region usable from every process that maps the region,
    /// together with an nxMutex that is shared too. Called once, by the process that made the region, before
    /// anybody else uses the condition. What the constructor made is replaced, not destroyed.
    /// @return OK or, with a log line, NX_ERR_UNSPECIFIED.
    nxErrorEnum InitialiseAsShared();

private:
    nxConditionRaw(nxConditionRaw const&) = delete;

    int _CreateShared();

    pthread_cond_t _condition;
};

// Processes that share one may have been built apart, so its size and layout are agreed for ever.
static_assert(std::is_standard_layout_v<nxConditionRaw> && sizeof(nxConditionRaw) == sizeof(pthread_cond_t));
