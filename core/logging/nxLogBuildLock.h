#pragma once

/// @file
/// The locks under which the log's singletons are built. For the sources of this folder.

/// Holds a lock for the length of a scope. A fork waits for it, or the child would find a singleton half built, for
/// ever. Not recursive.
class nxLogBuildLock
{
public:
    /// What is built. Whoever builds the manager takes the lock of its devices; a device may build the file device.
    enum Of
    {
        manager,
        fileDevice
    };

    explicit nxLogBuildLock(Of of) : _of(of)
    {
        Lock(_of);
    }

    ~nxLogBuildLock()
    {
        Unlock(_of);
    }

    nxLogBuildLock(nxLogBuildLock const&) = delete;
    nxLogBuildLock& operator=(nxLogBuildLock const&) = delete;

    static void Lock(Of of);
    static void Unlock(Of of);

private:
    Of const _of;
};
