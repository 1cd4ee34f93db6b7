#include "core/network/nxSocket.h"

#include "core/logging/nxLogSite.h"
#include "core/platform/nxSockets.h"
#include "core/process/nxCmdLineArgs.h"
#include "core/process/nxConfigurationKeyText.h"
#include "core/text/nxDigits.h"
#include "core/text/nxStringParser.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <deque>
#include <new>

namespace
{
using nxPlatform::INVALID_SOCKET;

constexpr unsigned short winSockVersion = 2;
constexpr int backlog = 5;
constexpr unsigned long long defaultBufferSize = 1048576;
constexpr unsigned int longestTimeout = 1000000; // microseconds
constexpr unsigned int controlSize = 1024;
constexpr unsigned int addressBits = 32;
constexpr unsigned int allBits = 0xFFFFFFFF;

nxErrorEnum ResultOf(int answer, nxEnumValue failure)
{
    return answer == -1 ? nxErrorEnum(failure) : nxErrorEnum();
}

// The layer below refuses a negative length; so a length that it can't take is refused too.
int AsLength(unsigned long long length)
{
    return length > INT_MAX ? -1 : static_cast<int>(length);
}

in_addr AsAddress(unsigned int networkOrderAddress)
{
    in_addr address = {};
    address.s_addr = networkOrderAddress;
    return address;
}

void SetAddress(sockaddr_in& address, int family, unsigned int networkOrderAddress, int port)
{
    address.sin_family = static_cast<sa_family_t>(family);
    address.sin_addr = AsAddress(networkOrderAddress);
    address.sin_port = htons(static_cast<unsigned short>(port));
}

ip_mreq GroupAtAnyInterface(std::string const& group)
{
    ip_mreq request = {};
    request.imr_multiaddr = AsAddress(inet_addr(group.c_str()));
    request.imr_interface = AsAddress(INADDR_ANY);
    return request;
}

unsigned long long BufferSize(std::string const& key)
{
    auto const size = nxCmdLineArgs::GetInstance().GetEnvValueAsUInteger64(key);
    return size.IsValid() ? size.GetValue() : defaultBufferSize;
}

void LogBufferSize(char const* direction, nxErrorEnum const& result, unsigned long long size)
{
    if (result.IsOK())
    {
        NX_LOG(NX_INF, "Set socket " << direction << " buffer size: " << size);
    }
    else
    {
        NX_LOG(NX_ERR, "Failed to set " << direction << " buffer size. Error: " << result
                                        << ", Buffer size: " << size);
    }
}

timeval Microseconds(unsigned int microseconds)
{
    timeval timeout = {};
    timeout.tv_usec = microseconds;
    return timeout;
}

unsigned int MaskOf(unsigned int bits)
{
    return bits == 0 ? 0 : allBits << (addressBits - bits);
}
} // namespace

// Life.

nxSocket::nxSocket() : _connected(false), _family(AF_INET), _socket(INVALID_SOCKET), _address(nullptr)
{
    (void)nxPlatform::WSAStartup(winSockVersion);
}

nxSocket::~nxSocket()
{
    try
    {
        if (IsValid())
            (void)Close();
    }
    catch (std::bad_alloc const&)
    {
        // The handle is closed; the line that says how has no memory.
    }
    nxPlatform::WSACleanup();
    std::free(_address);
}

nxErrorEnum nxSocket::Create()
{
    return Create(NX_SOCKET_DOMAIN_INET, NX_SOCKET_TYPE_TCP);
}

nxErrorEnum nxSocket::Create(NX_SOCKET_TYPE type)
{
    return Create(NX_SOCKET_DOMAIN_INET, type);
}

