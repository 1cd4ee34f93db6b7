// F7, F9: that every line is in the files once and in order, under load and on a disk that is full for moments.

#include "core/logging/nxLogDevice.h"
#include "core/logging/nxLogManager.h"
#include "tests/faults/Faults.h"

#include <thread>

#include <unistd.h>

namespace
{

struct Soak
{
    char const* name;
    unsigned int threads;
    unsigned int lines; // of each thread
    unsigned long long fileSize;
    char const* isReopened; // once a second
    char const* forceFlush;
};

bool RunSoak(Soak const& soak)
{
    auto const start = Clock::now();
    Directory const directory;
    Host host(directory.path,
              {"soak", std::to_string(soak.threads), std::to_string(soak.lines),
               std::to_string(soak.fileSize), soak.isReopened},
              {{"KVT_LOG_FORCE_FLUSH", soak.forceFlush}});
    bool const hasEnded = host.Wait(600.0) == 0;
    LogCount const count = CountLog(directory.path);
    unsigned int const lost = count.Lost(soak.threads, soak.lines);
    return Report(start, hasEnded && lost + count.Faults() == 0,
                  "F9 %s %ux%u: %u lost, %u disordered, %u torn, %u files%s", soak.name, soak.threads,
                  soak.lines, lost, count.disordered, count.torn + count.tornLast, count.files,
                  hasEnded ? "" : ", host did not end well");
}

bool ShowSoak()
{
    constexpr unsigned long long megabyte = 1 << 20;
    bool const isKept = RunSoak(
        {"soak", isFull ? 16u : 8u, Trials(100000, 1000000), (isFull ? 64 : 8) * megabyte, "yes", "NO"});
    return RunSoak({"soak, each line flushed,", 4, Trials(5000, 50000), 0, "no", "YES"}) && isKept;
}

// Arguments: threads, lines, size of a file, whether the file is reopened.
int RunSoakHost(Arguments const& arguments)
{
    LogToFile(std::stoull(arguments.at(2)));
    std::jthread reopener(
        [&](std::stop_token const& stop)
        {
            // Names have a grain of a second.
            for (unsigned int i = 1; !stop.stop_requested() && arguments.at(3) == "yes"; ++i)
            {
                (void)usleep(10000);
                if (i % 110 == 0)
                {
                    (void)nxFileLogDevice::GetInstance().CloseAndReopenLogFile();
                }
            }
        });
    std::vector<std::jthread> threads;
    for (unsigned int i = 0; i < Number(arguments.at(0)); ++i)
    {
        threads.emplace_back([&, i] { LogLines(i, Number(arguments.at(1))); });
    }
    return 0;
}

bool ShowFullDisk()
{
    unsigned int const rounds = Trials(20, 1000);
    auto const start = Clock::now();
    SmallDisk const disk(8 << 20);
    if (!disk.isMounted)
    {
        NotRun("F7 disk full for moments: not run, this user may not mount a small disk");
    }
    Host host(disk.path, {"disk-full", std::to_string(rounds)}, {{"KVT_LOG_TIME_BETWEEN_FLUSHES", "0.01"}});
    bool const hasEnded = host.Wait(200.0) == 0;
    LogCount const count = CountLog(disk.path);
    constexpr unsigned int linesOfRound = 55;
    unsigned int const lost = count.Lost(1, rounds * linesOfRound);
    return Report(start, hasEnded && lost + count.Faults() == 0,
                  "F7 disk full for moments, %u rounds: %u of %u lost, %u torn%s", rounds, lost,
                  rounds * linesOfRound, count.torn + count.tornLast,
                  hasEnded ? "" : ", host did not end well");
}

int RunDiskHost(Arguments const& arguments)
{
    unsigned int line = 0;
    auto const log = [&line](unsigned int lines)
    {
        LogLines(0, lines, line);
        line += lines;
        nxLogManager::GetInstance().WaitForWriteThreadToWriteQueueToDisk(nxDoubleValueWrapper(10.0));
    };
    LogToFile();
    for (unsigned int round = 0; round < Number(arguments.at(0)); ++round)
    {
        FillDisk("ballast");
        log(50);
        (void)unlink("ballast");
        log(5);
    }
    return 0;
}

Figure const soakFigure("soak", ShowSoak, RunSoakHost);
Figure const diskFigure("disk-full", ShowFullDisk, RunDiskHost);

} // namespace
