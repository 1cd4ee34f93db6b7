// F10: that a log writer which is killed, whatever happened to it before, leaves all lines that were acknowledged.
//
// The host keeps the history of its log in memory that it shares with this program: per thread, how many lines have
// been acknowledged as written. Trouble of one kind, drawn by lot, is made for it; then it is killed, and its files are
// held against the history.

#include "core/logging/nxLogDevice.h"
#include "core/logging/nxLogManager.h"
#include "core/process/nxCmdLineArgs.h"
#include "tests/faults/Faults.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <new>
#include <thread>

#include <fcntl.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

constexpr unsigned int loggingThreads = 2;
constexpr unsigned int childThread = 50;
constexpr unsigned int linesOfChild = 20;

enum class Trouble : unsigned int
{
    none, // but the kill
    stopped,
    diskFull,
    directoryRemoved,
    directoryUnusable,
    child,
    clockStep,
    zone,
    count
};

/// What host and nemesis share.
struct History
{
    std::array<std::atomic<unsigned int>, loggingThreads> handedOver;
    std::array<std::atomic<unsigned int>, loggingThreads> acknowledged;
    std::atomic<unsigned int> wanted; // a Trouble that the host itself has to make
    std::atomic<unsigned int> made;   // the same, when that is done
};

/// The history that lies in a file, which starts as zeros.
History& MapHistory(files::path const& path)
{
    int const file = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    bool const isSized = ftruncate(file, sizeof(History)) == 0;
    void* const region = mmap(nullptr, sizeof(History), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    (void)close(file);
    if (!isSized || region == MAP_FAILED)
    {
        std::perror("history");
        std::abort();
    }
    return *new (region) History;
}

/// Waits until a condition holds, but not for ever.
template <typename Condition>
bool Await(Condition condition)
{
    for (int i = 0; i < 200000; ++i)
    {
        if (condition())
        {
            return true;
        }
        (void)usleep(50);
    }
    return false;
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
        {
            history.acknowledged[thread] = line + 1;
        }
        if (line % 8 == 0)
        {
            (void)usleep(200);
        }
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

void Make(Trouble trouble)
{
    switch (trouble)
    {
    case Trouble::directoryRemoved:
    case Trouble::directoryUnusable:
        ShiftClock(10); // names have a grain of a second
        (void)nxFileLogDevice::GetInstance().CloseAndReopenLogFile();
        break;
    case Trouble::child:
        if (pid_t const child = fork(); child == 0)
        {
            LogLines(childThread, linesOfChild);
            std::exit(0);
        }
        else
        {
            (void)waitpid(child, nullptr, 0);
        }
        break;
    case Trouble::clockStep: ShiftClock(-3600); break;
    case Trouble::zone: (void)nxCmdLineArgs::GetInstance().SetEnvValue("TZ", "Asia/Kathmandu"); break;
    default: break;
    }
}

// The nemesis.

/// Has the host make a trouble, and returns when it has.
bool Ask(History& history, Trouble trouble)
{
    history.wanted = static_cast<unsigned int>(trouble);
    return Await([&] { return history.made == static_cast<unsigned int>(trouble); });
}

/// Lets a few acknowledgements come, so that there is something to lose.
bool AwaitProgress(History& history)
{
    unsigned int const before[] = {history.handedOver[0], history.handedOver[1]};
    return Await([&] { return history.acknowledged[0] > before[0] && history.acknowledged[1] > before[1]; });
}

struct Writer
{
    Writer(files::path const& parent, Trouble troubleOfWriter, bool isForced)
        : directory(parent), history(MapHistory(directory.path / "history")), trouble(troubleOfWriter),
          host(directory.path, {"nemesis"},
               {{"KVT_LOG_FORCE_FLUSH", isForced ? "YES" : "NO"}, {"KVT_LOG_TIME_BETWEEN_FLUSHES", "0.01"}})
    {
    }
    ~Writer()
    {
        (void)munmap(&history, sizeof history);
    }

    Directory const directory;
    History& history;
    Trouble const trouble;
    Host host;
};

/// @return false when the host does not go on.
bool MakeTrouble(Writer& writer)
{
    files::path const logs = writer.directory.path / "log";
    files::path const ballast = writer.directory.path / "ballast";
    bool isMade = true;
    switch (writer.trouble)
    {
    case Trouble::none: return true;
    case Trouble::stopped:
        writer.host.Signal(SIGSTOP);
        (void)usleep(2000);
        writer.host.Signal(SIGCONT);
        break;
    case Trouble::diskFull:
        FillDisk(ballast);
        (void)usleep(15000);
        (void)unlink(ballast.c_str()); // what was acknowledged meanwhile is in the file by now as well
        break;
    case Trouble::directoryRemoved:
        (void)files::remove_all(logs);
        isMade = Ask(writer.history, writer.trouble);
        break;
    case Trouble::directoryUnusable:
        files::rename(logs, writer.directory.path / "moved");
        std::ofstream(logs).put('x'); // no directory can be made by that name
        isMade = Ask(writer.history, writer.trouble);
        break;
    default: isMade = Ask(writer.history, writer.trouble);
    }
    return isMade && AwaitProgress(writer.history);
}

/// What is wrong with the logs, and writers that did not go on.
struct Tally : LogCount
{
    unsigned int lost = 0;
    unsigned int stuck = 0;
};

void Check(Writer const& writer, Tally& tally)
{
    LogCount const count = CountLog(writer.directory.path);
    if (writer.trouble == Trouble::directoryRemoved)
    {
        tally.lost +=
            count.lines.empty(); // the numbers start in the middle: there are later lines, or there are none
        return;
    }
    for (unsigned int i = 0; i < loggingThreads; ++i)
    {
        unsigned int const acknowledged = writer.history.acknowledged[i];
        tally.lost += acknowledged - std::min(acknowledged, count.Lines(i));
    }
    tally.lost += writer.trouble == Trouble::child ? linesOfChild - count.Lines(childThread) : 0;
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
        auto const drawn = static_cast<Trouble>(chance.Below(static_cast<unsigned int>(Trouble::count)));
        bool const isPossible = drawn != Trouble::diskFull || isDiskSmall;
        writer = std::make_unique<Writer>(disk, isPossible ? drawn : Trouble::none, chance.Below(4) == 0);
    }
    for (std::unique_ptr<Writer>& writer : writers)
    {
        if (!AwaitProgress(writer->history) || !MakeTrouble(*writer))
        {
            ++tally.stuck;
            std::printf("stuck by trouble %u\n", static_cast<unsigned int>(writer->trouble));
        }
        (void)usleep(chance.Below(10000));
        writer->host.Signal(SIGKILL);
        (void)writer->host.Wait(10.0);
        Check(*writer, tally);
    }
}

int Run(Arguments const&)
{
    History& history = MapHistory("history");
    LogToFile();
    bool const isForced = std::getenv("KVT_LOG_FORCE_FLUSH") == std::string("YES");
    for (unsigned int i = 0; i < loggingThreads; ++i)
    {
        std::thread(LogAndAcknowledge, std::ref(history), i, isForced).detach();
    }
    if (!isForced)
    {
        std::thread(AcknowledgeCycles, std::ref(history)).detach();
    }
    for (;;)
    {
        if (unsigned int const wanted = history.wanted; wanted != history.made)
        {
            Make(static_cast<Trouble>(wanted));
            history.made = wanted;
        }
        (void)usleep(200);
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
    {
        RunTrial(chance, disk.isMounted ? disk.path : directory.path, disk.isMounted, tally);
    }
    return Report(
        start, tally.lost + tally.disordered + tally.torn + tally.stuck == 0,
        "F10 nemesis, %u kills, two writers side by side%s: %u acknowledged lines lost, %u disordered, %u "
        "torn inside, %u torn last lines, %u stuck",
        kills, disk.isMounted ? "" : ", without full disks (no right to mount)", tally.lost, tally.disordered,
        tally.torn, tally.tornLast, tally.stuck);
}

Figure const figure("nemesis", Show, Run);

} // namespace
