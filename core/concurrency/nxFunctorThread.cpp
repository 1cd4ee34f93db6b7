#include "core/concurrency/nxFunctorThread.h"

#include "core/concurrency/nxFunctor.h"
#include "core/concurrency/nxFunctorQueueBase.h"
#include "core/concurrency/nxMutexGuard.h"
#include "core/platform/nxThreads.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <thread>

nxFunctorThread::nxFunctorThread() = default;

nxFunctorThread::~nxFunctorThread()
{
    (void)nxThread::Wait();
    _queue = nullptr; // only now: the worker reads it when it begins
}

nxErrorEnum nxFunctorThread::Run()
{
    nxFunctorQueueBase* const queue = _queue;
    if (!queue)
    {
        return nxErrorEnum(NX_ERR_THR_UNSUPPORTED);
    }
    while (!_HasBeenStopped())
    {
        nxFunctor* popped = nullptr;
        if (!queue->_Pop(&popped).IsOK())
        {
            // The queue says what work there is, not the semaphore: a count is only a reason to look again.
            (void)queue->_Wait();
            continue;
        }
        if (std::unique_ptr<nxFunctor> const functor(popped); functor)
        {
            (*functor)();
        }
    }
    return nxErrorEnum();
}

nxErrorEnum nxFunctorThread::Wait()
{
    using std::chrono::microseconds;
    constexpr microseconds step(20);
    constexpr microseconds longestPause(1000);
    constexpr unsigned int doublings = 10;

    if (!_queue || !_HasBeenStopped())
    {
        return nxThread::Wait();
    }
    // A post may wake another idle worker of the same queue, which goes back to sleep, while this one sleeps on. So
    // posts are repeated until this one has ended, at first each time twice as many: one sleeper among many is met in
    // a few rounds. Whoever has not ended by then runs a functor, and needs no more than a post now and then.
    nxErrorEnum result = _TryWait();
    for (unsigned int round = 0; result == NX_ERR_THR_LOCKED; ++round)
    {
        std::this_thread::sleep_for(std::min(step * (round + 1), longestPause));
        result = _TryWait();
        unsigned int const posts = round < doublings ? 1u << round : 1;
        for (unsigned int post = 0; post < posts && result == NX_ERR_THR_LOCKED; ++post)
        {
            (void)_queue->_Signal();
        }
    }
    return result;
}

nxErrorEnum nxFunctorThread::_Start()
{
    nxPlatform::AsynchronousSignalsBlocked const blocked;
    return Create();
}

nxErrorEnum nxFunctorThread::_Stop()
{
    {
        nxMutexGuard guard(_mutex);
        _stopped = true;
    }
    if (_queue)
    {
        (void)_queue->_Signal();
    }
    return Wait();
}

void nxFunctorThread::_SetFunctorQueueBase(nxFunctorQueueBase* queue)
{
    _queue = queue;
}

bool nxFunctorThread::_HasBeenStopped() const
{
    nxMutexGuard guard(_mutex);
    return _stopped;
}
