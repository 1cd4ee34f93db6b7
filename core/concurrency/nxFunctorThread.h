#pragma once

#include "core/concurrency/nxFunctorProcessor.h"
#include "core/concurrency/nxMutex.h"
#include "core/concurrency/nxThread.h"

/// @file
/// One worker behind a functor queue.

/// A thread that runs what a queue holds, oldest first, and deletes what it has run. It handles no signals
/// that are sent to the process. A worker that has been stopped stays stopped: created again, it ends at
/// once.
class NX_CORE_API nxFunctorThread : public nxThread, public nxFunctorProcessor
{
public:
    /// A worker that is not connected and not started.
    nxFunctorThread();

    /// Waits for the thread, and does not stop it: a worker that nobody has stopped is waited for as long as
    /// it runs.
    ~nxFunctorThread() override;

    /// Runs functors until it is stopped.
    /// @return OK; NX_ERR_THR_UNSUPPORTED, at once, without a queue.
    nxErrorEnum Run() override;

    /// Joins the thread, as nxThread::Wait() does. A worker that has been stopped is woken until it has
    /// ended.
    nxErrorEnum Wait() override;

    /// Starts the thread.
    /// @return as nxThread::Create().
    nxErrorEnum _Start() override;

    /// Tells the worker to end after the functor that it runs, and joins it.
    /// @return as nxThread::Wait().
    nxErrorEnum _Stop() override;

    void _SetFunctorQueueBase(nxFunctorQueueBase* queue) override;

protected:
    /// Whether the worker has been told to end.
    bool _HasBeenStopped() const;

private:
    nxFunctorQueueBase* _queue = nullptr;
    mutable nxMutex _mutex; // guards the flag alone
    bool _stopped = false;
};