nxErrorEnum nxSocket::Create(NX_SOCKET_DOMAIN domain, NX_SOCKET_TYPE type)
{
    nxErrorEnum result = _GetDomainSetting(domain);
    if (!result.IsOK())
        return result;
    result = _InitialiseAddressBuffer();
    if (!result.IsOK())
        return result;
    switch (type)
    {
    case NX_SOCKET_TYPE_TCP: _socket = nxPlatform::socket(_family, SOCK_STREAM, 0); break;
    case NX_SOCKET_TYPE_UDP: _socket = nxPlatform::socket(_family, SOCK_DGRAM, IPPROTO_UDP); break;
    default: break; // the handle that is there, if any, serves on
    }
    if (!IsValid() || !SetSocketOptionFlag(SOL_SOCKET, SO_REUSEADDR, true).IsOK())
        return nxErrorEnum(NX_ERR_SOCKET_CREATE_FAILED);
    return nxErrorEnum();
}

nxErrorEnum nxSocket::CreateAndSetBufferSize(NX_SOCKET_TYPE type)
{
    return CreateAndSetBufferSize(NX_SOCKET_DOMAIN_INET, type);
}

nxErrorEnum nxSocket::CreateAndSetBufferSize(NX_SOCKET_DOMAIN domain, NX_SOCKET_TYPE type)
{
    nxErrorEnum const created = Create(domain, type);
    if (!created.IsOK())
        return created;
    unsigned long long const inbound = BufferSize(nxConfigurationKeyText::KVT_INBOUND_BUFFER_SIZE);
    unsigned long long const outbound = BufferSize(nxConfigurationKeyText::KVT_OUTBOUND_BUFFER_SIZE);
    nxErrorEnum const inboundResult = SetInboundBufferSize(static_cast<unsigned int>(inbound));
    nxErrorEnum const outboundResult = SetOutboundBufferSize(static_cast<unsigned int>(outbound));
    LogBufferSize("inbound", inboundResult, inbound);
    LogBufferSize("outbound", outboundResult, outbound);
    return created;
}

nxErrorEnum nxSocket::Close()
{
    // The handle keeps its value: that a second close fails and logs is meant.
    _connected = false;
    if (nxPlatform::closesocket(_socket) == -1)
    {
        _LogError("close");
        return nxErrorEnum(NX_ERR_SOCKET_CLOSE_FAILED);
    }
    return nxErrorEnum();
}

bool nxSocket::IsValid() const
{
    return _socket != INVALID_SOCKET;
}

bool nxSocket::IsConnected() const
{
    return _connected;
}

unsigned long long nxSocket::GetSocket() const
{
    return _socket;
}

// Options.

nxErrorEnum nxSocket::SetSocketOption(int level, int name, void const* value, int length)
{
    return ResultOf(nxPlatform::setsockopt(_socket, level, name, value, length), NX_ERR_INVALID_PARAMETER);
}

nxErrorEnum nxSocket::SetSocketOptionFlag(int level, int name, bool on)
{
    int const flag = on ? 1 : 0;
    return SetSocketOption(level, name, &flag, sizeof flag);
}

nxErrorEnum nxSocket::SetSocketOptionFlag_NoDelay(bool on)
{
    return SetSocketOptionFlag(IPPROTO_TCP, TCP_NODELAY, on);
}

nxErrorEnum nxSocket::SetInboundBufferSize(unsigned int const& bytes)
{
    return SetSocketOption(SOL_SOCKET, SO_RCVBUF, &bytes, sizeof bytes);
}

nxErrorEnum nxSocket::SetOutboundBufferSize(unsigned int const& bytes)
{
    return SetSocketOption(SOL_SOCKET, SO_SNDBUF, &bytes, sizeof bytes);
}

nxErrorEnum nxSocket::SetBufferSize(unsigned int const& bytes)
{
    return SetInboundBufferSize(bytes); // meant: the outbound buffer has an operation of its own only
}

nxErrorEnum nxSocket::SetReceiveMsgWithDestinationAddressSockOpts(bool on)
{
    nxErrorEnum const result = SetSocketOptionFlag(IPPROTO_IP, IP_PKTINFO, on);
    if (!result.IsOK())
        _LogError("setsockopt - receive msg with destination address socket options");
    return result;
}

// Connections.

