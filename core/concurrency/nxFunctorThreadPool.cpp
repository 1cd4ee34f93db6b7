#include "core/concurrency/nxFunctorThreadPool.h"

#include "core/concurrency/nxFunctorThread.h"

nxFunctorThreadPool::nxFunctorThreadPool(unsigned int threadCount) : _workers(threadCount)
{
    for (std::unique_ptr<nxFunctorThread>& worker : _workers)
        worker = std::make_unique<nxFunctorThread>();
}

nxFunctorThreadPool::~nxFunctorThreadPool()
{
    (void)nxFunctorThreadPool::_Stop();
}

nxErrorEnum nxFunctorThreadPool::_Stop()
{
    for (std::unique_ptr<nxFunctorThread> const& worker : _workers)
        (void)worker->_Stop();
    return nxErrorEnum();
}

nxErrorEnum nxFunctorThreadPool::_Start()
{
    for (std::unique_ptr<nxFunctorThread> const& worker : _workers)
        (void)worker->_Start();
    return nxErrorEnum();
}

void nxFunctorThreadPool::_SetFunctorQueueBase(nxFunctorQueueBase* queue)
{
    for (std::unique_ptr<nxFunctorThread> const& worker : _workers)
        worker->_SetFunctorQueueBase(queue);
}
