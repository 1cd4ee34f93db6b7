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
        return nxErrorEnum(NX_ERR_THR_UNSUPPORTED);
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
            (*functor)();
    }
    return nxErrorEnum();
}

nxErrorEnum nxFunctorThread::Wait()
{
    using std::chrono::microseconds;
    constexpr microseconds longer(1);
    constexpr microseconds longest(1000);

    if (!_queue || !_HasBeenStopped())
        return nxThread::Wait();
    // A post may wake another idle worker of the same queue, which goes back to sleep, while this one sleeps on. So
    // posts are repeated until this one has ended. One at a time: sleepers are woken in turn, and many at once are
    // taken by those that are awake. Whoever has not ended for long runs a functor, and needs a post now and then.
    nxErrorEnum result = _TryWait();
    for (microseconds pause(20); result == NX_ERR_THR_LOCKED; pause = std::min(pause + longer, longest))
    {
        std::this_thread::sleep_for(pause);
        result = _TryWait();
        if (result == NX_ERR_THR_LOCKED)
            (void)_queue->_Signal();
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
        (void)_queue->_Signal();
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
