// What each operation of a socket answers, logs and leaves behind, whatever state the socket is in.
#include "core/process/nxCmdLineArgs.h"
#include "core/process/nxConfigurationKeys.h"
#include "tests/concurrency/RunTogether.h"
#include "tests/network/nxSocketTesting.h"

#include <atomic>
#include <cerrno>
#include <chrono>
#include <tuple>

#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

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
using Lines = std::vector<std::string>;

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
constexpr nxEnumValue never = NX_ERR_NOT_IMPLEMENTED;

struct StateRow
{
    nxErrorEnum (*run)(nxSocket&);
    nxEnumValue fresh;    // neither handle nor address buffer
    nxEnumValue unopened; // an address buffer, no handle
    nxEnumValue closed;
    char const* logged = nullptr; // as the function's name when the socket is closed; null for no line
};

constexpr StateRow stateRows[] = {
    {[](nxSocket& s) { return s.Connect("127.0.0.1", 9); }, noBuffer, noHandle, notConnected, "connect"},
    {[](nxSocket& s) { return s.Bind("127.0.0.1", 0); }, noBuffer, noHandle, notBound},
    {[](nxSocket& s) { return s.Bind(0); }, noBuffer, noHandle, notBound},
    {[](nxSocket& s) { return s.Listen(); }, noHandle, noHandle, NX_ERR_SOCKET_LISTEN_FAILED},
    {[](nxSocket& s) { return s.Send("x"); }, noHandle, noHandle, notSent},
    {[](nxSocket& s) { return s.GatherSend(nullptr, 0, count); }, notSent, notSent, notSent, "WSASend"},
    {[](nxSocket& s) { return s.SendTo("x"); }, noHandle, noHandle, notSent},
    {[](nxSocket& s) { return s.SendToDestination("x", 1, "127.0.0.1", 9); }, noHandle, noHandle, notSent},
    {[](nxSocket& s) { return s.Receive(buffer, 16, received); }, noHandle, noHandle, notReceived, "recv"},
    {[](nxSocket& s) { return s.ReceiveFrom(buffer, 16, received); }, noHandle, noHandle, notReceived,
     "recvfrom"},
    {[](nxSocket& s) { return s.ReceiveMsgWithDestinationAddress(buffer, 16, received, destination); },
     noHandle, noHandle, noHandle},
    {[](nxSocket& s) { return s.MulticastJoin("239.1.1.1"); }, noHandle, noHandle, notConnected,
     "setsockopt - multicast join"},
    {[](nxSocket& s) { return s.MulticastLeave("239.1.1.1"); }, noHandle, noHandle, notConnected,
     "setsockopt - multicast leave"},
    {[](nxSocket& s) { return s.Select(0); }, notSelected, notSelected, success},
    {[](nxSocket& s) { return s.SelectWithoutTimeout(); }, notSelected, notSelected, success},
    {[](nxSocket& s) { return s.SetBufferSize(8192); }, invalid, invalid, invalid},
    {[](nxSocket& s) { return s.SetReceiveMsgWithDestinationAddressSockOpts(true); }, invalid, invalid,
     invalid, "setsockopt - receive msg with destination address socket options"},
    {[](nxSocket& s) { return s.ConnectLocal("path"); }, never, never, never,
     "Unable to connect to domain socket. Not supported on Windows"},
    {[](nxSocket& s) { return s.BindLocal("path"); }, never, never, never,
     "Unable to bind to domain socket. Not supported on Windows"},
    {[](nxSocket& s) { return s.Close(); }, notClosed, notClosed, notClosed, "close"}};

int OptionOf(nxSocket const& socket, int name)
{
    int value = 0;
    socklen_t length = sizeof value;
    EXPECT_EQ(getsockopt(DescriptorOf(socket), SOL_SOCKET, name, &value, &length), 0);
    return value;
}

std::string LineOf(std::string const& function, nxSocket const& socket)
{
    return function.starts_with("Unable") ? function
                                          : "Error on socket call. Function: " + function + ". Error: 9" +
                                                ", Socket descriptor: " + std::to_string(socket.GetSocket());
}

