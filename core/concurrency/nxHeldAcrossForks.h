#pragma once

#include "core/concurrency/nxMutex.h"

/// @file
/// What becomes of a process-wide mutex in a forked child. For the sources of the library.

/// From now on a fork waits until nobody else holds the mutex, so that the child finds it open and what it guards
/// whole. Else a child, which has but one thread, could wait for ever for a thread that only its parent has.
///
/// Handlers take the mutexes of those that were registered last first. So whoever asks for another such mutex while
/// holding this one must be registered after it; for a mutex whose holders wait for nothing, any moment will do.
/// @tparam mutex  gives the mutex, which lives until the process has ended.
/// @return whether there was memory for it.
template <nxMutex& (*mutex)()>
bool HoldAcrossForks()
{
    auto const open = [] { (void)mutex().Unlock(); };
    return pthread_atfork([] { (void)mutex().Lock(); }, open, open) == 0;
}
