#include "core/concurrency/nxSpinLock.h"

#include "core/logging/nxLogSite.h"

nxErrorEnum nxSpinLock::InitialiseAsShared()
{
    if (pthread_spin_init(&_lock, PTHREAD_PROCESS_SHARED) != 0)
    {
        NX_LOG(NX_INF, "Semaphore error"); // the required words, for a spin lock too
        return nxErrorEnum(NX_ERR_INTERNAL);
    }
    return nxErrorEnum();
}
