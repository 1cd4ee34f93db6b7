#include "core/platform/nxInterruptibleSleep.h"

#include "core/platform/linux/nxMonotonicDeadline.h"

#include <cerrno>

namespace nxPlatform
{

InterruptibleSleep::InterruptibleSleep() : _error(sem_init(&_semaphore, 0, 0) == 0 ? 0 : errno)
{
}

InterruptibleSleep::~InterruptibleSleep()
{
    if (_error == 0)
    {
        (void)sem_destroy(&_semaphore);
    }
}

void InterruptibleSleep::Sleep(double seconds)
{
    timespec const deadline = MonotonicDeadline(seconds);
    if (_error != 0)
    {
        while (clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &deadline, nullptr) == EINTR)
        {
        }
        return;
    }
    while (sem_clockwait(&_semaphore, CLOCK_MONOTONIC, &deadline) == -1 && errno == EINTR)
    {
    }
}

void InterruptibleSleep::Wake()
{
    if (_error == 0)
    {
        (void)sem_post(&_semaphore);
    }
}

} // namespace nxPlatform
