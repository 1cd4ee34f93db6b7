// `nxcore listen`: what arrives on a port, as the log dumps it or raw.

#include "Arguments.h"
#include "Commands.h"
#include "Network.h"

#include "core/logging/nxLogDevice.h"
#include "core/logging/nxLogSite.h"
#include "core/network/nxSocket.h"
#include "core/text/nxAlgorithm.h"
#include "core/vocabulary/nxErrorEnum.h"

#include <algorithm>
#include <csignal>
#include <iostream>
#include <memory>
#include <vector>

#include <netinet/in.h>
#include <sys/socket.h>

namespace nxTool
{
namespace
{
constexpr Option options[] = {
    {"udp", "", "receive datagrams"},
    {"group", "G", "join a multicast group, such as 239.1.1.1; means -udp"},
    {"raw", "", "write the bytes to standard output as they are, and nothing else"},
};
constexpr std::size_t bufferSize = 65536;
/// Set while the command runs; the library's waits don't end by a signal, so the loop asks.
volatile std::sig_atomic_t isInterrupted = 0;

class InterruptHandler
{
public:
    InterruptHandler()
    {
        isInterrupted = 0;
        struct sigaction action = {};
        action.sa_handler = [](int) { isInterrupted = 1; };
        sigaction(SIGINT, &action, &_interrupt);
        sigaction(SIGTERM, &action, &_terminate);
    }
    ~InterruptHandler()
    {
        sigaction(SIGINT, &_interrupt, nullptr);
        sigaction(SIGTERM, &_terminate, nullptr);
    }
    InterruptHandler(InterruptHandler const&) = delete;
    InterruptHandler& operator=(InterruptHandler const&) = delete;

private:
    struct sigaction _interrupt = {};
    struct sigaction _terminate = {};
};

/// Goes on until the interrupt, and then as long as there is something that had come before.
class Rounds
{
public:
    /// @param found  whether the last round found anything.
    bool GoOn(bool found)
    {
        return !isInterrupted || (found && _last-- > 0);
    }

    /// In microseconds; so long an interrupt may have to wait.
    unsigned int GetPause() const
    {
        constexpr unsigned int pause = 100000;
        return isInterrupted ? 0 : pause;
    }

private:
    int _last = 1000; // a peer that never pauses is no reason to go on for ever
};

/// Prints the messages of level Info, which are what the command logs and the lines of dumps.
class MessagePrinter : public nxLogDevice
{
public:
    MessagePrinter()
    {
        AwaitWriter(); // what was logged before is not for this device
        nxLogManager::GetInstance().RegisterLogDevice(this);
    }

    ~MessagePrinter() override
    {
        AwaitWriter();
        nxLogManager::GetInstance().UnregisterLogDevice(this);
    }

    nxErrorEnum Destroy() override
    {
        return nxErrorEnum();
    }

    void Write(nxLog const& log) override
    {
        bool const isShown = log.GetLogLevel() == NX_INF && log.GetLogEntry() != nullptr &&
                             !log.GetLogEntry()->starts_with("Dumping memory ");
        if (isShown)
            std::cout << *log.GetLogEntry() << '\n';
    }

    void Flush() override
    {
        std::cout.flush();
    }

private:
    /// The cycle that runs, and the one behind it.
    static void AwaitWriter()
    {
        constexpr double longest = 10;
        nxLogManager& manager = nxLogManager::GetInstance();
        manager.WaitForWriteThreadToWriteQueueToDisk(nxDoubleValueWrapper(longest));
        manager.WaitForWriteThreadToWriteQueueToDisk(nxDoubleValueWrapper(longest));
    }
};

enum class Form
{
    Dump,
    Raw,
    Document
};

/// Shows and counts what arrives.
class Traffic
{
public:
    explicit Traffic(Form form) : _form(form)
    {
        if (form == Form::Dump)
            _printer = std::make_unique<MessagePrinter>();
    }

    /// A line for people.
    void Note(std::string const& text)
    {
        if (_form == Form::Dump)
            NX_LOG(NX_INF, text);
    }

