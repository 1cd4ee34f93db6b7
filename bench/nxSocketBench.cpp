// What nxSocket costs above the system's own calls: one send and one receive on one thread, and messages to and fro
// between two threads, over TCP and UDP of this host; beside Boost.Asio where it is present.
//
// Contestants take turns in small batches within one run, so that whatever slows the machine down meets all of them.
// Counters are medians over the rounds: nanoseconds of each contestant, and by how much it is above the bare calls.
#include "core/network/nxSocket.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#ifdef NX_BENCH_BOOST
#include <boost/asio/buffer.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ip/udp.hpp>
#endif

namespace
{
constexpr int messageSize = 64;
constexpr char const* here = "127.0.0.1";
char message[messageSize];

void Check(bool isGood)
{
    if (!isGood)
        std::abort();
}

int PortOf(int descriptor)
{
    sockaddr_in address = {};
    socklen_t length = sizeof address;
    Check(getsockname(descriptor, reinterpret_cast<sockaddr*>(&address), &length) == 0);
    return ntohs(address.sin_port);
}

// Contestants.

struct Contestant
{
    std::string name;
    std::function<void()> run; // one operation
};

double Median(std::vector<double> values)
{
    auto const middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

double NanosecondsOf(Contestant const& contestant, int operations)
{
    auto const begin = std::chrono::steady_clock::now();
    for (int operation = 0; operation < operations; ++operation)
        contestant.run();
    std::chrono::duration<double, std::nano> const taken = std::chrono::steady_clock::now() - begin;
    return taken.count() / operations;
}

// The bare calls come first in the list.
void TakeTurns(benchmark::State& state, std::vector<Contestant> const& contestants, int batch)
{
    std::vector<std::vector<double>> times(contestants.size());
    std::vector<std::vector<double>> above(contestants.size());
    std::size_t first = 0;
    for (auto _ : state)
    {
        std::vector<double> round(contestants.size());
        for (std::size_t turn = 0; turn < contestants.size(); ++turn)
        {
            std::size_t const index = (first + turn) % contestants.size();
            round[index] = NanosecondsOf(contestants[index], batch);
        }
        ++first;
        for (std::size_t index = 0; index < contestants.size(); ++index)
        {
            times[index].push_back(round[index]);
            above[index].push_back((round[index] / round[0] - 1) * 100);
        }
    }
    for (std::size_t index = 0; index < contestants.size(); ++index)
    {
        state.counters[contestants[index].name + "_ns"] = Median(times[index]);
        if (index > 0)
            state.counters[contestants[index].name + "_%"] = Median(above[index]);
    }
}

// One send and one receive: a socket that is its own peer.

class UdpLoop
{
public:
    UdpLoop()
    {
        Check(socket.Create(NX_SOCKET_TYPE_UDP).IsOK());
        Check(socket.Bind(here, 0).IsOK());
        Check(socket.Connect(here, PortOf(Descriptor())).IsOK());
    }

    int Descriptor() const
    {
        return static_cast<int>(socket.GetSocket());
    }

    nxSocket socket;
};

void SendAndReceive(benchmark::State& state)
{
    constexpr int batch = 200;
    UdpLoop loop;
    int const descriptor = loop.Descriptor();
    char buffer[messageSize];
    TakeTurns(state,
              {{"bare",
                [&]
                {
                    Check(send(descriptor, message, messageSize, MSG_NOSIGNAL) == messageSize);
                    Check(recv(descriptor, buffer, messageSize, 0) == messageSize);
                }},
               {"nxSocket",
                [&]
                {
                    int received = 0;
                    Check(loop.socket.Send(message, messageSize).IsOK());
                    Check(loop.socket.Receive(buffer, messageSize, received).IsOK());
                }}},
              batch);
}
BENCHMARK(SendAndReceive)->Iterations(1000)->UseRealTime();

void GatherAndReceiveFrom(benchmark::State& state)
{
    constexpr int batch = 200;
    constexpr unsigned int pieceCount = 4;
    constexpr unsigned int pieceSize = messageSize / pieceCount;
    UdpLoop loop;
    int const descriptor = loop.Descriptor();
    char buffer[messageSize];
    _WSABUF pieces[pieceCount];
    iovec vector[pieceCount];
    for (unsigned int index = 0; index < pieceCount; ++index)
    {
        nxSocket::SetGatherSendArrayEntry(pieces, index, message + index * pieceSize, pieceSize);
        vector[index] = {message + index * pieceSize, pieceSize};
    }
    TakeTurns(state,
              {{"bare",
                [&]
                {
                    msghdr header = {};
                    header.msg_iov = vector;
                    header.msg_iovlen = pieceCount;
                    sockaddr_in sender;
                    socklen_t length = sizeof sender;
                    Check(sendmsg(descriptor, &header, MSG_NOSIGNAL) == messageSize);
                    Check(recvfrom(descriptor, buffer, messageSize, 0, reinterpret_cast<sockaddr*>(&sender),
                                   &length) == messageSize);
                }},
               {"nxSocket",
                [&]
                {
                    unsigned int sent = 0;
                    int received = 0;
                    Check(loop.socket.GatherSend(pieces, pieceCount, sent).IsOK());
                    Check(loop.socket.ReceiveFrom(buffer, messageSize, received).IsOK());
                }}},
              batch);
}
BENCHMARK(GatherAndReceiveFrom)->Iterations(1000)->UseRealTime();

// To and fro: one end asks, the other, on a thread of its own, answers until it gets an empty text.

struct Ends
{
    nxSocket asking;
    nxSocket answering;
};

void ConnectTcp(Ends& ends)
{
    nxSocket listener;
    Check(listener.Create().IsOK() && listener.Bind(here, 0).IsOK() && listener.Listen().IsOK());
    Check(ends.asking.Create().IsOK());
    Check(ends.asking.Connect(here, PortOf(static_cast<int>(listener.GetSocket()))).IsOK());
    Check(listener.Accept(ends.answering).IsOK() && ends.answering.IsValid());
    Check(ends.asking.SetSocketOptionFlag_NoDelay(true).IsOK());
    Check(ends.answering.SetSocketOptionFlag_NoDelay(true).IsOK());
}

void ConnectUdp(Ends& ends)
{
    for (nxSocket* socket : {&ends.asking, &ends.answering})
        Check(socket->Create(NX_SOCKET_TYPE_UDP).IsOK() && socket->Bind(here, 0).IsOK());
    int const askingPort = PortOf(static_cast<int>(ends.asking.GetSocket()));
    int const answeringPort = PortOf(static_cast<int>(ends.answering.GetSocket()));
    Check(ends.asking.Connect(here, answeringPort).IsOK() && ends.answering.Connect(here, askingPort).IsOK());
}

// A message that is shorter than the others ends the answers.
constexpr int lastSize = 1;

class Library
{
public:
    explicit Library(void (*connect)(Ends&))
    {
        connect(_ends);
        _thread = std::thread(
            [this]
            {
                char buffer[messageSize];
                int received = 0;
                while (_ends.answering.Receive(buffer, messageSize, received).IsOK() && received != lastSize)
                    Check(_ends.answering.Send(buffer, received).IsOK());
            });
    }

    ~Library()
    {
        Check(_ends.asking.Send(message, lastSize).IsOK());
        _thread.join();
    }

    void Ask()
    {
        char buffer[messageSize];
        int received = 0;
        Check(_ends.asking.Send(message, messageSize).IsOK());
        Check(_ends.asking.Receive(buffer, messageSize, received).IsOK());
    }

private:
    Ends _ends;
    std::thread _thread;
};

class Bare
{
public:
    explicit Bare(void (*connect)(Ends&))
    {
        connect(_ends);
        _asking = static_cast<int>(_ends.asking.GetSocket());
        _thread = std::thread(
            [answering = static_cast<int>(_ends.answering.GetSocket())]
            {
                char buffer[messageSize];
                for (ssize_t received = 0;
                     (received = recv(answering, buffer, messageSize, 0)) > 0 && received != lastSize;)
                    Check(send(answering, buffer, static_cast<std::size_t>(received), MSG_NOSIGNAL) ==
                          received);
            });
    }

    ~Bare()
    {
        Check(send(_asking, message, lastSize, MSG_NOSIGNAL) == lastSize);
        _thread.join();
    }

    void Ask()
    {
        char buffer[messageSize];
        Check(send(_asking, message, messageSize, MSG_NOSIGNAL) == messageSize);
        Check(recv(_asking, buffer, messageSize, 0) == messageSize);
    }

private:
    Ends _ends;
    int _asking = -1;
    std::thread _thread;
};

#ifdef NX_BENCH_BOOST
// The same in its synchronous operations.
template <typename Protocol>
class Asio
{
public:
    Asio()
    {
        if constexpr (std::is_same_v<Protocol, boost::asio::ip::tcp>)
        {
            boost::asio::ip::tcp::acceptor acceptor(_context, {boost::asio::ip::make_address(here), 0});
            _asking.connect(acceptor.local_endpoint());
            acceptor.accept(_answering);
            _asking.set_option(boost::asio::ip::tcp::no_delay(true));
            _answering.set_option(boost::asio::ip::tcp::no_delay(true));
        }
        else
        {
            _asking = Socket(_context, {boost::asio::ip::make_address(here), 0});
            _answering = Socket(_context, {boost::asio::ip::make_address(here), 0});
            _asking.connect(_answering.local_endpoint());
            _answering.connect(_asking.local_endpoint());
        }
        _thread = std::thread(
            [this]
            {
                char buffer[messageSize];
                for (std::size_t received = 0; (received = _Receive(_answering, buffer)) != lastSize;)
                    _answering.send(boost::asio::buffer(buffer, received));
            });
    }

    ~Asio()
    {
        _asking.send(boost::asio::buffer(message, lastSize));
        _thread.join();
    }

    void Ask()
    {
        char buffer[messageSize];
        _asking.send(boost::asio::buffer(message, messageSize));
        Check(_Receive(_asking, buffer) == messageSize);
    }

private:
    using Socket = typename Protocol::socket;

    static std::size_t _Receive(Socket& socket, char (&buffer)[messageSize])
    {
        return socket.receive(boost::asio::buffer(buffer, messageSize));
    }

    boost::asio::io_context _context;
    Socket _asking{_context};
    Socket _answering{_context};
    std::thread _thread;
};
#endif

template <typename Protocol>
void ToAndFro(benchmark::State& state, void (*connect)(Ends&))
{
    constexpr int batch = 50;
    Bare bare(connect);
    Library library(connect);
    std::vector<Contestant> contestants = {{"bare", [&] { bare.Ask(); }},
                                           {"nxSocket", [&] { library.Ask(); }}};
#ifdef NX_BENCH_BOOST
    Asio<Protocol> asio;
    contestants.push_back({"asio", [&] { asio.Ask(); }});
#endif
    TakeTurns(state, contestants, batch);
}

#ifdef NX_BENCH_BOOST
using Tcp = boost::asio::ip::tcp;
using Udp = boost::asio::ip::udp;
#else
using Tcp = void;
using Udp = void;
#endif

void TcpToAndFro(benchmark::State& state)
{
    ToAndFro<Tcp>(state, ConnectTcp);
}
BENCHMARK(TcpToAndFro)->Iterations(300)->UseRealTime();

void UdpToAndFro(benchmark::State& state)
{
    ToAndFro<Udp>(state, ConnectUdp);
}
BENCHMARK(UdpToAndFro)->Iterations(300)->UseRealTime();
} // namespace
