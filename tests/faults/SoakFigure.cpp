// F7, F9: that every line is in the files once and in order, under load and on a disk that is full for moments.

#include "core/logging/nxLogDevice.h"
#include "core/logging/nxLogManager.h"
#include "tests/faults/Figures.h"

#include <atomic>
#include <cstdio>
#include <thread>

#include <unistd.h>

namespace
{

using Clock = std::chrono::steady_clock;

/// What a soak's log should hold. @return the lines that are missing.
unsigned long long Missing(LogCount const& count, unsigned int threads, unsigned int lines)
{
    unsigned long long missing = 0;
    for (unsigned int thread = 0; thread < threads; ++thread)
    {
        missing += lines - count.Lines(thread);
    }
    return missing;
}

struct Soak
{
    char const* name;
    unsigned int threads;
    unsigned int lines; // of each thread
    unsigned long long fileSize;
    bool isReopened;
    char const* forceFlush;
};

bool RunSoak(Soak const& soak)
{
    constexpr double longest = 600.0;
    auto const start = Clock::now();
    Directory const directory;
    Host host(directory.Path(),
              {"soak", std::to_string(soak.threads), std::to_string(soak.lines),
               std::to_string(soak.fileSize), soak.isReopened ? "1" : "0"},
              {{"KVT_LOG_FORCE_FLUSH", soak.forceFlush}});
    bool const hasEnded = host.Wait(longest) == 0;
    LogCount const count = CountLog(directory.Path());
    unsigned long long const lost = Missing(count, soak.threads, soak.lines);
    char text[200];
    (void)std::snprintf(text, sizeof text, "F9 %s %ux%u: %llu lost, %u disordered, %u torn, %u files%s",
                        soak.name, soak.threads, soak.lines, lost, count.disordered,
                        count.torn + count.tornLast, count.files, hasEnded ? "" : ", host did not end well");
    return Report(text, start,
                  hasEnded && lost == 0 && count.disordered == 0 && count.torn + count.tornLast == 0);
}

} // namespace

bool SoakFigure(Extent extent)
{
    constexpr unsigned long long megabyte = 1 << 20;
    Soak const fast[] = {
        {"soak", 8, 100000, 8 * megabyte, false, "NO"},
        {"soak, each line flushed,", 4, 5000, 0, false, "YES"},
    };
    Soak const full[] = {
        {"soak", 16, 1000000, 64 * megabyte, true, "NO"},
        {"soak, each line flushed,", 4, 50000, 0, false, "YES"},
    };
    bool isKept = true;
    for (Soak const& soak : extent == Extent::full ? full : fast)
    {
        isKept = RunSoak(soak) && isKept;
    }
    return isKept;
}

// Arguments: threads, lines, size of a file, whether the file is reopened once a second.
int SoakHost(Arguments const& arguments)
{
    (void)LogToFile(std::stoull(arguments.at(2)));
    std::atomic<bool> stop = false;
    std::thread reopener;
    if (arguments.at(3) == "1")
    {
        reopener = std::thread(
            [&]
            {
                // Names have a grain of a second.
                for (unsigned int i = 1; !stop; ++i)
                {
                    (void)usleep(10000);
                    if (i % 110 == 0)
                    {
                        (void)nxFileLogDevice::GetInstance().CloseAndReopenLogFile();
                    }
                }
            });
    }
    std::vector<std::thread> threads;
    for (unsigned int i = 0; i < Number(arguments.at(0)); ++i)
    {
        threads.emplace_back([&, i] { LogLines(i, Number(arguments.at(1))); });
    }
    for (std::thread& thread : threads)
    {
        thread.join();
    }
    stop = true;
    if (reopener.joinable())
    {
        reopener.join();
    }
    return 0;
}

bool DiskFullFigure(Extent extent)
{
    unsigned int const rounds = extent == Extent::full ? 1000 : 20;
    auto const start = Clock::now();
    SmallDisk const disk(8 << 20);
    if (!disk.IsMounted())
    {
        NotRun("F7 disk full for moments: not run, this user may not mount a small disk");
    }
    Host host(disk.Path(), {"disk-full", std::to_string(rounds)}, {{"KVT_LOG_TIME_BETWEEN_FLUSHES", "0.01"}});
    bool const hasEnded = host.Wait(200.0) == 0;
    LogCount const count = CountLog(disk.Path());
    constexpr unsigned int linesOfRound = 55;
    unsigned long long const lost = Missing(count, 1, rounds * linesOfRound);
    char text[200];
    (void)std::snprintf(text, sizeof text, "F7 disk full for moments, %u rounds: %llu of %u lost, %u torn%s",
                        rounds, lost, rounds * linesOfRound, count.torn + count.tornLast,
                        hasEnded ? "" : ", host did not end well");
    return Report(text, start, hasEnded && lost == 0 && count.disordered + count.torn + count.tornLast == 0);
}

int DiskFullHost(Arguments const& arguments)
{
    constexpr unsigned int whileFull = 50;
    constexpr unsigned int afterwards = 5;
    nxLogManager& manager = nxLogManager::GetInstance();
    (void)LogToFile();
    unsigned int line = 0;
    for (unsigned int round = 0; round < Number(arguments.at(0)); ++round)
    {
        FillDisk("ballast");
        LogLines(0, whileFull, line);
        line += whileFull;
        manager.WaitForWriteThreadToWriteQueueToDisk(nxDoubleValueWrapper(10.0));
        (void)unlink("ballast");
        LogLines(0, afterwards, line);
        line += afterwards;
        manager.WaitForWriteThreadToWriteQueueToDisk(nxDoubleValueWrapper(10.0));
    }
    return 0;
}
