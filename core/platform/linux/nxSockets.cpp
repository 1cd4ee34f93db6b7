#include "core/platform/nxSockets.h"

#include "core/platform/linux/nxSocketTransfers.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <climits>

#include <fcntl.h>
#include <poll.h>
#include <sys/uio.h>
#include <unistd.h>

namespace nxPlatform
{
namespace
{
using Clock = std::chrono::steady_clock;

// Buffers of a usual gather send, which need no large array.
constexpr unsigned int few = 16;

void CloseKeepingError(int descriptor)
{
    int const error = errno;
    (void)::close(descriptor);
    errno = error;
}

int MoveAboveStandardStreams(int descriptor)
{
    if (descriptor < 0 || descriptor > STDERR_FILENO)
        return descriptor;
    int const moved = ::fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    CloseKeepingError(descriptor);
    return moved;
}

// Takes over what socket() or accept() of the system gave.
SOCKET GiveOut(int opened)
{
    int const descriptor = MoveAboveStandardStreams(opened);
    if (descriptor == -1)
        return INVALID_SOCKET;
    if (!socketHandles.Reserve(descriptor))
    {
        errno = ENOMEM;
        CloseKeepingError(descriptor);
        return INVALID_SOCKET;
    }
    return socketHandles.Open(descriptor);
}

// Linux hands a datagram of any group that somebody on this host joined to every socket bound to its port.
// Where the system can't be told otherwise, that stays so.
void KeepOtherSocketsGroupsAway(int descriptor)
{
    int const off = 0;
    (void)::setsockopt(descriptor, IPPROTO_IP, IP_MULTICAST_ALL, &off, sizeof off);
}

bool IsBlocking(int descriptor)
{
    int const flags = ::fcntl(descriptor, F_GETFL);
    return flags != -1 && (flags & O_NONBLOCK) == 0;
}

bool IsDatagram(int descriptor)
{
    int type = 0;
    socklen_t length = sizeof type;
    return ::getsockopt(descriptor, SOL_SOCKET, SO_TYPE, &type, &length) == 0 && type == SOCK_DGRAM;
}

// The connection of an interrupted connect() goes on being made; asking for it anew would be refused.
int AwaitConnection(int descriptor)
{
    pollfd polled = {descriptor, POLLOUT, 0};
    if (Restarted([&] { return ::poll(&polled, 1, -1); }) == -1)
        return -1;
    int error = 0;
    socklen_t length = sizeof error;
    if (::getsockopt(descriptor, SOL_SOCKET, SO_ERROR, &error, &length) == -1)
        return -1;
    return error == 0 ? 0 : Fail(error);
}

// Drops what was sent from the front of the message.
void Skip(msghdr& message, std::size_t sent)
{
    while (message.msg_iovlen > 0 && sent >= message.msg_iov->iov_len)
    {
        sent -= message.msg_iov->iov_len;
        ++message.msg_iov;
        --message.msg_iovlen;
    }
    if (message.msg_iovlen > 0)
    {
        message.msg_iov->iov_base = static_cast<char*>(message.msg_iov->iov_base) + sent;
        message.msg_iov->iov_len -= sent;
    }
}

// Goes on with a send of which `sent` bytes are gone, or that failed with -1, maybe by a signal.
//
// A blocking socket stops short only when a signal arrives, its time is over or the connection fails. Going
// on is right in each case: the last two fail at once or wait once more, and then what was sent is told. All
// this stays out of the way of a send that simply succeeds.
[[gnu::noinline, gnu::cold]] ssize_t FinishMessage(int descriptor, msghdr& message, ssize_t sent)
{
    ssize_t sum = 0;
    for (;;)
    {
        if (sent == -1 && errno != EINTR)
            return sum > 0 ? sum : -1;
        if (sent != -1)
        {
            sum += sent;
            Skip(message, static_cast<std::size_t>(sent));
            if (message.msg_iovlen == 0 || !IsBlocking(descriptor))
                return sum;
        }
        sent = ::sendmsg(descriptor, &message, MSG_NOSIGNAL);
    }
}

// At most so many buffers as the template says.
// @param length  receives how many bytes they hold.
template <unsigned int most>
inline ssize_t SendBuffers(int descriptor, _WSABUF const* buffers, unsigned int count, ssize_t& length)
{
    iovec vector[most];
    length = 0;
    for (unsigned int index = 0; index < count; ++index)
    {
        vector[index] = {buffers[index].buf, buffers[index].len};
        length += buffers[index].len;
    }
    msghdr message = {};
    message.msg_iov = vector;
    message.msg_iovlen = count;
    ssize_t const sent = ::sendmsg(descriptor, &message, MSG_NOSIGNAL);
    return sent == length ? sent : FinishMessage(descriptor, message, sent);
}

int SendMany(int descriptor, _WSABUF const* buffers, unsigned int count, unsigned int& bytesSent)
{
    if (count > IOV_MAX && IsDatagram(descriptor))
        return Fail(EMSGSIZE);
    do
    {
        unsigned int const taken = std::min<unsigned int>(count, IOV_MAX);
        ssize_t length = 0;
        ssize_t const sent = SendBuffers<IOV_MAX>(descriptor, buffers, taken, length);
        if (sent == -1)
        {
            // What went out before stands; the next send meets the failure again.
            return bytesSent > 0 ? 0 : -1;
        }
        bytesSent += static_cast<unsigned int>(sent);
        if (sent < length)
            return 0;
        buffers += taken;
        count -= taken;
    } while (count > 0 && bytesSent <= INT_MAX); // beyond that the sum might not hold another round
    return 0;
}

int ReceiveMessage(SOCKET socket, WSAMSG& message, unsigned int& received)
{
    if (message.data.len > INT_MAX)
        return Fail(EINVAL);
    iovec data = {message.data.buf, message.data.len};
    msghdr header = {};
    int const descriptor = socketHandles.GetDescriptor(socket);
    ssize_t const count = Restarted(
        [&]
        {
            header = {};
            header.msg_name = message.sender;
            header.msg_namelen = sizeof *message.sender;
            header.msg_iov = &data;
            header.msg_iovlen = 1;
            header.msg_control = message.control.buf;
            header.msg_controllen = message.control.len;
            return ::recvmsg(descriptor, &header, 0);
        });
    if (count == -1)
        return -1;
    message.control.len = static_cast<unsigned int>(header.msg_controllen);
    received = static_cast<unsigned int>(count);
    return 0;
}

timespec AsTimespec(std::chrono::nanoseconds duration)
{
    auto const seconds = std::chrono::floor<std::chrono::seconds>(duration);
    return {seconds.count(), (duration - seconds).count()};
}

// poll() with microseconds.
int Poll(pollfd* polled, unsigned int count, timeval const* timeout)
{
    if (!timeout)
        return Restarted([&] { return ::poll(polled, count, -1); });
    std::chrono::nanoseconds left =
        std::chrono::seconds(timeout->tv_sec) + std::chrono::microseconds(timeout->tv_usec);
    auto const end = Clock::now() + left;
    return Restarted(
        [&]
        {
            timespec const wait = AsTimespec(left);
            int const ready = ::ppoll(polled, count, &wait, nullptr);
            int const error = errno;
            left = std::max(std::chrono::nanoseconds(end - Clock::now()), std::chrono::nanoseconds(0));
            errno = error;
            return ready;
        });
}
} // namespace

constinit SocketHandles socketHandles;

int FinishSend(int descriptor, char const* data, int length, sockaddr_in const* address, long sent)
{
    iovec vector = {const_cast<char*>(data), static_cast<std::size_t>(length)};
    msghdr message = {};
    message.msg_name = const_cast<sockaddr_in*>(address);
    message.msg_namelen = address ? sizeof *address : 0;
    message.msg_iov = &vector;
    message.msg_iovlen = 1;
    return static_cast<int>(FinishMessage(descriptor, message, sent));
}

int WSAGetLastError()
{
    return errno;
}

SOCKET socket(int family, int type, int protocol)
{
    int const descriptor = ::socket(family, type | SOCK_CLOEXEC, protocol);
    if (descriptor != -1 && type == SOCK_DGRAM)
        KeepOtherSocketsGroupsAway(descriptor);
    return GiveOut(descriptor);
}

int closesocket(SOCKET socket)
{
    int const descriptor = socketHandles.Close(socket);
    if (descriptor == -1)
        return Fail(EBADF);
    // Interrupted or not, the descriptor is gone.
    int const result = ::close(descriptor);
    return result == -1 && errno == EINTR ? 0 : result;
}

int bind(SOCKET socket, sockaddr_in const& address)
{
    return ::bind(socketHandles.GetDescriptor(socket), AsSockaddr(&address), sizeof address);
}

int listen(SOCKET socket, int backlog)
{
    return ::listen(socketHandles.GetDescriptor(socket), backlog);
}

int connect(SOCKET socket, sockaddr_in const& address)
{
    int const descriptor = socketHandles.GetDescriptor(socket);
    int const result = ::connect(descriptor, AsSockaddr(&address), sizeof address);
    return result == -1 && errno == EINTR ? AwaitConnection(descriptor) : result;
}

SOCKET accept(SOCKET socket, sockaddr_in* peer)
{
    int const descriptor = socketHandles.GetDescriptor(socket);
    return GiveOut(Restarted(
        [&]
        {
            socklen_t length = sizeof *peer;
            return ::accept4(descriptor, AsSockaddr(peer), peer ? &length : nullptr, SOCK_CLOEXEC);
        }));
}

int setsockopt(SOCKET socket, int level, int name, void const* value, int length)
{
    // A negative length is refused by the system.
    return ::setsockopt(socketHandles.GetDescriptor(socket), level, name, value,
                        static_cast<socklen_t>(length));
}

int ioctlsocket(SOCKET socket, unsigned long command, int* argument)
{
    return ::ioctl(socketHandles.GetDescriptor(socket), command, argument);
}

int WSASend(SOCKET socket, _WSABUF const* buffers, unsigned int count, unsigned int& bytesSent)
{
    bytesSent = 0;
    int const descriptor = socketHandles.GetDescriptor(socket);
    if (!buffers && count > 0)
        return Fail(EFAULT);
    if (count > few)
        return SendMany(descriptor, buffers, count, bytesSent);
    ssize_t length = 0;
    ssize_t const sent = SendBuffers<few>(descriptor, buffers, count, length);
    if (sent == -1)
        return -1;
    bytesSent = static_cast<unsigned int>(sent);
    return 0;
}

WSARecvMsg GetWSARecvMsg(SOCKET socket)
{
    return socketHandles.GetDescriptor(socket) == -1 ? nullptr : ReceiveMessage;
}

std::optional<in_addr> GetDestination(WSAMSG const& message)
{
    msghdr header = {};
    header.msg_control = message.control.buf;
    header.msg_controllen = message.control.len;
    for (cmsghdr* entry = CMSG_FIRSTHDR(&header); entry; entry = CMSG_NXTHDR(&header, entry))
    {
        if (entry->cmsg_level == IPPROTO_IP && entry->cmsg_type == IP_PKTINFO)
        {
            // ipi_spec_dst would be the receiving interface's own address.
            return reinterpret_cast<in_pktinfo const*>(CMSG_DATA(entry))->ipi_addr;
        }
    }
    return std::nullopt;
}

char const* inet_ntoa(in_addr address, char (&text)[dottedAddressSize])
{
    return ::inet_ntop(AF_INET, &address, text, dottedAddressSize);
}

void SocketSet::Add(SOCKET socket)
{
    if (_count < capacity && !Contains(socket))
        _sockets[_count++] = socket;
}

bool SocketSet::Contains(SOCKET socket) const
{
    return std::find(_sockets, _sockets + _count, socket) != _sockets + _count;
}

// poll() knows no upper bound of descriptors, unlike the system's select().
int select(SocketSet& sockets, timeval const* timeout)
{
    pollfd polled[SocketSet::capacity];
    for (unsigned int index = 0; index < sockets._count; ++index)
    {
        polled[index] = {socketHandles.GetDescriptor(sockets._sockets[index]), POLLIN, 0};
        if (polled[index].fd == -1) // poll() would pass over it
            return Fail(EBADF);
    }
    if (Poll(polled, sockets._count, timeout) == -1)
        return -1;
    if (std::any_of(polled, polled + sockets._count,
                    [](pollfd const& one) { return one.revents & POLLNVAL; }))
        return Fail(EBADF);
    unsigned int ready = 0;
    for (unsigned int index = 0; index < sockets._count; ++index)
        if (polled[index].revents != 0)
            sockets._sockets[ready++] = sockets._sockets[index];
    sockets._count = ready;
    return static_cast<int>(ready);
}
} // namespace nxPlatform
