#pragma once

#include "core/platform/nxExport.h"
#include "core/platform/nxPThread.h"
#include "core/vocabulary/nxErrorEnum.h"

#include <cerrno>
#include <ctime>
#include <type_traits>

/// @file
/// A POSIX counting semaphore whose results speak the platform's error vocabulary.

/// A count that never falls below zero: Post() raises it, the waits take one from it or wait until they can.
/// For the threads of a process or, after InitialiseAsShared(), of several.
///
/// Holds one `sem_t` and nothing else, so it may lie in a mapped region. Nothing here throws or allocates;
/// only InitialiseAsShared() logs. Every operation may be called from any thread and clears `errno`.
///
/// Waits are not restarted after a signal's handler ran: they report NX_ERR_THR_INTERRUPTED.
class NX_CORE_API nxSemaphore
{
public:
    /// For the threads of this process. A count that the system refuses is reported on standard output, and
    /// every wait on the semaphore is then in vain.
    explicit nxSemaphore(unsigned int initialCount);

    /// A semaphore on which somebody waits must not be destroyed.
    ~nxSemaphore()
    {
        errno = 0;
        (void)sem_destroy(&_semaphore);
    }

    /// Makes a semaphore that lies in a shared region usable from every process that maps the region. Called
    /// once, by the process that made the region, before anybody else uses the semaphore. What the
    /// constructor made is forgotten, not destroyed.
    /// @return OK or, with a log line, NX_ERR_THR_UNSUPPORTED.
    nxErrorEnum InitialiseAsShared(unsigned int initialCount);

    /// Raises the count by one and wakes somebody who waits.
    /// @return OK; NX_ERR_UNSPECIFIED for every failure, a count at the system's limit among them.
    nxErrorEnum Post()
    {
        errno = 0;
        return sem_post(&_semaphore) == 0 ? nxErrorEnum() : nxErrorEnum(NX_ERR_UNSPECIFIED);
    }

    /// Takes one from the count, and waits without limit while it is zero.
    /// @return OK; NX_ERR_THR_UNSUPPORTED, NX_ERR_THR_DEADLOCK or NX_ERR_THR_INTERRUPTED as the system says.
    ///         Every other failure counts as OK.
    nxErrorEnum Wait()
    {
        errno = 0;
        return sem_wait(&_semaphore) == 0 ? nxErrorEnum() : _WaitFailure(errno);
    }

    /// Takes one from the count, never waits.
    /// @return OK; NX_ERR_THR_LOCKED when the count is zero; else as Wait().
    nxErrorEnum TryWait()
    {
        errno = 0;
        return sem_trywait(&_semaphore) == 0 ? nxErrorEnum() : _TryWaitFailure(errno);
    }

    /// Takes one from the count, and waits for at most that long while it is zero. The time is cut to whole
    /// nanoseconds and the clock to whole milliseconds, so that a wait may be up to a millisecond short; it
    /// stands on the wall clock and is as much longer or shorter as somebody sets that back or forward.
    /// @param seconds  up to 2147483647, 68 years; zero and less do not wait, down to -2^31. The whole part is kept in 32
    ///                 bits: a larger number may end the wait at once, and one further below come out as a wait. For a
    ///                 wait without limit there is Wait().
    /// @return OK; NX_ERR_THR_TIMEDOUT; NX_ERR_INVALID_PARAMETER for a number that is none and, about once in
    ///         a thousand waits, for a deadline that the system refuses, without waiting; NX_ERR_THR_DEADLOCK
    ///         or NX_ERR_THR_INTERRUPTED as the system says. Every other failure counts as a timeout.
    nxErrorEnum TimedWait(double seconds);

    /// The same in microseconds; the whole seconds in them are kept in 32 bits, so that more than 2147483647 of them may
    /// end the wait at once.
    nxErrorEnum TimedWait_Microseconds(unsigned long long const& microseconds);

    /// The count at some moment during the call, 0 when the system can't tell.
    int GetValue();

private:
    nxSemaphore(nxSemaphore const&) = delete;
    nxSemaphore& operator=(nxSemaphore const&) = delete;

    nxErrorEnum _TimedWait(std::timespec& relative);

    static nxErrorEnum _WaitFailure(int error);
    static nxErrorEnum _TryWaitFailure(int error);

    sem_t _semaphore;
};

// Processes that share one may have been built apart, so its size and layout are agreed for ever.
static_assert(std::is_standard_layout_v<nxSemaphore> && sizeof(nxSemaphore) == sizeof(sem_t));
