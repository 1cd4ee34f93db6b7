#pragma once

#include "core/concurrency/nxFunctorQueueBase.h"
#include "core/concurrency/nxMutex.h"

#include <deque>

/// @file
/// A queue whose work is run by one worker or by a pool.

/// Work for background threads.
///
/// @code
/// nxFunctorQueue queue;
/// queue.Create(new nxFunctorThreadPool(4));
/// (void)queue.Push(new MyWork(order));
/// ...
/// (void)queue.Stop();
/// @endcode
class NX_CORE_API nxFunctorQueue : public nxFunctorQueueBase
{
public:
    /// An empty queue with nobody behind it.
    nxFunctorQueue();
    ~nxFunctorQueue() override;

    nxErrorEnum Push(nxFunctor* functor) override;
    unsigned int Size() const override;

protected:
    /// @return OK; NX_ERR_NOT_FOUND from an empty queue, which leaves the argument as it was.
    nxErrorEnum _Pop(nxFunctor** functor) override;

private:
    nxFunctorQueue(nxFunctorQueue const&) = delete;
    nxFunctorQueue& operator=(nxFunctorQueue const&) = delete;

    std::deque<nxFunctor*> _functors;
    mutable nxMutex _mutex; // never held while work runs or while the semaphore is posted
};
