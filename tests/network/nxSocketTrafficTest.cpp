// Bytes and datagrams between sockets of this host: that all arrive, what peers do to each other, and signals.
#include "tests/network/nxSocketTesting.h"

#include <atomic>
#include <bit>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <functional>
#include <iterator>
#include <sstream>
#include <thread>

#include <net/if.h>
#include <net/route.h>
#include <pthread.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

namespace
{
using namespace std::chrono_literals;

char buffer[65536];
int received;
std::string destination;

/// The byte at a place of an endless text that is nowhere like itself a little later.
char ByteAt(std::size_t place)
{
    return static_cast<char>((place * 2654435761u) >> 24);
}

std::string BytesAt(std::size_t place, std::size_t size)
{
    std::string text(size, '\0');
    for (char& byte : text)
        byte = ByteAt(place++);
    return text;
}

// Signals.

std::atomic<int> signalsHandled;

/// Handles a signal without SA_RESTART, so that it interrupts whatever the thread waits for.
class SignalHandler
{
public:
    explicit SignalHandler(int signal) : _signal(signal)
    {
        struct sigaction action = {};
        action.sa_handler = [](int) { ++signalsHandled; };
        sigaction(signal, &action, &_saved);
        signalsHandled = 0;
    }
    ~SignalHandler()
    {
        sigaction(_signal, &_saved, nullptr);
    }

private:
    int _signal;
    struct sigaction _saved = {};
};

/// A thousand signals a second for this process, whichever thread they meet.
class SignalStorm
{
public:
    SignalStorm() : _handler(SIGALRM)
    {
        itimerval const everyMillisecond = {{0, 1000}, {0, 1000}};
        setitimer(ITIMER_REAL, &everyMillisecond, nullptr);
    }
    ~SignalStorm()
    {
        itimerval const never = {};
        setitimer(ITIMER_REAL, &never, nullptr);
    }

private:
    SignalHandler _handler;
};

/// Runs a call on a thread of its own, and can tell when it waits.
class Caller
{
public:
    explicit Caller(std::function<void()> const& call)
        : _thread(
              [this, call]
              {
                  _number = static_cast<pid_t>(syscall(SYS_gettid));
                  call();
                  _isDone = true;
              })
    {
    }
    ~Caller()
    {
        _thread.join();
    }

    bool IsDone() const
    {
        return _isDone;
    }

    void AwaitSleep() const
    {
        while (!_isDone && !_IsAsleep())
            std::this_thread::sleep_for(1ms);
    }

    /// Interrupts the call a few times, each time where it waits.
    void Interrupt()
    {
        for (int signal = 0; signal < 10; ++signal)
        {
            AwaitSleep();
            int const before = signalsHandled;
            pthread_kill(_thread.native_handle(), SIGUSR1);
            while (signalsHandled == before)
                std::this_thread::yield();
        }
        AwaitSleep();
        EXPECT_FALSE(_isDone);
    }

private:
    bool _IsAsleep() const
    {
        std::ifstream file("/proc/self/task/" + std::to_string(_number) + "/stat");
        std::string const line(std::istreambuf_iterator<char>(file), {});
        std::size_t const name = line.rfind(") ");
        return name != std::string::npos && line[name + 2] == 'S';
    }

    std::atomic<pid_t> _number = 0;
    std::atomic<bool> _isDone = false;
    std::thread _thread;
};

class nxSocketSignal : public nxSocketTest
{
protected:
    /// Interrupts `call` while it waits, then lets it go on by `release`.
    void ExpectSuccess(std::function<nxErrorEnum()> const& call, std::function<void()> const& release)
    {
        nxErrorEnum answer(NX_ERR_UNSPECIFIED);
        {
            Caller caller([&] { answer = call(); });
            caller.Interrupt();
            release();
        }
        EXPECT_TRUE(answer.IsOK()) << answer.GetValue();
    }

