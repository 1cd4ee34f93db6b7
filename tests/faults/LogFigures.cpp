// F7, F9: that every line is in the files once and in order, under load and on a disk that is full for moments.
// F10: that a log writer which is killed, whatever happened to it before, leaves all lines that were acknowledged.

#include "core/core.h"
#include "tests/Sanitizer.h"
#include "tests/concurrency/SharedMemory.h"
#include "tests/faults/Faults.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <list>
#include <thread>
#include <vector>

#include <signal.h>
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
    Environment const environment = {{"KVT_LOG_FORCE_FLUSH", fileSize == 0 ? "YES" : "NO"}};
    bool const hasEnded = RunHost(directory.path, logFromThreads, 600.0, environment) == 0;
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
void LeaveToParent(unsigned int line)
{
    auto const logOne = [=]
    {
        files::remove("ballast");
        LogLines(1, 1, line);
        return 0;
    };
    (void)RunHost(".", logOne, 20.0);
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
    bool const hasEnded = RunHost(disk, body, 200.0, shortCycles) == 0;
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

// The nemesis. Its host keeps the history of its log in memory that it shares with this program: per thread, how many
// lines have been acknowledged as written. Trouble of one kind, drawn by lot, is made for it; then it is killed, and its
// files are held against the history.

constexpr unsigned int loggingThreads = 2;
constexpr unsigned int childThread = 50;
constexpr unsigned int linesOfChild = 20;

enum Trouble : unsigned int
{
    none,    // but the kill
    stopped, // from outside; the host makes all others for itself
    diskFull,
    directoryRemoved,
    directoryUnusable,
    child,
    clockStep,
    zone,
    troubles
};

/// What host and nemesis share.
struct History
{
    std::array<std::atomic<unsigned int>, loggingThreads> handedOver;
    std::array<std::atomic<unsigned int>, loggingThreads> acknowledged;
    std::atomic<bool> isTroubleDue;
    std::atomic<bool> isTroubleMade;
};

/// Waits until a condition holds, but not for ever.
template <typename Condition>
bool Await(Condition condition)
{
    auto const start = Clock::now();
    while (!condition() && SecondsSince(start) < 10.0)
        (void)usleep(50);
    return condition();
}

// The host.

/// With each line flushed, a statement that has returned is acknowledged; else, what was handed over before a drain.
/// After so many lines it goes slowly, so that a host that lives long does not fill the disk.
void LogAndAcknowledge(History& history, unsigned int thread, bool isForced)
{
    for (unsigned int line = 0;; ++line)
    {
        LogLines(thread, 1, line);
        history.handedOver[thread] = line + 1;
        if (isForced)
            history.acknowledged[thread] = line + 1;
        if (line % 8 == 0)
            (void)usleep(line < 20000 ? 200 : 20000);
    }
}

[[noreturn]] void AcknowledgeCycles(History& history)
{
    for (;;)
    {
        unsigned int const lines[] = {history.handedOver[0], history.handedOver[1]};
        Drain();
        std::copy(std::begin(lines), std::end(lines), history.acknowledged.begin());
    }
}

void ReopenLater()
{
    ShiftClock(10); // names have a grain of a second
    (void)nxFileLogDevice::GetInstance().CloseAndReopenLogFile();
}

void Make(unsigned int trouble)
{
    switch (trouble)
    {
    case diskFull:
        FillDisk("ballast");
        (void)usleep(15000);
        files::remove("ballast"); // what was acknowledged meanwhile is in the file by now as well
        break;
    case directoryRemoved:
        files::remove_all("log");
        ReopenLater();
        break;
    case directoryUnusable:
        files::rename("log", "moved");
        std::ofstream("log").put('x'); // no directory can be made by that name
        ReopenLater();
        break;
    case child:
        (void)RunHost(
            ".", [] { return LogLines(childThread, linesOfChild), 0; }, 10.0);
        break;
    case clockStep: ShiftClock(-3600); break;
    case zone: (void)nxCmdLineArgs::GetInstance().SetEnvValue("TZ", "Asia/Kathmandu"); break;
    default: break;
    }
}

int Run(History& history, unsigned int trouble, bool isForced)
{
    LogToFile();
    for (unsigned int i = 0; i < loggingThreads; ++i)
        std::thread(LogAndAcknowledge, std::ref(history), i, isForced).detach();
    if (!isForced)
        std::thread(AcknowledgeCycles, std::ref(history)).detach();
    while (!history.isTroubleDue)
        (void)usleep(200);
    Make(trouble);
    history.isTroubleMade = true;
    return pause();
}

// The nemesis.

struct Writer
{
    Writer(files::path const& parent, unsigned int troubleOfWriter, bool isForced)
        : directory(parent), trouble(troubleOfWriter),
          host(StartHost(
              directory.path, [=, this] { return Run(*history, trouble, isForced); },
              {{"KVT_LOG_FORCE_FLUSH", isForced ? "YES" : "NO"}, {"KVT_LOG_TIME_BETWEEN_FLUSHES", "0.01"}}))
    {
    }

    Directory const directory;
    History* const history = &MakeShared<History>();
    unsigned int const trouble;
    pid_t const host;
};

/// Lets a few acknowledgements come, so that there is something to lose.
bool AwaitProgress(History& history)
{
    unsigned int const before[] = {history.handedOver[0], history.handedOver[1]};
    return Await([&] { return history.acknowledged[0] > before[0] && history.acknowledged[1] > before[1]; });
}

/// @return false when the host does not go on.
bool MakeTrouble(Writer const& writer)
{
    if (writer.trouble == stopped)
    {
        (void)kill(writer.host, SIGSTOP);
        (void)usleep(2000);
        (void)kill(writer.host, SIGCONT);
    }
    writer.history->isTroubleDue = true;
    return Await([&] { return writer.history->isTroubleMade.load(); }) && AwaitProgress(*writer.history);
}

LogCount tally;           // what is wrong with the logs
unsigned int missing = 0; // acknowledged lines
unsigned int stuck = 0;   // writers that did not go on

void Check(Writer const& writer)
{
    LogCount count = CountLog(writer.directory.path);
    if (writer.trouble == directoryRemoved)
    {
        missing += count.lines.empty(); // numbers that start in the middle, or none at all
        return;
    }
    unsigned int lost = writer.trouble == child ? linesOfChild - count.lines[childThread] : 0;
    for (unsigned int i = 0; i < loggingThreads; ++i)
    {
        unsigned int const acknowledged = writer.history->acknowledged[i];
        lost += acknowledged - std::min(acknowledged, count.lines[i]);
    }
    if (lost != 0)
        std::printf("%u lines lost by trouble %u\n", lost, writer.trouble);
    missing += lost;
    tally.disordered += count.disordered;
    tally.torn += count.torn;
    tally.tornLast += count.tornLast;
    stuck += count.files > 2; // the host's, and one more of a child or of a reopening
}

/// Runs two writers side by side, makes their trouble, kills and checks them.
void RunTrial(Chance& chance, files::path const& disk, bool isDiskSmall)
{
    std::list<Writer> writers;
    while (writers.size() < 2)
    {
        unsigned int const drawn = chance.Below(troubles);
        bool const isPossible = drawn != diskFull || isDiskSmall;
        writers.emplace_back(disk, isPossible ? drawn : none, chance.Below(4) == 0);
    }
    for (Writer const& writer : writers)
    {
        if (!AwaitProgress(*writer.history) || !MakeTrouble(writer))
        {
            ++stuck;
            std::printf("stuck by trouble %u\n", writer.trouble);
        }
        (void)usleep(chance.Below(10000));
        (void)WaitFor(writer.host, 0.0); // kills it
        Check(writer);
    }
}

bool ShowKills()
{
    unsigned int const kills = Trials(100, 10000);
    auto const start = Clock::now();
    SmallDisk const disk(16 << 20);
    Directory const directory;
    Chance chance(10);
    for (unsigned int i = 0; i < kills / 2; ++i)
        RunTrial(chance, disk.isMounted ? disk.path : directory.path, disk.isMounted);
    return Report(
        start, missing + tally.disordered + tally.torn + stuck == 0,
        "F10 nemesis, %u kills, two writers side by side%s: %u acknowledged lines lost, %u disordered, %u "
        "torn inside, %u torn last lines, %u stuck",
        kills, disk.isMounted ? "" : ", without full disks (no right to mount)", missing, tally.disordered,
        tally.torn, tally.tornLast, stuck);
}

Figure const killFigure("nemesis", ShowKills);

} // namespace
