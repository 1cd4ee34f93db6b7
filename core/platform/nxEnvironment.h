#pragma once

#include <string>

/// @file
/// What the system knows about this process: its environment, its number, and the host that it runs on.
///
/// The environment of a process has no lock of its own, and a change of it moves memory under whoever reads it.
/// Each call here that touches it holds the process-wide lock of `nxEnvironmentLock.h` while it runs, so none may
/// be made by a thread that holds that lock already.

namespace nxPlatform
{

/// Copies the value of an environment variable.
///
/// @param buffer  receives the value with its terminating NUL when both fit; is left alone otherwise.
/// @param size    bytes that `buffer` has room for.
/// @return the length of the value without the NUL when it was copied; the room that it needs, with the NUL, when
///         `size` was too small; 0 for a variable that is empty or not set.
unsigned int GetEnvironmentVariableA(char const* name, char* buffer, unsigned int size);

/// Sets an environment variable of this process.
///
/// An empty value removes the variable: the two can't be told apart by GetEnvironmentVariableA(). A change of TZ
/// holds for the calendar from then on.
/// @return false, with nothing changed, for a name that is empty or holds "=", and when memory runs out.
bool SetEnvironmentVariableA(char const* name, char const* value);

/// @return the number of this process; in a forked child the child's own.
unsigned int _getpid();

/// Longest host name that the system keeps, with its terminating NUL.
constexpr unsigned int maximumHostNameSize = 65;

/// Copies the host's name, which may have a domain behind a dot.
///
/// @param buffer  always ends with a NUL afterwards, and is empty after a failure.
/// @param size    bytes that `buffer` has room for, at least 1.
/// @return 0, or the system's error number.
int GetHostName(char* buffer, unsigned int size);

/// Asks the system's resolver for a host, which may take as long as the resolver's own limits allow.
///
/// @return the first IPv4 address in the order in which the resolver gave them, as dotted text; empty when the
///         name is not known.
std::string GetHostAddress(char const* hostName);

} // namespace nxPlatform
