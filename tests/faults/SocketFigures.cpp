// F8, F20: that signals interrupt nothing, and that whatever peers do leaves no descriptor behind.

#include "core/core.h"
#include "tests/faults/Faults.h"
#include "tests/faults/Loopback.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <fstream>
#include <thread>

#include <signal.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <unistd.h>

namespace
{

/// Two ends of a connection over the loopback.
struct Connection
{
    explicit Connection(nxSocket& listener) : isMade(Connect(listener, client, server))
    {
    }

    nxSocket client;
    nxSocket server;
    bool const isMade;
};

std::atomic<unsigned int> signalsHandled;

/// A thousand signals a second, without SA_RESTART, for whichever thread they meet.
void StartStorm()
{
    struct sigaction action = {};
    action.sa_handler = [](int) { ++signalsHandled; };
    (void)sigaction(SIGALRM, &action, nullptr);
    itimerval const everyMillisecond = {{0, 1000}, {0, 1000}};
    (void)setitimer(ITIMER_REAL, &everyMillisecond, nullptr);
}

/// What goes over a connection again and again, two times. Its length has no factor in common with that of any buffer.
std::string const& Pattern()
{
    static std::string const pattern = []
    {
        Chance chance(8);
        std::string bytes(262147, ' ');
        std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(chance.Below(256)); });
        return bytes + bytes;
    }();
    return pattern;
}

/// Sends until the time is over, and so many bytes. @return how many went out.
unsigned long long Send(nxSocket& socket, double seconds, unsigned long long least)
{
    auto const start = Clock::now();
    unsigned long long sent = 0;
    while ((SecondsSince(start) < seconds || sent < least) && socket.Send(Pattern()).IsOK())
        sent += Pattern().size();
    return sent;
}

/// Receives until the peer closes. @return how many bytes came up to the first wrong one.
unsigned long long Receive(nxSocket& socket)
{
    std::string buffer(Pattern().size() / 2, ' ');
    unsigned long long received = 0;
    for (int count = 0; socket.Receive(buffer.data(), static_cast<int>(buffer.size()), count).IsOK();)
    {
        std::size_t const size = static_cast<std::size_t>(count);
        if (Pattern().compare(received % buffer.size(), size, buffer, 0, size) != 0)
            break;
        received += size;
    }
    return received;
}

/// Makes and ends connections. @return how many failed.
unsigned int Reconnect(std::atomic<bool> const& stop, std::atomic<unsigned int>& made)
{
    nxSocket listener;
    unsigned int failures = Listen(listener) ? 0 : 1;
    while (!stop)
    {
        Connection connection(listener);
        failures += !connection.isMade;
        ++made;
    }
    return failures;
}

/// Starts and joins threads, and waits for semaphores. A wait may report the interruption, and nothing else.
unsigned int StartAndJoin(std::atomic<bool> const& stop)
{
    unsigned int failures = 0;
    while (!stop)
    {
        nxFunctorQueue queue;
        queue.Create(new nxFunctorThreadPool(4));
        nxSemaphore semaphore(0);
        nxErrorEnum const result = semaphore.TimedWait(0.003);
        // A deadline at the very start of a second is refused, as nxSemaphore says.
        failures += result != NX_ERR_THR_TIMEDOUT && result != NX_ERR_THR_INTERRUPTED &&
                    result != NX_ERR_INVALID_PARAMETER;
        failures += !queue.Stop().IsOK();
    }
    return failures;
}

/// Sends for so many seconds, and so many bytes at least. Tells what was seen on standard output.
int RunUnderSignals(double seconds, unsigned long long bytes, unsigned int lines)
{
    LogToFile();
    StartStorm();
    nxSocket listener;
    if (!Listen(listener))
        return 1;
    Connection connection(listener);
    std::atomic<bool> stop = false;
    std::atomic<unsigned int> connections = 0;
    unsigned int failures = 0;
    unsigned int failedJoins = 0;
    unsigned long long sent = 0;
    unsigned long long received = 0;
    {
        std::jthread const receiver([&] { received = Receive(connection.server); });
        std::jthread const reconnecting([&] { failures = Reconnect(stop, connections); });
        std::jthread const joining([&] { failedJoins = StartAndJoin(stop); });
        std::jthread const logging(LogLines, 0, lines, 0);
        sent = Send(connection.client, seconds, bytes);
        (void)connection.client.Close();
        stop = true;
    }
    bool const isEqual = connection.isMade && sent == received;
    std::printf("%u signals: %llu MB sent, %s, %u connects, %u failed, %u failed joins and waits\n",
                signalsHandled.load(), sent / 1000000, isEqual ? "all of them right" : "NOT received",
                connections.load(), failures, failedJoins);
    return isEqual && failures + failedJoins == 0 ? 0 : 2;
}

