// What each operation of a socket answers, logs and leaves behind, whatever state the socket is in.
#include "core/process/nxCmdLineArgs.h"
#include "core/process/nxConfigurationKeys.h"
#include "tests/concurrency/RunTogether.h"
#include "tests/network/nxSocketTesting.h"

#include <atomic>
#include <cerrno>
#include <chrono>
#include <functional>
#include <memory>
#include <thread>
#include <tuple>
#include <type_traits>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

static_assert(sizeof(nxSocket) == 24);
static_assert(!std::is_polymorphic_v<nxSocket>);
static_assert(!std::is_copy_constructible_v<nxSocket> && std::is_copy_assignable_v<nxSocket>);

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
char bytes[16];
int received;
unsigned int count;
std::string destination;

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
    std::function<nxErrorEnum(nxSocket&)> run;
    nxEnumValue fresh;    // neither handle nor address buffer
    nxEnumValue unopened; // an address buffer, no handle
    nxEnumValue closed;
    char const* logged = nullptr; // as the function's name when the socket is closed; null for no line
};

StateRow const stateRows[] = {
    {[](nxSocket& s) { return s.Connect("127.0.0.1", 9); }, noBuffer, noHandle, notConnected, "connect"},
    {[](nxSocket& s) { return s.Bind("127.0.0.1", 0); }, noBuffer, noHandle, notBound},
    {[](nxSocket& s) { return s.Bind(0); }, noBuffer, noHandle, notBound},
    {[](nxSocket& s) { return s.Listen(); }, noHandle, noHandle, NX_ERR_SOCKET_LISTEN_FAILED},
    {[](nxSocket& s) { return s.Send("x"); }, noHandle, noHandle, notSent},
    {[](nxSocket& s) { return s.GatherSend(nullptr, 0, count); }, notSent, notSent, notSent, "WSASend"},
    {[](nxSocket& s) { return s.SendTo("x"); }, noHandle, noHandle, notSent},
    {[](nxSocket& s) { return s.SendToDestination("x", 1, "127.0.0.1", 9); }, noHandle, noHandle, notSent},
    {[](nxSocket& s) { return s.Receive(bytes, 16, received); }, noHandle, noHandle, notReceived, "recv"},
    {[](nxSocket& s) { return s.ReceiveFrom(bytes, 16, received); }, noHandle, noHandle, notReceived,
     "recvfrom"},
    {[](nxSocket& s) { return s.ReceiveMsgWithDestinationAddress(bytes, 16, received, destination); },
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
        auto const expected =
            row.logged ? std::vector<std::string>{LineOf(row.logged, closed)} : std::vector<std::string>();
        EXPECT_EQ(Messages(), expected);
    }
}

TEST_F(nxSocketTest, NoHandleIsAllBitsSetAndLoggedSo)
{
    nxSocket socket;
    EXPECT_FALSE(socket.IsValid());
    EXPECT_EQ(socket.GetSocket(), ~0ull);
    EXPECT_TRUE(socket.MulticastJoin("239.1.1.1") == NX_ERR_SOCKET_INVALID_HANDLE);
    EXPECT_FALSE(socket.GatherSend(nullptr, 0, count).IsOK());
    EXPECT_EQ(Messages(),
              (std::vector<std::string>{"MulticastJoin failed - socket handle invalid",
                                        "Error on socket call. Function: WSASend. Error: 9, Socket "
                                        "descriptor: 18446744073709551615"}));
    EXPECT_EQ(Levels(), (std::vector<unsigned int>{NX_INF, NX_ERR}));
}

TEST_F(nxSocketTest, CreateRefusesUnknownNumbers)
{
    nxSocket socket;
    EXPECT_TRUE(socket.Create(static_cast<NX_SOCKET_DOMAIN>(1), NX_SOCKET_TYPE_TCP) ==
                NX_ERR_INVALID_PARAMETER);
    EXPECT_TRUE(socket.Connect(here, 9) == NX_ERR_NOT_INITIALISED); // so no buffer was made
    nxSocket another;
    EXPECT_TRUE(another.Create(static_cast<NX_SOCKET_TYPE>(-1)) == NX_ERR_SOCKET_CREATE_FAILED);
    EXPECT_FALSE(another.IsValid());

    // A handle outlives another Create with an unknown type.
    static nxSocket& owner =
        *new nxSocket; // never destroyed; keeps the replaced buffer in sight of leak checkers
    ASSERT_TRUE(socket.Create().IsOK());
    owner = socket;
    EXPECT_TRUE(socket.Create(static_cast<NX_SOCKET_TYPE>(2)).IsOK());
    EXPECT_EQ(socket.GetSocket(), owner.GetSocket());
}