    SignalHandler _handler{SIGUSR1};
};

TEST_F(nxSocketSignal, LeavesReceivesAndWaitsAlone)
{
    Connection connection;
    auto const say = [&] { ASSERT_TRUE(connection.client.Send("x").IsOK()); };
    ExpectSuccess([&] { return connection.server.Receive(buffer, 1, received); }, say);
    ExpectSuccess([&] { return connection.server.ReceiveFrom(buffer, 1, received); }, say);
    ExpectSuccess(
        [&] { return connection.server.ReceiveMsgWithDestinationAddress(buffer, 1, received, destination); },
        say);
    ExpectSuccess([&] { return connection.server.SelectWithoutTimeout(); }, say);
    EXPECT_TRUE(connection.server.Receive(buffer, 1, received).IsOK());
    EXPECT_EQ(received, 1);
    unsigned int count = 7;
    auto const begin = std::chrono::steady_clock::now();
    ExpectSuccess([&] { return connection.server.Select(1000000, count); }, [] {});
    EXPECT_EQ(count, 0u);
    auto const waited = std::chrono::steady_clock::now() - begin;
    EXPECT_GE(waited, 1s); // the whole of it, and not from the start again after each signal
    EXPECT_LT(waited, 1900ms);
}

TEST_F(nxSocketSignal, LeavesAcceptAndConnectAlone)
{
    nxSocket listener;
    Listen(listener);
    nxSocket first;
    nxSocket caller;
    ASSERT_TRUE(caller.Create().IsOK());
    ExpectSuccess([&] { return listener.Accept(first); },
                  [&] { ASSERT_TRUE(caller.Connect(here, PortOf(listener)).IsOK()); });
    EXPECT_TRUE(first.IsValid());

    // Six connections fill a listener's queue, and the seventh has to wait until one is accepted.
    nxSocket clients[6];
    for (nxSocket& client : clients)
    {
        ASSERT_TRUE(client.Create().IsOK());
        ASSERT_TRUE(client.Connect(here, PortOf(listener)).IsOK());
    }
    nxSocket late;
    nxSocket accepted[7];
    ASSERT_TRUE(late.Create().IsOK());
    ExpectSuccess([&] { return late.Connect(here, PortOf(listener)); },
                  [&]
                  {
                      for (nxSocket& socket : accepted)
                          ASSERT_TRUE(listener.Accept(socket).IsOK());
                  });
    EXPECT_TRUE(late.IsConnected());
    EXPECT_TRUE(late.Send("x").IsOK());
    EXPECT_TRUE(accepted[6].Receive(buffer, 1, received).IsOK());
}

TEST_F(nxSocketSignal, LosesNoByteOfASend)
{
    // More than the buffers of both ends hold, so each send waits with a part of it gone.
    std::string const data = BytesAt(0, 32u << 20);
    _WSABUF pieces[2];
    nxSocket::SetGatherSendArrayEntry(pieces, 0, data.data(), 1000);
    nxSocket::SetGatherSendArrayEntry(pieces, 1, data.data() + 1000,
                                      static_cast<unsigned int>(data.size() - 1000));
    Connection connection;
    std::string arrived;
    auto const take = [&]
    {
        for (arrived.clear(); arrived.size() < data.size();)
        {
            ASSERT_TRUE(connection.server.Receive(buffer, sizeof buffer, received).IsOK());
            arrived += Text(buffer, received);
        }
    };
    ExpectSuccess([&] { return connection.client.Send(data); }, take);
    EXPECT_TRUE(arrived == data);
    unsigned int sent = 0;
    ExpectSuccess([&] { return connection.client.GatherSend(pieces, 2, sent); }, take);
    EXPECT_EQ(sent, data.size());
    EXPECT_TRUE(arrived == data);
}

// Streams.

/// Sends back whatever comes until the peer shuts down.
void Echo(nxSocket& socket)
{
    std::vector<char> bytes(50000);
    int count = 0;
    while (socket.Receive(bytes.data(), static_cast<int>(bytes.size()), count).IsOK())
        ASSERT_TRUE(socket.Send(bytes.data(), count).IsOK());
}

/// Sends from a socket that takes what it has room for.
void SendAll(nxSocket& socket, std::string_view bytes)
{
    while (!bytes.empty())
    {
        std::size_t const half = bytes.size() / 2;
        _WSABUF pieces[2];
        nxSocket::SetGatherSendArrayEntry(pieces, 0, bytes.data(), static_cast<unsigned int>(half));
        nxSocket::SetGatherSendArrayEntry(pieces, 1, bytes.data() + half,
                                          static_cast<unsigned int>(bytes.size() - half));
        unsigned int sent = 0;
        if (socket.GatherSend(pieces, 2, sent).IsOK())
        {
            bytes.remove_prefix(sent);
        }
        else
        {
            ASSERT_EQ(sent, 0u);
            std::this_thread::yield();
        }
    }
}

TEST_F(nxSocketTest, EchoOf64MiBComesBackWhole)
{
    // With signals all the while: neither end, blocking nor not, may lose or double a byte by them.
    nxLogManager::GetInstance().UnregisterLogDevice(&_device); // a full socket logs each time
    constexpr std::size_t size = 64u << 20;
    Connection connection;
    SignalStorm const storm;
    std::thread echo([&] { Echo(connection.server); });
    int nonBlocking = 1;
    nxSocket sending; // shares the handle, and is made to forget it in the end
    sending = connection.client;
    std::thread sender(
        [&]
        {
            for (std::size_t place = 0; place < size;)
            {
                std::size_t const piece = std::min<std::size_t>(size - place, 1 + place % 200000);
                SendAll(sending, BytesAt(place, piece));
                place += piece;
            }
        });
    ASSERT_EQ(ioctl(DescriptorOf(connection.client), FIONBIO, &nonBlocking), 0);
    std::size_t wrong = 0;
    for (std::size_t place = 0; place < size;)
    {
        ASSERT_TRUE(connection.client.SelectWithoutTimeout().IsOK());
        ASSERT_TRUE(connection.client.Receive(buffer, sizeof buffer, received).IsOK());
        for (int index = 0; index < received; ++index)
            wrong += buffer[index] == ByteAt(place++) ? 0u : 1u;
    }
    sender.join();
    nxSocket const none;
    sending = none;
    ASSERT_TRUE(connection.client.Close().IsOK());
    echo.join();
    EXPECT_EQ(wrong, 0u);
    EXPECT_GT(signalsHandled, 0);
}

TEST_F(nxSocketTest, GatherJoinsMoreBuffersThanTheSystemTakes)
{
    constexpr unsigned int many = 2500; // the system takes 1024
    std::string const text = BytesAt(0, many);
    std::vector<_WSABUF> pieces(many);
    for (unsigned int index = 0; index < many; ++index)
        nxSocket::SetGatherSendArrayEntry(pieces.data(), index, &text[index], 1);
    pieces[0].len = 0;
    Connection connection;
    unsigned int sent = 0;
    ASSERT_TRUE(connection.client.GatherSend(pieces.data(), many, sent).IsOK());
    EXPECT_EQ(sent, many - 1);
    std::string arrived;
    while (arrived.size() < sent)
    {
        ASSERT_TRUE(connection.server.Receive(buffer, sizeof buffer, received).IsOK());
        arrived += Text(buffer, received);
    }
    EXPECT_EQ(arrived, text.substr(1));

    nxSocket datagrams;
    ASSERT_TRUE(datagrams.Create(NX_SOCKET_TYPE_UDP).IsOK());
    ASSERT_TRUE(datagrams.Bind(here, 0).IsOK());
    ASSERT_TRUE(datagrams.Connect(here, PortOf(datagrams)).IsOK());
    EXPECT_TRUE(datagrams.GatherSend(pieces.data(), many, sent) == NX_ERR_SOCKET_SEND_FAILED);
    EXPECT_EQ(sent, 0u);
    ASSERT_TRUE(datagrams.GatherSend(pieces.data(), 1024, sent).IsOK());
    ASSERT_TRUE(datagrams.Receive(buffer, sizeof buffer, received).IsOK());
    EXPECT_EQ(received, 1023); // one datagram
}

TEST_F(nxSocketTest, APeerThatResetsOrHalfCloses)
{
    Connection connection;
    linger const abort = {1, 0};
    ASSERT_TRUE(connection.client.SetSocketOption(SOL_SOCKET, SO_LINGER, &abort, sizeof abort).IsOK());
    ASSERT_TRUE(connection.client.Close().IsOK());
    unsigned int count = 0;
    ASSERT_TRUE(connection.server.Select(1000000, count).IsOK());
    EXPECT_EQ(count, 1u); // readable: there is an error to be had
    EXPECT_TRUE(connection.server.Receive(buffer, sizeof buffer, received) == NX_ERR_SOCKET_RECEIVE_FAILED);
    EXPECT_EQ(received, -1);
    EXPECT_FALSE(connection.server.IsConnected());
    EXPECT_EQ(Messages().back(),
              "Error on socket call. Function: recv. Error: " + std::to_string(ECONNRESET) +
                  ", Socket descriptor: " + std::to_string(connection.server.GetSocket()));
    EXPECT_TRUE(connection.server.Send("x") == NX_ERR_SOCKET_SEND_FAILED);

    Connection half; // a peer that closes one way still listens
    ASSERT_EQ(shutdown(DescriptorOf(half.client), SHUT_WR), 0);
    EXPECT_TRUE(half.server.Receive(buffer, sizeof buffer, received) == NX_ERR_SOCKET_RECEIVE_FAILED);
    EXPECT_TRUE(half.server.Send("still there").IsOK());
    EXPECT_TRUE(half.client.Receive(buffer, sizeof buffer, received).IsOK());
    EXPECT_EQ(received, 11);
}

TEST_F(nxSocketTest, APeerThatIsGoneRaisesNoSignal)
{
    SignalHandler const handler(SIGPIPE);
    Connection connection;
    ASSERT_TRUE(connection.client.Close().IsOK());
    while (connection.server.Send("x").IsOK()) // until the peer's answer to the first has come back
    {
        std::this_thread::yield();
    }
    _WSABUF piece = {1, buffer};
    unsigned int sent = 7;
    EXPECT_TRUE(connection.server.GatherSend(&piece, 1, sent) == NX_ERR_SOCKET_SEND_FAILED);
    EXPECT_EQ(sent, 0u);
    EXPECT_TRUE(connection.server.SendTo("x") == NX_ERR_SOCKET_SEND_FAILED);
    EXPECT_TRUE(connection.server.SendToDestination("x", 1, here, 9) == NX_ERR_SOCKET_SEND_FAILED);
    EXPECT_EQ(CountOfLines("Function: WSASend. Error: " + std::to_string(EPIPE)), 1u);
    EXPECT_EQ(signalsHandled, 0);
}

TEST_F(nxSocketTest, TenThousandConnectionsLeaveNoDescriptor)
{
    nxSocket listener;
    Listen(listener);
    int const port = PortOf(listener);
    linger const abort = {1, 0}; // or their ports would be taken for a minute
    int const free = dup(STDOUT_FILENO);
    close(free);
    for (int round = 0; round < 10000; ++round)
    {
        nxSocket client;
        nxSocket server;
        ASSERT_TRUE(client.Create().IsOK());
        ASSERT_TRUE(client.SetSocketOption(SOL_SOCKET, SO_LINGER, &abort, sizeof abort).IsOK());
        ASSERT_TRUE(client.Connect(here, port).IsOK());
        ASSERT_TRUE(listener.Accept(server).IsOK());
        ASSERT_TRUE(server.IsValid());
    }
    int const freeAfterwards = dup(STDOUT_FILENO);
    close(freeAfterwards);
    EXPECT_EQ(freeAfterwards, free);
}

// Datagrams.

TEST_F(nxSocketTest, SendToAnswersReceiveFrom)
{
    nxSocket server;
    nxSocket clients[2];
    unsigned int const port = OpenForDatagrams(server);
    for (nxSocket& client : clients)
    {
        ASSERT_TRUE(client.Create(NX_SOCKET_TYPE_UDP).IsOK());
        EXPECT_TRUE(client.SendTo("x") == NX_ERR_SOCKET_SEND_FAILED); // nobody's address yet
        ASSERT_TRUE(client.SendToDestination("ask", 3, here, port).IsOK());
        ASSERT_TRUE(server.ReceiveFrom(buffer, sizeof buffer, received).IsOK());
        EXPECT_EQ(Text(buffer, received), "ask");
        // What goes elsewhere meanwhile leaves the sender's address where it is.
        ASSERT_TRUE(server.SendToDestination("aside", 5, here, port).IsOK());
        ASSERT_TRUE(server.SendTo("answer").IsOK());
        ASSERT_TRUE(client.Receive(buffer, sizeof buffer, received).IsOK());
        EXPECT_EQ(Text(buffer, received), "answer");
        ASSERT_TRUE(server.Receive(buffer, sizeof buffer, received).IsOK());
        EXPECT_EQ(Text(buffer, received), "aside");
    }
}

TEST_F(nxSocketTest, SendToAfterBindReachesItself)
{
    nxSocket socket;
    ASSERT_TRUE(socket.Create(NX_SOCKET_TYPE_UDP).IsOK());
    nxSocket other; // tells a free port
    auto const port = static_cast<int>(OpenForDatagrams(other));
    ASSERT_TRUE(other.Close().IsOK());
    ASSERT_TRUE(socket.Bind(here, port).IsOK());
    ASSERT_TRUE(socket.SendTo("me").IsOK());
    ASSERT_TRUE(socket.Receive(buffer, sizeof buffer, received).IsOK());
    EXPECT_EQ(received, 2);

    nxSocket lost; // a text that is no address binds the broadcast address
    ASSERT_TRUE(lost.Create(NX_SOCKET_TYPE_UDP).IsOK());
    EXPECT_TRUE(lost.Bind("rubbish", 0).IsOK());
    sockaddr_in address = {};
    socklen_t length = sizeof address;
    getsockname(DescriptorOf(lost), reinterpret_cast<sockaddr*>(&address), &length);
    EXPECT_EQ(address.sin_addr.s_addr, INADDR_BROADCAST);
}

TEST_F(nxSocketTest, ADatagramsDestinationIsTold)
{
    nxSocket socket;
    unsigned int const port = OpenForDatagrams(socket);
    ASSERT_TRUE(socket.SendToDestination("abc", 3, here, port).IsOK());
    ASSERT_TRUE(socket.ReceiveMsgWithDestinationAddress(buffer, 2, received, destination).IsOK());
    EXPECT_EQ(received, 2);     // cut to the buffer
    EXPECT_EQ(destination, ""); // not asked for
    ASSERT_TRUE(socket.SetReceiveMsgWithDestinationAddressSockOpts(true).IsOK());
    ASSERT_TRUE(socket.SendToDestination("abc", 3, "127.0.0.2", port).IsOK());
    ASSERT_TRUE(socket.ReceiveMsgWithDestinationAddress(buffer, sizeof buffer, received, destination).IsOK());
    EXPECT_EQ(received, 3);
    EXPECT_EQ(destination, "127.0.0.2");
    ASSERT_TRUE(socket.SendTo("to the sender").IsOK()); // its address came along

    // An empty datagram is taken for a peer's end; only one of the three receives does so without a line.
    for (int round = 0; round < 3; ++round)
        ASSERT_TRUE(socket.SendToDestination("", 0, "127.0.0.3", port).IsOK());
    while (socket.Receive(buffer, sizeof buffer, received).IsOK()) // its own answer may come before
    {
    }
    EXPECT_TRUE(socket.ReceiveFrom(buffer, sizeof buffer, received) == NX_ERR_SOCKET_RECEIVE_FAILED);
    EXPECT_EQ(CountOfLines("Bytes received on socket: 0"), 2u);
    EXPECT_TRUE(socket.ReceiveMsgWithDestinationAddress(buffer, sizeof buffer, received, destination) ==
                NX_ERR_SOCKET_RECEIVE_FAILED);
    EXPECT_EQ(destination, "127.0.0.3");
    EXPECT_EQ(Messages().size(), 2u);
}

// Multicast, in a network of this thread's own.

sockaddr AddressFor(char const* text)
{
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = inet_addr(text);
    return std::bit_cast<sockaddr>(address);
}

/// Asks the system by a socket of its own.
bool Ask(unsigned long request, void* argument)
{
    int const descriptor = socket(AF_INET, SOCK_DGRAM, 0);
    bool const isDone = ioctl(descriptor, request, argument) == 0;
    close(descriptor);
    return isDone;
}

bool BringLoopbackUp()
{
    ifreq request = {};
    std::strcpy(request.ifr_name, "lo");
    request.ifr_flags = IFF_UP;
    return Ask(SIOCSIFFLAGS, &request);
}

bool RouteMulticastToLoopback()
{
    char loopback[] = "lo";
    rtentry route = {};
    route.rt_dst = AddressFor("224.0.0.0");
    route.rt_genmask = AddressFor("240.0.0.0");
    route.rt_flags = RTF_UP;
    route.rt_dev = loopback;
    return Ask(SIOCADDRT, &route);
}

constexpr char const* groupA = "239.1.1.1";
constexpr char const* groupB = "239.1.1.2";

bool IsNonBlocking(nxSocket const& socket)
{
    return (fcntl(DescriptorOf(socket), F_GETFL) & O_NONBLOCK) != 0;
}

void JoinWithoutARoute()
{
    nxSocket socket;
    ASSERT_TRUE(socket.Create(NX_SOCKET_TYPE_UDP).IsOK());
    EXPECT_TRUE(socket.MulticastJoin(groupA) == NX_ERR_SOCKET_CONNECT_FAILED);
    EXPECT_TRUE(IsNonBlocking(socket));
}

void OpenReceiver(nxSocket& socket, int port)
{
    ASSERT_TRUE(socket.Create(NX_SOCKET_TYPE_UDP).IsOK());
    ASSERT_TRUE(socket.Bind(port).IsOK());
    ASSERT_TRUE(socket.SetReceiveMsgWithDestinationAddressSockOpts(true).IsOK());
}

/// Receives one datagram of the group, and then there is no other.
void ExpectOnly(nxSocket& socket, std::string const& text, std::string const& group)
{
    ASSERT_TRUE(socket.SelectWithoutTimeout().IsOK());
    ASSERT_TRUE(socket.ReceiveMsgWithDestinationAddress(buffer, sizeof buffer, received, destination).IsOK());
    EXPECT_EQ(Text(buffer, received), text);
    EXPECT_EQ(destination, group);
    EXPECT_TRUE(socket.Receive(buffer, sizeof buffer, received) == NX_ERR_SOCKET_RECEIVE_FAILED);
    EXPECT_EQ(received, -1);
}

void TellGroupsApart()
{
    nxSocket both;
    nxSocket onlyA;
    OpenReceiver(both, 0);
    int const port = PortOf(both);
    OpenReceiver(onlyA, port);
    ASSERT_TRUE(both.MulticastJoin(groupA).IsOK());
    ASSERT_TRUE(both.MulticastJoin(groupB).IsOK());
    ASSERT_TRUE(onlyA.MulticastJoin(groupA).IsOK());
    EXPECT_TRUE(both.MulticastJoin(groupA) == NX_ERR_SOCKET_CONNECT_FAILED); // joined already

    nxSocket sender;
    ASSERT_TRUE(sender.Create(NX_SOCKET_TYPE_UDP).IsOK());
    ASSERT_TRUE(sender.SendToDestination("for B", 5, groupB, static_cast<unsigned int>(port)).IsOK());
    ExpectOnly(both, "for B", groupB);
    ASSERT_TRUE(sender.SendToDestination("for A", 5, groupA, static_cast<unsigned int>(port)).IsOK());
    ExpectOnly(both, "for A", groupA);
    ExpectOnly(onlyA, "for A", groupA); // what another socket joined does not arrive here

    ASSERT_TRUE(both.MulticastLeave(groupB).IsOK());
    EXPECT_TRUE(both.MulticastLeave(groupB) == NX_ERR_SOCKET_CONNECT_FAILED);
    EXPECT_TRUE(IsNonBlocking(both)); // leaving does not undo it
    ASSERT_TRUE(sender.SendToDestination("for B", 5, groupB, static_cast<unsigned int>(port)).IsOK());
    ASSERT_TRUE(sender.SendToDestination("for A", 5, groupA, static_cast<unsigned int>(port)).IsOK());
    ExpectOnly(both, "for A", groupA);
}

TEST_F(nxSocketTest, MulticastGroupsAreToldApart)
{
    int error = 0;
    std::thread(
        [&]
        {
            if (unshare(CLONE_NEWNET) != 0 || !BringLoopbackUp())
            {
                error = errno;
                return;
            }
            JoinWithoutARoute();
            ASSERT_TRUE(RouteMulticastToLoopback()) << std::strerror(errno);
            TellGroupsApart();
        })
        .join();
    if (error != 0)
        GTEST_SKIP() << "a network of its own can't be had here: " << std::strerror(error);
    EXPECT_EQ(CountOfLines("setsockopt - multicast join. Error: " + std::to_string(ENODEV)), 1u);
    EXPECT_EQ(CountOfLines("setsockopt - multicast join. Error: " + std::to_string(EADDRINUSE)), 1u);
    EXPECT_EQ(CountOfLines("setsockopt - multicast leave"), 1u);
    EXPECT_EQ(CountOfLines("Function: recv. Error: " + std::to_string(EAGAIN)), 4u);
}
} // namespace
