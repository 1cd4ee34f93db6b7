// The main of the programs of benchmarks. A process of one thread flatters mutexes, allocators and the calls that look
// up descriptors, and hosts have more: a second one sleeps all the time.

#include <benchmark/benchmark.h>

#include <chrono>
#include <thread>

int main(int argc, char** argv)
{
    std::thread([] { std::this_thread::sleep_for(std::chrono::hours(1)); }).detach();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
