#include "core/logging/nxLogBuildLock.h"

#include "core/platform/nxPThread.h"

namespace
{

constinit pthread_mutex_t buildMutex = PTHREAD_MUTEX_INITIALIZER; // an nxMutex would have to be built itself

} // namespace

void nxLogBuildLock::Lock()
{
    (void)pthread_mutex_lock(&buildMutex);
}

void nxLogBuildLock::Unlock()
{
    (void)pthread_mutex_unlock(&buildMutex);
}
