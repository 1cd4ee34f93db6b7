#include "core/concurrency/nxWindowsMutex.h"

nxWindowsMutex::nxWindowsMutex(std::string const& name) : _handle(nxPlatform::CreateMutexA(name))
{
}

nxErrorEnum nxWindowsMutex::Lock()
{
    if (_handle)
        (void)nxPlatform::WaitForSingleObject(_handle, nxPlatform::infinite);
    return nxErrorEnum();
}

nxErrorEnum nxWindowsMutex::Unlock()
{
    if (_handle)
        (void)nxPlatform::ReleaseMutex(_handle);
    return nxErrorEnum();
}
