#pragma once

#include "core/concurrency/nxFunctorQueueBase.h"
#include "core/concurrency/nxMutex.h"

#include <deque>

/// @file
/// A queue whose work is run by a thread of the host.

/// Work that any thread pushes and that the host runs on a thread of its own, when it likes. Used without
/// Create(): a worker that is connected all the same would not be woken by Push().
class NX_CORE_API nxManuallyDispatchedFunctorQueue : public nxFunctorQueueBase
{
public:
    /// An empty queue.
    nxManuallyDispatchedFunctorQueue();
    ~nxManuallyDispatchedFunctorQueue() override;

    nxErrorEnum Push(nxFunctor* functor) override;
    unsigned int Size() const override;

    /// Takes the oldest functor, which from now on belongs to the caller.
    /// @return OK; NX_ERR_NOT_FOUND from an empty queue, which sets the argument to null.
    nxErrorEnum Pop(nxFunctor** functor);

    /// Runs the oldest functor, if there is one, on the calling thread and deletes it.
    /// @return OK, or NX_ERR_NOT_FOUND when there was none.
    nxErrorEnum Dispatch();

    /// Runs until the queue is empty, what is pushed in the meantime included.
    /// @return NX_ERR_NOT_FOUND, which says that all is done.
    nxErrorEnum DispatchAll();

protected:
    /// @return OK; NX_ERR_NOT_FOUND from an empty queue, which sets the argument to null.
    nxErrorEnum _Pop(nxFunctor** functor) override;

private:
    nxManuallyDispatchedFunctorQueue(nxFunctorQueueBase const&) = delete;
    nxManuallyDispatchedFunctorQueue& operator=(nxManuallyDispatchedFunctorQueue const&) = delete;

    std::deque<nxFunctor*> _functors;
    mutable nxMutex _mutex; // never held while work runs
};
