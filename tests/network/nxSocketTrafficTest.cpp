// Bytes and datagrams between sockets of this host: that all arrive, what peers do to each other, signals, and that each
// transfer is one call of the system.
#include "tests/network/nxSocketTesting.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <thread>

#include <sched.h>
#include <sys/ioctl.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
using namespace std::chrono_literals;

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

bool IsNonBlocking(nxSocket const& socket)
{
    return (fcntl(DescriptorOf(socket), F_GETFL) & O_NONBLOCK) != 0;
}

/// A thousand signals a second, without SA_RESTART, of which this thread gets most.
class SignalStorm
{
public:
    SignalStorm()
    {
        struct sigaction action = {};
        action.sa_handler = [](int) {};
        sigaction(SIGALRM, &action, &_saved);
        itimerval const everyMillisecond = {{0, 1000}, {0, 1000}};
        setitimer(ITIMER_REAL, &everyMillisecond, nullptr);
    }
    ~SignalStorm()
    {
        itimerval const never = {};
        setitimer(ITIMER_REAL, &never, nullptr);
        (void)signal(SIGALRM, SIG_IGN); // also takes one back that is on its way
        sigaction(SIGALRM, &_saved, nullptr);
    }

private:
    struct sigaction _saved = {};
};

// Interruptions of the other calls are among the figures in tests/faults/.
TEST_F(nxSocketTest, SignalsShortenNoWaitAndEndNoConnecting)
{
    SignalStorm storm;
    Connection connection;
    nxSocket& server = connection.server;
    auto const begin = std::chrono::steady_clock::now();
    EXPECT_TRUE(server.Select(1000000, count).IsOK());
    EXPECT_EQ(count, 0u);
    auto const waited = std::chrono::steady_clock::now() - begin;
    EXPECT_GE(waited, 1s); // the whole of it, and not from the start again after each signal
    EXPECT_LT(waited, 1900ms);

    // Six connections fill a listener's queue, and the seventh has to wait until one is accepted.
    nxSocket clients[7];
    auto const connect = [&](nxSocket& client) { return client.Connect(here, PortOf(connection.listener)); };
    for (nxSocket& client : clients)
    {
        ASSERT_TRUE(client.Create().IsOK());
        ASSERT_TRUE(&client == &clients[6] || connect(client).IsOK());
    }
    nxSocket accepted;
    std::thread other(
        [&]
        {
            std::this_thread::sleep_for(30ms);
            EXPECT_TRUE(connection.listener.Accept(accepted).IsOK());
            std::this_thread::sleep_for(30ms);
            EXPECT_TRUE(connection.client.Send("x").IsOK());
        });
    EXPECT_TRUE(connect(clients[6]).IsOK());
    EXPECT_TRUE(server.ReceiveMsgWithDestinationAddress(buffer, 1, received, destination).IsOK());
    other.join();
    EXPECT_TRUE(clients[6].IsConnected());
    EXPECT_TRUE(clients[6].Send("x").IsOK());
}

// Streams.

TEST_F(nxSocketTest, AGatherThatDoesNotWaitTellsHowManyBytesWent)
{
    std::string const data = Bytes(64u << 20); // more than there is room for
    Connection connection;
    int nonBlocking = 1;
    ASSERT_EQ(ioctl(DescriptorOf(connection.client), FIONBIO, &nonBlocking), 0);
    std::size_t sent = 0;
    _WSABUF piece;
    do
    {
        nxSocket::SetGatherSendArrayEntry(&piece, 0, data.data() + sent,
                                          static_cast<unsigned int>(data.size() - sent));
        sent += count = 0;
    } while (connection.client.GatherSend(&piece, 1, count).IsOK() && (sent += count) < data.size());
    EXPECT_EQ(count, 0u);
    EXPECT_LT(sent, data.size());
    EXPECT_TRUE(ReceiveAll(connection.server, sent) == data.substr(0, sent));
}

TEST_F(nxSocketTest, GatherJoinsMoreBuffersThanTheSystemTakes)
{
    constexpr unsigned int many = 2500; // the system takes 1024
    std::string const text = Bytes(many);
    std::vector<_WSABUF> pieces(many);
    for (unsigned int index = 0; index < many; ++index)
        nxSocket::SetGatherSendArrayEntry(pieces.data(), index, &text[index], 1);
    pieces[0].len = 0;
    Connection connection;
    ASSERT_TRUE(connection.client.GatherSend(pieces.data(), many, count).IsOK());
    EXPECT_EQ(count, many - 1);
    EXPECT_EQ(ReceiveAll(connection.server, many - 1), text.substr(1));

    nxSocket datagrams;
    ASSERT_TRUE(datagrams.Connect(here, static_cast<int>(OpenForDatagrams(datagrams))).IsOK());
    EXPECT_TRUE(datagrams.GatherSend(pieces.data(), many, count) == NX_ERR_SOCKET_SEND_FAILED);
    EXPECT_EQ(count, 0u);
    ASSERT_TRUE(datagrams.GatherSend(pieces.data(), 1024, count).IsOK());
    EXPECT_EQ(Receive(datagrams), text.substr(1, 1023)); // one datagram
}

