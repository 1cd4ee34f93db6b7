// F8, F20: that signals interrupt nothing, and that whatever peers do leaves no descriptor behind.

#include "core/concurrency/nxFunctorQueue.h"
#include "core/concurrency/nxFunctorThreadPool.h"
#include "core/concurrency/nxSemaphore.h"
#include "core/logging/nxLogManager.h"
#include "tests/faults/Faults.h"
#include "tests/faults/Loopback.h"

#include <algorithm>
#include <atomic>
#include <fstream>
#include <memory>
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

/// What goes over a connection again and again. Its length has no factor in common with that of any buffer.
std::string const& Pattern()
{
    static std::string const pattern = []
    {
        Chance chance(8);
        std::string bytes(262147, ' ');
        std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(chance.Below(256)); });
        return bytes;
    }();
    return pattern;
}

/// Sends until the time is over, and so many bytes. @return how many went out.
unsigned long long Send(nxSocket& socket, double seconds, unsigned long long least)
{
    auto const start = Clock::now();
    unsigned long long sent = 0;
    while ((SecondsSince(start) < seconds || sent < least) && socket.Send(Pattern()).IsOK())
    {
        sent += Pattern().size();
    }
    return sent;
}

/// Receives until the peer closes. @return how many bytes came up to the first wrong one.
unsigned long long Receive(nxSocket& socket)
{
    std::vector<char> buffer(Pattern().size());
    unsigned long long received = 0;
    for (int count = 0; socket.Receive(buffer.data(), static_cast<int>(buffer.size()), count).IsOK();)
    {
        std::size_t const at = received % buffer.size();
        std::size_t const size = static_cast<std::size_t>(count);
        std::size_t const upToEnd = std::min(size, buffer.size() - at);
        if (Pattern().compare(at, upToEnd, buffer.data(), upToEnd) != 0 ||
            Pattern().compare(0, size - upToEnd, buffer.data() + upToEnd, size - upToEnd) != 0)
        {
            return received;
        }
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

// Arguments: seconds, gigabytes that are sent at least, lines.
int RunUnderSignals(Arguments const& arguments)
{
    LogToFile();
    StartStorm();
    nxSocket listener;
    if (!Listen(listener))
    {
        return 1;
    }
    Connection connection(listener);
    std::atomic<bool> stop = false;
    std::atomic<unsigned int> connections = 0;
    unsigned int failures = 0;
    unsigned int failedJoins = 0;
    unsigned long long received = 0;
    std::thread receiver([&] { received = Receive(connection.server); });
    std::thread reconnecting([&] { failures = Reconnect(stop, connections); });
    std::thread joining([&] { failedJoins = StartAndJoin(stop); });
    std::thread logging(LogLines, 0, Number(arguments.at(2)), 0);
    unsigned long long const sent =
        Send(connection.client, std::stod(arguments.at(0)), std::stoull(arguments.at(1)) << 30);
    (void)connection.client.Close();
    stop = true;
    for (std::thread* const thread : {&receiver, &reconnecting, &joining, &logging})
    {
        thread->join();
    }
    bool const isEqual = connection.isMade && sent == received;
    std::ofstream("seen") << signalsHandled << " signals: " << sent / 1000000 << " MB sent, "
                          << (isEqual ? "all of them right" : "NOT received") << ", " << connections
                          << " connects, " << failures << " failed, " << failedJoins
                          << " failed joins and waits";
    return isEqual && failures + failedJoins == 0 ? 0 : 2;
}

bool ShowSignals()
{
    bool isKept = true;
    for (char const* const forceFlush : {"NO", "YES"})
    {
        auto const start = Clock::now();
        Directory const directory;
        unsigned int const lines = Trials(20000, 200000);
        Host host(directory.path, {"signals", isFull ? "30" : "2", isFull ? "5" : "0", std::to_string(lines)},
                  {{"KVT_LOG_FORCE_FLUSH", forceFlush}});
        std::optional<int> const code = host.Wait(600.0);
        LogCount const count = CountLog(directory.path);
        unsigned int const lost = count.Lost(1, lines);
        std::string seen;
        std::ifstream stream(directory.path / "seen");
        std::getline(stream, seen);
        bool const isHeld = Report(
            start, code == 0 && lost + count.Faults() == 0, "F8 signals, %s%s, %u lines lost%s",
            forceFlush[0] == 'Y' ? "each line flushed, " : "", seen.c_str(), lost, code ? "" : ", a hang");
        isKept = isHeld && isKept;
    }
    return isKept;
}

Figure const signalFigure("signals", ShowSignals, RunUnderSignals);

/// A peer that sends a byte at a time, or one that never reads. Those that reset or close one way are held by the
/// network's tests. @return whether the other end was told as it should be.
bool Treat(Connection& connection, bool reads)
{
    if (!reads)
    {
        timeval const aMoment = {0, 20000}; // the sender's own limit, since the peer has none
        (void)connection.server.SetSocketOption(SOL_SOCKET, SO_SNDTIMEO, &aMoment, sizeof aMoment);
        std::string const block(1 << 20, 'x');
        int sent = 0;
        while (sent < 64 && connection.server.Send(block).IsOK())
        {
            ++sent;
        }
        return sent < 64;
    }
    bool isRight = true;
    for (int i = 0; i < 20; ++i)
    {
        char buffer[16];
        int received = 0;
        isRight = connection.client.Send("b").IsOK() &&
                  connection.server.Receive(buffer, sizeof buffer, received).IsOK() && received >= 1 &&
                  isRight;
    }
    return isRight;
}

bool ShowPeers()
{
    double const seconds = isFull ? 60.0 : 2.0;
    constexpr unsigned int crowd = 1200;
    auto const start = Clock::now();
    (void)setenv("KVT_LOG_TO_CONSOLE", "NO", 1); // peers that reset are logged
    rlimit limit{};
    (void)getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = limit.rlim_max;
    (void)setrlimit(RLIMIT_NOFILE, &limit);

    nxSocket listener;
    bool const isListening = Listen(listener);
    std::vector<std::unique_ptr<nxSocket>> others(crowd);
    for (std::unique_ptr<nxSocket>& socket : others)
    {
        socket = std::make_unique<nxSocket>();
        if (!socket->Create(NX_SOCKET_TYPE_UDP).IsOK())
        {
            NotRun("F20 sockets: not run, this user may not have 1,200 descriptors");
        }
    }
    unsigned int const before = OpenDescriptors();
    unsigned int connections = 0;
    unsigned int wrong = 0;
    unsigned int secondCloses = 0;
    while (SecondsSince(start) < seconds)
    {
        // The peer that never reads fills the buffers, which takes most of the time.
        Connection connection(listener);
        wrong += !connection.isMade || !Treat(connection, connections % 50 != 0);
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
        connections, crowd, static_cast<int>(others.back()->GetSocket()), wrong, secondCloses,
        static_cast<int>(after) - static_cast<int>(before));
}

Figure const peerFigure("sockets", ShowPeers);

} // namespace
