// F7, F9: that every line is in the files once and in order, under load and on a disk that is full for moments.

#include "core/logging/nxLogDevice.h"
#include "core/logging/nxLogManager.h"
#include "tests/Sanitizer.h"
#include "tests/faults/Faults.h"

#include <cstdlib>
#include <thread>

#include <sys/mount.h>
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
    unsigned long long const fileSize = (underSanitizer ? 1 : isFull ? 64 : 8) * megabyte;
    bool const isKept = RunSoak({"soak", isFull ? 16u : 8u, Trials(100000, 1000000), fileSize, "yes", "NO"});
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

/// Runs a host that meets trouble with its disk. @param lines  what it logs.
bool RunDiskHost(char const* trouble, files::path const& disk, unsigned int rounds, unsigned int lines)
{
    auto const start = Clock::now();
    Host host(disk, {"disk-full", trouble, std::to_string(rounds)},
              {{"KVT_LOG_TIME_BETWEEN_FLUSHES", "0.01"}});
    bool const hasEnded = host.Wait(200.0) == 0;
    LogCount const count = CountLog(disk);
    unsigned int const lost = count.Lost(1, lines);
    return Report(start, hasEnded && lost + count.Faults() == 0, "F7 %s, %u rounds: %u of %u lost, %u torn%s",
                  trouble, rounds, lost, lines, count.torn + count.tornLast,
                  hasEnded ? "" : ", host did not end well");
}

bool ShowFullDisk()
{
    Directory const directory;
    bool isKept = RunDiskHost("/dev/full as the file", directory.path, 1, 1000);
    SmallDisk const disk(8 << 20);
    SmallDisk const tiny(32 << 10);
    if (!disk.isMounted || !tiny.isMounted)
    {
        NotRun("F7 disk full for moments: not run, this user may not mount a small disk");
    }
    unsigned int const rounds = Trials(20, 1000);
    isKept = RunDiskHost("disk full for moments", disk.path, rounds, 55 * rounds) && isKept;
    return RunDiskHost("disk of 32 KiB that grows in the end", tiny.path, 1, 20000) && isKept;
}

/// Logs lines that follow on those before, and lets the writer try.
void LogMore(unsigned int lines)
{
    static unsigned int logged = 0;
    LogLines(0, lines, logged);
    logged += lines;
    nxLogManager::GetInstance().WaitForWriteThreadToWriteQueueToDisk(nxDoubleValueWrapper(10.0));
}

/// A child that is forked while lines wait for room has none of them to write.
void LeaveToParent(unsigned int child)
{
    pid_t const process = fork();
    if (process == 0)
    {
        (void)unlink("ballast");
        LogLines(1, 1, child);
        std::exit(0);
    }
    (void)WaitFor(process, 20.0);
}

// Arguments: the trouble, rounds.
int BeDiskHost(Arguments const& arguments)
{
    char const trouble = arguments.at(0)[0];
    if (trouble == '/')
    {
        // The file has the name that the device is about to take, and takes nothing; the next one is a file as usual.
        std::string const name = nxFileLogDevice::GenerateFileName(".log", false, 1, true, true);
        files::create_symlink("/dev/full", name);
        LogToFile();
        LogMore(900);
        files::remove(name);
        (void)nxFileLogDevice::GetInstance().CloseAndReopenLogFile();
        LogMore(100);
        return 0;
    }
    LogToFile();
    if (arguments.at(0) == "disk full for moments")
    {
        for (unsigned int round = 0; round < Number(arguments.at(1)); ++round)
        {
            FillDisk("ballast");
            LogMore(50);
            if (round % 10 == 0)
            {
                LeaveToParent(round / 10);
            }
            (void)unlink("ballast");
            LogMore(5);
        }
        return 0;
    }
    for (unsigned int i = 0; i < 20; ++i)
    {
        LogMore(1000); // in all more than the usual buffer of a megabyte
    }
    return mount(nullptr, files::current_path().c_str(), nullptr, MS_REMOUNT, "size=4m");
}

Figure const soakFigure("soak", ShowSoak, RunSoakHost);
Figure const diskFigure("disk-full", ShowFullDisk, BeDiskHost);

} // namespace