bool ShowSignals()
{
    bool isKept = true;
    for (bool const isForced : {false, true})
    {
        auto const start = Clock::now();
        Directory const directory;
        unsigned int const lines = Trials(20000, 200000);
        auto const body = [=] { return RunUnderSignals(isFull ? 60 : 2, isFull ? 5ULL << 30 : 0, lines); };
        std::optional<int> const code =
            RunHost(directory.path, body, 600.0, {{"KVT_LOG_FORCE_FLUSH", isForced ? "YES" : "NO"}});
        LogCount count = CountLog(directory.path);
        unsigned int const lost = count.Lost(1, lines);
        std::string seen;
        std::ifstream stream(directory.path / "out");
        std::getline(stream, seen);
        isKept = Report(start, code == 0 && lost + count.Faults() == 0, "F8 signals, %s%s, %u lines lost%s",
                        isForced ? "each line flushed, " : "", seen.c_str(), lost, code ? "" : ", a hang") &&
                 isKept;
    }
    return isKept;
}

Figure const signalFigure("signals", ShowSignals);

/// A peer that sends a byte at a time. Those that reset or close one way are held by the network's tests.
bool Dribble(Connection& connection)
{
    char buffer[16];
    int received = 1;
    for (int i = 0; i < 20 && received == 1; ++i)
        if (!connection.client.Send("b").IsOK() ||
            !connection.server.Receive(buffer, sizeof buffer, received).IsOK())
            return false;
    return received == 1;
}

/// A peer that never reads. @return whether the sender was told.
bool FillUp(Connection& connection)
{
    timeval const aMoment = {0, 20000}; // the sender's own limit, since the peer has none
    (void)connection.server.SetSocketOption(SOL_SOCKET, SO_SNDTIMEO, &aMoment, sizeof aMoment);
    int sent = 0;
    while (sent < 64 && connection.server.Send(std::string(1 << 20, 'x')).IsOK())
        ++sent;
    return sent < 64;
}

bool ShowPeers()
{
    double const seconds = isFull ? 300.0 : 2.0;
    constexpr unsigned int crowd = 1200;
    auto const start = Clock::now();
    (void)setenv("KVT_LOG_TO_CONSOLE", "NO", 1); // peers that reset are logged
    rlimit limit{};
    (void)getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = limit.rlim_max;
    (void)setrlimit(RLIMIT_NOFILE, &limit);

    nxSocket listener;
    bool const isListening = Listen(listener);
    std::array<nxSocket, crowd> others;
    for (nxSocket& socket : others)
        if (!socket.Create(NX_SOCKET_TYPE_UDP).IsOK())
            NotRun("F20 sockets: not run, this user may not have 1,200 descriptors");
    unsigned int const before = OpenDescriptors();
    unsigned int connections = 0;
    unsigned int wrong = 0;
    unsigned int secondCloses = 0;
    while (SecondsSince(start) < seconds)
    {
        // The peer that never reads fills the buffers, which takes most of the time.
        Connection connection(listener);
        wrong += !connection.isMade || !(connections % 50 == 0 ? FillUp(connection) : Dribble(connection));
        ++connections;
        if (connections % 10 == 0)
        {
            (void)connection.server.Close();
            nxSocket reuser; // gets the number that has just become free
            (void)reuser.Create();
            secondCloses += connection.server.Close().IsOK();
            wrong += !reuser.SetInboundBufferSize(65536).IsOK();
        }
    }
    unsigned int const after = OpenDescriptors();
    return Report(
        start, isListening && wrong + secondCloses == 0 && after == before,
        "F20 sockets, %u connections beside %u open ones, numbers up to %d: %u wrong answers, %u second "
        "closes that hit, %d descriptors leaked",
        connections, crowd, static_cast<int>(others.back().GetSocket()), wrong, secondCloses,
        static_cast<int>(after) - static_cast<int>(before));
}

Figure const peerFigure("sockets", ShowPeers);

} // namespace
