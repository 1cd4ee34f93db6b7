#pragma once

#include "core/concurrency/nxMutex.h"

#include <thread>
#include <vector>

/// Runs work(0) to work(count - 1), each on a thread of its own, and waits for all of them.
template <typename Work>
void RunTogether(int count, Work const& work)
{
    std::vector<std::jthread> threads;
    for (int number = 0; number < count; ++number)
        threads.emplace_back([&work, number] { work(number); });
}

/// @return what the work answers on a thread of its own.
template <typename Work>
auto Elsewhere(Work const& work)
{
    decltype(work()) result{};
    std::thread([&] { result = work(); }).join();
    return result;
}

/// @return what another thread is told; it doesn't keep the mutex.
inline nxErrorEnum TryLockElsewhere(nxMutex& mutex)
{
    return Elsewhere(
        [&]
        {
            nxErrorEnum const result = mutex.TryLock();
            return result.IsOK() ? mutex.Unlock() : result;
        });
}