    /// @param origin  such as "connection 1".
    void Show(std::string const& origin, char* bytes, unsigned int size)
    {
        ++_pieces;
        _bytes += size;
        if (_form == Form::Raw)
            std::cout.write(bytes, size).flush();
        if (_form == Form::Dump)
            Dump(origin, bytes, size);
        if (_form == Form::Document)
            Keep(origin, bytes, size);
    }

    void Summarise(Result& result)
    {
        _printer.reset();
        if (_form == Form::Raw)
            return;
        if (_form == Form::Document)
            result.AddValue("received", _received);
        result.AddField("pieces", "pieces", _pieces);
        result.AddField("bytes", "bytes", _bytes);
    }

private:
    static void Dump(std::string const& origin, char const* bytes, unsigned int size)
    {
        constexpr unsigned int bytesPerLine = 16;
        NX_LOG(NX_INF, origin << ", bytes: " << size);
        (void)nxLog::LogBufferAsHex(bytes, size, bytesPerLine, size / bytesPerLine + 1, '.', false);
    }

    void Keep(std::string const& origin, char* bytes, unsigned int size)
    {
        std::string hexadecimal;
        nxAlgorithm::GetAsHex(nxByteArray{reinterpret_cast<unsigned char*>(bytes), size}, hexadecimal);
        _received.push_back({{"from", origin}, {"bytes", size}, {"hexadecimal", hexadecimal}});
    }

    Form _form;
    std::unique_ptr<MessagePrinter> _printer;
    Json _received = Json::array();
    unsigned long long _pieces = 0;
    unsigned long long _bytes = 0;
};

/// Says on standard error that the port is open, and which one it is: the system chooses for port 0.
void Announce(nxSocket const& socket)
{
    sockaddr_in address = {};
    socklen_t length = sizeof address;
    int const descriptor = static_cast<int>(socket.GetSocket());
    if (getsockname(descriptor, reinterpret_cast<sockaddr*>(&address), &length) == 0)
        std::cerr << "listening on port " << ntohs(address.sin_port) << std::endl;
}

struct Peer
{
    std::string name;
    nxSocket socket;
};

/// The listener and those who are connected.
class Server
{
public:
    explicit Server(Traffic& traffic) : _traffic(traffic), _buffer(bufferSize)
    {
    }

    bool Open(int port, Result& result)
    {
        std::string const subject = "port " + std::to_string(port);
        if (!Succeeded(_listener.Create(NX_SOCKET_TYPE_TCP), subject, result) ||
            !Succeeded(_listener.Bind(port), subject, result) ||
            !Succeeded(_listener.Listen(), subject, result))
            return false;
        Announce(_listener);
        return true;
    }

    void Serve()
    {
        Rounds rounds;
        unsigned int readyCount = 1;
        while (rounds.GoOn(readyCount > 0))
        {
            std::vector<nxSocket*> sockets;
            for (auto const& peer : _peers)
                sockets.push_back(&peer->socket);
            // A set looks at 64 sockets; who comes then waits until somebody leaves.
            constexpr std::size_t mostPeers = 63;
            if (_peers.size() < mostPeers)
                sockets.push_back(&_listener);
            std::vector<bool> readable;
            if (nxSocket::Select(sockets, rounds.GetPause(), readyCount, readable).IsOK() && readyCount > 0)
                Attend(readable);
        }
    }

private:
    void Attend(std::vector<bool> const& readable)
    {
        std::size_t const peerCount = _peers.size();
        for (std::size_t index = 0; index < peerCount; ++index)
            if (readable[index])
                Receive(_peers[index]);
        if (readable.size() > peerCount && readable[peerCount])
            Accept();
        std::erase(_peers, nullptr);
    }

    void Receive(std::unique_ptr<Peer>& peer)
    {
        int received = 0;
        if (peer->socket.Receive(_buffer.data(), static_cast<int>(_buffer.size()), received).IsOK())
        {
            _traffic.Show(peer->name, _buffer.data(), static_cast<unsigned int>(received));
            return;
        }
        _traffic.Note(peer->name + (received == 0 ? " ended" : " failed"));
        peer.reset();
    }

