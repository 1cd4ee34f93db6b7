#pragma once

#include "core/platform/linux/nxSocketHandles.h"
#include "core/platform/nxSockets.h"

#include <cerrno>

/// @file
/// The sends and receives of the socket layer, for inlining: behind a system call every return from a
/// function costs the processor a misprediction, which the two calls of an exchange can feel
/// (`bench/nxSocketBench`).

namespace nxPlatform
{
extern SocketHandles socketHandles;

inline int Fail(int error)
{
    errno = error;
    return -1;
}

template <typename Call>
auto Restarted(Call call)
{
    auto result = call();
    while (result == -1 && errno == EINTR)
        [[unlikely]]
        {
            result = call();
        }
    return result;
}

inline sockaddr const* AsSockaddr(sockaddr_in const* address)
{
    return reinterpret_cast<sockaddr const*>(address);
}

inline sockaddr* AsSockaddr(sockaddr_in* address)
{
    return reinterpret_cast<sockaddr*>(address);
}

/// Goes on with a send of which only `sent` bytes are gone, or that failed with -1, maybe by a signal.
[[gnu::cold]] int FinishSend(int descriptor, char const* data, int length, sockaddr_in const* address,
                             long sent);

inline int sendto(SOCKET socket, char const* data, int length, sockaddr_in const* address)
{
    if (length < 0)
        return Fail(EINVAL);
    int const descriptor = socketHandles.GetDescriptor(socket);
    ssize_t const sent = ::sendto(descriptor, data, static_cast<std::size_t>(length), MSG_NOSIGNAL,
                                  AsSockaddr(address), address ? sizeof *address : 0);
    return sent == length ? length : FinishSend(descriptor, data, length, address, sent);
}

inline int send(SOCKET socket, char const* data, int length)
{
    return sendto(socket, data, length, nullptr);
}

inline int recv(SOCKET socket, char* buffer, int size)
{
    if (size < 0)
        return Fail(EINVAL);
    int const descriptor = socketHandles.GetDescriptor(socket);
    return static_cast<int>(
        Restarted([&] { return ::recv(descriptor, buffer, static_cast<std::size_t>(size), 0); }));
}

inline int recvfrom(SOCKET socket, char* buffer, int size, sockaddr_in* sender)
{
    if (size < 0)
        return Fail(EINVAL);
    int const descriptor = socketHandles.GetDescriptor(socket);
    return static_cast<int>(Restarted(
        [&]
        {
            socklen_t length = sizeof *sender;
            return ::recvfrom(descriptor, buffer, static_cast<std::size_t>(size), 0, AsSockaddr(sender),
                              sender ? &length : nullptr);
        }));
}
} // namespace nxPlatform
