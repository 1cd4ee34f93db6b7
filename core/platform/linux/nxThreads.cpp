#include "core/platform/nxThreads.h"

#include "core/platform/nxPause.h"

#include <initializer_list>

#include <unistd.h>

namespace nxPlatform
{
unsigned int GetCurrentThreadId()
{
    return static_cast<unsigned int>(gettid());
}

void Relax()
{
    constexpr int moments = 50;
    for (int moment = 0; moment < moments; ++moment)
        Pause();
}

int TryJoin(pthread_t thread)
{
    return pthread_tryjoin_np(thread, nullptr);
}

AsynchronousSignalsBlocked::AsynchronousSignalsBlocked()
{
    sigset_t asynchronous;
    (void)sigfillset(&asynchronous);
    for (int fault : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGSYS, SIGABRT})
        (void)sigdelset(&asynchronous, fault);
    (void)pthread_sigmask(SIG_BLOCK, &asynchronous, &_previous);
}

AsynchronousSignalsBlocked::~AsynchronousSignalsBlocked()
{
    (void)pthread_sigmask(SIG_SETMASK, &_previous, nullptr);
}
} // namespace nxPlatform