nxErrorEnum nxSocket::Connect(std::string const& host, int const& port)
{
    nxErrorEnum const addressable = _CheckAddressable();
    if (!addressable.IsOK())
        return addressable;
    unsigned int const address = inet_addr(host.c_str());
    SetAddress(*_address, _family, address, port);
    if (address == INADDR_NONE)
        return nxErrorEnum(NX_ERR_SOCKET_INVALID_HOST_ADDRESS);
    if (nxPlatform::connect(_socket, *_address) == -1)
    {
        _LogError("connect");
        return nxErrorEnum(NX_ERR_SOCKET_CONNECT_FAILED);
    }
    _connected = true;
    return nxErrorEnum();
}

nxErrorEnum nxSocket::Bind(std::string const& host, int const& port)
{
    return _Bind(inet_addr(host.c_str()), port);
}

nxErrorEnum nxSocket::Bind(int const& port)
{
    return _Bind(INADDR_ANY, port);
}

nxErrorEnum nxSocket::Listen() const
{
    if (!IsValid())
        return nxErrorEnum(NX_ERR_SOCKET_INVALID_HANDLE);
    return ResultOf(nxPlatform::listen(_socket, backlog), NX_ERR_SOCKET_LISTEN_FAILED);
}

nxErrorEnum nxSocket::Accept(nxSocket& accepted) const
{
    if (!IsValid())
        return nxErrorEnum(NX_ERR_SOCKET_INVALID_HANDLE);
    if (!_IsInternet())
        return nxErrorEnum(NX_ERR_SOCKET_ACCEPT_FAILED);
    accepted._socket = nxPlatform::accept(_socket, _address);
    // Against 0, not INVALID_SOCKET: a failed accept() is a success with an invalid handle. Callers look at
    // that.
    if (accepted._socket == 0)
        return nxErrorEnum(NX_ERR_SOCKET_ACCEPT_FAILED);
    accepted._connected = true;
    return nxErrorEnum();
}

nxErrorEnum nxSocket::ConnectLocal(std::string const&)
{
    NX_LOG(NX_ERR, "Unable to connect to domain socket. Not supported on Windows");
    return nxErrorEnum(NX_ERR_NOT_IMPLEMENTED);
}

nxErrorEnum nxSocket::BindLocal(std::string const&)
{
    NX_LOG(NX_ERR, "Unable to bind to domain socket. Not supported on Windows");
    return nxErrorEnum(NX_ERR_NOT_IMPLEMENTED);
}

nxErrorEnum nxSocket::MulticastJoin(std::string const& group)
{
    if (!IsValid())
    {
        NX_LOG(NX_INF, "MulticastJoin failed - socket handle invalid");
        return nxErrorEnum(NX_ERR_SOCKET_INVALID_HANDLE);
    }
    ip_mreq const request = GroupAtAnyInterface(group);
    int nonBlocking = 1;
    (void)nxPlatform::ioctlsocket(_socket, FIONBIO, &nonBlocking);
    if (nxPlatform::setsockopt(_socket, IPPROTO_IP, IP_ADD_MEMBERSHIP, &request, sizeof request) == -1)
    {
        _LogError("setsockopt - multicast join");
        _connected = false;
        return nxErrorEnum(NX_ERR_SOCKET_CONNECT_FAILED);
    }
    return nxErrorEnum();
}

nxErrorEnum nxSocket::MulticastLeave(std::string const& group)
{
    if (!IsValid())
        return nxErrorEnum(NX_ERR_SOCKET_INVALID_HANDLE);
    ip_mreq const request = GroupAtAnyInterface(group);
    if (nxPlatform::setsockopt(_socket, IPPROTO_IP, IP_DROP_MEMBERSHIP, &request, sizeof request) == -1)
    {
        _LogError("setsockopt - multicast leave");
        return nxErrorEnum(NX_ERR_SOCKET_CONNECT_FAILED);
    }
    return nxErrorEnum();
}

// Sending.