TEST_F(nxSocketTest, APeerThatResetsOrHalfClosesRaisesNoSignal)
{
    Connection connection;
    nxSocket& server = connection.server;
    linger const abort = {1, 0};
    ASSERT_TRUE(connection.client.SetSocketOption(SOL_SOCKET, SO_LINGER, &abort, sizeof abort).IsOK());
    ASSERT_TRUE(connection.client.Close().IsOK());
    ASSERT_TRUE(server.Select(1000000, count).IsOK());
    EXPECT_EQ(count, 1u); // readable: there is an error to be had
    EXPECT_EQ(Receive(server), "(-1)");
    EXPECT_FALSE(server.IsConnected());
    EXPECT_EQ(Messages().back(),
              "Error on socket call. Function: recv. Error: " + std::to_string(ECONNRESET) +
                  ", Socket descriptor: " + std::to_string(server.GetSocket()));
    // Each of these would end the process by SIGPIPE.
    _WSABUF piece = {1, buffer};
    count = 7;
    EXPECT_TRUE(server.Send("x") == NX_ERR_SOCKET_SEND_FAILED);
    EXPECT_TRUE(server.GatherSend(&piece, 1, count) == NX_ERR_SOCKET_SEND_FAILED);
    EXPECT_EQ(count, 0u);
    EXPECT_TRUE(server.SendTo("x") == NX_ERR_SOCKET_SEND_FAILED);
    EXPECT_TRUE(server.SendToDestination("x", 1, here, 9) == NX_ERR_SOCKET_SEND_FAILED);
    EXPECT_EQ(CountOfLines("Function: WSASend. Error: " + std::to_string(EPIPE)), 1);

    Connection half; // a peer that closes one way still listens
    ASSERT_EQ(shutdown(DescriptorOf(half.client), SHUT_WR), 0);
    EXPECT_EQ(Receive(half.server), "(0)");
    EXPECT_TRUE(half.server.Send("still there").IsOK());
    EXPECT_EQ(Receive(half.client), "still there");
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
        EXPECT_EQ(std::string(buffer, 3), "ask");
        // What goes elsewhere meanwhile leaves the sender's address where it is.
        ASSERT_TRUE(server.SendToDestination("aside", 5, here, port).IsOK());
        ASSERT_TRUE(server.SendTo("answer").IsOK());
        EXPECT_EQ(Receive(client), "answer");
        EXPECT_EQ(Receive(server), "aside");
    }
}

TEST_F(nxSocketTest, SendToAfterBindReachesItself)
{
    nxSocket socket;
    nxSocket other; // tells a free port
    auto const port = static_cast<int>(OpenForDatagrams(other));
    ASSERT_TRUE(other.Close().IsOK());
    ASSERT_TRUE(socket.Create(NX_SOCKET_TYPE_UDP).IsOK());
    ASSERT_TRUE(socket.Bind(here, port).IsOK());
    ASSERT_TRUE(socket.SendTo("me").IsOK());
    EXPECT_EQ(Receive(socket), "me");
    nxSocket lost; // a text that is no address binds the broadcast address
    ASSERT_TRUE(lost.Create(NX_SOCKET_TYPE_UDP).IsOK());
    EXPECT_TRUE(lost.Bind("rubbish", 0).IsOK());
    sockaddr_in address = {};
    socklen_t length = sizeof address;
    (void)getsockname(DescriptorOf(lost), reinterpret_cast<sockaddr*>(&address), &length);
    EXPECT_EQ(address.sin_addr.s_addr, INADDR_BROADCAST);
}

TEST_F(nxSocketTest, ADatagramsDestinationIsTold)
{
    nxSocket socket;
    unsigned int const port = OpenForDatagrams(socket);
    auto const receive = [&](int size)
    { return socket.ReceiveMsgWithDestinationAddress(buffer, size, received, destination); };
    ASSERT_TRUE(socket.SendToDestination("abc", 3, here, port).IsOK());
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
    EXPECT_TRUE(socket.ReceiveFrom(buffer, sizeof buffer, received) == NX_ERR_SOCKET_RECEIVE_FAILED);
    EXPECT_EQ(CountOfLines("Bytes received on socket: 0"), 2);
    EXPECT_TRUE(receive(sizeof buffer) == NX_ERR_SOCKET_RECEIVE_FAILED);
    EXPECT_EQ(destination, "127.0.0.3");
    EXPECT_EQ(Messages().size(), 2u);
}

// Multicast, in a network of this thread's own.

constexpr char const* groupA = "239.1.1.1";
constexpr char const* groupB = "239.1.1.2";