    void Accept()
    {
        auto peer = std::make_unique<Peer>();
        if (!_listener.Accept(peer->socket).IsOK() || !peer->socket.IsValid())
            return;
        peer->name = "connection " + std::to_string(++_accepted);
        _traffic.Note(peer->name + " opened");
        _peers.push_back(std::move(peer));
    }

    Traffic& _traffic;
    std::vector<char> _buffer;
    nxSocket _listener;
    std::vector<std::unique_ptr<Peer>> _peers;
    unsigned int _accepted = 0;
};

bool OpenReceiver(nxSocket& socket, int port, std::string const& group, Result& result)
{
    std::string const subject = "port " + std::to_string(port);
    if (!Succeeded(socket.Create(NX_SOCKET_TYPE_UDP), subject, result) ||
        !Succeeded(socket.Bind(port), subject, result) ||
        !Succeeded(socket.SetReceiveMsgWithDestinationAddressSockOpts(true), subject, result))
        return false;
    if (!group.empty() && !Succeeded(socket.MulticastJoin(group), group, result))
        return false;
    Announce(socket);
    return true;
}

void ReceiveDatagrams(nxSocket& socket, Traffic& traffic)
{
    std::vector<char> buffer(bufferSize);
    std::string destination;
    Rounds rounds;
    unsigned int readyCount = 1;
    while (rounds.GoOn(readyCount > 0))
    {
        if (!socket.Select(rounds.GetPause(), readyCount).IsOK() || readyCount == 0)
            continue;
        int received = 0;
        nxErrorEnum const result = socket.ReceiveMsgWithDestinationAddress(
            buffer.data(), static_cast<int>(buffer.size()), received, destination);
        // An empty datagram counts as a failure, but it has a destination.
        if (result.IsOK() || !destination.empty())
            traffic.Show("datagram to " + destination, buffer.data(), static_cast<unsigned int>(received));
    }
}

/// @param group  to join; empty for none
Status Listen(int port, bool isUdp, std::string const& group, Form form, Result& result)
{
    InterruptHandler const handler;
    Traffic traffic(form);
    if (isUdp || !group.empty())
    {
        nxSocket socket;
        if (!OpenReceiver(socket, port, group, result))
            return Status::Unusable;
        ReceiveDatagrams(socket, traffic);
    }
    else
    {
        Server server(traffic);
        if (!server.Open(port, result))
            return Status::Unusable;
        server.Serve();
    }
    traffic.Summarise(result);
    return Status::Good;
}

Status Run(Arguments const& arguments, Result& result)
{
    auto const port = ReadPort(arguments.Get(0), 0, result);
    auto const groupText = arguments.GetOption("group");
    auto const group = groupText ? ReadAddress(*groupText, result) : std::nullopt;
    if (!port || (groupText && !group))
        return Status::Unusable;
    if (arguments.Has("raw") && arguments.Has("json"))
        return result.Refuse("", "-raw and -json exclude each other");
    Form form = arguments.Has("raw") ? Form::Raw : Form::Dump;
    if (arguments.Has("json"))
        form = Form::Document;
    if (form == Form::Dump && !nxLogManager::ShouldLog(NX_INF))
        return result.Refuse("", "KVT_LOG_LEVEL hides lines of level Info, as which the log dumps");
    return Listen(*port, arguments.Has("udp"), group.value_or(""), form, result);
}
} // namespace

Command const listenCommand = {
    .name = "listen",
    .arguments = "PORT",
    .summary = "show what arrives on a port",
    .details =
        "Accepts TCP connections, up to 63 at a time, or receives datagrams, on all local addresses, until\n"
        "it is interrupted. Says on standard error which port it listens on; for PORT 0 the system\n"
        "chooses. What arrives is dumped by the library's log as hexadecimal digits and characters, with\n"
        "the connection or the address that a datagram was sent to, and is in the file of -log too. With\n"
        "-json everything is kept until the end.",
    .example = "nxcore listen 9000 -group 239.1.1.1",
    .options = options,
    .fewestArguments = 1,
    .mostArguments = 1,
    .run = Run,
};
} // namespace nxTool
