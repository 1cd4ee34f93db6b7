// F6: that a system call which fails gives the answer that its operation states, and that the next one works.
//
// Each trial is a host in a process of its own: it makes its preparations, meets the failure of one call at one place,
// and then looks whether all is well. The place moves on until the host no longer comes to it.

#include "core/core.h"
#include "tests/faults/FailingCalls.h"
#include "tests/faults/Faults.h"
#include "tests/faults/Loopback.h"

#include <cerrno>
#include <cstdio>
#include <string_view>
#include <vector>

#include <unistd.h>

namespace
{

/// What a host finds after the failure.
enum Finding
{
    unharmed, // as if the call had not failed
    answered, // an operation said that it failed; all worked afterwards
    broken,   // what is promised does not hold
    notMet,   // it never came to the place
};

struct Trial
{
    char const* call;
    int error;
    int granted;
    bool isLasting;
};

bool isMet = false; // the host came to the place

template <typename Body>
void Meet(Trial const& trial, Body body)
{
    RefuseCalls(trial.call, trial.error, trial.granted, trial.isLasting);
    body();
    isMet = GrantCalls() != 0;
}

Finding Judge(bool isSound, bool isUnharmed)
{
    return !isSound ? broken : isUnharmed ? unharmed : answered;
}

/// The log's file is created, written, cut over and closed.
Finding Log(Trial const& trial)
{
    constexpr unsigned int lines = 400;
    auto const logMuch = []
    {
        LogToFile(9000);
        for (unsigned int i = 0; i < 4; ++i)
        {
            LogLines(0, lines / 4, i * lines / 4);
            Drain();
        }
    };
    Meet(trial, logMuch);
    // What was refused goes out with the next lines; a file that could not be had comes with the next reopening.
    bool const isOpen = trial.call == std::string_view("open");
    (void)usleep(isOpen ? 1100000 : 0);
    bool const isReopened = !isOpen || nxFileLogDevice::GetInstance().CloseAndReopenLogFile();
    LogLines(1, 10);
    (void)nxLogManager::GetInstance().Destroy();
    LogCount count = CountLog(".");
    bool const isUnharmed = count.lines[0] == lines && count.disordered == 0;
    bool const isWhole = count.torn + count.tornLast == 0 && count.lines[1] == 10 && isReopened;
    // Only a file that could not be opened drops lines.
    return Judge(isWhole && (isUnharmed || isOpen), isUnharmed);
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
    Meet(trial, [&] { isWell = Converse(); });
    return Judge(OpenDescriptors() == before && Converse(), isWell);
}

/// Threads that can't be had: those of a pool, which can be stopped all the same, and the log's writer.
Finding Threads(Trial const& trial)
{
    auto const startThem = []
    {
        nxFunctorQueue queue;
        queue.Create(new nxFunctorThreadPool(2));
        (void)queue.Stop();
        LogToFile();
        LogLines(0, 10);
        nxLogManager::GetInstance().WaitForWriteThreadToWriteQueueToDisk(nxDoubleValueWrapper(100.0));
    };
    Meet(trial, startThem);
    LogLines(0, 10, 10); // starts a writer if there is none
    Drain();
    return Judge(CountLog(".").Lost(1, 20) == 0, false);
}

Finding NamedObjects(Trial const& trial)
{
    std::string const name = "nxfaults" + std::to_string(getpid());
    auto const take = [&]
    {
        nxWindowsSemaphore semaphore(name, 1, 1);
        return semaphore.TimedWait(0.0).IsOK() && semaphore.Post().IsOK();
    };
    bool isTaken = false;
    auto const takeBoth = [&]
    {
        isTaken = take();
        nxWindowsMutex mutex(name);
        (void)mutex.Lock();
        (void)mutex.Unlock();
    };
    Meet(trial, takeBoth);
    return Judge(take(), isTaken);
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
    {Sockets, "sockets", {"accept4", "sendto", "sendmsg", "recv", "recvfrom"}, {EINTR}, true},
    {Sockets, "sockets", {"poll", "ppoll"}, {EINTR}, true},
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

unsigned int pairs = 0;
unsigned int trials = 0;
unsigned int wrong = 0;

/// @return false when the host did not come to the place.
bool Run(Row const& row, Trial const& trial)
{
    Directory const directory;
    auto const meet = [&]
    {
        Finding const finding = row.host(trial);
        return isMet ? finding : notMet;
    };
    std::optional<int> const finding = RunHost(directory.path, meet, 20.0, shortCycles);
    if (finding == notMet)
        return false;
    ++trials;
    if (finding != unharmed && (row.isUnharmed || finding != answered))
    {
        ++wrong;
        std::printf("%s: %s fails with %d at place %d%s: %s\n", row.hostName, trial.call, trial.error,
                    trial.granted, trial.isLasting ? " and after it" : "",
                    finding == answered ? "noticed"
                    : finding == broken ? "broken"
                                        : "crash or hang");
    }
    return true;
}

void RunPair(Row const& row, char const* call, int error)
{
    int const places = isFull ? 30 : 2;
    // The others would never end, or are no lasting trouble.
    bool const mayLast = error != EINTR && !row.isUnharmed;
    ++pairs;
    for (int isLasting = 0; isLasting <= mayLast; ++isLasting)
        for (int place = 0; place < places && Run(row, {call, error, place, isLasting != 0});)
            ++place;
}

bool Show()
{
    auto const start = Clock::now();
    for (Row const& row : rows)
        for (char const* const call : row.calls)
            for (std::size_t i = 0; i < (isFull ? row.errors.size() : 1); ++i)
                RunPair(row, call, row.errors[i]);
    return Report(start, wrong == 0,
                  "F6 system calls that fail, %u pairs of call and error, %u failures: %u wrong", pairs,
                  trials, wrong);
}

Figure const figure("calls", Show);

} // namespace
