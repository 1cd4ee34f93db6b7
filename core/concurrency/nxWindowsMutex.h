#pragma once

#include "core/concurrency/nxNonCopyable.h"
#include "core/platform/nxExport.h"
#include "core/platform/nxNamedObjects.h"
#include "core/vocabulary/nxErrorEnum.h"

#include <string>

/// @file
/// A mutex that the processes of one user share by its name.

/// Mutual exclusion between processes that know nothing of each other but a name. The owner, which is a
/// thread, may lock again; each Lock() then needs its own Unlock(). When an owner ends without unlocking, the
/// next one simply gets the lock.
///
/// Nothing is given back by the destructor: neither the lock nor the system's object, which lives until the
/// last process that named it has ended, as nxNamedObjects.h says. Every operation may be called from any thread; none throws or logs.
class NX_CORE_API nxWindowsMutex : private nxNonCopyable
{
public:
    /// Opens the mutex of that name or creates it, owned by nobody. A failure is not reported: the object
    /// then does nothing, and its operations say OK.
    /// @param name  any bytes, of any length.
    explicit nxWindowsMutex(std::string const& name);
    virtual ~nxWindowsMutex() = default;

    /// Waits without limit.
    /// @return always OK.
    nxErrorEnum Lock();

    /// Does nothing for a thread that is not the owner.
    /// @return always OK.
    nxErrorEnum Unlock();

private:
    nxPlatform::NamedObject const _handle;
};
