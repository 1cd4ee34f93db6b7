// Bytes and datagrams between sockets of this host: that all arrive, what peers do to each other, and signals.
#include "tests/network/nxSocketTesting.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <thread>

#include <sched.h>
#include <sys/ioctl.h>
#include <sys/time.h>

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
    while (arrived.size() < size && socket.Receive(buffer, sizeof buffer, received).IsOK())
        arrived += Received();
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
    ASSERT_TRUE(datagrams.Create(NX_SOCKET_TYPE_UDP).IsOK());
    ASSERT_TRUE(datagrams.Bind(here, 0).IsOK());
    ASSERT_TRUE(datagrams.Connect(here, PortOf(datagrams)).IsOK());
    EXPECT_TRUE(datagrams.GatherSend(pieces.data(), many, count) == NX_ERR_SOCKET_SEND_FAILED);
    EXPECT_EQ(count, 0u);
    ASSERT_TRUE(datagrams.GatherSend(pieces.data(), 1024, count).IsOK());
    ASSERT_TRUE(datagrams.Receive(buffer, sizeof buffer, received).IsOK());
    EXPECT_EQ(received, 1023); // one datagram
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
    EXPECT_TRUE(server.Receive(buffer, sizeof buffer, received) == NX_ERR_SOCKET_RECEIVE_FAILED);
    EXPECT_EQ(received, -1);
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
    EXPECT_TRUE(half.server.Receive(buffer, sizeof buffer, received) == NX_ERR_SOCKET_RECEIVE_FAILED);
    EXPECT_EQ(received, 0);
    EXPECT_TRUE(half.server.Send("still there").IsOK());
    EXPECT_TRUE(half.client.Receive(buffer, sizeof buffer, received).IsOK());
    EXPECT_EQ(Received(), "still there");
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
        EXPECT_EQ(Received(), "ask");
        // What goes elsewhere meanwhile leaves the sender's address where it is.
        ASSERT_TRUE(server.SendToDestination("aside", 5, here, port).IsOK());
        ASSERT_TRUE(server.SendTo("answer").IsOK());
        ASSERT_TRUE(client.Receive(buffer, sizeof buffer, received).IsOK());
        EXPECT_EQ(Received(), "answer");
        ASSERT_TRUE(server.Receive(buffer, sizeof buffer, received).IsOK());
        EXPECT_EQ(Received(), "aside");
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
    ASSERT_TRUE(socket.Receive(buffer, sizeof buffer, received).IsOK());
    EXPECT_EQ(received, 2);
    nxSocket lost; // a text that is no address binds the broadcast address
    ASSERT_TRUE(lost.Create(NX_SOCKET_TYPE_UDP).IsOK());
    EXPECT_TRUE(lost.Bind("rubbish", 0).IsOK());
    EXPECT_EQ(AddressOf(lost).sin_addr.s_addr, INADDR_BROADCAST);
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
    ASSERT_TRUE(socket.Receive(buffer, sizeof buffer, received).IsOK());

    // An empty datagram is taken for a peer's end; only one of the three receives does so without a line.
    for (int round = 0; round < 3; ++round)
        ASSERT_TRUE(socket.SendToDestination("", 0, "127.0.0.3", port).IsOK());
    EXPECT_TRUE(socket.Receive(buffer, sizeof buffer, received) == NX_ERR_SOCKET_RECEIVE_FAILED);
    EXPECT_TRUE(socket.ReceiveFrom(buffer, sizeof buffer, received) == NX_ERR_SOCKET_RECEIVE_FAILED);
    EXPECT_EQ(CountOfLines("Bytes received on socket: 0"), 2);
    EXPECT_TRUE(receive(sizeof buffer) == NX_ERR_SOCKET_RECEIVE_FAILED);
    EXPECT_EQ(destination, "127.0.0.3");
    EXPECT_EQ(Messages().size(), 2u);
}

// Multicast, in a network of this thread's own.

constexpr char const* groupA = "239.1.1.1";
constexpr char const* groupB = "239.1.1.2";

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
    EXPECT_EQ(Received(), text);
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
    EXPECT_TRUE(both.MulticastJoin(groupA) == NX_ERR_SOCKET_CONNECT_FAILED); // there is no route
    EXPECT_TRUE(IsNonBlocking(both));
    ASSERT_EQ(std::system("ip route add 224.0.0.0/4 dev lo"), 0);
    ASSERT_TRUE(both.MulticastJoin(groupA).IsOK());
    ASSERT_TRUE(both.MulticastJoin(groupB).IsOK());
    ASSERT_TRUE(onlyA.MulticastJoin(groupA).IsOK());
    EXPECT_TRUE(both.MulticastJoin(groupA) == NX_ERR_SOCKET_CONNECT_FAILED); // joined already

    nxSocket sender;
    ASSERT_TRUE(sender.Create(NX_SOCKET_TYPE_UDP).IsOK());
    auto const send = [&](std::string const& text, char const* group)
    {
        auto const target = static_cast<unsigned int>(port);
        ASSERT_TRUE(sender.SendToDestination(text.data(), text.size(), group, target).IsOK());
    };
    send("for B", groupB);
    ExpectOnly(both, "for B", groupB);
    send("for A", groupA);
    ExpectOnly(both, "for A", groupA);
    ExpectOnly(onlyA, "for A", groupA); // what another socket joined does not arrive here

    ASSERT_TRUE(both.MulticastLeave(groupB).IsOK());
    EXPECT_TRUE(both.MulticastLeave(groupB) == NX_ERR_SOCKET_CONNECT_FAILED);
    EXPECT_TRUE(IsNonBlocking(both)); // leaving does not undo it
    send("for B", groupB);
    send("for A", groupA);
    ExpectOnly(both, "for A", groupA);
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
} // namespace
