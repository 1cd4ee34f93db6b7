#include "core/concurrency/nxCondition.h"

#include "core/concurrency/nxWaitTime.h"

#include <cerrno>

nxCondition::nxCondition()
{
    (void)pthread_cond_init(&_condition, nullptr);
    (void)pthread_mutex_init(&_mutex, nullptr);
}

nxCondition::~nxCondition()
{
    (void)pthread_cond_destroy(&_condition);
    (void)pthread_mutex_destroy(&_mutex);
}

// No guard holds the mutex in these operations: a failure of the condition's call leaves it locked, in all
// but TimedWait().

nxErrorEnum nxCondition::Signal()
{
    if (pthread_mutex_lock(&_mutex) != 0)
        return nxErrorEnum(NX_ERR_UNSPECIFIED);
    if (pthread_cond_signal(&_condition) != 0)
        return nxErrorEnum(NX_ERR_UNSPECIFIED);
    return _Unlock();
}

nxErrorEnum nxCondition::SignalAll()
{
    if (pthread_mutex_lock(&_mutex) != 0)
        return nxErrorEnum(NX_ERR_UNSPECIFIED);
    if (pthread_cond_broadcast(&_condition) != 0)
        return nxErrorEnum(NX_ERR_UNSPECIFIED);
    return _Unlock();
}

nxErrorEnum nxCondition::Wait()
{
    if (pthread_mutex_lock(&_mutex) != 0)
        return nxErrorEnum(NX_ERR_UNSPECIFIED);
    if (pthread_cond_wait(&_condition, &_mutex) != 0)
        return nxErrorEnum(NX_ERR_UNSPECIFIED);
    return _Unlock();
}

nxErrorEnum nxCondition::TimedWait(double seconds)
{
    if (pthread_mutex_lock(&_mutex) != 0)
        return nxErrorEnum(NX_ERR_UNSPECIFIED);
    std::timespec const deadline = nxWaitTime::Deadline(nxWaitTime::FromSeconds(seconds));
    nxErrorEnum result;
    switch (pthread_cond_timedwait(&_condition, &_mutex, &deadline))
    {
    case 0: break;
    case ETIMEDOUT: result = NX_ERR_THR_TIMEDOUT; break;
    default: result = NX_ERR_UNSPECIFIED; break;
    }
    nxErrorEnum const unlocked = _Unlock();
    return unlocked.IsOK() ? result : unlocked;
}

nxErrorEnum nxCondition::_Unlock()
{
    return pthread_mutex_unlock(&_mutex) == 0 ? nxErrorEnum() : nxErrorEnum(NX_ERR_UNSPECIFIED);
}