nxErrorEnum nxSocket::Send(char const* data, int length) const
{
    if (!IsValid())
        return nxErrorEnum(NX_ERR_SOCKET_INVALID_HANDLE);
    return ResultOf(nxPlatform::send(_socket, data, length), NX_ERR_SOCKET_SEND_FAILED);
}

nxErrorEnum nxSocket::Send(std::string const& data) const
{
    return Send(data.data(), AsLength(data.size()));
}

nxErrorEnum nxSocket::Send(nxByteArray const& data) const
{
    return Send(reinterpret_cast<char const*>(data.bytes), AsLength(data.length));
}

nxErrorEnum nxSocket::GatherSend(_WSABUF* buffers, unsigned int const& count, unsigned int& bytesSent) const
{
    if (nxPlatform::WSASend(_socket, buffers, count, bytesSent) == -1)
    {
        _LogError("WSASend");
        return nxErrorEnum(NX_ERR_SOCKET_SEND_FAILED);
    }
    return nxErrorEnum();
}

void nxSocket::SetGatherSendArrayEntry(_WSABUF* buffers, unsigned int const& index, void const* data,
                                       unsigned int const& length)
{
    buffers[index].len = length;
    buffers[index].buf = const_cast<char*>(static_cast<char const*>(data));
}

nxErrorEnum nxSocket::SendTo(char const* data, unsigned long long length) const
{
    if (!IsValid())
        return nxErrorEnum(NX_ERR_SOCKET_INVALID_HANDLE);
    if (!_IsInternet())
        return nxErrorEnum(NX_ERR_SOCKET_ACCEPT_FAILED); // not a slip: the same code as in Accept()
    return _SendTo(data, length, _address);
}

nxErrorEnum nxSocket::SendTo(std::string const& data) const
{
    return SendTo(data.data(), data.size());
}

nxErrorEnum nxSocket::SendToDestination(char const* data, unsigned long long length, std::string const& host,
                                        unsigned int port) const
{
    if (!_IsInternet())
        return nxErrorEnum(NX_ERR_INVALID_FUNCTION);
    if (!IsValid())
        return nxErrorEnum(NX_ERR_SOCKET_INVALID_HANDLE);
    sockaddr_in address = {};
    SetAddress(address, _family, inet_addr(host.c_str()), static_cast<int>(port));
    return _SendTo(data, length, &address);
}

// Receiving.

nxErrorEnum nxSocket::Receive(char* buffer, int size, int& received)
{
    if (!IsValid())
        return nxErrorEnum(NX_ERR_SOCKET_INVALID_HANDLE);
    received = nxPlatform::recv(_socket, buffer, size);
    return _CheckReceived("recv", received);
}

nxErrorEnum nxSocket::ReceiveFrom(char* buffer, int size, int& received)
{
    if (!IsValid())
        return nxErrorEnum(NX_ERR_SOCKET_INVALID_HANDLE);
    if (!_IsInternet())
        return nxErrorEnum(NX_ERR_SOCKET_ACCEPT_FAILED);
    received = nxPlatform::recvfrom(_socket, buffer, size, _address);
    return _CheckReceived("recvfrom", received);
}

nxErrorEnum nxSocket::ReceiveMsgWithDestinationAddress(char* buffer, int size, int& received,
                                                       std::string& destination)
{
    if (!IsValid())
        return nxErrorEnum(NX_ERR_SOCKET_INVALID_HANDLE);
    nxPlatform::WSARecvMsg const receive = nxPlatform::GetWSARecvMsg(_socket);
    if (!receive)
        return nxErrorEnum(NX_ERR_SOCKET_INVALID_HANDLE);
    if (!_IsInternet())
        return nxErrorEnum(NX_ERR_SOCKET_ACCEPT_FAILED);
    alignas(cmsghdr) char control[controlSize];
    nxPlatform::WSAMSG message = {
        _address, {static_cast<unsigned int>(size), buffer}, {controlSize, control}};
    unsigned int bytes = 0;
    destination.clear();
    received = 0;
    if (receive(_socket, message, bytes) == -1)
    {
        _LogError("WSARecvMsg");
        _connected = false;
        return nxErrorEnum(NX_ERR_SOCKET_RECEIVE_FAILED);
    }
    if (auto const address = nxPlatform::GetDestination(message))
    {
        char text[nxPlatform::dottedAddressSize];
        destination = nxPlatform::inet_ntoa(*address, text);
    }
    received = static_cast<int>(bytes);
    if (received == 0)
    {
        _connected = false;
        return nxErrorEnum(NX_ERR_SOCKET_RECEIVE_FAILED);
    }
    return nxErrorEnum();
}