/// Receives one datagram of the group, and then there is no other.
void ExpectOnly(nxSocket& socket, std::string const& group)
{
    ASSERT_TRUE(socket.SelectWithoutTimeout().IsOK());
    ASSERT_TRUE(socket.ReceiveMsgWithDestinationAddress(buffer, sizeof buffer, received, destination).IsOK());
    EXPECT_EQ(std::string(buffer, static_cast<std::size_t>(received)), group);
    EXPECT_EQ(destination, group);
    EXPECT_EQ(Receive(socket), "(-1)");
}

void TellGroupsApart()
{
    nxSocket both;
    nxSocket onlyA;
    unsigned int const port = OpenForDatagrams(both);
    ASSERT_TRUE(onlyA.Create(NX_SOCKET_TYPE_UDP).IsOK() && onlyA.Bind(static_cast<int>(port)).IsOK());
    for (nxSocket* receiver : {&both, &onlyA})
        ASSERT_TRUE(receiver->SetReceiveMsgWithDestinationAddressSockOpts(true).IsOK());
    EXPECT_TRUE(both.MulticastJoin(groupA) == NX_ERR_SOCKET_CONNECT_FAILED); // there is no route
    EXPECT_TRUE(IsNonBlocking(both));
    ASSERT_EQ(std::system("ip route add 224.0.0.0/4 dev lo"), 0);
    ASSERT_TRUE(both.MulticastJoin(groupA).IsOK());
    ASSERT_TRUE(both.MulticastJoin(groupB).IsOK());
    ASSERT_TRUE(onlyA.MulticastJoin(groupA).IsOK());
    EXPECT_TRUE(both.MulticastJoin(groupA) == NX_ERR_SOCKET_CONNECT_FAILED); // joined already

    nxSocket sender;
    ASSERT_TRUE(sender.Create(NX_SOCKET_TYPE_UDP).IsOK());
    auto const send = [&](std::string const& group)
    { EXPECT_TRUE(sender.SendToDestination(group.data(), group.size(), group, port).IsOK()); };
    send(groupB);
    ExpectOnly(both, groupB);
    send(groupA);
    ExpectOnly(both, groupA);
    ExpectOnly(onlyA, groupA); // what another socket joined does not arrive here

    ASSERT_TRUE(both.MulticastLeave(groupB).IsOK());
    EXPECT_TRUE(both.MulticastLeave(groupB) == NX_ERR_SOCKET_CONNECT_FAILED);
    EXPECT_TRUE(IsNonBlocking(both)); // leaving does not undo it
    send(groupB);
    send(groupA);
    ExpectOnly(both, groupA);
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
    EXPECT_EQ(CountOfLines("Function: recv. Error: " + std::to_string(EAGAIN)), 4);
}

// Costs.

TEST_F(nxSocketTest, EachTransferIsOneCall)
{
    pid_t const child = fork();
    if (child == 0)
    {
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
            _exit(77);
        Connection connection;
        _WSABUF pieces[] = {{2, buffer}, {1, buffer}};
        std::string const text = "abc";
        raise(SIGSTOP);
        syscall(SYS_getppid); // which nothing else calls
        bool isGood = connection.client.Send(text).IsOK();
        isGood &= connection.server.Receive(buffer, sizeof buffer, received).IsOK();
        isGood &= connection.client.GatherSend(pieces, 2, count).IsOK();
        isGood &= connection.server.ReceiveFrom(buffer, sizeof buffer, received).IsOK();
        isGood &= connection.client.SendTo(text).IsOK();
        isGood &= connection.server.ReceiveMsgWithDestinationAddress(buffer, 9, received, destination).IsOK();
        isGood &= connection.client.SendToDestination("a", 1, here, 9).IsOK();
        syscall(SYS_getppid);
        _exit(isGood ? 0 : 1);
    }
    std::vector<unsigned long long> calls;
    int status = 0;
    while (waitpid(child, &status, 0) == child && WIFSTOPPED(status))
    {
        __ptrace_syscall_info info = {};
        if (ptrace(PTRACE_GET_SYSCALL_INFO, child, sizeof info, &info) > 0 &&
            info.op == PTRACE_SYSCALL_INFO_ENTRY)
            calls.push_back(info.entry.nr);
        ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD);
        ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
    }
    if (WIFEXITED(status) && WEXITSTATUS(status) == 77)
        GTEST_SKIP() << "nobody may trace here";
    ASSERT_EQ(status, 0);
    auto const from = std::find(calls.begin(), calls.end(), SYS_getppid);
    calls.erase(std::find(from + 1, calls.end(), SYS_getppid), calls.end());
    calls.erase(calls.begin(), from + 1);
    EXPECT_EQ(calls, (std::vector<unsigned long long>{SYS_sendto, SYS_recvfrom, SYS_sendmsg, SYS_recvfrom,
                                                      SYS_sendto, SYS_recvmsg, SYS_sendto}));
}
} // namespace
