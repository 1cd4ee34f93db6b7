#pragma once

#include <string>

/// @file
/// Mutexes and semaphores that the processes of one user share by name, in the shape of the Windows calls.

namespace nxPlatform
{
/// A named object, null when it could not be had. It stays open until the process ends and is never closed,
/// so two handles of one name in one process are the same. A child of fork() shares its parent's objects.
///
/// An object lives as long as a process has it open. When the last of them has ended, by whatever cause, the
/// next to ask for the name gets a new object: a process that was killed leaves neither a lock nor a count
/// behind. What stays until the machine starts anew is a file of one page with no meaning, in /dev/shm. Closing
/// descriptors that are not one's own, as some daemons do, makes the process look as if it had ended.
///
/// The file has to stay while a process has the object open: after somebody has removed it, the next to ask for the
/// name gets an object of its own. systemd removes the files of a user who is no system user when he logs out, unless
/// its logind has RemoveIPC=no or the user lingers.
///
/// Names are any bytes of any length, the empty one too. A mutex and a semaphore of one name are two objects.
using NamedObject = struct NamedObjectState*;

/// How long to wait, in milliseconds: without limit.
constexpr unsigned int infinite = 0xFFFFFFFF;

enum class WaitResult
{
    object, ///< The mutex is held, or one was taken from the count.
    timeout,
    failed
};

/// Opens the mutex or creates it, owned by nobody.
NamedObject CreateMutexA(std::string const& name);

/// Gives up one level of ownership.
/// @return false when the calling thread is not the owner, and nothing happens then.
bool ReleaseMutex(NamedObject mutex);

/// @return null when there is no semaphore of that name.
NamedObject OpenSemaphoreA(std::string const& name);

/// Opens the semaphore, with the counts that it has, or creates it.
/// @return null too for a maximum of zero, an initial count above the maximum, and either of them above 2^31
///         - 1.
NamedObject CreateSemaphoreA(unsigned int initialCount, unsigned int maximumCount, std::string const& name);

/// Adds one to the count.
/// @return false when it stands at its maximum, and nothing happens then.
bool ReleaseSemaphore(NamedObject semaphore);

/// Takes the mutex, which its owner may take again, or one from the semaphore's count. A mutex whose owner
/// died without releasing it is simply taken. Time is that of the monotonic clock; signal handlers don't end
/// the wait.
/// @param milliseconds  for a semaphore; the wait for a mutex is always without limit.
WaitResult WaitForSingleObject(NamedObject object, unsigned int milliseconds);
} // namespace nxPlatform
