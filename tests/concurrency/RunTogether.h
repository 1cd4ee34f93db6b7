#pragma once

#include <thread>
#include <vector>

/// Runs work(0) to work(count - 1), each on a thread of its own, and waits for all of them.
template <typename Work>
void RunTogether(int count, Work const& work)
{
    std::vector<std::thread> threads;
    for (int number = 0; number < count; ++number)
        threads.emplace_back([&work, number] { work(number); });
    for (std::thread& thread : threads)
        thread.join();
}
