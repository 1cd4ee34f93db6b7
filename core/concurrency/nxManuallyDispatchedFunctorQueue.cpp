#include "core/concurrency/nxManuallyDispatchedFunctorQueue.h"

#include "core/concurrency/nxFunctor.h"
#include "core/concurrency/nxMutexGuard.h"

#include <memory>

nxManuallyDispatchedFunctorQueue::nxManuallyDispatchedFunctorQueue() = default;
nxManuallyDispatchedFunctorQueue::~nxManuallyDispatchedFunctorQueue() = default;

// The semaphore is not touched: nobody waits.
nxErrorEnum nxManuallyDispatchedFunctorQueue::Push(nxFunctor* functor)
{
    nxMutexGuard guard(_mutex);
    _functors.push_back(functor);
    return nxErrorEnum();
}

unsigned int nxManuallyDispatchedFunctorQueue::Size() const
{
    nxMutexGuard guard(_mutex);
    return static_cast<unsigned int>(_functors.size());
}

nxErrorEnum nxManuallyDispatchedFunctorQueue::_Pop(nxFunctor** functor)
{
    nxMutexGuard guard(_mutex);
    if (_functors.empty())
    {
        *functor = nullptr;
        return nxErrorEnum(NX_ERR_NOT_FOUND);
    }
    *functor = _functors.front();
    _functors.pop_front();
    return nxErrorEnum();
}

nxErrorEnum nxManuallyDispatchedFunctorQueue::Pop(nxFunctor** functor)
{
    return _Pop(functor);
}

nxErrorEnum nxManuallyDispatchedFunctorQueue::Dispatch()
{
    nxFunctor* popped = nullptr;
    nxErrorEnum const result = _Pop(&popped);
    if (std::unique_ptr<nxFunctor> const functor(popped); functor)
        (*functor)();
    return result;
}

nxErrorEnum nxManuallyDispatchedFunctorQueue::DispatchAll()
{
    nxErrorEnum result;
    do
    {
        result = Dispatch();
    } while (result.IsOK());
    return result;
}
