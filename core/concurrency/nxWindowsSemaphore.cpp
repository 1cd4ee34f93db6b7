#include "core/concurrency/nxWindowsSemaphore.h"

namespace
{
nxPlatform::NamedObject OpenOrCreate(std::string const& name, unsigned int initialCount,
                                     unsigned int maximumCount)
{
    nxPlatform::NamedObject const handle = nxPlatform::OpenSemaphoreA(name);
    return handle ? handle : nxPlatform::CreateSemaphoreA(initialCount, maximumCount, name);
}

unsigned int Milliseconds(double seconds)
{
    double const milliseconds = seconds * 1000;
    if (!(milliseconds > 0)) // no number included
        return 0;
    return milliseconds < nxPlatform::infinite ? static_cast<unsigned int>(milliseconds)
                                               : nxPlatform::infinite;
}
} // namespace

nxWindowsSemaphore::nxWindowsSemaphore(std::string const& name, unsigned int initialCount,
                                       unsigned int maximumCount)
    : _handle(OpenOrCreate(name, initialCount, maximumCount))
{
}

nxErrorEnum nxWindowsSemaphore::Wait()
{
    if (_handle)
        (void)nxPlatform::WaitForSingleObject(_handle, nxPlatform::infinite);
    return nxErrorEnum();
}

nxErrorEnum nxWindowsSemaphore::Post()
{
    if (_handle)
        (void)nxPlatform::ReleaseSemaphore(_handle);
    return nxErrorEnum();
}

nxErrorEnum nxWindowsSemaphore::TimedWait(double seconds)
{
    if (_handle &&
        nxPlatform::WaitForSingleObject(_handle, Milliseconds(seconds)) == nxPlatform::WaitResult::timeout)
        return nxErrorEnum(NX_ERR_THR_TIMEDOUT);
    return nxErrorEnum();
}
