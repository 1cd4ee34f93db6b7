// F10: that a log writer which is killed, whatever happened to it before, leaves all lines that were acknowledged.
//
// The host keeps the history of its log in memory that it shares with this program: per thread, how many lines have
// been acknowledged as written. Trouble of one kind, drawn by lot, is made for it; then it is killed, and its files are
// held against the history.

#include "core/logging/nxLogDevice.h"
#include "core/logging/nxLogManager.h"
#include "core/process/nxCmdLineArgs.h"
#include "tests/faults/Figures.h"

#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <fstream>
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

namespace files = std::filesystem;
using Clock = std::chrono::steady_clock;

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

class SharedHistory
{
public:
    explicit SharedHistory(files::path const& path)
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
        _history = new (region) History; // starts as the file's zeros
    }
    ~SharedHistory()
    {
        (void)munmap(_history, sizeof(History));
    }
    SharedHistory(SharedHistory const&) = delete;
    SharedHistory& operator=(SharedHistory const&) = delete;

    History* operator->() const
    {
        return _history;
    }

private:
    History* _history;
};

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
        std::array<unsigned int, loggingThreads> lines{};
        for (unsigned int i = 0; i < loggingThreads; ++i)
        {
            lines[i] = history.handedOver[i];
        }
        Drain();
        for (unsigned int i = 0; i < loggingThreads; ++i)
        {
            history.acknowledged[i] = lines[i];
        }
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
    std::array<unsigned int, loggingThreads> const before = {history.handedOver[0], history.handedOver[1]};
    return Await([&] { return history.acknowledged[0] > before[0] && history.acknowledged[1] > before[1]; });
}

struct Writer
{
    Writer(files::path const& parent, Trouble troubleOfWriter, bool isForced)
        : directory(parent), history(directory.Path() / "history"), trouble(troubleOfWriter),
          host(directory.Path(), {"nemesis"},
               {{"KVT_LOG_FORCE_FLUSH", isForced ? "YES" : "NO"},
                {"KVT_LOG_TIME_BETWEEN_FLUSHES", "0.01"},
                {"ASAN_OPTIONS", "detect_leaks=0"},
                {"TSAN_OPTIONS", "die_after_fork=0"}})
    {
    }

    Directory const directory;
    SharedHistory const history;
    Trouble const trouble;
    Host host;
};

struct Tally
{
    unsigned int lost = 0;
    unsigned int disordered = 0;
    unsigned int torn = 0;
    unsigned int tornLast = 0;
    unsigned int stuck = 0;
};

/// @return false when the host does not go on.
bool MakeTrouble(Writer& writer)
{
    History& history = *writer.history.operator->();
    files::path const logs = writer.directory.Path() / "log";
    switch (writer.trouble)
    {
    case Trouble::stopped:
        writer.host.Signal(SIGSTOP);
        (void)usleep(2000);
        writer.host.Signal(SIGCONT);
        return AwaitProgress(history);
    case Trouble::diskFull:
        FillDisk(writer.directory.Path() / "ballast");
        (void)usleep(15000);
        (void)unlink((writer.directory.Path() / "ballast").c_str());
        return AwaitProgress(history); // what was acknowledged meanwhile is in the file by now as well
    case Trouble::directoryRemoved:
        (void)files::remove_all(logs);
        return Ask(history, writer.trouble) && AwaitProgress(history);
    case Trouble::directoryUnusable:
        files::rename(logs, writer.directory.Path() / "moved");
        std::ofstream(logs).put('x'); // no directory can be made by that name
        return Ask(history, writer.trouble) && AwaitProgress(history);
    case Trouble::child:
    case Trouble::clockStep:
    case Trouble::zone: return Ask(history, writer.trouble) && AwaitProgress(history);
    default: return true;
    }
}

unsigned int CountLost(Writer const& writer, LogCount const& count)
{
    unsigned int lost = 0;
    for (unsigned int i = 0; i < loggingThreads; ++i)
    {
        unsigned int const acknowledged = writer.history->acknowledged[i];
        unsigned int const found = count.Lines(i);
        lost += acknowledged > found ? acknowledged - found : 0;
    }
    return writer.trouble == Trouble::child ? lost + linesOfChild - count.Lines(childThread) : lost;
}

/// After a removed directory the threads' numbers start in the middle: only that there are later lines is looked at.
void Check(Writer const& writer, Tally& tally)
{
    if (writer.trouble == Trouble::directoryRemoved)
    {
        bool isEmpty = true;
        for (auto const& entry : files::recursive_directory_iterator(writer.directory.Path()))
        {
            isEmpty = isEmpty && (entry.path().extension() != ".log" || entry.file_size() == 0);
        }
        tally.lost += isEmpty;
        return;
    }
    LogCount const count = CountLog(writer.directory.Path());
    tally.lost += CountLost(writer, count);
    tally.disordered += count.disordered;
    tally.torn += count.torn;
    tally.tornLast += count.tornLast;
    tally.stuck += count.files > 2; // the host's, and one more of a child or of a reopening
}

/// Runs two writers side by side, makes their trouble, kills and checks them.
void RunTrial(Chance& chance, files::path const& disk, bool isDiskSmall, Tally& tally)
{
    std::array<std::unique_ptr<Writer>, 2> writers;
    for (std::unique_ptr<Writer>& writer : writers)
    {
        auto trouble = static_cast<Trouble>(chance.Below(static_cast<unsigned int>(Trouble::count)));
        if (trouble == Trouble::diskFull && !isDiskSmall)
        {
            trouble = Trouble::none;
        }
        writer = std::make_unique<Writer>(disk, trouble, chance.Below(4) == 0);
    }
    for (std::unique_ptr<Writer>& writer : writers)
    {
        bool const goesOn = AwaitProgress(*writer->history.operator->()) && MakeTrouble(*writer);
        tally.stuck += !goesOn;
        if (!goesOn)
        {
            std::printf("stuck by trouble %u\n", static_cast<unsigned int>(writer->trouble));
        }
        (void)usleep(chance.Below(10000));
        writer->host.Signal(SIGKILL);
        (void)writer->host.Wait(10.0);
        Check(*writer, tally);
    }
}

} // namespace

int NemesisHost(Arguments const&)
{
    SharedHistory const shared("history");
    History& history = *shared.operator->();
    (void)LogToFile();
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

bool NemesisFigure(Extent extent)
{
    unsigned int const kills = extent == Extent::full ? 10000 : 100;
    auto const start = Clock::now();
    SmallDisk const disk(16 << 20);
    Directory const directory;
    Chance chance(10);
    Tally tally;
    for (unsigned int i = 0; i < kills / 2; ++i)
    {
        RunTrial(chance, disk.IsMounted() ? disk.Path() : directory.Path(), disk.IsMounted(), tally);
    }
    char text[250];
    (void)std::snprintf(text, sizeof text,
                        "F10 nemesis, %u kills, two writers side by side%s: %u acknowledged lines lost, %u "
                        "disordered, %u torn inside, %u torn last lines, %u stuck",
                        kills, disk.IsMounted() ? "" : ", without full disks (no right to mount)", tally.lost,
                        tally.disordered, tally.torn, tally.tornLast, tally.stuck);
    return Report(text, start, tally.lost + tally.disordered + tally.torn + tally.stuck == 0);
}