TEST_F(nxSocketTest, CreateLeavesTheHandleOpenWhenTheOptionFails)
{
    nxSocket socket;
    optionToRefuse = SO_REUSEADDR;
    EXPECT_TRUE(socket.Create() == NX_ERR_SOCKET_CREATE_FAILED);
    optionToRefuse = -1;
    EXPECT_TRUE(socket.IsValid());
    EXPECT_TRUE(IsOpen(DescriptorOf(socket)));
    for (NX_SOCKET_TYPE const type : {NX_SOCKET_TYPE_TCP, NX_SOCKET_TYPE_UDP})
    {
        nxSocket reusing;
        ASSERT_TRUE(reusing.Create(type).IsOK());
        EXPECT_EQ(OptionOf(reusing, SO_REUSEADDR), 1);
    }
}

// Sizes, of which the system keeps as much again for its own books.

TEST_F(nxSocketTest, SizesComeFromTheEnvironment)
{
    using Row = std::tuple<char const*, char const*, int>;
    for (auto const& [text, logged, size] :
         {Row{"65536", "65536", 65536}, Row{"", "1048576", 1048576}, Row{"abc", "1048576", 1048576},
          Row{"4295032832", "4295032832", 65536}}) // 2^32 + 65536: the line shows what was asked for
    {
        SCOPED_TRACE(text);
        nxCmdLineArgs::GetInstance().SetEnvValue(KVT_INBOUND_BUFFER_SIZE, text);
        nxCmdLineArgs::GetInstance().SetEnvValue(KVT_OUTBOUND_BUFFER_SIZE, "131072");
        Clear();
        nxSocket socket;
        ASSERT_TRUE(socket.CreateAndSetBufferSize(NX_SOCKET_TYPE_TCP).IsOK());
        EXPECT_EQ(Messages(), (std::vector<std::string>{
                                  std::string("Set socket inbound buffer size: ") + logged,
                                  "Set socket outbound buffer size: 131072",
                              }));
        EXPECT_EQ(OptionOf(socket, SO_RCVBUF), 2 * size);
        EXPECT_EQ(OptionOf(socket, SO_SNDBUF), 2 * 131072);
    }
    nxCmdLineArgs::GetInstance().SetEnvValue(KVT_INBOUND_BUFFER_SIZE, "");
    nxCmdLineArgs::GetInstance().SetEnvValue(KVT_OUTBOUND_BUFFER_SIZE, "");
}

TEST_F(nxSocketTest, ASizeThatIsRefusedIsOnlyLogged)
{
    nxSocket socket;
    optionToRefuse = SO_SNDBUF;
    EXPECT_TRUE(socket.CreateAndSetBufferSize(NX_SOCKET_TYPE_TCP).IsOK());
    optionToRefuse = -1;
    EXPECT_EQ(Messages(), (std::vector<std::string>{
                              "Set socket inbound buffer size: 1048576",
                              "Failed to set outbound buffer size. Error: (1000002) "
                              "NX_ERR_INVALID_PARAMETER - 'invalid parameter', Buffer size: 1048576"}));
    EXPECT_EQ(Levels(), (std::vector<unsigned int>{NX_INF, NX_ERR}));

    // SetBufferSize is the inbound one.
    ASSERT_TRUE(socket.SetOutboundBufferSize(16384).IsOK());
    ASSERT_TRUE(socket.SetBufferSize(32768).IsOK());
    EXPECT_EQ(OptionOf(socket, SO_RCVBUF), 2 * 32768);
    EXPECT_EQ(OptionOf(socket, SO_SNDBUF), 2 * 16384);
    EXPECT_TRUE(socket.SetSocketOptionFlag_NoDelay(true).IsOK());
    EXPECT_TRUE(socket.SetSocketOption(SOL_SOCKET, SO_SNDBUF, bytes, -1) == NX_ERR_INVALID_PARAMETER);
}

// Connections.

