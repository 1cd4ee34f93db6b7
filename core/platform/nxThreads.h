#pragma once

#include "core/platform/nxPThread.h"

#include <csignal>

/// @file
/// What the threads of a process need from the operating system beyond POSIX threads.

namespace nxPlatform
{
/// The operating system's number of the calling thread.
unsigned int GetCurrentThreadId();

/// A rest of about a microsecond, without a call of the system, between two looks at what another thread
/// changes.
void Relax();

/// Joins the thread if it has ended, and never waits. The thread's result is dropped.
/// @return what `pthread_join` would, or EBUSY while the thread runs.
int TryJoin(pthread_t thread);

/// While it lives, no signal that is sent from outside is handled on the calling thread, and threads started
/// by it never handle one. The signals of faults (SIGSEGV and its kind) stay open. What a thread of the
/// library did with a signal meant for the host would break the host's own rules for its signals.
class AsynchronousSignalsBlocked
{
public:
    AsynchronousSignalsBlocked();
    ~AsynchronousSignalsBlocked();

    AsynchronousSignalsBlocked(AsynchronousSignalsBlocked const&) = delete;
    AsynchronousSignalsBlocked& operator=(AsynchronousSignalsBlocked const&) = delete;

private:
    sigset_t _previous;
};
} // namespace nxPlatform
