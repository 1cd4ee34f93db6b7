#pragma once

#include "core/concurrency/nxNonCopyable.h"
#include "core/platform/nxExport.h"
#include "core/platform/nxNamedObjects.h"
#include "core/vocabulary/nxErrorEnum.h"

#include <string>

/// @file
/// A counting semaphore that the processes of one user share by its name.

/// A count between zero and a maximum, shared by processes that know nothing of each other but a name. Nobody
/// owns what he took: a process that ends does not give it back, only when the last one that named the
/// semaphore has ended is the count forgotten.
///
/// The destructor does not close the system's object, which lives as nxNamedObjects.h says. Every operation may be called from any thread; none
/// throws or logs.
class NX_CORE_API nxWindowsSemaphore : private nxNonCopyable
{
public:
    /// Opens the semaphore of that name; only if there is none, creates it with these counts. So the first
    /// process decides, and the counts of the others are ignored. A failure is not reported: the object then
    /// does nothing, and its operations say OK. A maximum of zero or an initial count above the maximum is
    /// one.
    /// @param name  any bytes, of any length.
    nxWindowsSemaphore(std::string const& name, unsigned int initialCount, unsigned int maximumCount);
    virtual ~nxWindowsSemaphore() = default;

    /// Takes one from the count, and waits without limit while it is zero.
    /// @return always OK.
    nxErrorEnum Wait();

    /// Adds one to the count; does nothing when it stands at its maximum.
    /// @return always OK.
    nxErrorEnum Post();

    /// Takes one from the count, and waits for at most that long while it is zero.
    /// @param seconds  cut to whole milliseconds; below zero or no number is zero, and what does not fit into
    ///                 32 bits of milliseconds is no limit.
    /// @return NX_ERR_THR_TIMEDOUT; OK in all other cases.
    nxErrorEnum TimedWait(double seconds);

private:
    nxPlatform::NamedObject const _handle;
};
