#pragma once

#include "core/network/nxSocket.h"
#include "tests/logging/nxRecordingLogDevice.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>

inline constexpr nxEnumValue success = NX_UNDEFINED;

/// What receives fill; SendToDestination() takes ports as unsigned.
inline char buffer[65536];
inline int received;
inline unsigned int count;
inline std::string destination;

/// The system's own number of a socket.
inline int DescriptorOf(nxSocket const& socket)
{
    return static_cast<int>(socket.GetSocket());
}

/// The address that a socket is bound to.
inline sockaddr_in AddressOf(nxSocket const& socket)
{
    sockaddr_in address = {};
    socklen_t length = sizeof address;
    EXPECT_EQ(getsockname(DescriptorOf(socket), reinterpret_cast<sockaddr*>(&address), &length), 0);
    return address;
}

inline int PortOf(nxSocket const& socket)
{
    return ntohs(AddressOf(socket).sin_port);
}

inline bool IsOpen(int descriptor)
{
    return fcntl(descriptor, F_GETFD) != -1;
}

/// Opens a socket that listens at a port of the system's choice.
inline void Listen(nxSocket& socket)
{
    ASSERT_TRUE(socket.Create().IsOK());
    ASSERT_TRUE(socket.Bind("127.0.0.1", 0).IsOK());
    ASSERT_TRUE(socket.Listen().IsOK());
}

/// Opens a socket for datagrams at a port of the system's choice. @return the port.
inline unsigned int OpenForDatagrams(nxSocket& socket)
{
    EXPECT_TRUE(socket.Create(NX_SOCKET_TYPE_UDP).IsOK());
    EXPECT_TRUE(socket.Bind(0).IsOK());
    return static_cast<unsigned int>(PortOf(socket));
}

/// The bytes that the last receive has put into the buffer.
inline std::string Received()
{
    return std::string(buffer, static_cast<std::size_t>(std::max(received, 0)));
}

/// Lines are recorded as soon as they are logged. The log reads its keys on first use, so this comes before.
inline int const forceFlush = setenv("KVT_LOG_FORCE_FLUSH", "TRUE", 1);

class nxSocketTest : public nxRecordingTest
{
protected:
    static constexpr char const* here = "127.0.0.1";

    long CountOfLines(std::string const& text)
    {
        auto const has = [&](std::string const& line) { return line.find(text) != std::string::npos; };
        return std::ranges::count_if(Messages(), has);
    }
};

/// A connection to this host, both ends in blocking mode.
struct Connection
{
    nxSocket listener;
    nxSocket client;
    nxSocket server;

    Connection()
    {
        Listen(listener);
        EXPECT_TRUE(client.Create().IsOK());
        EXPECT_TRUE(client.Connect("127.0.0.1", PortOf(listener)).IsOK());
        EXPECT_TRUE(listener.Accept(server).IsOK() && server.IsValid());
    }
};