TEST_F(nxSocketTest, EachStateHasItsAnswer)
{
    for (StateRow const& row : stateRows)
    {
        SCOPED_TRACE(&row - stateRows);
        nxSocket fresh;
        EXPECT_TRUE(row.run(fresh) == row.fresh);
        nxSocket unopened;
        EXPECT_TRUE(unopened.Create(static_cast<NX_SOCKET_TYPE>(2)) == NX_ERR_SOCKET_CREATE_FAILED);
        EXPECT_TRUE(row.run(unopened) == row.unopened);
        nxSocket closed;
        ASSERT_TRUE(closed.Create(NX_SOCKET_TYPE_UDP).IsOK());
        ASSERT_TRUE(closed.Close().IsOK());
        Clear();
        EXPECT_TRUE(row.run(closed) == row.closed);
        EXPECT_EQ(Messages(), row.logged ? Lines{LineOf(row.logged, closed)} : Lines());
    }
    Clear();
    nxSocket fresh;
    EXPECT_EQ(fresh.GetSocket(), ~0ull);
    EXPECT_TRUE(fresh.MulticastJoin("239.1.1.1") == noHandle);
    EXPECT_TRUE(fresh.GatherSend(nullptr, 0, count) == notSent);
    EXPECT_EQ(Messages(), (Lines{"MulticastJoin failed - socket handle invalid", LineOf("WSASend", fresh)}));
    EXPECT_EQ(Levels(), (std::vector<unsigned int>{NX_INF, NX_ERR}));
}

TEST_F(nxSocketTest, CreateRefusesUnknownNumbersAndKeepsWhatItHas)
{
    nxSocket socket;
    EXPECT_TRUE(socket.Create(static_cast<NX_SOCKET_DOMAIN>(1), NX_SOCKET_TYPE_TCP) == invalid);
    EXPECT_TRUE(socket.Connect(here, 9) == noBuffer);
    nxSocket another; // its buffer would be lost to a later Create()
    EXPECT_TRUE(another.Create(static_cast<NX_SOCKET_TYPE>(-1)) == NX_ERR_SOCKET_CREATE_FAILED);
    EXPECT_FALSE(another.IsValid());
    optionToRefuse = SO_REUSEADDR;
    EXPECT_TRUE(socket.Create() == NX_ERR_SOCKET_CREATE_FAILED); // yet it stays open
    optionToRefuse = -1;
    EXPECT_EQ(OptionOf(socket, SO_TYPE), SOCK_STREAM);
    static nxSocket& owner = *new nxSocket; // keeps the replaced buffer in sight of leak checkers
    owner = socket;
    EXPECT_TRUE(socket.Create(static_cast<NX_SOCKET_TYPE>(2)).IsOK());
    EXPECT_EQ(socket.GetSocket(), owner.GetSocket());
    for (NX_SOCKET_TYPE const type : {NX_SOCKET_TYPE_TCP, NX_SOCKET_TYPE_UDP})
    {
        nxSocket reusing;
        ASSERT_TRUE(reusing.Create(type).IsOK());
        EXPECT_EQ(OptionOf(reusing, SO_REUSEADDR), 1);
    }
}

// The system keeps as much again as it was asked for, for its own books.
TEST_F(nxSocketTest, SizesComeFromTheEnvironment)
{
    using Row = std::tuple<char const*, char const*, int>;
    nxCmdLineArgs::GetInstance().SetEnvValue(KVT_OUTBOUND_BUFFER_SIZE, "131072");
    for (auto const& [text, logged, size] :
         {Row{"65536", "65536", 65536}, Row{"", "1048576", 1048576}, Row{"abc", "1048576", 1048576},
          Row{"4295032832", "4295032832", 65536}}) // 2^32 + 65536: the line shows what was asked for
    {
        nxCmdLineArgs::GetInstance().SetEnvValue(KVT_INBOUND_BUFFER_SIZE, text);
        Clear();
        nxSocket socket;
        ASSERT_TRUE(socket.CreateAndSetBufferSize(NX_SOCKET_TYPE_TCP).IsOK());
        EXPECT_EQ(Messages(), (Lines{std::string("Set socket inbound buffer size: ") + logged,
                                     "Set socket outbound buffer size: 131072"}));
        EXPECT_EQ(OptionOf(socket, SO_RCVBUF), 2 * size) << text;
        EXPECT_EQ(OptionOf(socket, SO_SNDBUF), 2 * 131072) << text;
    }
    nxCmdLineArgs::GetInstance().SetEnvValue(KVT_INBOUND_BUFFER_SIZE, "");
    nxCmdLineArgs::GetInstance().SetEnvValue(KVT_OUTBOUND_BUFFER_SIZE, "");

    Clear();
    nxSocket socket;
    optionToRefuse = SO_SNDBUF;
    EXPECT_TRUE(socket.CreateAndSetBufferSize(NX_SOCKET_TYPE_TCP).IsOK()); // a refusal is only logged
    optionToRefuse = -1;
    EXPECT_EQ(Messages().back(), "Failed to set outbound buffer size. Error: (1000002) "
                                 "NX_ERR_INVALID_PARAMETER - 'invalid parameter', Buffer size: 1048576");
    EXPECT_EQ(Levels(), (std::vector<unsigned int>{NX_INF, NX_ERR}));
    ASSERT_TRUE(socket.SetOutboundBufferSize(16384).IsOK());
    ASSERT_TRUE(socket.SetBufferSize(32768).IsOK()); // the inbound one
    EXPECT_EQ(OptionOf(socket, SO_RCVBUF), 2 * 32768);
    EXPECT_EQ(OptionOf(socket, SO_SNDBUF), 2 * 16384);
    EXPECT_TRUE(socket.SetSocketOptionFlag_NoDelay(true).IsOK());
    EXPECT_TRUE(socket.SetSocketOption(SOL_SOCKET, SO_SNDBUF, buffer, -1) == invalid);
}

