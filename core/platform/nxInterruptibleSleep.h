#pragma once

#include "core/platform/nxPThread.h"

/// @file
/// A sleep that another thread can end.

namespace nxPlatform
{

/// Lets one thread sleep until its time is over or somebody wakes it.
///
/// Time is that of the monotonic clock: setting the wall clock makes no sleep longer or shorter. Signal handlers
/// that run on the sleeper do not wake it.
class InterruptibleSleep
{
public:
    InterruptibleSleep();
    ~InterruptibleSleep();

    InterruptibleSleep(InterruptibleSleep const&) = delete;
    InterruptibleSleep& operator=(InterruptibleSleep const&) = delete;

    /// 0, or the system's error number when the semaphore that is slept on could not be made. Sleep() is then an
    /// ordinary sleep.
    int GetError() const
    {
        return _error;
    }

    /// Sleeps, or returns at once when Wake() has been called since the last sleep.
    /// @param seconds  0 to one million; what lies outside is taken as the nearer of the two, what is no number as 0.
    void Sleep(double seconds);

    /// Ends the present sleep or, if nobody sleeps, the next one, however often it is called before that. Any thread may
    /// call.
    void Wake();

private:
    sem_t _semaphore;
    int _error;
};

} // namespace nxPlatform
