// F6: that a system call which fails gives the answer that its operation states, and that the next one works.
//
// Each trial is a host in a process of its own: it makes its preparations, meets the failure of one call at one place,
// and then looks whether all is well. The place moves on until the host no longer comes to it.

#include "core/core.h"
#include "tests/Sanitizer.h"
#include "tests/faults/FailingCalls.h"
#include "tests/faults/Faults.h"
#include "tests/faults/Loopback.h"

#include <cerrno>
#include <cstdio>
#include <functional>
#include <memory>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

/// What a host finds after the failure.
enum class Finding : int
{
    unharmed, // as if the call had not failed
    answered, // an operation said that it failed; all worked afterwards
    broken,   // what is promised does not hold
};

struct Trial
{
    char const* call;
    int error;
    int granted;
    bool isLasting;
};

/// A call fails while it lives.
class Failure
{
public:
    explicit Failure(Trial const& trial)
    {
        RefuseCalls(trial.call, trial.error, trial.granted, trial.isLasting);
    }
    ~Failure()
    {
        (void)End();
    }
    Failure(Failure const&) = delete;
    Failure& operator=(Failure const&) = delete;

    /// @return whether the host came to the place.
    static bool End()
    {
        int const refused = GrantCalls();
        wasMet = wasMet || refused != 0;
        return wasMet;
    }

    static bool wasMet;
};

bool Failure::wasMet = false;

Finding Judge(bool isSound, bool isUnharmed)
{
    return !isSound ? Finding::broken : isUnharmed ? Finding::unharmed : Finding::answered;
}

/// The log's file is created, written, cut over and closed.
Finding Log(Trial const& trial)
{
    constexpr unsigned int lines = 400;
    {
        Failure const failure(trial);
        LogToFile(9000);
        for (unsigned int i = 0; i < 4; ++i)
        {
            LogLines(0, lines / 4, i * lines / 4);
            Drain();
        }
    }
    // What was refused goes out with the next lines; a file that could not be had comes with the next reopening.
    (void)usleep(1100000 * (std::string_view(trial.call) == "open" ? 1 : 0));
    bool const isReopened =
        std::string_view(trial.call) != "open" || nxFileLogDevice::GetInstance().CloseAndReopenLogFile();
    LogLines(1, 10);
    (void)nxLogManager::GetInstance().Destroy();
    LogCount const count = CountLog(".");
    bool const isUnharmed = count.Lines(0) == lines && count.disordered == 0;
    bool const isWhole = count.torn + count.tornLast == 0 && count.Lines(1) == 10 && isReopened;
    // Only a file that could not be opened drops lines.
    return Judge(isWhole && (isUnharmed || std::string_view(trial.call) == "open"), isUnharmed);
}

/// A connection over which both ends send and receive. @return whether every operation was OK and every byte came.
bool Converse()
{
    nxSocket listener;
    nxSocket client;
    nxSocket server;
    nxSocket datagrams;
    char buffer[100];
    int received = 0;
    unsigned int sent = 0;
    unsigned int ready = 0;
    std::vector<bool> readable;
    _WSABUF gather[1];
    nxSocket::SetGatherSendArrayEntry(gather, 0, buffer, 7);
    return Listen(listener) && Connect(listener, client, server) &&
           client.SetSocketOptionFlag_NoDelay(true).IsOK() && client.Send("question").IsOK() &&
           server.Select(500000).IsOK() && server.Receive(buffer, sizeof buffer, received).IsOK() &&
           received == 8 && server.GatherSend(gather, 1, sent).IsOK() && sent == 7 &&
           nxSocket::Select({&client}, 500000, ready, readable).IsOK() &&
           client.Receive(buffer, sizeof buffer, received).IsOK() && received == 7 &&
           datagrams.Create(NX_SOCKET_TYPE_UDP).IsOK() && datagrams.Bind("127.0.0.1", 0).IsOK() &&
           datagrams.SendToDestination("x", 1, "127.0.0.1", PortOf(datagrams)).IsOK() &&
           datagrams.ReceiveFrom(buffer, sizeof buffer, received).IsOK() && received == 1;
}

Finding Sockets(Trial const& trial)
{
    unsigned int const before = OpenDescriptors();
    bool isWell = false;
    {
        Failure const failure(trial);
        isWell = Converse();
    }
    return Judge(OpenDescriptors() == before && Converse(), isWell);
}

/// Threads that can't be had: those of a pool, which can be stopped all the same, and the log's writer.
Finding Threads(Trial const& trial)
{
    {
        Failure const failure(trial);
        nxFunctorQueue queue;
        queue.Create(new nxFunctorThreadPool(2));
        (void)queue.Stop();
        LogToFile();
        LogLines(0, 10);
    }
    LogLines(0, 10, 10);
    (void)nxLogManager::GetInstance().Destroy();
    return Judge(CountLog(".").Lines(0) == 20, false);
}

Finding NamedObjects(Trial const& trial)
{
    bool isTaken = false;
    std::string const name = "nxfaults" + std::to_string(getpid());
    {
        Failure const failure(trial);
        nxWindowsSemaphore semaphore(name, 1, 1);
        isTaken = semaphore.TimedWait(0.0).IsOK() && semaphore.Post().IsOK();
        nxWindowsMutex mutex(name);
        (void)mutex.Lock();
        (void)mutex.Unlock();
    }
    nxWindowsSemaphore semaphore(name, 1, 1);
    return Judge(semaphore.TimedWait(0.0).IsOK() && semaphore.Post().IsOK(), isTaken);
}