// Connections.

TEST_F(nxSocketTest, ConnectedIsARecordOfWhatWasDone)
{
    Connection connection;
    EXPECT_TRUE(connection.client.IsConnected() && connection.server.IsConnected());
    EXPECT_FALSE(connection.listener.IsConnected());
    EXPECT_TRUE(connection.client.Connect(here, PortOf(connection.listener)) == notConnected);
    EXPECT_TRUE(connection.client.Connect("localhost", 1) == NX_ERR_SOCKET_INVALID_HOST_ADDRESS);
    EXPECT_TRUE(connection.client.IsConnected()); // a failure to connect anew is no end
    EXPECT_TRUE(connection.server.Connect(here, 9) == noBuffer);
    EXPECT_TRUE(connection.server.Bind(0) == noBuffer);
    EXPECT_TRUE(connection.client.Close().IsOK());
    EXPECT_FALSE(connection.client.IsConnected());
    EXPECT_TRUE(connection.client.IsValid());
    EXPECT_EQ(Receive(connection.server), "(0)");
    EXPECT_FALSE(connection.server.IsConnected());
    EXPECT_EQ(Messages().back(), "Bytes received on socket: 0. This indicates that the peer has performed an "
                                 "orderly shutdown");
}

TEST_F(nxSocketTest, AFailedAcceptIsASuccessWithoutAHandle)
{
    nxSocket notListening;
    nxSocket accepted;
    ASSERT_TRUE(notListening.Create().IsOK() && notListening.Bind(here, 0).IsOK());
    EXPECT_TRUE(notListening.Accept(accepted).IsOK());
    EXPECT_TRUE(!accepted.IsValid() && accepted.IsConnected());
    EXPECT_TRUE(Messages().empty());
    ASSERT_TRUE(accepted.Create().IsOK());
    EXPECT_TRUE(accepted.Connect(here, PortOf(notListening)) == notConnected);
    EXPECT_EQ(CountOfLines("Function: connect. Error: " + std::to_string(ECONNREFUSED)), 1);
}

TEST_F(nxSocketTest, NegativeLengthsTouchNoMemory)
{
    Connection connection;
    nxSocket& server = connection.server;
    EXPECT_TRUE(connection.client.Send(buffer, -1) == notSent);
    EXPECT_TRUE(connection.client.SendTo(buffer, ~0ull) == notSent);
    EXPECT_TRUE(connection.client.Send("x").IsOK());
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
    int const saved = dup(STDIN_FILENO);
    close(STDIN_FILENO);
    {
        Connection connection;
        for (nxSocket const* socket : {&connection.listener, &connection.client, &connection.server})
        {
            EXPECT_GT(DescriptorOf(*socket), STDERR_FILENO);
            EXPECT_EQ(fcntl(DescriptorOf(*socket), F_GETFD), FD_CLOEXEC);
        }
        EXPECT_EQ(fcntl(STDIN_FILENO, F_GETFD), -1);
    }
    dup2(saved, STDIN_FILENO);
    close(saved);
}

// Waiting.