TEST_F(nxSocketTest, ConnectedIsARecordOfWhatWasDone)
{
    Connection connection;
    EXPECT_TRUE(connection.client.IsConnected());
    EXPECT_TRUE(connection.server.IsConnected());
    EXPECT_FALSE(connection.listener.IsConnected());
    EXPECT_TRUE(connection.client.Connect(here, PortOf(connection.listener)) == NX_ERR_SOCKET_CONNECT_FAILED);
    EXPECT_TRUE(connection.client.Connect("localhost", 1) == NX_ERR_SOCKET_INVALID_HOST_ADDRESS);
    EXPECT_TRUE(connection.client.IsConnected()); // a failure to connect anew is no end
    EXPECT_TRUE(connection.server.Connect(here, 9) == NX_ERR_NOT_INITIALISED);
    EXPECT_TRUE(connection.server.Bind(0) == NX_ERR_NOT_INITIALISED);
    EXPECT_TRUE(connection.client.Close().IsOK());
    EXPECT_FALSE(connection.client.IsConnected());
    EXPECT_TRUE(connection.client.IsValid());
    EXPECT_TRUE(connection.server.Receive(bytes, sizeof bytes, received) == NX_ERR_SOCKET_RECEIVE_FAILED);
    EXPECT_EQ(received, 0);
    EXPECT_FALSE(connection.server.IsConnected());
    EXPECT_EQ(Messages().back(), "Bytes received on socket: 0. This indicates that the peer has performed an "
                                 "orderly shutdown");
}

TEST_F(nxSocketTest, AFailedAcceptIsASuccessWithoutAHandle)
{
    nxSocket notListening;
    ASSERT_TRUE(notListening.Create().IsOK());
    nxSocket accepted;
    EXPECT_TRUE(notListening.Accept(accepted).IsOK());
    EXPECT_FALSE(accepted.IsValid());
    EXPECT_TRUE(accepted.IsConnected());
    EXPECT_TRUE(Messages().empty());

    nxSocket bound; // keeps a port at which nobody listens
    ASSERT_TRUE(bound.Create().IsOK());
    ASSERT_TRUE(bound.Bind(here, 0).IsOK());
    nxSocket socket;
    ASSERT_TRUE(socket.Create().IsOK());
    EXPECT_TRUE(socket.Connect(here, PortOf(bound)) == NX_ERR_SOCKET_CONNECT_FAILED);
    EXPECT_EQ(CountOfLines("Function: connect. Error: " + std::to_string(ECONNREFUSED)), 1u);
}

TEST_F(nxSocketTest, NegativeLengthsTouchNoMemory)
{
    Connection connection;
    EXPECT_TRUE(connection.client.Send(bytes, -1) == NX_ERR_SOCKET_SEND_FAILED);
    EXPECT_TRUE(connection.client.SendTo(bytes, ~0ull) == NX_ERR_SOCKET_SEND_FAILED);
    EXPECT_TRUE(connection.client.Send("x").IsOK());
    EXPECT_TRUE(connection.server.Receive(bytes, -1, received) == NX_ERR_SOCKET_RECEIVE_FAILED);
    EXPECT_EQ(received, -1);
    EXPECT_TRUE(connection.server.ReceiveFrom(bytes, -1, received) == NX_ERR_SOCKET_RECEIVE_FAILED);
    EXPECT_TRUE(connection.server.ReceiveMsgWithDestinationAddress(bytes, -1, received, destination) ==
                NX_ERR_SOCKET_RECEIVE_FAILED);
    EXPECT_EQ(received, 0);
    EXPECT_EQ(CountOfLines("Error: " + std::to_string(EINVAL)), 3u);
    EXPECT_TRUE(connection.server.Receive(bytes, sizeof bytes, received).IsOK());
    EXPECT_EQ(received, 1);
}

// Descriptors.

TEST_F(nxSocketTest, ASecondCloseFailsAndLogs)
{
    {
        nxSocket socket;
        ASSERT_TRUE(socket.Create().IsOK());
        ASSERT_TRUE(socket.Close().IsOK());
        int const stranger = open("/dev/null", O_RDONLY | O_CLOEXEC);
        ASSERT_EQ(stranger, DescriptorOf(socket)); // the lowest free number is the one just closed
        EXPECT_TRUE(socket.Close() == NX_ERR_SOCKET_CLOSE_FAILED);
        EXPECT_TRUE(IsOpen(stranger));
        close(stranger);
        nxSocket successor;
        ASSERT_TRUE(successor.Create().IsOK());
        ASSERT_EQ(DescriptorOf(successor), stranger);
        EXPECT_NE(successor.GetSocket(), socket.GetSocket());
        EXPECT_TRUE(socket.Close() == NX_ERR_SOCKET_CLOSE_FAILED);
        EXPECT_TRUE(IsOpen(stranger));
    }
    EXPECT_EQ(CountOfLines("Function: close. Error: 9"), 3u); // the destructor is the third
}

