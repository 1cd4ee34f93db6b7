#include "core/concurrency/nxFunctorQueueBase.h"

#include "core/concurrency/nxFunctorProcessor.h"

nxFunctorQueueBase::nxFunctorQueueBase() : _semaphore(0)
{
}

nxFunctorQueueBase::~nxFunctorQueueBase()
{
    // Before the semaphore goes, on which a pool that stops again still posts.
    if (_ownsProcessor)
    {
        delete _processor;
    }
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
    {
        (void)_processor->_Stop();
    }
    return nxErrorEnum();
}

nxErrorEnum nxFunctorQueueBase::_Wait()
{
    return _semaphore.Wait();
}

nxErrorEnum nxFunctorQueueBase::_Signal()
{
    return _semaphore.Post();
}
