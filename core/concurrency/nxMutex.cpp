#include "core/concurrency/nxMutex.h"

#include "core/logging/nxLogSite.h"

nxMutex::nxMutex(bool recursive)
{
    if (!recursive)
        return;
    pthread_mutexattr_t attributes;
    (void)pthread_mutexattr_init(&attributes);
    (void)pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
    (void)pthread_mutex_init(&_mutex, &attributes);
    (void)pthread_mutexattr_destroy(&attributes);
}

// The attribute is destroyed on success alone.
int nxMutex::_CreateShared(bool robust)
{
    pthread_mutexattr_t attributes;
    if (int const result = pthread_mutexattr_init(&attributes); result != 0)
        return result;
    if (int const result = pthread_mutexattr_setpshared(&attributes, PTHREAD_PROCESS_SHARED); result != 0)
        return result;
    if (robust)
    {
        int const result = pthread_mutexattr_setrobust(&attributes, PTHREAD_MUTEX_ROBUST);
        NX_LOG(NX_INF, "Set Robust attribute. result: " << result);
        if (result != 0)
            return result;
    }
    if (int const result = pthread_mutex_init(&_mutex, &attributes); result != 0)
        return result;
    return pthread_mutexattr_destroy(&attributes);
}

nxErrorEnum nxMutex::InitialiseAsShared(bool robust)
{
    int const result = _CreateShared(robust);
    if (result != 0)
    {
        NX_LOG(NX_ERR, "Mutex could not be created in shared memory. Result : " << result);
        return nxErrorEnum(NX_ERR_UNSPECIFIED);
    }
    return nxErrorEnum();
}

nxErrorEnum nxMutex::Consistent()
{
    return pthread_mutex_consistent(&_mutex) == 0 ? nxErrorEnum() : nxErrorEnum(NX_ERR_UNSPECIFIED);
}
