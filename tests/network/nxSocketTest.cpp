// What each operation of a socket answers, logs and leaves behind, whatever state the socket is in; that all bytes and
// datagrams arrive, whatever peers and signals do; and that each transfer is one call of the system.
#include "core/process/nxCmdLineArgs.h"
#include "core/process/nxConfigurationKeys.h"
#include "tests/concurrency/RunTogether.h"
#include "tests/concurrency/SystemCalls.h"
#include "tests/faults/Loopback.h"
#include "tests/logging/nxRecordingLogDevice.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <thread>
#include <tuple>

#include <fcntl.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/time.h>

namespace
{
thread_local int optionToRefuse = -1;
}

// Stands in front of the system's call, so that it can be made to fail.
extern "C" int setsockopt(int descriptor, int level, int name, void const* value, socklen_t length) noexcept
{
    if (level == SOL_SOCKET && name == optionToRefuse)
    {
        errno = ENOBUFS;
        return -1;
    }
    return static_cast<int>(syscall(SYS_setsockopt, descriptor, level, name, value, length));
}

namespace
{
using namespace std::chrono_literals;

/// What receives fill; SendToDestination() takes ports as unsigned.
char buffer[65536];
int received;
unsigned int count;
std::string destination;

/// The system's own number of a socket.
int DescriptorOf(nxSocket const& socket)
{
    return static_cast<int>(socket.GetSocket());
}

struct DatagramSocket : nxSocket
{
    DatagramSocket()
    {
        EXPECT_TRUE(Create(NX_SOCKET_TYPE_UDP).IsOK());
    }
};

/// Binds to a port of the system's choice. @return the port.
unsigned int PortOfBound(nxSocket& socket)
{
    EXPECT_TRUE(socket.Bind(0).IsOK());
    return PortOf(socket);
}

/// @return the bytes that arrive, or in parentheses how many it says to be when it fails.
std::string Receive(nxSocket& socket, int size = sizeof buffer)
{
    return socket.Receive(buffer, size, received).IsOK()
               ? std::string(buffer, static_cast<std::size_t>(received))
               : "(" + std::to_string(received) + ")";
}

/// Lines are recorded as soon as they are logged. The log reads its keys on first use, so this comes before.
int const forceFlush = setenv("KVT_LOG_FORCE_FLUSH", "TRUE", 1);

constexpr char const* here = "127.0.0.1";

class nxSocketTest : public nxRecordingTest
{
protected:
    long CountOfLines(std::string const& text)
    {
        auto const has = [&](std::string const& line) { return line.find(text) != std::string::npos; };
        return std::ranges::count_if(Messages(), has);
    }
};

/// A connection to this host, both ends in blocking mode.
struct Connection
{
    nxSocket listener;
    nxSocket client;
    nxSocket server;

