#pragma once

/// @file
/// The lock under which the log's singletons are built. For the sources of this folder.

/// Holds the lock for the length of a scope. A fork waits for it, or the child would find a singleton half built, for
/// ever. Not recursive.
class nxLogBuildLock
{
public:
    nxLogBuildLock()
    {
        Lock();
    }

    ~nxLogBuildLock()
    {
        Unlock();
    }

    nxLogBuildLock(nxLogBuildLock const&) = delete;
    nxLogBuildLock& operator=(nxLogBuildLock const&) = delete;

    static void Lock();
    static void Unlock();
};
