#pragma once

#include "core/concurrency/nxNonCopyable.h"
#include "core/platform/nxExport.h"
#include "core/platform/nxPThread.h"
#include "core/vocabulary/nxErrorEnum.h"

#include <string>

/// @file
/// The base of everything that owns a thread of control.

/// A thread whose body is Run(). Create() starts it and Wait() joins it, after which it may be created again.
///
/// Create() and Wait() are not guarded: one thread at a time owns the object's life. The destructor neither
/// waits nor stops: an object must not be destroyed while its thread runs, so a derived class waits in its
/// own destructor. Nothing here throws or logs, and an exception that leaves Run() ends the process.
class NX_CORE_API nxThread : private nxNonCopyable
{
public:
    nxThread();
    virtual ~nxThread();

    /// Joins the thread.
    /// @return OK; NX_ERR_THR_NOT_RUNNING when it was not started or has been joined; NX_ERR_THR_DEADLOCK
    ///         when the thread waits for itself; NX_ERR_THR_MISMATCH when there is no such thread to join.
    ///         After a failure it still counts as started, and the caller may try again. Other failures of
    ///         the system say OK and leave it started.
    virtual nxErrorEnum Wait();

    /// The thread's body; its result is dropped. The thread counts as started until somebody waits for it,
    /// even when the body has ended.
    virtual nxErrorEnum Run() = 0;

    /// Starts the thread, which inherits the caller's signal mask.
    /// @return OK; NX_ERR_THR_ALREADY_STARTED, which starts nothing; NX_ERR_THR_RESOURCE when the system has
    ///         no room for one more; NX_ERR_THR_PERMISSION; else NX_ERR_THR_MISMATCH.
    nxErrorEnum Create();

    /// Suspends the caller for the whole milliseconds in the argument: 1500 sleeps for 1 ms, 999 only yields
    /// the processor. A signal does not shorten it.
    static void Sleep(unsigned int microseconds);

    /// The operating system's number of the calling thread, in decimal.
    static std::string GetThreadIDAsString();

protected:
    /// Joins the thread if it has ended, and never waits.
    /// @return NX_ERR_THR_LOCKED while the thread runs; else as Wait().
    nxErrorEnum _TryWait();

private:
    static void* _ThreadProc(void* thread);

    nxErrorEnum _Joined(int result);

    pthread_attr_t _attributes;
    pthread_t _thread;
    bool _started;
};
