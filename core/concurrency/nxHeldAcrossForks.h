#pragma once

#include "core/concurrency/nxMutex.h"

/// @file
/// What becomes of a process-wide mutex in a forked child. For the sources of the library.

/// Mutexes that a fork waits for, so that the child finds them open and what they guard whole. Else a child, which has
/// but one thread, could wait for ever for a thread that only its parent has.
///
/// For mutexes whose holders ask for no other one, which may then be asked for under any lock of the library's.
class nxHeldAcrossForks
{
public:
    nxHeldAcrossForks() = delete;

    /// Called while the library is loaded.
    /// @param mutex  gives the mutex, which lives until the process has ended
    /// @return whether there is room for it
    static bool Add(nxMutex& (*mutex)());

    /// Has forks wait, from the first call on. Before a fork the handlers of those that registered last run first, so
    /// whoever asks for one of these mutexes under a lock that a fork waits for too calls this, and registers then.
    static bool RegisterHandlers();
};
