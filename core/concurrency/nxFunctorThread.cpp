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

    if (!_queue || !_HasBeenStopped())
    {
        return nxThread::Wait();
    }
    // A post may wake another idle worker of the same queue, which goes back to sleep, while this one sleeps on. So
    // the post is repeated until this one has ended.
    microseconds pause = step;
    nxErrorEnum result = _TryWait();
    while (result == NX_ERR_THR_LOCKED)
    {
        std::this_thread::sleep_for(pause);
        pause = std::min(pause + step, longestPause);
        result = _TryWait();
        if (result == NX_ERR_THR_LOCKED)
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