// Waiting.

nxErrorEnum nxSocket::Select(unsigned int const& timeoutMicroseconds)
{
    unsigned int readyCount = 0;
    return Select(timeoutMicroseconds, readyCount);
}

nxErrorEnum nxSocket::Select(unsigned int const& timeoutMicroseconds, unsigned int& readyCount)
{
    if (!IsValid())
        return nxErrorEnum(NX_ERR_SOCKET_SELECT_FAILED);
    if (timeoutMicroseconds > longestTimeout)
        return nxErrorEnum(NX_ERR_INVALID_PARAMETER);
    timeval timeout = Microseconds(timeoutMicroseconds);
    (void)_Select(&timeout, readyCount); // the count alone tells of a failure
    return nxErrorEnum();
}

nxErrorEnum nxSocket::SelectWithoutTimeout()
{
    if (!IsValid())
        return nxErrorEnum(NX_ERR_SOCKET_SELECT_FAILED);
    unsigned int readyCount = 0;
    (void)_Select(nullptr, readyCount);
    return nxErrorEnum();
}

nxErrorEnum nxSocket::Select(std::vector<nxSocket*> const& sockets, unsigned int const& timeoutMicroseconds,
                             unsigned int& readyCount, std::vector<bool>& readable)
{
    if (timeoutMicroseconds > longestTimeout)
        return nxErrorEnum(NX_ERR_INVALID_PARAMETER);
    nxPlatform::SocketSet set;
    for (nxSocket const* socket : sockets)
        set.Add(socket->_socket);
    timeval const timeout = Microseconds(timeoutMicroseconds);
    int const ready = nxPlatform::select(set, &timeout);
    if (ready < 0)
    {
        readyCount = 0;
        return nxErrorEnum(NX_ERR_SOCKET_SELECT_FAILED);
    }
    readyCount = static_cast<unsigned int>(ready);
    readable.resize(sockets.size());
    std::transform(sockets.begin(), sockets.end(), readable.begin(),
                   [&](nxSocket const* socket) { return set.Contains(socket->_socket); });
    return nxErrorEnum();
}

// Addresses.

nxErrorEnum nxSocket::ParseAddress(std::string const& text, unsigned int& address)
{
    constexpr std::size_t partCount = 4;
    constexpr unsigned int highestPart = 255;
    constexpr unsigned int bitsOfPart = 8;
    std::deque<std::string> parts;
    nxStringParser::ExtractAllSubstrings(text, parts, false, '.');
    if (parts.size() != partCount)
        return nxErrorEnum(NX_ERR_INVALID_PARAMETER);
    unsigned int gathered = 0;
    for (std::string const& part : parts)
    {
        unsigned int number = 0;
        if (!nxDigits::ReadAll(part, number) || number > highestPart)
            return nxErrorEnum(NX_ERR_INVALID_PARAMETER);
        gathered = (gathered << bitsOfPart) + number;
    }
    address = gathered;
    return nxErrorEnum();
}

