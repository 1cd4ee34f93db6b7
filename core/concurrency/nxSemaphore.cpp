#include "core/concurrency/nxSemaphore.h"

#include "core/concurrency/nxWaitTime.h"
#include "core/logging/nxLogSite.h"

#include <cstdio>

namespace
{
constexpr int betweenThreads = 0;
constexpr int betweenProcesses = 1;
} // namespace

nxSemaphore::nxSemaphore(unsigned int initialCount) : _semaphore()
{
    errno = 0;
    if (int const result = sem_init(&_semaphore, betweenThreads, initialCount); result == -1)
    {
        // The log itself stands on semaphores and can't carry this line.
        std::printf("sem_init err %d, %d\n", result, errno);
    }
}

nxErrorEnum nxSemaphore::InitialiseAsShared(unsigned int initialCount)
{
    _semaphore = sem_t();
    errno = 0;
    if (int const result = sem_init(&_semaphore, betweenProcesses, initialCount); result == -1)
    {
        NX_LOG(NX_ERR, "Semaphore could not be created in shared memory. Result : " << result);
        return nxErrorEnum(NX_ERR_THR_UNSUPPORTED);
    }
    return nxErrorEnum();
}

nxErrorEnum nxSemaphore::_WaitFailure(int error)
{
    switch (error)
    {
    case ENOSYS: return nxErrorEnum(NX_ERR_THR_UNSUPPORTED);
    case EDEADLK: return nxErrorEnum(NX_ERR_THR_DEADLOCK);
    case EINTR: return nxErrorEnum(NX_ERR_THR_INTERRUPTED);
    default: return nxErrorEnum(); // an unknown failure counts as success here, as a timeout in _TimedWait()
    }
}

nxErrorEnum nxSemaphore::_TryWaitFailure(int error)
{
    return error == EAGAIN ? nxErrorEnum(NX_ERR_THR_LOCKED) : _WaitFailure(error);
}

nxErrorEnum nxSemaphore::TimedWait(double seconds)
{
    std::timespec relative = nxWaitTime::FromSeconds(seconds);
    return _TimedWait(relative);
}

nxErrorEnum nxSemaphore::TimedWait_Microseconds(unsigned long long const& microseconds)
{
    std::timespec relative = nxWaitTime::FromMicroseconds(microseconds);
    return _TimedWait(relative);
}

nxErrorEnum nxSemaphore::_TimedWait(std::timespec& relative)
{
    std::timespec const deadline = nxWaitTime::Deadline(relative);
    errno = 0;
    if (sem_timedwait(&_semaphore, &deadline) == 0)
        return nxErrorEnum();
    switch (errno)
    {
    case EINVAL: return nxErrorEnum(NX_ERR_INVALID_PARAMETER);
    case ETIMEDOUT: return nxErrorEnum(NX_ERR_THR_TIMEDOUT);
    case EDEADLK: return nxErrorEnum(NX_ERR_THR_DEADLOCK);
    case EINTR: return nxErrorEnum(NX_ERR_THR_INTERRUPTED);
    default: return nxErrorEnum(NX_ERR_THR_TIMEDOUT);
    }
}

int nxSemaphore::GetValue()
{
    int value = 0;
    errno = 0;
    return sem_getvalue(&_semaphore, &value) == 0 ? value : 0;
}
