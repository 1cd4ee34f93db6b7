#pragma once

#include "core/network/nxSocket.h"

#include <cstdint>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

// Sockets of this host, which listen at a port of the system's choice.

inline sockaddr_in AddressOf(nxSocket const& socket)
{
    sockaddr_in address{};
    socklen_t length = sizeof address;
    (void)getsockname(static_cast<int>(socket.GetSocket()), reinterpret_cast<sockaddr*>(&address), &length);
    return address;
}

inline std::uint16_t PortOf(nxSocket const& socket)
{
    return ntohs(AddressOf(socket).sin_port);
}

inline bool Listen(nxSocket& listener)
{
    return listener.Create().IsOK() && listener.Bind("127.0.0.1", 0).IsOK() && listener.Listen().IsOK();
}

inline bool Connect(nxSocket& listener, nxSocket& client, nxSocket& server)
{
    return client.Create().IsOK() && client.Connect("127.0.0.1", PortOf(listener)).IsOK() &&
           listener.Accept(server).IsOK() && server.IsValid();
}
