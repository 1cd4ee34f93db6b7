#pragma once

#include "tests/concurrency/SharedMemory.h"

#include <atomic>
#include <thread>

/// Has processes fork while another of their threads does something for the first time, then do it in the child too.
/// The process of the test must not have done it before.
///
/// @return how many of the children hung, or ended in another way than by themselves.
template <typename Use>
int CountForksThatMeetTheFirstUse(int trials, Use const& use)
{
    auto const useInChild = [&]
    {
        use();
        return 0;
    };
    auto const forkDuringUse = [&]
    {
        std::atomic<bool> begins = false;
        std::atomic<bool> ends = false;
        auto const work = [&]
        {
            begins = true;
            use();
            ends = true;
        };
        std::thread(work).detach(); // the thread sanitizer would miss the child's join
        while (!begins)
            ;
        int const result = RunInChild(useInChild);
        while (!ends)
            std::this_thread::yield();
        return result;
    };
    int failures = 0;
    for (int trial = 0; trial < trials; ++trial)
        failures += RunInChild(forkDuringUse) != 0;
    return failures;
}
