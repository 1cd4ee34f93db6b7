#include "core/concurrency/nxHeldAcrossForks.h"

#include "core/platform/nxPThread.h"

#include <array>
#include <atomic>

namespace
{
constexpr std::size_t mostMutexes = 8;

constinit std::array<nxMutex& (*)(), mostMutexes> mutexes{};
constinit std::atomic<std::size_t> count = 0;
constinit std::size_t held = 0; // by the fork under way

void Hold()
{
    std::size_t const present = count.load(std::memory_order_acquire);
    for (std::size_t i = 0; i < present; ++i)
        (void)mutexes[i]().Lock();
    held = present;
}

void Release()
{
    for (std::size_t i = held; i != 0; --i)
        (void)mutexes[i - 1]().Unlock();
}
} // namespace

bool nxHeldAcrossForks::Add(nxMutex& (*mutex)())
{
    std::size_t const present = count.load(std::memory_order_relaxed);
    if (present == mostMutexes || !RegisterHandlers())
        return false;
    mutexes[present] = mutex;
    count.store(present + 1, std::memory_order_release);
    return true;
}

bool nxHeldAcrossForks::RegisterHandlers()
{
    static bool const isRegistered = pthread_atfork(Hold, Release, Release) == 0;
    return isRegistered;
}
