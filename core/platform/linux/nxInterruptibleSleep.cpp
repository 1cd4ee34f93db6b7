#include "core/platform/nxInterruptibleSleep.h"

#include <algorithm>
#include <cerrno>
#include <ctime>

namespace nxPlatform
{

namespace
{

timespec Deadline(double seconds)
{
    constexpr double longestSleep = 1e6;
    constexpr long nanosecondsPerSecond = 1000000000;

    double const length = seconds > 0 ? std::min(seconds, longestSleep) : 0.0;
    long const wholeSeconds = static_cast<long>(length);
    long const nanoseconds = static_cast<long>((length - static_cast<double>(wholeSeconds)) * 1e9);

    timespec deadline{};
    (void)clock_gettime(CLOCK_MONOTONIC, &deadline);
    deadline.tv_sec += wholeSeconds;
    deadline.tv_nsec += nanoseconds;
    if (deadline.tv_nsec >= nanosecondsPerSecond)
    {
        deadline.tv_nsec -= nanosecondsPerSecond;
        ++deadline.tv_sec;
    }
    return deadline;
}

} // namespace

InterruptibleSleep::InterruptibleSleep() : _error(sem_init(&_semaphore, 0, 0) == 0 ? 0 : errno)
{
}

InterruptibleSleep::~InterruptibleSleep()
{
    if (_error == 0)
        (void)sem_destroy(&_semaphore);
}

void InterruptibleSleep::Sleep(double seconds)
{
    timespec const deadline = Deadline(seconds);
    if (_error != 0)
    {
        while (clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &deadline, nullptr) == EINTR)
        {
        }
        return;
    }
    int result = 0;
    do
    {
        result = sem_clockwait(&_semaphore, CLOCK_MONOTONIC, &deadline);
    } while (result == -1 && errno == EINTR);
    while (result == 0)
        result = sem_trywait(&_semaphore); // one sleep is ended by all the calls before it
}

void InterruptibleSleep::Wake()
{
    if (_error == 0)
        (void)sem_post(&_semaphore);
}

} // namespace nxPlatform
