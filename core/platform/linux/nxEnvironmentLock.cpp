#include "core/platform/nxEnvironmentLock.h"

#include "core/platform/nxPThread.h"

namespace
{
pthread_mutex_t environmentMutex = PTHREAD_MUTEX_INITIALIZER;
pthread_once_t forkHandlersOnce = PTHREAD_ONCE_INIT;

void Lock()
{
    (void)pthread_mutex_lock(&environmentMutex);
}

void Unlock()
{
    (void)pthread_mutex_unlock(&environmentMutex);
}

// The child's only thread is the one that took the lock before the fork, so it may open it.
void RegisterForkHandlers()
{
    (void)pthread_atfork(Lock, Unlock, Unlock);
}
} // namespace

namespace nxPlatform
{
EnvironmentLock::EnvironmentLock()
{
    (void)pthread_once(&forkHandlersOnce, RegisterForkHandlers);
    Lock();
}

EnvironmentLock::~EnvironmentLock()
{
    Unlock();
}
} // namespace nxPlatform

// The handlers are registered at load, in a program without the log too: a later moment could fall between another
// thread's fork and what it is to do before it.
[[maybe_unused]] static bool const isRegisteredAtLoad = (nxPlatform::EnvironmentLock(), true);