TEST_F(nxSocketTest, CloseNeverHitsAnotherThreadsDescriptor)
{
    std::atomic<bool> stop = false;
    std::atomic<int> lost = 0;
    RunTogether(2,
                [&](int thread)
                {
                    for (int round = 0; thread == 0 && round < 2000; ++round)
                    {
                        nxSocket socket;
                        EXPECT_TRUE(socket.Create().IsOK() && socket.Close().IsOK());
                        EXPECT_TRUE(socket.Close() == NX_ERR_SOCKET_CLOSE_FAILED);
                    }
                    stop = stop || thread == 0;
                    while (!stop)
                    {
                        int const descriptor = open("/dev/null", O_RDONLY | O_CLOEXEC);
                        std::this_thread::yield();
                        lost += close(descriptor) == 0 ? 0 : 1;
                    }
                });
    EXPECT_EQ(lost, 0);
}

TEST_F(nxSocketTest, OneOfManyThreadsCloses)
{
    for (int round = 0; round < 200; ++round)
    {
        nxSocket socket;
        ASSERT_TRUE(socket.Create().IsOK());
        std::atomic<int> closed = 0;
        RunTogether(4,
                    [&](int)
                    {
                        nxSocket copy;
                        copy = socket;
                        closed += copy.Close().IsOK() ? 1 : 0;
                        static nxSocket const none;
                        copy = none; // the original alone is destroyed with the handle
                    });
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
        EXPECT_FALSE(IsOpen(STDIN_FILENO));
    }
    dup2(saved, STDIN_FILENO);
    close(saved);
}

// Lets the process open no descriptor beyond those that it has.
class NoMoreDescriptors
{
public:
    NoMoreDescriptors()
    {
        getrlimit(RLIMIT_NOFILE, &_saved);
        int const next = dup(STDOUT_FILENO);
        close(next);
        rlimit const none = {static_cast<rlim_t>(next), _saved.rlim_max};
        setrlimit(RLIMIT_NOFILE, &none);
    }
    ~NoMoreDescriptors()
    {
        setrlimit(RLIMIT_NOFILE, &_saved);
    }

private:
    rlimit _saved = {};
};

TEST_F(nxSocketTest, AtTheLimitOfDescriptors)
{
    nxSocket listener;
    Listen(listener);
    nxSocket client;
    ASSERT_TRUE(client.Create().IsOK());
    ASSERT_TRUE(client.Connect(here, PortOf(listener)).IsOK());
    nxSocket refused;
    nxSocket accepted;
    {
        NoMoreDescriptors const limit;
        EXPECT_TRUE(refused.Create() == NX_ERR_SOCKET_CREATE_FAILED);
        EXPECT_TRUE(listener.Accept(accepted).IsOK());
    }
    EXPECT_FALSE(refused.IsValid());
    EXPECT_FALSE(accepted.IsValid());
    EXPECT_TRUE(listener.Accept(accepted).IsOK()); // the connection was not lost
    EXPECT_TRUE(accepted.IsValid());
}

