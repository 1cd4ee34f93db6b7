#pragma once

#include "core/platform/nxGatherBuffer.h"

#include <optional>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/time.h>

/// @file
/// The socket layer under its Windows names, with the system's own numbers for families, levels and options.
///
/// Calls give 0 or a count, or -1 and an error number that WSAGetLastError() tells. Signals are not seen
/// here: no call raises SIGPIPE, and one that a signal interrupts goes on where it was, a wait for the time
/// that is left. Any number of descriptors may be open, and none passes to a program that this process starts
/// by exec().

namespace nxPlatform
{
/// A socket that this layer gave out: the descriptor in the low 32 bits, above it how often the layer had
/// given out that number before. A handle that was closed stays dead when its descriptor's number comes back:
/// every call with it fails with EBADF and does nothing to the new owner. Descriptors 0 to 2 are never given
/// out, so that no peer gets to read what is printed to a standard stream that was closed.
using SOCKET = unsigned long long;

constexpr SOCKET INVALID_SOCKET = ~SOCKET{0};

/// Both do nothing: the system's socket layer is always there.
inline int WSAStartup(unsigned short)
{
    return 0;
}

inline void WSACleanup()
{
}

/// The error number of the calling thread's last failed call.
int WSAGetLastError();

/// A datagram socket gets only the multicast groups that it joined itself.
/// @return INVALID_SOCKET on failure.
SOCKET socket(int family, int type, int protocol);

/// Never closes a descriptor that this layer did not give out under this very handle.
int closesocket(SOCKET socket);

int bind(SOCKET socket, sockaddr_in const& address);
int listen(SOCKET socket, int backlog);
int connect(SOCKET socket, sockaddr_in const& address);

/// @param peer  receives the peer's address; may be null.
/// @return INVALID_SOCKET on failure.
SOCKET accept(SOCKET socket, sockaddr_in* peer);

int setsockopt(SOCKET socket, int level, int name, void const* value, int length);
int ioctlsocket(SOCKET socket, unsigned long command, int* argument);

/// One system call, unless a blocking socket stops short: then the rest follows.
/// @param length  a negative one fails with EINVAL.
/// @return the bytes sent, fewer than `length` when a non-blocking socket has no room.
inline int send(SOCKET socket, char const* data, int length);

/// @param address  may be null: then it is send().
inline int sendto(SOCKET socket, char const* data, int length, sockaddr_in const* address);

/// Sends the buffers in their order, as one datagram or one run of a stream, in one system call for up to
/// 1024 of them. More than that fail with EMSGSIZE for datagrams.
/// @param bytesSent  0 on failure; fewer than all bytes as with send().
int WSASend(SOCKET socket, _WSABUF const* buffers, unsigned int count, unsigned int& bytesSent);

/// @param size  a negative one fails with EINVAL.
inline int recv(SOCKET socket, char* buffer, int size);

/// @param sender  receives the sender's address, unless it is null or the socket is a stream.
inline int recvfrom(SOCKET socket, char* buffer, int size, sockaddr_in* sender);

/// What WSARecvMsg() fills.
struct WSAMSG
{
    sockaddr_in* sender; ///< May be null.
    _WSABUF data;
    _WSABUF control; ///< Its length is the room before the call and what came back after it.
};

/// Receives one datagram and what the system tells about it. One system call.
/// @param received  left alone on failure.
using WSARecvMsg = int (*)(SOCKET socket, WSAMSG& message, unsigned int& received);

/// What WSAIoctl() answers when it is asked for the extended receive function.
/// @return null when the handle is not a live one.
WSARecvMsg GetWSARecvMsg(SOCKET socket);

/// The address to which a received datagram was sent: the group's for multicast.
/// @return nothing when the option IP_PKTINFO was not on.
std::optional<in_addr> GetDestination(WSAMSG const& message);

/// Bytes of an address as dotted text, with the NUL.
constexpr unsigned int dottedAddressSize = INET_ADDRSTRLEN;

/// @return `text`.
char const* inet_ntoa(in_addr address, char (&text)[dottedAddressSize]);

/// Sockets to wait for: distinct ones, at most 64.
class SocketSet
{
public:
    static constexpr unsigned int capacity = 64;

    /// Leaves out a socket that is there already, and any beyond the capacity.
    void Add(SOCKET socket);
    bool Contains(SOCKET socket) const;

private:
    friend int select(SocketSet& sockets, timeval const* timeout);

    unsigned int _count = 0;
    SOCKET _sockets[capacity];
};

/// Waits until a socket can be read, has a connection to accept, has ended or has failed. An empty set is a
/// pause.
/// @param sockets  keeps those that are ready; as it was on failure.
/// @param timeout  null waits without limit. Its microseconds may be a second or more.
/// @return how many are ready, 0 after the timeout, -1 with EBADF when a handle in the set is not a live one.
int select(SocketSet& sockets, timeval const* timeout);
} // namespace nxPlatform

// The bodies of what is inline.
#include "core/platform/linux/nxSocketTransfers.h"