struct Row
{
    Finding (*host)(Trial const&);
    char const* hostName;
    std::vector<char const*> calls;
    std::vector<int> errors;
    /// What the caller must not notice at all.
    bool isUnharmed;
};

std::vector<Row> const rows = {
    {Log, "log", {"write", "open"}, {EINTR}, true},
    {Log, "log", {"write"}, {ENOSPC, EIO, EDQUOT, EFBIG}, true},
    {Log, "log", {"open"}, {EACCES, EMFILE, ENFILE, ENOSPC, EROFS}, false},
    {Log, "log", {"mkdir", "stat"}, {EACCES, ENOSPC, EROFS}, true},
    {Log, "log", {"pthread_create"}, {EAGAIN, EPERM}, true},
    {Log, "log", {"sem_init"}, {ENOSYS}, true},
    {Sockets,
     "sockets",
     {"accept4", "sendto", "sendmsg", "recv", "recvfrom", "poll", "ppoll"},
     {EINTR},
     true},
    {Sockets, "sockets", {"socket", "accept4"}, {EMFILE, ENFILE, ENOMEM, ENOBUFS}, false},
    {Sockets, "sockets", {"bind", "listen"}, {EADDRINUSE, EACCES}, false},
    {Sockets, "sockets", {"connect"}, {ECONNREFUSED, ENETUNREACH, ETIMEDOUT, EAGAIN}, false},
    {Sockets, "sockets", {"setsockopt"}, {ENOPROTOOPT, ENOMEM}, false},
    {Sockets, "sockets", {"sendto", "sendmsg"}, {EPIPE, ECONNRESET, ENOBUFS, ENOMEM, EAGAIN}, false},
    {Sockets, "sockets", {"recv", "recvfrom"}, {ECONNRESET, ENOMEM, EAGAIN}, false},
    {Sockets, "sockets", {"poll", "ppoll"}, {ENOMEM}, false},
    {Threads, "threads", {"pthread_create"}, {EAGAIN, EPERM}, false},
    {Threads, "threads", {"sem_init"}, {ENOSYS, ENOSPC}, false},
    {NamedObjects, "named objects", {"shm_open"}, {EACCES, EMFILE, ENFILE, ENOSPC}, false},
    {NamedObjects, "named objects", {"mmap"}, {ENOMEM, EAGAIN}, false},
    {NamedObjects, "named objects", {"ftruncate"}, {ENOSPC, EINTR}, false},
    {NamedObjects, "named objects", {"fstat"}, {EIO}, false},
};

constexpr int notMet = 3;

/// @return a Finding, notMet, or nothing for a crash or a hang.
std::optional<int> Run(Row const& row, Trial const& trial)
{
    Directory const directory;
    pid_t const child = fork();
    if (child == 0)
    {
        bool const isThere = chdir(directory.path.c_str()) == 0 &&
                             std::freopen("out", "w", stdout) != nullptr &&
                             std::freopen("err", "w", stderr) != nullptr;
        Finding const finding = isThere ? row.host(trial) : Finding::broken;
        _exit(Failure::wasMet ? static_cast<int>(finding) : notMet);
    }
    std::optional<int> const code = WaitFor(child, 20.0);
    return code && *code <= notMet ? code : std::nullopt;
}

struct Tally
{
    unsigned int pairs = 0;
    unsigned int trials = 0;
    unsigned int wrong = 0;
};

void RunPair(Row const& row, char const* call, int error, int mostPlaces, Tally& tally)
{
    ++tally.pairs;
    for (bool const isLasting : {false, true})
    {
        if (isLasting && (error == EINTR || row.isUnharmed))
        {
            break; // would never end, or is no moment of trouble
        }
        for (int place = 0; place < mostPlaces; ++place)
        {
            std::optional<int> const code = Run(row, {call, error, place, isLasting});
            if (code == notMet)
            {
                break;
            }
            ++tally.trials;
            bool const isWrong = !code || *code == static_cast<int>(Finding::broken) ||
                                 (row.isUnharmed && *code != static_cast<int>(Finding::unharmed));
            tally.wrong += isWrong;
            if (isWrong)
            {
                std::printf("%s: %s fails with %d at place %d%s: %s\n", row.hostName, call, error, place,
                            isLasting ? " and after it" : "",
                            !code        ? "crash or hang"
                            : *code == 1 ? "noticed"
                                         : "broken");
            }
        }
    }
}

} // namespace

int main(int argumentCount, char** argumentValues)
{
    isFull = argumentCount > 1 && argumentValues[1] == std::string_view("full");
    if (underSanitizer)
    {
        NotRun("F6 system calls that fail: not run, the sanitizer itself stands before the C library");
    }
    auto const start = Clock::now();
    (void)std::setvbuf(stdout, nullptr, _IOLBF, 0);
    (void)setenv("KVT_LOG_DIRECTORY", "log", 1);
    (void)setenv("KVT_LOG_TO_CONSOLE", "NO", 1);
    (void)setenv("KVT_LOG_TIME_BETWEEN_FLUSHES", "0.01", 1);
    nxApplicationData::SetApplicationName("host");
    Tally tally;
    for (Row const& row : rows)
    {
        for (char const* const call : row.calls)
        {
            for (std::size_t i = 0; i < (isFull ? row.errors.size() : 1); ++i)
            {
                RunPair(row, call, row.errors[i], isFull ? 30 : 2, tally);
            }
        }
    }
    return Report(start, tally.wrong == 0,
                  "F6 system calls that fail, %u pairs of call and error, %u failures: %u wrong", tally.pairs,
                  tally.trials, tally.wrong)
               ? 0
               : 1;
}
