#include "core/concurrency/nxFunctorQueue.h"

#include "core/concurrency/nxSpinningMutexGuard.h"

nxFunctorQueue::nxFunctorQueue() = default;
nxFunctorQueue::~nxFunctorQueue() = default;

nxErrorEnum nxFunctorQueue::Push(nxFunctor* functor)
{
    {
        nxSpinningMutexGuard guard(_mutex);
        _functors.push_back(functor);
    }
    (void)_Signal();
    return nxErrorEnum();
}

unsigned int nxFunctorQueue::Size() const
{
    nxSpinningMutexGuard guard(_mutex);
    return static_cast<unsigned int>(_functors.size());
}

nxErrorEnum nxFunctorQueue::_Pop(nxFunctor** functor)
{
    nxSpinningMutexGuard guard(_mutex);
    if (_functors.empty())
        return nxErrorEnum(NX_ERR_NOT_FOUND); // the argument stays as it is
    *functor = _functors.front();
    _functors.pop_front();
    return nxErrorEnum();
}