// 1200 open descriptors, and with them sockets whose numbers the system's own select() can't take.
TEST_F(nxSocketTest, DescriptorsMayHaveAnyNumber)
{
    constexpr int many = 1200;
    rlimit limit = {};
    getrlimit(RLIMIT_NOFILE, &limit);
    if (limit.rlim_max < 2 * many)
        GTEST_SKIP() << "the process may open only " << limit.rlim_max << " descriptors";
    rlimit const raised = {limit.rlim_max, limit.rlim_max};
    setrlimit(RLIMIT_NOFILE, &raised);
    std::vector<int> others;
    while (others.size() < many)
        others.push_back(dup(STDOUT_FILENO));
    {
        Connection connection;
        EXPECT_GT(DescriptorOf(connection.server), FD_SETSIZE);
        ASSERT_TRUE(connection.server.Select(0, count).IsOK());
        EXPECT_EQ(count, 0u);
        ASSERT_TRUE(connection.client.Send("x").IsOK());
        ASSERT_TRUE(connection.server.Select(1000000, count).IsOK());
        EXPECT_EQ(count, 1u);
        std::vector<bool> readable;
        ASSERT_TRUE(nxSocket::Select({&connection.client, &connection.server}, 0, count, readable).IsOK());
        EXPECT_EQ(readable, (std::vector<bool>{false, true}));
        EXPECT_TRUE(connection.server.Receive(bytes, sizeof bytes, received).IsOK());
        ASSERT_TRUE(connection.client.Close().IsOK());
        EXPECT_TRUE(connection.client.Close() == NX_ERR_SOCKET_CLOSE_FAILED);
    }
    for (int const descriptor : others)
        close(descriptor);
    setrlimit(RLIMIT_NOFILE, &limit);
}

// Waiting.

TEST_F(nxSocketTest, WaitsAreAtMostASecond)
{
    nxSocket socket;
    ASSERT_TRUE(socket.Create(NX_SOCKET_TYPE_UDP).IsOK());
    count = 7;
    std::vector<bool> readable{true};
    EXPECT_TRUE(socket.Select(1000001) == NX_ERR_INVALID_PARAMETER);
    EXPECT_TRUE(socket.Select(1000001, count) == NX_ERR_INVALID_PARAMETER);
    EXPECT_TRUE(nxSocket::Select({&socket}, 1000001, count, readable) == NX_ERR_INVALID_PARAMETER);
    EXPECT_EQ(count, 7u);
    EXPECT_EQ(readable, std::vector<bool>{true});
    auto const begin = std::chrono::steady_clock::now();
    EXPECT_TRUE(socket.Select(1000000, count).IsOK());
    EXPECT_EQ(count, 0u);
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::seconds(1));
}

TEST_F(nxSocketTest, AWaitForADeadHandleFailsAtOnce)
{
    Connection connection;
    nxSocket fresh;
    std::vector<bool> readable{true, true, true};
    ASSERT_TRUE(connection.client.Send("x").IsOK());
    ASSERT_TRUE(connection.server.SelectWithoutTimeout().IsOK()); // one of the set could be read
    count = 7;
    EXPECT_TRUE(nxSocket::Select({&connection.server, &fresh}, 0, count, readable) ==
                NX_ERR_SOCKET_SELECT_FAILED);
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(readable.size(), 3u);
    ASSERT_TRUE(connection.client.Close().IsOK());
    EXPECT_TRUE(nxSocket::Select({&connection.client, &connection.server}, 1000000, count, readable) ==
                NX_ERR_SOCKET_SELECT_FAILED);
    EXPECT_EQ(readable.size(), 3u);
    count = 7;
    EXPECT_TRUE(connection.client.Select(1000000, count).IsOK());
    EXPECT_EQ(count, 0u);
}

TEST_F(nxSocketTest, ASetHoldsSixtyFourDifferentHandles)
{
    constexpr std::size_t capacity = 64;
    std::vector<std::unique_ptr<nxSocket>> sockets(capacity + 1);
    std::vector<nxSocket*> set;
    nxSocket sender;
    ASSERT_TRUE(sender.Create(NX_SOCKET_TYPE_UDP).IsOK());
    for (auto& socket : sockets)
    {
        socket = std::make_unique<nxSocket>();
        ASSERT_TRUE(socket->Create(NX_SOCKET_TYPE_UDP).IsOK());
        // Without the option no two of them can be given one port.
        ASSERT_TRUE(socket->SetSocketOptionFlag(SOL_SOCKET, SO_REUSEADDR, false).IsOK());
        ASSERT_TRUE(socket->Bind(here, 0).IsOK());
        auto const port = static_cast<unsigned int>(PortOf(*socket));
        ASSERT_TRUE(sender.SendToDestination("x", 1, here, port).IsOK());
        set.push_back(socket.get());
        set.push_back(sockets.front().get()); // counts once, wherever it stands
    }
    for (auto& socket : sockets)
        ASSERT_TRUE(socket->SelectWithoutTimeout().IsOK());
    std::vector<bool> readable;
    ASSERT_TRUE(nxSocket::Select(set, 0, count, readable).IsOK());
    EXPECT_EQ(count, capacity);
    std::vector<bool> expected(set.size(), true);
    expected[2 * capacity] = false; // the sixty-fifth; the first one's copy behind it is looked at
    EXPECT_EQ(readable, expected);
}

