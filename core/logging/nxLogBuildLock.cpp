#include "core/logging/nxLogBuildLock.h"

#include "core/platform/nxPThread.h"

namespace
{

// An nxMutex would have to be built itself.
constinit pthread_mutex_t mutexes[] = {PTHREAD_MUTEX_INITIALIZER, PTHREAD_MUTEX_INITIALIZER};

} // namespace

void nxLogBuildLock::Lock(Of of)
{
    (void)pthread_mutex_lock(&mutexes[of]);
}

void nxLogBuildLock::Unlock(Of of)
{
    (void)pthread_mutex_unlock(&mutexes[of]);
}
