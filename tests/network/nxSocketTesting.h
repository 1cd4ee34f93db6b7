#pragma once

#include "tests/faults/Loopback.h"
#include "tests/logging/nxRecordingLogDevice.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include <fcntl.h>

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

/// Opens a socket for datagrams at a port of the system's choice. @return the port.
inline unsigned int OpenForDatagrams(nxSocket& socket)
{
    EXPECT_TRUE(socket.Create(NX_SOCKET_TYPE_UDP).IsOK());
    EXPECT_TRUE(socket.Bind(0).IsOK());
    return PortOf(socket);
}

/// @return the bytes that arrive, or in parentheses how many it says to be when it fails.
inline std::string Receive(nxSocket& socket, int size = sizeof buffer)
{
    return socket.Receive(buffer, size, received).IsOK()
               ? std::string(buffer, static_cast<std::size_t>(received))
               : "(" + std::to_string(received) + ")";
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
        EXPECT_TRUE(Listen(listener) && Connect(listener, client, server));
    }
};