TEST_F(nxSocketTest, WaitsAreAtMostASecond)
{
    using Clock = std::chrono::steady_clock;
    nxSocket socket;
    ASSERT_TRUE(socket.Create(NX_SOCKET_TYPE_UDP).IsOK());
    count = 7;
    std::vector<bool> readable{true};
    EXPECT_TRUE(socket.Select(1000001) == invalid);
    EXPECT_TRUE(socket.Select(1000001, count) == invalid);
    EXPECT_TRUE(nxSocket::Select({&socket}, 1000001, count, readable) == invalid);
    EXPECT_EQ(count, 7u);
    EXPECT_EQ(readable, std::vector<bool>{true});
    auto const begin = Clock::now();
    EXPECT_TRUE(nxSocket::Select({}, 20000, count, readable).IsOK()); // an empty set is a pause
    EXPECT_GE(Clock::now() - begin, std::chrono::milliseconds(20));
    EXPECT_EQ(count, 0u);
    EXPECT_TRUE(readable.empty());
}

TEST_F(nxSocketTest, AWaitForADeadHandleFailsAtOnce)
{
    Connection connection;
    nxSocket fresh;
    std::vector<bool> readable{true, true, true};
    ASSERT_TRUE(connection.client.Send("x").IsOK());
    ASSERT_TRUE(connection.server.SelectWithoutTimeout().IsOK()); // one of the set could be read
    count = 7;
    EXPECT_TRUE(nxSocket::Select({&connection.server, &fresh}, 0, count, readable) == notSelected);
    EXPECT_EQ(count, 0u);
    ASSERT_TRUE(connection.client.Close().IsOK());
    EXPECT_TRUE(nxSocket::Select({&connection.client, &connection.server}, 1000000, count, readable) ==
                notSelected);
    EXPECT_EQ(readable.size(), 3u);
    count = 7;
    EXPECT_TRUE(connection.client.Select(1000000, count).IsOK());
    EXPECT_EQ(count, 0u);
}

TEST_F(nxSocketTest, ASetHoldsSixtyFourDifferentHandlesOfAnyNumber)
{
    // Beside so many descriptors all numbers are beyond what the system's own select() can take.
    rlimit limit = {};
    getrlimit(RLIMIT_NOFILE, &limit);
    rlimit const raised = {limit.rlim_max, limit.rlim_max};
    setrlimit(RLIMIT_NOFILE, &raised);
    std::vector<int> others;
    while (limit.rlim_max > 2 * FD_SETSIZE && others.size() <= FD_SETSIZE)
        others.push_back(dup(STDOUT_FILENO));
    constexpr std::size_t capacity = 64;
    nxSocket sockets[capacity + 1];
    std::vector<nxSocket*> set;
    nxSocket sender;
    ASSERT_TRUE(sender.Create(NX_SOCKET_TYPE_UDP).IsOK());
    for (nxSocket& socket : sockets)
    {
        ASSERT_TRUE(socket.Create(NX_SOCKET_TYPE_UDP).IsOK());
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
    setrlimit(RLIMIT_NOFILE, &limit);
}

// Addresses; a fuzz target holds that the parts of any text that is taken fit.

TEST(nxSocketAddress, IsReadAsWrittenAndSplitAtAMask)
{
    constexpr unsigned int null = 0xFFFFFFFF;
    struct Row
    {
        std::string text;
        unsigned int address, mask, network, host; // none of them and an empty text where it is refused
        bool operator==(Row const&) const = default;
    };
    for (Row const& row : std::initializer_list<Row>{
#include "tests/network/addresses.def"
         })
    {
        SCOPED_TRACE(row.text);
        std::string front = "before";
        unsigned int address = 42;
        nxVolume mask = 1, network = 2, host = 3;
        bool const isGood =
            nxSocket::ParseAddressAndMask(row.text, front, address, mask, network, host).IsOK();
        EXPECT_EQ((Row{row.text, address, mask.GetValue(), network.GetValue(), host.GetValue()}), row);
        EXPECT_EQ(isGood, row.address != 0);
        EXPECT_EQ(front, isGood ? row.text.substr(0, row.text.find('/')) : "");
        bool const isPlain = isGood && front == row.text;
        address = 42;
        EXPECT_EQ(nxSocket::ParseAddress(row.text, address).IsOK(), isPlain);
        EXPECT_EQ(address, isPlain ? row.address : 42);
    }
}
} // namespace
