#include "core/concurrency/nxFunctorQueueBase.h"

#include "core/concurrency/nxFunctorProcessor.h"
#include "core/platform/nxThreads.h"

nxFunctorQueueBase::nxFunctorQueueBase() : _semaphore(0)
{
}

nxFunctorQueueBase::~nxFunctorQueueBase()
{
    // Before the semaphore goes, on which a pool that stops again still posts.
    if (_ownsProcessor)
        delete _processor;
}

void nxFunctorQueueBase::Create(nxFunctorProcessor* processor)
{
    _processor = processor;
    _ownsProcessor = true;
    processor->_SetFunctorQueueBase(this);
    (void)processor->_Start();
}

nxErrorEnum nxFunctorQueueBase::Stop()
{
    if (_processor)
        (void)_processor->_Stop();
    return nxErrorEnum();
}

nxErrorEnum nxFunctorQueueBase::_Wait()
{
    // Work often comes while a sleeper would still be falling asleep, and a sleeper costs the one who pushes
    // a call of the system.
    constexpr int looks = 10;
    for (int look = 0; look < looks; ++look)
    {
        if (_semaphore.TryWait().IsOK())
            return nxErrorEnum();
        nxPlatform::Relax();
    }
    return _semaphore.Wait();
}

nxErrorEnum nxFunctorQueueBase::_Signal()
{
    return _semaphore.Post();
}
