#include "core/concurrency/nxThread.h"

#include "core/platform/nxThreads.h"
#include "core/text/nxStringHelper.h"

#include <cerrno>
#include <chrono>
#include <thread>

// The attributes are zeros until Create(), which is harmless to destroy.
nxThread::nxThread() : _attributes(), _thread(), _started(false)
{
}

nxThread::~nxThread()
{
    (void)pthread_attr_destroy(&_attributes);
}

nxErrorEnum nxThread::Create()
{
    if (_started)
        return nxErrorEnum(NX_ERR_THR_ALREADY_STARTED);
    (void)pthread_attr_init(&_attributes);
    _started = true; // before the body can ask for it
    int const result = pthread_create(&_thread, &_attributes, &_ThreadProc, this);
    if (result == 0)
        return nxErrorEnum();
    _started = false;
    switch (result)
    {
    case EAGAIN: return nxErrorEnum(NX_ERR_THR_RESOURCE);
    case EPERM: return nxErrorEnum(NX_ERR_THR_PERMISSION);
    default: return nxErrorEnum(NX_ERR_THR_MISMATCH);
    }
}

void* nxThread::_ThreadProc(void* thread)
{
    (void)static_cast<nxThread*>(thread)->Run();
    return nullptr;
}

nxErrorEnum nxThread::Wait()
{
    if (!_started)
        return nxErrorEnum(NX_ERR_THR_NOT_RUNNING);
    return _Joined(pthread_join(_thread, nullptr));
}

nxErrorEnum nxThread::_TryWait()
{
    if (!_started)
        return nxErrorEnum(NX_ERR_THR_NOT_RUNNING);
    bool const itself = pthread_equal(_thread, pthread_self()) != 0;
    int const result = itself ? EDEADLK : nxPlatform::TryJoin(_thread);
    return result == EBUSY ? nxErrorEnum(NX_ERR_THR_LOCKED) : _Joined(result);
}

nxErrorEnum nxThread::_Joined(int result)
{
    switch (result)
    {
    case 0: _started = false; return nxErrorEnum();
    case EDEADLK: return nxErrorEnum(NX_ERR_THR_DEADLOCK);
    case EINVAL:
    case ESRCH: return nxErrorEnum(NX_ERR_THR_MISMATCH);
    default: return nxErrorEnum(); // says OK, and the thread still counts as started
    }
}

void nxThread::Sleep(unsigned int microseconds)
{
    constexpr unsigned int microsecondsPerMillisecond = 1000;
    unsigned int const milliseconds = microseconds / microsecondsPerMillisecond;
    if (milliseconds == 0)
    {
        std::this_thread::yield();
        return;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

std::string nxThread::GetThreadIDAsString()
{
    return nxStringHelper::GetAsString(nxPlatform::GetCurrentThreadId());
}