TEST_F(nxSocketTest, AnEmptySetIsAPause)
{
    std::vector<bool> readable{true};
    count = 7;
    auto const begin = std::chrono::steady_clock::now();
    EXPECT_TRUE(nxSocket::Select({}, 20000, count, readable).IsOK());
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(20));
    EXPECT_EQ(count, 0u);
    EXPECT_TRUE(readable.empty());
}

// Addresses.

TEST(nxSocketAddress, IsReadAsWritten)
{
    constexpr std::pair<char const*, unsigned int> good[] = {
        {"1.2.3.4", 0x01020304},          {"001.002.003.004", 0x01020304},
        {"1.2.3.4.", 0x01020304},         // a separator at the end adds no field
        {"010.0.0.0255", 0x0A0000FF},     // not octal
        {"4294967297.2.3.4", 0x01020304}, // 2^32 + 1
        {"4294967551.2.3.4", 0xFF020304}, // 2^32 + 255
        {"255.255.255.255", 0xFFFFFFFF},  {"0.0.0.0", 0}};
    for (auto const& [text, expected] : good)
    {
        unsigned int address = 42;
        EXPECT_TRUE(nxSocket::ParseAddress(text, address).IsOK()) << text;
        EXPECT_EQ(address, expected) << text;
    }
    for (char const* const text : {"", "1.2.3", "1.2.3.4.5", "1.2.3.4..", "1.2.3.256", "4294967552.2.3.4",
                                   "1..3.4", "1.2.3.-4", "1.2.3.+4", "1.2.3. 4", "1.2.3.4/", "a.2.3.4"})
    {
        unsigned int address = 42;
        EXPECT_TRUE(nxSocket::ParseAddress(text, address) == NX_ERR_INVALID_PARAMETER) << text;
        EXPECT_EQ(address, 42u) << text;
    }
}

TEST(nxSocketAddress, MaySplitAtAMask)
{
    // The text up to the slash, what stands behind it, and the address, mask, network and host.
    constexpr unsigned int null = 0xFFFFFFFF;
    using Row = std::tuple<std::string, std::string, unsigned int, unsigned int, unsigned int, unsigned int>;
    Row const good[] = {{"192.168.1.9", "/24", 0xC0A80109, 0xFFFFFF00, 0xC0A80100, 9},
                        {"192.168.1.9", "", 0xC0A80109, null, null, null},
                        {"192.168.1.9", "/", 0xC0A80109, null, null, null},
                        {"192.168.1.9", "/0", 0xC0A80109, 0, 0, 0xC0A80109},
                        {"10.0.0.1.", "/4294967304", 0x0A000001, 0xFF000000, 0x0A000000, 1}, // 2^32 + 8
                        {"10.0.0.1", "/4294967296", 0x0A000001, 0, 0, 0x0A000001},           // 2^32
                        {"10.0.0.1", "/31", 0x0A000001, 0xFFFFFFFE, 0x0A000000, 1}, // which is no change
                        {"255.255.255.255", "/0", 0xFFFFFFFF, 0, 0, null}};
    auto const expect = [](std::string const& text, bool isGood, Row const& row)
    {
        SCOPED_TRACE(text);
        std::string addressText = "before";
        unsigned int address = 42;
        nxVolume mask = 1;
        nxVolume network = 2;
        nxVolume host = 3;
        nxErrorEnum const result =
            nxSocket::ParseAddressAndMask(text, addressText, address, mask, network, host);
        EXPECT_TRUE(result == (isGood ? success : NX_ERR_INVALID_PARAMETER));
        EXPECT_EQ(
            Row(addressText, std::get<1>(row), address, mask.GetValue(), network.GetValue(), host.GetValue()),
            row);
    };
    for (Row const& row : good)
        expect(std::get<0>(row) + std::get<1>(row), true, row);
    for (char const* const text :
         {"192.168.1.9/32", "192.168.1.9/-1", "192.168.1.9/24/8", "192.168.1/24", "/24", ""})
        expect(text, false, {"", "", 0, null, null, null});
}
} // namespace
