// F7, F9: that every line is in the files once and in order, under load and on a disk that is full for moments.

#include "core/logging/nxLogDevice.h"
#include "core/logging/nxLogManager.h"
#include "tests/Sanitizer.h"
#include "tests/faults/Faults.h"

#include <thread>
#include <vector>

#include <sys/mount.h>
#include <unistd.h>

namespace
{

/// @param fileSize  the most of a file; 0 for one file that is neither cut over nor reopened, and each line flushed.
bool RunSoak(unsigned int threads, unsigned int lines, unsigned long long fileSize)
{
    auto const start = Clock::now();
    Directory const directory;
    auto const logFromThreads = [=]
    {
        LogToFile(fileSize);
        std::jthread reopener(
            [&](std::stop_token const& stop)
            {
                // Once in a second at most: names have a grain of it.
                for (unsigned int i = 1; !stop.stop_requested() && fileSize != 0; ++i)
                {
                    (void)usleep(10000);
                    if (i % 110 == 0)
                        (void)nxFileLogDevice::GetInstance().CloseAndReopenLogFile();
                }
            });
        std::vector<std::jthread> logging;
        for (unsigned int i = 0; i < threads; ++i)
            logging.emplace_back(LogLines, i, lines, 0);
        return 0;
    };
    Host host(directory.path, logFromThreads, {{"KVT_LOG_FORCE_FLUSH", fileSize == 0 ? "YES" : "NO"}});
    bool const hasEnded = host.Wait(600.0) == 0;
    LogCount count = CountLog(directory.path);
    unsigned int const lost = count.Lost(threads, lines);
    return Report(start, hasEnded && lost + count.Faults() == 0,
                  "F9 soak%s %ux%u: %u lost, %u disordered, %u torn, %u files%s",
                  fileSize == 0 ? ", each line flushed," : "", threads, lines, lost, count.disordered,
                  count.torn + count.tornLast, count.files, hasEnded ? "" : ", host did not end well");
}

bool ShowSoak()
{
    unsigned long long const megabytes = underSanitizer ? 1 : isFull ? 64 : 8;
    bool const isKept = RunSoak(isFull ? 16 : 8, Trials(100000, 1000000), megabytes << 20);
    return RunSoak(4, Trials(5000, 50000), 0) && isKept;
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
    auto const logOne = [=]
    {
        files::remove("ballast");
        LogLines(1, 1, child);
        return 0;
    };
    (void)Host(".", logOne).Wait(20.0);
}

/// The file has the name that the device is about to take, and takes nothing; the next one is a file as usual.
int LogToFullDevice()
{
    std::string const name = nxFileLogDevice::GenerateFileName(".log", false, 1, true, true);
    files::create_symlink("/dev/full", name);
    LogToFile();
    LogMore(900);
    files::remove(name);
    (void)nxFileLogDevice::GetInstance().CloseAndReopenLogFile();
    LogMore(100);
    return 0;
}

int LogToFullDisk(unsigned int rounds)
{
    LogToFile();
    for (unsigned int round = 0; round < rounds; ++round)
    {
        FillDisk("ballast");
        LogMore(50);
        if (round % 10 == 0)
            LeaveToParent(round / 10);
        files::remove("ballast");
        LogMore(5);
    }
    return 0;
}

int LogToTinyDisk()
{
    LogToFile();
    for (unsigned int i = 0; i < 20; ++i)
        LogMore(1000); // in all more than the usual buffer of a megabyte
    return mount(nullptr, files::current_path().c_str(), nullptr, MS_REMOUNT, "size=4m");
}

/// Runs a host that meets trouble with its disk. @param lines  what it logs.
bool RunDiskHost(char const* trouble, files::path const& disk, unsigned int rounds, unsigned int lines,
                 std::function<int()> const& body)
{
    auto const start = Clock::now();
    Host host(disk, body, shortCycles);
    bool const hasEnded = host.Wait(200.0) == 0;
    LogCount count = CountLog(disk);
    unsigned int const lost = count.Lost(1, lines);
    return Report(start, hasEnded && lost + count.Faults() == 0, "F7 %s, %u rounds: %u of %u lost, %u torn%s",
                  trouble, rounds, lost, lines, count.torn + count.tornLast,
                  hasEnded ? "" : ", host did not end well");
}

bool ShowFullDisk()
{
    Directory const directory;
    bool isKept = RunDiskHost("/dev/full as the file", directory.path, 1, 1000, LogToFullDevice);
    SmallDisk const disk(8 << 20);
    SmallDisk const tiny(32 << 10);
    if (!disk.isMounted || !tiny.isMounted)
        NotRun("F7 disk full for moments: not run, this user may not mount a small disk");
    unsigned int const rounds = Trials(20, 1000);
    isKept = RunDiskHost("disk full for moments", disk.path, rounds, 55 * rounds,
                         [=] { return LogToFullDisk(rounds); }) &&
             isKept;
    return RunDiskHost("disk of 32 KiB that grows in the end", tiny.path, 1, 20000, LogToTinyDisk) && isKept;
}

Figure const soakFigure("soak", ShowSoak);
Figure const diskFigure("disk-full", ShowFullDisk);

} // namespace