    Connection()
    {
        EXPECT_TRUE(Listen(listener) && Connect(listener, client, server));
    }
};

class nxSocketConnection : public nxSocketTest, public Connection
{
};

constexpr nxEnumValue success = NX_UNDEFINED;
constexpr nxEnumValue noBuffer = NX_ERR_NOT_INITIALISED;
constexpr nxEnumValue noHandle = NX_ERR_SOCKET_INVALID_HANDLE;
constexpr nxEnumValue notConnected = NX_ERR_SOCKET_CONNECT_FAILED;
constexpr nxEnumValue notBound = NX_ERR_SOCKET_BIND_FAILED;
constexpr nxEnumValue notSent = NX_ERR_SOCKET_SEND_FAILED;
constexpr nxEnumValue notReceived = NX_ERR_SOCKET_RECEIVE_FAILED;
constexpr nxEnumValue notSelected = NX_ERR_SOCKET_SELECT_FAILED;
constexpr nxEnumValue notClosed = NX_ERR_SOCKET_CLOSE_FAILED;
constexpr nxEnumValue invalid = NX_ERR_INVALID_PARAMETER;

struct StateRow
{
    nxErrorEnum (*run)(nxSocket&);
    nxEnumValue unopened; // an address buffer, no handle
    nxEnumValue closed;
    char const* logged = nullptr; // the function that a line names when the socket is closed
};

constexpr StateRow stateRows[] = {
    {[](nxSocket& s) { return s.Connect(here, 9); }, noHandle, notConnected, "connect"},
    {[](nxSocket& s) { return s.Bind(0); }, noHandle, notBound},
    {[](nxSocket& s) { return s.Listen(); }, noHandle, NX_ERR_SOCKET_LISTEN_FAILED},
    {[](nxSocket& s) { return s.Send("x"); }, noHandle, notSent},
    {[](nxSocket& s) { return s.GatherSend(nullptr, 0, count); }, notSent, notSent, "WSASend"},
    {[](nxSocket& s) { return s.SendTo("x"); }, noHandle, notSent},
    {[](nxSocket& s) { return s.SendToDestination("x", 1, here, 9); }, noHandle, notSent},
    {[](nxSocket& s) { return s.Receive(buffer, 16, received); }, noHandle, notReceived, "recv"},
    {[](nxSocket& s) { return s.ReceiveFrom(buffer, 16, received); }, noHandle, notReceived, "recvfrom"},
    {[](nxSocket& s) { return s.ReceiveMsgWithDestinationAddress(buffer, 16, received, destination); },
     noHandle, noHandle},
    {[](nxSocket& s) { return s.MulticastJoin("239.1.1.1"); }, noHandle, notConnected,
     "setsockopt - multicast join"},
    {[](nxSocket& s) { return s.MulticastLeave("239.1.1.1"); }, noHandle, notConnected,
     "setsockopt - multicast leave"},
    {[](nxSocket& s) { return s.Select(0); }, notSelected, success},
    {[](nxSocket& s) { return s.SelectWithoutTimeout(); }, notSelected, success},
    {[](nxSocket& s) { return s.SetBufferSize(8192); }, invalid, invalid},
    {[](nxSocket& s) { return s.SetReceiveMsgWithDestinationAddressSockOpts(true); }, invalid, invalid,
     "setsockopt - receive msg with destination address socket options"},
    {[](nxSocket& s) { return s.Close(); }, notClosed, notClosed, "close"}};

int OptionOf(nxSocket const& socket, int name)
{
    int value = 0;
    socklen_t length = sizeof value;
    EXPECT_EQ(getsockopt(DescriptorOf(socket), SOL_SOCKET, name, &value, &length), 0);
    return value;
}

/// What is logged of a call that the system refused.
std::string LineOf(std::string const& call, int error, nxSocket const& socket)
{
    return "ERR Error on socket call. Function: " + call + ". Error: " + std::to_string(error) +
           ", Socket descriptor: " + std::to_string(socket.GetSocket());
}

TEST_F(nxSocketTest, EachStateHasItsAnswer)
{
    nxSocket fresh;
    EXPECT_TRUE(fresh.MulticastJoin("239.1.1.1") == noHandle);
    EXPECT_TRUE(fresh.GatherSend(nullptr, 0, count) == notSent);
    EXPECT_TRUE(fresh.SendTo("x") == noHandle);
    EXPECT_TRUE(fresh.ConnectLocal("path") == NX_ERR_NOT_IMPLEMENTED);
    EXPECT_TRUE(fresh.BindLocal("path") == NX_ERR_NOT_IMPLEMENTED);
    EXPECT_EQ(Take(),
              (Lines{"INF MulticastJoin failed - socket handle invalid", LineOf("WSASend", EBADF, fresh),
                     "ERR Unable to connect to domain socket. Not supported on Windows",
                     "ERR Unable to bind to domain socket. Not supported on Windows"}));
    for (StateRow const& row : stateRows)
    {
        SCOPED_TRACE(&row - stateRows);
        nxSocket unopened;
        EXPECT_TRUE(unopened.Create(static_cast<NX_SOCKET_TYPE>(2)) == NX_ERR_SOCKET_CREATE_FAILED);
        EXPECT_TRUE(row.run(unopened) == row.unopened);
        DatagramSocket closed;
        ASSERT_TRUE(closed.Close().IsOK());
        (void)Take();
        EXPECT_TRUE(row.run(closed) == row.closed);
        EXPECT_EQ(Take(), row.logged ? Lines{LineOf(row.logged, EBADF, closed)} : Lines());
    }
}

TEST_F(nxSocketTest, CreateRefusesUnknownNumbersAndKeepsWhatItHas)
{
    nxSocket socket;
    EXPECT_TRUE(socket.Create(static_cast<NX_SOCKET_DOMAIN>(1), NX_SOCKET_TYPE_TCP) == invalid);
    EXPECT_TRUE(socket.Connect(here, 9) == noBuffer);
    optionToRefuse = SO_REUSEADDR;
    EXPECT_TRUE(socket.Create() == NX_ERR_SOCKET_CREATE_FAILED); // yet it stays open
    optionToRefuse = -1;
    EXPECT_EQ(OptionOf(socket, SO_TYPE), SOCK_STREAM);
    static nxSocket& owner = *new nxSocket; // keeps the replaced buffer in sight of leak checkers
    owner = socket;
    EXPECT_TRUE(socket.Create(static_cast<NX_SOCKET_TYPE>(2)).IsOK());
    EXPECT_EQ(socket.GetSocket(), owner.GetSocket());
}

// The system keeps as much again as it was asked for, for its own books.
TEST_F(nxSocketTest, SizesComeFromTheEnvironment)
{
    nxCmdLineArgs::GetInstance().SetEnvValue(KVT_INBOUND_BUFFER_SIZE, "abc");
    nxCmdLineArgs::GetInstance().SetEnvValue(KVT_OUTBOUND_BUFFER_SIZE, "4295032832"); // 2^32 + 65536
    (void)Take();
    nxSocket socket;
    ASSERT_TRUE(socket.CreateAndSetBufferSize(NX_SOCKET_TYPE_TCP).IsOK());
    EXPECT_EQ(Take(), (Lines{"INF Set socket inbound buffer size: 1048576",
                             "INF Set socket outbound buffer size: 4295032832"})); // what was asked for
    EXPECT_EQ(OptionOf(socket, SO_RCVBUF), 2 * 1048576);
    ASSERT_TRUE(socket.SetBufferSize(32768).IsOK()); // the inbound one
    EXPECT_EQ(OptionOf(socket, SO_RCVBUF), 2 * 32768);
    EXPECT_EQ(OptionOf(socket, SO_SNDBUF), 2 * 65536);
    EXPECT_TRUE(socket.SetSocketOption(SOL_SOCKET, SO_SNDBUF, buffer, -1) == invalid);

    nxSocket refused;
    optionToRefuse = SO_SNDBUF;
    EXPECT_TRUE(refused.CreateAndSetBufferSize(NX_SOCKET_TYPE_TCP).IsOK()); // a refusal is only logged
    optionToRefuse = -1;
    EXPECT_EQ(Take().back(),
              "ERR Failed to set outbound buffer size. Error: (1000002) NX_ERR_INVALID_PARAMETER"
              " - 'invalid parameter', Buffer size: 4295032832");
}

// Connections.

TEST_F(nxSocketConnection, ConnectedIsARecordOfWhatWasDone)
{
    EXPECT_TRUE(client.IsConnected() && server.IsConnected());
    EXPECT_FALSE(listener.IsConnected());
    EXPECT_TRUE(client.Connect(here, PortOf(listener)) == notConnected);
    EXPECT_TRUE(client.Connect("localhost", 1) == NX_ERR_SOCKET_INVALID_HOST_ADDRESS);
    EXPECT_TRUE(client.IsConnected()); // a failure to connect anew is no end
    EXPECT_TRUE(server.Connect(here, 9) == noBuffer);
    EXPECT_TRUE(server.Bind(0) == noBuffer);
    EXPECT_TRUE(client.Close().IsOK());
    EXPECT_FALSE(client.IsConnected());
    EXPECT_TRUE(client.IsValid());
    EXPECT_EQ(Receive(server), "(0)");
    EXPECT_FALSE(server.IsConnected());
    EXPECT_EQ(Messages().back(), "Bytes received on socket: 0. This indicates that the peer has performed an "
                                 "orderly shutdown");
    EXPECT_TRUE(server.Send("x").IsOK()); // the peer may have closed one way
}

TEST_F(nxSocketTest, AFailedAcceptIsASuccessWithoutAHandle)
{
    nxSocket notListening;
    nxSocket accepted;
    ASSERT_TRUE(notListening.Create().IsOK() && notListening.Bind(here, 0).IsOK());
    EXPECT_TRUE(notListening.Accept(accepted).IsOK());
    EXPECT_TRUE(!accepted.IsValid() && accepted.IsConnected());
    EXPECT_EQ(Take(), Lines());
    ASSERT_TRUE(accepted.Create().IsOK());
    EXPECT_TRUE(accepted.Connect(here, PortOf(notListening)) == notConnected);
    EXPECT_EQ(Take(), Lines{LineOf("connect", ECONNREFUSED, accepted)});
}

TEST_F(nxSocketConnection, NegativeLengthsTouchNoMemory)
{
    EXPECT_TRUE(client.Send(buffer, -1) == notSent);
    EXPECT_TRUE(client.SendTo(buffer, ~0ull) == notSent);
    EXPECT_TRUE(client.Send("x").IsOK());
    EXPECT_EQ(Receive(server, -1), "(-1)");
    EXPECT_TRUE(server.ReceiveFrom(buffer, -1, received) == notReceived);
    EXPECT_TRUE(server.ReceiveMsgWithDestinationAddress(buffer, -1, received, destination) == notReceived);
    EXPECT_EQ(received, 0);
    EXPECT_EQ(CountOfLines("Error: " + std::to_string(EINVAL)), 3);
    EXPECT_EQ(Receive(server), "x");
}

// Descriptors.

TEST_F(nxSocketTest, OneOfManyThreadsClosesAndNoneHitsAnother)
{
    for (int round = 0; round < 200; ++round)
    {
        nxSocket socket;
        ASSERT_TRUE(socket.Create().IsOK());
        std::atomic<int> closed = 0;
        auto const close = [&](int)
        {
            nxSocket copy;
            copy = socket;
            closed += copy.Close().IsOK() ? 1 : 0;
            int const descriptor = open("/dev/null", O_RDONLY | O_CLOEXEC);
            EXPECT_TRUE(copy.Close() == notClosed);
            EXPECT_EQ(::close(descriptor), 0);
            copy = nxSocket(); // the original alone is destroyed with the handle
        };
        RunTogether(4, close);
        EXPECT_EQ(closed, 1);
    }
}

TEST_F(nxSocketTest, StandardStreamsAreNeverSockets)
{
    auto const areOthers = []
    {
        close(STDIN_FILENO);
        Connection connection;
        bool isOther = fcntl(STDIN_FILENO, F_GETFD) == -1;
        for (nxSocket const* socket : {&connection.listener, &connection.client, &connection.server})
            isOther &= DescriptorOf(*socket) > STDERR_FILENO && OptionOf(*socket, SO_REUSEADDR) == 1 &&
                       fcntl(DescriptorOf(*socket), F_GETFD) == FD_CLOEXEC;
        return isOther;
    };
    EXPECT_EQ(RunInChild(areOthers), 1);
}

// Waiting.

TEST_F(nxSocketConnection, WaitsForTooLongOrForADeadHandleFailAtOnce)
{
    std::vector<bool> readable{true, true, true};
    count = 7;
    EXPECT_TRUE(server.Select(1000001, count) == invalid);
    EXPECT_TRUE(nxSocket::Select({&server}, 1000001, count, readable) == invalid);
    EXPECT_EQ(count, 7u);
    ASSERT_TRUE(client.Send("x").IsOK());
    ASSERT_TRUE(server.SelectWithoutTimeout().IsOK()); // one of the set could be read
    ASSERT_TRUE(client.Close().IsOK());
    EXPECT_TRUE(nxSocket::Select({&server, &client}, 1000000, count, readable) == notSelected);
    EXPECT_TRUE(count == 0 && readable.size() == 3);
    count = 7;
    EXPECT_TRUE(client.Select(1000000, count).IsOK());
    EXPECT_EQ(count, 0u);
    auto const begin = std::chrono::steady_clock::now();
    EXPECT_TRUE(nxSocket::Select({}, 20000, count, readable).IsOK()); // an empty set is a pause
    EXPECT_GE(std::chrono::steady_clock::now() - begin, 20ms);
    EXPECT_TRUE(count == 0 && readable.empty());
}

TEST_F(nxSocketTest, ASetHoldsSixtyFourDifferentHandlesOfAnyNumber)
{
    // Beside so many descriptors all numbers are beyond what the system's own select() can take.
    rlimit limit = {};
    getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = limit.rlim_max;
    setrlimit(RLIMIT_NOFILE, &limit);
    std::vector<int> others;
    while (limit.rlim_max > 2 * FD_SETSIZE && others.size() <= FD_SETSIZE)
        others.push_back(dup(STDOUT_FILENO));
    constexpr std::size_t capacity = 64;
    DatagramSocket sockets[capacity + 1];
    std::vector<nxSocket*> set;
    DatagramSocket sender;
    for (nxSocket& socket : sockets)
    {
        // Without the option no two of them can be given one port.
        ASSERT_TRUE(socket.SetSocketOptionFlag(SOL_SOCKET, SO_REUSEADDR, false).IsOK());
        ASSERT_TRUE(socket.Bind(here, 0).IsOK());
        ASSERT_TRUE(sender.SendToDestination("x", 1, here, PortOf(socket)).IsOK());
        ASSERT_TRUE(socket.SelectWithoutTimeout().IsOK());
        set.insert(set.end(), {&socket, &sockets[0]}); // which counts once, wherever it stands
    }
    std::vector<bool> readable;
    ASSERT_TRUE(nxSocket::Select(set, 0, count, readable).IsOK());
    EXPECT_EQ(count, capacity);
    std::vector<bool> expected(set.size(), true);
    expected[2 * capacity] = false; // the sixty-fifth; the first one's copy behind it is looked at
    EXPECT_EQ(readable, expected);
    for (int const descriptor : others)
        close(descriptor);
}

// Addresses; a fuzz target holds that the parts of any text that is taken fit.

TEST(nxSocketAddress, IsReadAsWrittenAndSplitAtAMask)
{
    constexpr unsigned int null = 0xFFFFFFFF;
    using Row = std::tuple<std::string, unsigned int, unsigned int, unsigned int, unsigned int>;
    unsigned int untouched = 42;
    for (Row const& row : std::initializer_list<Row>{
#include "tests/network/addresses.def"
         })
    {
        std::string const text = std::get<0>(row);
        bool const isSound = std::get<1>(row) != 0;
        std::string front = "before";
        unsigned int address = 42;
        nxVolume mask = 1, network = 2, host = 3;
        EXPECT_EQ(nxSocket::ParseAddressAndMask(text, front, address, mask, network, host).IsOK(), isSound);
        EXPECT_EQ(Row(text, address, mask.GetValue(), network.GetValue(), host.GetValue()), row);
        EXPECT_EQ(front.empty(), !isSound);
        EXPECT_TRUE(isSound || nxSocket::ParseAddress(text, untouched) == invalid);
    }
    EXPECT_EQ(untouched, 42u);
}

// Signals.

/// Bytes that are nowhere like themselves a little later.
std::string Bytes(std::size_t size)
{
    std::string text(size, '\0');
    for (std::size_t place = 0; place < size; ++place)
        text[place] = static_cast<char>((place * 2654435761u) >> 24);
    return text;
}

/// What arrives until there are so many bytes.
std::string ReceiveAll(nxSocket& socket, std::size_t size)
{
    std::string arrived;
    do
        arrived += Receive(socket);
    while (arrived.size() < size && received > 0);
    return arrived;
}

// Interruptions of the other calls are among the figures in tests/faults/.
TEST_F(nxSocketConnection, SignalsShortenNoWaitAndEndNoConnecting)
{
    struct sigaction action = {};
    action.sa_handler = [](int) {}; // without SA_RESTART
    sigaction(SIGALRM, &action, nullptr);
    itimerval timer = {{0, 1000}, {0, 1000}};
    setitimer(ITIMER_REAL, &timer, nullptr); // a thousand signals a second, of which this thread gets most
    auto const begin = std::chrono::steady_clock::now();
    EXPECT_TRUE(server.Select(1000000, count).IsOK());
    EXPECT_EQ(count, 0u);
    auto const waited = std::chrono::steady_clock::now() - begin;
    EXPECT_GE(waited, 1s); // the whole of it, and not from the start again after each signal
    EXPECT_LT(waited, 1900ms);

    // Six connections fill a listener's queue, and the seventh has to wait until one is accepted.
    nxSocket clients[7];
    auto const connect = [&](nxSocket& one) { return one.Connect(here, PortOf(listener)); };
    for (nxSocket& one : clients)
        ASSERT_TRUE(one.Create().IsOK() && (&one == &clients[6] || connect(one).IsOK()));
    auto const serve = [&]
    {
        nxSocket accepted;
        std::this_thread::sleep_for(30ms);
        EXPECT_TRUE(listener.Accept(accepted).IsOK());
        std::this_thread::sleep_for(30ms);
        EXPECT_TRUE(client.Send("x").IsOK());
    };
    std::thread other(serve);
    EXPECT_TRUE(connect(clients[6]).IsOK());
    EXPECT_TRUE(clients[6].IsConnected());
    EXPECT_TRUE(server.ReceiveMsgWithDestinationAddress(buffer, 1, received, destination).IsOK());
    other.join();
    timer = {};
    setitimer(ITIMER_REAL, &timer, nullptr);
}

// Streams.

TEST_F(nxSocketConnection, AGatherThatDoesNotWaitTellsHowManyBytesWent)
{
    std::string const data = Bytes(64u << 20); // more than there is room for
    int nonBlocking = 1;
    ASSERT_EQ(ioctl(DescriptorOf(client), FIONBIO, &nonBlocking), 0);
    _WSABUF piece;
    nxSocket::SetGatherSendArrayEntry(&piece, 0, data.data(), static_cast<unsigned int>(data.size()));
    while (piece.len > 0 && client.GatherSend(&piece, 1, count).IsOK())
        nxSocket::SetGatherSendArrayEntry(&piece, 0, piece.buf + count, piece.len - count);
    EXPECT_EQ(count, 0u);
    EXPECT_GT(piece.len, 0u);
    std::size_t const sent = data.size() - piece.len;
    EXPECT_TRUE(ReceiveAll(server, sent) == data.substr(0, sent));
}

TEST_F(nxSocketConnection, GatherJoinsMoreBuffersThanTheSystemTakes)
{
    constexpr unsigned int many = 2500; // the system takes 1024
    std::string const text = Bytes(many);
    std::vector<_WSABUF> pieces(many);
    for (unsigned int index = 0; index < many; ++index)
        nxSocket::SetGatherSendArrayEntry(pieces.data(), index, &text[index], 1);
    pieces[0].len = 0;
    ASSERT_TRUE(client.GatherSend(pieces.data(), many, count).IsOK());
    EXPECT_EQ(count, many - 1);
    EXPECT_EQ(ReceiveAll(server, many - 1), text.substr(1));

    DatagramSocket datagrams;
    ASSERT_TRUE(datagrams.Connect(here, static_cast<int>(PortOfBound(datagrams))).IsOK());
    EXPECT_TRUE(datagrams.GatherSend(pieces.data(), many, count) == notSent);
    EXPECT_EQ(count, 0u);
    ASSERT_TRUE(datagrams.GatherSend(pieces.data(), 1024, count).IsOK());
    EXPECT_EQ(Receive(datagrams), text.substr(1, 1023)); // one datagram
}

TEST_F(nxSocketConnection, APeerThatResetsRaisesNoSignal)
{
    linger const abort = {1, 0};
    ASSERT_TRUE(client.SetSocketOption(SOL_SOCKET, SO_LINGER, &abort, sizeof abort).IsOK());
    ASSERT_TRUE(client.Close().IsOK());
    ASSERT_TRUE(server.Select(1000000, count).IsOK());
    EXPECT_EQ(count, 1u); // readable: there is an error to be had
    EXPECT_EQ(Receive(server), "(-1)");
    EXPECT_FALSE(server.IsConnected());
    EXPECT_EQ(Take().back(), LineOf("recv", ECONNRESET, server));
    // Both would end the process by SIGPIPE.
    _WSABUF piece = {1, buffer};
    count = 7;
    EXPECT_TRUE(server.Send("x") == notSent);
    EXPECT_TRUE(server.GatherSend(&piece, 1, count) == notSent);
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(CountOfLines("Function: WSASend. Error: " + std::to_string(EPIPE)), 1);
}

// Datagrams.

TEST_F(nxSocketTest, SendToGoesToTheLastSenderOrToWhatWasBound)
{
    DatagramSocket server;
    DatagramSocket clients[2];
    unsigned int const port = PortOfBound(server);
    for (nxSocket& client : clients)
    {
        EXPECT_TRUE(client.SendTo("x") == notSent); // nobody's address yet
        ASSERT_TRUE(client.SendToDestination("ask", 3, here, port).IsOK());
        ASSERT_TRUE(server.ReceiveFrom(buffer, sizeof buffer, received).IsOK());
        EXPECT_EQ(std::string(buffer, 3), "ask");
        // What goes elsewhere meanwhile leaves the sender's address where it is.
        ASSERT_TRUE(server.SendToDestination("aside", 5, here, port).IsOK());
        ASSERT_TRUE(server.SendTo("answer").IsOK());
        EXPECT_EQ(Receive(client), "answer");
        EXPECT_EQ(Receive(server), "aside");
    }
    DatagramSocket itself;
    // Nearer than the server, which is anywhere.
    ASSERT_TRUE(itself.Bind(here, static_cast<int>(port)).IsOK());
    ASSERT_TRUE(itself.SendTo("me").IsOK());
    EXPECT_EQ(Receive(itself), "me");
    DatagramSocket lost; // a text that is no address binds the broadcast address
    EXPECT_TRUE(lost.Bind("rubbish", 0).IsOK());
    EXPECT_EQ(AddressOf(lost).sin_addr.s_addr, INADDR_BROADCAST);
}

TEST_F(nxSocketTest, ADatagramsDestinationIsTold)
{
    DatagramSocket socket;
    unsigned int const port = PortOfBound(socket);
    auto const receive = [&](int size)
    { return socket.ReceiveMsgWithDestinationAddress(buffer, size, received, destination); };
    ASSERT_TRUE(socket.SendToDestination("abc", 3, here, port).IsOK());
    destination = "before";
    ASSERT_TRUE(receive(2).IsOK());
    EXPECT_EQ(received, 2);     // cut to the buffer
    EXPECT_EQ(destination, ""); // not asked for
    ASSERT_TRUE(socket.SetReceiveMsgWithDestinationAddressSockOpts(true).IsOK());
    ASSERT_TRUE(socket.SendToDestination("abc", 3, "127.0.0.2", port).IsOK());
    ASSERT_TRUE(receive(sizeof buffer).IsOK());
    EXPECT_EQ(received, 3);
    EXPECT_EQ(destination, "127.0.0.2");
    ASSERT_TRUE(socket.SendTo("to the sender").IsOK()); // its address came along
    EXPECT_EQ(Receive(socket), "to the sender");

    // An empty datagram is taken for a peer's end; only one of the three receives does so without a line.
    for (int round = 0; round < 3; ++round)
        ASSERT_TRUE(socket.SendToDestination("", 0, "127.0.0.3", port).IsOK());
    EXPECT_EQ(Receive(socket), "(0)");
    EXPECT_TRUE(socket.ReceiveFrom(buffer, sizeof buffer, received) == notReceived);
    EXPECT_EQ(CountOfLines("Bytes received on socket: 0"), 2);
    EXPECT_TRUE(receive(sizeof buffer) == notReceived);
    EXPECT_EQ(destination, "127.0.0.3");
    EXPECT_EQ(Messages().size(), 2u);
}

// Multicast, in a network of this thread's own.

/// @return where the datagrams went to, which is also what they say, up to the first that is waited for.
std::string TakeGroups(nxSocket& socket)
{
    std::string groups;
    while (socket.ReceiveMsgWithDestinationAddress(buffer, sizeof buffer, received, destination).IsOK())
    {
        EXPECT_EQ(destination, std::string(buffer, static_cast<std::size_t>(received)));
        groups += destination + ' ';
    }
    return groups;
}

void TellGroupsApart()
{
    std::string const groupA = "239.1.1.1";
    std::string const groupB = "239.1.1.2";
    DatagramSocket both;
    DatagramSocket onlyA;
    unsigned int const port = PortOfBound(both);
    ASSERT_TRUE(onlyA.Bind(static_cast<int>(port)).IsOK());
    for (nxSocket* receiver : {&both, &onlyA})
        ASSERT_TRUE(receiver->SetReceiveMsgWithDestinationAddressSockOpts(true).IsOK());
    EXPECT_TRUE(both.MulticastJoin(groupA) == notConnected); // there is no route
    EXPECT_EQ(TakeGroups(both), "");                         // and the socket does not wait any more
    ASSERT_EQ(std::system("ip route add 224.0.0.0/4 dev lo"), 0);
    ASSERT_TRUE(both.MulticastJoin(groupA).IsOK() && both.MulticastJoin(groupB).IsOK());
    ASSERT_TRUE(onlyA.MulticastJoin(groupA).IsOK());
    EXPECT_TRUE(both.MulticastJoin(groupA) == notConnected); // joined already

    DatagramSocket sender;
    auto const sendBoth = [&] // over the loopback they are there at once
    {
        for (std::string const& group : {groupB, groupA})
            EXPECT_TRUE(sender.SendToDestination(group.data(), group.size(), group, port).IsOK());
    };
    sendBoth();
    EXPECT_EQ(TakeGroups(both), groupB + ' ' + groupA + ' ');
    EXPECT_EQ(TakeGroups(onlyA), groupA + ' '); // not the other's group
    ASSERT_TRUE(both.MulticastLeave(groupB).IsOK());
    EXPECT_TRUE(both.MulticastLeave(groupB) == notConnected);
    sendBoth();
    EXPECT_EQ(TakeGroups(both), groupA + ' '); // nor does it wait again
}

TEST_F(nxSocketTest, MulticastGroupsAreToldApart)
{
    bool isAlone = false; // a thread can have a network of its own, which ends with it
    std::thread(
        [&]
        {
            isAlone = unshare(CLONE_NEWNET) == 0 && std::system("ip link set lo up 2>/dev/null") == 0;
            if (isAlone)
                TellGroupsApart();
        })
        .join();
    if (!isAlone)
        GTEST_SKIP() << "a network of its own can't be had here, or iproute2 is not installed";
    EXPECT_EQ(CountOfLines("setsockopt - multicast join. Error: " + std::to_string(ENODEV)), 1);
    EXPECT_EQ(CountOfLines("setsockopt - multicast join. Error: " + std::to_string(EADDRINUSE)), 1);
    EXPECT_EQ(CountOfLines("setsockopt - multicast leave"), 1);
}

// Costs.

TEST_F(nxSocketConnection, EachTransferIsOneCall)
{
    _WSABUF pieces[] = {{2, buffer}, {1, buffer}};
    auto const transfer = [&] // a second call of one kind would wait for ever, or send twice
    {
        bool isWell =
            client.Send("abc").IsOK() && server.Receive(buffer, 9, received).IsOK() && received == 3;
        isWell &= client.GatherSend(pieces, 2, count).IsOK();
        isWell &= server.ReceiveFrom(buffer, 9, received).IsOK() && received == 3;
        isWell &= client.SendTo("ab").IsOK() && client.SendToDestination("c", 1, here, 9).IsOK();
        isWell &= server.ReceiveMsgWithDestinationAddress(buffer, 9, received, destination).IsOK();
        return isWell && received == 3 ? 0 : 1;
    };
    // The last one is a sanitizer's, at the end.
    EXPECT_TRUE(MakesNoSystemCallBut({SYS_sendto, SYS_recvfrom, SYS_sendmsg, SYS_recvmsg, SYS_sigaltstack},
                                     transfer));
}
} // namespace
