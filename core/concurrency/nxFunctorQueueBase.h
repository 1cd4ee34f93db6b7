#pragma once

#include "core/concurrency/nxSemaphore.h"
#include "core/platform/nxExport.h"
#include "core/vocabulary/nxErrorEnum.h"

class nxFunctor;
class nxFunctorProcessor;

/// @file
/// The base of the functor queues: the processor behind a queue and the semaphore on which it waits.

/// A queue of work with a processor behind it. Work runs in the order in which it was pushed: one after the
/// other with one worker; with several, whoever is free takes the oldest, and work may end out of order.
///
/// A queue is built, connected once by Create(), stopped by Stop() and only then destroyed: workers that
/// still run would meet a queue that is half gone, and a single worker that was not told to stop would be
/// waited for as long as it runs. What has not been run by then is neither run nor deleted.
///
/// Any thread may push, work that runs included; the other operations belong to the queue's owner.
class NX_CORE_API nxFunctorQueueBase
{
public:
    /// Deletes the processor.
    virtual ~nxFunctorQueueBase();

    /// Appends work, which from now on belongs to the queue. When memory runs out, the exception passes to
    /// the caller and the work stays his.
    /// @return OK.
    virtual nxErrorEnum Push(nxFunctor* functor) = 0;

    /// The number of functors that wait to be run.
    virtual unsigned int Size() const = 0;

    /// Takes ownership of a processor, connects it and starts it; whether it could start is not reported.
    /// Called once: an earlier processor would be neither stopped nor deleted.
    void Create(nxFunctorProcessor* processor);

    /// Stops the processor, if there is one: each worker ends what it runs, and this waits for it.
    /// @return always OK.
    nxErrorEnum Stop();

protected:
    nxFunctorQueueBase();

    /// Takes the oldest functor, which from now on belongs to the caller.
    /// @return OK, or NX_ERR_NOT_FOUND from an empty queue.
    virtual nxErrorEnum _Pop(nxFunctor** functor) = 0;

    /// Waits for a signal that nobody has taken yet.
    nxErrorEnum _Wait();

    /// Wakes one worker, now or the next time that one waits.
    nxErrorEnum _Signal();

private:
    friend class nxFunctorThread;

    nxFunctorQueueBase(nxFunctorQueueBase const&) = delete;
    nxFunctorQueueBase& operator=(nxFunctorQueueBase const&) = delete;

    nxSemaphore _semaphore;
    nxFunctorProcessor* _processor = nullptr;
    bool _ownsProcessor = false;
};
