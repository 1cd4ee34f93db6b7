// `nxcore send`: the bytes of a file, or of standard input, over TCP or UDP.

#include "Arguments.h"
#include "Commands.h"
#include "Network.h"

#include "core/network/nxSocket.h"
#include "core/vocabulary/nxErrorEnum.h"

#include <cerrno>
#include <cstring>
#include <optional>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace nxTool
{
namespace
{
constexpr Option options[] = {
    {"udp", "", "send datagrams"},
};

/// A file, or standard input. Reads what there is, so that what is typed is sent line by line.
class Input
{
public:
    explicit Input(std::string const& path)
        : _path(path), _descriptor(path.empty() ? STDIN_FILENO : open(path.c_str(), O_RDONLY | O_CLOEXEC))
    {
        if (_descriptor == -1)
            _fault = std::strerror(errno);
    }

    ~Input()
    {
        if (_descriptor > STDIN_FILENO)
            close(_descriptor);
    }

    Input(Input const&) = delete;
    Input& operator=(Input const&) = delete;

    /// @return how many bytes were read, 0 at the end or after a fault.
    std::size_t Read(char* buffer, std::size_t size)
    {
        ssize_t count = 0;
        do
            count = _fault.empty() ? read(_descriptor, buffer, size) : 0;
        while (count == -1 && errno == EINTR);
        if (count == -1)
            _fault = std::strerror(errno);
        return count > 0 ? static_cast<std::size_t>(count) : 0;
    }

    /// Fills the buffer as far as the input reaches.
    std::size_t ReadWhole(char* buffer, std::size_t size)
    {
        std::size_t sum = 0;
        while (std::size_t const count = Read(buffer + sum, size - sum))
            sum += count;
        return sum;
    }

    /// @return false, with a problem, when the input could not be opened or read to its end.
    bool CheckRead(Result& result) const
    {
        if (!_fault.empty())
            result.AddProblem({.file = _path.empty() ? "standard input" : Printable(_path),
                               .line = 0,
                               .column = {},
                               .reason = _fault});
        return _fault.empty();
    }

private:
    std::string _path;
    int _descriptor;
    std::string _fault;
};

struct Destination
{
    std::string host;
    int port;

    std::string GetText() const
    {
        return host + " port " + std::to_string(port);
    }
};

/// What went out before something failed.
struct Sent
{
    unsigned long long bytes = 0;
    unsigned long long datagrams = 0;
    bool isComplete = false;
};

Sent SendStream(Destination const& to, Input& input, Result& result)
{
    constexpr std::size_t pieceSize = 65536;
    nxSocket socket;
    Sent sent;
    if (!Succeeded(socket.Create(NX_SOCKET_TYPE_TCP), "socket", result) ||
        !Succeeded(socket.Connect(to.host, to.port), to.GetText(), result))
        return sent;
    std::vector<char> buffer(pieceSize);
    while (std::size_t const count = input.Read(buffer.data(), buffer.size()))
    {
        if (!Succeeded(socket.Send(buffer.data(), static_cast<int>(count)), to.GetText(), result))
            return sent;
        sent.bytes += count;
    }
    sent.isComplete = input.CheckRead(result);
    return sent;
}

Sent SendDatagrams(Destination const& to, Input& input, Result& result)
{
    nxSocket socket;
    Sent sent;
    if (!Succeeded(socket.Create(NX_SOCKET_TYPE_UDP), "socket", result))
        return sent;
    std::vector<char> buffer(mostDatagramBytes);
    while (!sent.isComplete)
    {
        std::size_t const count = input.ReadWhole(buffer.data(), buffer.size());
        if (!input.CheckRead(result))
            return sent;
        // An empty input is one empty datagram; behind a full one there is none.
        if (count > 0 || sent.datagrams == 0)
        {
            nxErrorEnum const error =
                socket.SendToDestination(buffer.data(), count, to.host, static_cast<unsigned int>(to.port));
            if (!Succeeded(error, to.GetText(), result))
                return sent;
            sent.bytes += count;
            ++sent.datagrams;
        }
        sent.isComplete = count < buffer.size();
    }
    return sent;
}

Status Run(Arguments const& arguments, Result& result)
{
    auto const port = ReadPort(arguments.Get(1), 1, result);
    auto const host = ReadAddress(arguments.Get(0), result);
    if (!port || !host)
        return Status::Unusable;
    Input input(arguments.Get(2));
    if (!input.CheckRead(result))
        return Status::Unusable;
    bool const isUdp = arguments.Has("udp");
    Destination const to = {*host, *port};
    Sent const sent = isUdp ? SendDatagrams(to, input, result) : SendStream(to, input, result);
    result.AddField("bytes", "bytes", sent.bytes);
    if (isUdp)
        result.AddField("datagrams", "datagrams", sent.datagrams);
    if (sent.isComplete)
        return Status::Good;
    return sent.bytes > 0 ? Status::Faulty : Status::Unusable;
}
} // namespace

Command const sendCommand = {
    .name = "send",
    .arguments = "HOST PORT [FILE]",
    .summary = "send a file or standard input over TCP or UDP",
    .details =
        "HOST is a dotted address; names are not looked up. Without FILE, standard input is sent as it\n"
        "comes. Over UDP the input is read to its end and sent in datagrams of up to 65507 bytes each,\n"
        "an empty input as one empty datagram; HOST may be a multicast group. Shows how much was sent.\n"
        "The exit status is 1 when only a part was, 2 when nothing was.",
    .example = "nxcore send 127.0.0.1 9000 orders.fix",
    .options = options,
    .fewestArguments = 2,
    .mostArguments = 3,
    .completes = Completes::File,
    .completedArgument = 2,
    .run = Run,
};
} // namespace nxTool
