// F10: that a log writer which is killed, whatever happened to it before, leaves all lines that were acknowledged.
//
// The host keeps the history of its log in memory that it shares with this program: per thread, how many lines have
// been acknowledged as written. Trouble of one kind, drawn by lot, is made for it; then it is killed, and its files are
// held against the history.

#include "core/logging/nxLogDevice.h"
#include "core/logging/nxLogManager.h"
#include "core/process/nxCmdLineArgs.h"
#include "tests/concurrency/SharedMemory.h"
#include "tests/faults/Faults.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
#include <thread>

#include <signal.h>
#include <unistd.h>

namespace
{

constexpr unsigned int loggingThreads = 2;
constexpr unsigned int childThread = 50;
constexpr unsigned int linesOfChild = 20;

enum Trouble : unsigned int
{
    none, // but the kill
    stopped,
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
    std::atomic<unsigned int> wanted; // a Trouble that the host itself has to make
    std::atomic<unsigned int> made;   // the same, when that is done
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
void LogAndAcknowledge(History& history, unsigned int thread, bool isForced)
{
    for (unsigned int line = 0;; ++line)
    {
        LogLines(thread, 1, line);
        history.handedOver[thread] = line + 1;
        if (isForced)
            history.acknowledged[thread] = line + 1;
        if (line % 8 == 0)
            (void)usleep(200);
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

/// What the host does of a trouble.
void Make(unsigned int trouble)
{
    switch (trouble)
    {
    case directoryRemoved:
    case directoryUnusable:
        ShiftClock(10); // names have a grain of a second
        (void)nxFileLogDevice::GetInstance().CloseAndReopenLogFile();
        break;
    case child: (void)Host(".", [] { return LogLines(childThread, linesOfChild), 0; }).Wait(10.0); break;
    case clockStep: ShiftClock(-3600); break;
    case zone: (void)nxCmdLineArgs::GetInstance().SetEnvValue("TZ", "Asia/Kathmandu"); break;
    default: break;
    }
}

int Run(History& history, bool isForced)
{
    LogToFile();
    for (unsigned int i = 0; i < loggingThreads; ++i)
        std::thread(LogAndAcknowledge, std::ref(history), i, isForced).detach();
    if (!isForced)
        std::thread(AcknowledgeCycles, std::ref(history)).detach();
    for (;;)
    {
        if (unsigned int const wanted = history.wanted; wanted != history.made)
        {
            Make(wanted);
            history.made = wanted;
        }
        (void)usleep(200);
    }
}

// The nemesis.

struct Writer
{
    Writer(files::path const& parent, unsigned int troubleOfWriter, bool isForced)
        : directory(parent), trouble(troubleOfWriter),
          host(directory.path, [=, this] { return Run(*history, isForced); },
               {{"KVT_LOG_FORCE_FLUSH", isForced ? "YES" : "NO"}, {"KVT_LOG_TIME_BETWEEN_FLUSHES", "0.01"}})
    {
    }

    Directory const directory;
    History* const history = &MakeShared<History>();
    unsigned int const trouble;
    Host host;
};

/// Lets a few acknowledgements come, so that there is something to lose.
bool AwaitProgress(History& history)
{
    unsigned int const before[] = {history.handedOver[0], history.handedOver[1]};
    return Await([&] { return history.acknowledged[0] > before[0] && history.acknowledged[1] > before[1]; });
}

/// @return false when the host does not go on.
bool MakeTrouble(Writer& writer)
{
    files::path const& directory = writer.directory.path;
    switch (writer.trouble)
    {
    case stopped:
        writer.host.Signal(SIGSTOP);
        (void)usleep(2000);
        writer.host.Signal(SIGCONT);
        break;
    case diskFull:
        FillDisk(directory / "ballast");
        (void)usleep(15000);
        files::remove(directory / "ballast"); // what was acknowledged meanwhile is in the file by now as well
        break;
    case directoryRemoved: files::remove_all(directory / "log"); break;
    case directoryUnusable:
        files::rename(directory / "log", directory / "moved");
        std::ofstream(directory / "log").put('x'); // no directory can be made by that name
        break;
    default: break;
    }
    writer.history->wanted = writer.trouble;
    return Await([&] { return writer.history->made == writer.trouble; }) && AwaitProgress(*writer.history);
}

/// What is wrong with the logs, and writers that did not go on.
struct Tally : LogCount
{
    unsigned int lost = 0;
    unsigned int stuck = 0;
};

void Check(Writer const& writer, Tally& tally)
{
    LogCount count = CountLog(writer.directory.path);
    if (writer.trouble == directoryRemoved)
    {
        tally.lost += count.lines.empty(); // numbers that start in the middle, or none at all
        return;
    }
    for (unsigned int i = 0; i < loggingThreads; ++i)
    {
        unsigned int const acknowledged = writer.history->acknowledged[i];
        tally.lost += acknowledged - std::min(acknowledged, count.lines[i]);
    }
    tally.lost += writer.trouble == child ? linesOfChild - count.lines[childThread] : 0;
    tally.disordered += count.disordered;
    tally.torn += count.torn;
    tally.tornLast += count.tornLast;
    tally.stuck += count.files > 2; // the host's, and one more of a child or of a reopening
}

/// Runs two writers side by side, makes their trouble, kills and checks them.
void RunTrial(Chance& chance, files::path const& disk, bool isDiskSmall, Tally& tally)
{
    std::unique_ptr<Writer> writers[2];
    for (std::unique_ptr<Writer>& writer : writers)
    {
        unsigned int const drawn = chance.Below(troubles);
        bool const isPossible = drawn != diskFull || isDiskSmall;
        writer = std::make_unique<Writer>(disk, isPossible ? drawn : none, chance.Below(4) == 0);
    }
    for (std::unique_ptr<Writer>& writer : writers)
    {
        if (!AwaitProgress(*writer->history) || !MakeTrouble(*writer))
        {
            ++tally.stuck;
            std::printf("stuck by trouble %u\n", writer->trouble);
        }
        (void)usleep(chance.Below(10000));
        writer->host.Signal(SIGKILL);
        (void)writer->host.Wait(10.0);
        Check(*writer, tally);
    }
}

bool Show()
{
    unsigned int const kills = Trials(100, 2000);
    auto const start = Clock::now();
    SmallDisk const disk(16 << 20);
    Directory const directory;
    Chance chance(10);
    Tally tally;
    for (unsigned int i = 0; i < kills / 2; ++i)
        RunTrial(chance, disk.isMounted ? disk.path : directory.path, disk.isMounted, tally);
    return Report(
        start, tally.lost + tally.disordered + tally.torn + tally.stuck == 0,
        "F10 nemesis, %u kills, two writers side by side%s: %u acknowledged lines lost, %u disordered, %u "
        "torn inside, %u torn last lines, %u stuck",
        kills, disk.isMounted ? "" : ", without full disks (no right to mount)", tally.lost, tally.disordered,
        tally.torn, tally.tornLast, tally.stuck);
}

Figure const figure("nemesis", Show);

} // namespace
