// What a program's start and end cost in processor time, of the program and of the system for it: one that asks the
// library for a word, so that everything is registered, beside an empty one and an empty one that loads the C++ runtime.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>

#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
double Seconds(timeval const& time)
{
    constexpr double microseconds = 1e-6;
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * microseconds;
}

void Start(benchmark::State& state, std::string path)
{
    char* const arguments[] = {path.data(), nullptr};
    double pageFaults = 0;
    for ([[maybe_unused]] auto const& round : state)
    {
        pid_t child = 0;
        int status = 0;
        rusage usage{};
        if (posix_spawn(&child, path.c_str(), nullptr, nullptr, arguments, environ) != 0 ||
            wait4(child, &status, 0, &usage) != child || status != 0)
        {
            state.SkipWithError("the program did not run");
            return;
        }
        state.SetIterationTime(Seconds(usage.ru_utime) + Seconds(usage.ru_stime));
        pageFaults = static_cast<double>(usage.ru_minflt);
    }
    state.counters["page_faults"] = pageFaults;
}

std::string Beside(char const* program, char const* name)
{
    std::string const path = program;
    return path.substr(0, path.rfind('/') + 1) + name;
}
} // namespace

int main(int argc, char** argv)
{
    for (char const* const name : {"nxStartEmpty", "nxStartRuntime", "nxStartHost"})
    {
        benchmark::RegisterBenchmark(name, Start, Beside(argv[0], name))
            ->UseManualTime()
            ->Unit(benchmark::kMicrosecond);
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