nxErrorEnum nxSocket::ParseAddressAndMask(std::string const& text, std::string& addressText,
                                          unsigned int& address, nxValueWrapper<unsigned int, -1, -2>& mask,
                                          nxValueWrapper<unsigned int, -1, -2>& network,
                                          nxValueWrapper<unsigned int, -1, -2>& host)
{
    address = 0;
    addressText.clear();
    mask.SetNull();
    network.SetNull();
    host.SetNull();
    std::size_t const slash = text.find('/');
    std::string const bitText = slash == std::string::npos ? std::string() : text.substr(slash + 1);
    unsigned int bits = 0;
    if (!bitText.empty() && (!nxDigits::ReadAll(bitText, bits) || bits >= addressBits))
        return nxErrorEnum(NX_ERR_INVALID_PARAMETER);
    std::string const front = text.substr(0, slash);
    nxErrorEnum const result = ParseAddress(front, address);
    if (!result.IsOK())
        return result;
    addressText = front;
    if (!bitText.empty())
    {
        mask = MaskOf(bits);
        network = address & MaskOf(bits);
        host = address & ~MaskOf(bits);
    }
    return nxErrorEnum();
}

// Helpers.

nxErrorEnum nxSocket::_GetDomainSetting(NX_SOCKET_DOMAIN domain)
{
    _family = AF_INET;
    return domain == NX_SOCKET_DOMAIN_INET ? nxErrorEnum() : nxErrorEnum(NX_ERR_INVALID_PARAMETER);
}

nxErrorEnum nxSocket::_InitialiseAddressBuffer()
{
    // A buffer of an earlier Create() is not freed: an object that this one was assigned to may live on with
    // it.
    _address = static_cast<sockaddr_in*>(std::calloc(1, _GetAddressBufferSize().GetValue()));
    return _address ? nxErrorEnum() : nxErrorEnum(NX_ERR_SOCKET_CREATE_FAILED);
}

nxValueWrapper<unsigned int, -1, -2> nxSocket::_GetAddressBufferSize() const
{
    return _IsInternet() ? nxVolume(sizeof(sockaddr_in)) : nxVolume();
}

bool nxSocket::_IsInternet() const
{
    return _family == AF_INET;
}

nxErrorEnum nxSocket::_CheckAddressable() const
{
    if (!_IsInternet())
        return nxErrorEnum(NX_ERR_INVALID_FUNCTION);
    if (!_address)
        return nxErrorEnum(NX_ERR_NOT_INITIALISED);
    return IsValid() ? nxErrorEnum() : nxErrorEnum(NX_ERR_SOCKET_INVALID_HANDLE);
}

nxErrorEnum nxSocket::_Bind(unsigned int networkOrderAddress, int port)
{
    nxErrorEnum const addressable = _CheckAddressable();
    if (!addressable.IsOK())
        return addressable;
    SetAddress(*_address, _family, networkOrderAddress, port);
    return ResultOf(nxPlatform::bind(_socket, *_address), NX_ERR_SOCKET_BIND_FAILED);
}

nxErrorEnum nxSocket::_SendTo(char const* data, unsigned long long length, sockaddr_in const* address) const
{
    return ResultOf(nxPlatform::sendto(_socket, data, AsLength(length), address), NX_ERR_SOCKET_SEND_FAILED);
}

nxErrorEnum nxSocket::_CheckReceived(char const* function, int received)
{
    if (received > 0)
        return nxErrorEnum();
    if (received == 0)
    {
        NX_LOG(NX_ERR, "Bytes received on socket: "
                           << received << ". This indicates that the peer has performed an orderly shutdown");
    }
    else
    {
        _LogError(function);
    }
    _connected = false;
    return nxErrorEnum(NX_ERR_SOCKET_RECEIVE_FAILED);
}

nxErrorEnum nxSocket::_Select(timeval* timeout, unsigned int& count) const
{
    nxPlatform::SocketSet set;
    set.Add(_socket);
    int const ready = nxPlatform::select(set, timeout);
    count = ready < 0 ? 0 : static_cast<unsigned int>(ready);
    return ResultOf(ready, NX_ERR_SOCKET_SELECT_FAILED);
}

void nxSocket::_LogError(char const* function) const
{
    int error = 0;
    _LogError(function, error);
}

void nxSocket::_LogError(char const* function, int& error) const
{
    error = nxPlatform::WSAGetLastError();
    NX_LOG(NX_ERR, "Error on socket call. Function: " << function << ". Error: " << error
                                                      << ", Socket descriptor: " << _socket);
}
