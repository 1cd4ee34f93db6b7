#include "core/concurrency/nxConditionMutex.h"

nxConditionMutex::nxConditionMutex()
{
    (void)pthread_cond_init(&_condition, nullptr);
}

nxConditionMutex::~nxConditionMutex()
{
    (void)pthread_cond_destroy(&_condition);
}

nxErrorEnum nxConditionMutex::Wait()
{
    if (pthread_cond_wait(&_condition, &_mutex) != 0)
    {
        (void)Unlock();
        return nxErrorEnum(NX_ERR_UNSPECIFIED);
    }
    return nxErrorEnum();
}

nxErrorEnum nxConditionMutex::LockAndWait()
{
    (void)Lock();
    return Wait();
}

nxErrorEnum nxConditionMutex::Signal()
{
    return pthread_cond_signal(&_condition) == 0 ? nxErrorEnum() : nxErrorEnum(NX_ERR_UNSPECIFIED);
}
