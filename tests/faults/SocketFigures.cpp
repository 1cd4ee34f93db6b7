// F8, F20: that signals interrupt nothing, and that whatever peers do leaves no descriptor behind.

#include "core/concurrency/nxFunctorQueue.h"
#include "core/concurrency/nxFunctorThreadPool.h"
#include "core/concurrency/nxSemaphore.h"
#include "core/logging/nxLogManager.h"
#include "core/network/nxSocket.h"
#include "tests/faults/Figures.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <memory>
#include <thread>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

namespace
{

using Clock = std::chrono::steady_clock;

double SecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

int DescriptorOf(nxSocket const& socket)
{
    return static_cast<int>(socket.GetSocket());
}

/// Two ends of a connection over the loopback.
struct Connection
{
    explicit Connection(nxSocket& listener)
    {
        sockaddr_in address{};
        socklen_t length = sizeof address;
        (void)getsockname(DescriptorOf(listener), reinterpret_cast<sockaddr*>(&address), &length);
        isMade = client.Create().IsOK() && client.Connect("127.0.0.1", ntohs(address.sin_port)).IsOK() &&
                 listener.Accept(server).IsOK() && server.IsValid();
    }

    nxSocket client;
    nxSocket server;
    bool isMade;
};

bool Listen(nxSocket& listener)
{
    return listener.Create().IsOK() && listener.Bind("127.0.0.1", 0).IsOK() && listener.Listen().IsOK();
}

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

std::uint64_t SumOf(char const* data, std::size_t size)
{
    std::uint64_t sum = 0;
    std::uint64_t word = 0;
    for (std::size_t i = 0; i + sizeof word <= size; i += sizeof word)
    {
        std::memcpy(&word, data + i, sizeof word);
        sum += word;
    }
    return sum;
}

struct Stream
{
    unsigned long long bytes = 0;
    std::uint64_t sum = 0;
};

/// Sends blocks of changing numbers until the time is over, and so many bytes.
void Send(nxSocket& socket, double seconds, unsigned long long least, Stream& sent)
{
    constexpr std::size_t words = 32768;
    std::vector<std::uint64_t> block(words);
    auto const start = Clock::now();
    while (SecondsSince(start) < seconds || sent.bytes < least)
    {
        block[sent.bytes / 8 % words] += sent.bytes + 1;
        char const* const data = reinterpret_cast<char const*>(block.data());
        if (!socket.Send(data, words * 8).IsOK())
        {
            return;
        }
        sent.bytes += words * 8;
        sent.sum += SumOf(data, words * 8);
    }
}

/// Receives whole words until the peer closes.
void Receive(nxSocket& socket, Stream& received)
{
    std::vector<char> buffer(262144 + 8);
    std::size_t kept = 0;
    for (;;)
    {
        int count = 0;
        if (!socket.Receive(buffer.data() + kept, 262144, count).IsOK())
        {
            return;
        }
        received.bytes += static_cast<unsigned int>(count);
        std::size_t const size = kept + static_cast<std::size_t>(count);
        received.sum += SumOf(buffer.data(), size);
        kept = size % 8;
        std::memmove(buffer.data(), buffer.data() + size - kept, kept);
    }
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

} // namespace

// Arguments: seconds, gigabytes that are sent at least, lines.
int SignalHost(Arguments const& arguments)
{
    double const seconds = std::stod(arguments.at(0));
    (void)LogToFile();
    StartStorm();
    nxSocket listener;
    if (!Listen(listener))
    {
        return 1;
    }
    Connection connection(listener);
    std::atomic<bool> stop = false;
    std::atomic<unsigned int> connections = 0;
    unsigned int failedConnections = 0;
    unsigned int failedJoins = 0;
    Stream sent;
    Stream received;
    std::thread receiver([&] { Receive(connection.server, received); });
    std::thread reconnecting([&] { failedConnections = Reconnect(stop, connections); });
    std::thread joining([&] { failedJoins = StartAndJoin(stop); });
    std::thread logging(LogLines, 0, Number(arguments.at(2)), 0);
    Send(connection.client, seconds, std::stoull(arguments.at(1)) << 30, sent);
    (void)connection.client.Close();
    (void)shutdown(DescriptorOf(connection.client), SHUT_RDWR);
    stop = true;
    for (std::thread* const thread : {&receiver, &reconnecting, &joining, &logging})
    {
        thread->join();
    }
    bool const isEqual = sent.bytes == received.bytes && sent.sum == received.sum;
    std::ofstream("seen") << signalsHandled << " signals: " << sent.bytes / 1000000 << " MB sent, sums "
                          << (isEqual ? "equal" : "NOT equal") << ", " << connections << " connects, "
                          << failedConnections << " failed, " << failedJoins << " failed joins and waits";
    return connection.isMade && isEqual && failedConnections + failedJoins == 0 ? 0 : 2;
}

bool SignalFigure(Extent extent)
{
    bool const isFull = extent == Extent::full;
    auto const start = Clock::now();
    bool isKept = true;
    for (char const* const forceFlush : {"NO", "YES"})
    {
        Directory const directory;
        std::string const lines = isFull ? "200000" : "20000";
        Host host(directory.Path(), {"signals", isFull ? "60" : "2", isFull ? "5" : "0", lines},
                  {{"KVT_LOG_FORCE_FLUSH", forceFlush}});
        std::optional<int> const code = host.Wait(600.0);
        LogCount const count = CountLog(directory.Path());
        unsigned int const lost = Number(lines) - count.Lines(0);
        std::string seen;
        std::ifstream stream(directory.Path() / "seen");
        std::getline(stream, seen);
        isKept = Report("F8 signals, " + std::string(forceFlush[0] == 'Y' ? "each line flushed, " : "") +
                            seen + ", " + std::to_string(lost) + " lines lost" + (code ? "" : ", a hang"),
                        start, code == 0 && lost + count.disordered + count.torn + count.tornLast == 0) &&
                 isKept;
    }
    return isKept;
}

namespace
{

enum class Manner
{
    resets,
    halfCloses,
    trickles,
    neverReads,
    count
};

/// What a peer does to a connection. @return whether the other end was told as it should be.
bool Treat(Connection& connection, Manner manner)
{
    char buffer[4096];
    int received = 0;
    switch (manner)
    {
    case Manner::resets:
    {
        linger const atOnce = {1, 0};
        (void)connection.client.SetSocketOption(SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
        bool const isClosed = connection.client.Close().IsOK();
        return isClosed && !connection.server.Receive(buffer, sizeof buffer, received).IsOK() &&
               !connection.server.Send("x").IsOK();
    }
    case Manner::halfCloses:
        (void)shutdown(DescriptorOf(connection.client), SHUT_WR);
        return !connection.server.Receive(buffer, sizeof buffer, received).IsOK() && received == 0 &&
               connection.server.Send("still here").IsOK() &&
               connection.client.Receive(buffer, sizeof buffer, received).IsOK() && received == 10;
    case Manner::trickles:
        for (int i = 0; i < 20; ++i)
        {
            if (!connection.client.Send("b").IsOK() ||
                !connection.server.Receive(buffer, sizeof buffer, received).IsOK() || received < 1)
            {
                return false;
            }
        }
        return true;
    case Manner::neverReads:
    {
        timeval const short_ = {0, 20000}; // the sender's own limit, since the peer has none
        (void)connection.server.SetSocketOption(SOL_SOCKET, SO_SNDTIMEO, &short_, sizeof short_);
        std::string const block(1 << 20, 'x');
        for (int i = 0; i < 64; ++i)
        {
            if (!connection.server.Send(block).IsOK())
            {
                return true;
            }
        }
        return false;
    }
    default: return false;
    }
}

} // namespace

bool SocketFigure(Extent extent)
{
    double const seconds = extent == Extent::full ? 300.0 : 2.0;
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
        auto const manner = connections % 50 == 0 ? Manner::neverReads : static_cast<Manner>(connections % 3);
        Connection connection(listener);
        wrong += !connection.isMade || !Treat(connection, manner);
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
    char text[250];
    (void)std::snprintf(
        text, sizeof text,
        "F20 sockets, %u connections beside %u open ones, numbers up to %d: %u wrong answers, %u second "
        "closes that hit, %d descriptors leaked",
        connections, crowd, DescriptorOf(*others.back()), wrong, secondCloses,
        static_cast<int>(after) - static_cast<int>(before));
    return Report(text, start, isListening && wrong + secondCloses == 0 && after == before);
}
